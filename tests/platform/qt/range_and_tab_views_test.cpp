// Tabs, scroll bars, step buttons, progress, actions, status bar and timers mirror their controls.
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QSlider>

#include "src/platform/qt/views/frame_views.h"
#include "src/platform/qt/views/range_views.h"
#include "src/platform/qt/views/tab_views.h"
#include "tests/platform/qt/support/bound_form.h"

namespace
{

struct MixedForm : TestForm {
    TabStrip ts{*this, "ts"};
    ScrollBar bar{*this, "bar", 0, 11};
    ScrollBar steps{*this, "steps"};
    ProgressBar pb{*this, "pb", 0, 1000};
    StatusBar sb{*this, "sb"};
    Action key{*this, "key"};
    Menu mnu{*this, "mnu"};
    ToolBar tb{*this, "tb"};
};

struct MixedViews : testing::Test {
    MixedForm form;
    BoundForm bound{form};
    QTabBar& tabs = bound.Add(new QTabBar, "ts");
    QScrollBar& bar = bound.Add(new QScrollBar(Qt::Horizontal), "bar");
    StepButtons& steps = bound.Add(new StepButtons, "steps");
    QProgressBar& progress = bound.Add(new QProgressBar, "pb");
    QStatusBar& status = bound.Add(new QStatusBar, "sb");
    QLabel& panel = *new QLabel(&status);
    QAction& action = *new QAction(&bound.Window());
    QMenu& menu = *new QMenu(&bound.Window());

    MixedViews()
    {
        panel.setObjectName("sb(2)");
        action.setObjectName("key");
        menu.setObjectName("mnu");
        auto* toolbar = new QToolBar(&bound.Window());
        toolbar->setObjectName("tb");
        bound.Window().addAction(&action);
        form.ts.SetTabs({"Original", "Target"});
        form.steps.SetValue(16000);
    }
    void Bind()
    {
        bound.Bind();
        ASSERT_TRUE(bound.Bound().missing.empty()) << bound.Bound().missing.front();
    }
};

}  // namespace

TEST_F(MixedViews, FollowTabsThatComeAndGo)
{
    Bind();
    form.ts.AddTab("Preview");
    form.ts.SelectTab(3);
    EXPECT_EQ(tabs.count(), 3);
    EXPECT_EQ(tabs.tabText(2), "Preview");
    EXPECT_EQ(tabs.currentIndex(), 2);

    form.ts.RemoveTab(3);
    EXPECT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_EQ(form.ts.SelectedTab(), 2);
}

TEST_F(MixedViews, CountAClickOnTheChosenTab)
{
    std::vector<std::int32_t> chosen;
    form.ts.OnClick = [&] { chosen.push_back(form.ts.SelectedTab()); };
    Bind();

    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(0).center());
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());

    EXPECT_EQ(chosen, (std::vector<std::int32_t>{1, 2}));
}

TEST_F(MixedViews, ShowTheOldTabAgainWhenRefused)
{
    Bind();
    form.SetEnabled(false);

    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());

    EXPECT_EQ(tabs.currentIndex(), 0);
}

TEST_F(MixedViews, TellStepsAndDragsOfAScrollBarApart)
{
    int scrolls = 0;
    int changes = 0;
    form.bar.OnScroll = [&] { ++scrolls; };
    form.bar.OnChange = [&] { ++changes; };
    Bind();

    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(form.bar.Value(), 1);
    EXPECT_EQ(changes, 1);

    bar.setSliderDown(true);
    bar.setSliderPosition(5);
    EXPECT_EQ(form.bar.Value(), 5);
    EXPECT_EQ(scrolls, 1);
    EXPECT_EQ(changes, 1);

    bar.setSliderDown(false);
    EXPECT_EQ(changes, 2);
}

TEST_F(MixedViews, FollowTheRangeOfAScrollBar)
{
    Bind();

    form.bar.SetRange(0, 3);
    form.bar.SetValue(2);

    EXPECT_EQ(bar.maximum(), 3);
    EXPECT_EQ(bar.value(), 2);
}

TEST_F(MixedViews, LowerTheValueWithTheUpperStepButton)
{
    Bind();
    EXPECT_EQ(steps.minimum(), 0);
    EXPECT_EQ(steps.maximum(), 32767);

    QTest::mouseClick(&steps, Qt::LeftButton, {}, {steps.width() / 2, 2});
    EXPECT_EQ(form.steps.Value(), 15999);

    QTest::mouseClick(&steps, Qt::LeftButton, {}, {steps.width() / 2, steps.height() - 2});
    QTest::mouseClick(&steps, Qt::LeftButton, {}, {steps.width() / 2, steps.height() - 2});
    EXPECT_EQ(form.steps.Value(), 16001);
}

TEST_F(MixedViews, ShowProgressAndPanels)
{
    Bind();

    form.pb.SetValue(580);
    form.pb.SetVisible(false);
    form.sb.SetPanel(2, "Loading\tImage");

    EXPECT_EQ(progress.value(), 580);
    EXPECT_FALSE(progress.isVisible());
    EXPECT_EQ(panel.text(), "Loading Image");
}

TEST_F(MixedViews, TriggerAnActionByMenuAndShortcut)
{
    int clicks = 0;
    form.key.SetCaption("&Begin");
    form.key.SetShortcut("F5");
    form.key.OnClick = [&] { ++clicks; };
    form.mnu.SetCaption("C&onversion");
    Bind();

    action.trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(action.text(), "&Begin");
    EXPECT_EQ(action.shortcut(), QKeySequence(Qt::Key_F5));
    EXPECT_EQ(menu.title(), "C&onversion");

    form.key.SetEnabled(false);
    EXPECT_FALSE(action.isEnabled());
}

TEST(TimerView, TicksWhileItsTimerIsOn)
{
    struct : TestForm {
        Timer tim{*this, "tim"};
    } form;
    int ticks = 0;
    form.tim.OnTimer = [&] { ++ticks; };
    const auto views = BindTimers(form);
    ASSERT_EQ(views.size(), 1u);

    form.tim.SetInterval(1);
    form.tim.SetEnabled(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 2; }, 5000));

    form.tim.SetEnabled(false);
    const int stopped = ticks;
    QTest::qWait(10);
    EXPECT_EQ(ticks, stopped);
}
