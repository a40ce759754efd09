// Writes a line to a report file and shows it in a box.
// Room: report.
#pragma once

#include <string>

struct Application;

/// Appends sMessage as one line to sLogFile, unless that is "", and shows it in a box if bVerbose, both under
/// the lock that keeps the report lines of several processes apart; so a box that waits holds up every other
/// process's reports. A report file that can't be written to doesn't end the run: the text goes to standard
/// error instead, or, in a window, to a box the first time it happens.
void ReportMessage(Application& app, const std::string& sMessage, const std::string& sLogFile, bool bVerbose);
