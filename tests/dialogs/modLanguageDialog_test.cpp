// The dialog that chooses language and font.
#include "src/dialogs/modLanguageDialog.h"

#include <gtest/gtest.h>

#include "src/dialogs/modDialogs.h"
#include "src/translator/modTranslator.h"
#include "tests/fakes/test_application.h"

namespace
{

using Texts = std::vector<std::string>;

constexpr const char* kGerman = "/program/Languages/Deutsch-Varnel.txt";

class LanguageDialog : public testing::Test
{
protected:
    LanguageDialog()
    {
        app.files.AddFile(kGerman, "\"Cancel\",\"Abbrechen\"\n");
        app.files.AddFile("/program/Languages/Français-VARNEL.TXT", "\"Cancel\",\"Annuler\"\n");
        app.files.AddFile("/program/Languages/Deutsch-Other.txt", "\"Cancel\"\n");
        app.files.AddFile("/program/Languages/readme.md", "");
        ConnectDialogs(app);
    }
    /// Opens the dialog from the menu; a person does fnActs in it.
    void Open(const std::function<void()>& fnActs)
    {
        app.windows.on_show_modal = [this, fnActs](Form&) {
            frm.SetVisible(true);
            fnActs();
        };
        app.frmMainMDI.mnuLanguage.UserClicks();
        EXPECT_EQ(app.windows.modal_forms.back(), &frm);
    }
    void Choose(const std::string& sLanguage)
    {
        for (std::int32_t l = 0; l < frm.List1.ListCount(); ++l)
            if (frm.List1.List(l) == sLanguage)
                frm.List1.UserChooses(l);
        ASSERT_EQ(frm.List1.Text(), sLanguage);
    }
    void UseGerman()
    {
        app.ini.Set("Language", "Language_Code", "Deutsch");
        InitializeTranslator(app);
        ASSERT_EQ(app.objTranslator.sLanguage, "Deutsch");
    }
    Texts aListed() const
    {
        Texts aLanguages;
        for (std::int32_t l = 0; l < frm.List1.ListCount(); ++l)
            aLanguages.push_back(frm.List1.List(l));
        return aLanguages;
    }

    TestApplication app;
    frmLanguage& frm = app.frmLanguage;
};

}  // namespace

TEST_F(LanguageDialog, HasItsCaptionsLetterByLetter)
{
    Open([this] {
        EXPECT_EQ(frm.Caption(), "Language");
        EXPECT_EQ(frm.lblLanguage.Caption(), "Select a Language:");
        EXPECT_EQ(frm.cmdEditLanguageFile.Caption(), "&Edit Language");
        EXPECT_EQ(frm.cmdHelpLanguage.Caption(), "&Help");
        EXPECT_EQ(frm.cmdSelectFont.Caption(), "&Font");
        EXPECT_EQ(frm.cmdDone.Caption(), "&Done");
        EXPECT_EQ(frm.cmdCancel.Caption(), "&Cancel");
    });
}

TEST_F(LanguageDialog, ListsTheLanguagesThatHaveAFileOfThisProduct)
{
    app.files.AddFile("/program/Languages/-Varnel.txt", "\"A file without a name\"\n");

    Open([this] {
        EXPECT_EQ(aListed(), (Texts{"English", "Deutsch", "Français"}));
        EXPECT_EQ(frm.List1.Text(), "English");
    });
}

TEST_F(LanguageDialog, OffersEnglishAloneWithoutLanguageFiles)
{
    app.folders.own = "/elsewhere";

    Open([this] {
        EXPECT_EQ(aListed(), Texts{"English"});
        EXPECT_EQ(frm.List1.ListIndex(), 0);
        EXPECT_FALSE(frm.cmdEditLanguageFile.Enabled());
    });
}

TEST_F(LanguageDialog, SelectsTheLanguageInUse)
{
    UseGerman();

    Open([this] {
        EXPECT_EQ(frm.List1.Text(), "Deutsch");
        EXPECT_TRUE(frm.cmdEditLanguageFile.Enabled());
    });
}

TEST_F(LanguageDialog, EditsAnyLanguageButEnglish)
{
    Open([this] {
        EXPECT_FALSE(frm.cmdEditLanguageFile.Enabled());
        Choose("Français");
        EXPECT_TRUE(frm.cmdEditLanguageFile.Enabled());
        Choose("English");
        EXPECT_FALSE(frm.cmdEditLanguageFile.Enabled());
    });
}

TEST_F(LanguageDialog, OpensTheSelectedLanguagesFileInTheEditor)
{
    Open([this] {
        Choose("Deutsch");
        frm.cmdEditLanguageFile.UserClicks();
        EXPECT_TRUE(frm.Visible());
    });

    EXPECT_EQ(app.launcher.opened, Texts{std::string("path ") + kGerman});
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(LanguageDialog, SaysSoIfTheFileCannotBeOpened)
{
    app.launcher.can_open = false;

    Open([this] {
        Choose("Deutsch");
        frm.cmdEditLanguageFile.UserClicks();
    });

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].title, "Error");
    EXPECT_EQ(app.windows.boxes[0].text, std::string("Unable to open:\r\n\r\n") + kGerman);
}

TEST_F(LanguageDialog, OpensThePageOnLanguagesForHelp)
{
    Open([this] { frm.cmdHelpLanguage.UserClicks(); });

    ASSERT_EQ(app.launcher.opened.size(), 1u);
    EXPECT_TRUE(app.launcher.opened[0].starts_with("address https://"));
    EXPECT_TRUE(app.launcher.opened[0].ends_with("/FAQ/FAQ-Languages.htm"));
}

TEST_F(LanguageDialog, OpensTheHelpAtItsStartOnF1)
{
    app.sHelpFile = "Varnel.HLP";

    Open([this] { frm.UserPresses("F1"); });

    EXPECT_EQ(app.windows.help_calls, Texts{"Varnel.HLP#-1234"});
}

TEST_F(LanguageDialog, StoresAnotherLanguageForTheNextStart)
{
    Open([this] {
        Choose("Deutsch");
        frm.cmdDone.UserClicks();
        EXPECT_FALSE(frm.Visible());
    });

    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "Deutsch");
    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Your changes will take effect next time you run Varnel");
    EXPECT_EQ(app.windows.boxes[0].title, "Information");
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Information);
    EXPECT_EQ(app.objTranslator.sLanguage, "English");
    EXPECT_EQ(sTranslate(app, "Cancel"), "Cancel");
}

TEST_F(LanguageDialog, SaysNothingAboutTheLanguageInUse)
{
    UseGerman();

    Open([this] { frm.cmdDone.UserClicks(); });

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.ini.written.empty());
    EXPECT_EQ(app.objTranslator.sLanguage, "Deutsch");
}

TEST_F(LanguageDialog, TakesAFontAloneOverAtOnceWithoutAMessage)
{
    app.windows.fonts = {"Noto Serif"};

    Open([this] {
        frm.cmdSelectFont.UserClicks();
        frm.cmdDone.UserClicks();
    });

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(app.ini.written, Texts{"Language/Language_Font=Noto Serif"});
    EXPECT_EQ(app.objTranslator.sLanguageFont, "Noto Serif");
}

TEST_F(LanguageDialog, StoresAFontWithALanguageForTheNextStart)
{
    app.windows.fonts = {"Noto Serif"};

    Open([this] {
        Choose("Deutsch");
        frm.cmdSelectFont.UserClicks();
        frm.cmdDone.UserClicks();
    });

    EXPECT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.ini.Stored("Language", "Language_Font"), "Noto Serif");
    EXPECT_EQ(app.objTranslator.sLanguageFont, "");
}

TEST_F(LanguageDialog, StartsThePickOfAFontWithTheButtonsOwn)
{
    app.objTranslator.sLanguageFont = "Courier";

    Open([this] { frm.cmdSelectFont.UserClicks(); });

    EXPECT_EQ(app.windows.start_fonts, Texts{"Courier"});
}

TEST_F(LanguageDialog, KeepsThePickedFontWhenALaterPickIsCancelled)
{
    app.windows.fonts = {"Noto Serif"};

    Open([this] {
        frm.cmdSelectFont.UserClicks();
        frm.cmdSelectFont.UserClicks();
        EXPECT_EQ(frm.sSelectedFont, "Noto Serif");
    });

    EXPECT_EQ(app.windows.start_fonts.size(), 2u);
}

TEST_F(LanguageDialog, LeavesNoLanguageInTheRunningProgramOnCancel)
{
    UseGerman();
    const std::string sFile = app.files.Content(kGerman);
    app.windows.fonts = {"Noto Serif"};

    for (const auto& fnLeave : std::vector<std::function<void()>>{[this] { frm.cmdCancel.UserClicks(); },
                                                                  [this] { frm.List1.UserPresses("Esc"); },
                                                                  [this] { frm.UserCloses(); }}) {
        app.objTranslator.sLanguage = "English";
        Open([&] {
            frm.cmdSelectFont.UserClicks();
            fnLeave();
            EXPECT_FALSE(frm.Visible());
        });
        EXPECT_EQ(app.objTranslator.sLanguage, "");
        EXPECT_EQ(app.objTranslator.sLanguageFont, "");
    }
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.ini.written.empty());
    EXPECT_EQ(sTranslate(app, "A text that no file knows"), "A text that no file knows");
    EXPECT_EQ(app.files.Content(kGerman), sFile);
}

TEST_F(LanguageDialog, TellsWhetherAnythingChanged)
{
    bool bShowMessage = false;
    app.windows.on_show_modal = [this](Form&) { frm.cmdDone.UserClicks(); };
    EXPECT_FALSE(bSelectLanguage(app, bShowMessage));

    app.windows.fonts = {"Noto Serif"};
    app.windows.on_show_modal = [this](Form&) {
        frm.cmdSelectFont.UserClicks();
        frm.cmdDone.UserClicks();
    };
    EXPECT_TRUE(bSelectLanguage(app, bShowMessage));

    app.windows.on_show_modal = [this](Form&) {
        Choose("Deutsch");
        frm.cmdDone.UserClicks();
    };
    EXPECT_TRUE(bSelectLanguage(app, bShowMessage));
}

TEST_F(LanguageDialog, TakesTheFirstChoiceOverForThePresentRun)
{
    app.locale.lcid = 1031;
    app.windows.on_show_modal = [this](Form&) {
        Choose("Deutsch");
        frm.cmdDone.UserClicks();
    };

    InitializeTranslator(app, SelectFirstLanguage);

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(app.objTranslator.sLanguage, "Deutsch");
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "Deutsch");
    EXPECT_EQ(sTranslate(app, "Cancel"), "Abbrechen");
}

TEST_F(LanguageDialog, DefaultsToEnglishForGoodWhenTheFirstChoiceIsCancelled)
{
    app.locale.lcid = 1031;
    app.windows.on_show_modal = [this](Form&) { frm.cmdCancel.UserClicks(); };

    InitializeTranslator(app, SelectFirstLanguage);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_TRUE(app.windows.boxes[0].text.starts_with("Unable to locate Language file: "));
    EXPECT_TRUE(app.windows.boxes[0].text.ends_with("\nDefaulting to English"));
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Warning);
    EXPECT_EQ(app.objTranslator.sLanguage, "English");
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
}
