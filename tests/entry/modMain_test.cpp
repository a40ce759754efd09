// The program's run modes.
#include "src/entry/modMain.h"

#include <gtest/gtest.h>

#include <new>

#include "tests/fakes/test_application.h"

TEST(Main, SetsTheSettingsPathAndTheHelpFile)
{
    TestApplication app;

    Main(app, "/?");

    EXPECT_EQ(app.sIniFile, "/settings/VL_SearchHistory.INI");
    EXPECT_EQ(app.sHelpFile, "Varnel.HLP");
}

TEST(Main, ReportsTheReasonThenTheRejection)
{
    TestApplication app;
    app.files.AddFolder("c:\\out");

    Main(app, "/S c:\\none.bmp /T c:\\out\\a.png /L c:\\out\\r.txt");

    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"),
              "Original File\r\rc:\\none.bmp\r\rdoes not exist.\nMissing required or invalid command line "
              "argument(s)\n");
    EXPECT_FALSE(app.frmMain.Visible());
}

TEST(Main, RejectsALineWithoutSwitchesSilently)
{
    TestApplication app;

    Main(app, "hello");

    EXPECT_TRUE(app.bCommandLineMode);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(Main, RunsATaskWithoutSavingSettings)
{
    TestApplication app;
    app.images.AddImage("c:\\in\\a.bmp");
    app.files.AddFolder("c:\\out");

    Main(app, "/S c:\\in\\a.bmp /T c:\\out\\a.png /L c:\\out\\r.txt");

    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"), "Conversion Successful\nTime to complete job: 0.0\n");
    EXPECT_TRUE(app.ini.written.empty());
    EXPECT_FALSE(app.frmMain.Visible());
}

TEST(Main, OpensTheMainWindowForAnEmptyCommand)
{
    TestApplication app;
    app.windows.display = true;

    Main(app, "");

    EXPECT_TRUE(app.frmMain.Visible());
    EXPECT_TRUE(app.frmMainMDI.Visible());
    EXPECT_FALSE(app.frmPleaseWait.Visible());
    EXPECT_EQ(app.frmPleaseWait.lblHeader.Caption(), "Varnel!");
    EXPECT_EQ(app.frmPleaseWait.lblLine1.Caption(), "Orbelan, Inc.");
}

TEST(Main, OpensTheOptionsOfAConversionFromTheMenu)
{
    TestApplication app;
    app.windows.display = true;
    app.windows.on_show_modal = [&app](Form&) {
        app.frmConversionOptions.txtTitle.SetText("My trip");
        app.frmConversionOptions.cmdDone.UserClicks();
    };
    Main(app, "");

    app.frmMainMDI.mnuConversionOptions.UserClicks();

    EXPECT_EQ(app.windows.modal_forms, std::vector<Form*>{&app.frmConversionOptions});
    EXPECT_EQ(app.frmMain.sImageConversionOptions,
              "1^0^FALSE^75^My trip^A batch picture tool^1/1/2007^Orbelan, Inc.^Orbelan 2006^^^");
    EXPECT_TRUE(app.frmMain.bDirtyConversionItem);
}

TEST(Main, AsksAForeignUserForALanguageAtTheFirstStart)
{
    TestApplication app;
    app.windows.display = true;
    app.locale.lcid = 1031;
    app.windows.on_show_modal = [&app](Form&) { app.frmLanguage.cmdDone.UserClicks(); };

    Main(app, "");
    EXPECT_EQ(app.windows.modal_forms, std::vector<Form*>{&app.frmLanguage});
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
    EXPECT_TRUE(app.frmMain.Visible());
}

TEST(Main, AsksForNoLanguageWithoutAWindow)
{
    TestApplication app;
    app.locale.lcid = 1031;

    Main(app, "");
    Main(app, "/S c:\\none.bmp /T c:\\none.png");

    EXPECT_TRUE(app.windows.modal_forms.empty());
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "(none)");
}

TEST(Main, ReportsAMissingDisplayAndExits)
{
    TestApplication app;

    Main(app, "");

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_FALSE(app.frmMain.Visible());
}

TEST(Main, OpensAJobWithoutRunningIt)
{
    TestApplication app;
    app.windows.display = true;
    app.images.AddImage("c:\\in\\a.bmp");
    app.files.AddFile("c:\\j.vjb", " M\t*^0^\t1\tC\tc:\\in\\a.bmp\t2\tbmp\tc:\\out\\a.png\t8\tpng\t\t\r\n");

    Main(app, "/J c:\\j.vjb /O");

    EXPECT_TRUE(app.frmMain.Visible());
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 3);
    EXPECT_TRUE(app.images.calls.empty());
    EXPECT_TRUE(app.bCommandLineMode);
}

static void SetUpPersistentSchedule(TestApplication& app)
{
    app.files.AddFile("c:\\night.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "c:\\night.vjb");
    app.ini.Set("frmScheduler", "chkPersistRunning", "1");
}

TEST(Main, StartsAPersistentScheduleWithTheWindow)
{
    TestApplication app;
    app.windows.display = true;
    SetUpPersistentSchedule(app);

    Main(app, "");

    EXPECT_TRUE(app.frmScheduler.Timer1.Enabled());
    EXPECT_EQ(app.frmScheduler.sRunJobFile, "c:\\night.vjb");
    EXPECT_FALSE(app.frmScheduler.Visible());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(Main, StartsNoScheduleWithoutAWindow)
{
    TestApplication app;
    SetUpPersistentSchedule(app);
    app.images.AddImage("c:\\in\\a.bmp");
    app.files.AddFolder("c:\\out");

    Main(app, "/S c:\\in\\a.bmp /T c:\\out\\a.png /L c:\\out\\r.txt");

    EXPECT_FALSE(app.frmScheduler.Timer1.Enabled());
    EXPECT_FALSE(app.frmScheduler.bLoaded);
    EXPECT_TRUE(app.ini.written.empty());
}

TEST(Main, ShowsTheWindowEvenIfItsScheduleCannotBegin)
{
    TestApplication app;
    app.windows.display = true;
    SetUpPersistentSchedule(app);
    app.files.DeleteFile("c:\\night.vjb");

    Main(app, "");

    EXPECT_FALSE(app.frmScheduler.Timer1.Enabled());
    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Job file does not exist");
    EXPECT_TRUE(app.frmMain.Visible());
}

TEST(Main, TellsARaisedErrorInABoxWhereThereIsNoReportFile)
{
    TestApplication app;
    app.images.AddImage("c:\\in\\a.tif", {1, 2});
    app.files.AddFolder("c:\\out");

    Main(app, "/S c:\\in\\a.tif /T c:\\out\\a.png /1 5-");

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Type mismatch");
    EXPECT_EQ(app.windows.boxes[0].title, "Error");
}

TEST(Main, CatchesMoreThanRaisedErrors)
{
    TestApplication app;
    app.images.AddImage("c:\\in\\a.bmp");
    app.files.AddFolder("c:\\out");
    app.windows.on_do_events = [] { throw std::bad_alloc(); };

    Main(app, "/S c:\\in\\a.bmp /T c:\\out\\a.png /L c:\\out\\r.txt");

    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"), "Out of memory\n");
    EXPECT_FALSE(app.frmMain.bRunning);
}

TEST(Main, TellsAnErrorOfAWindowRunInABox)
{
    TestApplication app;
    app.windows.display = true;
    app.windows.on_do_events = [] { throw std::bad_alloc(); };

    Main(app, "");

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Out of memory");
    EXPECT_EQ(app.windows.boxes[0].title, "Error");
}

TEST(Main, ReportsARaisedErrorWithoutATimeLine)
{
    TestApplication app;
    app.images.AddImage("c:\\in\\a.tif", {1, 2});
    app.files.AddFolder("c:\\out");

    Main(app, "/S c:\\in\\a.tif /T c:\\out\\a.png /1 5- /L c:\\out\\r.txt");

    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"), "Type mismatch\n");
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.bInternalGridChange);
}
