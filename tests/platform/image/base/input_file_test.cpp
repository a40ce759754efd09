// Tests of opening and reading input files, and of changes while they are open.
#include "src/platform/image/base/input_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/platform/image/support/image_tools.h"

static std::vector<std::uint8_t> CountingBytes(std::size_t size)
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

TEST(InputFile, ReadsHeadPartsAndWholeFile)
{
    const TestFolder folder;
    const auto content = CountingBytes(10000);
    WriteFileContent(folder.Path("a"), content);
    const auto file = InputFile::Open(folder.Path("a"));
    ASSERT_TRUE(file);
    std::vector<std::uint8_t> part(100);

    EXPECT_EQ(file->Size(), 10000u);
    EXPECT_EQ(CopyOf(file->Head()), CountingBytes(4096));
    EXPECT_EQ(file->ReadAt(5000, part), 100u);
    EXPECT_EQ(part, std::vector<std::uint8_t>(content.begin() + 5000, content.begin() + 5100));
    EXPECT_EQ(file->ReadAt(9950, part), 50u);
    EXPECT_EQ(file->ReadAt(10000, part), 0u);
    EXPECT_EQ(file->ReadAt(UINT64_MAX, part), 0u);
    EXPECT_EQ(CopyOf(file->All()), content);
    EXPECT_EQ(file->ReadAt(9950, part), 50u) << "now out of memory";
    EXPECT_EQ(file->ReadAt(UINT64_MAX, part), 0u);
    EXPECT_EQ(CopyOf(file->Head()), CountingBytes(4096));
}

TEST(InputFile, LendsBytesInMemory)
{
    const auto content = CountingBytes(300);
    InputFile file{Bytes(content)};
    std::vector<std::uint8_t> part(100);

    EXPECT_EQ(file.Size(), 300u);
    EXPECT_EQ(file.Head().data(), content.data());
    EXPECT_EQ(file.All().data(), content.data());
    EXPECT_EQ(file.ReadAt(250, part), 50u);
    EXPECT_EQ(file.ReadAt(300, part), 0u);
}

TEST(InputFile, IsEmptyForEmptyInput)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("empty"), {});
    const auto file = InputFile::Open(folder.Path("empty"));
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

TEST(InputFile, ReadsWhatIsLeftAfterTruncation)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), CountingBytes(10000));
    const auto file = InputFile::Open(folder.Path("a"));
    ASSERT_TRUE(file);
    ASSERT_EQ(truncate(folder.Path("a").c_str(), 3000), 0);

    EXPECT_EQ(CopyOf(file->Head()), CountingBytes(3000));
    EXPECT_EQ(CopyOf(file->All()), CountingBytes(3000));
}

TEST(InputFile, IgnoresBytesAppendedAfterOpening)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), CountingBytes(100));
    const auto file = InputFile::Open(folder.Path("a"));
    ASSERT_TRUE(file);
    WriteFileContent(folder.Path("a"), CountingBytes(200));

    EXPECT_EQ(file->All().size(), 100u);
}

TEST(InputFile, OpensOnlyRegularFilesAndLinksToThem)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    WriteFileContent(folder.Path("a"), CountingBytes(5));
    ASSERT_EQ(symlink("a", folder.Path("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", folder.Path("dangling").c_str()), 0);

    EXPECT_FALSE(InputFile::Open(folder.Path("")));
    EXPECT_FALSE(InputFile::Open(folder.Path("pipe"))) << "without waiting for a writer";
    EXPECT_FALSE(InputFile::Open("/dev/null"));
    EXPECT_FALSE(InputFile::Open("/dev/zero"));
    EXPECT_FALSE(InputFile::Open(folder.Path("missing")));
    EXPECT_FALSE(InputFile::Open(folder.Path("dangling")));
    EXPECT_FALSE(InputFile::Open(folder.Path("a/b")));
    EXPECT_FALSE(InputFile::Open(""));
    EXPECT_TRUE(InputFile::Open(folder.Path("link")));
}

TEST(InputFile, RefusesToReadWholeOversizedFile)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("sparse"), CountingBytes(5000));
    ASSERT_EQ(truncate(folder.Path("sparse").c_str(), off_t{1} << 40), 0);
    const auto file = InputFile::Open(folder.Path("sparse"));
    ASSERT_TRUE(file);

    EXPECT_TRUE(file->All().empty());
    EXPECT_EQ(CopyOf(file->Head()), CountingBytes(4096)) << "parts are still readable";
}

TEST(FileIdentity, ChangesWithContentAndFile)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("a"), CountingBytes(10));
    WriteFileContent(folder.Path("b"), CountingBytes(10));
    const auto file = InputFile::Open(folder.Path("a"));
    ASSERT_TRUE(file);

    EXPECT_EQ(InputFile::IdentityOf(folder.Path("a")), file->Identity());
    EXPECT_NE(InputFile::IdentityOf(folder.Path("b")), file->Identity());
    EXPECT_FALSE(InputFile::IdentityOf(folder.Path("missing")));
    WriteFileContent(folder.Path("a"), CountingBytes(11));
    EXPECT_NE(InputFile::IdentityOf(folder.Path("a")), file->Identity());
}
