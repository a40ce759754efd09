// The recently used lists: what a combo box offers again at the next start.
// Room: settings.
//
// A list has a section of its own in the settings file, named after the stem, with the keys stem1 to stem20,
// of which 20 is the newest.
#pragma once

#include <cstdint>
#include <string>

#include "src/forms/clsMRU.h"

struct Application;
class ComboBox;
class IniFile;

/// Begins a list anew from what the settings file holds.
void Setup(clsMRU& mru, const IniFile& objIniFile, std::int32_t lMaxCount, const std::string& sIniFile,
           const std::string& sKeyStem);

/// Writes the list and lets it go.
void ShutDown(clsMRU& mru, IniFile& objIniFile);

/// Makes sText the newest entry. One that is there already, in whatever case, moves and takes the new form.
/// An empty text is ignored.
void AddUniqueItemToCollection(clsMRU& mru, const std::string& sText);

/// Writes the newest twenty to the keys from 20 downwards. The keys below a shorter list keep what they held,
/// and what they held comes back at the next start.
void WriteCollectionToIniFile(const clsMRU& mru, IniFile& objIniFile);

/// Replaces the entries by those of the settings file; missing numbers are skipped.
void ReadIniFileIntoCollection(clsMRU& mru, const IniFile& objIniFile);

std::int32_t Count(const clsMRU& mru);

/// Offers the entries, newest first, and shows the newest. The box's handlers do nothing meanwhile
/// (bInternalGridChange).
void FillComboBoxFromMRU(Application& app, ComboBox& cb, const clsMRU& mru);

/// Enters the texts of the form's fields into their lists and offers them again: those of a conversion while
/// the form's action is "C", those of a special process and a launch while it is "S", none for any other
/// action.
void UpdateMRUs(Application& app);
