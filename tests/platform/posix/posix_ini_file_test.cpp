// Tests of the settings file on disk.
#include "src/platform/posix/posix_ini_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"
#include "tests/platform/posix/support/host_services.h"

static std::string Get(const HostIniFile& ini, const std::string& file, const std::string& key)
{
    return ini.GetPrivateProfileString("s", key, "default", 500, file);
}

TEST(PosixIniFile, ReturnsDefaultsUntilFirstWriteCreatesFile)
{
    const HostFolder folder;
    const std::string file = folder.File("new/deep/VL_SearchHistory.INI");
    HostIniFile ini;

    EXPECT_EQ(Get(ini, file, "a"), "default");
    EXPECT_EQ(ini.GetPrivateProfileInt("s", "a", 1000, file), 1000);
    EXPECT_TRUE(ini.WritePrivateProfileString("s", "a", "ü", file));
    EXPECT_EQ(Get(ini, file, "a"), "ü");
    EXPECT_EQ(ContentOf(file), "[s]\na=ü\n");
}

TEST(PosixIniFile, ReadsLeadingNumberOfValue)
{
    const HostFolder folder;
    const std::string file = folder.File("a.ini", "[s]\na=150 twips\nb=-3.5\nc=x\nd=\n");
    const HostIniFile ini;

    EXPECT_EQ(ini.GetPrivateProfileInt("s", "a", 7, file), 150);
    EXPECT_EQ(ini.GetPrivateProfileInt("s", "b", 7, file), -3);
    EXPECT_EQ(ini.GetPrivateProfileInt("s", "c", 7, file), 0);
    EXPECT_EQ(ini.GetPrivateProfileInt("s", "d", 7, file), 0);
    EXPECT_EQ(ini.GetPrivateProfileInt("s", "e", 7, file), 7);
}

TEST(PosixIniFile, CountsCharactersOfTruncatedValue)
{
    const HostFolder folder;
    const std::string long_line(600, 'x');
    const std::string file = folder.File("a.ini", "[s]\na=" + long_line + "\nb=ab€\n");
    const HostIniFile ini;

    EXPECT_EQ(Get(ini, file, "a"), std::string(499, 'x'));
    EXPECT_EQ(ini.GetPrivateProfileString("s", "b", "", 3, file), "ab");
    EXPECT_EQ(ini.GetPrivateProfileString("s", "b", "", 4, file), "ab€");
    EXPECT_EQ(ini.GetPrivateProfileString("s", "b", "", 0, file), "");
    EXPECT_EQ(ini.GetPrivateProfileString("s", "none", long_line, 500, file), std::string(499, 'x'));
}

TEST(PosixIniFile, SeesChangesOfOtherProcesses)
{
    const HostFolder folder;
    const std::string file = folder.File("a.ini", "[s]\na=1\n");
    const HostIniFile ini;
    EXPECT_EQ(Get(ini, file, "a"), "1");

    EXPECT_TRUE(HostIniFile().WritePrivateProfileString("s", "a", "2", file));

    EXPECT_EQ(Get(ini, file, "a"), "2");
    std::filesystem::remove(file);
    EXPECT_EQ(Get(ini, file, "a"), "default");
}

TEST(PosixIniFile, ConvertsWindows1252FileToUtf8OnWrite)
{
    const HostFolder folder;
    const std::string file = folder.File("a.ini", "; f\xFCr mich\r\n[s]\r\na=caf\xE9\r\n");
    HostIniFile ini;

    EXPECT_EQ(Get(ini, file, "a"), "café");
    EXPECT_TRUE(ini.WritePrivateProfileString("s", "b", "1", file));
    EXPECT_EQ(ContentOf(file), "; für mich\r\n[s]\r\na=café\r\nb=1\r\n");
}

TEST(PosixIniFile, LosesNoWritesOfConcurrentProcesses)
{
    const HostFolder folder;
    const std::string file = folder.File("a.ini");
    constexpr int kProcesses = 4, kKeys = 25;
    for (int process = 0; process < kProcesses; ++process) {
        if (fork() == 0) {
            HostIniFile ini;
            bool all = true;
            for (int key = 0; key < kKeys; ++key)
                all &= ini.WritePrivateProfileString("s" + std::to_string(process), std::to_string(key), "x",
                                                     file);
            _exit(all ? 0 : 1);
        }
    }
    for (int status = 0; wait(&status) > 0;)
        EXPECT_EQ(status, 0);

    const HostIniFile ini;
    for (int process = 0; process < kProcesses; ++process)
        for (int key = 0; key < kKeys; ++key)
            EXPECT_EQ(ini.GetPrivateProfileString("s" + std::to_string(process), std::to_string(key), "", 500,
                                                  file),
                      "x");
    EXPECT_EQ(folder.Listing(), "a.ini");
}

TEST(PosixIniFile, CannotBeReadOrWrittenIfItIsFolder)
{
    const HostFolder folder;
    HostIniFile ini;

    EXPECT_EQ(Get(ini, folder.Path(), "a"), "default");
    EXPECT_FALSE(ini.WritePrivateProfileString("s", "a", "1", folder.Path()));
    EXPECT_FALSE(ini.WritePrivateProfileString("s", "a", "1", ""));
    EXPECT_FALSE(ini.WritePrivateProfileString("s", "a", "1", "/dev/null/a.ini"));
    EXPECT_EQ(folder.Listing(), "");
}

TEST(PosixIniFile, ToleratesBinaryGarbage)
{
    const HostFolder folder;
    std::string rubbish;
    for (int n = 0; n < 5000; ++n)
        rubbish += static_cast<char>(n * 7919 >> 3);
    const std::string file = folder.File("a.ini", rubbish);
    HostIniFile ini;

    EXPECT_EQ(Get(ini, file, "a"), "default");
    EXPECT_TRUE(ini.WritePrivateProfileString("s", "a", "1", file));
    EXPECT_EQ(Get(ini, file, "a"), "1");
}

TEST(PosixIniFile, IsUntouchedWithoutPermission)
{
    const HostFolder folder;
    const std::string secret = folder.File("secret.ini", "[s]\na=1\n");
    chmod(secret.c_str(), 0600);
    const std::string file = folder.File("locked/a.ini", "[s]\na=1\n");
    chmod(folder.File("locked").c_str(), 0555);
    if (geteuid() != 0)
        GTEST_SKIP() << "needs another user's file";

    EXPECT_TRUE(RunAsOrdinaryUser([&] {
        HostIniFile ini;
        return Get(ini, secret, "a") == "default" && !ini.WritePrivateProfileString("s", "a", "2", secret) &&
               Get(ini, file, "a") == "1" && !ini.WritePrivateProfileString("s", "a", "2", file);
    }));
    EXPECT_EQ(ContentOf(secret), "[s]\na=1\n");
    EXPECT_EQ(ContentOf(file), "[s]\na=1\n");
}

TEST(PosixIniFile, KeepsOldContentIfDiskIsFull)
{
    const HostFolder folder;
    const std::string old = "[s]\na=" + std::string(300, 'x') + "\n";
    const std::string file = folder.File("a.ini", old);
    const ScopedFileSizeLimit limit(100);

    EXPECT_FALSE(HostIniFile().WritePrivateProfileString("s", "b", "1", file));
    EXPECT_EQ(ContentOf(file), old);
    EXPECT_EQ(folder.Listing(), "a.ini");
}

TEST(PosixIniFile, FollowsLinkOfUserButNotOfStranger)
{
    const HostFolder folder;
    const std::string file = folder.File("real/a.ini", "[s]\n");
    const std::string link = folder.File("a.ini");
    std::filesystem::create_symlink(file, link);
    HostIniFile ini;

    EXPECT_TRUE(ini.WritePrivateProfileString("s", "a", "1", link));
    EXPECT_EQ(ContentOf(file), "[s]\na=1\n");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    if (lchown(link.c_str(), 12345, 12345) == 0) {
        EXPECT_FALSE(ini.WritePrivateProfileString("s", "a", "2", link));
        EXPECT_EQ(ContentOf(file), "[s]\na=1\n");
    }
}

TEST(PosixIniFile, IsSharedByUsersOfItsFolder)
{
    const HostFolder folder;
    for (const mode_t mode : {0770u, 0755u, 0700u}) {
        const std::string folder_path = folder.Subfolder(std::to_string(mode));
        chmod(folder_path.c_str(), mode);
        EXPECT_TRUE(HostIniFile().WritePrivateProfileString("s", "a", "1", folder_path + "/a.ini"));

        struct stat status {
        };
        stat((folder_path + "/a.ini").c_str(), &status);
        EXPECT_EQ(status.st_mode & 0777, mode & 0666);
    }
}
