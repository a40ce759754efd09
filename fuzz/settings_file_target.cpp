// Fuzzes settings files: a written value must read back.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "src/platform/posix/ini_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = IniTextOf(std::string_view(reinterpret_cast<const char*>(data), size));
    (void)IniValue(text, "frmMain", "sLogFile");
    const std::string written = IniTextWith(text, "frmMain", "sLogFile", "C:\\report.txt");
    if (IniValue(written, "frmMain", "sLogFile") != "C:\\report.txt")
        std::abort();
    return 0;
}
