// The state of a run: begun, paused, stopped, ended.
// Room: commands.
#pragma once

struct Application;

/// Raised to end a run in mid-file, silently. Deliberately no std::exception: code that handles failures must
/// let it pass.
struct clsRunStopped {
};

/// A run goes on in this scope: bRunning is set and the commands follow. At the end the commands follow
/// again, the pointer is the one before, and so is bRunning, unless it was cleared in between: a pause ends
/// the runs around this one too.
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

/// True from the begin of a run to its end, also while a paused one finishes its file.
bool bRunInProgress(const Application& app);

/// Ends the run after the file in work.
void PauseRun(Application& app);

/// Ends the run without finishing the file in work, at the next RaiseIfStopped. What the file has written
/// under its final name by then is whole. Does nothing without a run.
void StopRun(Application& app);

/// True once StopRun was called, until the run has ended.
bool bRunStopped(const Application& app);

/// Raises clsRunStopped if StopRun was called.
void RaiseIfStopped(const Application& app);
