// Conversion of a single file.
#include "src/conversion/modConversionItem.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "tests/conversion/support/conversion_items.h"
#include "tests/fakes/test_application.h"

TEST(PerformConversionItem, SavesInTheFormatOfTheTargetType)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    app.files.AddFolder("/out");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/out/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.sErr, "");
    EXPECT_EQ(aPictureCalls(app), (Calls{"LoadImage /in/a.bmp", "SavePNG /out/a.png"}));
}

TEST(PerformConversionItem, SetsCompressionAndQualityBeforeLoading)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    app.files.AddFolder("/out");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/out/a.jpg", 1, "*^4^FALSE^60^a title");

    PerformConversionItemNCTOCX(app, objOptions);

    ASSERT_GE(app.images.calls.size(), 3u);
    EXPECT_EQ(app.images.calls[0], "TIFFCompression 4");
    EXPECT_EQ(app.images.calls[1], "JPEGQuality 60");
    EXPECT_EQ(app.images.calls[2], "LoadImage /in/a.bmp");
    EXPECT_EQ(app.images.texts.sTitle, "a title");
}

TEST(PerformConversionItem, CreatesTheTargetFolder)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/new/deep/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_TRUE(app.files.Has("/in/new/deep/a.png"));
}

TEST(PerformConversionItem, FailsButCarriesOnIfTargetFolderIsMissing)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    app.files.AddFolder("/fixed");
    app.files.MakeReadOnly("/fixed");
    app.images.unwritable.insert("/fixed/new/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/fixed/new/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -100);

    EXPECT_EQ(objOptions.lErr, -100);
    EXPECT_EQ(objOptions.sErr, "Target folder does not exist");
    EXPECT_EQ(aPictureCalls(app).size(), 2u);
}

TEST(PerformConversionItem, ReturnsZeroIfTheSourceFailsToLoad)
{
    TestApplication app;
    app.files.AddFile("/in/x.jpg", "a text");
    app.images.broken.insert("/in/x.jpg");
    clsConversionOptions objOptions = objRequest("/in/x.jpg", 1, "/in/x.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(objOptions.sErr, "Unsupported source image file format. Unable to load image.");
}

TEST(PerformConversionItem, FailsIfTheTargetCannotBeWritten)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    app.images.unwritable.insert("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(objOptions.sErr, "Unable to convert");
}

TEST(PerformConversionItem, ReportsAReadOnlyTypeAsAFailedSave)
{
    for (const std::int32_t lType : {12, 13, 14, 0, 99}) {
        TestApplication app;
        app.images.AddImage("/in/a.bmp");
        clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.ico", lType);

        EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103) << lType;

        EXPECT_EQ(objOptions.sErr, "Unable to convert");
    }
}

TEST(SaveImageAsType, CallsTheSaveFunctionOfEachType)
{
    const Calls aExpected = {"SaveJPEG /t", "SaveBMP /t", "SaveTIFF /t", "SaveGIF /t",
                             "SaveEMF /t",  "SaveJ2K /t", "SavePCX /t",  "SavePNG /t",
                             "SaveRAS /t",  "SaveTGA /t", "SaveWMF /t"};
    TestApplication app;
    ImageBuffer aImage;
    aImage.width = aImage.height = aImage.channels = 1;
    aImage.bytes.assign(1, 9);
    clsConversionOptions objOptions;

    for (std::int32_t lType = 1; lType <= 11; ++lType)
        EXPECT_TRUE(bSaveImageAsType(app, objOptions, lType, "/t", aImage)) << lType;

    EXPECT_EQ(app.images.calls, aExpected);
}

TEST(SaveImageAsType, ClearsAnEarlierErrorOnSuccess)
{
    TestApplication app;
    ImageBuffer aImage;
    aImage.width = aImage.height = aImage.channels = 1;
    aImage.bytes.assign(1, 9);
    clsConversionOptions objOptions;
    objOptions.lErr = -110;
    objOptions.sErr = "earlier";

    EXPECT_TRUE(bSaveImageAsType(app, objOptions, 8, "/t", aImage));

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.sErr, "");
}

TEST(ConversionItem, ConvertsNothingForAnyOtherMethod)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);
    objOptions.lConversionMethod = 2;

    EXPECT_EQ(lPerformConversionItem(app, objOptions), 0);

    EXPECT_TRUE(app.images.calls.empty());
}

TEST(ConversionItem, DeletesTheSourceOnRequestAfterSuccess)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_FALSE(app.files.Has("/in/a.bmp"));
    EXPECT_TRUE(app.files.Has("/in/a.png"));
}

TEST(ConversionItem, SyncsBeforeItDeletesTheSource)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.AddImage("/in/a.bmp");
    app.files.fail_syncs = true;
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    EXPECT_EQ(lPerformConversionItem(app, objOptions), -103);

    EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    EXPECT_EQ(objOptions.lErr, -103);
    EXPECT_EQ(objOptions.sErr, "Unable to convert");
}

TEST(ConversionItem, LeavesSyncingToTheEndOfTheRunIfTheSourceStays)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    EXPECT_EQ(lPerformConversionItem(app, objOptions), 0);

    EXPECT_EQ(app.files.syncs, 0);
}

TEST(ConversionItem, KeepsTheSourceIfSavingFails)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.AddImage("/in/a.bmp");
    app.images.unwritable.insert("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.files.Has("/in/a.bmp"));
}

TEST(ConversionItem, DeletesASourceThatFailedToLoad)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.files.AddFile("/in/x.jpg", "a text");
    app.images.broken.insert("/in/x.jpg");
    clsConversionOptions objOptions = objRequest("/in/x.jpg", 1, "/in/x.png", 8);

    EXPECT_EQ(lPerformConversionItem(app, objOptions), 0);

    EXPECT_FALSE(app.files.Has("/in/x.jpg"));
    EXPECT_EQ(objOptions.sErr, "Unsupported source image file format. Unable to load image.");
}

TEST(ConversionItem, DeletesTheSourceForAnyOtherMethodToo)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);
    objOptions.lConversionMethod = 2;

    lPerformConversionItem(app, objOptions);

    EXPECT_FALSE(app.files.Has("/in/a.bmp"));
}

TEST(ConversionItem, KeepsASourceThatEqualsItsTargetIgnoringCase)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.AddImage("C:\\in\\A.PNG");
    clsConversionOptions objOptions = objRequest("C:\\in\\A.PNG", 8, "c:\\in\\a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.files.deleted_files.empty());
}

TEST(ConversionItem, KeepsASourceThatALinkMakesItsTarget)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.files.AddLink("/link", "/in");
    app.images.AddImage("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.png", 8, "/link/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.files.deleted_files.empty());
}
