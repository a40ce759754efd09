// Whether there is a display to open windows on.
// Room: platform/qt/link.
#pragma once

/// Connects to the display server that the environment names, and hangs up. Qt ends the process if it can't
/// open a display, so ask before it starts.
bool CanOpenDisplay();
