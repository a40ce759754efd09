// Translating a form's texts and setting its fonts.
#include "src/translator/modTranslateForm.h"

#include <gtest/gtest.h>

#include "src/controls/action.h"
#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/grid/grid.h"
#include "src/controls/label.h"
#include "src/controls/lists/combo_box.h"
#include "src/controls/lists/list_box.h"
#include "src/controls/option_button.h"
#include "src/controls/scroll_bar.h"
#include "src/controls/status_bar.h"
#include "src/controls/tab_strip.h"
#include "src/controls/text_box.h"
#include "src/translator/modTranslator.h"
#include "tests/fakes/test_application.h"

namespace
{

constexpr const char* kFile = "/program/Languages/German-Varnel.txt";

// One control of each kind, every text in English.
struct frmSample : Form {
    frmSample() : Form("frmSample")
    {
        SetCaption("Options");
        for (Control* pControl : Controls()) {
            pControl->SetCaption("Done");
            pControl->SetToolTipText("Press for help");
        }
        tsTabs.SetTabs({"Done", "Log"});
        tsTabs.SetTabToolTipText(2, "Press for help");
        sbBar.SetPanel(1, "Done");
        sbBar.SetPanelToolTipText(1, "Press for help");
        txtText.SetText("Done");
        cbList.AddItem("Done");
        lstList.AddItem("Done");
        fgTable.SetTextMatrix(0, 0, "Done");
    }

    TabStrip tsTabs{*this, "tsTabs"};
    StatusBar sbBar{*this, "sbBar"};
    TextBox txtText{*this, "txtText"};
    Menu mnuMenu{*this, "mnuMenu"};
    Action mnuItem{*this, "mnuItem"};
    CommandButton cmdButton{*this, "cmdButton"};
    Label lblLabel{*this, "lblLabel"};
    CheckBox cbBox{*this, "cbBox"};
    Frame frameBox{*this, "frameBox"};
    OptionGroup objGroup;
    OptionButton optChoice{*this, "optChoice", objGroup};
    ComboBox cbList{*this, "cbList"};
    ListBox lstList{*this, "lstList"};
    Slider sldSlider{*this, "sldSlider"};
    Grid fgTable{*this, "fgTable", 2};
    ScrollBar sbScroll{*this, "sbScroll"};
};

class FormTranslation : public testing::Test
{
protected:
    FormTranslation()
    {
        app.files.AddFile(kFile,
                          "\"Done\",\"Erledigt\"\n\"Options\",\"Optionen\"\n\"Log\",\"Protokoll\"\n"
                          "\"Press for help\",\"Hilfe\"\n");
        app.ini.Set("Language", "Language_Code", "German");
    }
    void Translate()
    {
        InitializeTranslator(app);
        TranslateForm(app, frm);
    }
    /// The texts appended to the language file.
    std::string sAppended() const
    {
        const std::string sFile = app.files.Content(kFile);
        const std::string sLast = "\"Hilfe\"\n";
        return sFile.substr(sFile.find(sLast) + sLast.size());
    }

    TestApplication app;
    frmSample frm;
};

}  // namespace

TEST_F(FormTranslation, TranslatesItsCaption)
{
    Translate();

    EXPECT_EQ(frm.Caption(), "Optionen");
}

TEST_F(FormTranslation, TranslatesCaptionsAndToolTipsOfLabelsBoxesFramesAndButtons)
{
    Translate();

    for (const Control* pControl : std::initializer_list<const Control*>{
             &frm.lblLabel, &frm.cbBox, &frm.frameBox, &frm.optChoice, &frm.cmdButton}) {
        EXPECT_EQ(pControl->Caption(), "Erledigt") << pControl->sName();
        EXPECT_EQ(pControl->ToolTipText(), "Hilfe") << pControl->sName();
    }
}

TEST_F(FormTranslation, TranslatesTheToolTipAloneOfListsSlidersAndTables)
{
    Translate();

    for (const Control* pControl :
         std::initializer_list<const Control*>{&frm.cbList, &frm.lstList, &frm.sldSlider, &frm.fgTable}) {
        EXPECT_EQ(pControl->Caption(), "Done") << pControl->sName();
        EXPECT_EQ(pControl->ToolTipText(), "Hilfe") << pControl->sName();
    }
    EXPECT_EQ(frm.cbList.List(0), "Done");
    EXPECT_EQ(frm.lstList.List(0), "Done");
    EXPECT_EQ(frm.fgTable.TextMatrix(0, 0), "Done");
}

TEST_F(FormTranslation, LeavesScrollBarsAlone)
{
    Translate();

    EXPECT_EQ(frm.sbScroll.ToolTipText(), "Press for help");
}

TEST_F(FormTranslation, TranslatesEachTabWithItsToolTip)
{
    Translate();

    EXPECT_EQ(frm.tsTabs.Tabs(), (std::vector<std::string>{"Erledigt", "Protokoll"}));
    EXPECT_EQ(frm.tsTabs.TabToolTipText(1), "");
    EXPECT_EQ(frm.tsTabs.TabToolTipText(2), "Hilfe");
}

TEST_F(FormTranslation, TranslatesEachPanelWithItsToolTip)
{
    Translate();

    EXPECT_EQ(frm.sbBar.Panel(1), "Erledigt");
    EXPECT_EQ(frm.sbBar.PanelToolTipText(1), "Hilfe");
    EXPECT_EQ(frm.sbBar.ToolTipText(), "Hilfe");
}

TEST_F(FormTranslation, TranslatesTheTextOfATextBox)
{
    Translate();

    EXPECT_EQ(frm.txtText.Text(), "Erledigt");
    EXPECT_EQ(frm.txtText.ToolTipText(), "Hilfe");
}

TEST_F(FormTranslation, KeepsTaggedTextsButTranslatesTheirToolTips)
{
    for (Control* pControl : std::initializer_list<Control*>{&frm.lblLabel, &frm.cbBox, &frm.frameBox,
                                                             &frm.optChoice, &frm.txtText})
        pControl->SetTag("TranslateFalse");

    Translate();

    for (const Control* pControl :
         std::initializer_list<const Control*>{&frm.lblLabel, &frm.cbBox, &frm.frameBox, &frm.optChoice}) {
        EXPECT_EQ(pControl->Caption(), "Done") << pControl->sName();
        EXPECT_EQ(pControl->ToolTipText(), "Hilfe") << pControl->sName();
    }
    EXPECT_EQ(frm.txtText.Text(), "Done");
    EXPECT_EQ(frm.txtText.ToolTipText(), "Hilfe");
}

TEST_F(FormTranslation, IgnoresTheTagOfAButton)
{
    frm.cmdButton.SetTag("TranslateFalse");

    Translate();

    EXPECT_EQ(frm.cmdButton.Caption(), "Erledigt");
}

TEST_F(FormTranslation, KeepsSeparatorsOutOfTheLanguageFile)
{
    frm.mnuItem.SetCaption("-");

    Translate();

    EXPECT_EQ(frm.mnuItem.Caption(), "-");
    EXPECT_FALSE(app.objTranslator.dictTranslations.contains("-"));
    EXPECT_EQ(sAppended(), "");
}

TEST_F(FormTranslation, LooksCaptionsUpWithTheirAmpersand)
{
    frm.mnuItem.SetCaption("&Done");

    Translate();

    EXPECT_EQ(frm.mnuMenu.Caption(), "Erledigt");
    EXPECT_EQ(frm.mnuItem.Caption(), "&Done");
    EXPECT_EQ(sAppended(), "\"&Done\"\n");
}

TEST_F(FormTranslation, NeverAppendsAnEmptyToolTip)
{
    for (Control* pControl : frm.Controls())
        pControl->SetToolTipText("");

    Translate();

    EXPECT_EQ(frm.cmdButton.ToolTipText(), "");
    EXPECT_EQ(sAppended(), "");
}

TEST_F(FormTranslation, AppendsUnknownTextsInTheOrderOfTheControls)
{
    frm.lblLabel.SetCaption("Second");
    frm.cmdButton.SetCaption("First");
    frm.cbBox.SetCaption("Third");

    Translate();

    EXPECT_EQ(sAppended(), "\"First\"\n\"Second\"\n\"Third\"\n");
}

TEST_F(FormTranslation, EnglishChangesNoTextButFillsTheTable)
{
    app.ini.Set("Language", "Language_Code", "English");

    Translate();

    EXPECT_EQ(frm.Caption(), "Options");
    EXPECT_EQ(frm.cmdButton.Caption(), "Done");
    EXPECT_EQ(frm.cmdButton.FontName(), "");
    EXPECT_EQ(app.objTranslator.dictTranslations.at("Options"), "Options");
    EXPECT_EQ(app.objTranslator.dictTranslations.at("Done"), "Done");
}

TEST_F(FormTranslation, SetsTheChosenFontOnEachControlButNotOnTheForm)
{
    app.ini.Set("Language", "Language_Font", "Noto Serif");

    Translate();

    for (const Control* pControl : frm.Controls())
        EXPECT_EQ(pControl->FontName(), "Noto Serif") << pControl->sName();
    EXPECT_EQ(frm.FontName(), "");
}

TEST_F(FormTranslation, GivesAJapaneseUserTheJapaneseFont)
{
    app.locale.lcid = 1041;
    app.windows.installed_fonts["MS UI Gothic"] = "ms ui gothic";

    Translate();

    EXPECT_EQ(frm.cmdButton.FontName(), "MS UI Gothic");
}

TEST_F(FormTranslation, ChangesNoFontIfTheJapaneseOneIsMissing)
{
    app.locale.lcid = 1041;

    Translate();

    EXPECT_EQ(frm.cmdButton.FontName(), "");
}

TEST_F(FormTranslation, ChangesNoFontInEnglishForAJapaneseUser)
{
    app.locale.lcid = 1041;
    app.windows.installed_fonts["MS UI Gothic"] = "MS UI Gothic";
    app.ini.Set("Language", "Language_Code", "English");

    Translate();

    EXPECT_EQ(frm.cmdButton.FontName(), "");
}

TEST_F(FormTranslation, PrefersTheChosenFontToTheJapaneseOne)
{
    app.locale.lcid = 1041;
    app.windows.installed_fonts["MS UI Gothic"] = "MS UI Gothic";
    app.ini.Set("Language", "Language_Font", "Noto Sans CJK JP");

    Translate();

    EXPECT_EQ(frm.cmdButton.FontName(), "Noto Sans CJK JP");
}

TEST(FontExists, ComparesTheNameOfTheFontThatTheSystemGives)
{
    TestApplication app;
    app.windows.installed_fonts["Gothic"] = "GOTHIC";

    EXPECT_TRUE(bFontExists(app, "Gothic"));
    EXPECT_FALSE(bFontExists(app, "Missing"));
}
