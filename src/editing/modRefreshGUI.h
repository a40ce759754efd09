// Shows the fields of the chosen action.
// Room: editing.
#pragma once

struct Application;

/// Shows the fields of a conversion or of a special process, by the form's action.
void RefreshGUIOptions(Application& app);

/// Shows the source, target and type fields of a conversion, and the viewer if pictures are loaded
/// automatically.
void RefreshGUIConvertOptions(Application& app);

/// Shows the fields of a special process: files and parameters of an image process, program and arguments of
/// a launch.
void RefreshGUISpecializedProcess(Application& app);

/// Whether folders can be walked and a single target picked, by the "*" in the source.
void RefreshFileFolderStandard(Application& app);
void RefreshFileFolderGUISpecialized(Application& app);
