// The viewer beside the fields: original, target and preview, page and zoom.
// Room: platform/qt/forms.
#pragma once

#include "src/platform/qt/forms/layout.h"

/// frameImageViewer.
QWidget* MakeViewerPane(const Translate& translate);
