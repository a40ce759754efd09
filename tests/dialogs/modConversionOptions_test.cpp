// The dialog of conversion options.
#include "src/dialogs/modConversionOptions.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

namespace
{

using Texts = std::vector<std::string>;

constexpr const char* kFull = "2,4^3^TRUE^60^title^description^date^author^copyright^model^type^";

class ConversionOptions : public testing::Test
{
protected:
    ConversionOptions() { frmConversionOptions_Load(app); }

    /// Opens the dialog; a person does fnActs and leaves by Done.
    std::string sEdit(const std::string& sOptions, const std::function<void()>& fnActs = {})
    {
        app.windows.on_show_modal = [this, fnActs](Form&) {
            frm.SetVisible(true);
            if (fnActs)
                fnActs();
            if (frm.Visible())
                frm.cmdDone.UserClicks();
        };
        return sEditConversionOptions(app, sOptions);
    }

    TestApplication app;
    frmConversionOptions& frm = app.frmConversionOptions;
};

}  // namespace

TEST_F(ConversionOptions, HasItsCaptionsLetterByLetter)
{
    EXPECT_EQ(frm.Caption(), "Conversion Options");
    EXPECT_EQ(frm.SSTab1.Tabs(), (Texts{"TIFF", "JPEG", "Tags"}));
    EXPECT_EQ(frm.fraFromTiff.Caption(), "Converting FROM a TIFF file");
    EXPECT_EQ(frm.lblTiffPagesToDo.Caption(),
              "For MULTI-PAGE tiff files, specify which pages you want converted (i.e. \"1-3\" or "
              "\"2,5-10\" or \"*\" for all:");
    EXPECT_EQ(frm.fraToTiff.Caption(), "Converting TO a TIFF file");
    EXPECT_EQ(frm.cbTiffAppendTo.Caption(), "Append to an existing TIFF file");
    EXPECT_EQ(frm.lblCompressionMethod.Caption(), "Compression Method");
    EXPECT_EQ(frm.rbTiffCompressionMethod(0).Caption(), "No compression");
    EXPECT_EQ(frm.rbTiffCompressionMethod(1).Caption(), "LZW Compression");
    EXPECT_EQ(frm.rbTiffCompressionMethod(2).Caption(), "RLE Compression (1bpp)");
    EXPECT_EQ(frm.rbTiffCompressionMethod(3).Caption(), "CCITT3 Compression (1bpp)");
    EXPECT_EQ(frm.rbTiffCompressionMethod(4).Caption(), "CCITT4 Compression (1bpp)");
    EXPECT_EQ(frm.fraJpegQuality.Caption(), "JPEG and JPEG2000");
    EXPECT_EQ(frm.lblQuality.Caption(), "Quality");
    EXPECT_EQ(frm.lblTitle.Caption(), "Title");
    EXPECT_EQ(frm.lblDescription.Caption(), "Description");
    EXPECT_EQ(frm.lblDate.Caption(), "Date");
    EXPECT_EQ(frm.lblAuthor.Caption(), "Author");
    EXPECT_EQ(frm.lblCopyright.Caption(), "Copyright");
    EXPECT_EQ(frm.lblEquipmentModel.Caption(), "Equipment Model");
    EXPECT_EQ(frm.lblEquipmentType.Caption(), "Equipment Type");
    EXPECT_EQ(frm.cmdDone.Caption(), "&Done");
    EXPECT_EQ(frm.cmdCancel.Caption(), "&Cancel");
}

TEST_F(ConversionOptions, ShowsEveryFieldInItsInput)
{
    sEdit(kFull, [this] {
        EXPECT_EQ(frm.txtTiffPagesToDo.Text(), "2,4");
        EXPECT_EQ(frm.rbTiffCompressionMethod.lChosen(), 3);
        EXPECT_EQ(frm.cbTiffAppendTo.Value(), 1);
        EXPECT_EQ(frm.HScrollValue.Value(), 60);
        EXPECT_EQ(frm.LabelValue.Caption(), "60");
        EXPECT_EQ(frm.txtTitle.Text(), "title");
        EXPECT_EQ(frm.txtDescription.Text(), "description");
        EXPECT_EQ(frm.txtDate.Text(), "date");
        EXPECT_EQ(frm.txtAuthor.Text(), "author");
        EXPECT_EQ(frm.txtCopyright.Text(), "copyright");
        EXPECT_EQ(frm.txtEquipmentModel.Text(), "model");
        EXPECT_EQ(frm.txtEquipmentType.Text(), "type");
    });
}

TEST_F(ConversionOptions, GivesBackWhatItShowed)
{
    EXPECT_EQ(sEdit(kFull), kFull);

    const std::string sDefault =
        "1^0^FALSE^75^'Varnel'^A batch picture tool^1/1/2007^Orbelan, Inc.^Orbelan 2006^^^";
    EXPECT_EQ(sEdit(sDefault), sDefault);
}

TEST_F(ConversionOptions, JoinsWhatAPersonEntered)
{
    const std::string sOptions = sEdit("1^0^FALSE^75^^^^^^^^", [this] {
        frm.txtTiffPagesToDo.UserTypes("2-5");
        frm.rbTiffCompressionMethod(4).UserClicks();
        frm.cbTiffAppendTo.UserToggles();
        frm.SSTab1.UserChooses(2);
        frm.HScrollValue.UserScrolls(88);
        frm.SSTab1.UserChooses(3);
        frm.txtTitle.UserTypes("My trip");
    });

    EXPECT_EQ(sOptions, "2-5^4^TRUE^88^My trip^^^^^^^");
}

TEST_F(ConversionOptions, DropsCaretsFromEveryTextAndFromItsInput)
{
    const std::string sOptions = sEdit(kFull, [this] {
        frm.txtTiffPagesToDo.UserTypes("^2^");
        frm.SSTab1.UserChooses(3);
        for (TextBox* pText : {&frm.txtTitle, &frm.txtDescription, &frm.txtDate, &frm.txtAuthor,
                               &frm.txtCopyright, &frm.txtEquipmentModel, &frm.txtEquipmentType})
            pText->UserTypes("a^b");
    });

    EXPECT_EQ(sOptions, "2^3^TRUE^60^ab^ab^ab^ab^ab^ab^ab^");
    EXPECT_EQ(frm.txtTitle.Text(), "ab");
}

TEST_F(ConversionOptions, ReadsANonNumericQualityAsHundred)
{
    EXPECT_EQ(sEdit("1^0^FALSE^best^^^^^^^^"), "1^0^FALSE^100^^^^^^^^");
}

TEST_F(ConversionOptions, ReadsACaretAloneAsEmptyPagesNoCompressionAndFullQuality)
{
    EXPECT_EQ(sEdit("^"), "^0^FALSE^100^^^^^^^^");
}

TEST_F(ConversionOptions, KeepsItsFirstValuesForATextWithoutACaret)
{
    EXPECT_EQ(sEdit("7"), "^0^FALSE^75^^^^^^^^");
    EXPECT_EQ(sEdit(""), "^0^FALSE^75^^^^^^^^");
}

TEST_F(ConversionOptions, ForgetsTheInputsOfItsLastUse)
{
    sEdit(kFull);

    EXPECT_EQ(sEdit(""), "^0^FALSE^75^^^^^^^^");
    EXPECT_EQ(frm.LabelValue.Caption(), "75");
}

TEST_F(ConversionOptions, WritesFiveForACompressionThatItDoesNotOffer)
{
    EXPECT_EQ(sEdit("1^7^FALSE^75^^^^^^^^", [this] { EXPECT_EQ(frm.rbTiffCompressionMethod.lChosen(), -1); }),
              "1^5^FALSE^75^^^^^^^^");
}

TEST_F(ConversionOptions, PutsAQualityBeyondTheScaleAtItsEnd)
{
    EXPECT_EQ(sEdit("1^0^FALSE^250^^^^^^^^"), "1^0^FALSE^100^^^^^^^^");
    EXPECT_EQ(sEdit("1^0^FALSE^-3^^^^^^^^"), "1^0^FALSE^0^^^^^^^^");
}

TEST_F(ConversionOptions, CopiesTheQualityToItsLabelWhileDragged)
{
    sEdit(kFull, [this] {
        frm.SSTab1.UserChooses(2);
        frm.HScrollValue.UserDrags(42);
        EXPECT_EQ(frm.LabelValue.Caption(), "42");
        frm.HScrollValue.UserScrolls(43);
        EXPECT_EQ(frm.LabelValue.Caption(), "43");
    });
}

TEST_F(ConversionOptions, HandsTheQualityToTheImageLibraryAtOnce)
{
    sEdit(kFull, [this] {
        frm.SSTab1.UserChooses(2);
        frm.HScrollValue.UserScrolls(33);
        EXPECT_EQ(app.images.calls, Texts{});
    });

    EXPECT_EQ(app.images.calls, Texts{"JPEGQuality 33"});
    EXPECT_EQ(app.frmMain.lJPEGQuality, 33);
}

TEST_F(ConversionOptions, ShowsThePageOfTheChosenTab)
{
    sEdit(kFull, [this] {
        EXPECT_TRUE(frm.fraTiff.Visible() && !frm.fraJpeg.Visible() && !frm.fraTags.Visible());
        frm.SSTab1.UserChooses(2);
        EXPECT_TRUE(!frm.fraTiff.Visible() && frm.fraJpeg.Visible() && !frm.fraTags.Visible());
        frm.SSTab1.UserChooses(3);
        EXPECT_TRUE(!frm.fraTiff.Visible() && !frm.fraJpeg.Visible() && frm.fraTags.Visible());
    });

    sEdit(kFull, [this] { EXPECT_EQ(frm.SSTab1.SelectedTab(), 1); });
}

TEST_F(ConversionOptions, ChangesNothingOnCancelEscapeOrClose)
{
    for (const auto& fnLeave : std::vector<std::function<void()>>{
             [this] { frm.cmdCancel.UserClicks(); }, [this] { frm.UserPresses("Esc"); },
             [this] { frm.txtTiffPagesToDo.UserPresses("Esc"); }, [this] { frm.UserCloses(); }}) {
        const std::string sOptions = sEdit(kFull, [&] {
            frm.txtTiffPagesToDo.UserTypes("9");
            fnLeave();
            EXPECT_FALSE(frm.Visible());
        });
        EXPECT_EQ(sOptions, kFull);
    }
    EXPECT_EQ(app.images.calls, Texts{});
}

TEST_F(ConversionOptions, OpensItsHelpTopicOnF1)
{
    app.sHelpFile = "Varnel.HLP";

    sEdit(kFull, [this] { EXPECT_TRUE(frm.UserPresses("F1")); });

    EXPECT_EQ(app.windows.help_calls, Texts{"Varnel.HLP#11"});
}

TEST_F(ConversionOptions, TranslatesItsCaptionsAfreshAtEachLoad)
{
    app.objTranslator.dictTranslations = {{"Quality", "Qualität"}, {"Qualität", "twice"}, {"title", "Titel"}};

    for (int lTime = 0; lTime < 2; ++lTime)
        sEdit(kFull, [this] {
            EXPECT_EQ(frm.lblQuality.Caption(), "Qualität");
            EXPECT_EQ(frm.txtTitle.Text(), "title");
        });
}
