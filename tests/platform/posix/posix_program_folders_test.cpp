// Where the settings and the program's own files lie.
#include "src/platform/posix/posix_program_folders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"

static constexpr const char* kNoFolder = "/nowhere/varnel";

TEST(SettingsFolder, IsWhatTheVariableSays)
{
    const ScopedVariable objVariable("VARNEL_SETTINGS_DIR", "/some/where/");

    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel", "/tmp").sSettingsFolder(), "/some/where");
}

TEST(SettingsFolder, IsTheSharedOneWhereTheUserMayWrite)
{
    const HostFolder objFolder;
    const ScopedVariable objVariable("VARNEL_SETTINGS_DIR", nullptr),
        objConfig("XDG_CONFIG_HOME", "/home/me/cfg");
    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel", objFolder.sPath()).sSettingsFolder(), objFolder.sPath());

    chmod(objFolder.sPath().c_str(), 0750);
    if (geteuid() == 0) {
        EXPECT_TRUE(bAsOrdinaryUser([&] {
            return PosixProgramFolders("", objFolder.sPath()).sSettingsFolder() == "/home/me/cfg/varnel";
        }));
    }
}

TEST(SettingsFolder, IsTheUsersOwnElse)
{
    const ScopedVariable objVariable("VARNEL_SETTINGS_DIR", nullptr), objHome("HOME", "/home/me/");
    {
        const ScopedVariable objConfig("XDG_CONFIG_HOME", "/cfg");
        EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/cfg/varnel");
    }
    {
        const ScopedVariable objConfig("XDG_CONFIG_HOME", "relative/is/no/good");
        EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/home/me/.config/varnel");
    }
    const ScopedVariable objConfig("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/home/me/.config/varnel");
}

TEST(SettingsFolder, IsBelowTheHomeOfTheUserDatabaseWithoutAVariable)
{
    const ScopedVariable objVariable("VARNEL_SETTINGS_DIR", nullptr), objHome("HOME", nullptr);
    const ScopedVariable objConfig("XDG_CONFIG_HOME", nullptr);
    const std::string sFolder = PosixProgramFolders("", kNoFolder).sSettingsFolder();

    EXPECT_TRUE(sFolder.starts_with("/"));
    EXPECT_TRUE(sFolder.ends_with("/.config/varnel"));
}

TEST(OwnFolder, IsWhatTheVariableSays)
{
    const ScopedVariable objVariable("VARNEL_HOME", "/opt/varnel/");

    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel").sOwnFolder(), "/opt/varnel");
}

TEST(OwnFolder, IsTheProgramsIfItHoldsLanguages)
{
    const HostFolder objFolder;
    objFolder.sFile("app/Languages/German-Varnel.txt", "");
    const ScopedVariable objVariable("VARNEL_HOME", nullptr);

    EXPECT_EQ(PosixProgramFolders(objFolder.sFile("app/varnel")).sOwnFolder(), objFolder.sFile("app"));
}

TEST(OwnFolder, IsFilledFromWhatWasInstalledOnFirstUseOnly)
{
    const HostFolder objFolder;
    objFolder.sFile("usr/bin/varnel", "");
    objFolder.sFile("usr/share/varnel/Languages/German-Varnel.txt", "\"Done\",\"Fertig\"\n");
    const std::string sData = objFolder.sFile("home/.local/share");
    const ScopedVariable objVariable("VARNEL_HOME", nullptr), objData("XDG_DATA_HOME", sData.c_str());

    EXPECT_EQ(PosixProgramFolders(objFolder.sFile("usr/bin/varnel")).sOwnFolder(), sData + "/varnel");
    const std::string sLanguage = sData + "/varnel/Languages/German-Varnel.txt";
    EXPECT_EQ(sContentOf(sLanguage), "\"Done\",\"Fertig\"\n");
    std::filesystem::remove(sLanguage);
    EXPECT_EQ(PosixProgramFolders(objFolder.sFile("usr/bin/varnel")).sOwnFolder(), sData + "/varnel");
    EXPECT_EQ(sContentOf(sLanguage), "(none)");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(sData), {}), 1);
}

TEST(OwnFolder, IsTheInstalledOneWhereTheUserHasNoPlaceForACopy)
{
    const HostFolder objFolder;
    objFolder.sFile("usr/share/varnel/Languages/German-Varnel.txt", "");
    const ScopedVariable objVariable("VARNEL_HOME", nullptr), objData("XDG_DATA_HOME", "/dev/null/data");

    EXPECT_EQ(PosixProgramFolders(objFolder.sFile("usr/bin/varnel")).sOwnFolder(),
              objFolder.sFile("usr/share/varnel"));
}

TEST(OwnFolder, IsTheUsersEvenIfNothingWasInstalled)
{
    const ScopedVariable objVariable("VARNEL_HOME", nullptr), objData("XDG_DATA_HOME", nullptr);
    const ScopedVariable objHome("HOME", "/nowhere/home");

    EXPECT_EQ(PosixProgramFolders("/nowhere/bin/varnel").sOwnFolder(), "/nowhere/home/.local/share/varnel");
}

TEST(RunningProgram, IsThisOne)
{
    EXPECT_EQ(std::filesystem::path(PosixProgramFolders::sRunningProgram()).filename(),
              "tests_platform_posix");
}
