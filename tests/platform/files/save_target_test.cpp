// Links at the target of a save and on the way to it.
#include "src/platform/files/save_target.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "tests/platform/files/support/save_folder.h"

using Names = std::vector<std::string>;

static const std::string kOld(50, 'o');
static const std::string kNew(20, 'n');
static constexpr uid_t kStranger = 12345;

static bool Save(const std::string& path)
{
    FileSaver saver;
    OutputFile out(path, saver);
    return out.WriteText(kNew) && out.Commit();
}

static void MakeLink(const std::string& to, const std::string& path)
{
    ASSERT_EQ(symlink(to.c_str(), path.c_str()), 0) << path;
}

static int Find(const std::string& path)
{
    SaveTarget target;
    return FindSaveTarget(path, target);
}

TEST(LinkOfTheUser, IsFollowedToTheFileThatIsReplaced)
{
    const SaveFolder folder;
    std::filesystem::create_directory(folder.Path("there"));
    WriteContent(folder.Path("there/a"), kOld);
    MakeLink("there/a", folder.Path("link"));

    EXPECT_TRUE(Save(folder.Path("link")));

    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(ContentOf(folder.Path("there/a")), kNew);
}

TEST(LinkOfTheUser, LeadsToAFileThatIsCreated)
{
    const SaveFolder folder;
    std::filesystem::create_directory(folder.Path("there"));
    MakeLink("there/second", folder.Path("link"));
    MakeLink(folder.Path("there/a"), folder.Path("there/second"));

    EXPECT_TRUE(Save(folder.Path("link")));

    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("there/second")));
    EXPECT_EQ(ContentOf(folder.Path("there/a")), kNew);
}

TEST(LinkOfTheUser, FailsIfItLeadsNowhere)
{
    const SaveFolder folder;
    MakeLink("one", folder.Path("two"));
    MakeLink("two", folder.Path("one"));
    MakeLink("nowhere/a", folder.Path("lost"));
    MakeLink("ring/", folder.Path("ring"));
    std::filesystem::create_directory(folder.Path("there"));
    MakeLink("there", folder.Path("folder"));

    EXPECT_EQ(Find(folder.Path("one")), ELOOP);
    EXPECT_EQ(Find(folder.Path("lost")), ENOENT);
    EXPECT_EQ(Find(folder.Path("ring/a")), ELOOP);
    for (const char* name : {"one", "lost", "ring/a", "ring", "folder"})
        EXPECT_FALSE(Save(folder.Path(name))) << name;
    EXPECT_EQ(folder.Names(), (Names{"folder", "lost", "one", "ring", "there", "two"}));
}

TEST(LinkOfTheUser, IsFollowedOnTheWay)
{
    const SaveFolder folder;
    std::filesystem::create_directories(folder.Path("real/deep"));
    std::filesystem::create_directory(folder.Path("other"));
    MakeLink("../real/deep", folder.Path("other/way"));
    MakeLink(folder.Path("other"), folder.Path("absolute"));

    EXPECT_TRUE(Save(folder.Path("absolute/way/a")));
    EXPECT_TRUE(Save(folder.Path("absolute/./way//../b")));

    EXPECT_EQ(ContentOf(folder.Path("real/deep/a")), kNew);
    EXPECT_EQ(ContentOf(folder.Path("real/b")), kNew);
}

TEST(LinkOfTheUser, IsFollowedOnARelativeWay)
{
    const SaveFolder folder;
    std::filesystem::create_directory(folder.Path("real"));
    MakeLink("real", folder.Path("way"));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const bool done = Save("way/a");
    std::filesystem::current_path(before);

    EXPECT_TRUE(done);
    EXPECT_EQ(ContentOf(folder.Path("real/a")), kNew);
}

TEST(LinkOfProc, IsLeftToTheKernelToFollow)
{
    const SaveFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const bool done = Save("/proc/self/cwd/a");
    std::filesystem::current_path(before);

    EXPECT_TRUE(done);
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}

TEST(LinkOfAStranger, InAFolderThatOthersMayWriteToIsNotFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    for (const mode_t mode : {01777u, 0777u, 0775u}) {
        const SaveFolder folder;
        ASSERT_EQ(chmod(folder.Path().c_str(), mode), 0);
        WriteContent(folder.Path("precious"), kOld);
        for (const std::string name : {"precious", "missing"}) {
            MakeLink(name, folder.Path("link to " + name));
            ASSERT_EQ(lchown(folder.Path("link to " + name).c_str(), kStranger, kStranger), 0);

            EXPECT_EQ(Find(folder.Path("link to " + name)), EACCES) << std::oct << mode;
            EXPECT_FALSE(Save(folder.Path("link to " + name)));
        }
        EXPECT_EQ(ContentOf(folder.Path("precious")), kOld);
        EXPECT_EQ(folder.Names(), (Names{"link to missing", "link to precious", "precious"}));
    }
}

TEST(LinkOfAStranger, InTheStrangersFolderIsNotFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    const SaveFolder folder;
    WriteContent(folder.Path("precious"), kOld);
    std::filesystem::create_directory(folder.Path("home"));
    MakeLink("../precious", folder.Path("home/link"));
    ASSERT_EQ(lchown(folder.Path("home/link").c_str(), kStranger, kStranger), 0);
    ASSERT_EQ(chown(folder.Path("home").c_str(), kStranger, kStranger), 0);

    EXPECT_FALSE(Save(folder.Path("home/link")));

    EXPECT_EQ(ContentOf(folder.Path("precious")), kOld);
}

TEST(LinkOfAStranger, BehindALinkOfTheUserIsNotFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    const SaveFolder folder;
    WriteContent(folder.Path("precious"), kOld);
    MakeLink("precious", folder.Path("planted"));
    ASSERT_EQ(lchown(folder.Path("planted").c_str(), kStranger, kStranger), 0);
    MakeLink("planted", folder.Path("link"));

    EXPECT_FALSE(Save(folder.Path("link")));

    EXPECT_EQ(ContentOf(folder.Path("precious")), kOld);
}

TEST(LinkOfAStranger, WhereNoOtherUserCanWriteIsFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    const SaveFolder folder;
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    WriteContent(folder.Path("a"), kOld);
    MakeLink("a", folder.Path("link"));
    ASSERT_EQ(lchown(folder.Path("link").c_str(), kStranger, kStranger), 0);

    EXPECT_TRUE(Save(folder.Path("link")));

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}

TEST(LinkOfAStranger, OnTheWayThroughAFolderThatOthersMayWriteToIsNotFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    const SaveFolder folder;
    std::filesystem::create_directory(folder.Path("home"));
    WriteContent(folder.Path("home/a"), kOld);
    MakeLink("home", folder.Path("planted"));
    ASSERT_EQ(lchown(folder.Path("planted").c_str(), kStranger, kStranger), 0);

    EXPECT_EQ(Find(folder.Path("planted/a")), EACCES);
    EXPECT_FALSE(Save(folder.Path("planted/a")));

    EXPECT_EQ(ContentOf(folder.Path("home/a")), kOld);
}

TEST(LinkOfAStranger, OnTheWayThroughTheStrangersOwnFolderIsFollowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a link away";
    const SaveFolder folder;
    std::filesystem::create_directories(folder.Path("home/real"));
    MakeLink("real", folder.Path("home/way"));
    ASSERT_EQ(lchown(folder.Path("home/way").c_str(), kStranger, kStranger), 0);
    ASSERT_EQ(chown(folder.Path("home").c_str(), kStranger, kStranger), 0);

    EXPECT_TRUE(Save(folder.Path("home/way/a")));

    EXPECT_EQ(ContentOf(folder.Path("home/real/a")), kNew);
}

TEST(SaveTarget, TellsWhetherThereIsAFileAndWhichItIs)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    SaveTarget there;
    SaveTarget missing;

    EXPECT_EQ(FindSaveTarget(folder.Path("a"), there), 0);
    EXPECT_EQ(FindSaveTarget(folder.Path("b"), missing), 0);

    EXPECT_TRUE(there.exists);
    EXPECT_EQ(there.status.st_size, 50);
    EXPECT_EQ(there.name, "a");
    EXPECT_FALSE(missing.exists);
    EXPECT_EQ(missing.name, "b");
    EXPECT_EQ(missing.folder_status.st_ino, there.folder_status.st_ino);
}
