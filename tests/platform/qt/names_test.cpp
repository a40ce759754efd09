// Every control has a widget, and every name that scripts and screen readers rely on is there.
#include <gtest/gtest.h>

#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <set>

#include "src/platform/qt/picture/picture_widget.h"
#include "tests/platform/qt/support/main_window_test_support.h"

namespace
{

enum class Kind {
    Action,
    Bar,
    Button,
    Check,
    Combo,
    EditableCombo,
    Frame,
    Label,
    List,
    Menu,
    Progress,
    Radio,
    Slider,
    StatusBar,
    Table,
    Tabs,
    Text,
    ToolBar,
    View
};

struct Name {
    const char* form;
    Kind kind;
    std::vector<const char*> names;
};

const std::vector<Name> kNames{
    {"frmMainMDI", Kind::Menu, {"mnuFile", "mnuConversion", "mnuHelp"}},
    {"frmMainMDI",
     Kind::Action,
     {"mnuNewConversionJob",
      "mnuOpenConversionJob",
      "mnuSaveConversionJob",
      "mnuSaveConversionJobAs",
      "mnuSaveLogAsConversionJob",
      "mnuLanguage",
      "mnuOptions",
      "mnuExit",
      "mnuAddConversionJob",
      "mnuRemoveConversionJob",
      "mnuUpdateConversionJob",
      "mnuBeginConversionJob",
      "mnuPause",
      "mnuRewindConversionJob",
      "mnuScheduleConversionJob",
      "mnuConversionOptions",
      "mnuLaunchHelpFile",
      "mnuHelpOnLine",
      "cmdHelpCommandLine",
      "mnuAbout",
      "mnuHelpProductHomePage",
      "mnuHelpProductUpdates",
      "mnuOrbelanHomePage",
      "mnuAdditionalImageConversionTools",
      "keyNew",
      "keyOpen",
      "keyAdd",
      "keyRemove",
      "keyUpdate",
      "keyRewind",
      "keyConvert",
      "keyPause",
      "KeySave",
      "KeySaveAs",
      "KeyOpen",
      "KeySaveLogAsConversionJob"}},
    {"frmMainMDI", Kind::ToolBar, {"tbMain"}},
    {"frmMainMDI", Kind::StatusBar, {"sbMain"}},
    {"frmMainMDI",
     Kind::Label,
     {"sbMain(1)", "sbMain(2)", "sbMain(3)", "sbMain(4)", "sbMain(5)", "sbMain(6)", "sbMain(7)", "sbMain(8)",
      "sbMain(9)", "sbMain(10)", "sbMain(11)"}},
    {"frmMainMDI", Kind::Progress, {"pbJob"}},
    {"frmMain", Kind::Tabs, {"ts", "tsSpecialProcessParameters", "tsImageViewer"}},
    {"frmMain", Kind::Table, {"fgToDo", "fgLog"}},
    {"frmMain", Kind::Menu, {"mnuContextToDo"}},
    {"frmMain", Kind::Radio, {"rbActionToDo(0)", "rbActionToDo(1)"}},
    {"frmMain",
     Kind::Button,
     {"cmdAdd",
      "cmdUpdate",
      "cmdRemove",
      "cmdPause",
      "cmdSelectSourceFile",
      "cmdSelectSourceFolder",
      "cmdSelectTargetFile",
      "cmdSelectTargetFolder",
      "picSelectTargetFile",
      "cmdLaunchOriginal",
      "cmdLaunchTarget",
      "cmdImageConversionAdvancedOptions",
      "cmdSelectSourceFileSpecialized",
      "cmdSelectSourceFolderSpecialized",
      "cmdSelectTargetFileSpecialized",
      "cmdSelectTargetFolderSpecialized",
      "cmdLaunchOriginalSpecialized",
      "cmdLaunchTargetSpecialized",
      "cmdSpecialProcessShowDialog",
      "cmdSelectCommandLine",
      "cmdLaunchCommandLine",
      "picZoomMainPicture(0)",
      "picZoomMainPicture(1)",
      "cmdReloadImage(0)",
      "cmdReloadImage(1)",
      "cmdReloadImage(2)"}},
    {"frmMain",
     Kind::Frame,
     {"frameCF", "frameTargetFile", "frameSpecializedAction", "frameSelectFilesForSpecialProcessing",
      "frameTargetFileSpecialized", "frameSpecialProcessParameters", "frameCommandLine", "frameImageViewer",
      "framePicNav(0)", "framePicNav(1)", "framePicNav(2)", "frameZoomPercentage", "frameLabelZoom"}},
    {"frmMain",
     Kind::EditableCombo,
     {"cbOriginalFile", "cbTargetFile", "cbOriginalFileSpecialized", "cbTargetFileSpecialized",
      "cbCommandLine", "cbCommandLineArguments"}},
    {"frmMain",
     Kind::Combo,
     {"cbFileTypeOriginal", "cbFileTypeTarget", "cbSpecialProcesses", "cbFileTypeOriginalSpecialized",
      "cbSpecialProcessListBox", "cbCommandLineWindowState", "cbCommandLineThreadPriority"}},
    {"frmMain",
     Kind::Check,
     {"cbDoSubfolders", "cbSaveToOriginalFolder", "cbDoSubfoldersSpecialized",
      "cbSaveToOriginalFolderSpecialized", "cbSpecialProcessBoolean"}},
    {"frmMain",
     Kind::Label,
     {"lblFileTypeOriginal", "lblDropHint", "lblSpecialProcessDescription",
      "lblSpecialProcessTextEntryDescription1", "lblSpecialProcessTextEntryDescription2", "lblColorSelected1",
      "lblColorSelected2", "lblFrame(0)", "lblFrame(1)", "lblFrame(2)", "lblZoomPercentage"}},
    {"frmMain",
     Kind::Text,
     {"txtSpecialProcessTextEntry1", "txtSpecialProcessTextEntry1b", "txtSpecialProcessTextEntry1c",
      "txtSpecialProcessTextEntry2", "txtCommandLineWaitTimeInSeconds"}},
    {"frmMain",
     Kind::Bar,
     {"VScrollSpecialProcess1", "VScrollSpecialProcess1b", "VScrollSpecialProcess1c",
      "VScrollSpecialProcess2", "HScrollFrame(0)", "HScrollFrame(1)", "HScrollFrame(2)", "scrollOffsetX",
      "scrollOffsetY"}},
    {"frmMain", Kind::View, {"ImageViewMain(0)", "ImageViewMain(1)", "ImageViewMain(2)"}},
    {"frmMain", Kind::Slider, {"SliderZoom"}},
    {"frmPleaseWait", Kind::Label, {"lblHeader", "lblLine1", "lblLine2"}},
    {"frmTypeMatchNotification", Kind::Label, {"lblNotification"}},
    {"frmTypeMatchNotification", Kind::Check, {"chkDontShowAgain"}},
    {"frmTypeMatchNotification", Kind::Button, {"cmdContinue", "cmdCancel"}},
    {"frmAbout", Kind::Label, {"lblProduct", "lblDescription", "lblVersion"}},
    {"frmAbout", Kind::Text, {"txtLibraries"}},
    {"frmAbout", Kind::Button, {"cmdOK"}},
    {"frmConversionOptions", Kind::Tabs, {"SSTab1"}},
    {"frmConversionOptions",
     Kind::Text,
     {"txtTiffPagesToDo", "txtTitle", "txtDescription", "txtDate", "txtAuthor", "txtCopyright",
      "txtEquipmentModel", "txtEquipmentType"}},
    {"frmConversionOptions",
     Kind::Radio,
     {"rbTiffCompressionMethod(0)", "rbTiffCompressionMethod(1)", "rbTiffCompressionMethod(2)",
      "rbTiffCompressionMethod(3)", "rbTiffCompressionMethod(4)"}},
    {"frmConversionOptions", Kind::Check, {"cbTiffAppendTo"}},
    {"frmConversionOptions", Kind::Bar, {"HScrollValue"}},
    {"frmConversionOptions", Kind::Label, {"LabelValue"}},
    {"frmConversionOptions", Kind::Button, {"cmdDone", "cmdCancel"}},
    {"frmImageViewer", Kind::EditableCombo, {"cbFile"}},
    {"frmImageViewer", Kind::View, {"ImageView1"}},
    {"frmImageViewer", Kind::Frame, {"framePicNav"}},
    {"frmImageViewer", Kind::Bar, {"HScrollFrame"}},
    {"frmImageViewer", Kind::Label, {"lblFrame", "sbStatus"}},
    {"frmImageViewer",
     Kind::Button,
     {"cmdApply", "cmdCancel", "CommandSave", "cmdGetFilePath", "picSelectSourceFile"}},
    {"frmLanguage", Kind::Label, {"lblLanguage"}},
    {"frmLanguage", Kind::List, {"List1"}},
    {"frmLanguage",
     Kind::Button,
     {"cmdEditLanguageFile", "cmdHelpLanguage", "cmdSelectFont", "cmdDone", "cmdCancel"}},
    {"frmOptions", Kind::Check, {"cbAutoLoadImages", "cbTryAutodetectIfFailed", "cbDeleteAfterProcessing"}},
    {"frmOptions", Kind::Label, {"lblDeleteWarning"}},
    {"frmOptions", Kind::Text, {"txtLogFile"}},
    {"frmOptions",
     Kind::Button,
     {"cmdSelectScheduledJobFile", "cmdApply", "cmdCancel", "cmdHelpRegularExpression"}},
    {"frmScheduler", Kind::Tabs, {"TabStrip1"}},
    {"frmScheduler",
     Kind::Frame,
     {"fraSetup", "fraOptions", "fraTimeBased", "fraCalendarBased", "fraDaily", "fraWeekly", "fraMonthly"}},
    {"frmScheduler", Kind::EditableCombo, {"cbScheduledJobFile"}},
    {"frmScheduler", Kind::Combo, {"cbHours", "cbMinutes", "cbAmPm"}},
    {"frmScheduler",
     Kind::Button,
     {"cmdSelectScheduledJobFile", "picScheduledJobFile", "cmdStartTimer", "cmdEndTimer", "cmdDone"}},
    {"frmScheduler",
     Kind::Radio,
     {"optTimeBased", "optCalendarBased", "optDaily", "optWeekly", "optMonthly", "optNumDays", "optWeekdays",
      "optImmediately", "optSkip"}},
    {"frmScheduler",
     Kind::Text,
     {"txtHours", "txtMinutes", "txtSeconds", "txtNumDays", "txtNumWeeks", "txtDayOfMonth", "txtNumMonths"}},
    {"frmScheduler",
     Kind::Check,
     {"chkMon", "chkTue", "chkWed", "chkThu", "chkFri", "chkSat", "chkSun", "chkPersistRunning"}},
};

bool IsOfKind(QObject* object, Kind kind)
{
    const auto* combo = qobject_cast<QComboBox*>(object);
    switch (kind) {
        case Kind::Action:
            return qobject_cast<QAction*>(object);
        case Kind::Bar:
            return qobject_cast<QAbstractSlider*>(object);
        case Kind::Button:
            return qobject_cast<QPushButton*>(object) || qobject_cast<QToolButton*>(object);
        case Kind::Check:
            return qobject_cast<QCheckBox*>(object);
        case Kind::Combo:
            return combo && !combo->isEditable();
        case Kind::EditableCombo:
            return combo && combo->isEditable();
        case Kind::Frame:
            return qobject_cast<QWidget*>(object);
        case Kind::Label:
            return qobject_cast<QLabel*>(object);
        case Kind::List:
            return qobject_cast<QListView*>(object);
        case Kind::Menu:
            return qobject_cast<QMenu*>(object);
        case Kind::Progress:
            return qobject_cast<QProgressBar*>(object);
        case Kind::Radio:
            return qobject_cast<QRadioButton*>(object);
        case Kind::Slider:
            return qobject_cast<QSlider*>(object);
        case Kind::StatusBar:
            return qobject_cast<QStatusBar*>(object);
        case Kind::Table:
            return qobject_cast<QTableView*>(object);
        case Kind::Tabs:
            return qobject_cast<QTabBar*>(object) || qobject_cast<QTabWidget*>(object);
        case Kind::Text:
            return qobject_cast<QLineEdit*>(object) || qobject_cast<QPlainTextEdit*>(object);
        case Kind::ToolBar:
            return qobject_cast<QToolBar*>(object);
        case Kind::View:
            return dynamic_cast<PictureWidget*>(object);
    }
    return false;
}

struct PromisedNames : testing::Test {
    ShownApplication shown;

    QWidget* Window(const std::string& form)
    {
        for (Form* known : shown.mirror->Forms())
            if (known->sName() == form || (known->sName() == "frmMainMDI" && form == "frmMain"))
                return &shown.mirror->Window(*known)->Widget();
        return nullptr;
    }
};

bool TakesFocus(const QWidget& widget)
{
    // A combo's line and the parts of tables and lists are known by the whole.
    return widget.focusPolicy() != Qt::NoFocus && !widget.objectName().isEmpty() &&
           !widget.objectName().startsWith("qt_") && !qobject_cast<const QComboBox*>(widget.parentWidget());
}

}  // namespace

TEST_F(PromisedNames, HaveAWidgetOfTheirKind)
{
    for (const Name& row : kNames) {
        QWidget* window = Window(row.form);
        ASSERT_NE(window, nullptr) << row.form;
        for (const char* name : row.names) {
            const QList<QObject*> found = window->findChildren<QObject*>(name);
            ASSERT_EQ(found.size(), 1) << row.form << "." << name;
            EXPECT_TRUE(IsOfKind(found.front(), row.kind)) << row.form << "." << name;
        }
    }
}

TEST_F(PromisedNames, HaveAWidgetForEveryControl)
{
    for (Form* form : shown.mirror->Forms()) {
        FormWindow* window = shown.mirror->Window(*form);
        ASSERT_NE(window, nullptr) << form->sName();
        EXPECT_EQ(window->Missing(), std::vector<std::string>()) << form->sName();
        EXPECT_EQ(window->Widget().objectName().toStdString(), form->sName());
    }
    EXPECT_EQ(shown.mirror->Main()->Content().Missing(), std::vector<std::string>());
    EXPECT_EQ(shown.mirror->Main()->Content().Widget().objectName(), "frmMain");
}

TEST_F(PromisedNames, AreToldToScreenReaders)
{
    std::size_t checked = 0;
    for (Form* form : shown.mirror->Forms()) {
        QWidget& window = shown.mirror->Window(*form)->Widget();
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (!TakesFocus(*widget))
                continue;
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const QString read = widget->accessibleName() + (button ? button->text() : QString());
            EXPECT_NE(read.toStdString(), "") << form->sName() << "." << widget->objectName().toStdString();
            ++checked;
        }
    }
    EXPECT_GT(checked, 60u);
}

TEST_F(PromisedNames, GiveEveryKeyToOneAction)
{
    std::set<QString> keys;
    for (const QAction* action : shown.Window().findChildren<QAction*>())
        for (const QKeySequence& key : action->shortcuts())
            EXPECT_TRUE(keys.insert(key.toString()).second) << key.toString().toStdString();
    EXPECT_TRUE(keys.contains("F5"));
}
