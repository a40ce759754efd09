// Sets captions and tool tips.
#include "src/shell/modMainTexts.h"

#include "src/forms/Application.h"

static void SetTexts(Control& objCommand, const char* sCaption, const char* sToolTip = "")
{
    objCommand.SetCaption(sCaption);
    objCommand.SetToolTipText(sToolTip);
}

static void SetToolBarTexts(frmMain& frm)
{
    SetTexts(frm.keyNew, "New", "Create a new conversion job");
    SetTexts(frm.keyOpen, "Open");
    SetTexts(frm.keyAdd, "&Add", "Add a conversion Task");
    SetTexts(frm.keyRemove, "&Delete", "Remove currently selected conversion Task (Del)");
    SetTexts(frm.keyUpdate, "&Update", "Update currently selected conversion task");
    SetTexts(frm.keyRewind, "Rewind", "Rewind to the first conversion task");
    SetTexts(frm.keyConvert, "Convert", "Begin Conversion (F5)");
    SetTexts(frm.keyPause, "&Pause", "Pause conversion process");
    SetTexts(frm.KeySave, "Save Conversion Job");
    SetTexts(frm.KeySaveAs, "Save Conversion Job As..");
    SetTexts(frm.KeyOpen, "Open Conversion Job..");
    SetTexts(frm.KeySaveLogAsConversionJob, "Save &Log as a Conversion Job");
}

static void SetFileMenuTexts(frmMainMDI& frm)
{
    SetTexts(frm.mnuFile, "&File");
    SetTexts(frm.mnuNewConversionJob, "&New Conversion Job");
    SetTexts(frm.mnuOpenConversionJob, "&Open Conversion Job");
    SetTexts(frm.mnuSaveConversionJob, "Save Conversion Job");
    SetTexts(frm.mnuSaveConversionJobAs, "Save Conversion Job &As..");
    SetTexts(frm.mnuSaveLogAsConversionJob, "Save &Log as a Conversion Job");
    SetTexts(frm.mnuLanguage, "Lan&guage");
    SetTexts(frm.mnuOptions, "Options");
    SetTexts(frm.mnuExit, "E&xit");
}

static void SetConversionMenuTexts(frmMainMDI& frm)
{
    SetTexts(frm.mnuConversion, "C&onversion");
    SetTexts(frm.mnuAddConversionJob, "&Add Conversion Job");
    SetTexts(frm.mnuRemoveConversionJob, "&Delete Conversion Job");
    SetTexts(frm.mnuUpdateConversionJob, "&Update Conversion Job");
    SetTexts(frm.mnuBeginConversionJob, "&Begin Conversion Job");
    SetTexts(frm.mnuPause, "&Pause Conversion Job");
    SetTexts(frm.mnuRewindConversionJob, "&Rewind Conversion Job");
    SetTexts(frm.mnuScheduleConversionJob, "&Schedule a Conversion Job");
    SetTexts(frm.mnuConversionOptions, "Conversion &Options");
}

static void SetHelpMenuTexts(frmMainMDI& frm)
{
    SetTexts(frm.mnuHelp, "&Help");
    SetTexts(frm.mnuLaunchHelpFile, "&Help File");
    SetTexts(frm.mnuHelpOnLine, "Web Help (most up to date)");
    SetTexts(frm.cmdHelpCommandLine, "Using the &Command Line");
    SetTexts(frm.mnuAbout, "&About");
    SetTexts(frm.mnuHelpProductHomePage, "Product Home &Page");
    SetTexts(frm.mnuHelpProductUpdates, "Product &Updates");
    SetTexts(frm.mnuOrbelanHomePage, "&Orbelan Home Page");
    SetTexts(frm.mnuAdditionalImageConversionTools, "Additional Image Conversion Tools");
}

void SetMainTexts(Application& app)
{
    app.frmMainMDI.SetCaption("Varnel");
    SetToolBarTexts(app.frmMain);
    SetFileMenuTexts(app.frmMainMDI);
    SetConversionMenuTexts(app.frmMainMDI);
    SetHelpMenuTexts(app.frmMainMDI);
}
