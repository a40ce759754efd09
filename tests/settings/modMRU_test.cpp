// Most recently used lists.
#include "src/settings/modMRU.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

using Texts = std::vector<std::string>;

static constexpr const char* kIniFile = "/settings/VL_SearchHistory.INI";

static clsMRU SetUpList(TestApplication& app)
{
    clsMRU mru;
    ::Setup(mru, app.ini, 20, kIniFile, "mruSource");
    return mru;
}

static Texts EntriesOf(const ComboBox& cb)
{
    Texts aEntries;
    for (std::int32_t l = 0; l < cb.ListCount(); ++l)
        aEntries.push_back(cb.List(l));
    return aEntries;
}

TEST(AddUniqueItemToCollection, MovesRepeatedTextToFrontInItsNewSpelling)
{
    TestApplication app;
    clsMRU mru = SetUpList(app);
    for (const char* sText : {"c:\\a.jpg", "c:\\b.jpg", "C:\\A.JPG"})
        AddUniqueItemToCollection(mru, sText);

    EXPECT_EQ(mru.colMRU, (Texts{"c:\\b.jpg", "C:\\A.JPG"}));
    EXPECT_EQ(Count(mru), 2);
}

TEST(AddUniqueItemToCollection, IgnoresAnEmptyText)
{
    TestApplication app;
    clsMRU mru = SetUpList(app);
    AddUniqueItemToCollection(mru, "");

    EXPECT_EQ(Count(mru), 0);
}

TEST(AddUniqueItemToCollection, MayExceedTheLimitInMemory)
{
    TestApplication app;
    clsMRU mru = SetUpList(app);
    for (int n = 1; n <= 25; ++n)
        AddUniqueItemToCollection(mru, "text " + std::to_string(n));

    EXPECT_EQ(Count(mru), 25);
}

TEST(ShutDown, SavesTheNewestTwentyEntries)
{
    TestApplication app;
    clsMRU mru = SetUpList(app);
    for (int n = 1; n <= 25; ++n)
        AddUniqueItemToCollection(mru, "text " + std::to_string(n));

    ShutDown(mru, app.ini);
    EXPECT_EQ(Count(mru), 0);
    EXPECT_EQ(app.ini.Stored("mruSource", "mruSource20"), "text 25");
    EXPECT_EQ(app.ini.Stored("mruSource", "mruSource1"), "text 6");

    mru = SetUpList(app);
    FillComboBoxFromMRU(app, app.frmMain.cbOriginalFile, mru);
    const Texts aEntries = EntriesOf(app.frmMain.cbOriginalFile);
    ASSERT_EQ(aEntries.size(), 20u);
    EXPECT_EQ(aEntries.front(), "text 25");
    EXPECT_EQ(aEntries.back(), "text 6");
}

TEST(WriteCollectionToIniFile, KeepsLowerKeysOfAnEarlierLongerList)
{
    TestApplication app;
    app.ini.Set("mruSource", "mruSource18", "old");
    app.ini.Set("mruSource", "mruSource20", "newer");
    clsMRU mru;
    mru.sKeyStem = "mruSource";
    AddUniqueItemToCollection(mru, "a");
    AddUniqueItemToCollection(mru, "b");

    WriteCollectionToIniFile(mru, app.ini);

    EXPECT_EQ(SetUpList(app).colMRU, (Texts{"old", "a", "b"}));
}

TEST(WriteCollectionToIniFile, IgnoresTheLimitPassedToSetup)
{
    TestApplication app;
    clsMRU mru;
    ::Setup(mru, app.ini, 3, kIniFile, "mruSource");
    for (int n = 1; n <= 10; ++n)
        AddUniqueItemToCollection(mru, std::to_string(n));
    WriteCollectionToIniFile(mru, app.ini);

    EXPECT_EQ(mru.lMaxCount, 3);
    EXPECT_EQ(app.ini.written.size(), 10u);
    EXPECT_EQ(app.ini.Stored("mruSource", "mruSource11"), "1");
}

TEST(ReadIniFileIntoCollection, SkipsMissingNumbersAndThePlaceholder)
{
    TestApplication app;
    app.ini.Set("mruSource", "mruSource3", "three");
    app.ini.Set("mruSource", "mruSource7", "+-!#");
    app.ini.Set("mruSource", "mruSource9", "");
    app.ini.Set("mruSource", "mruSource12", "THREE");
    app.ini.Set("mruSource", "mruSource15", "fifteen");
    app.ini.Set("mruSource", "mruSource21", "beyond");
    clsMRU mru;
    mru.colMRU = {"left over"};

    ::Setup(mru, app.ini, 20, kIniFile, "mruSource");

    EXPECT_EQ(mru.colMRU, (Texts{"THREE", "fifteen"}));
    EXPECT_EQ(mru.sIniFile, kIniFile);
}

TEST(FillComboBoxFromMRU, ListsTheNewestFirstAndSuppressesHandlers)
{
    TestApplication app;
    clsMRU mru;
    mru.colMRU = {"old", "new"};
    ComboBox& cb = app.frmMain.cbOriginalFile;
    cb.AddItem("left over");
    int lClicks = 0;
    cb.OnClick = [&] { lClicks += app.bInternalGridChange ? 0 : 1; };

    FillComboBoxFromMRU(app, cb, mru);

    EXPECT_EQ(EntriesOf(cb), (Texts{"new", "old"}));
    EXPECT_EQ(cb.ListIndex(), 0);
    EXPECT_EQ(cb.Text(), "new");
    EXPECT_EQ(lClicks, 0);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(FillComboBoxFromMRU, ClearsTheTextForAnEmptyListAndRestoresTheFlag)
{
    TestApplication app;
    app.bInternalGridChange = true;
    app.frmMain.cbOriginalFile.SetText("left over");

    FillComboBoxFromMRU(app, app.frmMain.cbOriginalFile, clsMRU());

    EXPECT_EQ(app.frmMain.cbOriginalFile.Text(), "");
    EXPECT_TRUE(app.bInternalGridChange);
}

static void EnterTexts(frmMain& frm)
{
    for (ComboBox* pBox : {&frm.cbOriginalFile, &frm.cbTargetFile, &frm.cbOriginalFileSpecialized,
                           &frm.cbTargetFileSpecialized, &frm.cbCommandLine, &frm.cbCommandLineArguments})
        pBox->SetText("text of " + pBox->sName());
}

TEST(UpdateMRUs, AddsTheFieldsOfAConversion)
{
    TestApplication app;
    EnterTexts(app.frmMain);
    app.frmMain.sActionToDo = "C";
    app.frmMain.mruSource.colMRU = {"older"};

    UpdateMRUs(app);

    EXPECT_EQ(app.frmMain.mruSource.colMRU, (Texts{"older", "text of cbOriginalFile"}));
    EXPECT_EQ(app.frmMain.mruTarget.colMRU, (Texts{"text of cbTargetFile"}));
    EXPECT_EQ(app.frmMain.cbOriginalFile.Text(), "text of cbOriginalFile");
    EXPECT_EQ(EntriesOf(app.frmMain.cbOriginalFile), (Texts{"text of cbOriginalFile", "older"}));
    EXPECT_EQ(Count(app.frmMain.mruCommandLine), 0);
}

TEST(UpdateMRUs, AddsTheFieldsOfSpecialProcessAndLaunch)
{
    TestApplication app;
    EnterTexts(app.frmMain);
    app.frmMain.sActionToDo = "S";

    UpdateMRUs(app);

    EXPECT_EQ(app.frmMain.mruSourceSpecialized.colMRU, (Texts{"text of cbOriginalFileSpecialized"}));
    EXPECT_EQ(app.frmMain.mruTargetSpecialized.colMRU, (Texts{"text of cbTargetFileSpecialized"}));
    EXPECT_EQ(app.frmMain.mruCommandLine.colMRU, (Texts{"text of cbCommandLine"}));
    EXPECT_EQ(app.frmMain.mruCommandLineArguments.colMRU, (Texts{"text of cbCommandLineArguments"}));
    EXPECT_EQ(Count(app.frmMain.mruSource), 0);
}

TEST(UpdateMRUs, RequiresTheExactAction)
{
    TestApplication app;
    EnterTexts(app.frmMain);
    for (const char* sAction : {"S7", "CS", "c", ""}) {
        app.frmMain.sActionToDo = sAction;
        UpdateMRUs(app);
    }

    EXPECT_EQ(Count(app.frmMain.mruSource), 0);
    EXPECT_EQ(Count(app.frmMain.mruSourceSpecialized), 0);
}
