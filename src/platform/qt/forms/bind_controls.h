// Finds the widget of each control.
// Room: platform/qt/forms.
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "src/controls/form.h"
#include "src/platform/qt/views/control_view.h"

struct Bindings {
    std::vector<std::unique_ptr<ControlBinding>> views;
    std::vector<std::string> missing;  ///< controls that have no widget of their name and kind
};

/// Ties each control of a form, timers apart, to the object of its name at or below root.
Bindings BindControls(const Form& form, QWidget& root);

/// Lets a form's timers tick.
std::vector<std::unique_ptr<ControlBinding>> BindTimers(const Form& form);
