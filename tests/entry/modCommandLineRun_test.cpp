// Runs without windows and their reports.
#include "src/entry/modCommandLineRun.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

namespace
{

class CommandLineRun : public testing::Test
{
protected:
    CommandLineRun()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.bCommandLineMode = true;
        app.frmMain.bRunning = true;
        app.frmMain.lJobStartTick = app.clock.tick - 1500;
        app.files.AddFolder("/out");
        objOptions.lOriginalFileType = 2;
        objOptions.lTargetFileType = 8;
        objOptions.sLogFile = "/out/r.txt";
    }
    std::int32_t lRun(const std::string& sSource, const std::string& sTarget)
    {
        objOptions.sOriginalFile = sSource;
        objOptions.sTargetFile = sTarget;
        return lRunFromCommandLine(app, objOptions);
    }
    std::string sReport() const { return app.files.Content("/out/r.txt"); }

    TestApplication app;
    clsConversionOptions objOptions;
};

const std::string kTask = " M\t*^0^FALSE^75^\t1\tC\t";

}  // namespace

TEST_F(CommandLineRun, ReportsSuccessAndTheTime)
{
    app.images.AddImage("/in/a.bmp");

    EXPECT_EQ(lRun("/in/a.bmp", "/out/a.png"), 0);

    EXPECT_EQ(sReport(), "Conversion Successful\nTime to complete job: 1.5\n");
    EXPECT_FALSE(app.frmMain.bRunning);
}

TEST_F(CommandLineRun, ReportsSuccessOnlyOnceItsSavesAreOnTheDisk)
{
    app.images.AddImage("/in/a.bmp");
    app.files.fail_syncs = true;

    EXPECT_THROW(lRun("/in/a.bmp", "/out/a.png"), clsRaisedError);

    EXPECT_EQ(sReport(), "");
}

TEST_F(CommandLineRun, ReportsSuccessForAnEmptyWildcard)
{
    app.files.AddFolder("/in");

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), 0);

    EXPECT_EQ(sReport(), "Conversion Successful\nTime to complete job: 1.5\n");
}

TEST_F(CommandLineRun, ReportsEachFailedFileAndTheTime)
{
    app.images.AddImage("/in/1.bmp");
    app.images.AddImage("/in/2.bmp");
    app.images.unwritable = {"/out/1.png", "/out/2.png"};

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), -103);

    EXPECT_EQ(sReport(),
              "Job # 1  Unable to convert - /in/1.bmp\nJob # 1  Unable to convert - /in/2.bmp\n"
              "Time to complete job: 1.5\n");
}

TEST_F(CommandLineRun, ShowsEveryReportInABoxIfVerbose)
{
    app.images.AddImage("/in/1.bmp");
    app.images.unwritable = {"/out/1.png"};
    objOptions.bVerbose = true;

    lRun("/in/1.bmp", "/out/1.png");

    ASSERT_EQ(app.windows.boxes.size(), 2u);
    EXPECT_EQ(app.windows.boxes[0].text, "Job # 1  Unable to convert - /in/1.bmp");
}

TEST_F(CommandLineRun, SavesTheLogAsAJobOnlyAfterFailures)
{
    app.images.AddImage("/in/1.bmp");
    objOptions.sLogAsConversionJobFile = "/out/x.vjb";
    lRun("/in/1.bmp", "/out/1.png");
    EXPECT_FALSE(app.files.Has("/out/x.vjb"));

    app.images.unwritable = {"/out/1.png"};
    lRun("/in/1.bmp", "/out/1.png");
    EXPECT_EQ(app.files.Content("/out/x.vjb"), "\t1\t1\tC\t/in/1.bmp\t2\tbmp\t/out/1.png\t\r\n");
}

TEST_F(CommandLineRun, RunsAllTasksOfAJobFile)
{
    app.images.AddImage("/in/a.bmp");
    app.files.AddFile("/j.vjb", kTask + "/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\t\r\n");
    objOptions.sCLBatchJobFile = "/j.vjb";

    EXPECT_EQ(lRunFromCommandLine(app, objOptions), 0);

    EXPECT_TRUE(app.files.Has("/out/a.png"));
    EXPECT_EQ(sReport(), "Conversion Successful\nTime to complete job: 0.0\n");
}

TEST_F(CommandLineRun, FailsForAJobWithAnyLogRow)
{
    app.files.AddFile("/j.vjb", kTask + "/in/none.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\t\r\n");
    objOptions.sCLBatchJobFile = "/j.vjb";

    EXPECT_EQ(lRunFromCommandLine(app, objOptions), -1);

    EXPECT_EQ(sReport(),
              "Job # 1  File: /in/none.bmp does not exist - /in/none.bmp\nTime to complete job: 0.0\n");
}

TEST_F(CommandLineRun, FailsEvenIfTheLogHasOnlySuccesses)
{
    app.images.AddImage("/in/a.bmp");
    app.files.AddFile("/j.vjb", kTask + "/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\t\r\n");
    objOptions.sCLBatchJobFile = "/j.vjb";
    app.frmMain.sLogFile = "/out/settings.log";

    EXPECT_EQ(lRunFromCommandLine(app, objOptions), -1);
}

TEST_F(CommandLineRun, ResumesJobsAtTheirFirstUnmarkedRow)
{
    app.images.AddImage("/in/a.bmp");
    app.images.AddImage("/in/b.bmp");
    app.files.AddFile("/j.vjb", kTask + "/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t+\t\r\n" + kTask +
                                    "/in/b.bmp\t2\tbmp\t/out/b.png\t8\tpng\t\t\r\n");
    objOptions.sCLBatchJobFile = "/j.vjb";

    lRunFromCommandLine(app, objOptions);

    EXPECT_FALSE(app.files.Has("/out/a.png"));
    EXPECT_TRUE(app.files.Has("/out/b.png"));
}

namespace
{

/// Has a job file that can't be read.
class LockedJobFiles : public FakeFileSystem
{
public:
    std::unique_ptr<TextReader> OpenForInput(const std::string& path) const override
    {
        throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + path + " (Permission denied)");
    }
};

}  // namespace

TEST(UnreadableJob, FailsTheRunWithALineOfItsOwn)
{
    for (const bool bReport : {true, false}) {
        TestServices objServices;
        LockedJobFiles objFiles;
        objFiles.AddFile("/j.vjb");
        objFiles.AddFolder("/out");
        Application app(Services{objFiles, objServices.ini, objServices.clock, objServices.locale,
                                 objServices.mutex, objServices.folders, objServices.windows,
                                 objServices.images, objServices.utility, objServices.transform,
                                 objServices.launcher});
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.bCommandLineMode = true;
        app.frmMain.lJobStartTick = app.svc.objClock.GetTickCount();
        clsConversionOptions objOptions;
        objOptions.sCLBatchJobFile = "/j.vjb";
        objOptions.sLogFile = bReport ? "/out/r.txt" : "";

        EXPECT_EQ(lRunFromCommandLine(app, objOptions), -1);

        const std::string sFailure = "Path/File access error: /j.vjb (Permission denied)";
        EXPECT_EQ(objFiles.Content("/out/r.txt"), bReport ? sFailure + "\nTime to complete job: 0.0\n" : "");
        ASSERT_EQ(objServices.windows.boxes.size(), bReport ? 0u : 1u);
        if (!bReport) {
            EXPECT_EQ(objServices.windows.boxes[0].text, sFailure);
        }
    }
}
