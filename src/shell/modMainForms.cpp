// Loads the main forms.
#include "src/shell/modMainForms.h"

#include "src/base/raised_error.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/catalogue/modSpecialProcessLists.h"
#include "src/editing/modItemFromGUI.h"
#include "src/editing/modMainFormEvents.h"
#include "src/editing/modRefreshGUI.h"
#include "src/forms/Application.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/panel/modPanelEvents.h"
#include "src/panel/modParameterPanel.h"
#include "src/settings/modSettings.h"
#include "src/shell/modMainTexts.h"
#include "src/translator/modTranslateForm.h"

static void FillLists(Application& app)
{
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    FillInSpecialProcessesComboBox(app);
    FillInFileTypeComboBoxSpecialProcess(app);
    FillInCommandLineWindowStateComboBox(app);
    FillInCommandLineThreadPriorityComboBox(app);
}

// The settings may hold a choice that the process doesn't offer: it then starts with its first values.
static void ShowFieldsOfAction(Application& app)
{
    try {
        RefreshGUIOptions(app);
    } catch (const clsRaisedError&) {
        const std::int32_t lSpecialProcess = lSelectedProcess(app);
        app.frmMain.asSP_Details.at(static_cast<std::size_t>(lSpecialProcess)) =
            kFirstStartImageConversionOptions + sFirstStartDetails(*pSpecialProcess(lSpecialProcess));
        RefreshGUIOptions(app);
    }
}

void LoadMainForms(Application& app)
{
    if (app.bMainFormsLoaded)
        return;
    app.bMainFormsLoaded = true;
    ReadIniFile(app, app.frmMainMDI);
    // Now, before lists, tables and panel are filled with texts that are translated already: a translation
    // must not be taken for an English text.
    SetMainTexts(app);
    TranslateForm(app, app.frmMainMDI);
    TranslateForm(app, app.frmMain);
    FillLists(app);
    SetUpToDoGrid(app);
    SetUpLogGrid(app);
    app.objHooks.ShowProcessPanel = ShowProcessPanel;
    ReadIniFile(app, [&app] { ShowFieldsOfAction(app); });
    ConnectMainForm(app);
    ConnectPanel(app);
    SelectGridRow(app, app.frmMain.fgToDo);
}
