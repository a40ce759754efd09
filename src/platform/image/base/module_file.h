// Opens the modules that the image library loads on demand.
// Room: platform/image/base.
#pragma once

#include <string>

/// Opens a module by file name. If VARNEL_MODULE_DIR is set, only that folder is searched. Otherwise: the
/// folder of the program or of the shared library that contains this code, the folders "lib" and "lib/varnel"
/// beside it, and the system's search path. Null if not found. The module stays open until the process ends.
void* OpenModule(const std::string& file_name);

void* ModuleAddress(void* module, const char* name);

/// The module's function of that name, or null.
template <typename Function>
Function* ModuleFunction(void* module, const char* name)
{
    return reinterpret_cast<Function*>(ModuleAddress(module, name));
}
