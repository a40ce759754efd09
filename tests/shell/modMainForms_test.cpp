// Loading the main forms.
#include "src/shell/modMainForms.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(LoadMainForms, UsesDefaultsWithoutASettingsFile)
{
    TestApplication app;

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 2);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, 2), "*");
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListCount(), 11);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ListCount(), 15);
    EXPECT_EQ(app.frmMain.sActionToDo, "C");
    EXPECT_TRUE(app.frmMain.rbActionToDo(0).Value());
    EXPECT_TRUE(app.ini.written.empty());
    EXPECT_FALSE(app.frmMain.keyConvert.Enabled());
}

TEST(LoadMainForms, LoadsTheReportFileFromTheSettings)
{
    TestApplication app;
    app.ini.Set("frmMain", "sLogFile", "/out/report.txt");
    app.ini.Set("frmMain", "bDeleteOriginalFileAfterProcessing", "TRUE");

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.sLogFile, "/out/report.txt");
    EXPECT_TRUE(app.frmMain.bDeleteOriginalFileAfterProcessing);
}

TEST(LoadMainForms, DoesNothingWhenCalledAgain)
{
    TestApplication app;
    LoadMainForms(app);
    app.frmMain.fgToDo.AddItem("\t\t1\tC", 1);

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 3);
}
