// The settings file on the disk.
#include "src/platform/posix/posix_ini_file.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"

static std::string sGet(const PosixIniFile& objIni, const std::string& sFile, const std::string& sKey)
{
    return objIni.GetPrivateProfileString("s", sKey, "default", 500, sFile);
}

TEST(PosixIniFile, GivesDefaultsForAMissingFileAndMakesItByWriting)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("new/deep/VL_SearchHistory.INI");
    PosixIniFile objIni;

    EXPECT_EQ(sGet(objIni, sFile, "a"), "default");
    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "a", 1000, sFile), 1000);
    EXPECT_TRUE(objIni.WritePrivateProfileString("s", "a", "ü", sFile));
    EXPECT_EQ(sGet(objIni, sFile, "a"), "ü");
    EXPECT_EQ(sContentOf(sFile), "[s]\na=ü\n");
}

TEST(PosixIniFile, ReadsTheNumberThatAValueBeginsWith)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.ini", "[s]\na=150 twips\nb=-3.5\nc=x\nd=\n");
    const PosixIniFile objIni;

    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "a", 7, sFile), 150);
    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "b", 7, sFile), -3);
    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "c", 7, sFile), 0);
    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "d", 7, sFile), 0);
    EXPECT_EQ(objIni.GetPrivateProfileInt("s", "e", 7, sFile), 7);
}

TEST(PosixIniFile, CutsAValueToTheBufferButNotInsideACharacter)
{
    const HostFolder objFolder;
    const std::string sLong(600, 'x');
    const std::string sFile = objFolder.sFile("a.ini", "[s]\na=" + sLong + "\nb=ab€\n");
    const PosixIniFile objIni;

    EXPECT_EQ(sGet(objIni, sFile, "a"), std::string(499, 'x'));
    EXPECT_EQ(objIni.GetPrivateProfileString("s", "b", "", 5, sFile), "ab");
    EXPECT_EQ(objIni.GetPrivateProfileString("s", "b", "", 6, sFile), "ab€");
    EXPECT_EQ(objIni.GetPrivateProfileString("s", "b", "", 0, sFile), "");
    EXPECT_EQ(objIni.GetPrivateProfileString("s", "none", sLong, 500, sFile), std::string(499, 'x'));
}

TEST(PosixIniFile, SeesWhatAnotherProcessWrote)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.ini", "[s]\na=1\n");
    const PosixIniFile objIni;
    EXPECT_EQ(sGet(objIni, sFile, "a"), "1");

    EXPECT_TRUE(PosixIniFile().WritePrivateProfileString("s", "a", "2", sFile));

    EXPECT_EQ(sGet(objIni, sFile, "a"), "2");
    std::filesystem::remove(sFile);
    EXPECT_EQ(sGet(objIni, sFile, "a"), "default");
}

TEST(PosixIniFile, TurnsAWindows1252FileIntoUtf8WhenItWrites)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.ini", "; f\xFCr mich\r\n[s]\r\na=caf\xE9\r\n");
    PosixIniFile objIni;

    EXPECT_EQ(sGet(objIni, sFile, "a"), "café");
    EXPECT_TRUE(objIni.WritePrivateProfileString("s", "b", "1", sFile));
    EXPECT_EQ(sContentOf(sFile), "; für mich\r\n[s]\r\na=café\r\nb=1\r\n");
}

TEST(PosixIniFile, LosesNothingWhenProcessesWriteAtTheSameTime)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.ini");
    constexpr int kProcesses = 4, kKeys = 25;
    for (int nProcess = 0; nProcess < kProcesses; ++nProcess) {
        if (fork() == 0) {
            PosixIniFile objIni;
            bool bAll = true;
            for (int nKey = 0; nKey < kKeys; ++nKey)
                bAll &= objIni.WritePrivateProfileString("s" + std::to_string(nProcess), std::to_string(nKey),
                                                         "x", sFile);
            _exit(bAll ? 0 : 1);
        }
    }
    for (int nStatus = 0; wait(&nStatus) > 0;)
        EXPECT_EQ(nStatus, 0);

    const PosixIniFile objIni;
    for (int nProcess = 0; nProcess < kProcesses; ++nProcess)
        for (int nKey = 0; nKey < kKeys; ++nKey)
            EXPECT_EQ(objIni.GetPrivateProfileString("s" + std::to_string(nProcess), std::to_string(nKey), "",
                                                     500, sFile),
                      "x");
    EXPECT_EQ(objFolder.sListing(), "a.ini");
}

TEST(PosixIniFile, IsUnreadableAndUnwritableAsAFolder)
{
    const HostFolder objFolder;
    PosixIniFile objIni;

    EXPECT_EQ(sGet(objIni, objFolder.sPath(), "a"), "default");
    EXPECT_FALSE(objIni.WritePrivateProfileString("s", "a", "1", objFolder.sPath()));
    EXPECT_FALSE(objIni.WritePrivateProfileString("s", "a", "1", ""));
    EXPECT_FALSE(objIni.WritePrivateProfileString("s", "a", "1", "/dev/null/a.ini"));
    EXPECT_EQ(objFolder.sListing(), "");
}

TEST(PosixIniFile, TakesBinaryRubbish)
{
    const HostFolder objFolder;
    std::string sRubbish;
    for (int n = 0; n < 5000; ++n)
        sRubbish += static_cast<char>(n * 7919 >> 3);
    const std::string sFile = objFolder.sFile("a.ini", sRubbish);
    PosixIniFile objIni;

    EXPECT_EQ(sGet(objIni, sFile, "a"), "default");
    EXPECT_TRUE(objIni.WritePrivateProfileString("s", "a", "1", sFile));
    EXPECT_EQ(sGet(objIni, sFile, "a"), "1");
}

TEST(PosixIniFile, IsLeftAloneWhereItMayNotBeReadOrWritten)
{
    const HostFolder objFolder;
    const std::string sSecret = objFolder.sFile("secret.ini", "[s]\na=1\n");
    chmod(sSecret.c_str(), 0600);
    const std::string sFile = objFolder.sFile("locked/a.ini", "[s]\na=1\n");
    chmod(objFolder.sFile("locked").c_str(), 0555);
    if (geteuid() != 0)
        GTEST_SKIP() << "needs another user's file";

    EXPECT_TRUE(bAsOrdinaryUser([&] {
        PosixIniFile objIni;
        return sGet(objIni, sSecret, "a") == "default" &&
               !objIni.WritePrivateProfileString("s", "a", "2", sSecret) && sGet(objIni, sFile, "a") == "1" &&
               !objIni.WritePrivateProfileString("s", "a", "2", sFile);
    }));
    EXPECT_EQ(sContentOf(sSecret), "[s]\na=1\n");
    EXPECT_EQ(sContentOf(sFile), "[s]\na=1\n");
}

TEST(PosixIniFile, KeepsTheOldFileWhenTheDiskIsFull)
{
    const HostFolder objFolder;
    const std::string sOld = "[s]\na=" + std::string(300, 'x') + "\n";
    const std::string sFile = objFolder.sFile("a.ini", sOld);
    const ScopedFileSizeLimit objLimit(100);

    EXPECT_FALSE(PosixIniFile().WritePrivateProfileString("s", "b", "1", sFile));
    EXPECT_EQ(sContentOf(sFile), sOld);
    EXPECT_EQ(objFolder.sListing(), "a.ini");
}

TEST(PosixIniFile, FollowsALinkOfTheUsersButNotAStrangers)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("real/a.ini", "[s]\n");
    const std::string sLink = objFolder.sFile("a.ini");
    std::filesystem::create_symlink(sFile, sLink);
    PosixIniFile objIni;

    EXPECT_TRUE(objIni.WritePrivateProfileString("s", "a", "1", sLink));
    EXPECT_EQ(sContentOf(sFile), "[s]\na=1\n");
    EXPECT_TRUE(std::filesystem::is_symlink(sLink));
    if (lchown(sLink.c_str(), 12345, 12345) == 0) {
        EXPECT_FALSE(objIni.WritePrivateProfileString("s", "a", "2", sLink));
        EXPECT_EQ(sContentOf(sFile), "[s]\na=1\n");
    }
}

TEST(PosixIniFile, IsSharedByThoseWhomItsFolderIsFor)
{
    const HostFolder objFolder;
    for (const mode_t nMode : {0770u, 0755u, 0700u}) {
        const std::string sFolder = objFolder.sSubfolder(std::to_string(nMode));
        chmod(sFolder.c_str(), nMode);
        EXPECT_TRUE(PosixIniFile().WritePrivateProfileString("s", "a", "1", sFolder + "/a.ini"));

        struct stat objStat {
        };
        stat((sFolder + "/a.ini").c_str(), &objStat);
        EXPECT_EQ(objStat.st_mode & 0777, nMode & 0666);
    }
}
