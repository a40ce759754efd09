// Shows tabs and passes on which one a person chooses.
#include "src/platform/qt/views/tab_views.h"

#include <QScopedValueRollback>

#include "src/platform/qt/views/qt_text.h"

TabBarView::TabBarView(TabStrip& control, QTabBar& bar) : TabBarView(control, bar, bar, false) {}

TabBarView::TabBarView(TabStrip& control, QTabWidget& tabs) : TabBarView(control, tabs, *tabs.tabBar(), true)
{
}

TabBarView::TabBarView(TabStrip& control, QWidget& widget, QTabBar& bar, bool fixed_pages)
    : ControlView(control, widget), bar_(bar), fixed_pages_(fixed_pages)
{
    TabsChanged();
    NameForScreenReaders(ToQt(control.Caption()), bar);
    connect(&bar, &QTabBar::currentChanged, this, [this](int index) {
        if (showing_)
            return;
        control_.UserChooses(index + 1);
        SelectedTabChanged();
    });
    // A click on the current tab counts as one too, but Qt doesn't report it as a change.
    connect(&bar, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index >= 0 && index == bar_.currentIndex())
            control_.UserChooses(index + 1);
    });
}

void TabBarView::TabsChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    while (!fixed_pages_ && bar_.count() > control_.TabCount())
        bar_.removeTab(bar_.count() - 1);
    while (!fixed_pages_ && bar_.count() < control_.TabCount())
        bar_.addTab(QString());
    for (int index = 0; index < bar_.count() && index < control_.TabCount(); ++index) {
        bar_.setTabText(index, ToQt(control_.TabCaption(index + 1)));
        bar_.setTabToolTip(index, ToQt(control_.TabToolTipText(index + 1)));
    }
    SelectedTabChanged();
}

void TabBarView::SelectedTabChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    bar_.setCurrentIndex(control_.SelectedTab() - 1);
}
