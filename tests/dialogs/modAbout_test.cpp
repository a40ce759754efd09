// The about box.
#include "src/dialogs/modAbout.h"

#include <gtest/gtest.h>

#include <regex>

#include "src/dialogs/modDialogs.h"
#include "tests/fakes/test_application.h"

namespace
{

class About : public testing::Test
{
protected:
    About() { ConnectDialogs(app); }

    void Open(const std::function<void()>& fnActs)
    {
        app.windows.on_show_modal = [this, fnActs](Form&) {
            frm.SetVisible(true);
            fnActs();
        };
        app.frmMainMDI.mnuAbout.UserClicks();
        EXPECT_EQ(app.windows.modal_forms.back(), &frm);
    }

    TestApplication app;
    frmAbout& frm = app.frmAbout;
};

}  // namespace

TEST_F(About, ShowsProductDescriptionAndVersion)
{
    Open([this] {
        EXPECT_EQ(frm.lblProduct.Caption(), "Varnel");
        EXPECT_EQ(frm.lblDescription.Caption(), "Batch conversion of image files");
        EXPECT_TRUE(std::regex_match(frm.lblVersion.Caption(), std::regex("Version \\d+\\.\\d+\\.\\d+")));
    });
}

TEST_F(About, NamesTheLicenceAndEachLibrary)
{
    Open([this] {
        const std::string sText = frm.txtLibraries.Text();
        for (const char* sName :
             {"MIT License", "Cairo", "fontconfig", "FreeType", "giflib", "ISA-L", "lcms2", "libdeflate",
              "libjpeg-turbo", "libpng", "libtiff", "OpenJPEG", "Qt"})
            EXPECT_NE(sText.find(sName), std::string::npos) << sName;
        frm.txtLibraries.UserTypes("mine");
        EXPECT_EQ(frm.txtLibraries.Text(), sText);
    });
}

TEST_F(About, ClosesByItsButtonEscapeOrClose)
{
    for (const auto& fnLeave :
         std::vector<std::function<void()>>{[this] { frm.cmdOK.UserClicks(); },
                                            [this] { frm.UserPresses("Esc"); }, [this] { frm.UserCloses(); }})
        Open([&] {
            fnLeave();
            EXPECT_FALSE(frm.Visible());
        });
}

TEST_F(About, TranslatesItsTextsButNoNames)
{
    app.objTranslator.dictTranslations = {
        {"&OK", "&Gut"}, {"Version", "Fassung"}, {"Varnel", "wrong"}, {"About", "Info"}};

    for (int lTime = 0; lTime < 2; ++lTime)
        Open([this] {
            EXPECT_EQ(frm.Caption(), "Info");
            EXPECT_EQ(frm.cmdOK.Caption(), "&Gut");
            EXPECT_TRUE(frm.lblVersion.Caption().starts_with("Fassung "));
            EXPECT_EQ(frm.lblProduct.Caption(), "Varnel");
        });
}
