// A frame holds other controls: while it is hidden or disabled, so are they.
// Room: controls.
#pragma once

#include "src/controls/control.h"

class Frame : public Control
{
public:
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::Frame; }
};
