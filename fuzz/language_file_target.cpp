// Fuzzes language files: loads one, looks up a text and appends it.
#include <cstdint>
#include <string>

#include "src/translator/modTranslator.h"
#include "tests/fakes/test_application.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    TestApplication app;
    app.files.AddFile("/program/Languages/German-Varnel.txt",
                      std::string(reinterpret_cast<const char*>(data), size));
    app.ini.Set("Language", "Language_Code", "German");
    InitializeTranslator(app);
    sTranslate(app, "Information");
    return 0;
}
