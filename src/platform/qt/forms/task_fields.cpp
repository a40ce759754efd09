// Lays out the fields of a task in reading order: what, from where, with which parameters, to where.
#include "src/platform/qt/forms/task_fields.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTabBar>
#include <string>

#include "src/platform/qt/views/range_views.h"

namespace
{

/// Makes the names of a set of fields: the special process has those of the conversion, with an ending.
class Names
{
public:
    explicit Names(const char* ending) : ending_(ending) {}
    const char* operator()(const char* name)
    {
        name_ = name + ending_;
        return name_.c_str();
    }

private:
    std::string ending_;
    std::string name_;
};

}  // namespace

static QWidget* Holder(const char* name, QLayout* layout)
{
    auto* widget = Named<QWidget>(name);
    widget->setLayout(layout);
    return widget;
}

static void AddOriginal(QVBoxLayout& column, Names name, const char* type_label, const Translate& t)
{
    QComboBox* file = RecentTexts(name("cbOriginalFile"));
    QLabel* heading = Heading(t("Original"));
    heading->setBuddy(file);
    column.addWidget(heading);
    column.addLayout(Row({file, IconButton(name("cmdSelectSourceFile"), "file", t("Select a file")),
                          IconButton(name("cmdSelectSourceFolder"), "folder", t("Select a folder")),
                          IconButton(name("cmdLaunchOriginal"), "launch", t("Open"))}));
    QComboBox* type = Choice(name("cbFileTypeOriginal"));
    auto* subfolders = Named<QCheckBox>(name("cbDoSubfolders"), t("With subfolders"));
    QHBoxLayout* row = Row({Caption(type_label, t("Type"), type), type, subfolders});
    row->setStretch(1, 1);
    row->insertSpacing(2, Space(8));
    column.addLayout(row);
}

static QWidget* MakeTarget(Names name, const Translate& t)
{
    QComboBox* file = RecentTexts(name("cbTargetFile"));
    file->setAccessibleName(t("Target"));
    QToolButton* select = IconButton(name("cmdSelectTargetFile"), "file", t("Select a file"));
    auto* row = Row({file, select, IconButton(name("cmdSelectTargetFolder"), "folder", t("Select a folder")),
                     IconButton(name("cmdLaunchTarget"), "launch", t("Open"))});
    QWidget* frame = Holder(name("frameTargetFile"), row);
    frame->setFocusProxy(file);
    return frame;
}

QWidget* MakeConversionFields(const Translate& t)
{
    Names name("");
    QVBoxLayout* column = Column();
    AddOriginal(*column, name, "lblFileTypeOriginal", t);
    column->addWidget(Heading(t("Target")));
    QWidget* target = MakeTarget(name, t);
    column->addWidget(target);
    // The picture of the file picker's button hides with it and does the same. It is behind the button.
    auto* select = target->findChild<QToolButton*>("cmdSelectTargetFile");
    QToolButton* picture = IconButton("picSelectTargetFile", "file", t("Select a file"));
    picture->setFocusPolicy(Qt::NoFocus);
    auto* stack = new QGridLayout;
    auto* row = static_cast<QHBoxLayout*>(target->layout());
    const int at = row->indexOf(select);
    row->removeWidget(select);
    stack->addWidget(picture, 0, 0);
    stack->addWidget(select, 0, 0);
    row->insertLayout(at, stack);
    select->raise();

    QComboBox* type = Choice("cbFileTypeTarget");
    auto* beside = Named<QCheckBox>("cbSaveToOriginalFolder", t("Save beside originals"));
    QHBoxLayout* types = Row({Caption("lblFileTypeTarget", t("Type"), type), type, beside});
    types->setStretch(1, 1);
    types->insertSpacing(2, Space(8));
    column->addLayout(types);
    column->addLayout(
        Row({Named<QPushButton>("cmdImageConversionAdvancedOptions", t("Options...")), nullptr}));
    return Holder("frameCF", column);
}

static QHBoxLayout* NumberRow(const char* ending, const Translate& t, QLabel* label)
{
    Names name(ending);
    QLineEdit* number = NumberField(name("txtSpecialProcessTextEntry"), 8);
    number->setAccessibleName(t("Value"));
    if (!label->buddy())
        label->setBuddy(number);
    return Row({number, Named<StepButtons>(name("VScrollSpecialProcess"))});
}

// The three entries of the first number are shown one at a time, at the same place.
static QWidget* MakeParameters(const Translate& t)
{
    QVBoxLayout* column = Column();
    QLabel* first_label = Note("lblSpecialProcessTextEntryDescription1");
    column->addWidget(first_label);
    auto* first = Row({});
    for (const char* ending : {"1", "1b", "1c"})
        first->addLayout(NumberRow(ending, t, first_label));
    QComboBox* list = Choice("cbSpecialProcessListBox");
    list->setAccessibleName(t("Value"));
    first->addWidget(list, 1);
    first->addStretch(0);
    column->addLayout(first);
    QLabel* second_label = Note("lblSpecialProcessTextEntryDescription2");
    column->addWidget(second_label);
    auto* second = NumberRow("2", t, second_label);
    second->addStretch(1);
    column->addLayout(second);
    auto* check = Named<QCheckBox>("cbSpecialProcessBoolean");
    check->setAccessibleName(t("Value"));
    column->addWidget(check);
    auto* button = Named<QPushButton>("cmdSpecialProcessShowDialog", t("Color..."));
    auto* colour = Named<QLabel>("lblColorSelected1");
    colour->setFrameShape(QFrame::StyledPanel);
    colour->setAutoFillBackground(true);
    column->addLayout(Row({button, colour, Named<QLabel>("lblColorSelected2"), nullptr}));
    return Holder("frameSpecialProcessParameters", column);
}

static QWidget* MakeProcessFiles(const Translate& t)
{
    Names name("Specialized");
    QVBoxLayout* column = Column();
    AddOriginal(*column, name, "lblFileTypeOriginalSpecialized", t);
    QTabBar* tabs = TabRow("tsSpecialProcessParameters", t("Parameters"));
    column->addSpacing(Space(8));
    column->addWidget(tabs);
    column->addWidget(MakeParameters(t));
    column->addWidget(Heading(t("Target")));
    column->addWidget(MakeTarget(name, t));
    column->addWidget(Named<QCheckBox>("cbSaveToOriginalFolderSpecialized", t("Save beside originals")));
    return Holder("frameSelectFilesForSpecialProcessing", column);
}

static QWidget* MakeLaunchFields(const Translate& t)
{
    QVBoxLayout* column = Column();
    QComboBox* program = RecentTexts("cbCommandLine");
    QLabel* heading = Heading(t("Program"));
    heading->setBuddy(program);
    column->addWidget(heading);
    column->addLayout(Row({program, IconButton("cmdSelectCommandLine", "file", t("Select a file")),
                           IconButton("cmdLaunchCommandLine", "launch", t("Open"))}));
    QComboBox* arguments = RecentTexts("cbCommandLineArguments");
    QLabel* arguments_heading = Heading(t("Arguments"));
    arguments_heading->setBuddy(arguments);
    column->addWidget(arguments_heading);
    column->addWidget(arguments);
    auto* grid = new QGridLayout;
    grid->setSpacing(Space(8));
    QComboBox* state = Choice("cbCommandLineWindowState");
    QComboBox* priority = Choice("cbCommandLineThreadPriority");
    QLineEdit* wait = NumberField("txtCommandLineWaitTimeInSeconds", 8);
    grid->addWidget(Caption("lblCommandLineWindowState", t("Window"), state), 0, 0);
    grid->addWidget(state, 0, 1);
    grid->addWidget(Caption("lblCommandLineThreadPriority", t("Priority"), priority), 1, 0);
    grid->addWidget(priority, 1, 1);
    grid->addWidget(Caption("lblCommandLineWaitTimeInSeconds", t("Longest wait in seconds"), wait), 2, 0);
    grid->addWidget(wait, 2, 1);
    grid->setColumnStretch(1, 1);
    column->addSpacing(Space(8));
    column->addLayout(grid);
    return Holder("frameCommandLine", column);
}

QWidget* MakeProcessFields(const Translate& t)
{
    QVBoxLayout* column = Column();
    QComboBox* processes = Choice("cbSpecialProcesses");
    processes->setAccessibleName(t("Special process"));
    column->addWidget(processes);
    column->addWidget(Note("lblSpecialProcessDescription"));
    column->addWidget(MakeProcessFiles(t));
    column->addWidget(MakeLaunchFields(t));
    return Holder("frameSpecializedAction", column);
}
