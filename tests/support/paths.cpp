// Only this file is compiled with absolute paths, so that checkouts can share compiler caches for all others.
#include "tests/support/paths.h"

#include <unistd.h>

#include <cstdlib>
#include <sstream>

std::string SourceFolder()
{
    return VARNEL_SOURCE_DIR;
}

std::string ProgramPath()
{
    return VARNEL_PROGRAM;
}

static bool IsInPath(const std::string& command)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + command).c_str(), X_OK) == 0)
            return true;
    return false;
}

std::string ImageMagick(const std::string& tool)
{
    for (const char* version : {"-im6.q16", "-im7.q16"})
        if (IsInPath(tool + version))
            return tool + version;
    return tool;
}
