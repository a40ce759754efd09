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

/// Columns of both tables; only fgLog has the last one.
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

/// The window background, as a system colour reference.
constexpr std::int32_t kWindowBackground = static_cast<std::int32_t>(0x80000005);

/// Resets fgToDo to the header and the marker row. The first call in a process formats the marker
/// differently.
void SetUpToDoGrid(Application& app);
void SetUpToDoGrid(Application& app, Grid& fgToDo);

/// Resets fgLog to the header and one empty row. Always leaves bInternalGridChange False.
void SetUpLogGrid(Application& app);

/// Selects the whole current row.
void SelectGridRow(Application& app, Grid& fgGrid);

/// Inserts a task before the marker row, which becomes current: a conversion if the action contains "C",
/// otherwise a special process.
void AddTaskRow(Application& app, const clsConversionOptions& objOptions);
void AddConversionTaskRow(Application& app, const clsConversionOptions& objOptions);
void AddSpecialTaskRow(Application& app, const clsConversionOptions& objOptions);

/// The flags "R", "G" and "M" without spaces, such as "RGM".
std::string sFlagsFromRequest(const clsConversionOptions& objOptions);

/// True if the flag is among the first nine characters of a flags cell.
bool bFlagIsSet(const std::string& sFlags, char cFlag);

/// Reads a row into a request and makes it current. Does nothing for the header and the marker row. An empty
/// type cell keeps the request's type, even if it came from another row. Raises kErrTypeMismatch for a
/// malformed type or process number; fields read before that are already changed.
void LoadRequestFromGridRow(Application& app, clsConversionOptions& objOptions, std::int32_t lRow);

/// Removes the current task (never the marker row) and shows the row that becomes current.
void RemoveActionItem(Application& app);

/// Removes a row of fgToDo (never the header or the marker row) and renumbers the tasks.
void RemoveAllFilesWithJobNumber(Application& app, std::int32_t lRow);

/// Sets a row's Pass cell to "+" or "-" and shows the matching picture. The text is invisible, drawn in its
/// background colour; it is there for saving and loading.
void FormatPassCell(Grid& fgGrid, std::int32_t lRow, bool bPassed);

/// Shows the picture for a Pass cell of "+" or "-"; leaves any other cell alone.
void RestorePassMark(Grid& fgGrid, std::int32_t lRow);

/// The cells of a row, each followed by a tab, as in a job file.
std::string sTabbedRow(const Grid& fgGrid, std::int32_t lRow);

/// True for the process numbers allowed in a task: 2 to 29, 31 to 60, and 100 (launch).
bool bIsTaskProcess(std::int32_t lSpecialProcess);
