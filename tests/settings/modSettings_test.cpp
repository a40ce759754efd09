// Settings of the main form and of the frame window.
#include "src/settings/modSettings.h"

#include <gtest/gtest.h>

#include <functional>

#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/settings/modMRU.h"
#include "tests/fakes/test_application.h"

static const std::string kPrefix =
    "1^0^FALSE^75^'Varnel'^A batch picture tool^1/1/2007^Orbelan, Inc.^Orbelan 2006^^^";

// An application whose lists are filled, as they must be before the settings are loaded.
struct LoadingApplication : TestApplication {
    LoadingApplication()
    {
        for (ComboBox* pBox : {&frmMain.cbSpecialProcesses, &frmMain.cbCommandLineWindowState,
                               &frmMain.cbCommandLineThreadPriority, &frmMain.cbFileTypeTarget,
                               &frmMain.cbFileTypeOriginal, &frmMain.cbFileTypeOriginalSpecialized})
            for (int n = 0; n < 15; ++n)
                pBox->AddItem("entry " + std::to_string(n), n);
        frmMain.keyConvert.SetEnabled(false);
        frmMainMDI.mnuBeginConversionJob.SetEnabled(false);
    }
    void SetMain(const std::string& sKey, const std::string& sValue) { ini.Set("frmMain", sKey, sValue); }
    void Read()
    {
        ReadIniFile(*this, [] {});
    }
};

static std::vector<std::int32_t> WidthsOf(const Grid& fg)
{
    std::vector<std::int32_t> aWidths;
    for (std::int32_t lCol = 0; lCol < fg.Cols(); ++lCol)
        aWidths.push_back(fg.ColWidth(lCol));
    return aWidths;
}

static std::int32_t lErrorOf(const std::function<void()>& fnWork)
{
    try {
        fnWork();
    } catch (const clsRaisedError& objError) {
        return objError.lNumber();
    }
    return 0;
}

TEST(ReadIniFile, SetsDefaultsWithoutASettingsFile)
{
    LoadingApplication app;
    app.Read();

    const frmMain& frm = app.frmMain;
    EXPECT_TRUE(frm.bAutoLoadImages);
    EXPECT_FALSE(frm.bDeleteOriginalFileAfterProcessing);
    EXPECT_TRUE(frm.bTryAutodetectIfFailed);
    EXPECT_EQ(frm.sLogFile, "");
    EXPECT_FALSE(app.frmTypeMatchNotification.bDontShowAgain);
    EXPECT_FALSE(app.frmScheduler.bPersistRunning);
    EXPECT_EQ(frm.sActionToDo, "C");
    EXPECT_EQ(frm.lConversionMethod, 1);
    EXPECT_EQ(frm.cbSpecialProcesses.ListIndex(), 1);
    EXPECT_EQ(frm.cbCommandLineWindowState.ListIndex(), 1);
    EXPECT_EQ(frm.cbCommandLineThreadPriority.ListIndex(), 1);
    EXPECT_EQ(frm.txtCommandLineWaitTimeInSeconds.Text(), "-1");
    EXPECT_EQ(frm.sImageConversionOptions, kPrefix);
    EXPECT_EQ(frm.cbFileTypeTarget.ListIndex(), 0);
    EXPECT_EQ(frm.cbFileTypeOriginal.ListIndex(), 0);
    EXPECT_EQ(frm.cbFileTypeOriginalSpecialized.ListIndex(), 0);
    EXPECT_EQ(frm.cbDoSubfolders.Value(), 0);
    EXPECT_EQ(frm.cbDoSubfoldersSpecialized.Value(), 0);
    EXPECT_EQ(frm.Place().lWindowState, 0);
    EXPECT_EQ(frm.Place().lLeft, 1000);
    EXPECT_EQ(frm.Place().lTop, 1000);
    EXPECT_EQ(frm.Place().lWidth, 6500);
    EXPECT_EQ(frm.Place().lHeight, 7200);
    EXPECT_TRUE(frm.keyConvert.Enabled());
    EXPECT_TRUE(app.frmMainMDI.mnuBeginConversionJob.Enabled());
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_TRUE(app.ini.written.empty());
}

TEST(ReadIniFile, SetsTheDefaultColumnWidths)
{
    LoadingApplication app;
    app.Read();

    EXPECT_EQ(WidthsOf(app.frmMain.fgLog),
              (std::vector<std::int32_t>{0, 0, 445, 336, 0, 0, 0, 3875, 0, 495, 445, 12380}));
    EXPECT_EQ(WidthsOf(app.frmMain.fgToDo),
              (std::vector<std::int32_t>{0, 0, 445, 336, 3950, 0, 500, 3875, 0, 495, 495}));
}

TEST(ReadIniFile, WidensActionColumnsInDoubleByteLocales)
{
    LoadingApplication app;
    app.bDoubleByteLocale = true;
    app.SetMain("fgLog.ColWidth(11)", "5000");
    app.Read();

    EXPECT_EQ(app.frmMain.fgLog.ColWidth(3), 420);
    EXPECT_EQ(app.frmMain.fgToDo.ColWidth(3), 420);
    EXPECT_EQ(app.frmMain.fgLog.ColWidth(11), 5000);
}

TEST(ReadIniFile, SetsTheDefaultDetailsOfEachProcess)
{
    LoadingApplication app;
    app.Read();

    const auto& asDetails = app.frmMain.asSP_Details;
    EXPECT_EQ(asDetails[2], kPrefix + "100^100^0^0^FALSE");
    EXPECT_EQ(asDetails[3], kPrefix + "90");
    EXPECT_EQ(asDetails[7], kPrefix + "FALSE^45");
    EXPECT_EQ(asDetails[14], kPrefix + "128");
    EXPECT_EQ(asDetails[17], kPrefix + "0.75");
    EXPECT_EQ(asDetails[22], kPrefix + "0.0");
    EXPECT_EQ(asDetails[42], kPrefix + "10^5^0");
    EXPECT_EQ(asDetails[59], kPrefix + "2");
    for (const int n : {0, 1, 4, 11, 12, 18, 23, 24, 30, 45, 55, 56, 57, 60, 100})
        EXPECT_EQ(asDetails[static_cast<std::size_t>(n)], "") << n;
}

TEST(ReadIniFile, LoadsEveryKeyOfTheFile)
{
    LoadingApplication app;
    app.SetMain("bAutoLoadImages", "false");
    app.SetMain("bDeleteOriginalFileAfterProcessing", "true");
    app.SetMain("bTryAutodetectIfFailed", "nonsense");
    app.SetMain("sLogFile", "C:\\report.txt");
    app.SetMain("bDontShowFileMismatchAgain", "True");
    app.ini.Set("frmScheduler", "chkPersistRunning", "1");
    app.SetMain("cbSpecialProcesses.ListIndex", "5");
    app.SetMain("cbFileTypeTarget.ListIndex", "2");
    app.SetMain("cbFileTypeOriginal.ListIndex", "14");
    app.SetMain("cbDoSubfolders", "1");
    app.SetMain("sImageConversionOptions", "3^^");
    app.SetMain("sSP_Details_SP_FILTERMAXIMAL", "x^7");
    app.SetMain("sSP_Details_SP_DEINTERLACE", "not a key");
    app.SetMain("txtCommandLineWaitTimeInSeconds", "30");
    app.SetMain("lConversionMethod", "9");
    app.Read();

    const frmMain& frm = app.frmMain;
    EXPECT_FALSE(frm.bAutoLoadImages);
    EXPECT_TRUE(frm.bDeleteOriginalFileAfterProcessing);
    EXPECT_FALSE(frm.bTryAutodetectIfFailed);
    EXPECT_EQ(frm.sLogFile, "C:\\report.txt");
    EXPECT_TRUE(app.frmTypeMatchNotification.bDontShowAgain);
    EXPECT_TRUE(app.frmScheduler.bPersistRunning);
    EXPECT_EQ(frm.cbSpecialProcesses.ListIndex(), 5);
    EXPECT_EQ(frm.cbFileTypeTarget.ListIndex(), 2);
    EXPECT_EQ(frm.cbFileTypeOriginal.ListIndex(), 14);
    EXPECT_EQ(frm.cbDoSubfolders.Value(), 1);
    EXPECT_EQ(frm.sImageConversionOptions, "3^^");
    EXPECT_EQ(frm.asSP_Details[59], "x^7");
    EXPECT_EQ(frm.asSP_Details[60], "");
    EXPECT_EQ(frm.txtCommandLineWaitTimeInSeconds.Text(), "30");
    EXPECT_EQ(frm.lConversionMethod, 1);
}

TEST(ReadIniFile, DerivesTheMethodFromTheAction)
{
    for (const auto& [sAction, lMethod] : {std::pair{"S", 4}, {"C", 1}, {"SC", 1}, {"", 4}}) {
        LoadingApplication app;
        app.SetMain("sActionToDO", sAction);
        app.Read();
        EXPECT_EQ(app.frmMain.sActionToDo, sAction);
        EXPECT_EQ(app.frmMain.lConversionMethod, lMethod) << sAction;
    }
}

TEST(ReadIniFile, TruncatesValuesAtTheFirstNulOrTheLimit)
{
    LoadingApplication app;
    app.SetMain("sLogFile", std::string(" /report.txt \0rest", 18));
    app.SetMain("sSP_Details_SP_FLIP", kPrefix + std::string(500, '1'));
    app.Read();

    EXPECT_EQ(app.frmMain.sLogFile, "/report.txt");
    EXPECT_EQ(app.frmMain.asSP_Details[5].size(), 499u);
}

TEST(ReadIniFile, LoadsTheMostRecentlyUsedLists)
{
    LoadingApplication app;
    for (const char* sStem : {"mruSource", "mruTarget", "mruSourceSpecialized", "mruTargetSpecialized",
                              "mruCommandLine", "mruCommandLineArguments"})
        app.ini.Set(sStem, std::string(sStem) + "20", std::string("text of ") + sStem);
    app.Read();

    const frmMain& frm = app.frmMain;
    EXPECT_EQ(frm.cbOriginalFile.Text(), "text of mruSource");
    EXPECT_EQ(frm.cbTargetFile.Text(), "text of mruTarget");
    EXPECT_EQ(frm.cbOriginalFileSpecialized.Text(), "text of mruSourceSpecialized");
    EXPECT_EQ(frm.cbTargetFileSpecialized.Text(), "text of mruTargetSpecialized");
    EXPECT_EQ(frm.cbCommandLine.Text(), "text of mruCommandLine");
    EXPECT_EQ(frm.cbCommandLineArguments.Text(), "text of mruCommandLineArguments");
    EXPECT_EQ(frm.mruTarget.lMaxCount, 20);
}

TEST(ReadIniFile, LoadsKeysInAFixedOrder)
{
    LoadingApplication app;
    app.ini.Set("mruTarget", "mruTarget20", "target");
    std::vector<std::string> aSteps;
    frmMain& frm = app.frmMain;
    const auto Watch = [&](ComboBox& cb) {
        cb.OnClick = [&app, &aSteps, &cb] {
            aSteps.push_back(cb.sName() + (app.bInternalGridChange ? " quietly" : ""));
        };
    };
    for (ComboBox* pBox : {&frm.cbSpecialProcesses, &frm.cbCommandLineWindowState,
                           &frm.cbCommandLineThreadPriority, &frm.cbFileTypeTarget, &frm.cbFileTypeOriginal,
                           &frm.cbFileTypeOriginalSpecialized, &frm.cbTargetFile})
        Watch(*pBox);
    ReadIniFile(app, [&] {
        EXPECT_EQ(frm.sImageConversionOptions, kPrefix);
        EXPECT_FALSE(frm.keyConvert.Enabled());
        aSteps.push_back("RefreshGUIOptions");
    });

    EXPECT_EQ(aSteps,
              (std::vector<std::string>{"cbSpecialProcesses quietly", "cbCommandLineWindowState",
                                        "cbCommandLineThreadPriority", "RefreshGUIOptions",
                                        "cbFileTypeTarget", "cbFileTypeOriginal quietly",
                                        "cbFileTypeOriginalSpecialized quietly", "cbTargetFile quietly"}));
}

TEST(ReadIniFile, RaisesTypeMismatchForMalformedNumbers)
{
    for (const char* sKey : {"fgToDo.ColWidth(4)", "cbFileTypeTarget.ListIndex", "cbDoSubfolders",
                             "bDontShowFileMismatchAgain", "cbSpecialProcesses.ListIndex"}) {
        LoadingApplication app;
        app.bCommandLineMode = true;
        app.SetMain(sKey, "nonsense");
        EXPECT_EQ(lErrorOf([&] { app.Read(); }), kErrTypeMismatch) << sKey;
        EXPECT_FALSE(app.bInternalGridChange);
    }
    LoadingApplication app;
    app.bCommandLineMode = true;
    app.ini.Set("frmScheduler", "chkPersistRunning", "");
    EXPECT_EQ(lErrorOf([&] { app.Read(); }), kErrTypeMismatch);
}

TEST(ReadIniFile, RaisesAnErrorForAnIndexOutOfRange)
{
    for (const char* sKey : {"cbSpecialProcesses.ListIndex", "cbFileTypeOriginal.ListIndex"}) {
        for (const char* sValue : {"15", "-2"}) {
            LoadingApplication app;
            app.bCommandLineMode = true;
            app.SetMain(sKey, sValue);
            EXPECT_EQ(lErrorOf([&] { app.Read(); }), kErrInvalidProcedureCall) << sKey;
            EXPECT_FALSE(app.bInternalGridChange);
        }
    }
}

TEST(ReadIniFile, NamesSectionAndKeyOfABadValueInARunWithoutWindows)
{
    LoadingApplication app;
    app.bCommandLineMode = true;
    app.SetMain("cbDoSubfolders", "nonsense");

    try {
        app.Read();
        FAIL();
    } catch (const clsRaisedError& objError) {
        EXPECT_EQ(objError.sDescription(), "Type mismatch: [frmMain] cbDoSubfolders");
    }
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(ReadIniFile, StartsAWindowWithTheDefaultsOfBadValues)
{
    LoadingApplication app;
    app.SetMain("cbDoSubfolders", "nonsense");
    app.SetMain("cbFileTypeOriginal.ListIndex", "15");
    app.SetMain("bDontShowFileMismatchAgain", "perhaps");
    app.ini.Set("frmScheduler", "chkPersistRunning", "maybe");
    app.SetMain("cbFileTypeTarget.ListIndex", "3");

    app.Read();

    std::vector<std::string> aTexts;
    for (const auto& objBox : app.windows.boxes) {
        EXPECT_EQ(objBox.title, "Error");
        aTexts.push_back(objBox.text.substr(objBox.text.find('[')));
    }
    EXPECT_EQ(aTexts, (std::vector<std::string>{
                          "[frmMain] bDontShowFileMismatchAgain", "[frmScheduler] chkPersistRunning",
                          "[frmMain] cbFileTypeOriginal.ListIndex", "[frmMain] cbDoSubfolders"}));
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ListIndex(), 0);
    EXPECT_EQ(app.frmMain.cbDoSubfolders.Value(), 0);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListIndex(), 3);
    EXPECT_FALSE(app.frmScheduler.bPersistRunning);
}

TEST(ReadIniFile, SelectsNothingForIndexMinusOne)
{
    LoadingApplication app;
    app.SetMain("cbFileTypeTarget.ListIndex", "-1");
    app.Read();

    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListIndex(), -1);
}

TEST(ReadIniFile, AppliesOnlyWindowStatesOtherThanNormal)
{
    LoadingApplication app;
    app.SetMain("WindowState", "2");
    app.SetMain("Left", "-15 twips");
    app.SetMain("Height", "nonsense");
    app.Read();
    EXPECT_EQ(app.frmMain.Place().lWindowState, kWindowMaximized);
    EXPECT_EQ(app.frmMain.Place().lLeft, -15);
    EXPECT_EQ(app.frmMain.Place().lHeight, 0);

    app.SetMain("WindowState", "0");
    app.Read();
    EXPECT_EQ(app.frmMain.Place().lWindowState, kWindowMaximized);
}

TEST(SaveIniFile, WritesAllKeysInAFixedOrder)
{
    LoadingApplication app;
    app.Read();
    app.frmMain.mruSource.colMRU = {"a"};
    app.frmMain.mruTarget.colMRU = {"b"};
    app.frmMain.mruCommandLine.colMRU = {"c"};
    SaveIniFile(app);

    std::vector<std::string> aKeys;
    for (const std::string& sLine : app.ini.written) {
        const std::string sKey = sLine.substr(0, sLine.find('='));
        if (!bContains(sKey, "ColWidth") && !bContains(sKey, "sSP_Details"))
            aKeys.push_back(sKey);
    }
    EXPECT_EQ(aKeys, (std::vector<std::string>{"frmMain/bAutoLoadImages",
                                               "frmMain/bDeleteOriginalFileAfterProcessing",
                                               "frmMain/bTryAutodetectIfFailed",
                                               "frmMain/sLogFile",
                                               "frmMain/sImageConversionOptions",
                                               "frmMain/WindowState",
                                               "frmMain/Left",
                                               "frmMain/Top",
                                               "frmMain/Width",
                                               "frmMain/Height",
                                               "frmMain/cbSpecialProcesses.ListIndex",
                                               "frmMain/cbCommandLineWindowState.ListIndex",
                                               "frmMain/cbCommandLineThreadPriority.ListIndex",
                                               "frmMain/txtCommandLineWaitTimeInSeconds",
                                               "frmMain/cbFileTypeTarget.ListIndex",
                                               "frmMain/cbFileTypeOriginal.ListIndex",
                                               "mruSource/mruSource20",
                                               "mruTarget/mruTarget20",
                                               "frmMain/cbFileTypeOriginalSpecialized.ListIndex",
                                               "mruCommandLine/mruCommandLine20",
                                               "frmMain/cbDoSubfolders",
                                               "frmMain/cbDoSubfoldersSpecialized",
                                               "frmMain/lConversionMethod",
                                               "frmMain/sActionToDO",
                                               "frmTypeMatchNotification/bDontShowFileMismatchAgain"}));
    EXPECT_EQ(app.ini.written.size(), aKeys.size() + 11 + 12 + 38);
}

TEST(SaveIniFile, SpellsBooleansDependingOnTheKey)
{
    LoadingApplication app;
    app.Read();
    app.frmMain.bAutoLoadImages = false;
    app.frmTypeMatchNotification.bDontShowAgain = true;
    app.frmMain.cbDoSubfolders.SetValue(1);
    SaveIniFile(app);

    EXPECT_EQ(app.ini.Stored("frmMain", "bAutoLoadImages"), "FALSE");
    EXPECT_EQ(app.ini.Stored("frmMain", "bTryAutodetectIfFailed"), "TRUE");
    EXPECT_EQ(app.ini.Stored("frmMain", "cbDoSubfolders"), "1");
    EXPECT_EQ(app.ini.Stored("frmTypeMatchNotification", "bDontShowFileMismatchAgain"), "True");
}

TEST(SaveIniFile, SavesTheMismatchNoticeToAnUnreadSection)
{
    LoadingApplication app;
    app.Read();
    app.frmTypeMatchNotification.bDontShowAgain = true;
    SaveIniFile(app);
    app.Read();

    EXPECT_FALSE(app.frmTypeMatchNotification.bDontShowAgain);
    EXPECT_EQ(app.ini.Stored("frmMain", "bDontShowFileMismatchAgain"), "(none)");
}

TEST(SaveIniFile, KeepsTheLastNormalPosition)
{
    LoadingApplication app;
    app.Read();
    app.frmMain.SetPlace({kWindowNormal, 10, 20, 3000, 4000});
    SaveIniFile(app);
    app.frmMain.SetPlace({kWindowMinimized, -32000, -32000, 100, 100});
    SaveIniFile(app);

    EXPECT_EQ(app.ini.Stored("frmMain", "WindowState"), "1");
    EXPECT_EQ(app.ini.Stored("frmMain", "Left"), "10");
    EXPECT_EQ(app.ini.Stored("frmMain", "Height"), "4000");
}

TEST(SaveIniFile, WritesTheWaitTimeAsANumber)
{
    LoadingApplication app;
    app.Read();
    for (const auto& [sText, sStored] : {std::pair{" 15 s", "15"}, {"nonsense", "0"}, {"-1", "-1"}}) {
        app.frmMain.txtCommandLineWaitTimeInSeconds.SetText(sText);
        SaveIniFile(app);
        EXPECT_EQ(app.ini.Stored("frmMain", "txtCommandLineWaitTimeInSeconds"), sStored);
    }
}

TEST(SaveIniFile, RoundTripsAllSettings)
{
    LoadingApplication app;
    app.Read();
    frmMain& frm = app.frmMain;
    frm.sActionToDo = "S";
    frm.lConversionMethod = 4;
    frm.sImageConversionOptions = "2^*^TRUE^90^a^b^c^d^e^f^g^";
    frm.asSP_Details[16] = "x^1^2^3^";
    frm.cbSpecialProcesses.SetListIndex(7);
    frm.cbFileTypeOriginalSpecialized.SetListIndex(3);
    frm.fgLog.SetColWidth(11, 999);
    frm.fgToDo.SetColWidth(10, 111);
    frm.cbDoSubfoldersSpecialized.SetValue(1);
    frm.cbOriginalFile.SetText("C:\\a\\*.bmp");
    frm.sActionToDo = "C";
    UpdateMRUs(app);
    frm.sActionToDo = "S";
    SaveIniFile(app);

    LoadingApplication objNext;
    objNext.ini = app.ini;
    objNext.Read();
    const frmMain& frmNext = objNext.frmMain;
    EXPECT_EQ(frmNext.sActionToDo, "S");
    EXPECT_EQ(frmNext.lConversionMethod, 4);
    EXPECT_EQ(frmNext.sImageConversionOptions, "2^*^TRUE^90^a^b^c^d^e^f^g^");
    EXPECT_EQ(frmNext.asSP_Details[16], "x^1^2^3^");
    EXPECT_EQ(frmNext.cbSpecialProcesses.ListIndex(), 7);
    EXPECT_EQ(frmNext.cbFileTypeOriginalSpecialized.ListIndex(), 3);
    EXPECT_EQ(frmNext.fgLog.ColWidth(11), 999);
    EXPECT_EQ(frmNext.fgToDo.ColWidth(10), 111);
    EXPECT_EQ(frmNext.cbDoSubfoldersSpecialized.Value(), 1);
    EXPECT_EQ(frmNext.cbOriginalFile.Text(), "C:\\a\\*.bmp");
}

TEST(SaveIniFile, IgnoresAnUnwritableFileSilently)
{
    LoadingApplication app;
    app.Read();
    app.ini.fail_writes = true;
    SaveIniFile(app);

    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(FrameSettings, HaveTheirOwnSectionAndDefaults)
{
    TestApplication app;
    ReadIniFile(app, app.frmMainMDI);
    EXPECT_EQ(app.frmMainMDI.Place().lWindowState, 0);
    EXPECT_EQ(app.frmMainMDI.Place().lLeft, 150);
    EXPECT_EQ(app.frmMainMDI.Place().lTop, 150);
    EXPECT_EQ(app.frmMainMDI.Place().lWidth, 11000);
    EXPECT_EQ(app.frmMainMDI.Place().lHeight, 7000);

    WindowPlace objWider = app.frmMainMDI.Place();
    objWider.lWidth = 12000;
    app.frmMainMDI.SetPlace(objWider);
    SaveIniFile(app, app.frmMainMDI);
    app.frmMainMDI.SetPlace({kWindowMaximized, 0, 0, 20000, 20000});
    SaveIniFile(app, app.frmMainMDI);

    EXPECT_EQ(app.ini.Stored("frmMainMDI", "WindowState"), "2");
    EXPECT_EQ(app.ini.Stored("frmMainMDI", "Width"), "12000");
    ReadIniFile(app, app.frmMainMDI);
    EXPECT_EQ(app.frmMainMDI.Place().lWidth, 12000);
}
