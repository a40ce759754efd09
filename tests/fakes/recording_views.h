// Views that record the notifications they receive, one word and a space each.
// Room: tests/fakes.
#pragma once

#include <cstdint>
#include <string>

#include "src/controls/check_box.h"
#include "src/controls/image_view.h"
#include "src/controls/lists/combo_box.h"
#include "src/controls/lists/list_box.h"
#include "src/controls/option_button.h"
#include "src/controls/scroll_bar.h"
#include "src/controls/status_bar.h"
#include "src/controls/tab_strip.h"
#include "src/controls/timer.h"

/// Records the aspects that all controls have.
template <typename TObserver>
struct Records : TObserver {
    std::string sTold;

    void CaptionChanged() override { sTold += "caption "; }
    void ToolTipTextChanged() override { sTold += "tip "; }
    void TagChanged() override { sTold += "tag "; }
    void FontChanged() override { sTold += "font "; }
    void ColorsChanged() override { sTold += "colors "; }
    void VisibleChanged() override { sTold += "visible "; }
    void EnabledChanged() override { sTold += "enabled "; }
    void FocusRequested() override { sTold += "focus "; }
    void BroughtToFront() override { sTold += "front "; }
};

/// A view that observes one control.
template <typename TControl>
struct RecordingView : Records<typename TControl::Observer> {
    explicit RecordingView(TControl& objControl) : m_objWatch(objControl, *this) {}

private:
    Observation m_objWatch;
};

template <typename TObserver>
struct RecordsText : Records<TObserver> {
    void TextChanged() override { this->sTold += "text "; }
    void TextSelected() override { this->sTold += "selected "; }
};

template <>
struct RecordingView<TextBox> : RecordsText<TextObserver> {
    explicit RecordingView(TextBox& txt) : m_objWatch(txt, *this) {}

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<ComboBox> : RecordsText<ComboBoxObserver> {
    explicit RecordingView(ComboBox& cb) : m_objWatch(cb, *this) {}
    void ItemsChanged() override { sTold += "items "; }
    void ListIndexChanged() override { sTold += "index "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<ListBox> : Records<ListBoxObserver> {
    explicit RecordingView(ListBox& lst) : m_objWatch(lst, *this) {}
    void ItemsChanged() override { sTold += "items "; }
    void ListIndexChanged() override { sTold += "index "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<CheckBox> : Records<CheckBoxObserver> {
    explicit RecordingView(CheckBox& chk) : m_objWatch(chk, *this) {}
    void ValueChanged() override { sTold += "value "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<OptionButton> : Records<OptionButtonObserver> {
    explicit RecordingView(OptionButton& opt) : m_objWatch(opt, *this) {}
    void ValueChanged() override { sTold += "value "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<TabStrip> : Records<TabStripObserver> {
    explicit RecordingView(TabStrip& ts) : m_objWatch(ts, *this) {}
    void TabsChanged() override { sTold += "tabs "; }
    void SelectedTabChanged() override { sTold += "selectedtab "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<StatusBar> : Records<StatusBarObserver> {
    explicit RecordingView(StatusBar& sb) : m_objWatch(sb, *this) {}
    void PanelChanged(std::int32_t lPanel) override { sTold += "panel" + std::to_string(lPanel) + " "; }

private:
    Observation m_objWatch;
};

/// For scroll bars, sliders and progress bars.
template <>
struct RecordingView<RangeControl> : Records<RangeObserver> {
    explicit RecordingView(RangeControl& objRange) : m_objWatch(objRange, *this) {}
    void RangeChanged() override { sTold += "range "; }
    void ValueChanged() override { sTold += "value "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<ImageView> : Records<ImageViewObserver> {
    explicit RecordingView(ImageView& objView) : m_objWatch(objView, *this) {}
    void ImageChanged() override { sTold += "image "; }
    void ZoomChanged() override { sTold += "zoom "; }
    void OffsetChanged() override { sTold += "offset "; }

private:
    Observation m_objWatch;
};

template <>
struct RecordingView<Timer> : Records<TimerObserver> {
    explicit RecordingView(Timer& tmr) : m_objWatch(tmr, *this) {}
    void IntervalChanged() override { sTold += "interval "; }

private:
    Observation m_objWatch;
};
