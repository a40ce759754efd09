// Report lines, message boxes and the lock around them.
#include "src/report/modReportMessage.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(ReportMessage, AppendsALineToTheReportFile)
{
    TestApplication app;
    app.files.AddFile("/out/report.txt", "before\n");

    ReportMessage(app, "Conversion Successful", "/out/report.txt", false);

    EXPECT_EQ(app.files.Content("/out/report.txt"), "before\nConversion Successful\n");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(ReportMessage, WritesNothingWithoutAReportFile)
{
    TestApplication app;

    ReportMessage(app, "Conversion Successful", "", false);

    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(ReportMessage, ShowsItsBoxWhileHoldingTheLock)
{
    TestApplication app;
    int lHeldWhileShown = 0;
    app.windows.on_box = [&] { lHeldWhileShown = app.mutex.held; };

    ReportMessage(app, "Conversion Successful", "", true);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Conversion Successful");
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Information);
    EXPECT_EQ(lHeldWhileShown, 1);
    EXPECT_EQ(app.mutex.calls,
              (std::vector<std::string>{"Acquire Stellor_Global_Mutex", "Release Stellor_Global_Mutex"}));
}

TEST(ReportMessage, ShowsAMessageBoxIfTheFileIsUnwritable)
{
    TestApplication app;
    app.files.AddFolder("/out");
    app.files.MakeReadOnly("/out");

    ReportMessage(app, "first", "/out/report.txt", false);
    ReportMessage(app, "second", "/out/report.txt", false);

    ASSERT_EQ(app.windows.boxes.size(), 2u);
    EXPECT_EQ(app.windows.boxes[1].text, "second");
    EXPECT_EQ(app.mutex.held, 0);
}

TEST(ReportMessage, ReportsAnUnwritableFileOnceIfThereIsADisplay)
{
    TestApplication app;
    app.windows.display = true;
    app.files.AddFolder("/out");
    app.files.MakeReadOnly("/out");

    ReportMessage(app, "first", "/out/report.txt", false);
    ReportMessage(app, "second", "/out/report.txt", false);

    EXPECT_EQ(app.windows.boxes.size(), 1u);
}
