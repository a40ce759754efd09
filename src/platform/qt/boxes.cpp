// Shows message boxes and pickers.
#include "src/platform/qt/boxes.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QMessageBox>
#include <QPushButton>

#include "src/platform/qt/views/qt_text.h"

static QMessageBox::Icon ToQt(BoxIcon icon)
{
    switch (icon) {
        case BoxIcon::Warning:
            return QMessageBox::Warning;
        case BoxIcon::Question:
            return QMessageBox::Question;
        default:
            return QMessageBox::Information;
    }
}

static void SetTexts(QMessageBox& box, const std::string& text, const std::string& title, BoxIcon icon)
{
    box.setWindowTitle(ToQt(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(WithPlainLineEnds(ToQt(text)));
    box.setIcon(ToQt(icon));
}

BoxAnswer ShowMessage(QWidget* parent, const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons)
{
    QMessageBox box(parent);
    SetTexts(box, text, title, icon);
    switch (buttons) {
        case BoxButtons::Ok:
            box.setStandardButtons(QMessageBox::Ok);
            box.setEscapeButton(QMessageBox::Ok);
            break;
        case BoxButtons::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            box.setEscapeButton(QMessageBox::Cancel);
            break;
        case BoxButtons::YesNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            box.setEscapeButton(QMessageBox::No);
            break;
        case BoxButtons::YesNoCancel:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            box.setEscapeButton(QMessageBox::Cancel);
            break;
    }
    switch (box.exec()) {
        case QMessageBox::Ok:
            return BoxAnswer::Ok;
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Cancel;
    }
}

static QMessageBox::ButtonRole ToQt(ButtonRole role)
{
    switch (role) {
        case ButtonRole::Destructive:
            return QMessageBox::DestructiveRole;
        case ButtonRole::Reject:
            return QMessageBox::RejectRole;
        default:
            return QMessageBox::AcceptRole;
    }
}

std::size_t ShowChoices(QWidget* parent, const std::string& text, const std::string& title, BoxIcon icon,
                        const std::vector<ChoiceButton>& buttons)
{
    QMessageBox box(parent);
    SetTexts(box, text, title, icon);
    std::vector<QAbstractButton*> shown;
    std::size_t reject = 0;
    for (const ChoiceButton& button : buttons) {
        QPushButton* added = box.addButton(ToQt(button.sText), ToQt(button.eRole));
        if (button.eRole == ButtonRole::Reject) {
            reject = shown.size();
            box.setDefaultButton(added);
            box.setEscapeButton(added);
        }
        shown.push_back(added);
    }
    box.exec();
    for (std::size_t n = 0; n < shown.size(); ++n)
        if (shown[n] == box.clickedButton())
            return n;
    return reject;
}

// "Label|*.a;*.b|Label|*.c" as Qt's "Label (*.a *.b)": the words up to the label's bracket, then the patterns
// behind the bar. Each pattern is for upper case letters too.
static QStringList NameFilters(const std::string& filter)
{
    QStringList result;
    const QStringList parts = ToQt(filter).split(u'|');
    for (qsizetype n = 0; n + 1 < parts.size(); n += 2) {
        const QString words = parts[n].left(parts[n].indexOf(u'(')).trimmed();
        QStringList patterns;
        for (const QString& pattern : parts[n + 1].split(u';', Qt::SkipEmptyParts)) {
            const QString all =
                pattern.trimmed() == QStringLiteral("*.*") ? QStringLiteral("*") : pattern.trimmed();
            patterns << all;
            if (all.toUpper() != all)
                patterns << all.toUpper();
        }
        result << QStringLiteral("%1 (%2)").arg(words, patterns.join(u' '));
    }
    return result;
}

std::string PickFilePath(QWidget* parent, FilePicker& picker)
{
    QFileDialog dialog(parent, ToQt(picker.sTitle), ToQt(picker.sStartFolder));
    dialog.setAcceptMode(picker.bToSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    const QStringList filters = NameFilters(picker.sFilter);
    dialog.setNameFilters(filters);
    if (picker.lFilterIndex >= 1 && picker.lFilterIndex <= filters.size())
        dialog.selectNameFilter(filters[picker.lFilterIndex - 1]);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return "";
    const qsizetype chosen = filters.indexOf(dialog.selectedNameFilter());
    if (chosen >= 0)
        picker.lFilterIndex = static_cast<std::int32_t>(chosen) + 1;
    return FromQt(dialog.selectedFiles().constFirst());
}

std::string PickFolderPath(QWidget* parent, const std::string& title, const std::string& start_folder)
{
    QFileDialog dialog(parent, ToQt(title), ToQt(start_folder));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return "";
    QString folder = dialog.selectedFiles().constFirst();
    while (folder.size() > 1 && folder.endsWith(u'/'))
        folder.chop(1);
    return FromQt(folder);
}

std::optional<std::int32_t> PickColourValue(QWidget* parent, std::int32_t start)
{
    QColorDialog dialog(QColor(start & 0xff, (start >> 8) & 0xff, (start >> 16) & 0xff), parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QColor colour = dialog.selectedColor();
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

std::optional<std::string> PickFontName(QWidget* parent, const std::string& start)
{
    QFontDialog dialog(parent);
    if (!start.empty())
        dialog.setCurrentFont(QFont(ToQt(start)));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return FromQt(dialog.selectedFont().family());
}
