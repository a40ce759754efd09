// The viewer of the main form: the original, the target, and a preview of the process, each on a tab.
// Room: viewer.
//
// Views count from 0, tabs from 1. Failures are only told in the status panel; a view that failed is blank.
#pragma once

#include <cstdint>

struct Application;

constexpr std::int32_t kViewOriginal = 0;
constexpr std::int32_t kViewTarget = 1;
constexpr std::int32_t kViewPreview = 2;

/// Loads the file of a view, first page first, and selects its tab. Without bForce, a file that is already on
/// show isn't loaded again. False only if the page couldn't be loaded: a file that doesn't exist, or has no
/// pages, blanks the view and is True.
bool LoadImageViewer(Application& app, std::int32_t lView, bool bForce);

/// Shows a page, counted from 0, of the view's file. False, with a blank view, if it can't be loaded.
bool LoadFrame(Application& app, std::int32_t lView, std::int32_t lFrame);

/// Blanks a view; it shows no file then.
void ClearFrame(Application& app, std::int32_t lView);

/// Shows size, pages, zoom and offset of a view in the status panel, the slider and the scroll bars.
void UpdateGUIForImageViewer(Application& app, std::int32_t lView);

/// Shows the view of the selected tab and, with automatic loading, loads its files anew. While a run goes on,
/// nothing is loaded: the image library is at work for the run.
void tsImageViewer_Click(Application& app);

/// Connects the viewer's controls and the hooks of the editing. For a main window; a run without windows has
/// no viewer.
void ConnectImageViewer(Application& app);
