// Tests of formatting the texts of a save as lines.
#include "src/platform/image/metadata/info_lines.h"

#include <gtest/gtest.h>

TEST(InfoLines, AreEmptyWithoutTexts)
{
    EXPECT_EQ(InfoLines({}), "");
}

TEST(InfoLines, NameEachText)
{
    ImageInfoTexts texts;
    texts.sDescription = "A river\nin spring";
    texts.sEquipmentModel = "X1";

    EXPECT_EQ(InfoLines(texts), "Description: A river\nin spring\nEquipment model: X1");
    texts = {"1", "2", "3", "4", "5", "6", "7"};
    EXPECT_EQ(
        InfoLines(texts),
        "Title: 1\nDescription: 2\nDate: 3\nAuthor: 4\nCopyright: 5\nEquipment type: 6\nEquipment model: 7");
}
