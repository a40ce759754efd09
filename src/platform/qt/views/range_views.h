// Numbers between two limits: scroll bar, slider, steps of a field, progress.
// Room: platform/qt/views.
#pragma once

#include <QAbstractSlider>
#include <QProgressBar>

#include "src/controls/scroll_bar.h"
#include "src/platform/qt/views/control_view.h"

/// Two arrows beside a field. The upper one lowers the value, as in a vertical scroll bar.
class StepButtons : public QAbstractSlider
{
public:
    explicit StepButtons(QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    enum class Arrow { None, Up, Down };
    Arrow pressed_ = Arrow::None;
};

class ScrollBarView final : public ControlView<ScrollBar, QAbstractSlider>
{
public:
    ScrollBarView(ScrollBar& control, QAbstractSlider& widget);
    void RangeChanged() override;
    void ValueChanged() override;

private:
    bool showing_ = false;  ///< the program, not a person, changes the value
};

class ProgressBarView final : public ControlView<ProgressBar, QProgressBar>
{
public:
    ProgressBarView(ProgressBar& control, QProgressBar& widget);
    void RangeChanged() override;
    void ValueChanged() override { widget_.setValue(control_.Value()); }
};
