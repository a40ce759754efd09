// How a path of the user becomes a path of the host.
#include "src/platform/posix/host_path.h"

#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "src/base/text.h"
#include "tests/platform/posix/support/host_folder.h"

using namespace std::string_literals;

TEST(ExistingPath, IsFoundWithBothSeparators)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("pics/a.bmp", "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(sFile), sFile);
    EXPECT_EQ(objPaths.sExisting(sReplaceAll(sFile, "/", "\\")), sFile);
    EXPECT_EQ(objPaths.sExisting(objFolder.sPath() + "\\pics//.\\\\a.bmp"), sFile);
    EXPECT_EQ(objPaths.sExisting(objFolder.sPath() + "/pics/../pics/a.bmp"),
              objFolder.sPath() + "/pics/../pics/a.bmp");
}

TEST(ExistingPath, IsFoundInAnyCaseIfNotAsItStands)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("Pics/Ärger.BMP", "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("pics/ärger.bmp")), sFile);
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("PICS\\ÄRGER.bmp")), sFile);
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("pics")), objFolder.sFile("Pics"));
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("pics/b.bmp")), std::nullopt);
}

TEST(ExistingPath, PrefersTheExactNameAndThenTheFirstInOrder)
{
    const HostFolder objFolder;
    for (const char* sName : {"aBC", "ABc", "abc"})
        objFolder.sFile(sName, "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("abc")), objFolder.sFile("abc"));
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("ABC")), objFolder.sFile("ABc"));
}

TEST(ExistingPath, WithASeparatorAtItsEndIsAFolder)
{
    const HostFolder objFolder;
    objFolder.sFile("pics/a.bmp", "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("Pics\\")), objFolder.sFile("pics"));
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("pics/a.bmp/")), std::nullopt);
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("pics/A.bmp/")), std::nullopt);
}

TEST(ExistingPath, MapsADriveFromTheEnvironmentOrTheLookup)
{
    const HostFolder objFolder;
    const std::string sFile = objFolder.sFile("c/Pics/a.bmp", "");
    const std::string sOther = objFolder.sFile("d/b.bmp", "");
    const ScopedVariable objVariable("VARNEL_DRIVE_C", objFolder.sFile("c").c_str());
    const HostPaths objPaths([&](char cDrive) { return cDrive == 'D' ? objFolder.sFile("d/") : ""s; });

    EXPECT_EQ(objPaths.sExisting("C:\\pics\\A.BMP"), sFile);
    EXPECT_EQ(objPaths.sExisting("c:/Pics/a.bmp"), sFile);
    EXPECT_EQ(objPaths.sExisting("d:\\b.bmp"), sOther);
    EXPECT_EQ(objPaths.sExisting("D:b.bmp"), sOther);
    EXPECT_EQ(objPaths.sExisting("C:\\"), objFolder.sFile("c"));
    EXPECT_EQ(objPaths.sExisting("E:\\b.bmp"), std::nullopt);
    EXPECT_EQ(objPaths.sExisting("E:\\"), std::nullopt);
    EXPECT_EQ(objPaths.sToWrite("E:\\b.bmp"), std::nullopt);
}

TEST(ExistingPath, OfADriveWhoseFolderIsGoneDoesNotExist)
{
    const HostFolder objFolder;
    const HostPaths objPaths([&](char) { return objFolder.sFile("gone"); });

    EXPECT_EQ(objPaths.sExisting("C:\\"), std::nullopt);
    EXPECT_EQ(objPaths.sExisting("C:\\a.bmp"), std::nullopt);
    EXPECT_EQ(objPaths.sToWrite("C:\\a.bmp"), objFolder.sFile("gone/a.bmp"));
}

TEST(ExistingPath, IsRelativeToTheWorkingFolder)
{
    const HostFolder objFolder;
    objFolder.sFile("Sub/a.bmp", "");
    const std::filesystem::path objOld = std::filesystem::current_path();
    std::filesystem::current_path(objFolder.sPath());
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting("Sub/a.bmp"), "Sub/a.bmp");
    EXPECT_EQ(objPaths.sExisting("sub\\A.bmp"), "Sub/a.bmp");
    EXPECT_EQ(objPaths.sExisting("."), ".");
    EXPECT_EQ(objPaths.sExisting(".\\"), ".");
    EXPECT_EQ(objPaths.sToWrite("new.bmp"), "new.bmp");

    std::filesystem::current_path(objOld);
}

TEST(ExistingPath, IsNothingForNoPathAndForANul)
{
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(""), std::nullopt);
    EXPECT_EQ(objPaths.sExisting("/\0"s), std::nullopt);
    EXPECT_EQ(objPaths.sToWrite("/tmp/a\0b"s), std::nullopt);
    EXPECT_EQ(objPaths.sExisting("\\"), "/");
}

TEST(PathToWrite, MakesExactlyItsNameIfItHasOnlyForwardSlashes)
{
    const HostFolder objFolder;
    objFolder.sFile("Out/Photo.png", "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("out/photo.PNG")), objFolder.sFile("Out/photo.PNG"));
    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("Out/Photo.png")), objFolder.sFile("Out/Photo.png"));
}

TEST(PathToWrite, TakesOverTheCaseOfAFileThatIsThereIfItHasABackslashOrADrive)
{
    const HostFolder objFolder;
    objFolder.sFile("Out/Photo.png", "");
    const HostPaths objPaths([&](char) { return objFolder.sPath(); });

    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("out\\photo.PNG")), objFolder.sFile("Out/Photo.png"));
    EXPECT_EQ(objPaths.sToWrite("c:/out/photo.PNG"), objFolder.sFile("Out/Photo.png"));
    EXPECT_EQ(objPaths.sToWrite("c:\\OUT\\New.png"), objFolder.sFile("Out/New.png"));
}

TEST(PathToWrite, KeepsTheNamesOfFoldersThatAreMissing)
{
    const HostFolder objFolder;
    objFolder.sSubfolder("Out");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("out\\New\\Deep\\a.png")),
              objFolder.sFile("Out/New/Deep/a.png"));
    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("out\\New\\")), objFolder.sFile("Out/New"));
}

TEST(PathToWrite, IsNothingForWhatIsNoName)
{
    const HostPaths objPaths([](char) { return "/tmp"s; });

    for (const char* sPath :
         {"", "/", "\\", "c:", "c:\\", "/tmp/..", "/tmp/a*.png", "/tmp/a?.png", "c:\\*.png"})
        EXPECT_EQ(objPaths.sToWrite(sPath), std::nullopt) << sPath;
    EXPECT_NE(objPaths.sToWrite("/tmp/*/a.png"), std::nullopt);
}

TEST(PathToWrite, FindsWhatItNamedItselfInALargeFolder)
{
    const HostFolder objFolder;
    for (int n = 0; n < 1500; ++n)
        objFolder.sFile("big/File" + std::to_string(n), "");
    const HostPaths objPaths;

    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("big/FILE7")), objFolder.sFile("big/File7"));
    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("big\\New.png")), objFolder.sFile("big/New.png"));
    objFolder.sFile("big/New.png", "");
    EXPECT_EQ(objPaths.sToWrite(objFolder.sFile("big\\NEW.PNG")), objFolder.sFile("big/New.png"));
    std::filesystem::remove(objFolder.sFile("big/File7"));
    EXPECT_EQ(objPaths.sExisting(objFolder.sFile("big/FILE7")), std::nullopt);
}

RC_GTEST_PROP(PathToWrite, NamesOnlyWhatExistsOrAName, (const std::string& sPath))
{
    const HostPaths objPaths([](char) { return "/nowhere"s; });
    objPaths.sExisting(sPath);
    const auto sHostPath = objPaths.sToWrite(sPath);

    if (sHostPath) {
        RC_ASSERT(!sHostPath->empty() && !sHostPath->ends_with('/'));
    }
}

TEST(PathToWrite, TakesAPathOfAnyLengthInAMoment)
{
    const HostPaths objPaths;
    std::string sPath;
    for (int n = 0; n < 500'000; ++n)
        sPath += "a\\";
    sPath += "b";

    EXPECT_EQ(objPaths.sExisting(sPath), std::nullopt);
    ASSERT_TRUE(objPaths.sToWrite(sPath));
    EXPECT_EQ(objPaths.sToWrite(sPath)->size(), sPath.size());
}
