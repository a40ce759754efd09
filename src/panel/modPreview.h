// Shows the effect of the process on the picture of the viewer.
// Room: panel.
#pragma once

struct Application;

/// What changed in the panel.
enum class PanelInput {
    None,   ///< nothing: the preview is wanted all the same
    Text1,  ///< the first number, a resize's width
    Text1b,
    Text1c,
    Text2,   ///< the second number, a resize's height
    Choice,  ///< check box or list
    PickedColour
};

/// Reads the panel into asSP_Details and previews the process on the untouched picture of the first view.
/// Does nothing while bInternalGridChange is set, and leaves it cleared. Skips the preview if process, page,
/// file and details are those of the last one, unless eInput is None. An operation that fails or raises
/// leaves the preview as it was.
///
/// A resize that retains the aspect ratio first computes the other number from the one that changed.
void UpdateGUIforSpecialProcessBasedOnUserInput(Application& app, PanelInput eInput);
