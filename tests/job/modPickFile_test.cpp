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
    EXPECT_EQ(sPickFile(app, "Open", "x|*.x", 1), "/a.vjb");
    EXPECT_EQ(sPickFile(app, "Open", "x|*.x", 1), "");
}
