// Files and folders of the host.
#include "src/platform/posix/posix_file_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "src/base/raised_error.h"
#include "tests/platform/posix/support/host_folder.h"

using namespace std::string_literals;
using Names = std::vector<std::string>;

TEST(PosixFileSystem, TellsFilesFromFolders)
{
    const HostFolder objFolder;
    objFolder.sFile("Sub/a.bmp", "x");
    std::filesystem::create_symlink(objFolder.sFile("Sub"), objFolder.sFile("link"));
    std::filesystem::create_symlink(objFolder.sFile("gone"), objFolder.sFile("dangling"));
    ASSERT_EQ(mkfifo(objFolder.sFile("pipe").c_str(), 0666), 0);
    const PosixFileSystem objFiles;

    EXPECT_TRUE(objFiles.FolderExists(objFolder.sFile("sub\\")));
    EXPECT_TRUE(objFiles.FolderExists(objFolder.sFile("link")));
    EXPECT_FALSE(objFiles.FileExists(objFolder.sFile("Sub")));
    EXPECT_TRUE(objFiles.FileExists(objFolder.sFile("SUB\\A.BMP")));
    EXPECT_FALSE(objFiles.FolderExists(objFolder.sFile("Sub/a.bmp")));
    EXPECT_FALSE(objFiles.FileExists(objFolder.sFile("dangling")));
    EXPECT_FALSE(objFiles.FileExists(objFolder.sFile("pipe")));
    EXPECT_FALSE(objFiles.FileExists(""));
    EXPECT_FALSE(objFiles.FolderExists(""));
}

TEST(PosixFileSystem, RefusesToWriteUnderANameWithAWildcardOrNoName)
{
    const PosixFileSystem objFiles;

    EXPECT_EQ(objFiles.sHostPathToWrite("/tmp/*.png"), std::nullopt);
    EXPECT_EQ(objFiles.sHostPathToWrite("/tmp/a?.png"), std::nullopt);
    EXPECT_EQ(objFiles.sHostPathToWrite("/tmp/out/"), std::nullopt);
    EXPECT_EQ(objFiles.sHostPathToWrite("/tmp/a.png"), "/tmp/a.png");
}

TEST(PosixFileSystem, MakesOneFolderWhoseParentIsThere)
{
    const HostFolder objFolder;
    PosixFileSystem objFiles;

    EXPECT_TRUE(objFiles.CreateFolder(objFolder.sFile("New\\")));
    EXPECT_FALSE(objFiles.CreateFolder(objFolder.sFile("New")));
    EXPECT_FALSE(objFiles.CreateFolder(objFolder.sPath() + "\\NEW"));
    EXPECT_FALSE(objFiles.CreateFolder(objFolder.sFile("missing/new")));
    EXPECT_FALSE(objFiles.CreateFolder("/"));
    EXPECT_FALSE(objFiles.CreateFolder(""));
    EXPECT_TRUE(objFiles.CreateFolder(objFolder.sPath() + "\\new\\Sub"));
    EXPECT_TRUE(std::filesystem::is_directory(objFolder.sFile("New/Sub")));
    EXPECT_EQ(objFolder.sListing(), "New");
}

TEST(PosixFileSystem, ListsFilesAndSubfoldersInOrder)
{
    const HostFolder objFolder;
    for (const char* sName : {"b.bmp", "a.bmp", "B.bmp", ".dot", "ä.bmp", "back\\slash"})
        objFolder.sFile(sName, "");
    objFolder.sSubfolder("z");
    objFolder.sSubfolder(".hidden");
    std::filesystem::create_symlink(objFolder.sFile("a.bmp"), objFolder.sFile("link.bmp"));
    std::filesystem::create_symlink(objFolder.sFile("z"), objFolder.sFile("linked"));
    std::filesystem::create_symlink(objFolder.sFile("gone"), objFolder.sFile("dangling"));
    ASSERT_EQ(mkfifo(objFolder.sFile("pipe").c_str(), 0666), 0);

    FolderListing objListing{{"left over"}, {}, {}};
    ASSERT_TRUE(PosixFileSystem().ListFolder(objFolder.sPath() + "/", objListing));

    EXPECT_EQ(objListing.aFiles, (Names{".dot", "B.bmp", "a.bmp", "b.bmp", "link.bmp", "ä.bmp"}));
    EXPECT_EQ(objListing.aSubfolders, (Names{".hidden", "linked", "z"}));
    EXPECT_EQ(objListing.aLinks, std::set<std::string>{"linked"});
}

TEST(PosixFileSystem, ListsNoFile)
{
    const HostFolder objFolder;
    FolderListing objListing;

    EXPECT_FALSE(PosixFileSystem().ListFolder(objFolder.sFile("a.bmp", ""), objListing));
    EXPECT_FALSE(PosixFileSystem().ListFolder(objFolder.sFile("gone"), objListing));
}

TEST(PosixFileSystem, GivesOneRealPathForEveryWayToAFolder)
{
    const HostFolder objFolder;
    objFolder.sSubfolder("Real");
    std::filesystem::create_symlink("Real", objFolder.sFile("link"));
    const PosixFileSystem objFiles;

    EXPECT_EQ(objFiles.sRealPath(objFolder.sFile("link")), objFiles.sRealPath(objFolder.sFile("real\\")));
    EXPECT_EQ(objFiles.sRealPath(objFolder.sFile("gone")), "");
}

TEST(PosixFileSystem, CopiesAFileOverAnother)
{
    const HostFolder objFolder;
    const std::string sBytes(700'000, '\0');
    objFolder.sFile("a.bin", sBytes);
    objFolder.sFile("b.bin", "old");
    PosixFileSystem objFiles;

    EXPECT_TRUE(objFiles.CopyFile(objFolder.sFile("A.BIN"), objFolder.sFile("b.bin")));
    EXPECT_EQ(sContentOf(objFolder.sFile("b.bin")), sBytes);
    EXPECT_TRUE(objFiles.CopyFile(objFolder.sFile("a.bin"), objFolder.sFile("a.bin")));
    EXPECT_EQ(sContentOf(objFolder.sFile("a.bin")), sBytes);
}

TEST(PosixFileSystem, CopiesNothingOntoAFolderOrFromNowhere)
{
    const HostFolder objFolder;
    objFolder.sFile("a.bin", "x");
    objFolder.sSubfolder("sub");
    PosixFileSystem objFiles;

    EXPECT_FALSE(objFiles.CopyFile(objFolder.sFile("a.bin"), objFolder.sFile("sub")));
    EXPECT_FALSE(objFiles.CopyFile(objFolder.sFile("sub"), objFolder.sFile("b.bin")));
    EXPECT_FALSE(objFiles.CopyFile(objFolder.sFile("gone"), objFolder.sFile("b.bin")));
    EXPECT_EQ(objFolder.sListing(), "a.bin sub");
}

TEST(PosixFileSystem, LeavesTheOldTargetWhenACopyDoesNotFitOnTheDisk)
{
    const HostFolder objFolder;
    objFolder.sFile("a.bin", std::string(700'000, 'x'));
    objFolder.sFile("b.bin", "old");
    const ScopedFileSizeLimit objLimit(100'000);

    EXPECT_FALSE(PosixFileSystem().CopyFile(objFolder.sFile("a.bin"), objFolder.sFile("b.bin")));
    EXPECT_EQ(sContentOf(objFolder.sFile("b.bin")), "old");
    EXPECT_EQ(objFolder.sListing(), "a.bin b.bin");
}

TEST(PosixFileSystem, DeletesFilesOnly)
{
    const HostFolder objFolder;
    objFolder.sFile("a.bin", "x");
    objFolder.sSubfolder("sub");
    PosixFileSystem objFiles;

    EXPECT_TRUE(objFiles.DeleteFile(objFolder.sFile("A.bin")));
    EXPECT_FALSE(objFiles.DeleteFile(objFolder.sFile("a.bin")));
    EXPECT_FALSE(objFiles.DeleteFile(objFolder.sFile("sub")));
    EXPECT_EQ(objFolder.sListing(), "sub");
}

TEST(PosixFileSystem, ClearsAFilesProtection)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.bin", "x");
    chmod(sFile.c_str(), 0444);
    PosixFileSystem objFiles;

    EXPECT_TRUE(objFiles.ClearReadOnly(sFile));
    EXPECT_TRUE(objFiles.ClearReadOnly(sFile));
    EXPECT_FALSE(objFiles.ClearReadOnly(objFolder.sFile("gone")));
    EXPECT_FALSE(objFiles.ClearReadOnly(objFolder.sPath()));
    struct stat objStat {
    };
    stat(sFile.c_str(), &objStat);
    EXPECT_EQ(objStat.st_mode & 0777, 0644u);
}

TEST(PosixFileSystem, AppendsLinesToAFileThatItMakes)
{
    const HostFolder objFolder;
    PosixFileSystem objFiles;

    objFiles.AppendLine(objFolder.sFile("report.txt"), "one");
    objFiles.AppendLine(objFolder.sFile("report.txt"), "two");

    EXPECT_EQ(sContentOf(objFolder.sFile("report.txt")), "one\ntwo\n");
}

TEST(PosixFileSystem, AppendsToADeviceButNeverWaitsForAPipe)
{
    const HostFolder objFolder;
    ASSERT_EQ(mkfifo(objFolder.sFile("pipe").c_str(), 0666), 0);
    PosixFileSystem objFiles;

    EXPECT_NO_THROW(objFiles.AppendLine("/dev/null", "one"));
    EXPECT_THROW(objFiles.AppendLine(objFolder.sFile("pipe"), "one"), clsRaisedError);
    EXPECT_THROW(objFiles.AppendLine("/dev/full", "one"), clsRaisedError);
}

TEST(PosixFileSystem, RaisesPathFileAccessWhereNothingCanBeAppended)
{
    const HostFolder objFolder;
    PosixFileSystem objFiles;
    for (const std::string& sPath : {objFolder.sPath(), objFolder.sFile("missing/a.txt"),
                                     objFolder.sFile("*.txt"), ""s, "Q:\\report.txt"s}) {
        try {
            objFiles.AppendLine(sPath, "one");
            FAIL() << sPath;
        } catch (const clsRaisedError& objError) {
            EXPECT_EQ(objError.lNumber(), kErrPathFileAccess) << sPath;
        }
    }
}

TEST(PosixFileSystem, TakesHalfALineBackWhenTheDiskIsFull)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("report.txt", "old line\n");
    const ScopedFileSizeLimit objLimit(12);

    EXPECT_THROW(PosixFileSystem().AppendLine(sFile, "a longer line"), clsRaisedError);
    EXPECT_EQ(sContentOf(sFile), "old line\n");
}

TEST(PosixFileSystem, ReadsAndAppendsBytesAsTheyAre)
{
    const HostFolder objFolder;
    const std::string sBytes = "\xFF\0\r\n"s + std::string(600'000, '\x80');
    const std::string sFile = objFolder.sFile("Some.bin", sBytes);
    PosixFileSystem objFiles;

    EXPECT_EQ(objFiles.sReadBytes(objFolder.sFile("some.BIN")), sBytes);
    EXPECT_TRUE(objFiles.AppendBytes(objFolder.sFile("some.BIN"), "\0x"s));
    EXPECT_EQ(sContentOf(sFile), sBytes + "\0x"s);
    EXPECT_EQ(objFiles.sReadBytes(objFolder.sPath()), std::nullopt);
    EXPECT_EQ(objFiles.sReadBytes("/dev/zero"), std::nullopt);
    EXPECT_EQ(objFiles.sReadBytes(objFolder.sFile("gone")), std::nullopt);
    EXPECT_FALSE(objFiles.AppendBytes(objFolder.sFile("gone"), "x"));
    EXPECT_FALSE(objFiles.AppendBytes(objFolder.sPath(), "x"));
    EXPECT_EQ(objFolder.sListing(), "Some.bin");
}
