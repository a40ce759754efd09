// The main window over the real forms: what a person types, clicks and drops becomes tasks.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include "tests/platform/qt/support/bound_form.h"
#include "tests/platform/qt/support/main_window_test_support.h"

namespace
{

struct MainWindowStory : testing::Test {
    ShownApplication shown;
    frmMain& form = shown.app.frmMain;

    void Click(const char* name) { QTest::mouseClick(&shown.Get<QWidget>(name), Qt::LeftButton); }
    void Type(const char* combo, const char* text)
    {
        QLineEdit* edit = shown.Get<QComboBox>(combo).lineEdit();
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    /// Chooses the entry whose number is so, by keyboard.
    void Choose(const char* combo, int number)
    {
        auto& box = shown.Get<QComboBox>(combo);
        const int wanted = box.findData(number);
        ASSERT_GE(wanted, 0);
        QTest::keyClick(&box, Qt::Key_Home);
        while (box.currentIndex() < wanted)
            QTest::keyClick(&box, Qt::Key_Down);
    }
    void AddPictures()
    {
        for (const char* path : {"/in/a.bmp", "/in/b.bmp"})
            shown.app.images.AddImage(path);
        shown.app.files.AddFolder("/out");
        form.bAutoLoadImages = false;
    }
    void ClickRow(int row)
    {
        auto& table = shown.Get<QTableView>("fgToDo");
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                          table.visualRect(table.model()->index(row, 4)).center());
        QCoreApplication::processEvents();
    }
    QString Cell(int row, int column)
    {
        return shown.Get<QTableView>("fgToDo").model()->index(row, column).data(Qt::EditRole).toString();
    }
    int Tasks() { return shown.Get<QTableView>("fgToDo").model()->rowCount() - 1; }
};

}  // namespace

TEST_F(MainWindowStory, ComposesItsTitleFromFrameAndJob)
{
    EXPECT_EQ(shown.Window().windowTitle(), "Varnel");

    form.SetCaption("/home/me/a.VJB");
    EXPECT_EQ(shown.Window().windowTitle(), "Varnel - /home/me/a.VJB");

    shown.app.frmMainMDI.SetCaption("Job is Running");
    EXPECT_EQ(shown.Window().windowTitle(), "Job is Running - /home/me/a.VJB");
    EXPECT_EQ(shown.Get("frmMain").windowTitle(), "/home/me/a.VJB");
}

TEST_F(MainWindowStory, SaysWhatToDoWithAnEmptyTable)
{
    auto& hint = shown.Get<QLabel>("lblDropHint");
    EXPECT_TRUE(hint.isVisible());
    EXPECT_EQ(hint.text(), "Drop files or folders here");

    form.fgToDo.AddItem("1", 1);
    EXPECT_FALSE(hint.isVisible());

    form.fgToDo.RemoveItem(1);
    EXPECT_TRUE(hint.isVisible());
}

TEST_F(MainWindowStory, AddsATaskByKeysAndRemovesItByMouseAndKey)
{
    AddPictures();

    Type("cbOriginalFile", "/in/*.bmp");
    Type("cbTargetFile", "/out/*.png");
    Click("cmdAdd");

    ASSERT_EQ(Tasks(), 1);
    EXPECT_EQ(Cell(0, 4), "/in/*.bmp");
    EXPECT_EQ(Cell(0, 7), "/out/*.png");
    EXPECT_FALSE(shown.Get<QPushButton>("cmdRemove").isEnabled());

    ClickRow(0);
    EXPECT_EQ(form.fgToDo.Row(), 1);
    EXPECT_TRUE(shown.Get<QPushButton>("cmdRemove").isEnabled());
    QTest::keyClick(&shown.Get<QTableView>("fgToDo"), Qt::Key_Delete);
    EXPECT_EQ(Tasks(), 0);
}

TEST_F(MainWindowStory, ChoosesTypesByKeyboard)
{
    AddPictures();
    Choose("cbFileTypeOriginal", 2);
    Choose("cbFileTypeTarget", 8);

    Type("cbOriginalFile", "/in/a.bmp");
    Type("cbTargetFile", "/out/a.png");
    QTest::keyClick(&shown.Window(), Qt::Key_Return, Qt::ControlModifier);

    ASSERT_EQ(Tasks(), 1);
    EXPECT_EQ(Cell(0, 5), "2");
    EXPECT_EQ(Cell(0, 8), "8");
}

TEST_F(MainWindowStory, MakesTasksOfDroppedFiles)
{
    AddPictures();
    Type("cbTargetFile", "/out/*.png");

    EXPECT_TRUE(Drop(*shown.Get<QTableView>("fgToDo").viewport(),
                     {QUrl::fromLocalFile("/in/b.bmp"), QUrl::fromLocalFile("/in/a.bmp")}));

    ASSERT_EQ(Tasks(), 2);
    EXPECT_EQ(Cell(0, 4), "/in/a.bmp");
    EXPECT_EQ(Cell(1, 4), "/in/b.bmp");
}

TEST_F(MainWindowStory, EndsWhenThePersonClosesIt)
{
    bool ended = false;
    QTimer::singleShot(0, qApp, [&] { shown.Window().close(); });

    shown.mirror->Window(shown.app.frmMainMDI)->RunUntilHidden();
    ended = true;

    EXPECT_TRUE(ended);
    EXPECT_FALSE(shown.app.frmMainMDI.Visible());
}

TEST_F(MainWindowStory, StaysWhenTheLogicRefusesToClose)
{
    shown.app.frmMainMDI.OnQueryUnload = [](CloseReason) { return false; };

    shown.Window().close();

    EXPECT_TRUE(shown.Window().isVisible());
    EXPECT_TRUE(shown.app.frmMainMDI.Visible());
}

TEST_F(MainWindowStory, TellsItsPlaceInTwips)
{
    shown.Window().resize(1100, 720);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.app.frmMainMDI.Place().lWidth, 1100 * 15);
    EXPECT_EQ(shown.app.frmMainMDI.Place().lHeight, 720 * 15);

    WindowPlace place = shown.app.frmMainMDI.Place();
    place.lWidth = 1200 * 15;
    shown.app.frmMainMDI.SetPlace(place);
    EXPECT_EQ(shown.Window().width(), 1200);
}

TEST_F(MainWindowStory, ShowsAModalFormUntilItIsHidden)
{
    Form& scheduler = shown.app.frmScheduler;
    QTimer::singleShot(0, qApp, [&] {
        FormWindow& window = *shown.mirror->Window(scheduler);
        EXPECT_TRUE(window.Widget().isVisible());
        EXPECT_TRUE(window.Widget().isModal());
        QTest::keyClick(&window.Widget(), Qt::Key_Escape);
    });

    shown.mirror->ShowModal(scheduler);

    EXPECT_FALSE(scheduler.Visible());
}
