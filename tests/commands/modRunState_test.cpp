// The state of a run and what is left of it.
#include "src/commands/modRunState.h"

#include <exception>
#include <stdexcept>

#include "tests/fakes/control_watchers.h"
#include "tests/fakes/test_application.h"

TEST(RunScope, RunsUntilItsEndAndTheCommandsFollow)
{
    TestApplication app;
    {
        const RunScope objRun(app);
        EXPECT_TRUE(app.frmMain.bRunning);
        EXPECT_TRUE(bRunInProgress(app));
        EXPECT_TRUE(app.frmMain.keyPause.Enabled());
        EXPECT_FALSE(app.frmMain.keyAdd.Enabled());
        app.frmMainMDI.SetHourglass(true);
    }
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(bRunInProgress(app));
    EXPECT_FALSE(app.frmMain.keyPause.Enabled());
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST(RunScope, LeavesTheRunAroundItGoing)
{
    TestApplication app;
    const RunScope objOuter(app);
    {
        const RunScope objInner(app);
    }
    EXPECT_TRUE(app.frmMain.bRunning);
    EXPECT_TRUE(app.frmMain.keyPause.Enabled());
    EXPECT_FALSE(app.frmMain.keyAdd.Enabled());
}

TEST(RunScope, LetsAPauseEndTheRunsAroundItToo)
{
    TestApplication app;
    {
        const RunScope objOuter(app);
        {
            const RunScope objInner(app);
            PauseRun(app);
        }
        EXPECT_FALSE(app.frmMain.bRunning);
        EXPECT_TRUE(bRunInProgress(app));
        EXPECT_FALSE(app.frmMain.keyConvert.Enabled());
    }
    EXPECT_FALSE(bRunInProgress(app));
}

TEST(RunScope, IsPutBackWhenAnErrorLeavesIt)
{
    TestApplication app;

    const auto fnRaise = [&] {
        const RunScope objOuter(app);
        const RunScope objInner(app);
        app.frmMainMDI.SetHourglass(true);
        throw std::runtime_error("raised");
    };

    EXPECT_THROW(fnRaise(), std::runtime_error);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(bRunInProgress(app));
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
}

TEST(RunScope, SurvivesAViewThatRaisesWhileAnErrorLeavesIt)
{
    TestApplication app;

    const auto fnRaise = [&] {
        const RaisingView objView(app.frmMain.keyAdd);
        const RunScope objRun(app);
        throw std::runtime_error("raised");
    };

    EXPECT_THROW(fnRaise(), std::runtime_error);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(bRunInProgress(app));
}

TEST(StopRun, RaisesAtTheNextTestUntilTheRunHasEnded)
{
    TestApplication app;
    {
        const RunScope objRun(app);
        EXPECT_NO_THROW(RaiseIfStopped(app));

        StopRun(app);

        EXPECT_FALSE(app.frmMain.bRunning);
        EXPECT_TRUE(bRunStopped(app));
        EXPECT_THROW(RaiseIfStopped(app), clsRunStopped);
    }
    EXPECT_FALSE(bRunStopped(app));
    EXPECT_NO_THROW(RaiseIfStopped(app));
}

TEST(StopRun, DoesNothingWithoutARun)
{
    TestApplication app;

    StopRun(app);

    EXPECT_FALSE(bRunStopped(app));
}

TEST(StopRun, PassesCodeThatHandlesFailures)
{
    TestApplication app;
    const RunScope objRun(app);
    StopRun(app);

    const auto fnHandleFailures = [&] {
        try {
            RaiseIfStopped(app);
        } catch (const std::exception&) {
            FAIL() << "taken for a failure";
        }
    };

    EXPECT_THROW(fnHandleFailures(), clsRunStopped);
}

namespace
{

/// A view that shows whether a run goes on.
class RunView : ValueObserver
{
public:
    explicit RunView(Application& app)
        : m_app(app),
          m_objRunningWatch(app.frmMain.bRunning, *this),
          m_objRunsWatch(app.frmMain.lRunsInProgress, *this)
    {
    }
    std::vector<std::string> aStates;

private:
    void ValueChanged() override
    {
        aStates.push_back(!bRunInProgress(m_app) ? "idle" : m_app.frmMain.bRunning ? "running" : "ending");
    }
    Application& m_app;
    Observation m_objRunningWatch;
    Observation m_objRunsWatch;
};

}  // namespace

TEST(RunScope, TellsAViewOfBeginAndEnd)
{
    TestApplication app;
    RunView objView(app);
    {
        const RunScope objRun(app);
        EXPECT_EQ(objView.aStates.back(), "running");
    }
    EXPECT_EQ(objView.aStates.back(), "idle");
}

TEST(RunScope, TellsAViewOfAPause)
{
    TestApplication app;
    RunView objView(app);
    const RunScope objRun(app);

    PauseRun(app);

    EXPECT_EQ(objView.aStates.back(), "ending");
}
