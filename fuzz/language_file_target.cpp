// Fuzzes language files: loads one, looks up a text and appends it.
#include <cstdint>
#include <string>

#include "src/translator/modTranslator.h"
#include "tests/fakes/test_application.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    TestApplication app;
    app.objFiles.AddFile("/program/Languages/German-Varnel.txt",
                         std::string(reinterpret_cast<const char*>(pData), nSize));
    app.objIni.Set("Language", "Language_Code", "German");
    InitializeTranslator(app);
    sTranslate(app, "Information");
    return 0;
}
