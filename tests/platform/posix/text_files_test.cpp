// Lines read from and written to files of the host.
#include "src/platform/posix/text_files.h"

#include <rapidcheck/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "src/base/raised_error.h"
#include "src/platform/posix/posix_file_system.h"
#include "tests/platform/posix/support/host_folder.h"

using namespace std::string_literals;
using Lines = std::vector<std::string>;

static Lines LinesOf(const std::string& sPath)
{
    const auto pReader = PosixFileSystem().OpenForInput(sPath);
    Lines aLines;
    std::string sLine;
    while (pReader->ReadLine(sLine))
        aLines.push_back(sLine);
    return aLines;
}

static Lines LinesOfBytes(const std::string& sBytes)
{
    const HostFolder objFolder;
    return LinesOf(objFolder.sFile("a.txt", sBytes));
}

TEST(TextReader, TakesBothLineEndsAndALastLineWithoutOne)
{
    EXPECT_EQ(LinesOfBytes("one\r\ntwo\nthree"), (Lines{"one", "two", "three"}));
    EXPECT_EQ(LinesOfBytes("one\n"), (Lines{"one"}));
    EXPECT_EQ(LinesOfBytes("\r\n\n"), (Lines{"", ""}));
    EXPECT_EQ(LinesOfBytes(""), Lines{});
}

TEST(TextReader, DropsTheMarkOfUtf8)
{
    EXPECT_EQ(LinesOfBytes("\xEF\xBB\xBF"
                           "ü\n"),
              (Lines{"ü"}));
    EXPECT_EQ(LinesOfBytes("\xEF\xBB\xBF"), Lines{});
}

TEST(TextReader, ReadsAFileThatIsNotUtf8AsAWholeAsWindows1252)
{
    EXPECT_EQ(LinesOfBytes("ü\ncaf\xE9\n"), (Lines{"Ã¼", "café"}));
    EXPECT_EQ(LinesOfBytes("cut \xC3"), (Lines{"cut Ã"}));
}

TEST(TextReader, KeepsCharactersWholeAcrossItsBlocks)
{
    std::string sText;
    for (int n = 0; n < 200'000; ++n)
        sText += n % 3 == 0 ? "ü" : n % 3 == 1 ? "€" : "😀";
    for (int nShift = 0; nShift < 4; ++nShift) {
        const std::string sShifted = std::string(static_cast<std::size_t>(nShift), 'x') + sText;
        EXPECT_EQ(LinesOfBytes(sShifted), Lines{sShifted}) << nShift;
    }
}

TEST(TextReader, KeepsNulsAndLoneCarriageReturns)
{
    EXPECT_EQ(LinesOfBytes("a\0b\rc\n"s), (Lines{"a\0b\rc"s}));
}

TEST(TextReader, ReadsLinesLongerThanItsBlocks)
{
    const std::string sLong(3'000'000, 'x');

    EXPECT_EQ(LinesOfBytes(sLong + "\n" + sLong + "\r\nshort"), (Lines{sLong, sLong, "short"}));
}

TEST(TextReader, ReadsManyLines)
{
    std::string sText;
    for (int n = 0; n < 100'000; ++n)
        sText += " M\t1^0^FALSE\t" + std::to_string(n) + "\tC\tC:\\pics\\a.bmp\r\n";

    const Lines aLines = LinesOfBytes(sText);

    ASSERT_EQ(aLines.size(), 100'000u);
    EXPECT_EQ(aLines.back(), " M\t1^0^FALSE\t99999\tC\tC:\\pics\\a.bmp");
}

TEST(TextReader, RaisesFileNotFoundForAMissingFile)
{
    try {
        LinesOf("/nowhere/a.txt");
        FAIL();
    } catch (const clsRaisedError& objError) {
        EXPECT_EQ(objError.lNumber(), kErrFileNotFound);
        EXPECT_EQ(objError.sDescription(), "File not found: /nowhere/a.txt");
    }
}

TEST(TextReader, RaisesPathFileAccessForAFolderAndAPipe)
{
    const HostFolder objFolder;
    ASSERT_EQ(mkfifo(objFolder.sFile("pipe").c_str(), 0666), 0);

    for (const std::string& sPath : {objFolder.sPath(), objFolder.sFile("pipe")}) {
        try {
            LinesOf(sPath);
            FAIL();
        } catch (const clsRaisedError& objError) {
            EXPECT_EQ(objError.lNumber(), kErrPathFileAccess);
            EXPECT_NE(objError.sDescription().find("Path/File access error: " + sPath), std::string::npos);
        }
    }
}

RC_GTEST_PROP(TextReader, GivesBackTheLinesThatWereWritten, (const std::vector<std::string>& aAny))
{
    const HostFolder objFolder;
    Lines aLines;
    for (std::string sLine : aAny) {
        std::erase_if(sLine, [](char c) { return c == '\n' || c == '\r' || (c & 0x80) != 0; });
        aLines.push_back(sLine);
    }
    const auto pWriter = PosixFileSystem().OpenForOutput(objFolder.sFile("a.txt"));
    for (const std::string& sLine : aLines)
        pWriter->WriteLine(sLine);
    pWriter->Commit();

    RC_ASSERT(LinesOf(objFolder.sFile("a.txt")) == aLines);
}

TEST(TextWriter, EndsLinesWithCrLf)
{
    const HostFolder objFolder;
    const auto pWriter = PosixFileSystem().OpenForOutput(objFolder.sFile("a.txt"));
    pWriter->WriteLine("ü");
    pWriter->WriteLine("");
    pWriter->Commit();

    EXPECT_EQ(sContentOf(objFolder.sFile("a.txt")), "ü\r\n\r\n");
    EXPECT_EQ(objFolder.sListing(), "a.txt");
}

TEST(TextWriter, LeavesTheOldFileAloneUntilItCommits)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.txt", "old");
    {
        const auto pWriter = PosixFileSystem().OpenForOutput(sFile);
        pWriter->WriteLine(std::string(1'000'000, 'x'));
        EXPECT_EQ(sContentOf(sFile), "old");
        EXPECT_EQ(objFolder.sListing(), "a.txt");
    }
    EXPECT_EQ(sContentOf(sFile), "old");
    EXPECT_EQ(objFolder.sListing(), "a.txt");
}

TEST(TextWriter, KeepsTheModeOfTheFileThatItReplaces)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.txt", "old");
    chmod(sFile.c_str(), 0640);
    const auto pWriter = PosixFileSystem().OpenForOutput(sFile);
    pWriter->Commit();

    struct stat objStat {
    };
    stat(sFile.c_str(), &objStat);
    EXPECT_EQ(objStat.st_mode & 07777, 0640u);
    EXPECT_EQ(sContentOf(sFile), "");
}

TEST(TextWriter, ReplacesWhatALinkPointsTo)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("real/a.txt", "old");
    std::filesystem::create_symlink(sFile, objFolder.sFile("link.txt"));
    const auto pWriter = PosixFileSystem().OpenForOutput(objFolder.sFile("link.txt"));
    pWriter->WriteLine("new");
    pWriter->Commit();

    EXPECT_TRUE(std::filesystem::is_symlink(objFolder.sFile("link.txt")));
    EXPECT_EQ(sContentOf(sFile), "new\r\n");
}

TEST(TextWriter, RaisesPathFileAccessWhereNoFileCanBe)
{
    const HostFolder objFolder;
    const std::string sProtected = objFolder.sFile("protected.txt", "old");
    chmod(sProtected.c_str(), 0444);
    for (const std::string& sPath :
         {objFolder.sPath(), objFolder.sFile("missing/a.txt"), objFolder.sFile("*.txt"),
          objFolder.sFile("a/"), sProtected, "/dev/null"s, ""s, "Q:\\a.txt"s}) {
        try {
            (void)PosixFileSystem().OpenForOutput(sPath);
            FAIL() << sPath;
        } catch (const clsRaisedError& objError) {
            EXPECT_EQ(objError.lNumber(), kErrPathFileAccess) << sPath;
        }
    }
    EXPECT_EQ(sContentOf(sProtected), "old");
}

TEST(TextWriter, RaisesPathFileAccessForAFileThatOnlyAnotherUserMayWriteTo)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs another user's file";
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.txt", "old");
    chmod(sFile.c_str(), 0644);

    EXPECT_TRUE(bAsOrdinaryUser([&] {
        try {
            (void)PosixFileSystem().OpenForOutput(sFile);
            return false;
        } catch (const clsRaisedError&) {
            return true;
        }
    }));
}

TEST(TextWriter, RaisesPathFileAccessInAFolderThatMayNotBeWrittenTo)
{
    const HostFolder objFolder;
    chmod(objFolder.sPath().c_str(), 0555);

    const bool bRaised = bAsOrdinaryUser([&] {
        try {
            (void)PosixFileSystem().OpenForOutput(objFolder.sFile("a.txt"));
            return false;
        } catch (const clsRaisedError& objError) {
            return objError.lNumber() == kErrPathFileAccess &&
                   objError.sDescription().find("Permission denied") != std::string::npos;
        }
    });

    EXPECT_TRUE(bRaised);
    chmod(objFolder.sPath().c_str(), 0777);
}

TEST(TextWriter, RaisesAtCommitAndKeepsTheOldFileWhenTheDiskIsFull)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("a.txt", "old");
    {
        const auto pWriter = PosixFileSystem().OpenForOutput(sFile);
        const ScopedFileSizeLimit objLimit(100'000);
        for (int n = 0; n < 100'000; ++n)
            pWriter->WriteLine("many lines");
        try {
            pWriter->Commit();
            FAIL();
        } catch (const clsRaisedError& objError) {
            EXPECT_EQ(objError.lNumber(), kErrPathFileAccess);
        }
    }
    EXPECT_EQ(sContentOf(sFile), "old");
    EXPECT_EQ(objFolder.sListing(), "a.txt");
}
