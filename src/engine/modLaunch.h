// Starts another program and waits for it.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

constexpr std::int32_t kErrNotLaunched = -10;
constexpr std::int32_t kErrTimeout = -11;

/// Launches what the request names: the program in sOriginalFile, its arguments in sTargetFile, priority,
/// window state and time limit in sExtraParams. Returns the code of lLaunchAndWait and leaves the exit code
/// in lCommandLineExitCode. lErr and sErr are the caller's.
std::int32_t lLaunchTask(Application& app, clsConversionOptions& objOptions);

/// Starts the program and waits for its end, letting events through. Returns 0, with lExitCode, when it has
/// ended, whatever it returned; -10 when it could not be started; -11 when it is still running as the time is
/// over (-1: no limit) or the run was paused. It is left running then.
std::int32_t lLaunchAndWait(Application& app, const std::string& sProgram, const std::string& sArguments,
                            std::int32_t iWindowState, std::int32_t lPriority, std::int32_t lTimeoutSeconds,
                            std::int32_t& lExitCode);
