// Views that only run a function when something about a control changes.
// Room: tests/fakes.
#pragma once

#include <cstdint>
#include <functional>
#include <new>
#include <utility>

#include "src/controls/status_bar.h"

class FocusWatcher : public ControlObserver
{
public:
    FocusWatcher(Control& objControl, std::function<void()> fnFocus)
        : m_fnFocus(std::move(fnFocus)), m_objWatch(objControl, *this)
    {
    }
    void FocusRequested() override { m_fnFocus(); }

private:
    std::function<void()> m_fnFocus;
    Observation m_objWatch;
};

/// A view that raises an error whenever its control is enabled or disabled.
class RaisingView : public ControlObserver
{
public:
    explicit RaisingView(Control& objControl) : m_objWatch(objControl, *this) {}
    void EnabledChanged() override { throw std::bad_alloc(); }

private:
    Observation m_objWatch;
};

class PanelWatcher : public StatusBarObserver
{
public:
    PanelWatcher(StatusBar& sb, std::function<void()> fnChanged)
        : m_fnChanged(std::move(fnChanged)), m_objWatch(sb, *this)
    {
    }
    void PanelChanged(std::int32_t) override { m_fnChanged(); }

private:
    std::function<void()> m_fnChanged;
    Observation m_objWatch;
};
