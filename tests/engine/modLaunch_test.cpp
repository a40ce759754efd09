// Launching a program and waiting for it to exit.
#include "src/engine/modLaunch.h"

#include "src/base/clsConversionOptions.h"
#include "tests/fakes/test_application.h"

namespace
{

class Launch : public testing::Test
{
protected:
    Launch()
    {
        app.frmMain.bRunning = true;
        app.frmMain.lJobStartTick = app.objClock.lTick;
        objOptions.sOriginalFile = "/bin/tool";
        objOptions.sTargetFile = "-a \"b c\"";
        objOptions.sExtraParams = "128^6^-1";
    }
    std::int32_t lRun() { return lLaunchTask(app, objOptions); }

    TestApplication app;
    FakeProcessLauncher& objLauncher = app.objLauncher;
    clsConversionOptions objOptions;
};

}  // namespace

TEST_F(Launch, PassesArgumentsPriorityAndWindowState)
{
    EXPECT_EQ(lRun(), 0);

    ASSERT_EQ(objLauncher.aStarts.size(), 1u);
    EXPECT_EQ(objLauncher.aStarts[0].sProgram, "/bin/tool");
    EXPECT_EQ(objLauncher.aStarts[0].sArguments, "-a \"b c\"");
    EXPECT_EQ(objLauncher.aStarts[0].lPriority, 128);
    EXPECT_EQ(objLauncher.aStarts[0].lWindowState, 6);
}

TEST_F(Launch, SucceedsAndStoresAnyExitCode)
{
    objLauncher.lExitCode = 3;

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objOptions.lCommandLineExitCode, 3);
}

TEST_F(Launch, FailsIfTheProgramCannotBeStarted)
{
    objLauncher.bCanStart = false;
    EXPECT_EQ(lRun(), -10);
    EXPECT_EQ(objOptions.lCommandLineExitCode, 0);
}

TEST_F(Launch, ProcessesEventsAndShowsSecondsWhileWaiting)
{
    objLauncher.lLooksUntilEnd = 4;
    objLauncher.OnLook = [&] { app.objClock.lTick += 1500; };

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(app.objWindows.lDoEvents, 4);
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(11), "4.5");
}

TEST_F(Launch, SleepsBetweenPollsInsteadOfSpinning)
{
    objLauncher.lLooksUntilEnd = 3;

    lRun();

    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(objLauncher.aWaits[i] > 0 && objLauncher.aWaits[i] <= 50);
}

TEST_F(Launch, GivesUpAfterTheTimeout)
{
    objOptions.sExtraParams = "32^1^2";
    objLauncher.lLooksUntilEnd = 0;
    objLauncher.OnLook = [&] { app.objClock.lTick += 1000; };

    EXPECT_EQ(lRun(), -11);

    EXPECT_EQ(app.objWindows.lDoEvents, 3);  // at 0, 1 and 2 seconds; 3 exceeds the timeout
}

TEST_F(Launch, PollsOnceMoreAfterTheTimeout)
{
    objOptions.sExtraParams = "32^1^0";
    objLauncher.lLooksUntilEnd = 2;
    objLauncher.lExitCode = 5;
    objLauncher.OnLook = [&] { app.objClock.lTick += 1; };

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objOptions.lCommandLineExitCode, 5);
}

TEST_F(Launch, TimesOutImmediatelyWithATimeoutOfZero)
{
    objOptions.sExtraParams = "32^1^0";
    objLauncher.lLooksUntilEnd = 0;
    objLauncher.OnLook = [&] { app.objClock.lTick += 1; };

    EXPECT_EQ(lRun(), -11);
}

TEST_F(Launch, StopsWaitingIfTheRunIsPaused)
{
    objLauncher.lLooksUntilEnd = 0;
    app.objWindows.OnDoEvents = [&] { app.frmMain.bRunning = app.objWindows.lDoEvents < 3; };

    EXPECT_EQ(lRun(), -11);

    EXPECT_EQ(app.objWindows.lDoEvents, 3);
}

TEST_F(Launch, ReadsDetailsWithoutFieldsAsZeros)
{
    objOptions.sExtraParams = "128";

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objLauncher.aStarts[0].lPriority, 0);
}
