// Tests of atomic saves: writing, replacing and failing.
#include "src/platform/image/base/output_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <random>

#include "tests/platform/image/support/image_tools.h"

static std::vector<std::uint8_t> RepeatedByte(std::size_t size, std::uint8_t byte)
{
    return std::vector<std::uint8_t>(size, byte);
}

static std::vector<std::string> NamesIn(const TestFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path("")))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

static mode_t ModeOf(const std::string& path)
{
    struct stat status {
    };
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

// Limits file sizes during its lifetime, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{size, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};

TEST(OutputFile, AppearsOnlyOnCommit)
{
    const TestFolder folder;
    {
        OutputFile out(folder.Path("a"));
        ASSERT_FALSE(out.Failed());
        EXPECT_TRUE(out.Write(RepeatedByte(1000000, 7)));
        EXPECT_FALSE(std::filesystem::exists(folder.Path("a")));
        EXPECT_TRUE(out.Commit());
        EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(1000000, 7));
    }
    EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, LeavesNothingBehindWithoutCommit)
{
    const TestFolder folder;
    {
        OutputFile out(folder.Path("a"));
        EXPECT_TRUE(out.Write(RepeatedByte(1000000, 7)));
    }
    EXPECT_TRUE(NamesIn(folder).empty());
}

TEST(OutputFile, WritesBothByteOrders)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
    out.WriteU8(1);
    out.WriteU16Le(0x0203);
    out.WriteU32Le(0x04050607);
    out.WriteU16Be(0x0809);
    out.WriteU32Be(0x0A0B0C0D);
    ASSERT_TRUE(out.Commit());

    EXPECT_EQ(FileContent(folder.Path("a")),
              (std::vector<std::uint8_t>{1, 3, 2, 7, 6, 5, 4, 8, 9, 10, 11, 12, 13}));
}

TEST(OutputFile, KeepsPositionAcrossWritesSeeksAndReads)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
    std::vector<std::uint8_t> expected;
    for (std::size_t size : {1u, 5000u, 200000u, 3u, 131072u, 100000u, 40000u}) {
        const auto part = RepeatedByte(size, static_cast<std::uint8_t>(size % 251));
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
    EXPECT_TRUE(FileContent(folder.Path("a")) == expected);
}

TEST(OutputFile, WritesAnyNumberOfSmallPiecesInOrder)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
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

    EXPECT_TRUE(FileContent(folder.Path("a")) == expected);
}

TEST(OutputFile, WritesPiecesOfEverySizeInPlace)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
    std::mt19937 random(5);
    std::vector<std::uint8_t> expected;
    std::size_t at = 0;
    for (int i = 0; i < 400; ++i) {
        const std::size_t max = std::array<std::size_t, 4>{20, 5000, 140000, 400000}[random() % 4];
        std::vector<std::uint8_t> piece(random() % max);
        for (std::uint8_t& n : piece)
            n = static_cast<std::uint8_t>(random());
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

    EXPECT_TRUE(FileContent(folder.Path("a")) == expected);
}

TEST(OutputFile, KeepsModeOfReplacedFile)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), RepeatedByte(50, 1));
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0640), 0);
    OutputFile out(folder.Path("a"));
    EXPECT_TRUE(out.Write(RepeatedByte(20, 2)));
    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(50, 1)) << "the old file until the commit";

    EXPECT_TRUE(out.Commit());

    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(20, 2));
    EXPECT_EQ(ModeOf(folder.Path("a")), 0640u);
    EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, CreatesNewFileWithModeFromUmask)
{
    const TestFolder folder;
    const mode_t old = umask(027);
    OutputFile out(folder.Path("a"));
    const bool done = out.Commit();
    umask(old);

    EXPECT_TRUE(done);
    EXPECT_EQ(ModeOf(folder.Path("a")), 0640u);
}

TEST(OutputFile, ReplacesFileThatAppearedMeanwhile)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
    EXPECT_TRUE(out.Write(RepeatedByte(20, 2)));
    WriteFileContent(folder.Path("a"), RepeatedByte(50, 1));

    EXPECT_TRUE(out.Commit());

    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(20, 2));
    EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, RejectsWritesAfterCommit)
{
    const TestFolder folder;
    OutputFile out(folder.Path("a"));
    ASSERT_TRUE(out.Commit());

    EXPECT_FALSE(out.WriteU8(1));
    EXPECT_FALSE(out.Commit());
    EXPECT_TRUE(FileContent(folder.Path("a")).empty());
}

TEST(OutputFile, KeepsOldFileIfDiskIsFull)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), RepeatedByte(50, 1));
    {
        const FullDisk disk(200000);
        OutputFile out(folder.Path("a"));
        ASSERT_FALSE(out.Failed());
        EXPECT_TRUE(out.Write(RepeatedByte(150000, 2)));
        EXPECT_FALSE(out.Write(RepeatedByte(150000, 2)));
        EXPECT_TRUE(out.Failed());
        EXPECT_FALSE(out.WriteU8(1));
        EXPECT_FALSE(out.Seek(0));
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(50, 1));
    EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, DetectsFullDiskWhenFlushingOnCommit)
{
    const TestFolder folder;
    {
        const FullDisk disk(100);
        OutputFile out(folder.Path("a"));
        EXPECT_TRUE(out.Write(RepeatedByte(101, 2)));
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_TRUE(NamesIn(folder).empty());
}

TEST(OutputFile, DetectsFullDiskBetweenWrites)
{
    const TestFolder folder;
    const auto piece = RepeatedByte(1000, 3);
    {
        const FullDisk disk(500500);
        OutputFile out(folder.Path("a"));
        for (int l = 0; l < 600; ++l)
            static_cast<void>(out.Write(piece));
        EXPECT_TRUE(out.Failed());
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_TRUE(NamesIn(folder).empty());
}

TEST(OutputFile, FollowsLinkAndReplacesItsTarget)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder.Path("there"));
    WriteFileContent(folder.Path("there/a"), RepeatedByte(50, 1));
    ASSERT_EQ(symlink("there/a", folder.Path("link").c_str()), 0);
    OutputFile out(folder.Path("link"));
    EXPECT_TRUE(out.Write(RepeatedByte(20, 2)));

    EXPECT_TRUE(out.Commit());

    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(FileContent(folder.Path("there/a")), RepeatedByte(20, 2));
}

TEST(OutputFile, CreatesTargetOfDanglingLink)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder.Path("there"));
    ASSERT_EQ(symlink("there/second", folder.Path("link").c_str()), 0);
    ASSERT_EQ(symlink((folder.Path("there/a")).c_str(), folder.Path("there/second").c_str()), 0);
    OutputFile out(folder.Path("link"));
    EXPECT_TRUE(out.Write(RepeatedByte(20, 2)));

    EXPECT_TRUE(out.Commit());

    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("there/second")));
    EXPECT_EQ(FileContent(folder.Path("there/a")), RepeatedByte(20, 2));
}

TEST(OutputFile, FailsForLinkLoopsAndLinksIntoMissingFolders)
{
    const TestFolder folder;
    ASSERT_EQ(symlink("one", folder.Path("two").c_str()), 0);
    ASSERT_EQ(symlink("two", folder.Path("one").c_str()), 0);
    ASSERT_EQ(symlink("nowhere/a", folder.Path("lost").c_str()), 0);

    EXPECT_TRUE(OutputFile(folder.Path("one")).Failed());
    EXPECT_TRUE(OutputFile(folder.Path("lost")).Failed());
    EXPECT_EQ(NamesIn(folder), (std::vector<std::string>{"lost", "one", "two"}));
}

TEST(OutputFile, FailsForFolderPipeAndDevice)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(folder.Path("folder"));

    for (const std::string& path : {folder.Path("folder"), folder.Path("pipe"), std::string("/dev/null"),
                                    folder.Path("nowhere/a"), folder.Path("pipe/a"), std::string()}) {
        OutputFile out(path);
        EXPECT_TRUE(out.Failed() || !out.Commit()) << path;
    }
    EXPECT_EQ(NamesIn(folder), (std::vector<std::string>{"folder", "pipe"}));
}

TEST(OutputFile, FailsForReadOnlyFile)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), RepeatedByte(50, 1));
    ASSERT_EQ(chmod(folder.Path("a").c_str(), 0444), 0);

    EXPECT_TRUE(OutputFile(folder.Path("a")).Failed());

    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(50, 1));
}

TEST(OutputFile, FailsInReadOnlyFolder)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "permissions don't apply to root";
    const TestFolder folder;
    std::filesystem::create_directory(folder.Path("folder"));
    ASSERT_EQ(chmod(folder.Path("folder").c_str(), 0555), 0);

    EXPECT_TRUE(OutputFile(folder.Path("folder/a")).Failed());

    ASSERT_EQ(chmod(folder.Path("folder").c_str(), 0755), 0);
}

TEST(OutputFile, SupportsLongestFileName)
{
    const TestFolder folder;
    const std::string name(255, 'n');
    for (int i = 0; i < 2; ++i) {  // created, then replaced
        OutputFile out(folder.Path(name));
        EXPECT_TRUE(out.Write(RepeatedByte(20, 2)));
        EXPECT_TRUE(out.Commit());
    }
    {
        OutputFile too_long(folder.Path(name + "n"));
        EXPECT_TRUE(too_long.Failed() || !too_long.Commit());
    }

    EXPECT_EQ(NamesIn(folder), std::vector<std::string>{name});
}

TEST(OutputFile, WritesIntoWorkingFolderForBareName)
{
    const TestFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path(""));
    OutputFile out("a");
    const bool done = out.Write(RepeatedByte(20, 2)) && out.Commit();
    std::filesystem::current_path(before);

    EXPECT_TRUE(done);
    EXPECT_EQ(FileContent(folder.Path("a")), RepeatedByte(20, 2));
}
