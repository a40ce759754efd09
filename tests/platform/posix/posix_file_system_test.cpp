// Tests of files and folders on the host.
#include "src/platform/posix/posix_file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "src/base/raised_error.h"
#include "tests/platform/posix/support/host_folder.h"
#include "tests/platform/posix/support/host_services.h"

using namespace std::string_literals;
using Names = std::vector<std::string>;

TEST(PosixFileSystem, DistinguishesFilesFromFolders)
{
    const HostFolder folder;
    folder.File("Sub/a.bmp", "x");
    std::filesystem::create_symlink(folder.File("Sub"), folder.File("link"));
    std::filesystem::create_symlink(folder.File("gone"), folder.File("dangling"));
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0666), 0);
    const HostFileSystem files;

    EXPECT_TRUE(files.FolderExists(folder.File("sub\\")));
    EXPECT_TRUE(files.FolderExists(folder.File("link")));
    EXPECT_FALSE(files.FileExists(folder.File("Sub")));
    EXPECT_TRUE(files.FileExists(folder.File("SUB\\A.BMP")));
    EXPECT_FALSE(files.FolderExists(folder.File("Sub/a.bmp")));
    EXPECT_FALSE(files.FileExists(folder.File("dangling")));
    EXPECT_FALSE(files.FileExists(folder.File("pipe")));
    EXPECT_FALSE(files.FileExists(""));
    EXPECT_FALSE(files.FolderExists(""));
}

TEST(PosixFileSystem, RefusesToWriteWildcardOrEmptyName)
{
    const HostFileSystem files;

    EXPECT_EQ(files.sHostPathToWrite("/tmp/*.png"), std::nullopt);
    EXPECT_EQ(files.sHostPathToWrite("/tmp/a?.png"), std::nullopt);
    EXPECT_EQ(files.sHostPathToWrite("/tmp/out/"), std::nullopt);
    EXPECT_EQ(files.sHostPathToWrite("/tmp/a.png"), "/tmp/a.png");
}

TEST(PosixFileSystem, CreatesFolderOnlyIfParentExists)
{
    const HostFolder folder;
    HostFileSystem files;

    EXPECT_TRUE(files.CreateFolder(folder.File("New\\")));
    EXPECT_FALSE(files.CreateFolder(folder.File("New")));
    EXPECT_FALSE(files.CreateFolder(folder.Path() + "\\NEW"));
    EXPECT_FALSE(files.CreateFolder(folder.File("missing/new")));
    EXPECT_FALSE(files.CreateFolder("/"));
    EXPECT_FALSE(files.CreateFolder(""));
    EXPECT_TRUE(files.CreateFolder(folder.Path() + "\\new\\Sub"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.File("New/Sub")));
    EXPECT_EQ(folder.Listing(), "New");
}

TEST(PosixFileSystem, ListsFilesAndSubfoldersInOrder)
{
    const HostFolder folder;
    for (const char* name : {"b.bmp", "a.bmp", "B.bmp", ".dot", "ä.bmp", "back\\slash"})
        folder.File(name, "");
    folder.Subfolder("z");
    folder.Subfolder(".hidden");
    std::filesystem::create_symlink(folder.File("a.bmp"), folder.File("link.bmp"));
    std::filesystem::create_symlink(folder.File("z"), folder.File("linked"));
    std::filesystem::create_symlink(folder.File("gone"), folder.File("dangling"));
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0666), 0);

    FolderListing listing{{"left over"}, {}, {}};
    ASSERT_TRUE(HostFileSystem().ListFolder(folder.Path() + "/", listing));

    EXPECT_EQ(listing.aFiles, (Names{".dot", "B.bmp", "a.bmp", "b.bmp", "link.bmp", "ä.bmp"}));
    EXPECT_EQ(listing.aSubfolders, (Names{".hidden", "linked", "z"}));
    EXPECT_EQ(listing.aLinks, std::set<std::string>{"linked"});
}

TEST(PosixFileSystem, ListsNothingForFile)
{
    const HostFolder folder;
    FolderListing listing;

    EXPECT_FALSE(HostFileSystem().ListFolder(folder.File("a.bmp", ""), listing));
    EXPECT_FALSE(HostFileSystem().ListFolder(folder.File("gone"), listing));
}

TEST(PosixFileSystem, GivesOneRealPathForEveryAliasOfFolder)
{
    const HostFolder folder;
    folder.Subfolder("Real");
    std::filesystem::create_symlink("Real", folder.File("link"));
    const HostFileSystem files;

    EXPECT_EQ(files.sRealPath(folder.File("link")), files.sRealPath(folder.File("real\\")));
    EXPECT_EQ(files.sRealPath(folder.File("gone")), "");
}

TEST(PosixFileSystem, OverwritesTargetOfCopy)
{
    const HostFolder folder;
    const std::string bytes(700'000, '\0');
    folder.File("a.bin", bytes);
    folder.File("b.bin", "old");
    HostFileSystem files;

    EXPECT_TRUE(files.CopyFile(folder.File("A.BIN"), folder.File("b.bin")));
    EXPECT_EQ(ContentOf(folder.File("b.bin")), bytes);
    EXPECT_TRUE(files.CopyFile(folder.File("a.bin"), folder.File("a.bin")));
    EXPECT_EQ(ContentOf(folder.File("a.bin")), bytes);
}

TEST(PosixFileSystem, RefusesToCopyOntoFolderOrFromMissingFile)
{
    const HostFolder folder;
    folder.File("a.bin", "x");
    folder.Subfolder("sub");
    HostFileSystem files;

    EXPECT_FALSE(files.CopyFile(folder.File("a.bin"), folder.File("sub")));
    EXPECT_FALSE(files.CopyFile(folder.File("sub"), folder.File("b.bin")));
    EXPECT_FALSE(files.CopyFile(folder.File("gone"), folder.File("b.bin")));
    EXPECT_EQ(folder.Listing(), "a.bin sub");
}

TEST(PosixFileSystem, KeepsOldTargetIfDiskIsFullDuringCopy)
{
    const HostFolder folder;
    folder.File("a.bin", std::string(700'000, 'x'));
    folder.File("b.bin", "old");
    const ScopedFileSizeLimit limit(100'000);

    EXPECT_FALSE(HostFileSystem().CopyFile(folder.File("a.bin"), folder.File("b.bin")));
    EXPECT_EQ(ContentOf(folder.File("b.bin")), "old");
    EXPECT_EQ(folder.Listing(), "a.bin b.bin");
}

TEST(PosixFileSystem, DeletesFilesButNotFolders)
{
    const HostFolder folder;
    folder.File("a.bin", "x");
    folder.Subfolder("sub");
    HostFileSystem files;

    EXPECT_TRUE(files.DeleteFile(folder.File("A.bin")));
    EXPECT_FALSE(files.DeleteFile(folder.File("a.bin")));
    EXPECT_FALSE(files.DeleteFile(folder.File("sub")));
    EXPECT_EQ(folder.Listing(), "sub");
}

TEST(PosixFileSystem, ClearsReadOnlyPermission)
{
    const HostFolder folder;
    const std::string file = folder.File("a.bin", "x");
    chmod(file.c_str(), 0444);
    HostFileSystem files;

    EXPECT_TRUE(files.ClearReadOnly(file));
    EXPECT_TRUE(files.ClearReadOnly(file));
    EXPECT_FALSE(files.ClearReadOnly(folder.File("gone")));
    EXPECT_FALSE(files.ClearReadOnly(folder.Path()));
    struct stat status {
    };
    stat(file.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0644u);
}

TEST(PosixFileSystem, CreatesFileToAppendLinesTo)
{
    const HostFolder folder;
    HostFileSystem files;

    files.AppendLine(folder.File("report.txt"), "one");
    files.AppendLine(folder.File("report.txt"), "two");

    EXPECT_EQ(ContentOf(folder.File("report.txt")), "one\ntwo\n");
}

TEST(PosixFileSystem, AppendsToDeviceButNeverWaitsForPipe)
{
    const HostFolder folder;
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0666), 0);
    HostFileSystem files;

    EXPECT_NO_THROW(files.AppendLine("/dev/null", "one"));
    EXPECT_THROW(files.AppendLine(folder.File("pipe"), "one"), clsRaisedError);
    EXPECT_THROW(files.AppendLine("/dev/full", "one"), clsRaisedError);
}

TEST(PosixFileSystem, RaisesPathFileAccessIfAppendFails)
{
    const HostFolder folder;
    HostFileSystem files;
    for (const std::string& path :
         {folder.Path(), folder.File("missing/a.txt"), folder.File("*.txt"), ""s, "Q:\\report.txt"s}) {
        try {
            files.AppendLine(path, "one");
            FAIL() << path;
        } catch (const clsRaisedError& error) {
            EXPECT_EQ(error.lNumber(), kErrPathFileAccess) << path;
        }
    }
}

TEST(PosixFileSystem, RemovesHalfWrittenLineIfDiskIsFull)
{
    const HostFolder folder;
    const std::string file = folder.File("report.txt", "old line\n");
    const ScopedFileSizeLimit limit(12);

    EXPECT_THROW(HostFileSystem().AppendLine(file, "a longer line"), clsRaisedError);
    EXPECT_EQ(ContentOf(file), "old line\n");
}

TEST(PosixFileSystem, ReadsAndAppendsBytesUnchanged)
{
    const HostFolder folder;
    const std::string bytes = "\xFF\0\r\n"s + std::string(600'000, '\x80');
    const std::string file = folder.File("Some.bin", bytes);
    HostFileSystem files;

    EXPECT_EQ(files.sReadBytes(folder.File("some.BIN")), bytes);
    EXPECT_TRUE(files.AppendBytes(folder.File("some.BIN"), "\0x"s));
    EXPECT_EQ(ContentOf(file), bytes + "\0x"s);
    EXPECT_EQ(files.sReadBytes(folder.Path()), std::nullopt);
    EXPECT_EQ(files.sReadBytes("/dev/zero"), std::nullopt);
    EXPECT_EQ(files.sReadBytes(folder.File("gone")), std::nullopt);
    EXPECT_FALSE(files.AppendBytes(folder.File("gone"), "x"));
    EXPECT_FALSE(files.AppendBytes(folder.Path(), "x"));
    EXPECT_EQ(folder.Listing(), "Some.bin");
}

TEST(PosixFileSystem, AppendsThroughNoPlantedLink)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "may not give a link to another user";
    const HostFolder folder;
    HostFileSystem files;
    const std::string victim = folder.File("victim", "precious\n");
    const std::string shared = folder.Subfolder("shared");
    chmod(shared.c_str(), 0777);
    ASSERT_EQ(symlink(victim.c_str(), (shared + "/report.txt").c_str()), 0);
    ASSERT_EQ(lchown((shared + "/report.txt").c_str(), 12345, 12345), 0);

    EXPECT_THROW(files.AppendLine(shared + "/report.txt", "a line"), clsRaisedError);
    EXPECT_FALSE(files.AppendBytes(shared + "/report.txt", "bytes"));
    EXPECT_EQ(ContentOf(victim), "precious\n");

    ASSERT_EQ(lchown((shared + "/report.txt").c_str(), geteuid(), getegid()), 0);
    files.AppendLine(shared + "/report.txt", "a line");
    EXPECT_EQ(ContentOf(victim), "precious\na line\n");
}

TEST(PosixFileSystem, StampsFilesByIdentityAndContents)
{
    const HostFolder folder;
    const std::string file = folder.File("a", "one");
    std::filesystem::create_symlink(file, folder.File("link"));
    std::filesystem::create_hard_link(file, folder.File("hard"));
    folder.File("other", "one");
    const HostFileSystem files;

    const auto stamp = files.objStampOf(file);
    ASSERT_TRUE(stamp);
    EXPECT_EQ(files.objStampOf(folder.File("link")), stamp);
    EXPECT_TRUE(files.objStampOf(folder.File("hard"))->bSameFile(*stamp));
    EXPECT_FALSE(files.objStampOf(folder.File("other"))->bSameFile(*stamp));
    EXPECT_EQ(files.objStampOf(folder.Path()), std::nullopt);
    EXPECT_EQ(files.objStampOf(folder.File("none")), std::nullopt);

    folder.File("a", "longer");
    EXPECT_NE(files.objStampOf(file), stamp);
    EXPECT_TRUE(files.objStampOf(file)->bSameFile(*stamp));
}
