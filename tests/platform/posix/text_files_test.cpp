// Tests of reading and writing lines of host files.
#include "src/platform/posix/text_files.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "src/base/raised_error.h"
#include "src/platform/posix/posix_file_system.h"
#include "tests/platform/posix/support/host_folder.h"
#include "tests/platform/posix/support/host_services.h"

using namespace std::string_literals;
using Lines = std::vector<std::string>;

// Outlives the writers that it opens.
static PosixFileSystem& Files()
{
    static HostFileSystem files;
    return files;
}

static Lines LinesOf(const std::string& path)
{
    const auto reader = Files().OpenForInput(path);
    Lines lines;
    std::string line;
    while (reader->ReadLine(line))
        lines.push_back(line);
    return lines;
}

static Lines LinesOfBytes(const std::string& bytes)
{
    const HostFolder folder;
    return LinesOf(folder.File("a.txt", bytes));
}

TEST(TextReader, AcceptsBothLineEndsAndUnterminatedLastLine)
{
    EXPECT_EQ(LinesOfBytes("one\r\ntwo\nthree"), (Lines{"one", "two", "three"}));
    EXPECT_EQ(LinesOfBytes("one\n"), (Lines{"one"}));
    EXPECT_EQ(LinesOfBytes("\r\n\n"), (Lines{"", ""}));
    EXPECT_EQ(LinesOfBytes(""), Lines{});
}

TEST(TextReader, DropsUtf8ByteOrderMark)
{
    EXPECT_EQ(LinesOfBytes("\xEF\xBB\xBF"
                           "ü\n"),
              (Lines{"ü"}));
    EXPECT_EQ(LinesOfBytes("\xEF\xBB\xBF"), Lines{});
}

TEST(TextReader, ReadsWholeFileAsWindows1252IfNotUtf8)
{
    EXPECT_EQ(LinesOfBytes("ü\ncaf\xE9\n"), (Lines{"Ã¼", "café"}));
    EXPECT_EQ(LinesOfBytes("cut \xC3"), (Lines{"cut Ã"}));
}

TEST(TextReader, KeepsCharactersWholeAcrossBlocks)
{
    std::string text;
    for (int n = 0; n < 200'000; ++n)
        text += n % 3 == 0 ? "ü" : n % 3 == 1 ? "€" : "😀";
    for (int shift = 0; shift < 4; ++shift) {
        const std::string shifted = std::string(static_cast<std::size_t>(shift), 'x') + text;
        EXPECT_EQ(LinesOfBytes(shifted), Lines{shifted}) << shift;
    }
}

TEST(TextReader, KeepsNulsAndLoneCarriageReturns)
{
    EXPECT_EQ(LinesOfBytes("a\0b\rc\n"s), (Lines{"a\0b\rc"s}));
}

TEST(TextReader, ReadsLinesLongerThanItsBlocks)
{
    const std::string long_line(3'000'000, 'x');

    EXPECT_EQ(LinesOfBytes(long_line + "\n" + long_line + "\r\nshort"),
              (Lines{long_line, long_line, "short"}));
}

TEST(TextReader, ReadsManyLines)
{
    std::string text;
    for (int n = 0; n < 100'000; ++n)
        text += " M\t1^0^FALSE\t" + std::to_string(n) + "\tC\tC:\\pics\\a.bmp\r\n";

    const Lines lines = LinesOfBytes(text);

    ASSERT_EQ(lines.size(), 100'000u);
    EXPECT_EQ(lines.back(), " M\t1^0^FALSE\t99999\tC\tC:\\pics\\a.bmp");
}

TEST(TextReader, RaisesFileNotFoundForMissingFile)
{
    try {
        LinesOf("/nowhere/a.txt");
        FAIL();
    } catch (const clsRaisedError& error) {
        EXPECT_EQ(error.lNumber(), kErrFileNotFound);
        EXPECT_EQ(error.sDescription(), "File not found: /nowhere/a.txt");
    }
}

TEST(TextReader, RaisesPathFileAccessForFolderAndPipe)
{
    const HostFolder folder;
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0666), 0);

    for (const std::string& path : {folder.Path(), folder.File("pipe")}) {
        try {
            LinesOf(path);
            FAIL();
        } catch (const clsRaisedError& error) {
            EXPECT_EQ(error.lNumber(), kErrPathFileAccess);
            EXPECT_NE(error.sDescription().find("Path/File access error: " + path), std::string::npos);
        }
    }
}

RC_GTEST_PROP(TextReader, GivesBackTheLinesThatWereWritten, (const std::vector<std::string>& any))
{
    const HostFolder folder;
    Lines lines;
    for (std::string line : any) {
        std::erase_if(line, [](char c) { return c == '\n' || c == '\r' || (c & 0x80) != 0; });
        lines.push_back(line);
    }
    const auto writer = Files().OpenForOutput(folder.File("a.txt"));
    for (const std::string& line : lines)
        writer->WriteLine(line);
    writer->Commit();

    RC_ASSERT(LinesOf(folder.File("a.txt")) == lines);
}

TEST(TextWriter, EndsLinesWithCrLf)
{
    const HostFolder folder;
    const auto writer = Files().OpenForOutput(folder.File("a.txt"));
    writer->WriteLine("ü");
    writer->WriteLine("");
    writer->Commit();

    EXPECT_EQ(ContentOf(folder.File("a.txt")), "ü\r\n\r\n");
    EXPECT_EQ(folder.Listing(), "a.txt");
}

TEST(TextWriter, KeepsOldFileUntilCommit)
{
    const HostFolder folder;
    const std::string file = folder.File("a.txt", "old");
    {
        const auto writer = Files().OpenForOutput(file);
        writer->WriteLine(std::string(1'000'000, 'x'));
        EXPECT_EQ(ContentOf(file), "old");
        EXPECT_EQ(folder.Listing(), "a.txt");
    }
    EXPECT_EQ(ContentOf(file), "old");
    EXPECT_EQ(folder.Listing(), "a.txt");
}

TEST(TextWriter, KeepsModeOfReplacedFile)
{
    const HostFolder folder;
    const std::string file = folder.File("a.txt", "old");
    chmod(file.c_str(), 0640);
    const auto writer = Files().OpenForOutput(file);
    writer->Commit();

    struct stat status {
    };
    stat(file.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(ContentOf(file), "");
}

TEST(TextWriter, ReplacesTargetOfLink)
{
    const HostFolder folder;
    const std::string file = folder.File("real/a.txt", "old");
    std::filesystem::create_symlink(file, folder.File("link.txt"));
    const auto writer = Files().OpenForOutput(folder.File("link.txt"));
    writer->WriteLine("new");
    writer->Commit();

    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.txt")));
    EXPECT_EQ(ContentOf(file), "new\r\n");
}

TEST(TextWriter, RaisesPathFileAccessIfFileCannotExist)
{
    const HostFolder folder;
    const std::string read_only = folder.File("protected.txt", "old");
    chmod(read_only.c_str(), 0444);
    for (const std::string& path : {folder.Path(), folder.File("missing/a.txt"), folder.File("*.txt"),
                                    folder.File("a/"), read_only, "/dev/null"s, ""s, "Q:\\a.txt"s}) {
        try {
            (void)Files().OpenForOutput(path);
            FAIL() << path;
        } catch (const clsRaisedError& error) {
            EXPECT_EQ(error.lNumber(), kErrPathFileAccess) << path;
        }
    }
    EXPECT_EQ(ContentOf(read_only), "old");
}

TEST(TextWriter, RaisesPathFileAccessForFileOfAnotherUser)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs another user's file";
    const HostFolder folder;
    const std::string file = folder.File("a.txt", "old");
    chmod(file.c_str(), 0644);

    EXPECT_TRUE(RunAsOrdinaryUser([&] {
        try {
            (void)Files().OpenForOutput(file);
            return false;
        } catch (const clsRaisedError&) {
            return true;
        }
    }));
}

TEST(TextWriter, RaisesPathFileAccessInReadOnlyFolder)
{
    const HostFolder folder;
    chmod(folder.Path().c_str(), 0555);

    const bool raised = RunAsOrdinaryUser([&] {
        try {
            (void)Files().OpenForOutput(folder.File("a.txt"));
            return false;
        } catch (const clsRaisedError& error) {
            return error.lNumber() == kErrPathFileAccess &&
                   error.sDescription().find("Permission denied") != std::string::npos;
        }
    });

    EXPECT_TRUE(raised);
    chmod(folder.Path().c_str(), 0777);
}

TEST(TextWriter, RaisesOnCommitAndKeepsOldFileIfDiskIsFull)
{
    const HostFolder folder;
    const std::string file = folder.File("a.txt", "old");
    {
        const auto writer = Files().OpenForOutput(file);
        const ScopedFileSizeLimit limit(100'000);
        for (int n = 0; n < 100'000; ++n)
            writer->WriteLine("many lines");
        try {
            writer->Commit();
            FAIL();
        } catch (const clsRaisedError& error) {
            EXPECT_EQ(error.lNumber(), kErrPathFileAccess);
        }
    }
    EXPECT_EQ(ContentOf(file), "old");
    EXPECT_EQ(folder.Listing(), "a.txt");
}
