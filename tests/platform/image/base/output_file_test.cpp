// Files that are whole or not there: writing, replacing, and every way in which it can go wrong.
#include "src/platform/image/base/output_file.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <random>

#include "tests/platform/image/support/image_tools.h"

static std::vector<std::uint8_t> aFilled(std::size_t nSize, std::uint8_t nByte)
{
    return std::vector<std::uint8_t>(nSize, nByte);
}

static std::vector<std::string> aNamesIn(const TestFolder& objFolder)
{
    std::vector<std::string> aNames;
    for (const auto& objEntry : std::filesystem::directory_iterator(objFolder.sPath("")))
        aNames.push_back(objEntry.path().filename().string());
    std::sort(aNames.begin(), aNames.end());
    return aNames;
}

static mode_t nModeOf(const std::string& sPath)
{
    struct stat objStat {
    };
    EXPECT_EQ(stat(sPath.c_str(), &objStat), 0);
    return objStat.st_mode & 07777;
}

// A disk on which no file grows beyond nSize bytes, as long as the object lives.
class FullDisk
{
public:
    explicit FullDisk(rlim_t nSize)
    {
        m_fnOldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_objOld);
        const rlimit objLimit{nSize, m_objOld.rlim_max};
        setrlimit(RLIMIT_FSIZE, &objLimit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_objOld);
        std::signal(SIGXFSZ, m_fnOldHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_objOld{};
    void (*m_fnOldHandler)(int) = nullptr;
};

TEST(OutputFile, IsThereOnlyOnceItIsCommitted)
{
    const TestFolder objFolder;
    {
        OutputFile objOut(objFolder.sPath("a"));
        ASSERT_FALSE(objOut.Failed());
        EXPECT_TRUE(objOut.Write(aFilled(1000000, 7)));
        EXPECT_FALSE(std::filesystem::exists(objFolder.sPath("a")));
        EXPECT_TRUE(objOut.Commit());
        EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(1000000, 7));
    }
    EXPECT_EQ(aNamesIn(objFolder), std::vector<std::string>{"a"});
}

TEST(OutputFile, LeavesNothingBehindWithoutACommit)
{
    const TestFolder objFolder;
    {
        OutputFile objOut(objFolder.sPath("a"));
        EXPECT_TRUE(objOut.Write(aFilled(1000000, 7)));
    }
    EXPECT_TRUE(aNamesIn(objFolder).empty());
}

TEST(OutputFile, WritesNumbersOfBothByteOrders)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    objOut.WriteU8(1);
    objOut.WriteU16Le(0x0203);
    objOut.WriteU32Le(0x04050607);
    objOut.WriteU16Be(0x0809);
    objOut.WriteU32Be(0x0A0B0C0D);
    ASSERT_TRUE(objOut.Commit());

    EXPECT_EQ(aFileContent(objFolder.sPath("a")),
              (std::vector<std::uint8_t>{1, 3, 2, 7, 6, 5, 4, 8, 9, 10, 11, 12, 13}));
}

TEST(OutputFile, KeepsItsPlaceThroughSmallAndLargeWritesSeeksAndReads)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    std::vector<std::uint8_t> aExpected;
    for (std::size_t nSize : {1u, 5000u, 200000u, 3u, 131072u, 100000u, 40000u}) {
        const auto aPart = aFilled(nSize, static_cast<std::uint8_t>(nSize % 251));
        ASSERT_TRUE(objOut.Write(aPart));
        aExpected.insert(aExpected.end(), aPart.begin(), aPart.end());
        ASSERT_EQ(objOut.Position(), aExpected.size());
    }
    std::vector<std::uint8_t> aBack(10);

    EXPECT_EQ(objOut.Size(), aExpected.size());
    EXPECT_EQ(objOut.ReadAt(4995, aBack), 10u);
    EXPECT_EQ(aBack, std::vector<std::uint8_t>(aExpected.begin() + 4995, aExpected.begin() + 5005));
    EXPECT_EQ(objOut.ReadAt(aExpected.size() - 4, aBack), 4u);
    EXPECT_EQ(objOut.Position(), aExpected.size());
    EXPECT_TRUE(objOut.Seek(2));
    EXPECT_TRUE(objOut.WriteU8(99));
    aExpected[2] = 99;
    EXPECT_EQ(objOut.Position(), 3u);
    EXPECT_TRUE(objOut.Seek(aExpected.size() + 5));
    EXPECT_TRUE(objOut.WriteU8(98));
    aExpected.resize(aExpected.size() + 5);
    aExpected.push_back(98);
    EXPECT_EQ(objOut.Size(), aExpected.size());
    ASSERT_TRUE(objOut.Commit());
    EXPECT_TRUE(aFileContent(objFolder.sPath("a")) == aExpected);
}

TEST(OutputFile, WritesAnyCountOfSmallPiecesOneAfterTheOther)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    std::vector<std::uint8_t> aSource(9000);
    for (std::size_t i = 0; i < aSource.size(); ++i)
        aSource[i] = static_cast<std::uint8_t>(i * 31 >> 3);
    std::vector<Bytes> aPieces;
    std::vector<std::uint8_t> aExpected = {1};
    for (std::size_t i = 0; i < 3000; ++i) {
        aPieces.push_back(Bytes(aSource).subspan(8990 - i, i % 10));
        aExpected.insert(aExpected.end(), aPieces.back().begin(), aPieces.back().end());
    }
    aExpected.push_back(2);

    EXPECT_TRUE(objOut.WriteU8(1));
    for (const Bytes aPiece : aPieces)
        EXPECT_TRUE(objOut.Write(aPiece));
    EXPECT_TRUE(objOut.WriteU8(2));
    EXPECT_EQ(objOut.Position(), aExpected.size());
    ASSERT_TRUE(objOut.Commit());

    EXPECT_TRUE(aFileContent(objFolder.sPath("a")) == aExpected);
}

TEST(OutputFile, PutsPiecesOfEverySizeWhereTheyBelong)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    std::mt19937 objRandom(5);
    std::vector<std::uint8_t> aExpected;
    std::size_t nAt = 0;
    for (int i = 0; i < 400; ++i) {
        const std::size_t nMost = std::array<std::size_t, 4>{20, 5000, 140000, 400000}[objRandom() % 4];
        std::vector<std::uint8_t> aPiece(objRandom() % nMost);
        for (std::uint8_t& n : aPiece)
            n = static_cast<std::uint8_t>(objRandom());
        if (i % 9 == 0) {
            nAt = objRandom() % (aExpected.size() + 3000);
            ASSERT_TRUE(objOut.Seek(nAt));
        }
        ASSERT_TRUE(objOut.Write(aPiece));
        if (aPiece.empty())
            continue;
        aExpected.resize(std::max(aExpected.size(), nAt + aPiece.size()));
        std::copy(aPiece.begin(), aPiece.end(), aExpected.begin() + static_cast<std::ptrdiff_t>(nAt));
        nAt += aPiece.size();
        ASSERT_EQ(objOut.Position(), nAt);
    }
    ASSERT_TRUE(objOut.Commit());

    EXPECT_TRUE(aFileContent(objFolder.sPath("a")) == aExpected);
}

TEST(OutputFile, ReplacesAFileAndKeepsItsMode)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aFilled(50, 1));
    ASSERT_EQ(chmod(objFolder.sPath("a").c_str(), 0640), 0);
    OutputFile objOut(objFolder.sPath("a"));
    EXPECT_TRUE(objOut.Write(aFilled(20, 2)));
    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(50, 1))
        << "the old one as long as it isn't committed";

    EXPECT_TRUE(objOut.Commit());

    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(20, 2));
    EXPECT_EQ(nModeOf(objFolder.sPath("a")), 0640u);
    EXPECT_EQ(aNamesIn(objFolder), std::vector<std::string>{"a"});
}

TEST(OutputFile, GivesANewFileTheModeThatTheUserGivesNewFiles)
{
    const TestFolder objFolder;
    const mode_t nOld = umask(027);
    OutputFile objOut(objFolder.sPath("a"));
    const bool bDone = objOut.Commit();
    umask(nOld);

    EXPECT_TRUE(bDone);
    EXPECT_EQ(nModeOf(objFolder.sPath("a")), 0640u);
}

TEST(OutputFile, ReplacesAFileThatAppearedMeanwhile)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    EXPECT_TRUE(objOut.Write(aFilled(20, 2)));
    WriteFileContent(objFolder.sPath("a"), aFilled(50, 1));

    EXPECT_TRUE(objOut.Commit());

    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(20, 2));
    EXPECT_EQ(aNamesIn(objFolder), std::vector<std::string>{"a"});
}

TEST(OutputFile, TakesNothingMoreOnceItIsCommitted)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("a"));
    ASSERT_TRUE(objOut.Commit());

    EXPECT_FALSE(objOut.WriteU8(1));
    EXPECT_FALSE(objOut.Commit());
    EXPECT_TRUE(aFileContent(objFolder.sPath("a")).empty());
}

TEST(OutputFile, LeavesTheOldFileWhenTheDiskIsFull)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aFilled(50, 1));
    {
        const FullDisk objDisk(200000);
        OutputFile objOut(objFolder.sPath("a"));
        ASSERT_FALSE(objOut.Failed());
        EXPECT_TRUE(objOut.Write(aFilled(150000, 2)));
        EXPECT_FALSE(objOut.Write(aFilled(150000, 2)));
        EXPECT_TRUE(objOut.Failed());
        EXPECT_FALSE(objOut.WriteU8(1));
        EXPECT_FALSE(objOut.Seek(0));
        EXPECT_FALSE(objOut.Commit());
    }
    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(50, 1));
    EXPECT_EQ(aNamesIn(objFolder), std::vector<std::string>{"a"});
}

TEST(OutputFile, NoticesAFullDiskInWhatIsStillGatheredAtTheEnd)
{
    const TestFolder objFolder;
    {
        const FullDisk objDisk(100);
        OutputFile objOut(objFolder.sPath("a"));
        EXPECT_TRUE(objOut.Write(aFilled(101, 2)));
        EXPECT_FALSE(objOut.Commit());
    }
    EXPECT_TRUE(aNamesIn(objFolder).empty());
}

TEST(OutputFile, NoticesAFullDiskInTheMiddleOfPieces)
{
    const TestFolder objFolder;
    const auto aPiece = aFilled(1000, 3);
    {
        const FullDisk objDisk(500500);
        OutputFile objOut(objFolder.sPath("a"));
        for (int l = 0; l < 600; ++l)
            static_cast<void>(objOut.Write(aPiece));
        EXPECT_TRUE(objOut.Failed());
        EXPECT_FALSE(objOut.Commit());
    }
    EXPECT_TRUE(aNamesIn(objFolder).empty());
}

TEST(OutputFile, FollowsALinkAndReplacesWhatItPointsTo)
{
    const TestFolder objFolder;
    std::filesystem::create_directory(objFolder.sPath("there"));
    WriteFileContent(objFolder.sPath("there/a"), aFilled(50, 1));
    ASSERT_EQ(symlink("there/a", objFolder.sPath("link").c_str()), 0);
    OutputFile objOut(objFolder.sPath("link"));
    EXPECT_TRUE(objOut.Write(aFilled(20, 2)));

    EXPECT_TRUE(objOut.Commit());

    EXPECT_TRUE(std::filesystem::is_symlink(objFolder.sPath("link")));
    EXPECT_EQ(aFileContent(objFolder.sPath("there/a")), aFilled(20, 2));
}

TEST(OutputFile, MakesWhatALinkPointsToInVain)
{
    const TestFolder objFolder;
    std::filesystem::create_directory(objFolder.sPath("there"));
    ASSERT_EQ(symlink("there/second", objFolder.sPath("link").c_str()), 0);
    ASSERT_EQ(symlink((objFolder.sPath("there/a")).c_str(), objFolder.sPath("there/second").c_str()), 0);
    OutputFile objOut(objFolder.sPath("link"));
    EXPECT_TRUE(objOut.Write(aFilled(20, 2)));

    EXPECT_TRUE(objOut.Commit());

    EXPECT_TRUE(std::filesystem::is_symlink(objFolder.sPath("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(objFolder.sPath("there/second")));
    EXPECT_EQ(aFileContent(objFolder.sPath("there/a")), aFilled(20, 2));
}

TEST(OutputFile, FailsForLinksThatPointInARingOrIntoNoFolder)
{
    const TestFolder objFolder;
    ASSERT_EQ(symlink("one", objFolder.sPath("two").c_str()), 0);
    ASSERT_EQ(symlink("two", objFolder.sPath("one").c_str()), 0);
    ASSERT_EQ(symlink("nowhere/a", objFolder.sPath("lost").c_str()), 0);

    EXPECT_TRUE(OutputFile(objFolder.sPath("one")).Failed());
    EXPECT_TRUE(OutputFile(objFolder.sPath("lost")).Failed());
    EXPECT_EQ(aNamesIn(objFolder), (std::vector<std::string>{"lost", "one", "two"}));
}

TEST(OutputFile, FailsForAFolderAPipeAndADevice)
{
    const TestFolder objFolder;
    ASSERT_EQ(mkfifo(objFolder.sPath("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(objFolder.sPath("folder"));

    for (const std::string& sPath :
         {objFolder.sPath("folder"), objFolder.sPath("pipe"), std::string("/dev/null"),
          objFolder.sPath("nowhere/a"), objFolder.sPath("pipe/a"), std::string()}) {
        OutputFile objOut(sPath);
        EXPECT_TRUE(objOut.Failed() || !objOut.Commit()) << sPath;
    }
    EXPECT_EQ(aNamesIn(objFolder), (std::vector<std::string>{"folder", "pipe"}));
}

TEST(OutputFile, FailsForAFileThatTheUserProtected)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("a"), aFilled(50, 1));
    ASSERT_EQ(chmod(objFolder.sPath("a").c_str(), 0444), 0);

    EXPECT_TRUE(OutputFile(objFolder.sPath("a")).Failed());

    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(50, 1));
}

TEST(OutputFile, FailsInAFolderThatTheUserProtected)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is protected from this user";
    const TestFolder objFolder;
    std::filesystem::create_directory(objFolder.sPath("folder"));
    ASSERT_EQ(chmod(objFolder.sPath("folder").c_str(), 0555), 0);

    EXPECT_TRUE(OutputFile(objFolder.sPath("folder/a")).Failed());

    ASSERT_EQ(chmod(objFolder.sPath("folder").c_str(), 0755), 0);
}

TEST(OutputFile, CanHaveTheLongestName)
{
    const TestFolder objFolder;
    const std::string sName(255, 'n');
    for (int i = 0; i < 2; ++i) {  // made, and then replaced
        OutputFile objOut(objFolder.sPath(sName));
        EXPECT_TRUE(objOut.Write(aFilled(20, 2)));
        EXPECT_TRUE(objOut.Commit());
    }
    {
        OutputFile objTooLong(objFolder.sPath(sName + "n"));
        EXPECT_TRUE(objTooLong.Failed() || !objTooLong.Commit());
    }

    EXPECT_EQ(aNamesIn(objFolder), std::vector<std::string>{sName});
}

TEST(OutputFile, WritesIntoTheWorkingFolderWhenThePathNamesNone)
{
    const TestFolder objFolder;
    const auto sBefore = std::filesystem::current_path();
    std::filesystem::current_path(objFolder.sPath(""));
    OutputFile objOut("a");
    const bool bDone = objOut.Write(aFilled(20, 2)) && objOut.Commit();
    std::filesystem::current_path(sBefore);

    EXPECT_TRUE(bDone);
    EXPECT_EQ(aFileContent(objFolder.sPath("a")), aFilled(20, 2));
}
