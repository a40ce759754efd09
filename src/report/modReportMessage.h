// Reports a message to a file and in a message box.
// Room: report.
#pragma once

#include <string>

struct Application;

/// Appends sMessage as a line to sLogFile, unless that is "", and shows it in a message box if bVerbose. Both
/// happen under the lock that serialises the reports of all processes, so an open box blocks every other
/// process's reports. An unwritable report file doesn't end the run: the text goes to standard error or, with
/// a display, to a message box the first time.
void ReportMessage(Application& app, const std::string& sMessage, const std::string& sLogFile, bool bVerbose);
