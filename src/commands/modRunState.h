// The state of a run: started, paused, stopped, ended.
// Room: commands.
#pragma once

struct Application;

/// Raised to end a run in mid-file, silently. Deliberately no std::exception: code that handles failures must
/// let it pass.
struct clsRunStopped {
};

/// Marks its scope as a run: sets bRunning and updates the commands. At the end it updates them again and
/// restores the pointer and bRunning, unless bRunning was cleared in between: a pause ends the enclosing
/// runs too.
class RunScope
{
public:
    explicit RunScope(Application& app);
    ~RunScope();
    RunScope(const RunScope&) = delete;
    RunScope& operator=(const RunScope&) = delete;

private:
    Application& m_app;
    const bool m_bWasRunning;
    const bool m_bHadHourglass;
};

/// True from the start of a run to its end, including while a paused one finishes its file.
bool bRunInProgress(const Application& app);

/// Ends the run after the current file.
void PauseRun(Application& app);

/// Ends the run without finishing the current file, at the next RaiseIfStopped. Whatever the item has saved
/// by then is whole. Does nothing if no run is in progress.
void StopRun(Application& app);

/// True once StopRun was called, until the run has ended.
bool bRunStopped(const Application& app);

/// Raises clsRunStopped if StopRun was called.
void RaiseIfStopped(const Application& app);
