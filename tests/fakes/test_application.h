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
    FakeFileSystem objFiles;
    FakeIniFile objIni;
    FakeClock objClock;
    FakeLocale objLocale;
    FakeNamedMutex objMutex;
    FakeProgramFolders objFolders;
    ScriptedWindows objWindows;
    RecordingImageFile objImages{objFiles};
    FakeImageUtility objUtility;
    RecordingImageTransform objTransform;
    FakeProcessLauncher objLauncher;
};

struct TestApplication : TestServices, Application {
    TestApplication()
        : Application(Services{objFiles, objIni, objClock, objLocale, objMutex, objFolders, objWindows,
                               objImages, objUtility, objTransform, objLauncher})
    {
        sIniFile = "/settings/VL_SearchHistory.INI";
    }
};
