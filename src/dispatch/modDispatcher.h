// The single entry for every event: a click, a key, a tick, a drop, a call from outside.
// Room: dispatch.
//
// An act comes from outside, while nothing is in progress or while something in progress lets events in (see
// WindowServices::Pumps). What it raises is caught here and never reaches the toolkit. An event that the
// program's own code raises, by setting a field, isn't an act: its handler is called straight through, and
// what it raises ends the act that it belongs to.
#pragma once

#include <functional>
#include <memory>
#include <string>

struct Application;

/// When an act may happen. At any other time it does nothing.
enum class Act {
    Ordinary,   ///< while nothing is in progress, and in a modal form
    MidRun,     ///< also while a run goes on: Pause, closing, tabs, scrolling, zooming
    Unattended  ///< only while nothing is in progress and no form is open: ticks
};

enum class Outcome { Done, Raised, Refused };

/// Tells the user what ended an act.
using ReportError = std::function<void(const std::string& sDescription)>;

/// Performs an act, unless it is refused. When it raises, a box "Error" shows the description, or fnReport is
/// called; before that the state of a run is put back: bRunning, bInternalGridChange, pointer, tables,
/// commands. Then performs the close that was asked for meanwhile.
Outcome Dispatch(Application& app, Act eAct, const std::function<void()>& fnAct,
                 const ReportError& fnReport = {});

/// The routine as the handler of a control's event. While an act of it is in progress, another one is
/// refused.
std::function<void()> Handler(Application& app, std::function<void(Application&)> fnRoutine,
                              Act eAct = Act::Ordinary);

/// What a handler does with an event; bInProgress is the handler's own memory.
void HandleEvent(Application& app, Act eAct, bool& bInProgress, const std::function<void()>& fnAct);

/// The same for an event that brings arguments: HandlerOf<const Paths&>(app, [](Application& a, const Paths&
/// p) {...}).
template <typename... Arguments, typename TRoutine>
std::function<void(Arguments...)> HandlerOf(Application& app, TRoutine fnRoutine, Act eAct = Act::Ordinary)
{
    return [&app, fnRoutine, eAct, pInProgress = std::make_shared<bool>(false)](Arguments... aArguments) {
        HandleEvent(app, eAct, *pInProgress, [&] { fnRoutine(app, aArguments...); });
    };
}

/// The same for a function.
template <typename... Arguments>
std::function<void(Arguments...)> Handler(Application& app, void (*fnRoutine)(Application&, Arguments...),
                                          Act eAct = Act::Ordinary)
{
    return HandlerOf<Arguments...>(app, fnRoutine, eAct);
}

/// The same for a question: False when it is refused or raises.
template <typename... Arguments>
std::function<bool(Arguments...)> Handler(Application& app, bool (*fnRoutine)(Application&, Arguments...),
                                          Act eAct = Act::Ordinary)
{
    return [&app, fnRoutine, eAct, pInProgress = std::make_shared<bool>(false)](Arguments... aArguments) {
        bool bResult = false;
        HandleEvent(app, eAct, *pInProgress, [&] { bResult = fnRoutine(app, aArguments...); });
        return bResult;
    };
}

/// Closes as soon as nothing is in progress: at once, or when the act in progress has ended. A later call
/// replaces an earlier one. No run begins any more then.
void CloseWhenIdle(Application& app, std::function<void(Application&)> fnClose);

/// How a run ends that is in the way of closing.
enum class Closing {
    FinishThisFile,  ///< pause: the file in work is finished first
    StopNow          ///< the file in work is abandoned
};

/// Ends the run and closes then; without a run, closes when idle.
void CloseAfterRun(Application& app, Closing eClosing, std::function<void(Application&)> fnClose);

/// True while a close waits.
bool bCloseWaits(const Application& app);
