// Most recently used lists, which combo boxes offer again after a restart.
// Room: settings.
//
// Each list has a section in the settings file, named after its key stem, with keys stem1 to stem20; 20 is
// the newest.
#pragma once

#include <cstdint>
#include <string>

#include "src/forms/clsMRU.h"

struct Application;
class ComboBox;
class IniFile;

/// Initialises the list from the settings file.
void Setup(clsMRU& mru, const IniFile& objIniFile, std::int32_t lMaxCount, const std::string& sIniFile,
           const std::string& sKeyStem);

/// Saves and clears the list.
void ShutDown(clsMRU& mru, IniFile& objIniFile);

/// Makes sText the newest entry. An existing entry that differs only in case is replaced. Ignores an empty
/// text.
void AddUniqueItemToCollection(clsMRU& mru, const std::string& sText);

/// Writes the newest twenty entries to keys 20 downwards. A shorter list leaves the lower keys alone, so
/// older entries come back at the next start.
void WriteCollectionToIniFile(const clsMRU& mru, IniFile& objIniFile);

/// Replaces the list with the entries of the settings file; skips missing numbers.
void ReadIniFileIntoCollection(clsMRU& mru, const IniFile& objIniFile);

std::int32_t Count(const clsMRU& mru);

/// Fills the combo box, newest first, and selects the newest. Change handlers are suppressed
/// (bInternalGridChange).
void FillComboBoxFromMRU(Application& app, ComboBox& cb, const clsMRU& mru);

/// Adds the texts of the form's combo boxes to their lists and refills them: for action "C" those of a
/// conversion, for "S" those of a special process and a launch, for any other action none.
void UpdateMRUs(Application& app);
