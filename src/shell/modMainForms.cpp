// Loads the main forms.
#include "src/shell/modMainForms.h"

#include "src/catalogue/modSpecialProcessLists.h"
#include "src/editing/modMainFormEvents.h"
#include "src/editing/modRefreshGUI.h"
#include "src/forms/Application.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/settings/modSettings.h"

static void FillLists(Application& app)
{
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    FillInSpecialProcessesComboBox(app);
    FillInFileTypeComboBoxSpecialProcess(app);
    FillInCommandLineWindowStateComboBox(app);
    FillInCommandLineThreadPriorityComboBox(app);
}

void LoadMainForms(Application& app)
{
    if (app.bMainFormsLoaded)
        return;
    app.bMainFormsLoaded = true;
    ReadIniFile(app, app.frmMainMDI);
    FillLists(app);
    SetUpToDoGrid(app);
    SetUpLogGrid(app);
    ReadIniFile(app, [&app] { RefreshGUIOptions(app); });
    ConnectMainForm(app);
    SelectGridRow(app, app.frmMain.fgToDo);
}
