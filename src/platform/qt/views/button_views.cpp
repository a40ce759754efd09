// Passes on clicks, and shows values and captions.
#include "src/platform/qt/views/button_views.h"

#include <QGroupBox>
#include <QMouseEvent>

#include "src/platform/qt/views/qt_text.h"

CheckBoxView::CheckBoxView(CheckBox& control, QCheckBox& widget) : ControlView(control, widget)
{
    CaptionChanged();
    ValueChanged();
    connect(&widget, &QCheckBox::clicked, this, [this] {
        control_.UserToggles();
        ValueChanged();  // Qt has toggled the widget, whatever became of the click
    });
}

OptionButtonView::OptionButtonView(OptionButton& control, QRadioButton& widget) : ControlView(control, widget)
{
    CaptionChanged();
    ValueChanged();
    connect(&widget, &QRadioButton::clicked, this, [this] { Clicked(); });
}

static void Show(const OptionButton& control, QRadioButton& widget)
{
    if (control.Value() == widget.isChecked())
        return;
    // Among buttons that exclude each other, Qt never clears the checked one.
    const bool exclusive = widget.autoExclusive();
    widget.setAutoExclusive(false);
    widget.setChecked(control.Value());
    widget.setAutoExclusive(exclusive);
}

void OptionButtonView::ValueChanged()
{
    Show(control_, widget_);
}

void OptionButtonView::Clicked()
{
    control_.UserClicks();
    // Qt has checked this button and cleared the others; if the click was refused, that has to be undone.
    for (const OptionButton* member : control_.Group().Members())
        if (auto* button = widget_.window()->findChild<QRadioButton*>(ToQt(member->sName())))
            Show(*member, *button);
}

CommandButtonView::CommandButtonView(CommandButton& control, QAbstractButton& widget)
    : ControlView(control, widget)
{
    CaptionChanged();
    connect(&widget, &QAbstractButton::clicked, this, [this] { control_.UserClicks(); });
}

LabelView::LabelView(Label& control, QLabel& widget) : ControlView(control, widget)
{
    widget.setTextFormat(Qt::PlainText);
    if (!control.Caption().empty())
        CaptionChanged();
}

void LabelView::CaptionChanged()
{
    widget_.setText(WithPlainLineEnds(ToQt(control_.Caption())));
    if (widget_.buddy())
        NameForScreenReaders(widget_.text(), *widget_.buddy());
}

bool LabelView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        control_.UserClicks();
    if (event->type() == QEvent::MouseButtonDblClick)
        control_.UserDoubleClicks();
    return ControlView::eventFilter(watched, event);
}

LabelButtonView::LabelButtonView(Label& control, QAbstractButton& widget) : ControlView(control, widget)
{
    connect(&widget, &QAbstractButton::clicked, this, [this] { control_.UserDoubleClicks(); });
}

FrameView::FrameView(Frame& control, QWidget& widget) : ControlView(control, widget)
{
    CaptionChanged();
}

void FrameView::CaptionChanged()
{
    if (control_.Caption().empty())
        return;
    if (auto* box = qobject_cast<QGroupBox*>(&widget_))
        box->setTitle(ToQt(control_.Caption()));
    for (QLabel* label : widget_.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        if (label->property(kFrameCaption).toBool())
            label->setText(ToQt(control_.Caption()));
}
