// Tests of the texts of a save as lines.
#include "src/platform/image/metadata/info_lines.h"

#include <gtest/gtest.h>

TEST(InfoLines, AreEmptyWithoutTexts)
{
    EXPECT_EQ(sInfoLines({}), "");
}

TEST(InfoLines, NameEachTextThatIsThere)
{
    ImageInfoTexts objTexts;
    objTexts.sDescription = "A river\nin spring";
    objTexts.sEquipmentModel = "X1";

    EXPECT_EQ(sInfoLines(objTexts), "Description: A river\nin spring\nEquipment model: X1");
    objTexts = {"1", "2", "3", "4", "5", "6", "7"};
    EXPECT_EQ(
        sInfoLines(objTexts),
        "Title: 1\nDescription: 2\nDate: 3\nAuthor: 4\nCopyright: 5\nEquipment type: 6\nEquipment model: 7");
}
