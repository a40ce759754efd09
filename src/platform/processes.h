// Other programs: starting one and asking whether it has ended.
// Room: platform. Real one: platform/posix. Scripted one: tests/fakes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

/// How a program is to be started.
struct ProcessStart {
    std::string sProgram;    ///< path of the program, by the rules of file_system.h; no folders are searched
    std::string sArguments;  ///< cut at blanks; double quotes hold together what has blanks, and are left out
    std::int32_t lPriority = 0;     ///< 64 idle, 32 normal, 128 high, 256 highest; another changes nothing
    std::int32_t lWindowState = 0;  ///< 0 hidden, 1 normal, 3 maximized, 6 minimized; for hosts that know it
};

/// A program that was started. Letting it go doesn't end the program.
class ChildProcess
{
public:
    virtual ~ChildProcess() = default;
    /// True once it has ended. Waits for that so many milliseconds at most, without using the processor; 0
    /// only looks.
    [[nodiscard]] virtual bool bWaitForEnd(std::int32_t lMilliseconds) = 0;
    /// What it returned, once it has ended; 128 + n after an end by signal n.
    [[nodiscard]] virtual std::int32_t lExitCode() const = 0;
};

/// Nothing throws.
class ProcessLauncher
{
public:
    virtual ~ProcessLauncher() = default;
    /// Starts a program with "Dummy.exe" for its own name and then the arguments, in this process's folder
    /// and environment and with its open standard files. Null when it can't be started.
    [[nodiscard]] virtual std::unique_ptr<ChildProcess> pStart(const ProcessStart& objStart) = 0;
    /// Hands an existing file or folder (a path by the rules of file_system.h) to the program that the
    /// desktop has for it; the child is the opener, which may end long before that program. Null when there
    /// is no opener or no such file.
    [[nodiscard]] virtual std::unique_ptr<ChildProcess> pOpenPath(const std::string& sPath) = 0;
    /// The same for a web page ("https://...") or a mail ("mailto:...").
    [[nodiscard]] virtual std::unique_ptr<ChildProcess> pOpenAddress(const std::string& sAddress) = 0;
    /// Clears away what the host keeps of the programs that were let go while they ran and have ended since.
    /// Every start does that too.
    virtual void CollectEnded() = 0;
};
