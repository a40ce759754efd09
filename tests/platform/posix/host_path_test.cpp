// Tests of mapping the user's paths to host paths.
#include "src/platform/posix/host_path.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "src/base/text.h"
#include "tests/platform/posix/support/host_folder.h"

using namespace std::string_literals;

TEST(ExistingPath, AcceptsBothSeparators)
{
    const HostFolder folder;
    const std::string file = folder.File("pics/a.bmp", "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(file), file);
    EXPECT_EQ(paths.Existing(sReplaceAll(file, "/", "\\")), file);
    EXPECT_EQ(paths.Existing(folder.Path() + "\\pics//.\\\\a.bmp"), file);
    EXPECT_EQ(paths.Existing(folder.Path() + "/pics/../pics/a.bmp"), folder.Path() + "/pics/../pics/a.bmp");
}

TEST(ExistingPath, FallsBackToCaseInsensitiveMatch)
{
    const HostFolder folder;
    const std::string file = folder.File("Pics/Ärger.BMP", "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(folder.File("pics/ärger.bmp")), file);
    EXPECT_EQ(paths.Existing(folder.File("PICS\\ÄRGER.bmp")), file);
    EXPECT_EQ(paths.Existing(folder.File("pics")), folder.File("Pics"));
    EXPECT_EQ(paths.Existing(folder.File("pics/b.bmp")), std::nullopt);
}

TEST(ExistingPath, IgnoresCaseOfAllScripts)
{
    const HostFolder folder;
    const std::string file = folder.File("Ձկն/Ạpple K.BMP", "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(folder.File("ՁԿՆ/ạPPLE \xE2\x84\xAA.bmp")), file);
}

TEST(ExistingPath, PrefersExactNameThenFirstInByteOrder)
{
    const HostFolder folder;
    for (const char* name : {"aBC", "ABc", "abc"})
        folder.File(name, "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(folder.File("abc")), folder.File("abc"));
    EXPECT_EQ(paths.Existing(folder.File("ABC")), folder.File("ABc"));
}

TEST(ExistingPath, MustBeFolderIfItEndsInSeparator)
{
    const HostFolder folder;
    folder.File("pics/a.bmp", "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(folder.File("Pics\\")), folder.File("pics"));
    EXPECT_EQ(paths.Existing(folder.File("pics/a.bmp/")), std::nullopt);
    EXPECT_EQ(paths.Existing(folder.File("pics/A.bmp/")), std::nullopt);
}

TEST(ExistingPath, MapsDriveFromEnvironmentOrLookup)
{
    const HostFolder folder;
    const std::string file = folder.File("c/Pics/a.bmp", "");
    const std::string other = folder.File("d/b.bmp", "");
    const ScopedVariable variable("VARNEL_DRIVE_C", folder.File("c").c_str());
    const HostPaths paths([&](char drive) { return drive == 'D' ? folder.File("d/") : ""s; });

    EXPECT_EQ(paths.Existing("C:\\pics\\A.BMP"), file);
    EXPECT_EQ(paths.Existing("c:/Pics/a.bmp"), file);
    EXPECT_EQ(paths.Existing("d:\\b.bmp"), other);
    EXPECT_EQ(paths.Existing("D:b.bmp"), other);
    EXPECT_EQ(paths.Existing("C:\\"), folder.File("c"));
    EXPECT_EQ(paths.Existing("E:\\b.bmp"), std::nullopt);
    EXPECT_EQ(paths.Existing("E:\\"), std::nullopt);
    EXPECT_EQ(paths.ToWrite("E:\\b.bmp"), std::nullopt);
}

TEST(ExistingPath, IsNothingIfDriveFolderIsMissing)
{
    const HostFolder folder;
    const HostPaths paths([&](char) { return folder.File("gone"); });

    EXPECT_EQ(paths.Existing("C:\\"), std::nullopt);
    EXPECT_EQ(paths.Existing("C:\\a.bmp"), std::nullopt);
    EXPECT_EQ(paths.ToWrite("C:\\a.bmp"), folder.File("gone/a.bmp"));
}

TEST(ExistingPath, IsRelativeToWorkingFolder)
{
    const HostFolder folder;
    folder.File("Sub/a.bmp", "");
    const std::filesystem::path old = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const HostPaths paths;

    EXPECT_EQ(paths.Existing("Sub/a.bmp"), "Sub/a.bmp");
    EXPECT_EQ(paths.Existing("sub\\A.bmp"), "Sub/a.bmp");
    EXPECT_EQ(paths.Existing("."), ".");
    EXPECT_EQ(paths.Existing(".\\"), ".");
    EXPECT_EQ(paths.ToWrite("new.bmp"), "new.bmp");

    std::filesystem::current_path(old);
}

TEST(ExistingPath, IsNothingForEmptyPathOrNul)
{
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(""), std::nullopt);
    EXPECT_EQ(paths.Existing("/\0"s), std::nullopt);
    EXPECT_EQ(paths.ToWrite("/tmp/a\0b"s), std::nullopt);
    EXPECT_EQ(paths.Existing("\\"), "/");
}

TEST(PathToWrite, KeepsExactNameIfItHasOnlySlashes)
{
    const HostFolder folder;
    folder.File("Out/Photo.png", "");
    const HostPaths paths;

    EXPECT_EQ(paths.ToWrite(folder.File("out/photo.PNG")), folder.File("Out/photo.PNG"));
    EXPECT_EQ(paths.ToWrite(folder.File("Out/Photo.png")), folder.File("Out/Photo.png"));
}

TEST(PathToWrite, AdoptsCaseOfExistingFileForBackslashOrDrive)
{
    const HostFolder folder;
    folder.File("Out/Photo.png", "");
    const HostPaths paths([&](char) { return folder.Path(); });

    EXPECT_EQ(paths.ToWrite(folder.File("out\\photo.PNG")), folder.File("Out/Photo.png"));
    EXPECT_EQ(paths.ToWrite("c:/out/photo.PNG"), folder.File("Out/Photo.png"));
    EXPECT_EQ(paths.ToWrite("c:\\OUT\\New.png"), folder.File("Out/New.png"));
}

TEST(PathToWrite, KeepsNamesOfMissingFolders)
{
    const HostFolder folder;
    folder.Subfolder("Out");
    const HostPaths paths;

    EXPECT_EQ(paths.ToWrite(folder.File("out\\New\\Deep\\a.png")), folder.File("Out/New/Deep/a.png"));
    EXPECT_EQ(paths.ToWrite(folder.File("out\\New\\")), folder.File("Out/New"));
}

TEST(PathToWrite, IsNothingForInvalidFileName)
{
    const HostPaths paths([](char) { return "/tmp"s; });

    for (const char* path :
         {"", "/", "\\", "c:", "c:\\", "/tmp/..", "/tmp/a*.png", "/tmp/a?.png", "c:\\*.png"})
        EXPECT_EQ(paths.ToWrite(path), std::nullopt) << path;
    EXPECT_NE(paths.ToWrite("/tmp/*/a.png"), std::nullopt);
}

TEST(PathToWrite, FindsItsOwnNewFilesInLargeFolder)
{
    const HostFolder folder;
    for (int n = 0; n < 1500; ++n)
        folder.File("big/File" + std::to_string(n), "");
    const HostPaths paths;

    EXPECT_EQ(paths.Existing(folder.File("big/FILE7")), folder.File("big/File7"));
    EXPECT_EQ(paths.ToWrite(folder.File("big\\New.png")), folder.File("big/New.png"));
    folder.File("big/New.png", "");
    EXPECT_EQ(paths.ToWrite(folder.File("big\\NEW.PNG")), folder.File("big/New.png"));
    std::filesystem::remove(folder.File("big/File7"));
    EXPECT_EQ(paths.Existing(folder.File("big/FILE7")), std::nullopt);
}

RC_GTEST_PROP(PathToWrite, NamesOnlyWhatExistsOrAName, (const std::string& path))
{
    const HostPaths paths([](char) { return "/nowhere"s; });
    paths.Existing(path);
    const auto host_path = paths.ToWrite(path);

    if (host_path) {
        RC_ASSERT(!host_path->empty() && !host_path->ends_with('/'));
    }
}

TEST(PathToWrite, ResolvesVeryLongPathsQuickly)
{
    const HostPaths paths;
    std::string path;
    for (int n = 0; n < 500'000; ++n)
        path += "a\\";
    path += "b";

    EXPECT_EQ(paths.Existing(path), std::nullopt);
    ASSERT_TRUE(paths.ToWrite(path));
    EXPECT_EQ(paths.ToWrite(path)->size(), path.size());
}
