// Joining arguments into the command text.
#include "src/entry/modCommandText.h"

#include <gtest/gtest.h>

namespace
{

std::string sReadable(const std::vector<std::string>& aArguments)
{
    std::string sText = sCommandText(aArguments);
    for (char& c : sText)
        if (c == kSlashOfPath)
            c = '|';
    return sText;
}

}  // namespace

TEST(CommandText, JoinsArgumentsWithSpaces)
{
    EXPECT_EQ(sReadable({"/S", "c:\\a.bmp", "/T", "c:\\b.png"}), "/S c:\\a.bmp /T c:\\b.png");
    EXPECT_EQ(sReadable({}), "");
}

TEST(CommandText, ProtectsSlashesOfPathsAfterTheirSwitch)
{
    EXPECT_EQ(sReadable({"/S", "/home/me/a.bmp", "/T", "out/a.png", "/R"}),
              "/S |home|me|a.bmp /T out|a.png /R");
    EXPECT_EQ(sReadable({"/L", "/x/l.txt", "/B", "/x/b.vjb", "/J", "/x/j.vjb"}),
              "/L |x|l.txt /B |x|b.vjb /J |x|j.vjb");
}

TEST(CommandText, ProtectsSlashesOfPathsJoinedToTheirSwitch)
{
    EXPECT_EQ(sReadable({"/S/home/me/a.bmp", "/T /out/a.png"}), "/S|home|me|a.bmp /T |out|a.png");
}

TEST(CommandText, LeavesSlashesInOtherArgumentsAlone)
{
    EXPECT_EQ(sReadable({"/1", "1/2", "/F2"}), "/1 1/2 /F2");
    EXPECT_EQ(sReadable({"/s", "/home/a"}), "/s /home/a");
}

TEST(CommandText, LeavesASingleArgumentUnchanged)
{
    EXPECT_EQ(sReadable({"/S c:\\my pictures\\a.bmp /T c:\\out\\a.png"}),
              "/S c:\\my pictures\\a.bmp /T c:\\out\\a.png");
    EXPECT_EQ(sReadable({"/S /home/a.bmp"}), "/S /home/a.bmp");
}
