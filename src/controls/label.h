// A label: read-only text, which may be clickable.
// Room: controls.
#pragma once

#include <functional>

#include "src/controls/control.h"

class Label : public Control
{
public:
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::Label; }

    void UserClicks()
    {
        if (bAccepts())
            Raise(OnClick);
    }
    std::function<void()> OnClick;  ///< belongs to the logic
};
