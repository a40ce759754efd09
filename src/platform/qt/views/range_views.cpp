// Shows numbers between limits and passes on how a person moves them.
#include "src/platform/qt/views/range_views.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyleOption>
#include <algorithm>

#include "src/platform/qt/views/qt_text.h"

StepButtons::StepButtons(QWidget* parent) : QAbstractSlider(parent)
{
    setOrientation(Qt::Vertical);
    setInvertedAppearance(true);
    setFocusPolicy(Qt::NoFocus);  // the field beside it has the focus
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StepButtons::sizeHint() const
{
    const int unit = fontMetrics().height();
    return {unit * 5 / 4, unit * 3 / 2};
}

void StepButtons::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    for (const Arrow arrow : {Arrow::Up, Arrow::Down}) {
        option.rect = QRect(0, arrow == Arrow::Up ? 0 : height() / 2, width(), height() / 2);
        if (arrow == pressed_)
            painter.fillRect(option.rect, palette().midlight());
        style()->drawPrimitive(arrow == Arrow::Up ? QStyle::PE_IndicatorSpinUp : QStyle::PE_IndicatorSpinDown,
                               &option, &painter, this);
    }
}

void StepButtons::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    pressed_ = event->position().y() < height() / 2.0 ? Arrow::Up : Arrow::Down;
    const SliderAction action = pressed_ == Arrow::Up ? SliderSingleStepSub : SliderSingleStepAdd;
    triggerAction(action);
    setRepeatAction(action);
    update();
}

void StepButtons::mouseReleaseEvent(QMouseEvent*)
{
    setRepeatAction(SliderNoAction);
    pressed_ = Arrow::None;
    update();
}

ScrollBarView::ScrollBarView(ScrollBar& control, QAbstractSlider& widget) : ControlView(control, widget)
{
    RangeChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    connect(&widget, &QAbstractSlider::valueChanged, this, [this](int value) {
        if (showing_)
            return;
        if (widget_.isSliderDown())
            control_.UserDrags(value);
        else
            control_.UserScrolls(value);
        ValueChanged();
    });
    connect(&widget, &QAbstractSlider::sliderReleased, this,
            [this] { control_.UserScrolls(widget_.value()); });
}

void ScrollBarView::RangeChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    widget_.setRange(control_.Min(), control_.Max());
    widget_.setPageStep(std::max(1, (control_.Max() - control_.Min()) / 10));
    widget_.setValue(control_.Value());
}

void ScrollBarView::ValueChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    widget_.setValue(control_.Value());
}

ProgressBarView::ProgressBarView(ProgressBar& control, QProgressBar& widget) : ControlView(control, widget)
{
    RangeChanged();
}

void ProgressBarView::RangeChanged()
{
    widget_.setRange(control_.Min(), control_.Max());
    widget_.setValue(control_.Value());
}
