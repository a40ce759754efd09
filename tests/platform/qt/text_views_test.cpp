// Fields and lists mirror their controls and pass on what is typed and chosen.
#include "src/platform/qt/views/text_views.h"

#include <gtest/gtest.h>

#include "tests/platform/qt/support/bound_form.h"

namespace
{

struct TextForm : TestForm {
    TextBox txt{*this, "txt"};
    ComboBox cb{*this, "cb"};
    ComboBox cbType{*this, "cbType", ComboStyle::ListOnly};
    ListBox lst{*this, "lst"};
};

struct TextViews : testing::Test {
    TextForm form;
    BoundForm bound{form};
    QLineEdit& edit = bound.Add(new QLineEdit, "txt");
    QComboBox& recent = bound.Add(new QComboBox, "cb");
    QComboBox& type = bound.Add(new QComboBox, "cbType");
    QListWidget& list = bound.Add(new QListWidget, "lst");

    TextViews()
    {
        recent.setEditable(true);
        for (const char* text : {"/a/*.bmp", "/b/*.tif"})
            form.cb.AddItem(text);
        form.cbType.AddItem("Bitmap", 1);
        form.cbType.AddItem("PNG", 9);
        for (const char* text : {"Deutsch", "English"})
            form.lst.AddItem(text);
    }
};

}  // namespace

TEST_F(TextViews, ShowTextsAndEntriesWithTheirNumbers)
{
    form.txt.SetText("75");
    form.cb.SetText("/c/x.png");
    form.cbType.SetListIndex(1);
    form.lst.SetListIndex(0);

    bound.Bind();

    EXPECT_EQ(edit.text(), "75");
    EXPECT_EQ(recent.currentText(), "/c/x.png");
    EXPECT_EQ(recent.count(), 2);
    EXPECT_EQ(type.currentText(), "PNG");
    EXPECT_EQ(type.currentData(Qt::UserRole), QVariant(9));
    EXPECT_EQ(list.currentItem()->text(), "Deutsch");
}

TEST_F(TextViews, PassOnEachKeyOnce)
{
    int changes = 0;
    form.txt.OnChange = [&] { ++changes; };
    form.cb.OnChange = [&] { ++changes; };
    bound.Bind();

    QTest::keyClicks(&edit, "12");
    QTest::keyClicks(&recent, "/x");

    EXPECT_EQ(form.txt.Text(), "12");
    EXPECT_EQ(form.cb.Text(), "/x");
    EXPECT_EQ(changes, 4);
}

TEST_F(TextViews, KeepTheCursorWhileTheProgramCorrectsTheText)
{
    form.txt.OnChange = [&] {
        std::string text = form.txt.Text();
        std::erase(text, '"');
        form.txt.SetText(text);
    };
    form.txt.SetText("abcd");
    bound.Bind();
    edit.setFocus();
    edit.setCursorPosition(2);

    QTest::keyClicks(&edit, "x\"y");

    EXPECT_EQ(form.txt.Text(), "abxycd");
    EXPECT_EQ(edit.text(), "abxycd");
}

TEST_F(TextViews, NeverCompleteWhatIsTyped)
{
    bound.Bind();

    QTest::keyClicks(&recent, "/a");

    EXPECT_EQ(recent.currentText(), "/a");
    EXPECT_EQ(recent.completer(), nullptr);
}

TEST_F(TextViews, ChooseEntriesByKeyboardAndMouse)
{
    int clicks = 0;
    form.cbType.OnClick = [&] { ++clicks; };
    bound.Bind();

    QTest::keyClick(&type, Qt::Key_Down);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());

    EXPECT_EQ(form.cbType.ListIndex(), 0);
    EXPECT_EQ(form.lst.ListIndex(), 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(TextViews, ShowTheOldEntryAgainWhenRefused)
{
    form.cbType.SetListIndex(0);
    bound.Bind();
    form.SetEnabled(false);

    QTest::keyClick(&type, Qt::Key_Down);
    QTest::keyClicks(&edit, "1");

    EXPECT_EQ(type.currentIndex(), 0);
    EXPECT_EQ(form.cbType.ListIndex(), 0);
    EXPECT_EQ(edit.text(), "");
}

TEST_F(TextViews, FillAListOfManyEntriesOnce)
{
    bound.Bind();
    int changes = 0;
    QObject::connect(recent.model(), &QAbstractItemModel::rowsRemoved, &recent, [&] { ++changes; });
    QObject::connect(recent.model(), &QAbstractItemModel::modelReset, &recent, [&] { ++changes; });

    {
        const RedrawLock lock(form.cb);
        form.cb.Clear();
        for (int n = 0; n < 500; ++n)
            form.cb.AddItem(std::to_string(n));
        form.cb.SetListIndex(7);
    }

    EXPECT_LE(changes, 1);
    EXPECT_EQ(recent.count(), 500);
    EXPECT_EQ(recent.currentText(), "7");
}

TEST_F(TextViews, DoNotChangeWhenScrolledPast)
{
    form.cbType.SetListIndex(0);
    bound.Bind();
    edit.setFocus();

    QWheelEvent wheel({5, 5}, type.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&type, &wheel);

    EXPECT_EQ(form.cbType.ListIndex(), 0);
}

TEST_F(TextViews, PassOnDroppedFiles)
{
    std::vector<std::string> dropped;
    form.cb.OnDrop = [&](const std::vector<std::string>& paths) { dropped = paths; };
    bound.Bind();

    EXPECT_TRUE(
        Drop(*recent.lineEdit(), {QUrl::fromLocalFile("/in/ä b.png"), QUrl("https://example.org/c.png")}));

    EXPECT_EQ(dropped, std::vector<std::string>{"/in/ä b.png"});
    EXPECT_EQ(recent.currentText(), "");
}

TEST_F(TextViews, TellWhenAFieldIsLeft)
{
    int left = 0;
    form.txt.OnLostFocus = [&] { ++left; };
    form.cb.OnLostFocus = [&] { ++left; };
    bound.Bind();
    bound.Window().activateWindow();
    edit.setFocus();

    recent.setFocus();
    type.setFocus();

    EXPECT_EQ(left, 2);
}
