// Ignores signals and opens standard streams.
#include "src/platform/posix/process_setup.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

void SetUpProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1)
            (void)open("/dev/null", O_RDWR | O_NOCTTY);  // takes the lowest free number: this one
}
