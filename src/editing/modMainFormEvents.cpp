// Connects the main form.
#include "src/editing/modMainFormEvents.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "src/dispatch/modDispatcher.h"
#include "src/editing/file_fields.h"
#include "src/editing/modDrop.h"
#include "src/editing/modFileCommands.h"
#include "src/editing/modFileFields.h"
#include "src/editing/modTaskCommands.h"
#include "src/engine/modJobRun.h"
#include "src/forms/Application.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"

using Routine = std::function<void(Application&)>;
using Fields = FileFields (*)(frmMain&);

/// What a person does with a set of file fields.
using FieldsRoutine = void (*)(Application&, const FileFields&);

static std::function<void()> FieldsHandler(Application& app, Fields fnFields, FieldsRoutine fnRoutine)
{
    return Handler(app, [fnFields, fnRoutine](Application& a) { fnRoutine(a, fnFields(a.frmMain)); });
}

// An entry chosen from the recent texts counts as one typed. Filling the list chooses one too, but quietly.
static void ConnectText(Application& app, ComboBox& cb, Fields fnFields, FieldsRoutine fnChange)
{
    cb.OnChange = FieldsHandler(app, fnFields, fnChange);
    cb.OnClick = FieldsHandler(app, fnFields, fnChange);
    cb.OnDrop = HandlerOf<const std::vector<std::string>&>(
        app, [&cb](Application&, const std::vector<std::string>& aPaths) {
            if (!aPaths.empty())
                cb.SetText(aPaths.front());
        });
}

static void ConnectFields(Application& app, Fields fnFields)
{
    const FileFields objFields = fnFields(app.frmMain);
    ConnectText(app, objFields.cbOriginalFile, fnFields, OriginalFile_Change);
    ConnectText(app, objFields.cbTargetFile, fnFields, TargetFile_Change);
    objFields.cbFileTypeOriginal.OnClick = FieldsHandler(app, fnFields, FileTypeOriginal_Click);
    objFields.cbFileTypeTarget.OnClick = FieldsHandler(app, fnFields, FileTypeTarget_Click);
    objFields.cbDoSubfolders.OnClick = Handler(app, DoSubfolders_Click);
    objFields.cbSaveToOriginalFolder.OnClick = FieldsHandler(app, fnFields, SaveToOriginalFolder_Click);
    objFields.cmdLaunchOriginal.OnClick = FieldsHandler(
        app, fnFields,
        [](Application& a, const FileFields& f) { LaunchFileOrFolder(a, f.cbOriginalFile.Text()); });
    objFields.cmdLaunchTarget.OnClick = FieldsHandler(app, fnFields, [](Application& a, const FileFields& f) {
        LaunchFileOrFolder(a, f.cbTargetFile.Text());
    });
}

static void ConnectPickers(Application& app)
{
    frmMain& frm = app.frmMain;
    const auto Connect = [&app](CommandButton& cmd, Fields fnFields, FieldsRoutine fnRoutine) {
        cmd.OnClick = FieldsHandler(app, fnFields, fnRoutine);
    };
    Connect(frm.cmdSelectSourceFile, ConversionFields, SelectSourceFile);
    Connect(frm.cmdSelectSourceFolder, ConversionFields, SelectSourceFolder);
    Connect(frm.cmdSelectTargetFile, ConversionFields, SelectTargetFile);
    Connect(frm.cmdSelectTargetFolder, ConversionFields, SelectTargetFolder);
    Connect(frm.cmdSelectSourceFileSpecialized, SpecializedFields, SelectSourceFile);
    Connect(frm.cmdSelectSourceFolderSpecialized, SpecializedFields, SelectSourceFolder);
    Connect(frm.cmdSelectTargetFileSpecialized, SpecializedFields, SelectTargetFile);
    Connect(frm.cmdSelectTargetFolderSpecialized, SpecializedFields, SelectTargetFolder);
    frm.picSelectTargetFile.OnClick = [&frm] { frm.cmdSelectTargetFile.Click(); };
    frm.cmdSelectCommandLine.OnClick = Handler(app, SelectCommandLine);
    frm.cmdLaunchCommandLine.OnClick = Handler(app, LaunchCommandLine);
    frm.cmdImageConversionAdvancedOptions.OnClick = Handler(app, EditConversionOptions);
}

static bool fgToDo_KeyDown(Application& app, const std::string& sKey)
{
    if (sKey != "Del")
        return false;
    app.frmMain.keyRemove.Click();
    return true;
}

static void ConnectTables(Application& app)
{
    frmMain& frm = app.frmMain;
    frm.fgToDo.OnBeforeRowChange = Handler(app, fgToDo_BeforeRowChange);
    frm.fgToDo.OnLeaveCell = Handler(app, fgToDo_LeaveCell);
    frm.fgToDo.OnEnterCell = Handler(app, fgToDo_EnterCell);
    frm.fgToDo.OnDblClick = Handler(app, EditConversionOptions);
    frm.fgToDo.OnDrop = Handler(app, fgToDo_Drop);
    frm.fgToDo.OnKeyDown = Handler(app, fgToDo_KeyDown);
    frm.fgLog.OnEnterCell = Handler(app, fgLog_EnterCell, Act::MidRun);
    frm.ts.OnClick = Handler(app, ts_Click, Act::MidRun);
    frm.rbActionToDo.OnClick = Handler(app, rbActionToDo_Click);
}

// A toolbar button, the menu item beside it and the form's own button are one command.
static void ConnectCommand(Application& app, std::initializer_list<Action*> aActions,
                           const Routine& fnRoutine, Act eAct = Act::Ordinary)
{
    for (Action* pAction : aActions)
        pAction->OnClick = Handler(app, fnRoutine, eAct);
}

static void AddTask(Application& app)
{
    if (app.frmMain.keyAdd.Enabled() && AddFileToConvertGUI(app))
        app.frmMain.fgToDo.Refresh();
}

static void RemoveTask(Application& app)
{
    if (app.frmMain.keyRemove.Enabled())
        RemoveActionItem(app);
}

static void OpenJob(Application& app)
{
    std::string sPath;
    ConversionJobOpen(app, sPath);
}

static void ConnectCommands(Application& app)
{
    frmMain& frm = app.frmMain;
    frmMainMDI& mdi = app.frmMainMDI;
    ConnectCommand(app, {&frm.keyNew, &mdi.mnuNewConversionJob}, ConversionJobNew);
    ConnectCommand(app, {&frm.keyOpen, &frm.KeyOpen, &mdi.mnuOpenConversionJob}, OpenJob);
    ConnectCommand(app, {&frm.KeySave, &mdi.mnuSaveConversionJob}, ConversionJobSave);
    ConnectCommand(app, {&frm.KeySaveAs, &mdi.mnuSaveConversionJobAs}, ConversionJobSaveAs);
    ConnectCommand(app, {&frm.KeySaveLogAsConversionJob, &mdi.mnuSaveLogAsConversionJob},
                   SaveLogAsConversionJob);
    ConnectCommand(app, {&frm.keyAdd, &mdi.mnuAddConversionJob}, AddTask);
    ConnectCommand(app, {&frm.keyRemove, &mdi.mnuRemoveConversionJob}, RemoveTask);
    ConnectCommand(app, {&frm.keyUpdate, &mdi.mnuUpdateConversionJob},
                   [](Application& a) { ConversionJobUpdate(a); });
    ConnectCommand(app, {&frm.keyConvert, &mdi.mnuBeginConversionJob}, BeginConversion);
    ConnectCommand(app, {&frm.keyRewind, &mdi.mnuRewindConversionJob}, ConversionJobRewind);
    ConnectCommand(app, {&frm.keyPause, &mdi.mnuPause}, ConversionJobPause, Act::MidRun);
    ConnectCommand(app, {&mdi.mnuConversionOptions}, EditConversionOptions);
    frm.keyConvert.SetShortcut("F5");
    frm.keyNew.SetShortcut("Ctrl+N");
    frm.keyOpen.SetShortcut("Ctrl+O");
    frm.KeySave.SetShortcut("Ctrl+S");
    frm.keyAdd.SetShortcut("Ctrl+Return");
    frm.cmdAdd.OnClick = Handler(app, AddTask);
    frm.cmdRemove.OnClick = Handler(app, RemoveTask);
    frm.cmdUpdate.OnClick = Handler(app, [](Application& a) { ConversionJobUpdate(a); });
    frm.cmdPause.OnClick = Handler(app, ConversionJobPause, Act::MidRun);
}

void ConnectMainForm(Application& app)
{
    ConnectFields(app, ConversionFields);
    ConnectFields(app, SpecializedFields);
    ConnectPickers(app);
    ConnectTables(app);
    ConnectCommands(app);
}
