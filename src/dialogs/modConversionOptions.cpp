// Fills the dialog of conversion options and reads it back.
#include "src/dialogs/modConversionOptions.h"

#include <array>
#include <utility>

#include "src/base/text.h"
#include "src/commands/modHelp.h"
#include "src/conversion/modConversionDetails.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/platform/image_library.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslateForm.h"

constexpr std::int32_t kNoCompressionChosen = 5;
constexpr std::int32_t kFirstQuality = 75;
constexpr const char* kSeparator = "^";

static std::array<TextBox*, 8> aTextBoxes(frmConversionOptions& frm)
{
    return {&frm.txtTiffPagesToDo, &frm.txtTitle,     &frm.txtDescription,    &frm.txtDate,
            &frm.txtAuthor,        &frm.txtCopyright, &frm.txtEquipmentModel, &frm.txtEquipmentType};
}

static void SetCaptions(frmConversionOptions& frm)
{
    const std::pair<Control*, const char*> aCaptions[] = {
        {&frm.fraFromTiff, "Converting FROM a TIFF file"},
        // The bracket is never closed: it is part of the key of the translations.
        {&frm.lblTiffPagesToDo,
         "For MULTI-PAGE tiff files, specify which pages you want converted "
         "(i.e. \"1-3\" or \"2,5-10\" or \"*\" for all:"},
        {&frm.fraToTiff, "Converting TO a TIFF file"},
        {&frm.cbTiffAppendTo, "Append to an existing TIFF file"},
        {&frm.lblCompressionMethod, "Compression Method"},
        {&frm.rbTiffCompressionMethod(0), "No compression"},
        {&frm.rbTiffCompressionMethod(1), "LZW Compression"},
        {&frm.rbTiffCompressionMethod(2), "RLE Compression (1bpp)"},
        {&frm.rbTiffCompressionMethod(3), "CCITT3 Compression (1bpp)"},
        {&frm.rbTiffCompressionMethod(4), "CCITT4 Compression (1bpp)"},
        {&frm.fraJpegQuality, "JPEG and JPEG2000"},
        {&frm.lblQuality, "Quality"},
        {&frm.lblTitle, "Title"},
        {&frm.lblDescription, "Description"},
        {&frm.lblDate, "Date"},
        {&frm.lblAuthor, "Author"},
        {&frm.lblCopyright, "Copyright"},
        {&frm.lblEquipmentModel, "Equipment Model"},
        {&frm.lblEquipmentType, "Equipment Type"},
        {&frm.cmdDone, "&Done"},
        {&frm.cmdCancel, "&Cancel"},
    };
    frm.SetCaption("Conversion Options");
    for (const auto& [pControl, sCaption] : aCaptions)
        pControl->SetCaption(sCaption);
    frm.SSTab1.SetTabs({"TIFF", "JPEG", "Tags"});
    // Data and a number aren't translated.
    frm.LabelValue.SetTag(kTranslateFalse);
    for (TextBox* pText : aTextBoxes(frm))
        pText->SetTag(kTranslateFalse);
}

static void ShowPage(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    Frame* const aPages[] = {&frm.fraTiff, &frm.fraJpeg, &frm.fraTags};
    for (std::int32_t lTab = 1; lTab <= 3; ++lTab)
        aPages[lTab - 1]->SetVisible(lTab == frm.SSTab1.SelectedTab());
}

static void ShowQuality(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    frm.LabelValue.SetCaption(std::to_string(frm.HScrollValue.Value()));
}

static void SetQuality(Application& app, std::int32_t lQuality)
{
    app.frmConversionOptions.HScrollValue.SetValue(lQuality);
    ShowQuality(app);
}

static void ChooseCompression(frmConversionOptions& frm, std::int32_t lCompression)
{
    for (std::int32_t l = 0; l < frm.rbTiffCompressionMethod.Count(); ++l)
        frm.rbTiffCompressionMethod(l).SetValue(l == lCompression);
}

static void SetFirstValues(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    for (TextBox* pText : aTextBoxes(frm))
        pText->SetText("");
    ChooseCompression(frm, 0);
    frm.cbTiffAppendTo.SetValue(0);
    SetQuality(app, kFirstQuality);
}

static void ConversionOptions_Cancel(Application& app)
{
    app.frmConversionOptions.Unload();
}

void frmConversionOptions_Load(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    SetCaptions(frm);
    frm.SSTab1.OnClick = Handler(app, ShowPage);
    frm.HScrollValue.OnChange = Handler(app, ShowQuality);
    frm.HScrollValue.OnScroll = Handler(app, ShowQuality);
    frm.cmdDone.OnClick = Handler(app, ConversionOptions_Done);
    frm.cmdCancel.OnClick = Handler(app, ConversionOptions_Cancel);
    ConnectDialog(app, frm, frm.cmdCancel, kHelpConversionOptions);
    SetFirstValues(app);
    frm.SSTab1.SelectTab(1);
    TranslateForm(app, frm);
}

void SetUpConversionOptions(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    if (!bContains(frm.sOptions, kSeparator))
        return;
    ConversionDetails objDetails;
    SplitImageConversionOptions(frm.sOptions, app.svc.objLocale.cDecimalSign(), objDetails);
    ChooseCompression(frm, objDetails.lCompression);
    frm.txtTiffPagesToDo.SetText(objDetails.sPagesToDo);
    frm.cbTiffAppendTo.SetValue(objDetails.bAppendToTiff ? 1 : 0);
    SetQuality(app, objDetails.lQuality);
    frm.txtTitle.SetText(objDetails.objTexts.sTitle);
    frm.txtDescription.SetText(objDetails.objTexts.sDescription);
    frm.txtDate.SetText(objDetails.objTexts.sDateTime);
    frm.txtAuthor.SetText(objDetails.objTexts.sAuthor);
    frm.txtCopyright.SetText(objDetails.objTexts.sCopyright);
    frm.txtEquipmentModel.SetText(objDetails.objTexts.sEquipmentModel);
    frm.txtEquipmentType.SetText(objDetails.objTexts.sEquipmentType);
}

static ConversionDetails DetailsOfInputs(const frmConversionOptions& frm)
{
    ConversionDetails objDetails;
    const std::int32_t lChosen = frm.rbTiffCompressionMethod.lChosen();
    objDetails.sPagesToDo = frm.txtTiffPagesToDo.Text();
    objDetails.lCompression = lChosen >= 0 ? lChosen : kNoCompressionChosen;
    objDetails.bAppendToTiff = frm.cbTiffAppendTo.Value() == 1;
    objDetails.lQuality = frm.HScrollValue.Value();
    objDetails.objTexts.sTitle = frm.txtTitle.Text();
    objDetails.objTexts.sDescription = frm.txtDescription.Text();
    objDetails.objTexts.sDateTime = frm.txtDate.Text();
    objDetails.objTexts.sAuthor = frm.txtAuthor.Text();
    objDetails.objTexts.sCopyright = frm.txtCopyright.Text();
    objDetails.objTexts.sEquipmentModel = frm.txtEquipmentModel.Text();
    objDetails.objTexts.sEquipmentType = frm.txtEquipmentType.Text();
    return objDetails;
}

void ConversionOptions_Done(Application& app)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    for (TextBox* pText : aTextBoxes(frm))
        pText->SetText(sReplaceAll(pText->Text(), kSeparator, ""));
    frm.sOptions = sJoinImageConversionOptions(DetailsOfInputs(frm));
    app.frmMain.lJPEGQuality = frm.HScrollValue.Value();
    app.svc.ImageFile1.SetJPEGQuality(frm.HScrollValue.Value());
    frm.Unload();
}

std::string sEditConversionOptions(Application& app, const std::string& sOptions)
{
    frmConversionOptions& frm = app.frmConversionOptions;
    frm.sOptions = sOptions;
    frmConversionOptions_Load(app);
    SetUpConversionOptions(app);
    app.svc.objWindows.ShowModal(frm);
    return frm.sOptions;
}
