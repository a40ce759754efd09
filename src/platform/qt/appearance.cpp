// Sets style and palette for a session without a desktop.
#include "src/platform/qt/appearance.h"

#include <QPalette>

static void SetDisabled(QPalette& palette, const QColor& text, const QColor& accent)
{
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::HighlightedText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, text);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, accent);
}

QPalette PlainPalette(bool dark)
{
    const QColor window = dark ? QColor(0x2a, 0x2e, 0x36) : QColor(0xf5, 0xf6, 0xf8);
    const QColor button = dark ? QColor(0x3c, 0x41, 0x4b) : QColor(0xfc, 0xfc, 0xfd);
    const QColor text = dark ? QColor(0xe8, 0xea, 0xed) : QColor(0x1f, 0x23, 0x28);
    QPalette palette(button, window);
    palette.setColor(QPalette::Base, dark ? QColor(0x1b, 0x1e, 0x24) : QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::AlternateBase, dark ? QColor(0x22, 0x25, 0x2c) : QColor(0xf5, 0xf6, 0xf8));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, dark ? QColor(0x9a, 0xa0, 0xaa) : QColor(0x6b, 0x72, 0x80));
    palette.setColor(QPalette::ToolTipBase, button);
    palette.setColor(QPalette::Highlight, dark ? QColor(0x4c, 0x9a, 0xff) : QColor(0x2d, 0x7d, 0xe0));
    palette.setColor(QPalette::HighlightedText, dark ? QColor(0x10, 0x14, 0x1a) : QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::Link, palette.color(QPalette::Highlight));
    palette.setColor(QPalette::Midlight, dark ? QColor(0x46, 0x4a, 0x54) : QColor(0xe1, 0xe4, 0xe8));
    palette.setColor(QPalette::Mid, dark ? QColor(0x6e, 0x74, 0x80) : QColor(0xa0, 0xa6, 0xb0));
    SetDisabled(palette, dark ? QColor(0x70, 0x76, 0x82) : QColor(0x9a, 0xa0, 0xaa),
                dark ? QColor(0x3a, 0x3e, 0x47) : QColor(0xd5, 0xd9, 0xde));
    return palette;
}

void SetUpAppearance(QApplication& application)
{
    const bool desktop = !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP") ||
                         !qEnvironmentVariableIsEmpty("DESKTOP_SESSION") ||
                         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORMTHEME");
    if (desktop)
        return;
    if (qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE"))
        QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(PlainPalette(application.palette().color(QPalette::Window).lightness() < 128));
}
