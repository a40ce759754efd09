// File types by number: names, extensions, dialog filters, and the combo boxes that list them.
// Room: job.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "src/base/clsConversionOptions.h"

struct Application;
class ComboBox;

/// Detects the format from the file name.
constexpr std::int32_t kTypeAutodetect = -1;

/// "jpg" for 1, "*" for autodetect, "" for an unknown number. bWithStar prepends "*.", even to "".
std::string sFileTypeExtension(std::int32_t lType, bool bWithStar);

/// The type of an extension (no dot, any case); kNoFileType if unknown.
std::int32_t lFileTypeFromExtension(const std::string& sExtension);

/// The file dialog filter, "Label|*.ext|Label|*.ext"; "" for an unknown number. Filters are never translated.
std::string sFileFilterForType(std::int32_t lType);

/// Fill cbFileTypeOriginal, cbFileTypeTarget and cbFileTypeOriginalSpecialized, select the first entry, and
/// index the entries by extension. Calls after the first do nothing.
void FillInFileTypeComboBoxOriginal(Application& app);
void FillInFileTypeComboBoxTarget(Application& app);
void FillInFileTypeComboBoxSpecialProcess(Application& app);

/// The type of the selected entry; kNoFileType if none is selected.
std::int32_t lSelectedFileType(const ComboBox& cb);

/// Selects the entry of that type. False if there is none; the selection is then unchanged.
bool bSelectFileType(ComboBox& cb, std::int32_t lType);

/// Selects the entry for an extension, in any case. False if colExtensions doesn't have it; the selection is
/// then unchanged.
bool bSelectExtension(ComboBox& cb, const std::map<std::string, std::int32_t>& colExtensions,
                      const std::string& sExtension);

/// The number in brackets of an entry's text, such as 8 in "[8] Portable Network Graphics (*.png)";
/// kNoFileType if there is none.
std::int32_t lFileTypeInEntryText(const std::string& sText);
