// Default values of the run request.
#include "src/base/clsConversionOptions.h"

#include <gtest/gtest.h>

TEST(ConversionOptions, DefaultToConversionWithoutTypesOrDetails)
{
    const clsConversionOptions objOptions;

    EXPECT_EQ(objOptions.sActionToDo, "C");
    EXPECT_EQ(objOptions.lOriginalFileType, -12345678);
    EXPECT_EQ(objOptions.lTargetFileType, -12345678);
    EXPECT_EQ(objOptions.lConversionMethod, 1);
    EXPECT_EQ(objOptions.sExtraParams, "1");
    EXPECT_EQ(objOptions.lJPEGQuality, 75);
    EXPECT_EQ(objOptions.lSpecialProcess, 0);
    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.lCommandLineExitCode, 0);
    EXPECT_EQ(objOptions.lTiffCompression, 0);
    EXPECT_EQ(objOptions.sOriginalFile + objOptions.sTargetFile + objOptions.sLogFile + objOptions.sErr +
                  objOptions.sCLBatchJobFile + objOptions.sLogAsConversionJobFile +
                  objOptions.sCurrentBatchJobFile,
              "");
    EXPECT_FALSE(objOptions.bVerbose || objOptions.bVerboseLog || objOptions.bDoSubfolders ||
                 objOptions.bSaveInOriginalFolder || objOptions.bExportFormula ||
                 objOptions.bOpenButDoNotRun);
}
