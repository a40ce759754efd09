// Rows of tabs: a bar alone, or one whose pages Qt shows and hides.
// Room: platform/qt/views.
#pragma once

#include <QTabBar>
#include <QTabWidget>

#include "src/controls/tab_strip.h"
#include "src/platform/qt/views/control_view.h"

/// Shows a tab strip in a bar. A strip's tab 1 is index 0.
class TabBarView final : public ControlView<TabStrip, QWidget>
{
public:
    TabBarView(TabStrip& control, QTabBar& bar);
    /// The layout has put the pages; the strip's texts and choice are shown.
    TabBarView(TabStrip& control, QTabWidget& tabs);
    void TabsChanged() override;
    void SelectedTabChanged() override;

private:
    TabBarView(TabStrip& control, QWidget& widget, QTabBar& bar, bool fixed_pages);

    QTabBar& bar_;
    const bool fixed_pages_;
    bool showing_ = false;  ///< the program, not a person, changes the current tab
};
