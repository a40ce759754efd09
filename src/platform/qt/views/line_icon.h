// Line icons in the text colour of the palette.
// Room: platform/qt/views.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

/// The icon icons/<name>.svg. It is drawn at the size asked for, in the palette's colour of the given role,
/// greyed while disabled and in the selection's text colour while selected, and so follows light, dark and
/// high contrast.
QIcon LineIcon(const QString& name, QPalette::ColorRole role = QPalette::ButtonText);
/// The same in the given colour, except while disabled or selected.
QIcon ColouredIcon(const QString& name, const QColor& on_light, const QColor& on_dark);
