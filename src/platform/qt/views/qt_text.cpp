// Converts texts and names keys.
#include "src/platform/qt/views/qt_text.h"

#include <QKeySequence>

QString ToQt(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromQt(const QString& text)
{
    return text.toUtf8().toStdString();
}

QString WithoutMnemonic(const QString& caption)
{
    QString result;
    for (qsizetype n = 0; n < caption.size(); ++n) {
        if (caption[n] == u'&' && n + 1 < caption.size())
            ++n;
        result += caption[n];
    }
    return result.trimmed();
}

QString WithPlainLineEnds(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

std::string KeyName(const QKeyEvent& event)
{
    switch (event.key()) {
        case Qt::Key_Control:
        case Qt::Key_Shift:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_unknown:
            return "";
        case Qt::Key_Enter:
            return "Return";
        default:
            break;
    }
    const int modifiers = static_cast<int>(event.modifiers() & ~Qt::KeypadModifier);
    return FromQt(QKeySequence(event.key() | modifiers).toString(QKeySequence::PortableText));
}
