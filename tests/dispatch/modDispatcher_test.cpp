// Acts: which may happen, what becomes of their errors, and closing.
#include "src/dispatch/modDispatcher.h"

#include <new>
#include <stdexcept>

#include "src/base/raised_error.h"
#include "src/commands/modRunState.h"
#include "src/forms/scope_guards.h"
#include "tests/fakes/test_application.h"

namespace
{

class Dispatcher : public testing::Test
{
protected:
    /// A handler that counts its acts in lActs and then does fnAct.
    std::function<void()> Counting(Act eAct, std::function<void()> fnAct = {})
    {
        return Handler(
            app,
            [this, fnAct = std::move(fnAct)](Application&) {
                ++lActs;
                if (fnAct)
                    fnAct();
            },
            eAct);
    }
    /// Something is in progress and lets events in, and a person does fnAct then.
    void WhileEventsAreLetIn(const std::function<void()>& fnAct)
    {
        app.windows.on_do_events = fnAct;
        Dispatch(app, Act::Ordinary, [&] { app.windows.DoEvents(); });
        app.windows.on_do_events = nullptr;
    }
    void WhileAFormIsOpen(const std::function<void()>& fnAct)
    {
        app.windows.on_show_modal = [&](Form&) { fnAct(); };
        Dispatch(app, Act::Ordinary, [&] { app.windows.ShowModal(app.frmTypeMatchNotification); });
        app.windows.on_show_modal = nullptr;
    }
    void WhileABoxIsShown(const std::function<void()>& fnAct)
    {
        app.windows.on_box = fnAct;
        Dispatch(app, Act::Ordinary,
                 [&] { app.windows.MsgBox("text", "title", BoxIcon::Information, BoxButtons::Ok); });
        app.windows.on_box = nullptr;
    }
    void ExpectIdle() const
    {
        EXPECT_FALSE(app.frmMain.bRunning);
        EXPECT_FALSE(app.bInternalGridChange);
        EXPECT_FALSE(app.frmMainMDI.Hourglass());
        EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
        EXPECT_FALSE(app.frmMain.keyPause.Enabled());
    }

    TestApplication app;
    int lActs = 0;
};

}  // namespace

TEST_F(Dispatcher, PerformsEveryActWhileNothingIsInProgress)
{
    for (const Act eAct : {Act::Ordinary, Act::MidRun, Act::Unattended})
        Counting(eAct)();

    EXPECT_EQ(lActs, 3);
    EXPECT_EQ(Dispatch(app, Act::Ordinary, [] {}), Outcome::Done);
}

static std::string sSeenText;
static void NoteText(Application&, const std::string& sText, int lTimes)
{
    for (int l = 0; l < lTimes; ++l)
        sSeenText += sText;
}

TEST_F(Dispatcher, PassesTheArgumentsOfAnEvent)
{
    const std::function<void(const std::string&, int)> fnHandler = Handler(app, NoteText);

    fnHandler("ab", 2);

    EXPECT_EQ(sSeenText, "abab");
}

TEST_F(Dispatcher, PassesTheArgumentsToARoutineObject)
{
    std::string sSeen;
    const std::function<void(const std::string&)> fnHandler = HandlerOf<const std::string&>(
        app, [&sSeen](Application&, const std::string& sText) { sSeen = sText; });

    fnHandler("ab");

    EXPECT_EQ(sSeen, "ab");
}

static bool bIsPositive(Application&, std::int32_t lRow)
{
    if (lRow == 0)
        throw clsRaisedError(kErrOverflow, "Overflow");
    return lRow > 0;
}

TEST_F(Dispatcher, PassesOnTheAnswerToAQuestion)
{
    const std::function<bool(std::int32_t)> fnQuestion = Handler(app, bIsPositive);

    EXPECT_TRUE(fnQuestion(1));
    EXPECT_FALSE(fnQuestion(-1));
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(Dispatcher, AnswersARefusedQuestionWithFalse)
{
    const std::function<bool(std::int32_t)> fnQuestion = Handler(app, bIsPositive);
    bool bAnswer = true;

    WhileEventsAreLetIn([&] { bAnswer = fnQuestion(1); });

    EXPECT_FALSE(bAnswer);
}

TEST_F(Dispatcher, AnswersAQuestionThatRaisesWithFalse)
{
    const std::function<bool(std::int32_t)> fnQuestion = Handler(app, bIsPositive);

    EXPECT_FALSE(fnQuestion(0));

    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST_F(Dispatcher, ShowsTheDescriptionOfARaisedErrorInABox)
{
    app.objTranslator.dictTranslations["Error"] = "Fehler";

    Counting(Act::Ordinary, [] { throw clsRaisedError(kErrOverflow, "Overflow"); })();

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Overflow");
    EXPECT_EQ(app.windows.boxes[0].title, "Fehler");
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::Ok);
}

TEST_F(Dispatcher, CatchesWhateverIsRaised)
{
    EXPECT_EQ(Dispatch(app, Act::Ordinary, [] { throw std::bad_alloc(); }), Outcome::Raised);
    EXPECT_EQ(Dispatch(app, Act::Ordinary, [] { throw std::out_of_range("beyond"); }), Outcome::Raised);
    EXPECT_EQ(Dispatch(app, Act::Ordinary, [] { throw 7; }), Outcome::Raised);

    ASSERT_EQ(app.windows.boxes.size(), 3u);
    EXPECT_EQ(app.windows.boxes[0].text, "Out of memory");
    EXPECT_EQ(app.windows.boxes[1].text, "beyond");
    EXPECT_EQ(app.windows.boxes[2].text, "Unexpected error");
}

TEST_F(Dispatcher, ReportsToTheCallerWhoAsksForIt)
{
    std::string sReported;

    Dispatch(
        app, Act::Ordinary, [] { throw clsRaisedError(kErrTypeMismatch, "Type mismatch"); },
        [&](const std::string& sDescription) { sReported = sDescription; });

    EXPECT_EQ(sReported, "Type mismatch");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(Dispatcher, PutsTheRunStateBackBeforeItShowsAnError)
{
    app.windows.on_box = [&] { ExpectIdle(); };

    Counting(Act::Ordinary, [&] {
        const RunScope objRun(app);
        const InternalChange objChange(app);
        const BusyPointer objPointer(app);
        const RedrawLock objLock(app.frmMain.fgToDo);
        throw clsRaisedError(kErrOverflow, "Overflow");
    })();

    EXPECT_EQ(app.windows.boxes.size(), 1u);
    ExpectIdle();
}

TEST_F(Dispatcher, PutsBackAStateThatNoScopeHolds)
{
    Counting(Act::Ordinary, [&] {
        app.frmMain.bRunning = app.bInternalGridChange = true;
        app.frmMainMDI.SetHourglass(true);
        throw clsRaisedError(kErrOverflow, "Overflow");
    })();

    ExpectIdle();
}

TEST_F(Dispatcher, SurvivesABoxThatRaises)
{
    app.windows.on_box = [] { throw std::bad_alloc(); };
    testing::internal::CaptureStderr();

    Counting(Act::Ordinary, [] { throw clsRaisedError(kErrOverflow, "Overflow"); })();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: Overflow\n");
    app.windows.on_box = nullptr;
    EXPECT_EQ(Dispatch(app, Act::Ordinary, [] {}), Outcome::Done);
}

TEST_F(Dispatcher, CallsHandlersOfTheProgramsOwnEventsStraightThrough)
{
    app.frmMain.txtCommandLineWaitTimeInSeconds.OnChange =
        Counting(Act::Ordinary, [] { throw clsRaisedError(kErrOverflow, "Overflow"); });
    bool bWentOn = false;

    Counting(Act::Ordinary, [&] {
        app.frmMain.txtCommandLineWaitTimeInSeconds.SetText("5");
        bWentOn = true;
    })();

    EXPECT_EQ(lActs, 2);
    EXPECT_FALSE(bWentOn);
    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST_F(Dispatcher, LetsAHandlersOwnChangesReachItAgain)
{
    TextBox& txt = app.frmMain.txtCommandLineWaitTimeInSeconds;
    txt.OnChange = Counting(Act::Ordinary, [&] { txt.SetText("without quotes"); });

    txt.SetText("\"with quotes\"");

    EXPECT_EQ(lActs, 2);
    EXPECT_EQ(txt.Text(), "without quotes");
}

TEST_F(Dispatcher, AdmitsOnlyMidRunActsWhileEventsAreLetIn)
{
    WhileEventsAreLetIn(Counting(Act::Ordinary));
    WhileEventsAreLetIn(Counting(Act::Unattended));
    EXPECT_EQ(lActs, 0);

    WhileEventsAreLetIn(Counting(Act::MidRun));
    EXPECT_EQ(lActs, 1);
}

TEST_F(Dispatcher, KeepsRefusingAfterAPauseUntilTheRunHasEnded)
{
    const auto fnConvert = Counting(Act::Ordinary);
    WhileEventsAreLetIn([&] {
        app.frmMain.bRunning = false;
        fnConvert();
    });
    EXPECT_EQ(lActs, 0);

    fnConvert();
    EXPECT_EQ(lActs, 1);
}

TEST_F(Dispatcher, CallsTheProgramsOwnEventsOfAMidRunActStraightThrough)
{
    app.frmMain.txtCommandLineWaitTimeInSeconds.OnChange = Counting(Act::Ordinary);

    WhileEventsAreLetIn(Handler(
        app, [](Application& a) { a.frmMain.txtCommandLineWaitTimeInSeconds.SetText("5"); }, Act::MidRun));

    EXPECT_EQ(lActs, 1);
}

TEST_F(Dispatcher, KeepsTheRunGoingWhenAMidRunActRaises)
{
    app.windows.on_do_events = Handler(
        app, [](Application&) { throw clsRaisedError(kErrOverflow, "Overflow"); }, Act::MidRun);
    bool bWentOn = false;

    Dispatch(app, Act::Ordinary, [&] {
        const RunScope objRun(app);
        const InternalChange objChange(app);
        app.windows.DoEvents();
        bWentOn = app.frmMain.bRunning && app.bInternalGridChange;
    });

    EXPECT_TRUE(bWentOn);
    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST_F(Dispatcher, AdmitsAllButTicksInAModalForm)
{
    WhileAFormIsOpen(Counting(Act::Ordinary));
    WhileAFormIsOpen(Counting(Act::MidRun));
    EXPECT_EQ(lActs, 2);

    WhileAFormIsOpen(Counting(Act::Unattended));
    EXPECT_EQ(lActs, 2);
}

TEST_F(Dispatcher, CatchesAnErrorOfAModalFormInsideIt)
{
    bool bFormWentOn = false;
    WhileAFormIsOpen([&] {
        Counting(Act::Ordinary, [] { throw clsRaisedError(kErrOverflow, "Overflow"); })();
        bFormWentOn = true;
    });

    EXPECT_TRUE(bFormWentOn);
    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST_F(Dispatcher, RefusesEverythingWhileABoxWaits)
{
    for (const Act eAct : {Act::Ordinary, Act::MidRun, Act::Unattended})
        WhileABoxIsShown(Counting(eAct));

    EXPECT_EQ(lActs, 0);
}

TEST_F(Dispatcher, RefusesAHandlerInsideItself)
{
    std::function<void()> fnOpen;
    app.windows.on_show_modal = [&](Form&) { fnOpen(); };
    fnOpen = Counting(Act::Ordinary, [&] { app.windows.ShowModal(app.frmTypeMatchNotification); });

    fnOpen();
    EXPECT_EQ(lActs, 1);

    app.windows.on_show_modal = nullptr;
    fnOpen();
    EXPECT_EQ(lActs, 2);
}

TEST_F(Dispatcher, OpensAHandlerAgainAfterItRaised)
{
    const auto fnHandler = Counting(Act::Ordinary, [] { throw clsRaisedError(kErrOverflow, "Overflow"); });

    fnHandler();
    fnHandler();

    EXPECT_EQ(lActs, 2);
}

TEST_F(Dispatcher, TellsTheCallerThatAnActWasRefused)
{
    Outcome eOutcome = Outcome::Done;
    WhileEventsAreLetIn([&] { eOutcome = Dispatch(app, Act::Ordinary, [] {}); });

    EXPECT_EQ(eOutcome, Outcome::Refused);
}

TEST_F(Dispatcher, SaysNothingAboutAStoppedRun)
{
    Dispatch(app, Act::Ordinary, [&] {
        const RunScope objRun(app);
        StopRun(app);
        RaiseIfStopped(app);
    });

    EXPECT_TRUE(app.windows.boxes.empty());
    ExpectIdle();
}

TEST_F(Dispatcher, ClosesAtOnceWhileNothingIsInProgress)
{
    CloseWhenIdle(app, [&](Application&) { ++lActs; });

    EXPECT_EQ(lActs, 1);
    EXPECT_FALSE(bCloseWaits(app));
}

TEST_F(Dispatcher, ClosesOnceTheActInProgressHasEnded)
{
    bool bRunWasOver = false;
    WhileEventsAreLetIn(Handler(
        app,
        [&](Application&) {
            CloseWhenIdle(app, [&](Application&) {
                ++lActs;
                bRunWasOver = app.objDispatch.aPumpsAtEntry.size() == 1 && app.windows.Pumps().empty();
            });
            EXPECT_TRUE(bCloseWaits(app));
            EXPECT_EQ(lActs, 0);
        },
        Act::MidRun));

    EXPECT_EQ(lActs, 1);
    EXPECT_TRUE(bRunWasOver);
    EXPECT_FALSE(bCloseWaits(app));
}

TEST_F(Dispatcher, ClosesAfterAnActThatRaised)
{
    Dispatch(app, Act::Ordinary, [&] {
        CloseWhenIdle(app, [&](Application&) { ++lActs; });
        throw clsRaisedError(kErrOverflow, "Overflow");
    });

    EXPECT_EQ(lActs, 1);
}

TEST_F(Dispatcher, CatchesAnErrorOfTheClose)
{
    CloseWhenIdle(app, [](Application&) { throw clsRaisedError(kErrOverflow, "Overflow"); });

    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST_F(Dispatcher, FinishesTheFileInWorkAndClosesThen)
{
    std::vector<std::string> aSteps;
    app.windows.on_do_events = [&] {
        CloseAfterRun(app, Closing::FinishThisFile, [&](Application&) { aSteps.push_back("closed"); });
    };

    Dispatch(app, Act::Ordinary, [&] {
        const RunScope objRun(app);
        app.windows.DoEvents();
        RaiseIfStopped(app);
        aSteps.push_back(app.frmMain.bRunning ? "running" : "paused");
    });

    EXPECT_EQ(aSteps, (std::vector<std::string>{"paused", "closed"}));
}

TEST_F(Dispatcher, AbandonsTheFileInWorkAndClosesThen)
{
    std::vector<std::string> aSteps;
    app.windows.on_do_events = [&] {
        CloseAfterRun(app, Closing::StopNow, [&](Application&) { aSteps.push_back("closed"); });
    };

    Dispatch(app, Act::Ordinary, [&] {
        const RunScope objRun(app);
        app.windows.DoEvents();
        RaiseIfStopped(app);
        aSteps.push_back("went on");
    });

    EXPECT_EQ(aSteps, std::vector<std::string>{"closed"});
    ExpectIdle();
}

TEST_F(Dispatcher, ClosesWithoutARunWhicheverWayIsAskedFor)
{
    CloseAfterRun(app, Closing::StopNow, [&](Application&) { ++lActs; });
    CloseAfterRun(app, Closing::FinishThisFile, [&](Application&) { ++lActs; });

    EXPECT_EQ(lActs, 2);
    EXPECT_FALSE(bRunStopped(app));
}
