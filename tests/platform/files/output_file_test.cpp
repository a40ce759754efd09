// Files that are written whole or not at all: contents, modes, owners and special targets.
#include "src/platform/files/output_file.h"

#include <gtest/gtest.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <random>

#include "src/platform/files/file_saver.h"
#include "tests/platform/files/support/faulty_system.h"
#include "tests/platform/files/support/save_folder.h"

using Bytes = std::span<const std::uint8_t>;
using Names = std::vector<std::string>;

static const std::string kOld(50, 'o');
static const std::string kNew(20, 'n');

static std::vector<std::uint8_t> Filled(std::size_t size, std::uint8_t byte)
{
    return std::vector<std::uint8_t>(size, byte);
}

static std::string Text(Bytes bytes)
{
    return {bytes.begin(), bytes.end()};
}

static bool Save(const std::string& path, FileSaver& saver, const std::string& content = kNew)
{
    OutputFile out(path, saver);
    return out.WriteText(content) && out.Commit();
}

static bool Save(const std::string& path)
{
    FileSaver saver;
    return Save(path, saver);
}

TEST(OutputFile, HasItsNameOnlyOnceItIsCommitted)
{
    const SaveFolder folder;
    FileSaver saver;
    {
        OutputFile out(folder.Path("a"), saver);
        ASSERT_FALSE(out.Failed());
        EXPECT_TRUE(out.Write(Filled(1000000, 7)));
        EXPECT_EQ(ContentOf(folder.Path("a")), "(none)");
        EXPECT_TRUE(out.Commit());
        EXPECT_EQ(ContentOf(folder.Path("a")), std::string(1000000, 7));
    }
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(OutputFile, LeavesNothingBehindWithoutCommit)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        {
            OutputFile out(folder.Path("a"), saver);
            EXPECT_TRUE(out.Write(Filled(1000000, 7)));
            EXPECT_EQ(folder.Names().size(), nameless ? 0u : 1u);
        }
        EXPECT_TRUE(folder.Names().empty());
    }
}

TEST(OutputFile, WritesNumbersInBothByteOrders)
{
    const SaveFolder folder;
    FileSaver saver;
    OutputFile out(folder.Path("a"), saver);
    out.WriteU8(1);
    out.WriteU16Le(0x0203);
    out.WriteU32Le(0x04050607);
    out.WriteU16Be(0x0809);
    out.WriteU32Be(0x0A0B0C0D);
    ASSERT_TRUE(out.Commit());

    EXPECT_EQ(ContentOf(folder.Path("a")), "\x01\x03\x02\x07\x06\x05\x04\x08\x09\x0A\x0B\x0C\x0D");
}

TEST(OutputFile, KeepsItsPositionThroughWritesSeeksAndReads)
{
    const SaveFolder folder;
    FileSaver saver;
    OutputFile out(folder.Path("a"), saver);
    std::vector<std::uint8_t> expected;
    for (std::size_t size : {1u, 5000u, 200000u, 3u, 131072u, 100000u, 40000u}) {
        const auto part = Filled(size, static_cast<std::uint8_t>(size % 251));
        ASSERT_TRUE(out.Write(part));
        expected.insert(expected.end(), part.begin(), part.end());
        ASSERT_EQ(out.Position(), expected.size());
    }
    std::vector<std::uint8_t> back(10);

    EXPECT_EQ(out.Size(), expected.size());
    EXPECT_EQ(out.ReadAt(4995, back), 10u);
    EXPECT_EQ(back, std::vector<std::uint8_t>(expected.begin() + 4995, expected.begin() + 5005));
    EXPECT_EQ(out.ReadAt(expected.size() - 4, back), 4u);
    EXPECT_EQ(out.Position(), expected.size());
    EXPECT_TRUE(out.Seek(2));
    EXPECT_TRUE(out.WriteU8(99));
    expected[2] = 99;
    EXPECT_EQ(out.Position(), 3u);
    EXPECT_TRUE(out.Seek(expected.size() + 5));
    EXPECT_TRUE(out.WriteU8(98));
    expected.resize(expected.size() + 5);
    expected.push_back(98);
    EXPECT_EQ(out.Size(), expected.size());
    ASSERT_TRUE(out.Commit());
    EXPECT_TRUE(ContentOf(folder.Path("a")) == Text(expected));
}

TEST(OutputFile, WritesAnyNumberOfSmallPieces)
{
    const SaveFolder folder;
    FileSaver saver;
    OutputFile out(folder.Path("a"), saver);
    std::vector<std::uint8_t> source(9000);
    for (std::size_t i = 0; i < source.size(); ++i)
        source[i] = static_cast<std::uint8_t>(i * 31 >> 3);
    std::vector<Bytes> pieces;
    std::vector<std::uint8_t> expected = {1};
    for (std::size_t i = 0; i < 3000; ++i) {
        pieces.push_back(Bytes(source).subspan(8990 - i, i % 10));
        expected.insert(expected.end(), pieces.back().begin(), pieces.back().end());
    }
    expected.push_back(2);

    EXPECT_TRUE(out.WriteU8(1));
    for (const Bytes piece : pieces)
        EXPECT_TRUE(out.Write(piece));
    EXPECT_TRUE(out.WriteU8(2));
    EXPECT_EQ(out.Position(), expected.size());
    ASSERT_TRUE(out.Commit());

    EXPECT_TRUE(ContentOf(folder.Path("a")) == Text(expected));
}

TEST(OutputFile, PutsPiecesOfEverySizeWhereTheyBelong)
{
    const SaveFolder folder;
    FileSaver saver;
    OutputFile out(folder.Path("a"), saver);
    std::mt19937 random(5);
    std::vector<std::uint8_t> expected;
    std::size_t at = 0;
    for (int i = 0; i < 400; ++i) {
        const std::size_t most = std::array<std::size_t, 4>{20, 5000, 140000, 400000}[random() % 4];
        std::vector<std::uint8_t> piece(random() % most);
        for (std::uint8_t& byte : piece)
            byte = static_cast<std::uint8_t>(random());
        if (i % 9 == 0) {
            at = random() % (expected.size() + 3000);
            ASSERT_TRUE(out.Seek(at));
        }
        ASSERT_TRUE(out.Write(piece));
        if (piece.empty())
            continue;
        expected.resize(std::max(expected.size(), at + piece.size()));
        std::copy(piece.begin(), piece.end(), expected.begin() + static_cast<std::ptrdiff_t>(at));
        at += piece.size();
        ASSERT_EQ(out.Position(), at);
    }
    ASSERT_TRUE(out.Commit());

    EXPECT_TRUE(ContentOf(folder.Path("a")) == Text(expected));
}

TEST(OutputFile, CopesWithShortWritesAndInterruptions)
{
    const SaveFolder folder;
    FaultySystem system;
    system.most_bytes = 777;
    system.interruptions = 5;
    FileSaver saver(true, system);
    std::string content;
    for (int i = 0; i < 300000; ++i)
        content += static_cast<char>(i % 251);

    EXPECT_TRUE(Save(folder.Path("a"), saver, content));

    EXPECT_EQ(system.interruptions, 0);
    EXPECT_GT(system.Count("write"), content.size() / 777);
    EXPECT_TRUE(ContentOf(folder.Path("a")) == content);
}

TEST(OutputFile, KeepsTheModeOfTheFileThatItReplaces)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        WriteContent(folder.Path("a"), kOld);
        ASSERT_EQ(chmod(folder.Path("a").c_str(), 0640), 0);
        OutputFile out(folder.Path("a"), saver);
        EXPECT_TRUE(out.WriteText(kNew));
        EXPECT_EQ(ContentOf(folder.Path("a")), kOld);

        EXPECT_TRUE(out.Commit());

        EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
        EXPECT_EQ(ModeOf(folder.Path("a")), 0640u);
        EXPECT_EQ(folder.Names(), Names{"a"});
    }
}

TEST(OutputFile, DropsSetUserSetGroupAndStickyBits)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 07755), 0);
    ASSERT_EQ(ModeOf(folder.Path("a")), 07755u);

    EXPECT_TRUE(Save(folder.Path("a")));

    EXPECT_EQ(ModeOf(folder.Path("a")), 0755u);
}

TEST(OutputFile, GivesNewFilesTheUsersMode)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        const std::string path = folder.Path(nameless ? "a" : "b");
        const mode_t old = umask(027);
        const bool done = Save(path, saver);
        umask(old);

        EXPECT_TRUE(done);
        EXPECT_EQ(ModeOf(path), 0640u);
    }
}

TEST(OutputFile, GivesNewFilesTheModeThatIsAskedFor)
{
    const SaveFolder folder;
    FileSaver saver;
    WriteContent(folder.Path("old"), kOld);
    ASSERT_EQ(chmod(folder.Path("old").c_str(), 0644), 0);
    for (const std::string name : {"new", "old"}) {
        OutputFile out(folder.Path(name), saver);
        out.SetMode(0666);
        EXPECT_TRUE(out.Commit());
    }

    EXPECT_EQ(ModeOf(folder.Path("new")), 0666u);
    EXPECT_EQ(ModeOf(folder.Path("old")), 0644u);
}

TEST(OutputFile, IsPrivateWhileItReplacesAFile)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0666), 0);
    FaultySystem system;
    system.nameless_files = false;
    FileSaver saver(true, system);
    OutputFile out(folder.Path("a"), saver);

    const Names names = folder.Names();

    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(ModeOf(folder.Path(names[0])), 0600u) << names[0];
}

TEST(OutputFile, KeepsOwnerAndGroupWhereItMay)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chown(folder.Path("a").c_str(), 12345, 54321), 0);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0664), 0);

    EXPECT_TRUE(Save(folder.Path("a")));

    struct stat status {
    };
    ASSERT_EQ(stat(folder.Path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345u);
    EXPECT_EQ(status.st_gid, 54321u);
    EXPECT_EQ(status.st_mode & 07777, 0664u);
}

TEST(OutputFile, GivesAnotherGroupNoMoreThanEveryoneHas)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a file of another user and group";
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chown(folder.Path("a").c_str(), 12345, 54321), 0);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0676), 0);

    EXPECT_TRUE(AsOrdinaryUser([&] { return Save(folder.Path("a")); }));

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(ModeOf(folder.Path("a")), 0666u);
}

// Without its list, the mode would give the group what the list gives a single user.
TEST(OutputFile, KeepsTheAccessList)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    constexpr const char* kAttribute = "system.posix_acl_access";
    struct {
        posix_acl_xattr_header header{POSIX_ACL_XATTR_VERSION};
        posix_acl_xattr_entry entries[5] = {{ACL_USER_OBJ, 6, static_cast<unsigned>(ACL_UNDEFINED_ID)},
                                            {ACL_USER, 6, 12345},
                                            {ACL_GROUP_OBJ, 0, static_cast<unsigned>(ACL_UNDEFINED_ID)},
                                            {ACL_MASK, 6, static_cast<unsigned>(ACL_UNDEFINED_ID)},
                                            {ACL_OTHER, 0, static_cast<unsigned>(ACL_UNDEFINED_ID)}};
    } const list;
    if (setxattr(folder.Path("a").c_str(), kAttribute, &list, sizeof(list), 0) != 0)
        GTEST_SKIP() << "needs a file system with access lists";

    EXPECT_TRUE(Save(folder.Path("a")));

    std::array<char, sizeof(list)> found{};
    EXPECT_EQ(getxattr(folder.Path("a").c_str(), kAttribute, found.data(), found.size()),
              static_cast<ssize_t>(sizeof(list)));
    EXPECT_EQ(std::memcmp(found.data(), &list, sizeof(list)), 0);
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}

TEST(OutputFile, LeavesOtherHardLinksWithTheOldContents)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    std::filesystem::create_hard_link(folder.Path("a"), folder.Path("b"));

    EXPECT_TRUE(Save(folder.Path("a")));

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(ContentOf(folder.Path("b")), kOld);
    EXPECT_EQ(folder.Names(), (Names{"a", "b"}));
}

TEST(OutputFile, ReplacesAFileThatAppearedMeanwhile)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        const std::string name = nameless ? "a" : "b";
        OutputFile out(folder.Path(name), saver);
        EXPECT_TRUE(out.WriteText(kNew));
        WriteContent(folder.Path(name), kOld);

        EXPECT_TRUE(out.Commit());

        EXPECT_EQ(ContentOf(folder.Path(name)), kNew);
        EXPECT_EQ(system.Count("sync"), 1u) << "it replaced a file";
    }
    EXPECT_EQ(folder.Names(), (Names{"a", "b"}));
}

TEST(OutputFile, DoesNotFollowALinkThatAppearedMeanwhile)
{
    const SaveFolder folder;
    FileSaver saver;
    WriteContent(folder.Path("precious"), kOld);
    OutputFile out(folder.Path("a"), saver);
    EXPECT_TRUE(out.WriteText(kNew));
    ASSERT_EQ(symlink("precious", folder.Path("a").c_str()), 0);

    EXPECT_TRUE(out.Commit());

    EXPECT_EQ(ContentOf(folder.Path("precious")), kOld);
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path("a")));
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}

TEST(OutputFile, StaysInItsFolderWhenThatIsRenamed)
{
    const SaveFolder folder;
    FileSaver saver;
    std::filesystem::create_directory(folder.Path("one"));
    OutputFile out(folder.Path("one/a"), saver);
    EXPECT_TRUE(out.WriteText(kNew));
    std::filesystem::rename(folder.Path("one"), folder.Path("two"));

    EXPECT_TRUE(out.Commit());

    EXPECT_EQ(ContentOf(folder.Path("two/a")), kNew);
}

TEST(OutputFile, TakesNothingMoreOnceItIsCommitted)
{
    const SaveFolder folder;
    FileSaver saver;
    OutputFile out(folder.Path("a"), saver);
    ASSERT_TRUE(out.Commit());

    EXPECT_FALSE(out.WriteU8(1));
    EXPECT_FALSE(out.Commit());
    EXPECT_EQ(ContentOf(folder.Path("a")), "");
}

TEST(OutputFile, FailsForAFolderAPipeAndADevice)
{
    const SaveFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(folder.Path("folder"));
    FileSaver saver;

    for (const std::string& path :
         {folder.Path("folder"), folder.Path("folder/"), folder.Path("folder/."), folder.Path("pipe"),
          std::string("/dev/null"), std::string("/dev/full"), folder.Path("nowhere/a"), folder.Path("pipe/a"),
          std::string("/"), std::string()}) {
        OutputFile out(path, saver);
        EXPECT_TRUE(out.Failed()) << path;
        EXPECT_NE(out.ErrorText(), "Success") << path;
        EXPECT_FALSE(out.WriteText(kNew));
        EXPECT_FALSE(out.Commit()) << path;
    }
    EXPECT_EQ(folder.Names(), (Names{"folder", "pipe"}));
}

TEST(OutputFile, FailsForAFileThatTheUserProtected)
{
    const SaveFolder folder;
    FileSaver saver;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0444), 0);

    const OutputFile out(folder.Path("a"), saver);

    EXPECT_TRUE(out.Failed());
    EXPECT_EQ(out.ErrorText(), "Permission denied");
    EXPECT_EQ(ContentOf(folder.Path("a")), kOld);
}

TEST(OutputFile, FailsForAFileThatOnlyAnotherUserMayWriteTo)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs another user's file";
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0644), 0);

    EXPECT_FALSE(AsOrdinaryUser([&] { return Save(folder.Path("a")); }));

    EXPECT_EQ(ContentOf(folder.Path("a")), kOld);
}

// Writing to such a file in place could lose it half way.
TEST(OutputFile, FailsForAWritableFileInAReadOnlyFolder)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);

    EXPECT_FALSE(AsOrdinaryUser([&] { return Save(folder.Path("a")); }));
    EXPECT_FALSE(AsOrdinaryUser([&] { return Save(folder.Path("b")); }));

    ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(ContentOf(folder.Path("a")), kOld);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(OutputFile, SavesIntoAFolderThatCannotBeListed)
{
    const SaveFolder folder;
    ASSERT_EQ(chmod(folder.Path().c_str(), 0333), 0);

    EXPECT_TRUE(AsOrdinaryUser([&] {
        FileSaver saver;
        return Save(folder.Path("a"), saver) && Save(folder.Path("a"), saver) && saver.SyncSaves();
    }));

    ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(OutputFile, TakesTheLongestName)
{
    const SaveFolder folder;
    const std::string name(255, 'n');
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        for (int i = 0; i < 2; ++i)  // created, then replaced
            EXPECT_TRUE(Save(folder.Path(name), saver));
        EXPECT_FALSE(Save(folder.Path(name + "n"), saver));
    }

    EXPECT_EQ(folder.Names(), Names{name});
}

TEST(OutputFile, WritesIntoTheWorkingFolderIfThePathNamesNone)
{
    const SaveFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const bool done = Save("a");
    std::filesystem::current_path(before);

    EXPECT_TRUE(done);
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}
