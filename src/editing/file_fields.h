// The fields that name a task's files. A conversion and a special process each have a set, and the sets
// behave alike. Room: editing.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/forms/frmMain.h"

struct FileFields {
    ComboBox& cbOriginalFile;
    ComboBox& cbFileTypeOriginal;
    CheckBox& cbDoSubfolders;
    ComboBox& cbTargetFile;
    ComboBox& cbFileTypeTarget;  ///< a special process has one type for both: the same as cbFileTypeOriginal
    CheckBox& cbSaveToOriginalFolder;
    Frame& frameTargetFile;
    CommandButton& cmdLaunchOriginal;
    CommandButton& cmdLaunchTarget;
    std::vector<Control*> aSingleTargetPickers;  ///< make no sense while the source is a wildcard
    const std::map<std::string, std::int32_t>& colExtensionsOriginal;
    const std::map<std::string, std::int32_t>& colExtensionsTarget;
    std::string& sProposedTarget;  ///< the target last proposed: one that differs was edited by a person
};

FileFields ConversionFields(frmMain& frm);
FileFields SpecializedFields(frmMain& frm);

/// The set that counts, by the form's action.
FileFields FieldsOfAction(frmMain& frm);
