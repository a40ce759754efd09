// Writes the form over a row.
#include "src/editing/modItemToGrid.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/editing/file_fields.h"
#include "src/editing/modItemFromGUI.h"
#include "src/forms/Application.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/settings/modMRU.h"

// The writer for requests leaves the blanks out; readers accept both.
static std::string sFlagsFromFields(const FileFields& objFields, bool bByLibrary)
{
    return std::string(objFields.cbDoSubfolders.Value() == 1 ? "R" : "") +
           (objFields.cbSaveToOriginalFolder.Value() == 1 ? " G" : "") + (bByLibrary ? " M" : "");
}

// False on the header and the marker row.
static bool bIsTaskRow(const Grid& fgToDo, std::int32_t lRow)
{
    return lRow >= 1 && lRow < fgToDo.Rows() - 1;
}

static void WriteFile(Grid& fgToDo, TaskColumn eColumn, TaskColumn eTypeColumn, const std::string& sPath,
                      std::int32_t lType)
{
    fgToDo.SetTextMatrix(fgToDo.Row(), eColumn, sTrim(sPath));
    fgToDo.SetTextMatrix(fgToDo.Row(), eTypeColumn, std::to_string(lType));
}

static void WriteFiles(Grid& fgToDo, const FileFields& objFields)
{
    const std::int32_t lTargetType = lSelectedFileType(objFields.cbFileTypeTarget);
    WriteFile(fgToDo, kColOriginal, kColOriginalType, objFields.cbOriginalFile.Text(),
              lSelectedFileType(objFields.cbFileTypeOriginal));
    WriteFile(fgToDo, kColTarget, kColTargetType, objFields.cbTargetFile.Text(), lTargetType);
    fgToDo.SetTextMatrix(fgToDo.Row(), kColTargetExtension, sFileTypeExtension(lTargetType, false));
}

static void WriteOriginalExtension(Grid& fgToDo, const ComboBox& cbFileType, bool bShown)
{
    fgToDo.SetTextMatrix(fgToDo.Row(), kColOriginalExtension,
                         bShown ? sFileTypeExtension(lSelectedFileType(cbFileType), false) : "");
}

void UpdateGridFromGUI_ConversionItem(Application& app)
{
    frmMain& frm = app.frmMain;
    Grid& fgToDo = frm.fgToDo;
    if (!bIsTaskRow(fgToDo, fgToDo.Row()))
        return;
    const FileFields objFields = ConversionFields(frm);
    const bool bByLibrary = frm.lConversionMethod == 1;
    fgToDo.SetTextMatrix(fgToDo.Row(), kColFlags, sFlagsFromFields(objFields, bByLibrary));
    fgToDo.SetTextMatrix(fgToDo.Row(), kColDetails, frm.sImageConversionOptions);
    fgToDo.SetTextMatrix(fgToDo.Row(), kColAction, "C");
    WriteFiles(fgToDo, objFields);
    WriteOriginalExtension(fgToDo, objFields.cbFileTypeOriginal, bByLibrary);
    UpdateMRUs(app);
}

// A launch has a program and arguments in the place of files, and no types.
static void WriteLaunch(Application& app)
{
    frmMain& frm = app.frmMain;
    WriteFile(frm.fgToDo, kColOriginal, kColOriginalType, frm.cbCommandLine.Text(), kNoFileType);
    WriteFile(frm.fgToDo, kColTarget, kColTargetType, frm.cbCommandLineArguments.Text(), kNoFileType);
    frm.fgToDo.SetTextMatrix(frm.fgToDo.Row(), kColOriginalExtension, "");
    frm.fgToDo.SetTextMatrix(frm.fgToDo.Row(), kColTargetExtension, "");
}

void UpdateGridFromGUI_SpecializedItem(Application& app)
{
    frmMain& frm = app.frmMain;
    Grid& fgToDo = frm.fgToDo;
    if (!bIsTaskRow(fgToDo, fgToDo.Row()))
        return;
    const FileFields objFields = SpecializedFields(frm);
    const std::int32_t lSpecialProcess = lSelectedProcess(app);
    const bool bLaunch = lSpecialProcess == SP_LAUNCH;
    fgToDo.SetTextMatrix(fgToDo.Row(), kColFlags, bLaunch ? "" : sFlagsFromFields(objFields, false));
    fgToDo.SetTextMatrix(fgToDo.Row(), kColDetails,
                         bLaunch ? sLaunchDetailsFromGUI(app)
                                 : frm.asSP_Details.at(static_cast<std::size_t>(lSpecialProcess)));
    fgToDo.SetTextMatrix(fgToDo.Row(), kColAction, "S" + std::to_string(lSpecialProcess));
    if (bLaunch) {
        WriteLaunch(app);
    } else {
        WriteFiles(fgToDo, objFields);
        WriteOriginalExtension(fgToDo, objFields.cbFileTypeOriginal, true);
    }
    UpdateMRUs(app);
}
