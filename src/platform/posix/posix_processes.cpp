// Starts programs and waits for them without using the processor.
#include "src/platform/posix/posix_processes.h"

#include <poll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include "src/platform/file_system.h"
#include "src/platform/posix/descriptor.h"

// The program doesn't learn its own path: it sees its arguments from the second word on.
static constexpr char kArgument0[] = "Dummy.exe";

std::vector<std::string> aCutArguments(const std::string& sArguments)
{
    std::vector<std::string> aResult;
    bool bInQuotes = false;
    bool bInArgument = false;
    for (const char c : sArguments) {
        if (c == ' ' && !bInQuotes) {
            bInArgument = false;
            continue;
        }
        if (!bInArgument)
            aResult.emplace_back();
        bInArgument = true;
        if (c == '"')
            bInQuotes = !bInQuotes;
        else
            aResult.back() += c;
    }
    return aResult;
}

bool bNicenessOfPriority(std::int32_t lPriority, int& nNiceness)
{
    static constexpr std::int32_t aPriorities[][2] = {{64, 19}, {32, 0}, {128, -5}, {256, -10}};
    for (const auto& [lKnown, lNiceness] : aPriorities) {
        if (lPriority == lKnown) {
            nNiceness = lNiceness;
            return true;
        }
    }
    return false;
}

/// Waits on a descriptor of the process, so that its end wakes the wait; on a host that has none, looks again
/// when the time is over.
class PosixProcessLauncher::Child : public ChildProcess
{
public:
    Child(PosixProcessLauncher& objLauncher, pid_t nProcess)
        : m_objLauncher(objLauncher),
          m_nProcess(nProcess),
          m_objEnd(static_cast<int>(syscall(SYS_pidfd_open, nProcess, 0)))
    {
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() override
    {
        if (!bWaitForEnd(0))
            m_objLauncher.m_aLeftRunning.push_back(m_nProcess);
    }

    bool bWaitForEnd(std::int32_t lMilliseconds) override
    {
        if (m_bEnded || Collect())
            return true;
        pollfd objPoll{m_objEnd.nNumber(), POLLIN, 0};
        if (lMilliseconds > 0)
            poll(&objPoll, m_objEnd ? 1 : 0, lMilliseconds);
        return lMilliseconds > 0 && Collect();
    }
    std::int32_t lExitCode() const override { return m_lExitCode; }

private:
    bool Collect()
    {
        int nStatus = 0;
        const pid_t nEnded = waitpid(m_nProcess, &nStatus, WNOHANG);
        if (nEnded == 0 || (nEnded < 0 && errno == EINTR))
            return false;
        m_bEnded = true;
        if (nEnded > 0)
            m_lExitCode = WIFSIGNALED(nStatus) ? 128 + WTERMSIG(nStatus) : WEXITSTATUS(nStatus);
        return true;
    }

    PosixProcessLauncher& m_objLauncher;
    pid_t m_nProcess;
    Descriptor m_objEnd;
    bool m_bEnded = false;
    std::int32_t m_lExitCode = 0;
};

PosixProcessLauncher::PosixProcessLauncher(const FileSystem& objFileSystem) : m_objFileSystem(objFileSystem)
{
    // A parent that ignores the end of its children leaves us a host that forgets how ours ended.
    struct sigaction objAction {
    };
    if (sigaction(SIGCHLD, nullptr, &objAction) == 0 && objAction.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

PosixProcessLauncher::~PosixProcessLauncher()
{
    CollectEnded();
}

void PosixProcessLauncher::CollectEnded()
{
    std::erase_if(m_aLeftRunning, [](pid_t nProcess) { return waitpid(nProcess, nullptr, WNOHANG) != 0; });
}

// In the child, between fork and exec: only what may be called there. Tells the parent why when it returns.
static void BecomeProgram(const char* sHostPath, char* const* aArguments, const ProcessStart& objStart,
                          int nReport)
{
    // What this process ignores or blocks for its own sake is not the program's affair.
    for (const int nSignal : {SIGPIPE, SIGXFSZ})
        std::signal(nSignal, SIG_DFL);
    sigset_t objNone;
    sigemptyset(&objNone);
    sigprocmask(SIG_SETMASK, &objNone, nullptr);
    int nNiceness = 0;
    if (bNicenessOfPriority(objStart.lPriority, nNiceness))
        (void)setpriority(PRIO_PROCESS, 0, nNiceness);
    execv(sHostPath, aArguments);
    const int nError = errno;
    (void)!write(nReport, &nError, sizeof nError);
}

std::unique_ptr<ChildProcess> PosixProcessLauncher::pStart(const ProcessStart& objStart)
{
    CollectEnded();
    const std::optional<std::string> sHostPath = m_objFileSystem.sHostPathOfExisting(objStart.sProgram);
    if (!sHostPath)
        return nullptr;
    std::vector<std::string> aTexts = aCutArguments(objStart.sArguments);
    aTexts.insert(aTexts.begin(), kArgument0);
    std::vector<char*> aArguments;
    for (std::string& sText : aTexts)
        aArguments.push_back(sText.data());
    aArguments.push_back(nullptr);

    // The pipe closes without a word when the program takes over.
    int aPipe[2];
    if (pipe2(aPipe, O_CLOEXEC) != 0)
        return nullptr;
    const Descriptor objRead(aPipe[0]);
    Descriptor objWrite(aPipe[1]);
    const pid_t nProcess = fork();
    if (nProcess == 0) {
        BecomeProgram(sHostPath->c_str(), aArguments.data(), objStart, objWrite.nNumber());
        _exit(127);
    }
    objWrite = Descriptor();
    if (nProcess < 0)
        return nullptr;
    int nError = 0;
    ssize_t nRead = 0;
    while ((nRead = read(objRead.nNumber(), &nError, sizeof nError)) < 0 && errno == EINTR) {
    }
    if (nRead > 0) {
        while (waitpid(nProcess, nullptr, 0) < 0 && errno == EINTR) {
        }
        return nullptr;
    }
    return std::make_unique<Child>(*this, nProcess);
}
