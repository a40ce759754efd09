// Files that are decoded: what can be opened, and what comes when a file changes meanwhile.
#include "src/platform/image/base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/platform/image/support/image_tools.h"

static std::vector<std::uint8_t> aCounted(std::size_t nSize)
{
    std::vector<std::uint8_t> aBytes(nSize);
    for (std::size_t i = 0; i < nSize; ++i)
        aBytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return aBytes;
}

static std::vector<std::uint8_t> aCopyOf(Bytes aBytes)
{
    return {aBytes.begin(), aBytes.end()};
}

TEST(InputFile, GivesHeadAllAndParts)
{
    const TestFolder objFolder;
    const auto aContent = aCounted(10000);
    WriteFileContent(objFolder.sPath("a"), aContent);
    const auto pFile = InputFile::Open(objFolder.sPath("a"));
    ASSERT_TRUE(pFile);
    std::vector<std::uint8_t> aPart(100);

    EXPECT_EQ(pFile->Size(), 10000u);
    EXPECT_EQ(aCopyOf(pFile->Head()), aCounted(4096));
    EXPECT_EQ(pFile->ReadAt(5000, aPart), 100u);
    EXPECT_EQ(aPart, std::vector<std::uint8_t>(aContent.begin() + 5000, aContent.begin() + 5100));
    EXPECT_EQ(pFile->ReadAt(9950, aPart), 50u);
    EXPECT_EQ(pFile->ReadAt(10000, aPart), 0u);
    EXPECT_EQ(pFile->ReadAt(UINT64_MAX, aPart), 0u);
    EXPECT_EQ(aCopyOf(pFile->All()), aContent);
    EXPECT_EQ(pFile->ReadAt(9950, aPart), 50u) << "now out of memory";
    EXPECT_EQ(pFile->ReadAt(UINT64_MAX, aPart), 0u);
    EXPECT_EQ(aCopyOf(pFile->Head()), aCounted(4096));
}

TEST(InputFile, LendsBytesInMemory)
{
    const auto aContent = aCounted(300);
    InputFile objFile{Bytes(aContent)};
    std::vector<std::uint8_t> aPart(100);

    EXPECT_EQ(objFile.Size(), 300u);
    EXPECT_EQ(objFile.Head().data(), aContent.data());
    EXPECT_EQ(objFile.All().data(), aContent.data());
    EXPECT_EQ(objFile.ReadAt(250, aPart), 50u);
    EXPECT_EQ(objFile.ReadAt(300, aPart), 0u);
}

TEST(InputFile, IsEmptyForNoBytes)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("empty"), {});
    const auto pFile = InputFile::Open(objFolder.sPath("empty"));
    InputFile objMemory{Bytes{}};
    std::vector<std::uint8_t> aPart(10);

    ASSERT_TRUE(pFile);
    for (InputFile* pEmpty : {pFile.get(), &objMemory}) {
        EXPECT_EQ(pEmpty->Size(), 0u);
        EXPECT_TRUE(pEmpty->Head().empty());
        EXPECT_TRUE(pEmpty->All().empty());
        EXPECT_EQ(pEmpty->ReadAt(0, aPart), 0u);
    }
}

TEST(InputFile, GivesWhatIsLeftOfAFileThatIsCutWhileItIsOpen)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aCounted(10000));
    const auto pFile = InputFile::Open(objFolder.sPath("a"));
    ASSERT_TRUE(pFile);
    ASSERT_EQ(truncate(objFolder.sPath("a").c_str(), 3000), 0);

    EXPECT_EQ(aCopyOf(pFile->Head()), aCounted(3000));
    EXPECT_EQ(aCopyOf(pFile->All()), aCounted(3000));
}

TEST(InputFile, GivesNoMoreThanThereWasWhenItWasOpened)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aCounted(100));
    const auto pFile = InputFile::Open(objFolder.sPath("a"));
    ASSERT_TRUE(pFile);
    WriteFileContent(objFolder.sPath("a"), aCounted(200));

    EXPECT_EQ(pFile->All().size(), 100u);
}

TEST(InputFile, OpensOnlyRegularFilesAndLinksToThem)
{
    const TestFolder objFolder;
    ASSERT_EQ(mkfifo(objFolder.sPath("pipe").c_str(), 0600), 0);
    WriteFileContent(objFolder.sPath("a"), aCounted(5));
    ASSERT_EQ(symlink("a", objFolder.sPath("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", objFolder.sPath("dangling").c_str()), 0);

    EXPECT_FALSE(InputFile::Open(objFolder.sPath("")));
    EXPECT_FALSE(InputFile::Open(objFolder.sPath("pipe"))) << "and doesn't wait for its writer";
    EXPECT_FALSE(InputFile::Open("/dev/null"));
    EXPECT_FALSE(InputFile::Open("/dev/zero"));
    EXPECT_FALSE(InputFile::Open(objFolder.sPath("missing")));
    EXPECT_FALSE(InputFile::Open(objFolder.sPath("dangling")));
    EXPECT_FALSE(InputFile::Open(objFolder.sPath("a/b")));
    EXPECT_FALSE(InputFile::Open(""));
    EXPECT_TRUE(InputFile::Open(objFolder.sPath("link")));
}

TEST(InputFile, ReadsAWholeFileOnlyWhenAPictureCanBeThatLarge)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("sparse"), aCounted(5000));
    ASSERT_EQ(truncate(objFolder.sPath("sparse").c_str(), off_t{1} << 40), 0);
    const auto pFile = InputFile::Open(objFolder.sPath("sparse"));
    ASSERT_TRUE(pFile);

    EXPECT_TRUE(pFile->All().empty());
    EXPECT_EQ(aCopyOf(pFile->Head()), aCounted(4096)) << "parts of it can still be had";
}

TEST(FileIdentity, ChangesWithContentAndFile)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aCounted(10));
    WriteFileContent(objFolder.sPath("b"), aCounted(10));
    const auto pFile = InputFile::Open(objFolder.sPath("a"));
    ASSERT_TRUE(pFile);

    EXPECT_EQ(InputFile::IdentityOf(objFolder.sPath("a")), pFile->Identity());
    EXPECT_NE(InputFile::IdentityOf(objFolder.sPath("b")), pFile->Identity());
    EXPECT_FALSE(InputFile::IdentityOf(objFolder.sPath("missing")));
    WriteFileContent(objFolder.sPath("a"), aCounted(11));
    EXPECT_NE(InputFile::IdentityOf(objFolder.sPath("a")), pFile->Identity());
}
