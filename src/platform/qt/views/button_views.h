// Check boxes, option buttons, command buttons, labels and frames.
// Room: platform/qt/views.
#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/frame.h"
#include "src/controls/label.h"
#include "src/controls/option_button.h"
#include "src/platform/qt/views/control_view.h"

class CheckBoxView final : public ControlView<CheckBox, QCheckBox>
{
public:
    CheckBoxView(CheckBox& control, QCheckBox& widget);
    void CaptionChanged() override { ShowCaption(control_, widget_); }
    void ValueChanged() override { widget_.setChecked(control_.Value() == 1); }
};

class OptionButtonView final : public ControlView<OptionButton, QRadioButton>
{
public:
    OptionButtonView(OptionButton& control, QRadioButton& widget);
    void CaptionChanged() override { ShowCaption(control_, widget_); }
    void ValueChanged() override;

private:
    void Clicked();
};

class CommandButtonView final : public ControlView<CommandButton, QAbstractButton>
{
public:
    CommandButtonView(CommandButton& control, QAbstractButton& widget);
    void CaptionChanged() override { ShowCaption(control_, widget_); }
};

/// A label's text is plain text. It elides or wraps as its layout says.
class LabelView final : public ControlView<Label, QLabel>
{
public:
    LabelView(Label& control, QLabel& widget);
    void CaptionChanged() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// A picture that opens something on a double click, as a button: one click will do, and so will the
/// keyboard.
class LabelButtonView final : public ControlView<Label, QAbstractButton>
{
public:
    LabelButtonView(Label& control, QAbstractButton& widget);
};

/// A label with this property, directly in a frame's widget, shows the frame's caption.
constexpr char kFrameCaption[] = "frameCaption";

/// A group box shows the caption in its title, another widget in its label for it, if it has one.
class FrameView final : public ControlView<Frame, QWidget>
{
public:
    FrameView(Frame& control, QWidget& widget);
    void CaptionChanged() override;
};
