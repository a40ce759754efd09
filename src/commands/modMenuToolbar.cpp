// Enables the commands that make sense in the current state.
#include "src/commands/modMenuToolbar.h"

#include <initializer_list>

#include "src/forms/Application.h"

constexpr std::int32_t kColNumber = 2;
constexpr std::int32_t kColPass = 10;
constexpr std::int32_t kLogTab = 2;

static void EnableForIdle(frmMain& frm)
{
    const Grid& fgToDo = frm.fgToDo;
    const bool bPausedPartWay = frm.lResumeFileIndex != 0;
    const bool bHasTasks = fgToDo.TextMatrix(1, kColNumber) != "*" && fgToDo.Rows() >= 2;
    const bool bTaskSelected = fgToDo.Row() >= 1 && fgToDo.Row() < fgToDo.Rows() - 1 &&
                               !fgToDo.TextMatrix(fgToDo.Row(), kColNumber).empty();
    frm.keyOpen.SetEnabled(true);
    frm.keyNew.SetEnabled(true);
    frm.keyAdd.SetEnabled(true);
    frm.keyConvert.SetEnabled(bPausedPartWay || bHasTasks);
    frm.keyPause.SetEnabled(false);
    frm.keyRewind.SetEnabled(bPausedPartWay || !fgToDo.TextMatrix(1, kColPass).empty());
    frm.keyRemove.SetEnabled(bTaskSelected);
    frm.keyUpdate.SetEnabled(bTaskSelected && frm.bDirtyConversionItem);
    if (frm.ts.SelectedTab() == kLogTab)
        for (Action* pKey : {&frm.keyRemove, &frm.keyUpdate, &frm.keyAdd})
            pKey->SetEnabled(false);
}

// While a paused run finishes its file, even Pause is disabled: another run can't start yet.
static void EnableForRun(frmMain& frm)
{
    frm.keyPause.SetEnabled(frm.bRunning);
    for (Action* pKey : {&frm.keyRemove, &frm.keyUpdate, &frm.keyAdd, &frm.keyConvert, &frm.keyRewind,
                         &frm.keyOpen, &frm.keyNew})
        pKey->SetEnabled(false);
}

static void CopyToMenus(const frmMain& frm, frmMainMDI& mdi)
{
    mdi.mnuSaveLogAsConversionJob.SetEnabled(frm.KeySaveLogAsConversionJob.Enabled());
    mdi.mnuSaveConversionJob.SetEnabled(frm.KeySave.Enabled());
    mdi.mnuSaveConversionJobAs.SetEnabled(frm.KeySaveAs.Enabled());
    mdi.mnuOpenConversionJob.SetEnabled(frm.keyOpen.Enabled());
    mdi.mnuNewConversionJob.SetEnabled(frm.keyNew.Enabled());
    mdi.mnuBeginConversionJob.SetEnabled(frm.keyConvert.Enabled());
    mdi.mnuAddConversionJob.SetEnabled(frm.keyAdd.Enabled());
    mdi.mnuRemoveConversionJob.SetEnabled(frm.keyRemove.Enabled());
    mdi.mnuUpdateConversionJob.SetEnabled(frm.keyUpdate.Enabled());
    mdi.mnuPause.SetEnabled(frm.keyPause.Enabled());
    mdi.mnuRewindConversionJob.SetEnabled(frm.keyRewind.Enabled());
}

void UpdateMenuToolbar(Application& app)
{
    frmMain& frm = app.frmMain;
    frmMainMDI& mdi = app.frmMainMDI;
    const bool bInRun = frm.bRunning || frm.lRunsInProgress > 0;
    if (bInRun)
        EnableForRun(frm);
    else
        EnableForIdle(frm);
    frm.KeyOpen.SetEnabled(!bInRun);
    frm.KeySave.SetEnabled(!bInRun && frm.fgToDo.Rows() > 1);
    frm.KeySaveAs.SetEnabled(!bInRun && frm.fgToDo.Rows() > 1);
    frm.KeySaveLogAsConversionJob.SetEnabled(!bInRun && frm.fgLog.Rows() > 2);
    CopyToMenus(frm, mdi);
    for (Action* pItem :
         {&mdi.mnuOptions, &mdi.mnuLanguage, &mdi.mnuScheduleConversionJob, &mdi.mnuConversionOptions})
        pItem->SetEnabled(!bInRun);
    for (Control* pFields : std::initializer_list<Control*>{&frm.frameCF, &frm.frameSpecializedAction,
                                                            &frm.rbActionToDo(0), &frm.rbActionToDo(1)})
        pFields->SetEnabled(!bInRun);
    for (Frame& framePages : frm.framePicNav)
        framePages.SetEnabled(!bInRun);
    for (CommandButton& cmdReload : frm.cmdReloadImage)
        cmdReload.SetEnabled(!bInRun);
    frm.cmdUpdate.SetEnabled(mdi.mnuUpdateConversionJob.Enabled());
    frm.cmdRemove.SetEnabled(mdi.mnuRemoveConversionJob.Enabled());
    frm.cmdAdd.SetEnabled(mdi.mnuAddConversionJob.Enabled());
    frm.cmdPause.SetEnabled(mdi.mnuPause.Enabled());
}
