// The task table and the log table: their columns and fixed rows, and moving tasks in and out of them.
// Room: job.
//
// A job is just the rows of fgToDo: row 0 is the header, rows 1 to Rows() - 2 are the tasks, and the last row
// is the marker row with "*" in column 2. fgLog always ends with one empty row.
#pragma once

#include <cstdint>
#include <string>

#include "src/base/clsConversionOptions.h"

struct Application;
class Grid;

/// The columns of both tables; fgLog alone has the last one.
enum TaskColumn : std::int32_t {
    kColFlags = 0,
    kColDetails = 1,
    kColNumber = 2,
    kColAction = 3,
    kColOriginal = 4,
    kColOriginalType = 5,
    kColOriginalExtension = 6,
    kColTarget = 7,
    kColTargetType = 8,
    kColTargetExtension = 9,
    kColPass = 10,
    kColStatus = 11
};

/// The colour of window backgrounds, as a reference to the system's colour of that number.
constexpr std::int32_t kWindowBackground = static_cast<std::int32_t>(0x80000005);

/// Resets fgToDo to header and marker row. The first time in a process the marker is formatted otherwise than
/// later.
void SetUpToDoGrid(Application& app);
void SetUpToDoGrid(Application& app, Grid& fgToDo);

/// Resets fgLog to header and one empty row, and ends with bInternalGridChange False whatever it was.
void SetUpLogGrid(Application& app);

/// Selects the whole current row.
void SelectGridRow(Application& app, Grid& fgGrid);

/// Inserts a request as a task in front of the marker row, which becomes the current row. A conversion if the
/// action holds "C", else a special process.
void AddTaskRow(Application& app, const clsConversionOptions& objOptions);
void AddConversionTaskRow(Application& app, const clsConversionOptions& objOptions);
void AddSpecialTaskRow(Application& app, const clsConversionOptions& objOptions);

/// "R", "G" and "M" without blanks, as "RGM".
std::string sFlagsFromRequest(const clsConversionOptions& objOptions);

/// True when a flag stands among the first nine characters of a flags cell.
bool bFlagIsSet(const std::string& sFlags, char cFlag);

/// Writes the conversion fields of the form over the current row, except for its number and its Pass mark.
/// The header and the marker row are left alone. The caller then updates the lists of recent texts.
void UpdateGridFromGUI_ConversionItem(Application& app);

/// Reads a task into a run request that may have served another row before: the types of a row with empty
/// type cells stay those of the row before. The row becomes current. The header and the marker row are never
/// read. Raises kErrTypeMismatch for a type or process number that is none; the fields read before it then
/// hold the new row.
void LoadRequestFromGridRow(Application& app, clsConversionOptions& objOptions, std::int32_t lRow);

/// Removes the current task, unless the marker row is current, and shows the row that is current then.
void RemoveActionItem(Application& app);

/// Removes a task of fgToDo and numbers all tasks from 1 on. Header and marker row stay.
void RemoveAllFilesWithJobNumber(Application& app, std::int32_t lRow);

/// Writes "+" or "-" into a row's Pass cell and shows its picture. The text is drawn in the colour of its
/// background: it is there for saving and reading, not for the eye.
void FormatPassCell(Grid& fgGrid, std::int32_t lRow, bool bPassed);

/// Gives a row whose Pass cell holds "+" or "-" its picture; any other is left alone.
void RestorePassMark(Grid& fgGrid, std::int32_t lRow);

/// A table's row as one text with a tab after each cell, as job files hold it.
std::string sTabbedRow(const Grid& fgGrid, std::int32_t lRow);

/// True for the numbers of the processes that a task may hold: 2 to 29, 31 to 60, and 100, the launch.
bool bIsTaskProcess(std::int32_t lSpecialProcess);
