// Opens modules.
#include "src/platform/image/base/module_file.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>

static std::string sFolderOf(const std::string& sPath)
{
    const std::size_t nLast = sPath.rfind('/');
    return nLast == std::string::npos ? "" : sPath.substr(0, nLast);
}

// The folder of the program, and that of the shared library that this code may stand in.
static std::array<std::string, 2> aOwnFolders()
{
    std::array<std::string, 2> aResult;
    std::array<char, PATH_MAX> aProgram{};
    const ssize_t nLength = readlink("/proc/self/exe", aProgram.data(), aProgram.size() - 1);
    if (nLength > 0)
        aResult[0] = sFolderOf(std::string(aProgram.data(), static_cast<std::size_t>(nLength)));
    Dl_info objInfo{};
    if (dladdr(reinterpret_cast<const void*>(&pOpenModule), &objInfo) != 0 && objInfo.dli_fname &&
        objInfo.dli_fname[0] == '/')
        aResult[1] = sFolderOf(objInfo.dli_fname);
    return aResult;
}

void* pOpenModule(const std::string& sFileName)
{
    const auto pOpen = [](const std::string& sPath) { return dlopen(sPath.c_str(), RTLD_NOW | RTLD_LOCAL); };
    if (const char* sFolder = std::getenv("VARNEL_MODULE_DIR"))
        return pOpen(std::string(sFolder) + '/' + sFileName);
    for (const std::string& sFolder : aOwnFolders())
        for (const char* sWhere : {"/", "/../lib/", "/../lib/varnel/"})
            if (!sFolder.empty())
                if (void* pModule = pOpen(sFolder + sWhere + sFileName))
                    return pModule;
    return pOpen(sFileName);
}

void* pModuleAddress(void* pModule, const char* sName)
{
    return pModule ? dlsym(pModule, sName) : nullptr;
}
