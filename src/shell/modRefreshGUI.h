// Shows the fields that belong to the chosen action.
// Room: shell.
#pragma once

struct Application;

/// Shows the conversion's fields while the form's action holds "C". Those of a special process belong to its
/// panel.
void RefreshGUIOptions(Application& app);

/// Source, target and type fields of a conversion, and the viewer's frame by bAutoLoadImages.
void RefreshGUIConvertOptions(Application& app);

/// With a "*" in the source the two check boxes for folders can be ticked and a single target can't be
/// picked; without one it is the other way round.
void RefreshFileFolderStandard(Application& app);
void RefreshFileFolderGUISpecialized(Application& app);
