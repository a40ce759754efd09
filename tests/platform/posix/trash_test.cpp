// The trash on disk.
#include "src/platform/posix/trash.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

/// A folder with a file in it, and a home.
class TrashTest : public testing::Test
{
protected:
    TrashTest() : root_(fs::path(testing::TempDir()) / "varnel-trash-XXXXXX")
    {
        std::string pattern = root_.string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        root_ = fs::canonical(pattern);
    }
    ~TrashTest() override
    {
        for (const std::string& mount : mounts_)
            umount2(mount.c_str(), MNT_DETACH);
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }

    std::string Write(const std::string& name, const std::string& content = "a picture")
    {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << content;
        return (root_ / name).string();
    }
    std::string Read(const std::string& name) const
    {
        std::ifstream file(root_ / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool Has(const std::string& name) const { return fs::exists(fs::symlink_status(root_ / name)); }
    std::string Path(const std::string& name) const { return (root_ / name).string(); }
    /// Mounts an empty file system; false if this user may not.
    bool Mount(const std::string& name)
    {
        fs::create_directories(root_ / name);
        if (mount("tmpfs", Path(name).c_str(), "tmpfs", 0, "size=1m") != 0)
            return false;
        mounts_.push_back(Path(name));
        return true;
    }
    static std::string User() { return std::to_string(geteuid()); }

    fs::path root_;
    std::vector<std::string> mounts_;
};

}  // namespace

TEST_F(TrashTest, TakesAFileToTheHomeTrashWithANote)
{
    const std::string file = Write("in/my picture\xC3\xA9.bmp");

    EXPECT_TRUE(Trash(Path("home/.local/share/Trash")).Take(file));

    EXPECT_FALSE(Has("in/my picture\xC3\xA9.bmp"));
    EXPECT_EQ(Read("home/.local/share/Trash/files/my picture\xC3\xA9.bmp"), "a picture");
    const std::string note = Read("home/.local/share/Trash/info/my picture\xC3\xA9.bmp.trashinfo");
    const std::regex form(
        "\\[Trash Info\\]\nPath=(.*)\nDeletionDate=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\n");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(note, parts, form)) << note;
    EXPECT_EQ(parts[1].str(), Path("in") + "/my%20picture%C3%A9.bmp");
}

TEST_F(TrashTest, KeepsItsFoldersPrivate)
{
    ASSERT_TRUE(Trash(Path("home/Trash")).Take(Write("in/a.bmp")));

    EXPECT_EQ(fs::status(root_ / "home/Trash").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(root_ / "home/Trash/files").permissions(), fs::perms::owner_all);
}

TEST_F(TrashTest, NumbersFilesOfTheSameName)
{
    const Trash trash(Path("home/Trash"));
    for (const char* folder : {"a/", "b/", "c/"})
        EXPECT_TRUE(trash.Take(Write(std::string(folder) + "x.bmp", folder)));

    EXPECT_EQ(Read("home/Trash/files/x.bmp"), "a/");
    EXPECT_EQ(Read("home/Trash/files/x.bmp.2"), "b/");
    EXPECT_EQ(Read("home/Trash/files/x.bmp.3"), "c/");
    EXPECT_TRUE(Has("home/Trash/info/x.bmp.3.trashinfo"));
}

TEST_F(TrashTest, NeverReplacesAFileWithoutANote)
{
    Write("home/Trash/files/x.bmp", "someone's");
    fs::permissions(root_ / "home/Trash", fs::perms::owner_all);

    EXPECT_TRUE(Trash(Path("home/Trash")).Take(Write("in/x.bmp", "new")));

    EXPECT_EQ(Read("home/Trash/files/x.bmp"), "someone's");
    EXPECT_EQ(Read("home/Trash/files/x.bmp.2"), "new");
    EXPECT_FALSE(Has("home/Trash/info/x.bmp.trashinfo"));
}

TEST_F(TrashTest, TakesNamesOfTheGreatestLength)
{
    const std::string name(255, 'n');

    EXPECT_TRUE(Trash(Path("home/Trash")).Take(Write("in/" + name)));

    EXPECT_FALSE(Has("in/" + name));
    EXPECT_EQ(std::distance(fs::directory_iterator(root_ / "home/Trash/files"), {}), 1);
}

TEST_F(TrashTest, TakesALinkAndLeavesItsFile)
{
    Write("elsewhere/a.bmp");
    fs::create_directories(root_ / "in");
    fs::create_symlink(root_ / "elsewhere/a.bmp", root_ / "in/a.bmp");

    EXPECT_TRUE(Trash(Path("home/Trash")).Take(Path("in/a.bmp")));

    EXPECT_FALSE(Has("in/a.bmp"));
    EXPECT_TRUE(Has("elsewhere/a.bmp"));
    EXPECT_TRUE(fs::is_symlink(root_ / "home/Trash/files/a.bmp"));
}

TEST_F(TrashTest, TakesAFileOfAnotherMountToTheTopOfThatMount)
{
    if (!Mount("disk"))
        GTEST_SKIP() << "may not mount";
    const std::string file = Write("disk/in/deep/a b.bmp");

    EXPECT_TRUE(Trash(Path("home/Trash")).Take(file));

    EXPECT_EQ(Read("disk/.Trash-" + User() + "/files/a b.bmp"), "a picture");
    const std::string note = Read("disk/.Trash-" + User() + "/info/a b.bmp.trashinfo");
    EXPECT_NE(note.find("Path=in/deep/a%20b.bmp\n"), std::string::npos) << note;
    EXPECT_FALSE(Has("home/Trash/files/a b.bmp"));
}

TEST_F(TrashTest, PrefersASharedTrashWithAStickyBit)
{
    if (!Mount("disk"))
        GTEST_SKIP() << "may not mount";
    fs::create_directories(root_ / "disk/.Trash");
    chmod(Path("disk/.Trash").c_str(), 01777);

    EXPECT_TRUE(Trash(Path("home/Trash")).Take(Write("disk/a.bmp")));

    EXPECT_TRUE(Has("disk/.Trash/" + User() + "/files/a.bmp"));
}

TEST_F(TrashTest, AvoidsASharedTrashThatIsNotSafe)
{
    if (!Mount("disk"))
        GTEST_SKIP() << "may not mount";
    fs::create_directories(root_ / "disk/.Trash");
    chmod(Path("disk/.Trash").c_str(), 0777);
    EXPECT_TRUE(Trash("").Take(Write("disk/a.bmp")));
    EXPECT_TRUE(Has("disk/.Trash-" + User() + "/files/a.bmp"));
    EXPECT_TRUE(fs::is_empty(root_ / "disk/.Trash"));

    fs::remove(root_ / "disk/.Trash");
    fs::create_directories(root_ / "disk/other");
    chmod(Path("disk/other").c_str(), 01777);
    fs::create_symlink("other", root_ / "disk/.Trash");
    EXPECT_TRUE(Trash("").Take(Write("disk/b.bmp")));
    EXPECT_TRUE(Has("disk/.Trash-" + User() + "/files/b.bmp"));
    EXPECT_TRUE(fs::is_empty(root_ / "disk/other"));
}

TEST_F(TrashTest, LeavesAFileThatNoTrashCanTake)
{
    if (!Mount("disk"))
        GTEST_SKIP() << "may not mount";
    fs::create_directories(root_ / "disk/elsewhere");
    fs::create_symlink("elsewhere", root_ / ("disk/.Trash-" + User()));
    const std::string file = Write("disk/a.bmp");

    EXPECT_FALSE(Trash("").Take(file));
    EXPECT_FALSE(Trash(Path("home/Trash")).Take(file));

    EXPECT_EQ(Read("disk/a.bmp"), "a picture");
    EXPECT_TRUE(fs::is_empty(root_ / "disk/elsewhere"));
}

TEST_F(TrashTest, LeavesNoNoteIfTheMoveFails)
{
    EXPECT_FALSE(Trash(Path("home/Trash")).Take(Path("in/missing.bmp")));
    fs::create_directories(root_ / "in");

    EXPECT_FALSE(Trash(Path("home/Trash")).Take(Path("in/missing.bmp")));

    EXPECT_TRUE(fs::is_empty(root_ / "home/Trash/info"));
}
