// Choosing the kind of file dialog by its title.
#include "src/job/modPickFile.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(TitleSaves, IfItContainsTheWordSaveInAnyCase)
{
    TestApplication app;
    EXPECT_TRUE(bTitleSaves(app, "Save"));
    EXPECT_TRUE(bTitleSaves(app, "Where to SAVE it"));
    EXPECT_FALSE(bTitleSaves(app, "Open Conversion Job"));
}

TEST(TitleSaves, OnlyIfItContainsTheTranslatedWord)
{
    TestApplication app;
    app.objTranslator.dictTranslations["save"] = "sichern";
    EXPECT_TRUE(bTitleSaves(app, "Job sichern"));
    EXPECT_FALSE(bTitleSaves(app, "Speichern"));
    EXPECT_FALSE(bTitleSaves(app, "Save"));
}

TEST(PickFile, ReturnsThePathOrNothingIfCancelled)
{
    TestApplication app;
    app.windows.picks = {"/a.vjb"};
    std::int32_t lFilterIndex = 1;
    EXPECT_EQ(sPickFile(app, "Open", "x|*.x", lFilterIndex), "/a.vjb");
    EXPECT_EQ(sPickFile(app, "Open", "x|*.x", lFilterIndex), "");
}

TEST(PickFile, BringsBackTheFilterThatWasChosen)
{
    TestApplication app;
    app.windows.picks = {"/a.png"};
    app.windows.picked_filter = 3;
    std::int32_t lFilterIndex = 2;

    sPickFile(app, "Save", "x|*.x", lFilterIndex);

    EXPECT_EQ(app.windows.file_pickers.at(0).lFilterIndex, 2);
    EXPECT_TRUE(app.windows.file_pickers.at(0).bToSave);
    EXPECT_EQ(lFilterIndex, 3);
}

TEST(PickFileInFolder, StartsInTheFolderOfThePathIfItExists)
{
    TestApplication app;
    app.files.AddFolder("C:\\pics");
    std::int32_t lFilterIndex = 1;

    sPickFileInFolder(app, "Open", "x|*.x", lFilterIndex, "C:\\pics\\a.bmp");
    sPickFileInFolder(app, "Open", "x|*.x", lFilterIndex, "C:\\none\\a.bmp");
    sPickFileInFolder(app, "Open", "x|*.x", lFilterIndex, "a.bmp");

    ASSERT_EQ(app.windows.file_pickers.size(), 3u);
    EXPECT_EQ(app.windows.file_pickers[0].sStartFolder, *app.files.sHostPathOfExisting("C:\\pics"));
    EXPECT_EQ(app.windows.file_pickers[1].sStartFolder, "");
    EXPECT_EQ(app.windows.file_pickers[2].sStartFolder, "");
}

TEST(PickFolder, HasATranslatedTitleAndStartsWithoutTrailingSeparators)
{
    TestApplication app;
    app.objTranslator.dictTranslations["Browse For Folder"] = "Ordner suchen";
    app.files.AddFolder("/pics");
    app.windows.picks = {"/out"};

    EXPECT_EQ(sPickFolder(app, "/pics/"), "/out");
    EXPECT_EQ(sPickFolder(app, "/none"), "");

    EXPECT_EQ(app.windows.pickers, (std::vector<std::string>{"Ordner suchen", "Ordner suchen"}));
    EXPECT_EQ(app.windows.start_folders, (std::vector<std::string>{"/pics", ""}));
}
