// Updates the fields that belong to the chosen action.
// Room: editing.
#pragma once

struct Application;

/// Shows the conversion's fields if the form's action contains "C". The fields of a special process belong to
/// its panel.
void RefreshGUIOptions(Application& app);

/// Updates the source, target and type fields of a conversion, and shows the image viewer frame if
/// bAutoLoadImages.
void RefreshGUIConvertOptions(Application& app);

/// With a "*" in the source, the two folder check boxes are enabled and the button for picking a single
/// target is hidden; without one, it is the other way round.
void RefreshFileFolderStandard(Application& app);
void RefreshFileFolderGUISpecialized(Application& app);
