// Lays out the viewer dialog and the choice of language.
#include <QDialog>
#include <QListWidget>
#include <QScrollBar>

#include "src/platform/qt/forms/dialogs.h"
#include "src/platform/qt/picture/picture_widget.h"

std::unique_ptr<QWidget> MakeImageViewer(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    dialog->setSizeGripEnabled(true);
    QVBoxLayout* column = DialogColumn(*dialog);
    QComboBox* file = RecentTexts("cbFile");
    file->setAccessibleName(t("File"));
    column->addLayout(Row({file, IconButton("picSelectSourceFile", "file", t("Select a file")),
                           Named<QPushButton>("cmdGetFilePath")}));
    auto* picture = Named<PictureWidget>("ImageView1");
    picture->setAccessibleName(t("Image"));
    column->addWidget(picture, 1);

    auto* bar = Named<QScrollBar>("HScrollFrame", Qt::Horizontal);
    bar->setMinimumWidth(Space(120));
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setAccessibleName(t("Page"));
    auto* pages = Named<QWidget>("framePicNav");
    pages->setLayout(Row({new QLabel(t("Page")), bar, Caption("lblFrame", QString())}));
    column->addLayout(Row({pages, Caption("sbStatus", QString()), nullptr}));
    auto* apply = Named<QPushButton>("cmdApply");
    apply->setDefault(true);
    column->addLayout(
        Row({Named<QPushButton>("CommandSave"), nullptr, Named<QPushButton>("cmdCancel"), apply}));
    dialog->resize(Space(800), Space(640));
    return dialog;
}

std::unique_ptr<QWidget> MakeLanguage(QWidget* parent, const Translate&)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);
    auto* list = Named<QListWidget>("List1");
    column->addWidget(Caption("lblLanguage", QString(), list));
    QVBoxLayout* beside = Column();
    for (const char* name : {"cmdSelectFont", "cmdEditLanguageFile", "cmdHelpLanguage"})
        beside->addWidget(Named<QPushButton>(name));
    beside->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(Space(8));
    row->addWidget(list, 1);
    row->addLayout(beside);
    column->addLayout(row, 1);
    auto* done = Named<QPushButton>("cmdDone");
    done->setDefault(true);
    column->addLayout(Row({nullptr, Named<QPushButton>("cmdCancel"), done}));
    dialog->resize(Space(440), Space(320));
    return dialog;
}
