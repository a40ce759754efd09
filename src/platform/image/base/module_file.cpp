// Finds and opens modules.
#include "src/platform/image/base/module_file.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>

static std::string FolderOf(const std::string& path)
{
    const std::size_t last = path.rfind('/');
    return last == std::string::npos ? "" : path.substr(0, last);
}

// The folders of the program and of the shared library that contains this code.
static std::array<std::string, 2> OwnFolders()
{
    std::array<std::string, 2> result;
    std::array<char, PATH_MAX> program{};
    const ssize_t length = readlink("/proc/self/exe", program.data(), program.size() - 1);
    if (length > 0)
        result[0] = FolderOf(std::string(program.data(), static_cast<std::size_t>(length)));
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&OpenModule), &info) != 0 && info.dli_fname &&
        info.dli_fname[0] == '/')
        result[1] = FolderOf(info.dli_fname);
    return result;
}

void* OpenModule(const std::string& file_name)
{
    const auto open = [](const std::string& path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); };
    if (const char* folder = std::getenv("VARNEL_MODULE_DIR"))
        return open(std::string(folder) + '/' + file_name);
    for (const std::string& folder : OwnFolders())
        for (const char* where : {"/", "/../lib/", "/../lib/varnel/"})
            if (!folder.empty())
                if (void* module = open(folder + where + file_name))
                    return module;
    return open(file_name);
}

void* ModuleAddress(void* module, const char* name)
{
    return module ? dlsym(module, name) : nullptr;
}
