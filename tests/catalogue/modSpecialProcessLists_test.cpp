// The combo boxes of processes and launch options.
#include "src/catalogue/modSpecialProcessLists.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(SpecialProcessList, OffersFiftySevenProcessesAndAPlaceholder)
{
    TestApplication app;

    FillInSpecialProcessesComboBox(app);

    const ComboBox& cb = app.frmMain.cbSpecialProcesses;
    ASSERT_EQ(cb.ListCount(), 58);
    EXPECT_EQ(cb.List(0), "[100] (*.*) Launch (Run) a program");
    EXPECT_EQ(cb.ItemData(0), 100);
    EXPECT_EQ(cb.List(1), "[2] Transform: Resize Image");
    EXPECT_EQ(cb.List(34), "[36] Effect: Gaussian Blurr");
    EXPECT_EQ(cb.List(46), "[48] Filter: Laplas");
    EXPECT_EQ(cb.List(56), "[60] Filter: Deinterlace");
    EXPECT_EQ(cb.List(57), "I NEED SOMETHING NOT LISTED!!!!!!!");
    EXPECT_EQ(cb.ItemData(57), -1);
    EXPECT_EQ(cb.ListIndex(), 0);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(SpecialProcessList, KeepsItemDataEvenIfLabelsAreTranslated)
{
    TestApplication app;
    app.objTranslator.dictTranslations["Transform: Resize Image"] = "[3] irritating";

    FillInSpecialProcessesComboBox(app);

    EXPECT_EQ(app.frmMain.cbSpecialProcesses.List(1), "[2] [3] irritating");
    EXPECT_EQ(app.frmMain.cbSpecialProcesses.ItemData(1), 2);
}

TEST(SpecialProcessList, SuppressesHandlersWhileItIsFilled)
{
    TestApplication app;
    bool bInternal = false;
    app.frmMain.cbSpecialProcesses.OnClick = [&] { bInternal = app.bInternalGridChange; };

    FillInSpecialProcessesComboBox(app);

    EXPECT_TRUE(bInternal);
}

TEST(LaunchLists, UseTheNumbersOfLaunchDetailsAsItemData)
{
    TestApplication app;

    FillInCommandLineWindowStateComboBox(app);
    FillInCommandLineThreadPriorityComboBox(app);

    using Entries = std::vector<std::pair<std::string, std::int32_t>>;
    const auto aEntries = [](const ComboBox& cb) {
        Entries aResult;
        for (std::int32_t l = 0; l < cb.ListCount(); ++l)
            aResult.emplace_back(cb.List(l), cb.ItemData(l));
        return aResult;
    };
    EXPECT_EQ(aEntries(app.frmMain.cbCommandLineWindowState),
              (Entries{{"Hidden", 0}, {"Normal", 1}, {"Maximized", 3}, {"Minimized", 6}}));
    EXPECT_EQ(aEntries(app.frmMain.cbCommandLineThreadPriority),
              (Entries{{"Idle", 64}, {"Normal", 32}, {"High Priority", 128}, {"Realtime Priority", 256}}));
}
