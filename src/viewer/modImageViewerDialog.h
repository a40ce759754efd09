// The dialog that shows one file at a larger size, and saves a page of it as another type.
// Room: viewer.
#pragma once

#include <cstdint>

struct Application;
struct clsMRU;

/// Opens the dialog on the file of view 0 or 1. A file that is applied becomes the task's file.
void ImageViewMain_DblClick(Application& app, std::int32_t lView);

/// Sets captions, which stay English, handlers and the window's place.
void frmImageViewer_Load(Application& app);

/// Shows the dialog with these recent files, the newest selected. Apply makes the chosen file the newest of
/// them, also if there is no such file.
void SetUpImageViewer(Application& app, clsMRU& mru);

/// Shows the first page of the file in cbFile; nothing if it doesn't exist or has no pages.
void LoadViewerFile(Application& app);
