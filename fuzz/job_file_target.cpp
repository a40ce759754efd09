// Fuzzes job files: loads one, runs it on in-memory images, writes it back.
#include <cstdint>
#include <string>

#include "src/base/raised_error.h"
#include "src/engine/modJobRun.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    TestApplication app;
    app.bCommandLineMode = true;
    app.images.AddImage("/a.bmp");
    app.files.AddFile("/j.vjb", std::string(reinterpret_cast<const char*>(data), size));
    SetUpToDoGrid(app);
    SetUpLogGrid(app);
    std::string path = "/j.vjb";
    ConversionJobOpen(app, path);
    try {
        ConversionJobBegin(app);
    } catch (const clsRaisedError&) {
        EndRun(app);  // a malformed number in a cell ends the run
    }
    WriteJobFile(app, "/k.vjb", app.frmMain.fgToDo);
    return 0;
}
