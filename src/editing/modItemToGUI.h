// A task of the table shown in the form's fields.
// Room: editing.
#pragma once

struct Application;

/// Fills the fields of its action from the current task, which the form then doesn't differ from.
void ShowCurrentTask(Application& app);

/// Fills the conversion's fields from the current row. Ends with bInternalGridChange cleared.
void UpdateGUI_ConversionItemViaCellContents(Application& app);

/// Fills the fields of a special process from the current row, its panel from the details. Ends the same way.
/// Raises kErrTypeMismatch for a malformed number, kErrSubscript for a process number beyond 100.
void UpdateGUI_SpecializedToDOItemViaCellContents(Application& app);
