// Fuzzes the command line parser, and runs what it accepts on in-memory images.
#include <cstdint>
#include <string>

#include "src/entry/modMain.h"
#include "tests/fakes/test_application.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    TestApplication app;
    app.images.AddImage("c:\\a.bmp");
    app.images.AddImage("c:\\t.tif", {1, 2, 3});
    app.files.AddFile("c:\\j.vjb", "R M\t*^0^\t1\tC\tc:\\*.*\t-1\t*\tc:\\out\\*.png\t8\tpng\t\t\r\n");
    Main(app, std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
