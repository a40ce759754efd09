// Connects the parameter panel.
#include "src/panel/modPanelEvents.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/commands/modDesktop.h"
#include "src/dispatch/modDispatcher.h"
#include "src/editing/modFileFields.h"
#include "src/editing/modItemFromGUI.h"
#include "src/editing/modRefreshGUI.h"
#include "src/forms/Application.h"
#include "src/panel/modParameterPanel.h"
#include "src/panel/modPreview.h"
#include "src/panel/number_entries.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kPreviewTab = 3;
constexpr std::int32_t kRequestEntry = -1;
constexpr const char* kSalesAddress = "sales@orbelan.example";

static void Panel_Change(Application& app, PanelInput eInput)
{
    if (app.bInternalGridChange)
        return;
    MarkWrongNumbers(app);
    UpdateGUIforSpecialProcessBasedOnUserInput(app, eInput);
    MarkWrongNumbers(app);  // a resize may have replaced the other number
    MarkDirty(app);
}

// Moving the bar up counts up: its value falls. Only whole numbers are stepped, and the parameter's range
// isn't looked at.
static void VScroll_Change(Application& app, const NumberEntry& objEntry)
{
    const std::int32_t lStep = objEntry.VScroll.Value() < objEntry.lLastStep ? 1 : -1;
    const char cSign = app.svc.objLocale.cDecimalSign();
    if (bIsNumeric(objEntry.txt.Text(), cSign)) {
        const std::int64_t lNumber = std::int64_t{lToLong(objEntry.txt.Text(), cSign)} + lStep;
        if (lNumber > std::numeric_limits<std::int32_t>::max() ||
            lNumber < std::numeric_limits<std::int32_t>::min())
            throw clsRaisedError(kErrOverflow, "Overflow");
        objEntry.txt.SetText(std::to_string(lNumber));
    }
    objEntry.lLastStep = objEntry.VScroll.Value();
    objEntry.txt.SetFocus();
}

static void ChooseColour(Application& app)
{
    frmMain& frm = app.frmMain;
    const std::int32_t lShown = frm.lblColorSelected1.BackColor().value_or(0);
    const std::optional<std::int32_t> lPicked = app.svc.objWindows.lPickColour(lShown);
    if (!lPicked || *lPicked == lShown)
        return;
    frm.lblColorSelected1.SetBackColor(*lPicked);
    frm.lblColorSelected2.SetCaption(std::to_string(*lPicked));
    Panel_Change(app, PanelInput::PickedColour);
}

static bool bHasColour(const SpecialProcessRow& objRow)
{
    return std::any_of(objRow.aParameters.begin(), objRow.aParameters.end(),
                       [](const SpecialProcessParameter& obj) { return obj.eSlot == InputSlot::Colour; });
}

static void lblColorSelected1_Click(Application& app)
{
    if (const SpecialProcessRow* pRow = pSpecialProcess(lSelectedProcess(app)); pRow && bHasColour(*pRow))
        ChooseColour(app);
}

static bool bAgrees(Application& app, const std::string& sText)
{
    return app.svc.objWindows.MsgBox(sText, sTranslate(app, "Special Request"), BoxIcon::Information,
                                     BoxButtons::OkCancel) == BoxAnswer::Ok;
}

static void RequestProcess(Application& app)
{
    app.frmMain.cbSpecialProcesses.SetListIndex(0);
    if (!bAgrees(app, sTranslate(app,
                                 "You can request that Orbelan add a special processing feature.  "
                                 "Continue?")))
        return;
    const std::string sDetails = sTranslate(
        app, "Please give us a detailed description of what it is you want to have done to the files.");
    const std::string sMail = sTranslate(app, " EMail to: ");
    const std::string sSoftware =
        sTranslate(app, "Clicking OK will open the EMail software automatically for you.");
    if (bAgrees(app, sDetails + "\n\n" + sMail + kSalesAddress + "\n\n" + sSoftware) &&
        !bOpenAddress(app, std::string("mailto:") + kSalesAddress))
        app.svc.objWindows.MsgBox(sTranslate(app, "Unable to open:") + "\r\n\r\n" + kSalesAddress,
                                  sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
}

void cbSpecialProcesses_Click(Application& app)
{
    frmMain& frm = app.frmMain;
    if (app.bInternalGridChange)
        return;
    if (lSelectedProcess(app) == kRequestEntry) {
        RequestProcess(app);
    } else {
        RefreshGUIOptions(app);
        if (frm.frameImageViewer.Visible() && frm.tsImageViewer.SelectedTab() == kPreviewTab)
            UpdateGUIforSpecialProcessBasedOnUserInput(app, PanelInput::Text1b);
    }
    MarkDirty(app);
}

static void LaunchField_Change(Application& app)
{
    if (!app.bInternalGridChange)
        MarkDirty(app);
}

static void ConnectLaunchFields(Application& app)
{
    frmMain& frm = app.frmMain;
    for (ComboBox* pField : {&frm.cbCommandLine, &frm.cbCommandLineArguments})
        pField->OnChange = pField->OnClick = Handler(app, LaunchField_Change);
    for (ComboBox* pField : {&frm.cbCommandLineWindowState, &frm.cbCommandLineThreadPriority})
        pField->OnClick = Handler(app, LaunchField_Change);
    frm.txtCommandLineWaitTimeInSeconds.OnChange = Handler(app, LaunchField_Change);
}

static std::function<void()> PanelHandler(Application& app, PanelInput eInput)
{
    return Handler(app, [eInput](Application& a) { Panel_Change(a, eInput); });
}

static void ConnectInputs(Application& app)
{
    frmMain& frm = app.frmMain;
    frm.txtSpecialProcessTextEntry1.OnChange = PanelHandler(app, PanelInput::Text1);
    frm.txtSpecialProcessTextEntry1b.OnChange = PanelHandler(app, PanelInput::Text1b);
    frm.txtSpecialProcessTextEntry1c.OnChange = PanelHandler(app, PanelInput::Text1c);
    frm.txtSpecialProcessTextEntry2.OnChange = PanelHandler(app, PanelInput::Text2);
    frm.cbSpecialProcessBoolean.OnClick = PanelHandler(app, PanelInput::Choice);
    frm.cbSpecialProcessListBox.OnClick = PanelHandler(app, PanelInput::Choice);
    frm.cmdSpecialProcessShowDialog.OnClick = Handler(app, ChooseColour);
    frm.lblColorSelected1.OnClick = Handler(app, lblColorSelected1_Click);
    for (const NumberEntry& objEntry : NumberEntries(frm))
        objEntry.VScroll.OnChange = Handler(app, [objEntry](Application& a) { VScroll_Change(a, objEntry); });
}

void ConnectPanel(Application& app)
{
    frmMain& frm = app.frmMain;
    app.objHooks.UpdatePreview = [](Application& a) {
        UpdateGUIforSpecialProcessBasedOnUserInput(a, PanelInput::None);
    };
    frm.cbSpecialProcesses.OnClick = Handler(app, cbSpecialProcesses_Click);
    frm.tsSpecialProcessParameters.OnClick = Handler(app, RefreshSpecialProcessTab);
    ConnectInputs(app);
    ConnectLaunchFields(app);
}
