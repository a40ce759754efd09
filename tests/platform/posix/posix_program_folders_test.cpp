// Tests of the folders for settings and the program's own files.
#include "src/platform/posix/posix_program_folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"

static constexpr const char* kNoFolder = "/nowhere/varnel";

TEST(SettingsFolder, ComesFromItsVariable)
{
    const ScopedVariable variable("VARNEL_SETTINGS_DIR", "/some/where/");

    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel", "/tmp").sSettingsFolder(), "/some/where");
}

TEST(SettingsFolder, IsSharedOneIfUserMayWriteThere)
{
    const HostFolder folder;
    const ScopedVariable variable("VARNEL_SETTINGS_DIR", nullptr), config("XDG_CONFIG_HOME", "/home/me/cfg");
    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel", folder.Path()).sSettingsFolder(), folder.Path());

    chmod(folder.Path().c_str(), 0750);
    if (geteuid() == 0) {
        EXPECT_TRUE(RunAsOrdinaryUser([&] {
            return PosixProgramFolders("", folder.Path()).sSettingsFolder() == "/home/me/cfg/varnel";
        }));
    }
}

TEST(SettingsFolder, FallsBackToFolderOfUser)
{
    const ScopedVariable variable("VARNEL_SETTINGS_DIR", nullptr), home("HOME", "/home/me/");
    {
        const ScopedVariable config("XDG_CONFIG_HOME", "/cfg");
        EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/cfg/varnel");
    }
    {
        const ScopedVariable config("XDG_CONFIG_HOME", "relative/is/no/good");
        EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/home/me/.config/varnel");
    }
    const ScopedVariable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(PosixProgramFolders("", kNoFolder).sSettingsFolder(), "/home/me/.config/varnel");
}

TEST(SettingsFolder, FallsBackToHomeFromUserDatabase)
{
    const ScopedVariable variable("VARNEL_SETTINGS_DIR", nullptr), home("HOME", nullptr);
    const ScopedVariable config("XDG_CONFIG_HOME", nullptr);
    const std::string folder = PosixProgramFolders("", kNoFolder).sSettingsFolder();

    EXPECT_TRUE(folder.starts_with("/"));
    EXPECT_TRUE(folder.ends_with("/.config/varnel"));
}

TEST(OwnFolder, ComesFromItsVariable)
{
    const ScopedVariable variable("VARNEL_HOME", "/opt/varnel/");

    EXPECT_EQ(PosixProgramFolders("/usr/bin/varnel").sOwnFolder(), "/opt/varnel");
}

TEST(OwnFolder, IsProgramFolderIfItHasLanguages)
{
    const HostFolder folder;
    folder.File("app/Languages/German-Varnel.txt", "");
    const ScopedVariable variable("VARNEL_HOME", nullptr);

    EXPECT_EQ(PosixProgramFolders(folder.File("app/varnel")).sOwnFolder(), folder.File("app"));
}

TEST(OwnFolder, TakesMissingFilesFromInstallation)
{
    const HostFolder folder;
    folder.File("usr/bin/varnel", "");
    folder.File("usr/share/varnel/Languages/German-Varnel.txt", "\"Done\",\"Fertig\"\n");
    const std::string data_path = folder.File("home/.local/share");
    const ScopedVariable variable("VARNEL_HOME", nullptr), data("XDG_DATA_HOME", data_path.c_str());

    EXPECT_EQ(PosixProgramFolders(folder.File("usr/bin/varnel")).sOwnFolder(), data_path + "/varnel");
    const std::string language = data_path + "/varnel/Languages/German-Varnel.txt";
    EXPECT_EQ(ContentOf(language), "\"Done\",\"Fertig\"\n");

    folder.File("usr/share/varnel/Languages/French-Varnel.txt", "\"Done\",\"Fini\"\n");
    EXPECT_EQ(PosixProgramFolders(folder.File("usr/bin/varnel")).sOwnFolder(), data_path + "/varnel");
    EXPECT_EQ(ContentOf(data_path + "/varnel/Languages/French-Varnel.txt"), "\"Done\",\"Fini\"\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(data_path), {}), 1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(data_path + "/varnel/Languages"), {}), 2);
}

TEST(OwnFolder, KeepsFilesThatUserHasEdited)
{
    const HostFolder folder;
    folder.File("usr/bin/varnel", "");
    folder.File("usr/share/varnel/Languages/German-Varnel.txt", "\"Done\",\"Fertig\"\n");
    const std::string language =
        folder.File("home/.local/share/varnel/Languages/German-Varnel.txt", "\"Done\",\"Getan\"\n");
    const std::string data_path = folder.File("home/.local/share");
    const ScopedVariable variable("VARNEL_HOME", nullptr), data("XDG_DATA_HOME", data_path.c_str());

    EXPECT_EQ(PosixProgramFolders(folder.File("usr/bin/varnel")).sOwnFolder(), data_path + "/varnel");

    EXPECT_EQ(ContentOf(language), "\"Done\",\"Getan\"\n");
}

TEST(OwnFolder, IsInstallationIfCopyIsImpossible)
{
    const HostFolder folder;
    folder.File("usr/share/varnel/Languages/German-Varnel.txt", "");
    const ScopedVariable variable("VARNEL_HOME", nullptr), data("XDG_DATA_HOME", "/dev/null/data");

    EXPECT_EQ(PosixProgramFolders(folder.File("usr/bin/varnel")).sOwnFolder(),
              folder.File("usr/share/varnel"));
}

TEST(OwnFolder, IsUserFolderEvenWithoutInstallation)
{
    const ScopedVariable variable("VARNEL_HOME", nullptr), data("XDG_DATA_HOME", nullptr);
    const ScopedVariable home("HOME", "/nowhere/home");

    EXPECT_EQ(PosixProgramFolders("/nowhere/bin/varnel").sOwnFolder(), "/nowhere/home/.local/share/varnel");
}

TEST(RunningProgram, IsThisTestProgram)
{
    EXPECT_EQ(std::filesystem::path(PosixProgramFolders::RunningProgram()).filename(),
              "tests_platform_posix");
}
