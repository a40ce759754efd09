// Message boxes and pickers show what they are asked to, and return what a person chooses.
#include "src/platform/qt/boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

namespace
{

/// Calls fn with the dialog once it is open.
template <typename TDialog>
void WhenOpen(std::function<void(TDialog&)> fn)
{
    QTimer::singleShot(0, qApp, [fn] {
        auto* dialog = qobject_cast<TDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return WhenOpen<TDialog>(fn);
        fn(*dialog);
    });
}

void PressEscape(QMessageBox& box)
{
    QTest::keyClick(&box, Qt::Key_Escape);
}

}  // namespace

TEST(MessageBox, ShowsTheWholeMessageAsPlainText)
{
    QString text;
    QString title;
    WhenOpen<QMessageBox>([&](QMessageBox& box) {
        text = box.text();
        title = box.windowTitle();
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.informativeText() + box.detailedText(), "");
        box.button(QMessageBox::Ok)->click();
    });

    const BoxAnswer answer =
        ShowMessage(nullptr, "a <b>\r\nc\rd\n&e", "Error", BoxIcon::Warning, BoxButtons::Ok);

    EXPECT_EQ(answer, BoxAnswer::Ok);
    EXPECT_EQ(text, "a <b>\nc\nd\n&e");
    EXPECT_EQ(title, "Error");
}

TEST(MessageBox, AnswersEscapeWithWhatChangesNothing)
{
    const auto answer = [](BoxButtons buttons) {
        WhenOpen<QMessageBox>(PressEscape);
        return ShowMessage(nullptr, "?", "Information", BoxIcon::Question, buttons);
    };

    EXPECT_EQ(answer(BoxButtons::Ok), BoxAnswer::Ok);
    EXPECT_EQ(answer(BoxButtons::OkCancel), BoxAnswer::Cancel);
    EXPECT_EQ(answer(BoxButtons::YesNo), BoxAnswer::No);
    EXPECT_EQ(answer(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST(MessageBox, ReturnsTheButtonChosen)
{
    const auto answer = [](QMessageBox::StandardButton button) {
        WhenOpen<QMessageBox>([button](QMessageBox& box) { box.button(button)->click(); });
        return ShowMessage(nullptr, "?", "Information", BoxIcon::Question, BoxButtons::YesNoCancel);
    };

    EXPECT_EQ(answer(QMessageBox::Yes), BoxAnswer::Yes);
    EXPECT_EQ(answer(QMessageBox::No), BoxAnswer::No);
}

TEST(ChoiceBox, TakesTheRejectingButtonForDefaultAndEscape)
{
    const std::vector<ChoiceButton> buttons{{"Finish this file", ButtonRole::Accept},
                                            {"Stop now", ButtonRole::Destructive},
                                            {"Go on", ButtonRole::Reject}};
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.defaultButton()->text(), "Go on");
        PressEscape(box);
    });
    EXPECT_EQ(ShowChoices(nullptr, "?", "Varnel", BoxIcon::Question, buttons), 2u);

    WhenOpen<QMessageBox>([](QMessageBox& box) {
        for (QAbstractButton* button : box.buttons())
            if (box.buttonRole(button) == QMessageBox::DestructiveRole)
                button->click();
    });
    EXPECT_EQ(ShowChoices(nullptr, "?", "Varnel", BoxIcon::Question, buttons), 1u);
}

TEST(FilePicker, OffersItsFiltersInOrder)
{
    FilePicker picker{"Report File Path",
                      "Log File(*.LOG)|*.LOG|Text Files (*.TXT)|*.TXT|All Files (*.*)|*.*"};
    picker.lFilterIndex = 2;
    QStringList filters;
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        filters = dialog.nameFilters();
        EXPECT_EQ(dialog.selectedNameFilter(), filters[1]);
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::AnyFile);
        dialog.reject();
    });

    EXPECT_EQ(PickFilePath(nullptr, picker), "");

    ASSERT_EQ(filters.size(), 3);
    EXPECT_TRUE(filters[0].startsWith("Log File"));
    EXPECT_TRUE(filters[0].contains("*.LOG"));
    EXPECT_EQ(filters[2], "All Files (*)");
    EXPECT_EQ(picker.lFilterIndex, 2);
}

TEST(FilePicker, ReturnsPathAndFilterChosen)
{
    QTemporaryDir folder;
    FilePicker picker{"Save", "Job (*.vjb)|*.vjb|All|*.*"};
    picker.bToSave = true;
    picker.sStartFolder = folder.path().toStdString();
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        dialog.selectNameFilter(dialog.nameFilters()[1]);
        dialog.selectFile("new.vjb");
        static_cast<QDialog&>(dialog).accept();
    });

    EXPECT_EQ(PickFilePath(nullptr, picker), folder.filePath("new.vjb").toStdString());
    EXPECT_EQ(picker.lFilterIndex, 2);
}

TEST(FolderPicker, ReturnsAFolderWithoutSeparator)
{
    QTemporaryDir folder;
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Browse For Folder");
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        dialog.selectFile(folder.path());
        static_cast<QDialog&>(dialog).accept();
    });

    EXPECT_EQ(PickFolderPath(nullptr, "Browse For Folder", folder.path().toStdString()),
              folder.path().toStdString());
}

TEST(ColourPicker, StartsWithAColourAndReturnsOne)
{
    WhenOpen<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(255, 128, 0));
        dialog.setCurrentColor(QColor(1, 2, 3));
        dialog.accept();
    });
    EXPECT_EQ(PickColourValue(nullptr, 0x0080ff), std::optional<std::int32_t>(0x030201));

    WhenOpen<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(PickColourValue(nullptr, 0), std::nullopt);
}
