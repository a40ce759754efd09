// Check boxes, option buttons, buttons, labels and frames mirror their controls and pass on clicks.
#include "src/platform/qt/views/button_views.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QPushButton>
#include <QToolButton>

#include "tests/platform/qt/support/bound_form.h"

namespace
{

struct ButtonForm : TestForm {
    Frame fra{*this, "fra"};
    CheckBox cb{fra, "cb"};
    OptionButtonFamily rb{fra, "rb", 2};
    CommandButton cmd{fra, "cmd"};
    Label lbl{fra, "lbl"};
};

struct ButtonViews : testing::Test {
    ButtonForm form;
    BoundForm bound{form};
    QGroupBox& frame = bound.Add(new QGroupBox, "fra");
    QCheckBox& check = *new QCheckBox(&frame);
    QRadioButton& first = *new QRadioButton(&frame);
    QRadioButton& second = *new QRadioButton(&frame);
    QPushButton& button = *new QPushButton(&frame);
    QLabel& label = *new QLabel(&frame);

    ButtonViews()
    {
        check.setObjectName("cb");
        first.setObjectName("rb(0)");
        second.setObjectName("rb(1)");
        button.setObjectName("cmd");
        label.setObjectName("lbl");
        auto* column = new QVBoxLayout(&frame);
        for (QWidget* widget : std::initializer_list<QWidget*>{&check, &first, &second, &button, &label})
            column->addWidget(widget);
        form.rb(0).SetValue(true);
    }
    void Bind()
    {
        bound.Bind();
        ASSERT_TRUE(bound.Bound().missing.empty());
    }
};

}  // namespace

TEST_F(ButtonViews, ShowWhatTheControlsHold)
{
    form.cb.SetCaption("With &subfolders");
    form.cb.SetValue(1);
    form.cmd.SetEnabled(false);
    form.cmd.SetToolTipText("Opens <it>");
    form.lbl.SetCaption("a\r\nb\rc");
    form.fra.SetCaption("Group");

    Bind();

    EXPECT_EQ(check.text(), "With &subfolders");
    EXPECT_EQ(check.accessibleName(), "With subfolders");
    EXPECT_TRUE(check.isChecked());
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), "Opens <it>");
    EXPECT_EQ(label.text(), "a\nb\nc");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(frame.title(), "Group");
    EXPECT_TRUE(first.isChecked());
}

TEST_F(ButtonViews, FollowTheProgramWithoutClicks)
{
    int clicks = 0;
    form.cb.OnClick = [&] { ++clicks; };
    form.rb.OnClick = [&](std::int32_t) { ++clicks; };
    Bind();

    form.cb.SetValue(1);
    form.rb(1).SetValue(true);
    form.cb.SetVisible(false);
    HandleQtEvents();

    EXPECT_EQ(clicks, 2);  // the program's own
    EXPECT_TRUE(check.isChecked());
    EXPECT_FALSE(check.isVisible());
    EXPECT_FALSE(first.isChecked());
    EXPECT_TRUE(second.isChecked());
}

TEST_F(ButtonViews, PassOnClicksOfAPerson)
{
    int clicks = 0;
    form.cmd.OnClick = [&] { ++clicks; };
    form.lbl.OnClick = [&] { ++clicks; };
    Bind();

    QTest::mouseClick(&check, Qt::LeftButton, {}, {5, check.height() / 2});
    QTest::mouseClick(&second, Qt::LeftButton, {}, {5, second.height() / 2});
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&label, Qt::LeftButton);

    EXPECT_EQ(form.cb.Value(), 1);
    EXPECT_EQ(form.rb.lChosen(), 1);
    EXPECT_FALSE(first.isChecked());
    EXPECT_EQ(clicks, 2);
}

TEST_F(ButtonViews, ShowTheOldStateAgainWhenRefused)
{
    Bind();
    form.SetEnabled(false);  // the widgets don't know, so that the clicks come through

    check.click();
    second.click();

    EXPECT_EQ(form.cb.Value(), 0);
    EXPECT_FALSE(check.isChecked());
    EXPECT_TRUE(first.isChecked());
    EXPECT_FALSE(second.isChecked());
}

TEST_F(ButtonViews, CountAsHiddenAndDisabledWithTheirFrame)
{
    Bind();

    form.fra.SetEnabled(false);
    EXPECT_FALSE(button.isEnabled());

    form.fra.SetEnabled(true);
    form.fra.SetVisible(false);
    EXPECT_TRUE(button.isEnabled());
    EXPECT_FALSE(button.isVisible());
}

TEST_F(ButtonViews, PaintALabelInTheColourOfItsControl)
{
    Bind();

    form.lbl.SetBackColor(0x0000ff);  // red is the low byte
    HandleQtEvents();

    EXPECT_EQ(label.grab().toImage().pixelColor(2, 2), QColor(255, 0, 0));
}

TEST(BindControls, NamesControlsWithoutAWidgetOfTheirKind)
{
    struct : TestForm {
        CheckBox cb{*this, "cb"};
        CommandButton cmd{*this, "cmd"};
    } form;
    BoundForm bound(form);
    bound.Add(new QLabel, "cb");

    bound.Bind();

    EXPECT_EQ(bound.Bound().missing, (std::vector<std::string>{"cb", "cmd"}));
}
