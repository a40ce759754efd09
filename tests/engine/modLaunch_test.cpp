// Launching a program and waiting for it to exit.
#include "src/engine/modLaunch.h"

#include <gtest/gtest.h>

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
        app.frmMain.lJobStartTick = app.clock.tick;
        objOptions.sOriginalFile = "/bin/tool";
        objOptions.sTargetFile = "-a \"b c\"";
        objOptions.sExtraParams = "128^6^-1";
    }
    std::int32_t lRun() { return lLaunchTask(app, objOptions); }

    TestApplication app;
    FakeProcessLauncher& objLauncher = app.launcher;
    clsConversionOptions objOptions;
};

}  // namespace

TEST_F(Launch, PassesArgumentsPriorityAndWindowState)
{
    EXPECT_EQ(lRun(), 0);

    ASSERT_EQ(objLauncher.starts.size(), 1u);
    EXPECT_EQ(objLauncher.starts[0].sProgram, "/bin/tool");
    EXPECT_EQ(objLauncher.starts[0].sArguments, "-a \"b c\"");
    EXPECT_EQ(objLauncher.starts[0].lPriority, 128);
    EXPECT_EQ(objLauncher.starts[0].lWindowState, 6);
}

TEST_F(Launch, SucceedsAndStoresAnyExitCode)
{
    objLauncher.exit_code = 3;

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objOptions.lCommandLineExitCode, 3);
}

TEST_F(Launch, FailsIfTheProgramCannotBeStarted)
{
    objLauncher.can_start = false;
    EXPECT_EQ(lRun(), -10);
    EXPECT_EQ(objOptions.lCommandLineExitCode, 0);
}

TEST_F(Launch, ProcessesEventsAndShowsSecondsWhileWaiting)
{
    objLauncher.polls_until_exit = 4;
    objLauncher.on_poll = [&] { app.clock.tick += 1500; };

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(app.windows.do_events, 4);
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(11), "4.5");
}

TEST_F(Launch, SleepsBetweenPollsInsteadOfSpinning)
{
    objLauncher.polls_until_exit = 3;

    lRun();

    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(objLauncher.waits[i] > 0 && objLauncher.waits[i] <= 50);
}

TEST_F(Launch, GivesUpAfterTheTimeout)
{
    objOptions.sExtraParams = "32^1^2";
    objLauncher.polls_until_exit = 0;
    objLauncher.on_poll = [&] { app.clock.tick += 1000; };

    EXPECT_EQ(lRun(), -11);

    EXPECT_EQ(app.windows.do_events, 3);  // at 0, 1 and 2 seconds; 3 exceeds the timeout
}

TEST_F(Launch, PollsOnceMoreAfterTheTimeout)
{
    objOptions.sExtraParams = "32^1^0";
    objLauncher.polls_until_exit = 2;
    objLauncher.exit_code = 5;
    objLauncher.on_poll = [&] { app.clock.tick += 1; };

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objOptions.lCommandLineExitCode, 5);
}

TEST_F(Launch, TimesOutImmediatelyWithATimeoutOfZero)
{
    objOptions.sExtraParams = "32^1^0";
    objLauncher.polls_until_exit = 0;
    objLauncher.on_poll = [&] { app.clock.tick += 1; };

    EXPECT_EQ(lRun(), -11);
}

TEST_F(Launch, StopsWaitingIfTheRunIsPaused)
{
    objLauncher.polls_until_exit = 0;
    app.windows.on_do_events = [&] { app.frmMain.bRunning = app.windows.do_events < 3; };

    EXPECT_EQ(lRun(), -11);

    EXPECT_EQ(app.windows.do_events, 3);
}

TEST_F(Launch, ReadsDetailsWithoutFieldsAsZeros)
{
    objOptions.sExtraParams = "128";

    EXPECT_EQ(lRun(), 0);

    EXPECT_EQ(objLauncher.starts[0].lPriority, 0);
}
