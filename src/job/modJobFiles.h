// Job files: the task table, or the log, saved as text.
// Room: job.
//
// Each line holds the eleven cells of a row, each followed by a tab; the last line is the marker row. No
// header, no quoting. The numbers in column 2 are ignored on loading. Saves are atomic.
#pragma once

#include <cstdint>
#include <string>

struct Application;
class Grid;

/// Most rows loaded at once; a reload row then loads the rest of the file.
constexpr std::int32_t kMostRowsLoaded = 30001;

/// Process number of the reload row, which loads the next slice of a long job file.
constexpr std::int32_t kProcessReload = 1;

/// Writes all rows except the header. Raises kErrPathFileAccess on failure; an existing file is then
/// unchanged.
void WriteJobFile(Application& app, const std::string& sPath, const Grid& fgToDo);

/// Writes the log as a job file without details and target types; only its list of files matters. Raises like
/// WriteJobFile.
void WriteLogAsJobFile(Application& app, const std::string& sPath, const Grid& fgLog);

/// New: clears the task table and the log; the job has no file.
void ConversionJobNew(Application& app);

/// Save: writes to the job's file, or does Save As if it has none. Raises like WriteJobFile.
void ConversionJobSave(Application& app);

/// Save As: asks for a file, adding ".VJB" if it has no extension. Cancelling changes nothing. Raises like
/// WriteJobFile; the job then keeps its previous file.
void ConversionJobSaveAs(Application& app);

/// Open: loads a job file. If sPath is empty, asks for the file and returns it in sPath. If the file doesn't
/// exist, the tables are unchanged, but the job takes its name. Returns what LoadJobFile returns.
std::string ConversionJobOpen(Application& app, std::string& sPath);

/// Asks for a file and writes the log to it as a job. Raises like WriteJobFile.
void SaveLogAsConversionJob(Application& app);

/// Loads a job file into the table from line lStart on, numbering tasks from lStart. If the table gets full,
/// its last task reloads the rest. Processes events every 1000 lines; a pause stops the load, and a last task
/// reloads what is left. A missing file changes nothing. After a read error, the rows read so far stay; the
/// error is returned and, except on a command line, shown in a message box. Returns "" otherwise.
std::string LoadJobFile(Application& app, const std::string& sPath, std::int32_t lStart, Grid& fgToDo);
