// One file through the image library.
#include "src/engine/modConversionItem.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "tests/fakes/test_application.h"

namespace
{

clsConversionOptions objRequest(const std::string& sSource, std::int32_t lSourceType,
                                const std::string& sTarget, std::int32_t lTargetType,
                                const std::string& sDetails = "*^0^FALSE^75")
{
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = sSource;
    objOptions.lOriginalFileType = lSourceType;
    objOptions.sTargetFile = sTarget;
    objOptions.lTargetFileType = lTargetType;
    objOptions.sExtraParams = sDetails;
    return objOptions;
}

// The calls that load, save or append, without the settings of properties.
std::vector<std::string> aPictureCalls(const TestApplication& app)
{
    std::vector<std::string> aResult;
    for (const std::string& sCall : app.objImages.aCalls)
        if (sCall.starts_with("Load") || sCall.starts_with("Save") || sCall.starts_with("Append"))
            aResult.push_back(sCall);
    return aResult;
}

using Calls = std::vector<std::string>;
using Pages = std::vector<std::uint8_t>;

}  // namespace

TEST(PerformConversionItem, LoadsAndSavesByTheTargetType)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    app.objFiles.AddFolder("/out");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/out/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.sErr, "");
    EXPECT_EQ(aPictureCalls(app), (Calls{"LoadImage /in/a.bmp", "SavePNG /out/a.png"}));
}

TEST(PerformConversionItem, SetsCompressionThenQualityBeforeTheLoad)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    app.objFiles.AddFolder("/out");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/out/a.jpg", 1, "*^4^FALSE^60^a title");

    PerformConversionItemNCTOCX(app, objOptions);

    ASSERT_GE(app.objImages.aCalls.size(), 3u);
    EXPECT_EQ(app.objImages.aCalls[0], "TIFFCompression 4");
    EXPECT_EQ(app.objImages.aCalls[1], "JPEGQuality 60");
    EXPECT_EQ(app.objImages.aCalls[2], "LoadImage /in/a.bmp");
    EXPECT_EQ(app.objImages.objTexts.sTitle, "a title");
}

TEST(PerformConversionItem, MakesTheTargetFolder)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/new/deep/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_TRUE(app.objFiles.bHas("/in/new/deep/a.png"));
}

TEST(PerformConversionItem, FailsForATargetFolderThatCannotBeMadeAndGoesOnAllTheSame)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    app.objFiles.AddFolder("/fixed");
    app.objFiles.MakeReadOnly("/fixed");
    app.objImages.aUnwritable.insert("/fixed/new/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/fixed/new/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -100);

    EXPECT_EQ(objOptions.lErr, -100);
    EXPECT_EQ(objOptions.sErr, "Target folder does not exist");
    EXPECT_EQ(aPictureCalls(app).size(), 2u);
}

TEST(PerformConversionItem, LeavesTheResultAtZeroForAFileThatDoesNotLoad)
{
    TestApplication app;
    app.objFiles.AddFile("/in/x.jpg", "a text");
    app.objImages.aBroken.insert("/in/x.jpg");
    clsConversionOptions objOptions = objRequest("/in/x.jpg", 1, "/in/x.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(objOptions.sErr, "Unsupported source image file format. Unable to load image.");
}

TEST(PerformConversionItem, FailsWhenTheTargetCannotBeWritten)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    app.objImages.aUnwritable.insert("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(objOptions.sErr, "Unable to convert");
}

TEST(PerformConversionItem, EndsATypeThatIsOnlyReadAsAFailedSave)
{
    for (const std::int32_t lType : {12, 13, 14, 0, 99}) {
        TestApplication app;
        app.objImages.AddImage("/in/a.bmp");
        clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.ico", lType);

        EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103) << lType;

        EXPECT_EQ(objOptions.sErr, "Unable to convert");
    }
}

TEST(SaveImageAsType, CallsTheOperationOfEachType)
{
    const Calls aExpected = {"SaveJPEG /t", "SaveBMP /t", "SaveTIFF /t", "SaveGIF /t",
                             "SaveEMF /t",  "SaveJ2K /t", "SavePCX /t",  "SavePNG /t",
                             "SaveRAS /t",  "SaveTGA /t", "SaveWMF /t"};
    TestApplication app;
    ImageBuffer aImage;
    aImage.lWidth = aImage.lHeight = aImage.lChannels = 1;
    aImage.aBytes.assign(1, 9);
    clsConversionOptions objOptions;

    for (std::int32_t lType = 1; lType <= 11; ++lType)
        EXPECT_TRUE(bSaveImageAsType(app, objOptions, lType, "/t", aImage)) << lType;

    EXPECT_EQ(app.objImages.aCalls, aExpected);
}

TEST(SaveImageAsType, OverwritesAnEarlierCodeWithSuccess)
{
    TestApplication app;
    ImageBuffer aImage;
    aImage.lWidth = aImage.lHeight = aImage.lChannels = 1;
    aImage.aBytes.assign(1, 9);
    clsConversionOptions objOptions;
    objOptions.lErr = -110;
    objOptions.sErr = "earlier";

    EXPECT_TRUE(bSaveImageAsType(app, objOptions, 8, "/t", aImage));

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.sErr, "");
}

TEST(SplitPages, WritesOneNumberedFileForEachPage)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "*^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/a-1.jpg"), Pages{1});
    EXPECT_EQ(app.objImages.aPagesOf("/in/a-2.jpg"), Pages{2});
    EXPECT_EQ(app.objImages.aPagesOf("/in/a-3.jpg"), Pages{3});
    EXPECT_FALSE(app.objFiles.bHas("/in/a.jpg"));
}

TEST(SplitPages, TakesNoPagesForAllPages)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "  ^0^FALSE^75");

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_TRUE(app.objFiles.bHas("/in/a-1.jpg"));
    EXPECT_TRUE(app.objFiles.bHas("/in/a-2.jpg"));
}

TEST(SplitPages, WritesASelectedPageUnderThePlainName)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "2^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/a.jpg"), Pages{2});
}

TEST(SplitPages, NamesPagesInTheStyleOfThePath)
{
    TestApplication app;
    app.objImages.AddImage("C:\\in\\t.tif", {1, 2});
    app.objFiles.AddFolder("C:\\out");
    clsConversionOptions objOptions = objRequest("C:\\in\\t.tif", 3, "C:\\out\\a.b", 1);

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_TRUE(app.objFiles.bHas("C:\\out\\a-1.b"));
    EXPECT_EQ(objOptions.sTargetFile, "C:\\out\\a-2.b");
}

TEST(SplitPages, SplitsATiffIntoTiffsToo)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/u.tif", 3);

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_EQ(app.objImages.aPagesOf("/in/u-1.tif"), Pages{1});
    EXPECT_EQ(app.objImages.aPagesOf("/in/u-2.tif"), Pages{2});
    EXPECT_FALSE(app.objFiles.bHas("/in/u.tif"));
}

TEST(SplitPages, RecordsAMissingPageByItsPlaceAndWritesTheOthers)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.objImages.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,7,3^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(objOptions.sErr, "Unable to load frame 2. Check Options Button");
    EXPECT_TRUE(app.objFiles.bHas("/in/a-1.jpg"));
    EXPECT_TRUE(app.objFiles.bHas("/in/a-3.jpg"));
    EXPECT_FALSE(app.objFiles.bHas("/in/a-7.jpg"));
}

TEST(SplitPages, KeepsTheFirstFailureWhenLaterPagesAreWritten)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.objImages.AddImage("/in/t.tif", {1, 2, 3});
    app.objImages.lBrokenPage = 0;
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(objOptions.sErr, "Unable to load frame 0. Check Options Button");
    EXPECT_TRUE(app.objFiles.bHas("/in/a-2.jpg"));
}

TEST(SplitPages, FailsForPageZero)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,,2^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_TRUE(app.objFiles.bHas("/in/a-1.jpg"));
    EXPECT_TRUE(app.objFiles.bHas("/in/a-2.jpg"));
}

TEST(SplitPages, RetriesUnderTheSuffixedNameAndKeepsTheFirstCode)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,3,5^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_TRUE(app.objFiles.bHas("/in/a-5-1.jpg"));
    EXPECT_TRUE(app.objFiles.bHas("/in/a-5-3.jpg"));
}

TEST(SplitPages, RetriesOnceOnly)
{
    TestApplication app;
    app.objFiles.AddFile("/in/t.tif", "");
    app.objImages.aBroken.insert("/in/t.tif");
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(std::count(app.objImages.aCalls.begin(), app.objImages.aCalls.end(), "GetFrameCount /in/t.tif"),
              2);
}

TEST(SplitPages, RaisesForABadPageEntry)
{
    TestApplication app;
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "5-^0^FALSE^75");

    EXPECT_THROW(PerformConversionItemNCTOCX(app, objOptions), clsRaisedError);
}

TEST(ConvertIntoTiff, WritesANewFileWithoutAppending)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp", {7});
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), Pages{7});
}

TEST(ConvertIntoTiff, AppendsBehindThePagesThatAreThere)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp", {7});
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), (Pages{1, 2, 7}));
    EXPECT_FALSE(app.objFiles.bHas("/in/t.tif.TIF"));
    EXPECT_EQ(aPictureCalls(app),
              (Calls{"LoadFrame /in/t.tif 0", "SaveTIFF /in/t.tif.TIF", "LoadFrame /in/t.tif 1",
                     "AppendFrame False", "LoadImage /in/a.bmp", "AppendFrame True"}));
}

TEST(ConvertIntoTiff, WritesANewFileWhenThereIsNothingToAppendTo)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp", {7});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), Pages{7});
}

TEST(ConvertIntoTiff, ClosesTheFileWhenTheSourceDoesNotLoad)
{
    TestApplication app;
    app.objFiles.AddFile("/in/a.bmp", "no picture");
    app.objImages.aBroken.insert("/in/a.bmp");
    app.objImages.AddImage("/in/t.tif", {1});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(aPictureCalls(app).back(), "AppendFrame True");
    EXPECT_EQ(app.objImages.aCalls.back(), "MultiFrameSave False");
    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), Pages{1});
}

TEST(ConvertIntoTiff, NeverReplacesATargetByOneThatLostItsPages)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp", {7});
    app.objImages.AddImage("/in/t.tif", {1, 2});
    app.objImages.aUnwritable.insert("/in/t.tif.TIF");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), (Pages{1, 2}));
}

TEST(AppendPagesToTiff, AppendsTheSelectedPages)
{
    TestApplication app;
    app.objImages.AddImage("/in/s.tif", {11, 12, 13});
    app.objImages.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "1,3^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), (Pages{1, 2, 11, 13}));
    EXPECT_FALSE(app.objFiles.bHas("/in/t.tif.TIF"));
}

TEST(AppendPagesToTiff, MakesANewFileOfAllPages)
{
    TestApplication app;
    app.objImages.AddImage("/in/s.tif", {11, 12, 13});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), (Pages{11, 12, 13}));
}

TEST(AppendPagesToTiff, SavesASinglePageOfANewFileWithoutKeepingItOpen)
{
    TestApplication app;
    app.objImages.AddImage("/in/s.tif", {11, 12, 13});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "2^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), Pages{12});
    EXPECT_EQ(std::count(app.objImages.aCalls.begin(), app.objImages.aCalls.end(), "MultiFrameSave True"), 0);
}

TEST(AppendPagesToTiff, SelectsNothingForAnEmptyPageText)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.objImages.AddImage("/in/s.tif", {11, 12});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_FALSE(app.objFiles.bHas("/in/t.tif"));
}

TEST(AppendPagesToTiff, KeepsThePagesOfATargetThatDoesNotLoad)
{
    TestApplication app;
    app.objImages.AddImage("/in/s.tif", {11});
    app.objImages.AddImage("/in/t.tif", {1, 2});
    app.objImages.lBrokenPage = 1;
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "1^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(app.objImages.aPagesOf("/in/t.tif"), (Pages{1, 2}));
}

TEST(ConversionItem, ConvertsNothingByAnotherMethod)
{
    TestApplication app;
    app.objImages.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);
    objOptions.lConversionMethod = 2;

    EXPECT_EQ(lPerformConversionItem(app, objOptions), 0);

    EXPECT_TRUE(app.objImages.aCalls.empty());
}

TEST(ConversionItem, DeletesTheSourceAfterAGoodConversionWhenAsked)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objImages.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_FALSE(app.objFiles.bHas("/in/a.bmp"));
    EXPECT_TRUE(app.objFiles.bHas("/in/a.png"));
}

TEST(ConversionItem, KeepsTheSourceAfterAFailedSave)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objImages.AddImage("/in/a.bmp");
    app.objImages.aUnwritable.insert("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.objFiles.bHas("/in/a.bmp"));
}

TEST(ConversionItem, DeletesASourceThatDidNotLoadSinceItsResultIsZero)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objFiles.AddFile("/in/x.jpg", "a text");
    app.objImages.aBroken.insert("/in/x.jpg");
    clsConversionOptions objOptions = objRequest("/in/x.jpg", 1, "/in/x.png", 8);

    EXPECT_EQ(lPerformConversionItem(app, objOptions), 0);

    EXPECT_FALSE(app.objFiles.bHas("/in/x.jpg"));
    EXPECT_EQ(objOptions.sErr, "Unsupported source image file format. Unable to load image.");
}

TEST(ConversionItem, DeletesTheSourceOfAnotherMethodAsWell)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objImages.AddImage("/in/a.bmp");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/a.png", 8);
    objOptions.lConversionMethod = 2;

    lPerformConversionItem(app, objOptions);

    EXPECT_FALSE(app.objFiles.bHas("/in/a.bmp"));
}

TEST(ConversionItem, KeepsASourceThatDiffersFromItsTargetInCaseOnly)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objImages.AddImage("C:\\in\\A.PNG");
    clsConversionOptions objOptions = objRequest("C:\\in\\A.PNG", 8, "c:\\in\\a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.objFiles.aDeletedFiles.empty());
}

TEST(ConversionItem, KeepsASourceThatIsItsTargetByAnotherPath)
{
    TestApplication app;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.objFiles.AddLink("/link", "/in");
    app.objImages.AddImage("/in/a.png");
    clsConversionOptions objOptions = objRequest("/in/a.png", 8, "/link/a.png", 8);

    lPerformConversionItem(app, objOptions);

    EXPECT_TRUE(app.objFiles.aDeletedFiles.empty());
}
