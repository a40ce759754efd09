// Fills the parameter panel from the catalogue.
#include "src/panel/modParameterPanel.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "src/base/number_text.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/editing/modItemFromGUI.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/panel/number_entries.h"
#include "src/platform/locale.h"
#include "src/translator/modTranslator.h"

// Both colours are set, so that the text stays readable under a dark theme.
constexpr std::int32_t kWrongBackColor = 0xC8C8FF;  // light red
constexpr std::int32_t kWrongForeColor = 0;

static const SpecialProcessRow* pSelectedRow(const Application& app)
{
    return pSpecialProcess(lSelectedProcess(app));
}

static void SetUpTabs(Application& app, const SpecialProcessRow* pRow)
{
    TabStrip& ts = app.frmMain.tsSpecialProcessParameters;
    std::vector<std::string> aCaptions;
    if (pRow)
        for (const char* sCaption : pRow->aTabs)
            aCaptions.push_back(sTranslate(app, sCaption));
    ts.SetTabs(aCaptions);
    ts.SetVisible(!aCaptions.empty());
    ts.SelectTab(1);
}

static void FillInChoices(Application& app, const SpecialProcessRow& objRow)
{
    ComboBox& cb = app.frmMain.cbSpecialProcessListBox;
    const RedrawLock objLock(cb);
    cb.Clear();
    for (const char* sChoice : objRow.aChoices)
        cb.AddItem(sTranslate(app, sChoice));
}

static std::string sShown(const SpecialProcessRow& objRow, const SpecialProcessParameter& objParameter,
                          const DetailsValue& objValue, char cDecimalSign)
{
    const double* pNumber = std::get_if<double>(&objValue);
    if (!pNumber)
        return std::to_string(std::get<std::int32_t>(objValue));
    return objRow.bTwoDecimals && objParameter.eType == FieldType::Double
               ? sFormatTwoDecimals(*pNumber, cDecimalSign)
               : sFromDouble(*pNumber, cDecimalSign);
}

// A check box or a list of two may show a Boolean the wrong way round. That is intentional: see
// bShownInverted.
static std::int32_t lShownChoice(const SpecialProcessParameter& objParameter, const DetailsValue& objValue)
{
    if (const std::int32_t* pIndex = std::get_if<std::int32_t>(&objValue))
        return *pIndex;
    return std::get<bool>(objValue) != objParameter.bShownInverted ? 1 : 0;
}

static void ShowColour(frmMain& frm, std::int32_t lColour)
{
    frm.lblColorSelected1.SetBackColor(lColour);
    frm.lblColorSelected2.SetCaption(std::to_string(lColour));
}

static void ShowChoice(ComboBox& cb, const SpecialProcessRow& objRow, std::int32_t lIndex)
{
    // Only a resize survives details with an interpolation that doesn't exist.
    if (objRow.lSpecialProcess != SP_TRANSFORM_RESIZE || lIndex < cb.ListCount())
        cb.SetListIndex(lIndex);
}

static void ShowValue(Application& app, const SpecialProcessRow& objRow,
                      const SpecialProcessParameter& objParameter, const DetailsValue& objValue)
{
    frmMain& frm = app.frmMain;
    const auto aEntries = NumberEntries(frm);
    switch (objParameter.eSlot) {
        case InputSlot::Check:
            frm.cbSpecialProcessBoolean.SetCaption(sTranslate(app, objParameter.sLabel));
            frm.cbSpecialProcessBoolean.SetValue(lShownChoice(objParameter, objValue));
            break;
        case InputSlot::List:
            ShowChoice(frm.cbSpecialProcessListBox, objRow, lShownChoice(objParameter, objValue));
            break;
        case InputSlot::Colour:
            ShowColour(frm, std::get<std::int32_t>(objValue));
            break;
        default:
            if (const NumberEntry* pEntry = pNumberEntry(aEntries, objParameter.eSlot))
                pEntry->txt.SetText(sShown(objRow, objParameter, objValue, app.svc.objLocale.cDecimalSign()));
    }
}

static void ShowValues(Application& app, const SpecialProcessRow& objRow)
{
    frmMain& frm = app.frmMain;
    DetailsValues aValues = aFreshValues(objRow);
    ReadDetails(objRow, frm.asSP_Details.at(static_cast<std::size_t>(objRow.lSpecialProcess)),
                frm.sImageConversionOptions, aValues, app.svc.objLocale.cDecimalSign());
    for (std::size_t n = 0; n < objRow.aParameters.size(); ++n)
        ShowValue(app, objRow, objRow.aParameters[n], aValues[n]);
}

void ShowProcessPanel(Application& app)
{
    const InternalChange objChange(app);
    const SpecialProcessRow* pRow = pSelectedRow(app);
    app.frmMain.lblSpecialProcessDescription.SetCaption(
        pRow && pRow->sDescription ? sTranslate(app, pRow->sDescription) : "");
    SetUpTabs(app, pRow);
    if (pRow && pRow->lSpecialProcess != SP_LAUNCH) {
        FillInChoices(app, *pRow);
        ShowValues(app, *pRow);
    }
    RefreshSpecialProcessTab(app);
    MarkWrongNumbers(app);
}

static void HideInputs(frmMain& frm)
{
    for (const NumberEntry& objEntry : NumberEntries(frm)) {
        objEntry.txt.SetVisible(false);
        objEntry.VScroll.SetVisible(false);
        objEntry.lblDescription.SetVisible(false);
    }
    for (Control* pInput : std::initializer_list<Control*>{
             &frm.cbSpecialProcessBoolean, &frm.cbSpecialProcessListBox, &frm.cmdSpecialProcessShowDialog,
             &frm.lblColorSelected1, &frm.lblColorSelected2})
        pInput->SetVisible(false);
}

static void ShowLabel(Application& app, Label& lbl, const SpecialProcessParameter& objParameter)
{
    lbl.SetCaption(sTranslate(app, objParameter.sLabel));
    lbl.SetVisible(true);
}

static void ShowInput(Application& app, const SpecialProcessParameter& objParameter)
{
    frmMain& frm = app.frmMain;
    const auto aEntries = NumberEntries(frm);
    switch (objParameter.eSlot) {
        case InputSlot::Check:
            frm.cbSpecialProcessBoolean.SetVisible(true);
            break;
        case InputSlot::List:
            frm.cbSpecialProcessListBox.SetVisible(true);
            ShowLabel(app, frm.lblSpecialProcessTextEntryDescription1, objParameter);
            break;
        case InputSlot::Colour:
            frm.cmdSpecialProcessShowDialog.SetVisible(true);
            frm.lblColorSelected1.SetVisible(true);
            frm.lblColorSelected2.SetVisible(true);
            break;
        default:
            if (const NumberEntry* pEntry = pNumberEntry(aEntries, objParameter.eSlot)) {
                pEntry->txt.SetVisible(true);
                pEntry->VScroll.SetVisible(true);
                ShowLabel(app, pEntry->lblDescription, objParameter);
            }
    }
}

void RefreshSpecialProcessTab(Application& app)
{
    frmMain& frm = app.frmMain;
    HideInputs(frm);
    frm.lblSpecialProcessTextEntryDescription1.SetBackColor({});  // that of button faces
    const SpecialProcessRow* pRow = pSelectedRow(app);
    if (!pRow)
        return;
    for (const SpecialProcessParameter& objParameter : pRow->aParameters)
        if (objParameter.lTab == frm.tsSpecialProcessParameters.SelectedTab())
            ShowInput(app, objParameter);
}

static bool bIsGoodNumber(const std::string& sEntry, FieldType eType, char cDecimalSign)
{
    if (!bIsNumeric(sEntry, cDecimalSign))
        return false;
    if (eType == FieldType::Double)
        return true;
    const double dRounded = std::nearbyint(dToDouble(sEntry, cDecimalSign));
    return dRounded >= std::numeric_limits<std::int32_t>::min() &&
           dRounded <= std::numeric_limits<std::int32_t>::max();
}

static void Mark(Application& app, TextBox& txt, bool bGood)
{
    txt.SetBackColor(bGood ? Control::Color() : kWrongBackColor);
    txt.SetForeColor(bGood ? Control::Color() : kWrongForeColor);
    txt.SetToolTipText(bGood ? "" : sTranslate(app, "This is not a valid number. 0 is used instead."));
}

void MarkWrongNumbers(Application& app)
{
    const SpecialProcessRow* pRow = pSelectedRow(app);
    if (!pRow)
        return;
    const auto aEntries = NumberEntries(app.frmMain);
    for (const SpecialProcessParameter& objParameter : pRow->aParameters)
        if (const NumberEntry* pEntry = pNumberEntry(aEntries, objParameter.eSlot))
            Mark(app, pEntry->txt,
                 bIsGoodNumber(pEntry->txt.Text(), objParameter.eType, app.svc.objLocale.cDecimalSign()));
}
