// Loads the main forms.
#include "src/shell/modMainForms.h"

#include "src/forms/Application.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/shell/modMenuToolbar.h"

void LoadMainForms(Application& app)
{
    if (app.bMainFormsLoaded)
        return;
    app.bMainFormsLoaded = true;
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    FillInFileTypeComboBoxSpecialProcess(app);
    SetUpToDoGrid(app);
    SetUpLogGrid(app);
    SelectGridRow(app, app.frmMain.fgToDo);
    UpdateMenuToolbar(app);
}
