// Combo boxes of special processes and of launch options.
// Room: catalogue.
#pragma once

struct Application;

/// Fills cbSpecialProcesses in catalogue order and selects the first entry. Each entry shows the process's
/// number and translated label, with the number as item data. The last entry isn't a process; its item data
/// is -1.
void FillInSpecialProcessesComboBox(Application& app);

/// Fill cbCommandLineWindowState and cbCommandLineThreadPriority and select the first entry. Item data are
/// the numbers used in launch details.
void FillInCommandLineWindowStateComboBox(Application& app);
void FillInCommandLineThreadPriorityComboBox(Application& app);
