// Fuzzes settings files: a written value must read back.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "src/platform/posix/ini_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string sText = IniTextOf(std::string_view(reinterpret_cast<const char*>(pData), nSize));
    (void)IniValue(sText, "frmMain", "sLogFile");
    const std::string sWritten = IniTextWith(sText, "frmMain", "sLogFile", "C:\\report.txt");
    if (IniValue(sWritten, "frmMain", "sLogFile") != "C:\\report.txt")
        std::abort();
    return 0;
}
