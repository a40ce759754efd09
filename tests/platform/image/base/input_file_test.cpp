// Files that are decoded: what can be opened, and what comes when a file changes meanwhile.
#include "src/platform/image/base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/platform/image/support/image_tools.h"

static std::vector<std::uint8_t> Counted(std::size_t size)
{
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return bytes;
}

static std::vector<std::uint8_t> CopyOf(Bytes bytes)
{
    return {bytes.begin(), bytes.end()};
}

TEST(InputFile, GivesHeadAllAndParts)
{
    const TestFolder folder;
    const auto content = Counted(10000);
    WriteFileContent(folder.sPath("a"), content);
    const auto file = InputFile::Open(folder.sPath("a"));
    ASSERT_TRUE(file);
    std::vector<std::uint8_t> part(100);

    EXPECT_EQ(file->Size(), 10000u);
    EXPECT_EQ(CopyOf(file->Head()), Counted(4096));
    EXPECT_EQ(file->ReadAt(5000, part), 100u);
    EXPECT_EQ(part, std::vector<std::uint8_t>(content.begin() + 5000, content.begin() + 5100));
    EXPECT_EQ(file->ReadAt(9950, part), 50u);
    EXPECT_EQ(file->ReadAt(10000, part), 0u);
    EXPECT_EQ(file->ReadAt(UINT64_MAX, part), 0u);
    EXPECT_EQ(CopyOf(file->All()), content);
    EXPECT_EQ(file->ReadAt(9950, part), 50u) << "now out of memory";
    EXPECT_EQ(file->ReadAt(UINT64_MAX, part), 0u);
    EXPECT_EQ(CopyOf(file->Head()), Counted(4096));
}

TEST(InputFile, LendsBytesInMemory)
{
    const auto content = Counted(300);
    InputFile file{Bytes(content)};
    std::vector<std::uint8_t> part(100);

    EXPECT_EQ(file.Size(), 300u);
    EXPECT_EQ(file.Head().data(), content.data());
    EXPECT_EQ(file.All().data(), content.data());
    EXPECT_EQ(file.ReadAt(250, part), 50u);
    EXPECT_EQ(file.ReadAt(300, part), 0u);
}

TEST(InputFile, IsEmptyForNoBytes)
{
    const TestFolder folder;
    WriteFileContent(folder.sPath("empty"), {});
    const auto file = InputFile::Open(folder.sPath("empty"));
    InputFile memory{Bytes{}};
    std::vector<std::uint8_t> part(10);

    ASSERT_TRUE(file);
    for (InputFile* empty : {file.get(), &memory}) {
        EXPECT_EQ(empty->Size(), 0u);
        EXPECT_TRUE(empty->Head().empty());
        EXPECT_TRUE(empty->All().empty());
        EXPECT_EQ(empty->ReadAt(0, part), 0u);
    }
}

TEST(InputFile, GivesWhatIsLeftOfAFileThatIsCutWhileItIsOpen)
{
    const TestFolder folder;
    WriteFileContent(folder.sPath("a"), Counted(10000));
    const auto file = InputFile::Open(folder.sPath("a"));
    ASSERT_TRUE(file);
    ASSERT_EQ(truncate(folder.sPath("a").c_str(), 3000), 0);

    EXPECT_EQ(CopyOf(file->Head()), Counted(3000));
    EXPECT_EQ(CopyOf(file->All()), Counted(3000));
}

TEST(InputFile, GivesNoMoreThanThereWasWhenItWasOpened)
{
    const TestFolder folder;
    WriteFileContent(folder.sPath("a"), Counted(100));
    const auto file = InputFile::Open(folder.sPath("a"));
    ASSERT_TRUE(file);
    WriteFileContent(folder.sPath("a"), Counted(200));

    EXPECT_EQ(file->All().size(), 100u);
}

TEST(InputFile, OpensOnlyRegularFilesAndLinksToThem)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.sPath("pipe").c_str(), 0600), 0);
    WriteFileContent(folder.sPath("a"), Counted(5));
    ASSERT_EQ(symlink("a", folder.sPath("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", folder.sPath("dangling").c_str()), 0);

    EXPECT_FALSE(InputFile::Open(folder.sPath("")));
    EXPECT_FALSE(InputFile::Open(folder.sPath("pipe"))) << "and doesn't wait for its writer";
    EXPECT_FALSE(InputFile::Open("/dev/null"));
    EXPECT_FALSE(InputFile::Open("/dev/zero"));
    EXPECT_FALSE(InputFile::Open(folder.sPath("missing")));
    EXPECT_FALSE(InputFile::Open(folder.sPath("dangling")));
    EXPECT_FALSE(InputFile::Open(folder.sPath("a/b")));
    EXPECT_FALSE(InputFile::Open(""));
    EXPECT_TRUE(InputFile::Open(folder.sPath("link")));
}

TEST(InputFile, ReadsAWholeFileOnlyWhenAPictureCanBeThatLarge)
{
    const TestFolder folder;
    WriteFileContent(folder.sPath("sparse"), Counted(5000));
    ASSERT_EQ(truncate(folder.sPath("sparse").c_str(), off_t{1} << 40), 0);
    const auto file = InputFile::Open(folder.sPath("sparse"));
    ASSERT_TRUE(file);

    EXPECT_TRUE(file->All().empty());
    EXPECT_EQ(CopyOf(file->Head()), Counted(4096)) << "parts of it can still be had";
}

TEST(FileIdentity, ChangesWithContentAndFile)
{
    const TestFolder folder;
    WriteFileContent(folder.sPath("a"), Counted(10));
    WriteFileContent(folder.sPath("b"), Counted(10));
    const auto file = InputFile::Open(folder.sPath("a"));
    ASSERT_TRUE(file);

    EXPECT_EQ(InputFile::IdentityOf(folder.sPath("a")), file->Identity());
    EXPECT_NE(InputFile::IdentityOf(folder.sPath("b")), file->Identity());
    EXPECT_FALSE(InputFile::IdentityOf(folder.sPath("missing")));
    WriteFileContent(folder.sPath("a"), Counted(11));
    EXPECT_NE(InputFile::IdentityOf(folder.sPath("a")), file->Identity());
}
