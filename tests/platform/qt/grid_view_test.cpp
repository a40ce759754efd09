// The table mirrors its grid row by row and passes on what a person does in it.
#include "src/platform/qt/views/grid_view.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>

#include "tests/platform/qt/support/bound_form.h"

namespace
{

constexpr int kColumns = 4;
constexpr int kPath = 1;
constexpr int kPass = 3;

struct GridForm : TestForm {
    Grid fg{*this, "fg", kColumns};
};

GridLook Look()
{
    GridLook look;
    look.path_columns = {kPath};
    look.tip_columns = {kPath};
    look.pass_icon = QIcon(QPixmap(8, 8));
    look.fail_icon = QIcon(QPixmap(8, 8));
    look.passed = "Passed";
    look.failed = "Failed";
    return look;
}

struct GridViews : testing::Test {
    GridForm form;
    Grid& fg = form.fg;
    BoundForm bound{form};
    GridWidget& table = bound.Add(new GridWidget(Look()), "fg");

    GridViews()
    {
        fg.SetTextMatrix(0, 0, "#");
        fg.AddItem("1\t/in/a.png", 1);
        fg.AddItem("2\t/in/b.png", 2);
        fg.AddItem("*", 3);
        for (int column = 1; column < kColumns; ++column)
            fg.SetColWidth(column, 1500);
        fg.SetRow(1);
    }
    QString Text(int row, int column, int role = Qt::DisplayRole)
    {
        return table.model()->index(row, column).data(role).toString();
    }
    QPoint Cell(int row, int column) { return table.visualRect(table.model()->index(row, column)).center(); }
    void Click(int row)
    {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, Cell(row, kPath));
        HandleQtEvents();
    }
};

}  // namespace

TEST_F(GridViews, ShowRowsBelowTheHeader)
{
    bound.Bind();

    EXPECT_EQ(table.model()->rowCount(), 3);
    EXPECT_EQ(table.model()->columnCount(), kColumns);
    EXPECT_EQ(table.model()->headerData(0, Qt::Horizontal).toString(), "#");
    EXPECT_EQ(Text(1, kPath), "/in/b.png");
    EXPECT_EQ(Text(1, kPath, Qt::ToolTipRole), "/in/b.png");
    EXPECT_EQ(table.currentIndex().row(), 0);
}

TEST_F(GridViews, ShowAPictureInPlaceOfItsText)
{
    bound.Bind();
    CellFormat format;
    format.ePicture = CellPicture::imageFail;

    fg.SetTextMatrix(1, kPass, "-");
    fg.SetFormat(1, kPass, format);

    EXPECT_EQ(Text(0, kPass), "");
    EXPECT_EQ(Text(0, kPass, Qt::EditRole), "-");
    EXPECT_EQ(Text(0, kPass, Qt::AccessibleTextRole), "Failed");
    EXPECT_FALSE(table.model()->index(0, kPass).data(Qt::DecorationRole).isNull());
    EXPECT_TRUE(table.model()->index(1, kPass).data(Qt::DecorationRole).isNull());
}

TEST_F(GridViews, HideColumnsOfNoWidthAndTakeTheOthersInPixels)
{
    bound.Bind();
    EXPECT_TRUE(table.isColumnHidden(0));
    EXPECT_EQ(table.columnWidth(kPath), 100);

    table.horizontalHeader()->resizeSection(kPath, 120);
    EXPECT_EQ(fg.ColWidth(kPath), 1800);

    fg.SetColWidth(kPath, 3000);
    EXPECT_EQ(table.columnWidth(kPath), 200);
}

TEST_F(GridViews, FollowInsertedMovedAndRemovedRows)
{
    bound.Bind();

    fg.AddItem("0\t/in/0.png", 1);
    EXPECT_EQ(Text(0, kPath), "/in/0.png");
    fg.MoveItems(1, 1, 3);
    EXPECT_EQ(Text(0, kPath), "/in/a.png");
    EXPECT_EQ(Text(1, kPath), "/in/0.png");
    fg.RemoveItem(1);
    EXPECT_EQ(Text(0, kPath), "/in/0.png");
    fg.SetRows(0);
    EXPECT_EQ(table.model()->rowCount(), 0);
    fg.SetRows(2);
    EXPECT_EQ(table.model()->rowCount(), 1);
}

TEST_F(GridViews, TakeThirtyThousandRowsInOneStep)
{
    bound.Bind();
    QSignalSpy inserted(table.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(table.model(), &QAbstractItemModel::modelReset);
    {
        const RedrawLock lock(fg);
        for (int n = 0; n < 30000; ++n)
            fg.AddItem(std::to_string(n) + "\t/in/x.png", fg.Rows() - 1);
    }
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(table.model()->rowCount(), 30003);
}

TEST_F(GridViews, KeepPlaceAndSelectionWhileRowsAreAdded)
{
    for (int n = 0; n < 200; ++n)
        fg.AddItem("n\t/in/x.png", 3);
    bound.Bind();
    table.verticalScrollBar()->setValue(500);
    HandleQtEvents();

    for (int n = 0; n < 50; ++n)
        fg.AddItem("n\t/in/y.png", fg.Rows());

    EXPECT_EQ(table.verticalScrollBar()->value(), 500);
    EXPECT_EQ(table.currentIndex().row(), 0);
}

TEST_F(GridViews, ChooseRowsByMouseAndKeyboard)
{
    bound.Bind();

    Click(1);
    EXPECT_EQ(fg.Row(), 2);
    EXPECT_EQ(table.selectionModel()->selectedRows().size(), 1);

    QTest::keyClick(&table, Qt::Key_Down);
    HandleQtEvents();
    EXPECT_EQ(fg.Row(), 3);
}

TEST_F(GridViews, StayOnTheRowWhenTheLogicRefuses)
{
    fg.OnBeforeRowChange = [](std::int32_t) { return false; };
    bound.Bind();

    Click(1);
    EXPECT_EQ(fg.Row(), 1);
    EXPECT_EQ(table.currentIndex().row(), 0);
    EXPECT_EQ(table.selectionModel()->selectedRows().front().row(), 0);

    QTest::keyClick(&table, Qt::Key_Down);
    HandleQtEvents();
    EXPECT_EQ(table.currentIndex().row(), 0);
}

TEST_F(GridViews, TakeNoRowForAPersonsChoiceWhenOneIsRemoved)
{
    fg.SetRow(2);
    bound.Bind();
    int asked = 0;
    fg.OnBeforeRowChange = [&](std::int32_t) {
        ++asked;
        return true;
    };

    fg.RemoveItem(2);
    HandleQtEvents();

    EXPECT_EQ(asked, 0);
    EXPECT_EQ(table.currentIndex().row(), fg.Row() - 1);
}

TEST_F(GridViews, PassOnKeysAndDoubleClicks)
{
    std::string key;
    int opened = 0;
    fg.OnKeyDown = [&](const std::string& pressed) {
        key = pressed;
        return pressed == "Del";
    };
    fg.OnDblClick = [&] { ++opened; };
    bound.Bind();

    QTest::keyClick(&table, Qt::Key_Delete);
    EXPECT_EQ(key, "Del");
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_EQ(opened, 1);
    Click(0);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, Cell(0, kPath));
    EXPECT_EQ(opened, 2);
}

TEST_F(GridViews, ScrollToTheTopRowAndTellWhatIsVisible)
{
    for (int n = 0; n < 200; ++n)
        fg.AddItem("n\t/in/x.png", 3);
    bound.Bind();

    fg.SetTopRow(100);
    HandleQtEvents();

    EXPECT_EQ(table.rowAt(0), 99);
    EXPECT_TRUE(fg.RowIsVisible(101));
    EXPECT_FALSE(fg.RowIsVisible(1));
}
