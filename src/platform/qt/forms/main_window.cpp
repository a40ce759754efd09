// Lays out the main window.
#include "src/platform/qt/forms/main_window.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <vector>

#include "src/platform/qt/forms/task_fields.h"
#include "src/platform/qt/forms/viewer_pane.h"
#include "src/platform/qt/views/grid_view.h"
#include "src/platform/qt/views/line_icon.h"
#include "src/platform/qt/views/qt_text.h"

namespace
{

struct Command {
    const char* name;  ///< null for a separator
    const char* text = nullptr;
    const char* icon = nullptr;
};

constexpr Command kSeparator{nullptr};

const std::vector<Command> kFileMenu{
    {"mnuNewConversionJob", "&New Conversion Job"},
    {"mnuOpenConversionJob", "&Open Conversion Job"},
    {"mnuSaveConversionJob", "Save Conversion Job"},
    {"mnuSaveConversionJobAs", "Save Conversion Job &As.."},
    {"mnuSaveLogAsConversionJob", "Save &Log as a Conversion Job"},
    kSeparator,
    {"mnuLanguage", "Lan&guage"},
    {"mnuOptions", "Options"},
    kSeparator,
    {"mnuExit", "E&xit"},
};
const std::vector<Command> kConversionMenu{
    {"mnuAddConversionJob", "&Add Conversion Job"},
    {"mnuRemoveConversionJob", "&Delete Conversion Job"},
    {"mnuUpdateConversionJob", "&Update Conversion Job"},
    kSeparator,
    {"mnuBeginConversionJob", "&Begin Conversion Job"},
    {"mnuPause", "&Pause Conversion Job"},
    {"mnuRewindConversionJob", "&Rewind Conversion Job"},
    kSeparator,
    {"mnuScheduleConversionJob", "&Schedule a Conversion Job"},
    {"mnuConversionOptions", "Conversion &Options"},
};
const std::vector<Command> kHelpMenu{
    {"mnuLaunchHelpFile", "&Help File"},
    {"mnuHelpOnLine", "Web Help (most up to date)"},
    {"cmdHelpCommandLine", "Using the &Command Line"},
    kSeparator,
    {"mnuHelpProductHomePage", "Product Home &Page"},
    {"mnuHelpProductUpdates", "Product &Updates"},
    {"mnuOrbelanHomePage", "&Orbelan Home Page"},
    {"mnuAdditionalImageConversionTools", "Additional Image Conversion Tools"},
    kSeparator,
    {"mnuAbout", "&About"},
};
const std::vector<Command> kOpenMenu{
    {"KeySave", "Save Conversion Job"},
    {"KeySaveAs", "Save Conversion Job As.."},
    {"KeyOpen", "Open Conversion Job.."},
    {"KeySaveLogAsConversionJob", "Save &Log as a Conversion Job"},
};
const std::vector<Command> kToolBar{
    {"keyNew", "New", "new"},
    {"keyOpen", "Open", "open"},
    kSeparator,
    {"keyAdd", "&Add", "add"},
    {"keyRemove", "&Delete", "remove"},
    {"keyUpdate", "&Update", "update"},
    kSeparator,
    {"keyRewind", "Rewind", "rewind"},
    {"keyConvert", "Convert", "convert"},
    {"keyPause", "&Pause", "pause"},
};

/// Says what to do with a table that holds nothing but the row for new tasks.
class DropHint final : public QLabel
{
public:
    explicit DropHint(QTableView& table) : QLabel(&table), table_(table)
    {
        setAlignment(Qt::AlignCenter);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setForegroundRole(QPalette::PlaceholderText);
        table.installEventFilter(this);
    }
    /// Call this once the table has its model.
    void Watch()
    {
        QAbstractItemModel* model = table_.model();
        connect(model, &QAbstractItemModel::rowsInserted, this, &DropHint::Follow);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &DropHint::Follow);
        connect(model, &QAbstractItemModel::modelReset, this, &DropHint::Follow);
        Follow();
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
            Place();
        return false;
    }

private:
    void Follow()
    {
        setVisible(table_.model()->rowCount() <= 1);
        Place();
    }
    void Place()
    {
        const int header =
            table_.horizontalHeader()->height() + table_.verticalHeader()->defaultSectionSize();
        setGeometry(table_.rect().adjusted(0, header, 0, 0));
    }

    QTableView& table_;
};

}  // namespace

static QAction* MakeAction(const Command& command, QMainWindow& window, const Translate& t)
{
    auto* action = new QAction(t(command.text), &window);
    action->setObjectName(command.name);
    if (command.icon)
        action->setIcon(LineIcon(command.icon));
    return action;
}

static void Fill(QWidget& menu, const std::vector<Command>& commands, QMainWindow& window, const Translate& t)
{
    for (const Command& command : commands) {
        QAction* action = nullptr;
        if (command.name) {
            action = MakeAction(command, window, t);
        } else {
            action = new QAction(&window);
            action->setSeparator(true);
        }
        menu.addAction(action);
    }
}

static void AddMenu(const char* name, const char* title, const std::vector<Command>& commands,
                    QMainWindow& window, const Translate& t)
{
    QMenu* menu = window.menuBar()->addMenu(t(title));
    menu->setObjectName(name);
    Fill(*menu, commands, window, t);
}

static void MakeToolBar(QMainWindow& window, const Translate& t)
{
    auto* bar = Named<QToolBar>("tbMain");
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(Space(20), Space(20)));
    Fill(*bar, kToolBar, window, t);
    bar->setMinimumHeight(Space(44));
    window.addToolBar(bar);

    auto* jobs = new QMenu(&window);
    Fill(*jobs, kOpenMenu, window, t);
    auto* open = static_cast<QToolButton*>(bar->widgetForAction(window.findChild<QAction*>("keyOpen")));
    open->setMenu(jobs);
    open->setPopupMode(QToolButton::MenuButtonPopup);
    auto* convert = window.findChild<QAction*>("keyConvert");
    convert->setIcon(LineIcon("convert", QPalette::HighlightedText));
    MakePrimary(static_cast<QToolButton*>(bar->widgetForAction(convert)));
    for (QAction* action : bar->actions())
        if (QWidget* button = bar->widgetForAction(action); button && !action->isSeparator()) {
            button->setFocusPolicy(Qt::TabFocus);
            button->setMinimumHeight(Space(32));
        }
}

static QLabel* Panel(int number, int digits)
{
    const QByteArray name = "sbMain(" + QByteArray::number(number) + ')';
    QLabel* label = Named<QLabel>(name.constData());
    label->setTextFormat(Qt::PlainText);
    if (digits > 0) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QString(digits, u'0')));
    }
    return label;
}

// What is happening is on the left; numbers are on the right, each in a width that it can grow in.
static void MakeStatusBar(QMainWindow& window)
{
    auto* bar = Named<QStatusBar>("sbMain");
    auto* texts = Row({Panel(1, 0)});
    for (const int panel : {2, 8}) {
        const QByteArray name = "sbMain(" + QByteArray::number(panel) + ')';
        auto* label = Named<ElidedLabel>(name.constData());
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
        texts->addWidget(label);
    }
    texts->addStretch(1);
    auto* job = Named<QProgressBar>("pbJob");
    job->setRange(0, 1000);
    job->setTextVisible(false);
    job->setFixedSize(Space(220), Space(12));
    job->hide();
    for (const int panel : {4, 5, 7, 9, 10})
        texts->addWidget(Panel(panel, 0));
    texts->addWidget(Panel(3, 5));
    texts->addWidget(job);
    texts->addWidget(Panel(6, 4));
    texts->addWidget(Panel(11, 7));
    texts->setSpacing(Space(8));
    texts->setContentsMargins(Space(8), 0, Space(8), 0);
    auto* panels = new QWidget;
    panels->setLayout(texts);
    bar->addWidget(panels, 1);
    window.setStatusBar(bar);
}

static GridWidget* MakeTable(const char* name, const QString& accessible_name, const Translate& t)
{
    GridLook look;
    look.path_columns = {4, 7};
    look.tip_columns = {4, 7, 11};
    look.pass_icon = ColouredIcon("pass", QColor(0x1a, 0x7f, 0x37), QColor(0x3f, 0xb9, 0x50));
    look.fail_icon = ColouredIcon("fail", QColor(0xcf, 0x22, 0x2e), QColor(0xf8, 0x51, 0x49));
    look.passed = t("Passed");
    look.failed = t("Failed");
    auto* table = Named<GridWidget>(name, look);
    table->setAccessibleName(accessible_name);
    table->setFrameShape(QFrame::NoFrame);
    table->setIconSize(QSize(Space(16), Space(16)));
    return table;
}

static void MakeContextMenu(GridWidget& table, QMainWindow& window)
{
    auto* menu = new QMenu(&window);
    menu->setObjectName("mnuContextToDo");
    for (const char* name : {"keyUpdate", "keyRemove", "", "keyConvert", "keyPause", "keyRewind"})
        if (auto* action = window.findChild<QAction*>(name); action && *name)
            menu->addAction(action);
        else
            menu->addSeparator();
    table.setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(
        &table, &QWidget::customContextMenuRequested, menu,
        [menu, view = &table](const QPoint& at) { menu->popup(view->viewport()->mapToGlobal(at)); });
}

static QWidget* MakeFields(const Translate& t)
{
    auto* fields = new QWidget;
    QVBoxLayout* column = Column(fields);
    QHBoxLayout* actions = Row({Named<QRadioButton>("rbActionToDo(0)", t("Convert images")),
                                Named<QRadioButton>("rbActionToDo(1)", t("Special process")), nullptr});
    actions->setSpacing(Space(16));
    column->addLayout(actions);
    auto* conversion = new QWidget;
    Column(conversion)->addWidget(MakeConversionFields(t));
    QWidget* process = MakeProcessFields(t);
    HideBehind(*conversion, *process);
    column->addWidget(conversion);
    column->addWidget(process);
    column->addStretch(1);
    column->setContentsMargins(Space(12), Space(12), Space(8), 0);

    auto* area = new QScrollArea;
    area->setWidget(fields);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->viewport()->setAutoFillBackground(false);
    fields->setAutoFillBackground(false);

    auto* add = Named<QPushButton>("cmdAdd", t("Add task"));
    add->setIcon(LineIcon("add", QPalette::HighlightedText));
    MakePrimary(add);
    QHBoxLayout* buttons =
        Row({add, Named<QPushButton>("cmdUpdate", t("Update")), Named<QPushButton>("cmdRemove", t("Remove")),
             Named<QPushButton>("cmdPause", t("Pause")), nullptr});
    buttons->setContentsMargins(Space(12), 0, Space(8), Space(8));
    auto* pane = new QWidget;
    QVBoxLayout* panes = Column(pane);
    panes->addWidget(area, 1);
    panes->addLayout(buttons);
    return pane;
}

static QWidget* MakeContent(QMainWindow& window, const Translate& t)
{
    auto* fields = MakeFields(t);
    auto* viewer = MakeViewerPane(t);
    viewer->layout()->setContentsMargins(Space(8), Space(8), Space(12), 0);
    auto* top = new QSplitter(Qt::Horizontal);
    top->addWidget(fields);
    top->addWidget(viewer);
    top->setStretchFactor(0, 0);
    top->setStretchFactor(1, 1);
    top->setSizes({Space(456), Space(824)});
    top->setCollapsible(0, false);

    auto* tabs = Named<QTabWidget>("ts");
    tabs->setDocumentMode(true);
    tabs->setAccessibleName(t("Tasks and log"));
    tabs->tabBar()->setAccessibleName(t("Tasks and log"));
    tabs->tabBar()->setExpanding(false);
    auto* tasks = MakeTable("fgToDo", t("Tasks"), t);
    MakeContextMenu(*tasks, window);
    tabs->addTab(tasks, t("Tasks"));
    tabs->addTab(MakeTable("fgLog", t("Log"), t), t("Log"));

    auto* whole = new QSplitter(Qt::Vertical);
    whole->addWidget(top);
    auto* tables = new QWidget;
    QVBoxLayout* column = Column(tables);
    column->addWidget(tabs);
    column->setContentsMargins(Space(12), 0, Space(12), 0);
    whole->addWidget(tables);
    whole->setStretchFactor(0, 1);
    whole->setStretchFactor(1, 0);
    whole->setSizes({Space(496), Space(216)});
    whole->setChildrenCollapsible(false);
    auto* content = Named<QWidget>("frmMain");
    Column(content)->addWidget(whole);
    return content;
}

static std::unique_ptr<QMainWindow> MakeWindow(const Translate& t)
{
    auto window = std::make_unique<QMainWindow>();
    window->setObjectName("frmMainMDI");
    window->setWindowIcon(LineIcon("convert"));
    AddMenu("mnuFile", "&File", kFileMenu, *window, t);
    AddMenu("mnuConversion", "C&onversion", kConversionMenu, *window, t);
    AddMenu("mnuHelp", "&Help", kHelpMenu, *window, t);
    MakeToolBar(*window, t);
    MakeStatusBar(*window);
    window->setCentralWidget(MakeContent(*window, t));
    window->resize(Space(1280), Space(800));
    return window;
}

MainWindow::MainWindow(frmMainMDI& mdi, frmMain& form, const Translate& t)
{
    std::unique_ptr<QMainWindow> window = MakeWindow(t);
    QWidget* content = window->centralWidget();
    auto* hint = new DropHint(*window->findChild<QTableView*>("fgToDo"));
    hint->setObjectName("lblDropHint");
    hint->setText(t("Drop files or folders here"));
    content_ = std::make_unique<FormView>(form, *content, *window);
    hint->Watch();
    frame_ = std::make_unique<FormWindow>(mdi, std::move(window));
    frame_->ComposeTitle([content](const QString& caption) {
        const QString frame = caption.isEmpty() ? QStringLiteral("Varnel") : caption;
        const QString job = content->windowTitle();
        return job.isEmpty() ? frame : frame + QStringLiteral(" - ") + job;
    });
    QObject::connect(content, &QWidget::windowTitleChanged, frame_.get(),
                     [frame = frame_.get()] { frame->CaptionChanged(); });
}
