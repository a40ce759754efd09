// Sets up both tables; copies tasks between rows, run requests and the form.
#include "src/job/modTaskTables.h"

#include <array>
#include <vector>

#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileTypes.h"
#include "src/platform/locale.h"
#include "src/translator/modTranslator.h"

constexpr const char* kMarker = "*";
constexpr std::size_t kFlagsRead = 9;          ///< later characters are ignored
constexpr std::int32_t kLaterMarkerFont = 12;  ///< points

static void FormatCells(Grid& fgGrid, std::int32_t lRow, std::int32_t lFirst, std::int32_t lLast,
                        const CellFormat& objFormat)
{
    for (std::int32_t lCol = lFirst; lCol <= lLast; ++lCol)
        fgGrid.SetFormat(lRow, lCol, objFormat);
}

static void WriteToDoHeaders(Application& app, Grid& fgToDo)
{
    const std::array<std::string, kToDoColumns> aHeaders{"",
                                                         "",
                                                         "#",
                                                         sTranslate(app, "Do"),
                                                         sTranslate(app, "Original File(s)"),
                                                         "",
                                                         sTranslate(app, "Type"),
                                                         sTranslate(app, "Target File(s)"),
                                                         "",
                                                         sTranslate(app, "Type"),
                                                         sTranslate(app, "Pass")};
    for (std::int32_t lCol = 0; lCol < kToDoColumns; ++lCol)
        fgToDo.SetTextMatrix(0, lCol, aHeaders[static_cast<std::size_t>(lCol)]);
}

// The first setup formats the three cells up to the marker; later ones format only the cell next to it, in a
// larger font.
static void FormatMarkerRow(Application& app, Grid& fgToDo)
{
    const bool bFirstTime = !app.frmMain.bToDoGridWasSetUp;
    app.frmMain.bToDoGridWasSetUp = true;
    CellFormat objFormat;
    objFormat.eAlignment = CellAlignment::Centre;
    objFormat.bBold = !app.bDoubleByteLocale;
    fgToDo.SetRow(1);
    if (bFirstTime) {
        fgToDo.SetCol(kColFlags);
        fgToDo.SetColSel(kColNumber);
        FormatCells(fgToDo, 1, kColFlags, kColNumber, objFormat);
    } else {
        fgToDo.SetCol(kColDetails);
        objFormat.lFontSize = kLaterMarkerFont;
        FormatCells(fgToDo, 1, kColDetails, kColDetails, objFormat);
    }
}

void SetUpToDoGrid(Application& app)
{
    SetUpToDoGrid(app, app.frmMain.fgToDo);
}

void SetUpToDoGrid(Application& app, Grid& fgToDo)
{
    const InternalChange objChange(app);
    const RedrawLock objLock(fgToDo);
    fgToDo.SetRows(1);
    WriteToDoHeaders(app, fgToDo);
    SelectGridRow(app, fgToDo);
    CellFormat objHeader;
    objHeader.eAlignment = CellAlignment::Centre;
    objHeader.bBold = !app.bDoubleByteLocale;
    FormatCells(fgToDo, 0, 0, kToDoColumns - 1, objHeader);
    fgToDo.SetRow(0);
    SelectGridRow(app, fgToDo);
    fgToDo.SetRows(2);
    fgToDo.SetTextMatrix(1, kColNumber, kMarker);
    FormatMarkerRow(app, fgToDo);
    SelectGridRow(app, fgToDo);
}

void SetUpLogGrid(Application& app)
{
    Grid& fgLog = app.frmMain.fgLog;
    const InternalChange objChange(app, InternalChange::After::Clear);
    const RedrawLock objLock(fgLog);
    fgLog.SetRows(1);
    fgLog.SetRows(2);
    const std::array<std::string, kLogColumns - kColNumber> aHeaders{sTranslate(app, "Job #"),
                                                                     sTranslate(app, "Do"),
                                                                     "",
                                                                     "",
                                                                     "",
                                                                     sTranslate(app, "Target File"),
                                                                     "",
                                                                     sTranslate(app, "Type"),
                                                                     sTranslate(app, "Pass"),
                                                                     sTranslate(app, "Status")};
    for (std::int32_t lCol = kColNumber; lCol < kLogColumns; ++lCol)
        fgLog.SetTextMatrix(0, lCol, aHeaders[static_cast<std::size_t>(lCol - kColNumber)]);
    fgLog.SetRow(0);
    SelectGridRow(app, fgLog);
    CellFormat objHeader;
    objHeader.eAlignment = CellAlignment::Centre;
    FormatCells(fgLog, 0, 0, kLogColumns - 1, objHeader);
    fgLog.SetRow(1);
    SelectGridRow(app, fgLog);
}

void SelectGridRow(Application& app, Grid& fgGrid)
{
    const InternalChange objChange(app);
    fgGrid.SelectRow();
}

std::string sFlagsFromRequest(const clsConversionOptions& objOptions)
{
    return std::string(objOptions.bDoSubfolders ? "R" : "") + (objOptions.bSaveInOriginalFolder ? "G" : "") +
           (objOptions.lConversionMethod == 1 ? "M" : "");
}

bool bFlagIsSet(const std::string& sFlags, char cFlag)
{
    return sFlags.find(cFlag) < kFlagsRead;
}

// Tabs separate cells, so they can't be part of one.
static std::string sCell(const std::string& sText)
{
    return sReplaceAll(sText, "\t", " ");
}

static void InsertTask(Application& app, const std::vector<std::string>& aCells)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    const InternalChange objChange(app);
    fgToDo.AddItem(sJoin(aCells, "\t"), fgToDo.Rows() - 1);
    fgToDo.Refresh();
    fgToDo.SetRow(fgToDo.Rows() - 1);
    SelectGridRow(app, fgToDo);
}

static void SetUpIfNeverDone(Application& app)
{
    if (app.frmMain.fgToDo.TextMatrix(1, kColNumber).empty())
        SetUpToDoGrid(app);
}

void AddTaskRow(Application& app, const clsConversionOptions& objOptions)
{
    if (bContains(objOptions.sActionToDo, "C"))
        AddConversionTaskRow(app, objOptions);
    else
        AddSpecialTaskRow(app, objOptions);
}

void AddConversionTaskRow(Application& app, const clsConversionOptions& objOptions)
{
    SetUpIfNeverDone(app);
    const bool bByLibrary = objOptions.lConversionMethod == 1;
    InsertTask(app, {sFlagsFromRequest(objOptions), sCell(objOptions.sExtraParams),
                     std::to_string(app.frmMain.fgToDo.Rows() - 1), "C", sCell(objOptions.sOriginalFile),
                     std::to_string(objOptions.lOriginalFileType),
                     bByLibrary ? sFileTypeExtension(objOptions.lOriginalFileType, false) : "",
                     sCell(objOptions.sTargetFile), std::to_string(objOptions.lTargetFileType),
                     sFileTypeExtension(objOptions.lTargetFileType, false)});
}

void AddSpecialTaskRow(Application& app, const clsConversionOptions& objOptions)
{
    SetUpIfNeverDone(app);
    InsertTask(
        app,
        {sFlagsFromRequest(objOptions),
         bIsTaskProcess(objOptions.lSpecialProcess) ? sCell(objOptions.sExtraParams) : " ",
         std::to_string(app.frmMain.fgToDo.Rows() - 1), "S" + std::to_string(objOptions.lSpecialProcess),
         sCell(objOptions.sOriginalFile), std::to_string(objOptions.lOriginalFileType),
         sFileTypeExtension(objOptions.lOriginalFileType, false), sCell(objOptions.sTargetFile),
         std::to_string(objOptions.lTargetFileType), sFileTypeExtension(objOptions.lTargetFileType, false)});
}

static void ReadRow(Application& app, clsConversionOptions& objOptions, std::int32_t lRow)
{
    const Grid& fgToDo = app.frmMain.fgToDo;
    const char cSign = app.svc.objLocale.cDecimalSign();
    const std::string sFlags = fgToDo.TextMatrix(lRow, kColFlags);
    objOptions.bSaveInOriginalFolder = bFlagIsSet(sFlags, 'G');
    objOptions.bDoSubfolders = bFlagIsSet(sFlags, 'R');
    objOptions.bExportFormula = bFlagIsSet(sFlags, 'F');
    objOptions.sExtraParams = fgToDo.TextMatrix(lRow, kColDetails);
    objOptions.sActionToDo = fgToDo.TextMatrix(lRow, kColAction);
    if (bContains(objOptions.sActionToDo, "C"))
        objOptions.lConversionMethod = bFlagIsSet(sFlags, 'M') ? 1 : 2;
    objOptions.sOriginalFile = fgToDo.TextMatrix(lRow, kColOriginal);
    const std::string sOriginalType = fgToDo.TextMatrix(lRow, kColOriginalType);
    if (!sOriginalType.empty())
        objOptions.lOriginalFileType = lToLong(sOriginalType, cSign);
    objOptions.sTargetFile = fgToDo.TextMatrix(lRow, kColTarget);
    const std::string sTargetType = fgToDo.TextMatrix(lRow, kColTargetType);
    if (!sTargetType.empty())
        objOptions.lTargetFileType = lToLong(sTargetType, cSign);
    if (bContains(objOptions.sActionToDo, "S"))
        objOptions.lSpecialProcess = lToLong(sReplaceAll(objOptions.sActionToDo, "S", ""), cSign);
}

void LoadRequestFromGridRow(Application& app, clsConversionOptions& objOptions, std::int32_t lRow)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    if (lRow < 1 || lRow >= fgToDo.Rows() - 1)
        return;
    const InternalChange objChange(app);
    fgToDo.SetRow(lRow);
    ReadRow(app, objOptions, lRow);
}

void RemoveActionItem(Application& app)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    if (fgToDo.TextMatrix(1, kColNumber).empty()) {
        SetUpToDoGrid(app);
        return;
    }
    if (fgToDo.Rows() == 2 && fgToDo.Row() <= 1)
        return;
    if (fgToDo.Row() >= 1) {
        if (fgToDo.TextMatrix(fgToDo.Row(), kColNumber) == kMarker)
            return;
        RemoveAllFilesWithJobNumber(app, fgToDo.Row());
    }
    if (fgToDo.OnEnterCell)
        fgToDo.OnEnterCell();  // show the task that is now selected
}

void RemoveAllFilesWithJobNumber(Application& app, std::int32_t lRow)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    if (lRow < 1 || lRow >= fgToDo.Rows() - 1)
        return;
    const RedrawLock objLock(fgToDo);
    fgToDo.RemoveItem(lRow);
    for (std::int32_t l = 1; l <= fgToDo.Rows() - 2; ++l)
        fgToDo.SetTextMatrix(l, kColNumber, std::to_string(l));
}

void FormatPassCell(Grid& fgGrid, std::int32_t lRow, bool bPassed)
{
    CellFormat objFormat;
    objFormat.ePicture = bPassed ? CellPicture::imagePass : CellPicture::imageFail;
    objFormat.eAlignment = CellAlignment::Centre;
    objFormat.lForeColor = kWindowBackground;
    objFormat.lBackColor = kWindowBackground;
    fgGrid.SetTextMatrix(lRow, kColPass, bPassed ? "+" : "-");
    fgGrid.SetFormat(lRow, kColPass, objFormat);
}

void RestorePassMark(Grid& fgGrid, std::int32_t lRow)
{
    const std::string sMark = fgGrid.TextMatrix(lRow, kColPass);
    if (sMark == "+" || sMark == "-")
        FormatPassCell(fgGrid, lRow, sMark == "+");
}

std::string sTabbedRow(const Grid& fgGrid, std::int32_t lRow)
{
    std::string sRow;
    for (std::int32_t lCol = 0; lCol < fgGrid.Cols(); ++lCol)
        sRow += fgGrid.TextMatrix(lRow, lCol) + "\t";
    return sRow;
}

bool bIsTaskProcess(std::int32_t lSpecialProcess)
{
    return (lSpecialProcess >= 2 && lSpecialProcess <= 29) ||
           (lSpecialProcess >= 31 && lSpecialProcess <= 60) || lSpecialProcess == 100;
}
