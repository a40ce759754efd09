// Lays out the general options and the options of a conversion.
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <initializer_list>
#include <utility>

#include "src/platform/qt/forms/dialogs.h"

static QLineEdit* TextField(const char* name)
{
    auto* edit = Named<QLineEdit>(name);
    edit->setMinimumWidth(Space(280));
    return edit;
}

std::unique_ptr<QWidget> MakeOptions(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);

    QWidget* general = Group("fraGeneralOptions");
    auto* options = static_cast<QVBoxLayout*>(general->layout());
    for (const char* name : {"cbAutoLoadImages", "cbTryAutodetectIfFailed", "cbDeleteAfterProcessing"})
        options->addWidget(Named<QCheckBox>(name));
    options->addWidget(Note("lblDeleteWarning"));
    column->addWidget(general);

    QWidget* log = Group("fraLogFile");
    auto* report = static_cast<QVBoxLayout*>(log->layout());
    QLabel* label = Note("lblLogFile");
    QLineEdit* file = TextField("txtLogFile");
    label->setBuddy(file);
    report->addWidget(label);
    report->addLayout(Row({file, Named<QPushButton>("cmdSelectScheduledJobFile")}));
    column->addWidget(log);

    column->addStretch(1);
    auto* apply = Named<QPushButton>("cmdApply");
    apply->setDefault(true);
    column->addLayout(Row({Named<QPushButton>("cmdHelpRegularExpression", t("&Help")), nullptr,
                           Named<QPushButton>("cmdCancel"), apply}));
    dialog->setMinimumWidth(Space(480));
    return dialog;
}

static QWidget* MakeTiffPage()
{
    QWidget* from = Group("fraFromTiff");
    auto* source = static_cast<QVBoxLayout*>(from->layout());
    QLabel* label = Note("lblTiffPagesToDo");
    QLineEdit* pages = TextField("txtTiffPagesToDo");
    label->setBuddy(pages);
    source->addWidget(label);
    source->addWidget(pages);

    QWidget* to = Group("fraToTiff");
    auto* target = static_cast<QVBoxLayout*>(to->layout());
    target->addWidget(Named<QCheckBox>("cbTiffAppendTo"));
    target->addSpacing(Space(8));
    target->addWidget(Caption("lblCompressionMethod", QString()));
    for (const char* name :
         {"rbTiffCompressionMethod(0)", "rbTiffCompressionMethod(1)", "rbTiffCompressionMethod(2)",
          "rbTiffCompressionMethod(3)", "rbTiffCompressionMethod(4)"})
        target->addWidget(Named<QRadioButton>(name));

    auto* page = Named<QWidget>("fraTiff");
    QVBoxLayout* column = Column(page);
    column->addWidget(from);
    column->addWidget(to);
    column->addStretch(1);
    return page;
}

static QWidget* MakeJpegPage()
{
    QWidget* group = Group("fraJpegQuality");
    auto* bar = Named<QScrollBar>("HScrollValue", Qt::Horizontal);
    bar->setFocusPolicy(Qt::StrongFocus);
    QLabel* value = Caption("LabelValue", QString());
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance("0000"));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QHBoxLayout* row = Row({Caption("lblQuality", QString(), bar), bar, value});
    row->setStretch(1, 1);
    row->setSpacing(Space(8));
    static_cast<QVBoxLayout*>(group->layout())->addLayout(row);

    auto* page = Named<QWidget>("fraJpeg");
    QVBoxLayout* column = Column(page);
    column->addWidget(group);
    column->addStretch(1);
    return page;
}

static QWidget* MakeTagsPage()
{
    auto* page = Named<QWidget>("fraTags");
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, Space(8), 0, 0);
    grid->setSpacing(Space(8));
    int row = 0;
    for (const auto& [label, field] : std::initializer_list<std::pair<const char*, const char*>>{
             {"lblTitle", "txtTitle"},
             {"lblDescription", "txtDescription"},
             {"lblDate", "txtDate"},
             {"lblAuthor", "txtAuthor"},
             {"lblCopyright", "txtCopyright"},
             {"lblEquipmentModel", "txtEquipmentModel"},
             {"lblEquipmentType", "txtEquipmentType"}}) {
        QLineEdit* edit = TextField(field);
        grid->addWidget(Caption(label, QString(), edit), row, 0);
        grid->addWidget(edit, row, 1);
        ++row;
    }
    grid->setRowStretch(row, 1);
    return page;
}

std::unique_ptr<QWidget> MakeConversionOptions(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);
    QTabBar* tabs = TabRow("SSTab1", t("Conversion Options"));
    column->addWidget(tabs);
    column->addWidget(MakeTiffPage(), 1);
    column->addWidget(MakeJpegPage(), 1);
    column->addWidget(MakeTagsPage(), 1);
    column->addSpacing(Space(8));
    auto* done = Named<QPushButton>("cmdDone");
    done->setDefault(true);
    column->addLayout(Row({nullptr, Named<QPushButton>("cmdCancel"), done}));
    dialog->setMinimumSize(Space(520), Space(440));
    return dialog;
}
