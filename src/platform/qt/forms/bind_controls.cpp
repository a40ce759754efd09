// Makes a view for each control by its kind.
#include "src/platform/qt/forms/bind_controls.h"

#include <QMenu>
#include <QToolBar>

#include "src/platform/qt/picture/image_view_view.h"
#include "src/platform/qt/views/button_views.h"
#include "src/platform/qt/views/frame_views.h"
#include "src/platform/qt/views/grid_view.h"
#include "src/platform/qt/views/qt_text.h"
#include "src/platform/qt/views/range_views.h"
#include "src/platform/qt/views/tab_views.h"
#include "src/platform/qt/views/text_views.h"

using Binding = std::unique_ptr<ControlBinding>;

namespace
{

/// Shows what all controls have in common, and nothing else.
class PlainView final : public ControlView<Control, QWidget>
{
public:
    using ControlView::ControlView;
};

}  // namespace

template <typename TView, typename TControl, typename TObject>
static Binding Make(Control& control, TObject* object)
{
    return object ? std::make_unique<TView>(static_cast<TControl&>(control), *object) : nullptr;
}

static Binding MakeTextView(Control& control, QObject* object)
{
    if (auto* edit = qobject_cast<QPlainTextEdit*>(object))
        return Make<LongTextView, TextBox>(control, edit);
    return Make<TextBoxView, TextBox>(control, qobject_cast<QLineEdit*>(object));
}

static Binding MakeTabView(Control& control, QObject* object)
{
    if (auto* tabs = qobject_cast<QTabWidget*>(object))
        return Make<TabBarView, TabStrip>(control, tabs);
    return Make<TabBarView, TabStrip>(control, qobject_cast<QTabBar*>(object));
}

static Binding MakeView(Control& control, QObject* object)
{
    switch (control.eKind()) {
        case ControlKind::Action:
            return Make<ActionView, Action>(control, qobject_cast<QAction*>(object));
        case ControlKind::CheckBox:
            return Make<CheckBoxView, CheckBox>(control, qobject_cast<QCheckBox*>(object));
        case ControlKind::ComboBox:
            return Make<ComboBoxView, ComboBox>(control, qobject_cast<QComboBox*>(object));
        case ControlKind::CommandButton:
            return Make<CommandButtonView, CommandButton>(control, qobject_cast<QAbstractButton*>(object));
        case ControlKind::Frame:
            return Make<FrameView, Frame>(control, qobject_cast<QWidget*>(object));
        case ControlKind::Grid:
            return Make<GridView, Grid>(control, dynamic_cast<GridWidget*>(object));
        case ControlKind::ImageView:
            return Make<ImageViewView, ImageView>(control, dynamic_cast<PictureWidget*>(object));
        case ControlKind::Label:
            if (auto* button = qobject_cast<QAbstractButton*>(object))
                return Make<LabelButtonView, Label>(control, button);
            return Make<LabelView, Label>(control, qobject_cast<QLabel*>(object));
        case ControlKind::ListBox:
            return Make<ListBoxView, ListBox>(control, qobject_cast<QListWidget*>(object));
        case ControlKind::Menu:
            return Make<MenuView, Menu>(control, qobject_cast<QMenu*>(object));
        case ControlKind::OptionButton:
            return Make<OptionButtonView, OptionButton>(control, qobject_cast<QRadioButton*>(object));
        case ControlKind::ProgressBar:
            return Make<ProgressBarView, ProgressBar>(control, qobject_cast<QProgressBar*>(object));
        case ControlKind::ScrollBar:
        case ControlKind::Slider:
            return Make<ScrollBarView, ScrollBar>(control, qobject_cast<QAbstractSlider*>(object));
        case ControlKind::StatusBar:
            return Make<StatusBarView, StatusBar>(control, qobject_cast<QStatusBar*>(object));
        case ControlKind::TabStrip:
            return MakeTabView(control, object);
        case ControlKind::TextBox:
            return MakeTextView(control, object);
        case ControlKind::ToolBar:
            return Make<PlainView, Control>(control, qobject_cast<QToolBar*>(object));
        case ControlKind::Timer:
            break;
    }
    return nullptr;
}

Bindings BindControls(const Form& form, QWidget& root)
{
    Bindings result;
    for (Control* control : form.Controls()) {
        if (control->eKind() == ControlKind::Timer)
            continue;
        if (Binding view = MakeView(*control, root.findChild<QObject*>(ToQt(control->sName()))))
            result.views.push_back(std::move(view));
        else
            result.missing.push_back(control->sName());
    }
    return result;
}

std::vector<Binding> BindTimers(const Form& form)
{
    std::vector<Binding> result;
    for (Control* control : form.Controls())
        if (control->eKind() == ControlKind::Timer)
            result.push_back(std::make_unique<TimerView>(static_cast<Timer&>(*control)));
    return result;
}
