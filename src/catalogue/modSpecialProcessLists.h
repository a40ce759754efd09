// The combo boxes that offer the special processes, and the choices of a launch.
// Room: catalogue.
#pragma once

struct Application;

/// Fills cbSpecialProcesses in the order of the catalogue, each entry with its number before its translated
/// label and as its item data, and selects the first. The last entry is no process; its item data is -1.
void FillInSpecialProcessesComboBox(Application& app);

/// Fill cbCommandLineWindowState and cbCommandLineThreadPriority, whose item data are the numbers that a
/// launch's details hold, and select the first entry.
void FillInCommandLineWindowStateComboBox(Application& app);
void FillInCommandLineThreadPriorityComboBox(Application& app);
