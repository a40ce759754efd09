// A form of a few controls in a window of widgets with their names.
// Room: tests/platform/qt/support.
#pragma once

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>
#include <QWidget>

#include "src/controls/form.h"
#include "src/platform/qt/forms/bind_controls.h"

struct TestForm : Form {
    TestForm() : Form("frmTest") {}
};

/// Shows widgets in a window and binds the form's controls to them.
class BoundForm
{
public:
    explicit BoundForm(Form& form) : form_(form) { new QVBoxLayout(&window_); }

    template <typename TWidget>
    TWidget& Add(TWidget* widget, const char* name)
    {
        widget->setObjectName(name);
        window_.layout()->addWidget(widget);
        return *widget;
    }
    void Bind()
    {
        bindings_ = BindControls(form_, window_);
        window_.show();
        (void)QTest::qWaitForWindowExposed(&window_);
    }
    QWidget& Window() { return window_; }
    const Bindings& Bound() const { return bindings_; }

private:
    Form& form_;
    QWidget window_;
    Bindings bindings_;  ///< goes before the widgets
};

/// Drops files and pages on a widget, as a file manager does. True if it takes them.
inline bool Drop(QWidget& widget, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint at(5, 5);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.ignore();
    QCoreApplication::sendEvent(&widget, &drop);
    QCoreApplication::processEvents();
    return enter.isAccepted() && drop.isAccepted();
}

inline void HandleQtEvents()
{
    QCoreApplication::processEvents();
}
