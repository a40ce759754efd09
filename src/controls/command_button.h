// A push button.
// Room: controls.
#pragma once

#include <functional>

#include "src/controls/control.h"

class CommandButton : public Control
{
public:
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::CommandButton; }

    /// The program clicks: nothing happens while the button is disabled.
    void Click()
    {
        if (Enabled())
            Raise(OnClick);
    }
    void UserClicks()
    {
        if (bAccepts())
            Raise(OnClick);
    }
    std::function<void()> OnClick;  ///< belongs to the logic
};
