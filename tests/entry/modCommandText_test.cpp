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

TEST(CommandText, ProtectsEverySlashOfAValueAfterItsSwitch)
{
    EXPECT_EQ(sReadable({"/6", "Title /J \\tmp\\evil.vjb"}), "/6 Title |J \\tmp\\evil.vjb");
    EXPECT_EQ(sReadable({"/5", "a title / with a slash", "/R"}), "/5 a title | with a slash /R");
    EXPECT_EQ(sReadable({"/1", "1/2", "/F2"}), "/1 1|2 /F2");
    EXPECT_EQ(sReadable({"/a", "/home", "/i", "/x/y", "/P", "/36", "/C", "1/J"}),
              "/a |home /i |x|y /P |36 /C 1|J");
}

TEST(CommandText, TakesAnArgumentThatIsASwitchForOne)
{
    EXPECT_EQ(sReadable({"/6", "/R", "/S", "/T", "/x"}), "/6 /R /S /T |x");
    EXPECT_EQ(sReadable({"/T", "/?"}), "/T /?");
    EXPECT_EQ(sReadable({"/T", "/x"}), "/T |x");
}

TEST(CommandText, EndsAPathBeforeTheNextSwitchInItsArgument)
{
    EXPECT_EQ(sReadable({"/S/home/me/a.bmp /R", "/V"}), "/S|home|me|a.bmp /R /V");
    EXPECT_EQ(sReadable({"/S /home/my pictures/a.bmp /T/b.png", "/V"}),
              "/S |home|my pictures|a.bmp /T/b.png /V");
    EXPECT_EQ(sReadable({"/S/my pictures /xyz/a.bmp", "/V"}), "/S|my pictures |xyz|a.bmp /V");
    EXPECT_EQ(sReadable({"/T /R", "/V"}), "/T /R /V");
    EXPECT_EQ(sReadable({"/S ", "/V"}), "/S  /V");
}

TEST(CommandText, LeavesSlashesInOtherArgumentsAlone)
{
    EXPECT_EQ(sReadable({"/V", "/home/a"}), "/V /home/a");
    EXPECT_EQ(sReadable({"/s", "/home/a"}), "/s /home/a");
    EXPECT_EQ(sReadable({"/6Title /J x", "/V"}), "/6Title /J x /V");
}

TEST(CommandText, LeavesASingleArgumentUnchangedButForThePathItBeginsWith)
{
    EXPECT_EQ(sReadable({"/S c:\\my pictures\\a.bmp /T c:\\out\\a.png"}),
              "/S c:\\my pictures\\a.bmp /T c:\\out\\a.png");
    EXPECT_EQ(sReadable({"/S /home/a.bmp"}), "/S /home/a.bmp");
    EXPECT_EQ(sReadable({"/J/home/me/j.vjb"}), "/J|home|me|j.vjb");
    EXPECT_EQ(sReadable({"/J/home/me/j.vjb /L/x/y /R"}), "/J|home|me|j.vjb /L/x/y /R");
    EXPECT_EQ(sReadable({"/"}), "/");
    EXPECT_EQ(sReadable({""}), "");
}
