// The form's fields written over the current task.
// Room: editing.
#pragma once

struct Application;

/// Overwrites the current task with the conversion's fields, except for its number and Pass mark. Leaves
/// header and marker row alone. Enters the texts into the recently used lists.
void UpdateGridFromGUI_ConversionItem(Application& app);

/// The same with the fields of the selected process. For an image process the details are those in
/// asSP_Details, as GetSpecializedItemFromGUI left them.
void UpdateGridFromGUI_SpecializedItem(Application& app);
