// Starts programs and waits for them without polling.
#include "src/platform/posix/posix_processes.h"

#include <poll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "src/base/text.h"
#include "src/platform/file_system.h"
#include "src/platform/files/descriptor.h"

// Intentional: argument 0 isn't the program's path.
static constexpr char kArgument0[] = "Dummy.exe";
static constexpr char kOpener[] = "xdg-open";
static constexpr std::int32_t kNormalPriority = 32;

std::vector<std::string> CutArguments(const std::string& arguments)
{
    std::vector<std::string> result;
    bool in_quotes = false;
    bool in_argument = false;
    for (const char c : arguments) {
        if (c == ' ' && !in_quotes) {
            in_argument = false;
            continue;
        }
        if (!in_argument)
            result.emplace_back();
        in_argument = true;
        if (c == '"')
            in_quotes = !in_quotes;
        else
            result.back() += c;
    }
    return result;
}

bool NicenessOfPriority(std::int32_t priority, int& niceness)
{
    static constexpr std::int32_t kPriorities[][2] = {{64, 19}, {32, 0}, {128, -5}, {256, -10}};
    for (const auto& [known, nicenes_count] : kPriorities) {
        if (priority == known) {
            niceness = nicenes_count;
            return true;
        }
    }
    return false;
}

/// Waits on a pidfd, so the end of the process wakes the wait. Without pidfds it checks when the time is
/// over.
class PosixProcessLauncher::Child : public ChildProcess
{
public:
    Child(PosixProcessLauncher& launcher, pid_t process)
        : launcher_(launcher), process_(process), end_(static_cast<int>(syscall(SYS_pidfd_open, process, 0)))
    {
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() override
    {
        if (!bWaitForEnd(0))
            launcher_.left_running_.push_back(process_);
    }

    bool bWaitForEnd(std::int32_t milliseconds) override
    {
        if (ended_ || Collect())
            return true;
        pollfd poll_entry{end_.Number(), POLLIN, 0};
        if (milliseconds > 0)
            poll(&poll_entry, end_ ? 1 : 0, milliseconds);
        return milliseconds > 0 && Collect();
    }
    std::int32_t lExitCode() const override { return exit_code_; }

private:
    bool Collect()
    {
        int status = 0;
        const pid_t ended = waitpid(process_, &status, WNOHANG);
        if (ended == 0 || (ended < 0 && errno == EINTR))
            return false;
        ended_ = true;
        if (ended > 0)
            exit_code_ = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
        return true;
    }

    PosixProcessLauncher& launcher_;
    pid_t process_;
    Descriptor end_;
    bool ended_ = false;
    std::int32_t exit_code_ = 0;
};

PosixProcessLauncher::PosixProcessLauncher(const FileSystem& file_system) : file_system_(file_system)
{
    // If our parent set SIGCHLD to be ignored, the kernel would discard our children's exit status.
    struct sigaction action {
    };
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

PosixProcessLauncher::~PosixProcessLauncher()
{
    CollectEnded();
}

void PosixProcessLauncher::CollectEnded()
{
    std::erase_if(left_running_, [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
}

// Runs in the child between fork and exec: async-signal-safe calls only. If it returns, it has sent errno to
// the parent.
static void BecomeProgram(const char* host_path, char* const* arguments, std::int32_t priority, int report)
{
    // The program gets default signal handling, whatever this process ignores or blocks.
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    int niceness = 0;
    if (NicenessOfPriority(priority, niceness))
        (void)setpriority(PRIO_PROCESS, 0, niceness);
    execv(host_path, arguments);
    const int error = errno;
    (void)!write(report, &error, sizeof error);
}

std::unique_ptr<ChildProcess> PosixProcessLauncher::pStart(const ProcessStart& start)
{
    const std::optional<std::string> host_path = file_system_.sHostPathOfExisting(start.sProgram);
    if (!host_path)
        return nullptr;
    std::vector<std::string> texts = CutArguments(start.sArguments);
    texts.insert(texts.begin(), kArgument0);
    return Spawn(*host_path, std::move(texts), start.lPriority);
}

// The first executable of that name in PATH; "" if there is none.
static std::string FindInPath(const std::string& name)
{
    const char* path = std::getenv("PATH");
    for (const std::string& folder : aSplit(path ? path : "/usr/bin:/bin", ':')) {
        std::string program = (folder.empty() ? "." : folder) + "/" + name;
        if (access(program.c_str(), X_OK) == 0)
            return program;
    }
    return "";
}

std::unique_ptr<ChildProcess> PosixProcessLauncher::pOpenPath(const std::string& path)
{
    const std::optional<std::string> host_path = file_system_.sHostPathOfExisting(path);
    if (!host_path || host_path->empty())
        return nullptr;
    return pOpenAddress(host_path->front() == '-' ? "./" + *host_path : *host_path);
}

std::unique_ptr<ChildProcess> PosixProcessLauncher::pOpenAddress(const std::string& address)
{
    const std::string opener = FindInPath(kOpener);
    // The opener would take an address that begins with "-" for an option.
    if (opener.empty() || address.starts_with("-"))
        return nullptr;
    return Spawn(opener, {kOpener, address}, kNormalPriority);
}

std::unique_ptr<ChildProcess> PosixProcessLauncher::Spawn(const std::string& host_path,
                                                          std::vector<std::string> texts,
                                                          std::int32_t priority)
{
    CollectEnded();
    std::vector<char*> arguments;
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);

    // A successful exec closes the pipe without writing to it.
    int pipe_ends[2];
    if (pipe2(pipe_ends, O_CLOEXEC) != 0)
        return nullptr;
    const Descriptor read_end(pipe_ends[0]);
    Descriptor write_end(pipe_ends[1]);
    const pid_t process = fork();
    if (process == 0) {
        BecomeProgram(host_path.c_str(), arguments.data(), priority, write_end.Number());
        _exit(127);
    }
    write_end = Descriptor();
    if (process < 0)
        return nullptr;
    int error = 0;
    ssize_t got = 0;
    while ((got = read(read_end.Number(), &error, sizeof error)) < 0 && errno == EINTR) {
    }
    if (got > 0) {
        while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        return nullptr;
    }
    return std::make_unique<Child>(*this, process);
}
