// Report lines, message boxes and the lock around them.
#include "src/report/modReportMessage.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(ReportMessage, AppendsALineToTheReportFile)
{
    TestApplication app;
    app.objFiles.AddFile("/out/report.txt", "before\n");

    ReportMessage(app, "Conversion Successful", "/out/report.txt", false);

    EXPECT_EQ(app.objFiles.sContent("/out/report.txt"), "before\nConversion Successful\n");
    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST(ReportMessage, WritesNothingWithoutAReportFile)
{
    TestApplication app;

    ReportMessage(app, "Conversion Successful", "", false);

    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST(ReportMessage, ShowsItsBoxWhileHoldingTheLock)
{
    TestApplication app;
    int lHeldWhileShown = 0;
    app.objWindows.OnBox = [&] { lHeldWhileShown = app.objMutex.lHeld; };

    ReportMessage(app, "Conversion Successful", "", true);

    ASSERT_EQ(app.objWindows.aBoxes.size(), 1u);
    EXPECT_EQ(app.objWindows.aBoxes[0].sText, "Conversion Successful");
    EXPECT_EQ(app.objWindows.aBoxes[0].eIcon, BoxIcon::Information);
    EXPECT_EQ(lHeldWhileShown, 1);
    EXPECT_EQ(app.objMutex.aCalls,
              (std::vector<std::string>{"Acquire Stellor_Global_Mutex", "Release Stellor_Global_Mutex"}));
}

TEST(ReportMessage, ShowsAMessageBoxIfTheFileIsUnwritable)
{
    TestApplication app;
    app.objFiles.AddFolder("/out");
    app.objFiles.MakeReadOnly("/out");

    ReportMessage(app, "first", "/out/report.txt", false);
    ReportMessage(app, "second", "/out/report.txt", false);

    ASSERT_EQ(app.objWindows.aBoxes.size(), 2u);
    EXPECT_EQ(app.objWindows.aBoxes[1].sText, "second");
    EXPECT_EQ(app.objMutex.lHeld, 0);
}

TEST(ReportMessage, ReportsAnUnwritableFileOnceIfThereIsADisplay)
{
    TestApplication app;
    app.objWindows.bDisplay = true;
    app.objFiles.AddFolder("/out");
    app.objFiles.MakeReadOnly("/out");

    ReportMessage(app, "first", "/out/report.txt", false);
    ReportMessage(app, "second", "/out/report.txt", false);

    EXPECT_EQ(app.objWindows.aBoxes.size(), 1u);
}
