// Takes whatever comes as a settings file: a value that is entered is read back, and nothing crashes.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "src/platform/posix/ini_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string sText = sIniTextOf(std::string_view(reinterpret_cast<const char*>(pData), nSize));
    (void)sIniValue(sText, "frmMain", "sLogFile");
    const std::string sWritten = sIniTextWith(sText, "frmMain", "sLogFile", "C:\\report.txt");
    if (sIniValue(sWritten, "frmMain", "sLogFile") != "C:\\report.txt")
        std::abort();
    return 0;
}
