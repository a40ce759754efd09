// How the program looks where no desktop says so.
// Room: platform/qt.
#pragma once

#include <QApplication>

/// Leaves style, palette and fonts to the desktop. Without one, takes Qt's Fusion style with a calmer palette
/// than its own.
void SetUpAppearance(QApplication& application);

/// That palette, light or dark.
QPalette PlainPalette(bool dark);
