// An Application with in-memory services, created in one line.
// Room: tests/fakes.
#pragma once

#include "src/forms/Application.h"
#include "tests/fakes/fake_file_system.h"
#include "tests/fakes/fake_processes.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_image_file.h"
#include "tests/fakes/recording_image_transform.h"
#include "tests/fakes/scripted_windows.h"

/// A separate base class, so that the services are constructed before the Application that refers to them.
struct TestServices {
    FakeFileSystem files;
    FakeIniFile ini;
    FakeClock clock;
    FakeLocale locale;
    FakeNamedMutex mutex;
    FakeProgramFolders folders;
    ScriptedWindows windows;
    RecordingImageFile images{files};
    FakeImageUtility utility;
    RecordingImageTransform transform;
    FakeProcessLauncher launcher;
};

struct TestApplication : TestServices, Application {
    TestApplication()
        : Application(Services{files, ini, clock, locale, mutex, folders, windows, images, utility, transform,
                               launcher})
    {
        sIniFile = "/settings/VL_SearchHistory.INI";
    }
};
