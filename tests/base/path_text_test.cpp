// Path strings in both styles.
#include "src/base/path_text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <vector>

TEST(SeparatorOf, ReturnsTheLastSeparatorOfThePath)
{
    EXPECT_EQ(cSeparatorOf("C:\\a\\b"), '\\');
    EXPECT_EQ(cSeparatorOf("/a/b"), '/');
    EXPECT_EQ(cSeparatorOf("C:\\a/b"), '/');
    EXPECT_EQ(cSeparatorOf("name"), '/');
    EXPECT_EQ(cSeparatorOf(""), '/');
}

TEST(FolderOfPath, IncludesTheLastSeparator)
{
    EXPECT_EQ(sFolderOfPath("C:\\a\\b.jpg"), "C:\\a\\");
    EXPECT_EQ(sFolderOfPath("/a/b.jpg"), "/a/");
    EXPECT_EQ(sFolderOfPath("/a/"), "/a/");
    EXPECT_EQ(sFolderOfPath("b.jpg"), "");
}

TEST(ExtensionOfPath, ReturnsTextAfterTheLastPointAnywhere)
{
    EXPECT_EQ(sExtensionOfPath("C:\\a.b\\c.JPG "), "JPG");
    EXPECT_EQ(sExtensionOfPath("/my.pics/readme"), "pics/readme");
    EXPECT_EQ(sExtensionOfPath("a."), "");
    EXPECT_EQ(sExtensionOfPath("a"), "");
}

TEST(GetParentFolderName, DropsTheSeparatorUnlessItIsARoot)
{
    const std::vector<std::array<const char*, 2>> aCases{{"C:\\a\\b.jpg", "C:\\a"},
                                                         {"C:\\a.jpg", "C:\\"},
                                                         {"C:\\", ""},
                                                         {"C:", ""},
                                                         {"C:a", "C:"},
                                                         {"\\a", "\\"},
                                                         {"/a/b/c", "/a/b"},
                                                         {"/a", "/"},
                                                         {"/", ""},
                                                         {"", ""},
                                                         {"a", ""},
                                                         {"a/b", "a"},
                                                         {"/a/b/", "/a"},
                                                         {"C:\\a\\", "C:\\"},
                                                         {"/a//b", "/a"},
                                                         {"C:\\\\a", "C:\\"},
                                                         {"//a", "/"},
                                                         {"C:\\*.bmp", "C:\\"},
                                                         {"/p/*.bmp", "/p"}};
    for (const auto& [sPath, sParent] : aCases)
        EXPECT_EQ(sGetParentFolderName(sPath), sParent) << sPath;
}

TEST(GetParentFolderName, ShortensAnyPathUntilItIsEmpty)
{
    const auto objPaths = rc::gen::container<std::string>(rc::gen::elementOf(std::string("\\/:.aC")));
    EXPECT_TRUE(rc::check([&] {
        std::string sPath = *objPaths;
        for (std::size_t nSize = sPath.size(); !sPath.empty(); nSize = sPath.size()) {
            sPath = sGetParentFolderName(sPath);
            RC_ASSERT(sPath.size() < nSize);
        }
    }));
}

TEST(GetBaseName, DropsOnlyTheLastExtension)
{
    EXPECT_EQ(sGetBaseName("C:\\a.b\\c.d.jpg"), "c.d");
    EXPECT_EQ(sGetExtensionName("C:\\a.b\\c.d.jpg"), "jpg");
    EXPECT_EQ(sGetBaseName("/my.pics/readme"), "readme");
    EXPECT_EQ(sGetExtensionName("/my.pics/readme"), "");
    EXPECT_EQ(sGetBaseName("/p/.bmp"), "");
    EXPECT_EQ(sGetExtensionName("/p/.bmp"), "bmp");
    EXPECT_EQ(sGetBaseName("a."), "a");
    EXPECT_EQ(sGetExtensionName("a."), "");
    EXPECT_EQ(sGetBaseName("/p/a.b/"), "a");
    EXPECT_EQ(sGetBaseName("C:\\"), "");
    EXPECT_EQ(sGetBaseName(""), "");
}

TEST(WithSeparator, AddsOneSeparatorInThePathsStyle)
{
    EXPECT_EQ(sWithSeparator("C:\\a"), "C:\\a\\");
    EXPECT_EQ(sWithSeparator("/a/b"), "/a/b/");
    EXPECT_EQ(sWithSeparator("C:\\a\\"), "C:\\a\\");
    EXPECT_EQ(sWithSeparator("/a/"), "/a/");
    EXPECT_EQ(sWithSeparator("C:\\"), "C:\\");
    EXPECT_EQ(sWithSeparator("/"), "/");
    EXPECT_EQ(sWithSeparator("\\"), "\\");
    EXPECT_EQ(sWithSeparator("C:\\\\a"), "C:\\a\\");
    EXPECT_EQ(sWithSeparator(""), "/");
    EXPECT_EQ(sWithSeparator("name"), "name/");
}

TEST(WithoutTrailingSeparators, KeepsTheSeparatorOfARoot)
{
    EXPECT_EQ(sWithoutTrailingSeparators("C:\\a\\\\"), "C:\\a");
    EXPECT_EQ(sWithoutTrailingSeparators("/a/"), "/a");
    EXPECT_EQ(sWithoutTrailingSeparators("C:\\"), "C:\\");
    EXPECT_EQ(sWithoutTrailingSeparators("//"), "/");
    EXPECT_EQ(sWithoutTrailingSeparators(""), "");
}

TEST(EndsInSeparator, AcceptsBothSeparators)
{
    EXPECT_TRUE(bEndsInSeparator("a\\"));
    EXPECT_TRUE(bEndsInSeparator("a/"));
    EXPECT_FALSE(bEndsInSeparator("a/b"));
    EXPECT_FALSE(bEndsInSeparator(""));
}

TEST(PathParts, JoinBackIntoThePath)
{
    const auto objNames =
        rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::elementOf(std::string("ab c.é"))));
    EXPECT_TRUE(rc::check([&] {
        const std::string sName = *objNames;
        const std::string sFolder = *rc::gen::element<std::string>("C:\\pics", "/home/me", "/", "C:\\");
        const std::string sPath = sWithSeparator(sFolder) + sName;
        const bool bPoint = sName.find('.') != std::string::npos;
        RC_ASSERT(sGetParentFolderName(sPath) == sFolder);
        RC_ASSERT(sGetBaseName(sPath) + (bPoint ? "." : "") + sGetExtensionName(sPath) == sName);
    }));
}
