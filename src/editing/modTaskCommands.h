// The commands that edit the table of tasks, and what a change of the row, the action or the tab does.
// Room: editing.
#pragma once

#include <cstdint>

struct Application;

/// Adds the form's fields as a task after checking them. False if the check failed and the user wants to fix
/// the fields. The form keeps its texts, and the marker row is current.
bool AddFileToConvertGUI(Application& app);

/// Writes the form's fields over the current task after checking them. False as above.
bool ConversionJobUpdate(Application& app);

/// Begins the run; an edited task is asked about first.
void BeginConversion(Application& app);

/// Whether a person may go to another row: not while a run goes on, when the handler is refused.
bool fgToDo_BeforeRowChange(Application& app, std::int32_t lRow);

/// The current row is about to be another one: an edited task is asked about. If the user wants to go on
/// editing, the row changes all the same, but the form keeps the edited fields.
void fgToDo_LeaveCell(Application& app);

/// Another row is current: the form shows it.
void fgToDo_EnterCell(Application& app);
void fgLog_EnterCell(Application& app);

/// An action was chosen: 0 conversion, 1 special process. Unless the program chose it, the form shows its
/// fields.
void rbActionToDo_Click(Application& app, std::int32_t lIndex);

/// Tasks or log. Coming back to the tasks shows the selected one, unless the form holds edits of it.
void ts_Click(Application& app);

/// Edits the conversion options, and takes them if they changed.
void EditConversionOptions(Application& app);
