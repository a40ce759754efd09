// Job files: the task table as text, one line a row, and the log table written as a job.
// Room: job.
//
// A line is the eleven cells of a row, each followed by a tab; the last line is the marker row. There is no
// header and no quoting. The numbers in column 2 are never read. A file is replaced whole or not at all.
#pragma once

#include <cstdint>
#include <string>

struct Application;
class Grid;

/// A table holds at most so many rows before the rest of a file is left to a reload row.
constexpr std::int32_t kMostRowsLoaded = 30001;

/// The process number of the reload row, which loads the next part of a long job file.
constexpr std::int32_t kProcessReload = 1;

/// Writes every row of the table but the header. Raises kErrPathFileAccess if it can't be written; an
/// earlier file is then as it was.
void WriteJobFile(Application& app, const std::string& sPath, const Grid& fgToDo);

/// Writes the log as a job: the lines lack the details and the target's type, since what counts is the list
/// of the files. Raises as WriteJobFile does.
void WriteLogAsJobFile(Application& app, const std::string& sPath, const Grid& fgLog);

/// New: an empty table and log, and no file.
void ConversionJobNew(Application& app);

/// Save: to the job's file, or as Save As if it has none yet. Raises as WriteJobFile does.
void ConversionJobSave(Application& app);

/// Asks for a file; one without an extension gets ".VJB". Cancelling changes nothing. Raises as WriteJobFile
/// does, and then the job keeps its former file.
void ConversionJobSaveAs(Application& app);

/// Opens a job file; an empty path asks for it and comes back as what was picked. A file that isn't there
/// leaves both tables, but the job is called by its name from then on.
void ConversionJobOpen(Application& app, std::string& sPath);

/// Asks for a file and writes the log to it as a job. Raises as WriteJobFile does.
void SaveLogAsConversionJob(Application& app);

/// Fills the table from line lStart of a job file on, numbered from lStart, until the table is full: the last
/// row then is one that loads the rest. Lets events through every 1000 lines; a pause ends the load. A file
/// that isn't there changes nothing. One that can't be read to its end is told in a box, and the rows read so
/// far stay.
void LoadJobFile(Application& app, const std::string& sPath, std::int32_t lStart, Grid& fgToDo);
