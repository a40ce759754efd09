// Launches a program and waits for it.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

constexpr std::int32_t kErrNotLaunched = -10;
constexpr std::int32_t kErrTimeout = -11;

/// Launches the request's program: sOriginalFile with the arguments in sTargetFile; priority, window state
/// and timeout are in sExtraParams. Returns the result of lLaunchAndWait and sets lCommandLineExitCode.
/// Leaves lErr and sErr to the caller.
std::int32_t lLaunchTask(Application& app, clsConversionOptions& objOptions);

/// Starts the program and waits for it to exit, processing events. Returns 0 and lExitCode once it has
/// exited, whatever the exit code; -10 if it couldn't be started; -11 if the timeout (-1: none) expires or
/// the run is paused. The program is then left running.
std::int32_t lLaunchAndWait(Application& app, const std::string& sProgram, const std::string& sArguments,
                            std::int32_t iWindowState, std::int32_t lPriority, std::int32_t lTimeoutSeconds,
                            std::int32_t& lExitCode);
