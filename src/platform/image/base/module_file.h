// Finds and opens the modules that the image library needs only now and then.
// Room: platform/image/base.
#pragma once

#include <string>

/// Opens the module of that file name. It is looked for in VARNEL_MODULE_DIR, if that is set; otherwise in
/// the folder of the program or of the shared library that holds this code, in the folders "lib" and
/// "lib/varnel" beside that one, and where the system's loader looks. Null when there is none. It stays open
/// until the process ends.
void* OpenModule(const std::string& file_name);

void* ModuleAddress(void* module, const char* name);

/// One of the module's functions; null when it has none of that name.
template <typename Function>
Function* ModuleFunction(void* module, const char* name)
{
    return reinterpret_cast<Function*>(ModuleAddress(module, name));
}
