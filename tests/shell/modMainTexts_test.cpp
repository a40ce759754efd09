// Captions and tool tips of the main window.
#include "src/shell/modMainTexts.h"

#include <gtest/gtest.h>

#include "src/shell/modMainForms.h"
#include "tests/fakes/test_application.h"

namespace
{

struct CommandTexts {
    const char* sName;
    const char* sCaption;
    const char* sToolTip = "";
};

const CommandTexts kToolBar[] = {
    {"keyNew", "New", "Create a new conversion job"},
    {"keyOpen", "Open"},
    {"keyAdd", "&Add", "Add a conversion Task"},
    {"keyRemove", "&Delete", "Remove currently selected conversion Task (Del)"},
    {"keyUpdate", "&Update", "Update currently selected conversion task"},
    {"keyRewind", "Rewind", "Rewind to the first conversion task"},
    {"keyConvert", "Convert", "Begin Conversion (F5)"},
    {"keyPause", "&Pause", "Pause conversion process"},
    {"KeySave", "Save Conversion Job"},
    {"KeySaveAs", "Save Conversion Job As.."},
    {"KeyOpen", "Open Conversion Job.."},
    {"KeySaveLogAsConversionJob", "Save &Log as a Conversion Job"},
};

const CommandTexts kMenus[] = {
    {"mnuFile", "&File"},
    {"mnuNewConversionJob", "&New Conversion Job"},
    {"mnuOpenConversionJob", "&Open Conversion Job"},
    {"mnuSaveConversionJob", "Save Conversion Job"},
    {"mnuSaveConversionJobAs", "Save Conversion Job &As.."},
    {"mnuSaveLogAsConversionJob", "Save &Log as a Conversion Job"},
    {"mnuLanguage", "Lan&guage"},
    {"mnuOptions", "Options"},
    {"mnuExit", "E&xit"},
    {"mnuConversion", "C&onversion"},
    {"mnuAddConversionJob", "&Add Conversion Job"},
    {"mnuRemoveConversionJob", "&Delete Conversion Job"},
    {"mnuUpdateConversionJob", "&Update Conversion Job"},
    {"mnuBeginConversionJob", "&Begin Conversion Job"},
    {"mnuPause", "&Pause Conversion Job"},
    {"mnuRewindConversionJob", "&Rewind Conversion Job"},
    {"mnuScheduleConversionJob", "&Schedule a Conversion Job"},
    {"mnuConversionOptions", "Conversion &Options"},
    {"mnuHelp", "&Help"},
    {"mnuLaunchHelpFile", "&Help File"},
    {"mnuHelpOnLine", "Web Help (most up to date)"},
    {"cmdHelpCommandLine", "Using the &Command Line"},
    {"mnuAbout", "&About"},
    {"mnuHelpProductHomePage", "Product Home &Page"},
    {"mnuHelpProductUpdates", "Product &Updates"},
    {"mnuOrbelanHomePage", "&Orbelan Home Page"},
    {"mnuAdditionalImageConversionTools", "Additional Image Conversion Tools"},
};

std::vector<std::string> NamesOf(const Menu& mnu)
{
    std::vector<std::string> aNames;
    for (const Action* pAction : mnu.Actions())
        if (pAction)
            aNames.push_back(pAction->sName());
    return aNames;
}

template <std::size_t n>
std::vector<std::string> NamesOf(const CommandTexts (&aTexts)[n], std::size_t nFrom, std::size_t nTo)
{
    std::vector<std::string> aNames;
    for (std::size_t nAt = nFrom; nAt < nTo; ++nAt)
        aNames.push_back(aTexts[nAt].sName);
    return aNames;
}

}  // namespace

TEST(MainTexts, AreThoseOfToolBarAndMenus)
{
    TestApplication app;
    LoadMainForms(app);

    for (const CommandTexts& objTexts : kToolBar) {
        const Control* pCommand = app.frmMain.pControl(objTexts.sName);
        ASSERT_TRUE(pCommand) << objTexts.sName;
        EXPECT_EQ(pCommand->Caption(), objTexts.sCaption);
        EXPECT_EQ(pCommand->ToolTipText(), objTexts.sToolTip);
    }
    for (const CommandTexts& objTexts : kMenus) {
        const Control* pCommand = app.frmMainMDI.pControl(objTexts.sName);
        ASSERT_TRUE(pCommand) << objTexts.sName;
        EXPECT_EQ(pCommand->Caption(), objTexts.sCaption);
    }
    EXPECT_EQ(app.frmMainMDI.Caption(), "Varnel");
}

TEST(MainTexts, ComeInTheOrderOfToolBarAndMenus)
{
    TestApplication app;

    EXPECT_EQ(NamesOf(app.frmMain.tbMain), NamesOf(kToolBar, 0, 8));
    EXPECT_EQ(NamesOf(app.frmMainMDI.mnuFile), NamesOf(kMenus, 1, 9));
    EXPECT_EQ(NamesOf(app.frmMainMDI.mnuConversion), NamesOf(kMenus, 10, 18));
    EXPECT_EQ(NamesOf(app.frmMainMDI.mnuHelp), NamesOf(kMenus, 19, 27));
}

TEST(MainTexts, AreTranslatedOnce)
{
    TestApplication app;
    app.objTranslator.dictTranslations = {
        {"&Add", "&Delete"}, {"&Delete", "L&oeschen"}, {"Add a conversion Task", "Aufgabe anfuegen"},
        {"&File", "&Datei"}, {"Tasks", "Aufgaben"},    {"Varnel", "Varnel DE"}};

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.keyAdd.Caption(), "&Delete");
    EXPECT_EQ(app.frmMain.keyRemove.Caption(), "L&oeschen");
    EXPECT_EQ(app.frmMain.keyAdd.ToolTipText(), "Aufgabe anfuegen");
    EXPECT_EQ(app.frmMainMDI.mnuFile.Caption(), "&Datei");
    EXPECT_EQ(app.frmMain.ts.TabCaption(1), "Aufgaben");
    EXPECT_EQ(app.frmMainMDI.Caption(), "Varnel DE");
}

TEST(MainTexts, KeepTheirHandsOffData)
{
    TestApplication app;
    app.objTranslator.dictTranslations = {{"-1", "minus one"}, {"100", "hundred"}, {"0", "zero"}};
    app.ini.Set("frmMain", "sActionToDO", "S");

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.txtCommandLineWaitTimeInSeconds.Text(), "-1");
    EXPECT_EQ(app.frmMain.txtSpecialProcessTextEntry1.Text(), "100");
    EXPECT_EQ(app.frmMain.lblColorSelected2.Caption(), "0");
}
