// The numbered file types: names, extensions, dialog filters, and the combo boxes that offer them.
// Room: job.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "src/base/clsConversionOptions.h"

struct Application;
class ComboBox;

/// The type that takes the format from the file's name.
constexpr std::int32_t kTypeAutodetect = -1;

/// "jpg" for 1, "*" for autodetect, "" for a number that is no type. bWithStar puts "*." in front, also of
/// the empty one.
std::string sFileTypeExtension(std::int32_t lType, bool bWithStar);

/// The type of an extension without its point, whatever its case; kNoFileType for an unknown one.
std::int32_t lFileTypeFromExtension(const std::string& sExtension);

/// The filter of a file dialog, "Label|*.ext|Label|*.ext"; "" for a number that is no type. Filters are never
/// translated.
std::string sFileFilterForType(std::int32_t lType);

/// Fill cbFileTypeOriginal, cbFileTypeTarget and cbFileTypeOriginalSpecialized, select the first entry and
/// note which entry an extension stands for. Only the first call of each fills.
void FillInFileTypeComboBoxOriginal(Application& app);
void FillInFileTypeComboBoxTarget(Application& app);
void FillInFileTypeComboBoxSpecialProcess(Application& app);

/// The type that the selected entry carries; kNoFileType while none is selected.
std::int32_t lSelectedFileType(const ComboBox& cb);

/// Selects the entry that carries the type. False, with the selection as it was, if none does.
bool bSelectFileType(ComboBox& cb, std::int32_t lType);

/// Selects the entry that an extension stands for, whatever its case. False, with the selection as it was,
/// for an extension that colExtensions doesn't hold.
bool bSelectExtension(ComboBox& cb, const std::map<std::string, std::int32_t>& colExtensions,
                      const std::string& sExtension);

/// The number between "[" and "]" in an entry's text, as 8 in "[8] Portable Network Graphics (*.png)";
/// kNoFileType when there is none.
std::int32_t lFileTypeInEntryText(const std::string& sText);
