// Texts between the program (UTF-8) and Qt (UTF-16).
// Room: platform/qt/views.
#pragma once

#include <QKeyEvent>
#include <QString>
#include <string>

QString ToQt(const std::string& text);
std::string FromQt(const QString& text);

/// A caption as it is read out: without the "&" in front of its mnemonic; "&&" is one "&".
QString WithoutMnemonic(const QString& caption);

/// Carriage return, line feed and the two together all become one line feed.
QString WithPlainLineEnds(QString text);

/// A key as the controls write it: "Ctrl+N", "Del", "Esc"; "" for a modifier alone.
std::string KeyName(const QKeyEvent& event);
