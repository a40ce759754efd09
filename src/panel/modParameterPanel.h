// Shows the parameters of the selected special process. The catalogue says which inputs it has, on which tab
// and with which texts; no process has code here. Room: panel.
#pragma once

struct Application;

/// Sets the panel up for the selected process: description, tabs, choices, and the values in asSP_Details,
/// whose prefix becomes sImageConversionOptions. The first tab is shown. Raises kErrInvalidProcedureCall for
/// a choice that the list doesn't have.
void ShowProcessPanel(Application& app);

/// Shows the inputs of the selected tab and hides all others.
void RefreshSpecialProcessTab(Application& app);

/// Marks entries that hold no number, or one too large for its parameter, by colour and tool tip. They count
/// as 0.
void MarkWrongNumbers(Application& app);
