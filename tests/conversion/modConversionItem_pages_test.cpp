// TIFF pages: splitting them into files, and appending to another TIFF.
#include "src/conversion/modConversionItem.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "tests/conversion/support/conversion_items.h"
#include "tests/fakes/test_application.h"

TEST(SplitPages, WritesOneNumberedFilePerPage)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "*^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/a-1.jpg"), Pages{1});
    EXPECT_EQ(app.images.PagesOf("/in/a-2.jpg"), Pages{2});
    EXPECT_EQ(app.images.PagesOf("/in/a-3.jpg"), Pages{3});
    EXPECT_FALSE(app.files.Has("/in/a.jpg"));
}

TEST(SplitPages, WritesAllPagesForAnEmptySelection)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "  ^0^FALSE^75");

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_TRUE(app.files.Has("/in/a-1.jpg"));
    EXPECT_TRUE(app.files.Has("/in/a-2.jpg"));
}

TEST(SplitPages, WritesASinglePageWithoutANumber)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "2^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/a.jpg"), Pages{2});
}

TEST(SplitPages, KeepsThePathsStyleInPageNames)
{
    TestApplication app;
    app.images.AddImage("C:\\in\\t.tif", {1, 2});
    app.files.AddFolder("C:\\out");
    clsConversionOptions objOptions = objRequest("C:\\in\\t.tif", 3, "C:\\out\\a.b", 1);

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_TRUE(app.files.Has("C:\\out\\a-1.b"));
    EXPECT_EQ(objOptions.sTargetFile, "C:\\out\\a-2.b");
}

TEST(SplitPages, AlsoSplitsATiffIntoTiffs)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/u.tif", 3);

    PerformConversionItemNCTOCX(app, objOptions);

    EXPECT_EQ(app.images.PagesOf("/in/u-1.tif"), Pages{1});
    EXPECT_EQ(app.images.PagesOf("/in/u-2.tif"), Pages{2});
    EXPECT_FALSE(app.files.Has("/in/u.tif"));
}

TEST(SplitPages, ReportsMissingPagesButWritesTheOthers)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.images.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,7,3^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(objOptions.sErr, "Unable to load frame 2. Check Options Button");
    EXPECT_TRUE(app.files.Has("/in/a-1.jpg"));
    EXPECT_TRUE(app.files.Has("/in/a-3.jpg"));
    EXPECT_FALSE(app.files.Has("/in/a-7.jpg"));
}

TEST(SplitPages, KeepsTheFirstErrorIfLaterPagesSucceed)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.images.AddImage("/in/t.tif", {1, 2, 3});
    app.images.broken_page = 0;
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(objOptions.sErr, "Unable to load frame 0. Check Options Button");
    EXPECT_TRUE(app.files.Has("/in/a-2.jpg"));
}

TEST(SplitPages, FailsForPageZeroButWritesTheOthers)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,,2^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_TRUE(app.files.Has("/in/a-1.jpg"));
    EXPECT_TRUE(app.files.Has("/in/a-2.jpg"));
}

TEST(SplitPages, RetriesWithTheNumberedNameAndKeepsTheFirstError)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2, 3});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "1,3,5^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_TRUE(app.files.Has("/in/a-5-1.jpg"));
    EXPECT_TRUE(app.files.Has("/in/a-5-3.jpg"));
}

TEST(SplitPages, RetriesOnlyOnce)
{
    TestApplication app;
    app.files.AddFile("/in/t.tif", "");
    app.images.broken.insert("/in/t.tif");
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1);

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "GetFrameCount /in/t.tif"), 2);
}

TEST(SplitPages, RaisesAnErrorForAMalformedPageRange)
{
    TestApplication app;
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/t.tif", 3, "/in/a.jpg", 1, "5-^0^FALSE^75");

    EXPECT_THROW(PerformConversionItemNCTOCX(app, objOptions), clsRaisedError);
}

TEST(ConvertIntoTiff, WritesANewFileUnlessAppendIsSet)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^FALSE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), Pages{7});
}

TEST(ConvertIntoTiff, AppendsAfterTheExistingPages)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2, 7}));
    EXPECT_EQ(aPictureCalls(app),
              (Calls{"LoadFrame /in/t.tif 0", "SaveTIFF /in/t.tif", "LoadFrame /in/t.tif 1",
                     "AppendFrame False", "LoadImage /in/a.bmp", "AppendFrame True"}));
}

TEST(ConvertIntoTiff, WritesANewFileIfTheTargetIsMissing)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), Pages{7});
}

TEST(ConvertIntoTiff, DiscardsTheNewTargetIfTheSourceFailsToLoad)
{
    TestApplication app;
    app.files.AddFile("/in/a.bmp", "no picture");
    app.images.broken.insert("/in/a.bmp");
    app.images.AddImage("/in/t.tif", {1});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(aPictureCalls(app).back(), "LoadImage /in/a.bmp");
    EXPECT_EQ(app.images.calls.back(), "MultiFrameSave False");
    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), Pages{1});
}

TEST(ConvertIntoTiff, NeverReplacesATargetIfItsFirstPageCannotBeSaved)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    app.images.AddImage("/in/t.tif", {1, 2});
    app.images.unwritable.insert("/in/t.tif");
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2}));
}

TEST(ConvertIntoTiff, NeverReplacesATargetIfAnyPageCannotBeSaved)
{
    for (const int lPage : {2, 3, 7}) {
        TestApplication app;
        app.frmMain.bDeleteOriginalFileAfterProcessing = true;
        app.images.AddImage("/in/a.bmp", {7});
        app.images.AddImage("/in/t.tif", {1, 2, 3});
        app.images.unwritable_page = lPage;
        clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

        EXPECT_EQ(lPerformConversionItem(app, objOptions), -103);

        EXPECT_EQ(objOptions.lErr, -103);
        EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2, 3}));
        EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    }
}

TEST(ConvertIntoTiff, LeavesAFileAloneThatOnlyLooksLikeATemporary)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    app.images.AddImage("/in/t.tif", {1});
    app.images.AddImage("/in/t.tif.TIF", {42});
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 7}));
    EXPECT_EQ(app.images.PagesOf("/in/t.tif.TIF"), Pages{42});
}

TEST(ConvertIntoTiff, AppendsToATargetThatChangesMeanwhile)
{
    TestApplication app;
    app.images.AddImage("/in/a.bmp", {7});
    app.images.AddImage("/in/t.tif", {1});
    app.images.on_call = [&] {
        if (app.images.calls.back() == "LoadImage /in/a.bmp" && app.images.PagesOf("/in/t.tif") == Pages{1})
            app.images.AddImage("/in/t.tif", {1, 2});
    };
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/in/t.tif", 3, "*^0^TRUE^75");

    // The second pass finds the new page. The first pass's failure stays.
    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2, 7}));
}

TEST(ConvertIntoTiff, HoldsALockPerTargetWhileItAppends)
{
    const auto aLocks = [](const std::string& sTarget, const std::string& sAppend) {
        TestApplication app;
        app.images.AddImage("/in/a.bmp", {7});
        app.images.AddImage("/in/t.tif", {1});
        app.images.on_call = [&] { EXPECT_EQ(app.mutex.held, sAppend == "TRUE" ? 1 : 0); };
        clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, sTarget, 3, "*^0^" + sAppend + "^75");
        PerformConversionItemNCTOCX(app, objOptions);
        EXPECT_EQ(app.mutex.held, 0);
        return app.mutex.calls;
    };

    const Calls aFirst = aLocks("/in/t.tif", "TRUE");
    ASSERT_EQ(aFirst.size(), 2u);
    EXPECT_TRUE(aFirst[0].starts_with("Acquire Append_"));
    EXPECT_EQ(aLocks("/in/T.TIF", "TRUE"), aFirst);
    EXPECT_NE(aLocks("/in/u.tif", "TRUE"), aFirst);
    EXPECT_TRUE(aLocks("/in/t.tif", "FALSE").empty());
}

TEST(AppendPagesToTiff, AppendsOnlyTheSelectedPages)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11, 12, 13});
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "1,3^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2, 11, 13}));
}

TEST(AppendPagesToTiff, LeavesOutPagesThatCannotBeLoadedAndAddsTheOthersOnce)
{
    for (const std::string sPages : {"1,9,3", "9,1,3", "1,3,9"}) {
        TestApplication app;
        app.images.AddImage("/in/s.tif", {11, 12, 13});
        app.images.AddImage("/in/t.tif", {1, 2});
        clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, sPages + "^0^TRUE^75");
        EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);
        EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2, 11, 13}));

        objOptions = objRequest("/in/s.tif", 3, "/in/new.tif", 3, "0,1,9,3^0^TRUE^75");
        EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);
        EXPECT_EQ(app.images.PagesOf("/in/new.tif"), (Pages{11, 13}));
    }
}

TEST(AppendPagesToTiff, LeavesTheTargetAloneIfAPageCannotBeSaved)
{
    for (const int lPage : {2, 11, 12, 13}) {
        TestApplication app;
        app.images.AddImage("/in/s.tif", {11, 12, 13});
        app.images.AddImage("/in/t.tif", {1, 2});
        app.images.unwritable_page = lPage;
        clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "*^0^TRUE^75");

        EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

        EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2}));
    }
}

TEST(AppendPagesToTiff, KeepsAnEarlierFailuresCodeIfSavingFailsToo)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11, 12});
    app.images.AddImage("/in/t.tif", {1, 2});
    app.images.unwritable_page = 12;
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "0,1,2^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2}));
}

TEST(AppendPagesToTiff, LeavesTheTargetAloneIfNoSelectedPageCanBeLoaded)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11, 12});
    app.images.AddImage("/in/t.tif", {1, 2});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "8,9^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -110);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2}));
    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "AppendFrame True"), 0);
}

TEST(AppendPagesToTiff, CreatesANewFileFromAllPages)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11, 12, 13});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "*^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{11, 12, 13}));
}

TEST(AppendPagesToTiff, SavesASinglePageAsASingleFrame)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11, 12, 13});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "2^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), Pages{12});
    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "MultiFrameSave True"), 0);
}

TEST(AppendPagesToTiff, AppendsNothingForAnEmptySelection)
{
    TestApplication app;
    app.frmMain.bTryAutodetectIfFailed = false;
    app.images.AddImage("/in/s.tif", {11, 12});
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), -103);

    EXPECT_FALSE(app.files.Has("/in/t.tif"));
}

TEST(AppendPagesToTiff, LeavesAnUnreadableTargetAlone)
{
    TestApplication app;
    app.images.AddImage("/in/s.tif", {11});
    app.images.AddImage("/in/t.tif", {1, 2});
    app.images.broken_page = 1;
    clsConversionOptions objOptions = objRequest("/in/s.tif", 3, "/in/t.tif", 3, "1^0^TRUE^75");

    EXPECT_EQ(PerformConversionItemNCTOCX(app, objOptions), 0);

    EXPECT_EQ(objOptions.lErr, -101);
    EXPECT_EQ(app.images.PagesOf("/in/t.tif"), (Pages{1, 2}));
}
