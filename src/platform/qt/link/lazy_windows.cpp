// Opens the window's module on first need.
#include "src/platform/qt/link/lazy_windows.h"

#include <initializer_list>
#include <utility>

#include "src/controls/form.h"
#include "src/forms/Application.h"
#include "src/platform/image/base/module_file.h"
#include "src/platform/qt/link/display.h"

static constexpr char kFileName[] = "libvarnel_window.so";

/// Waits for a form to be shown.
class LazyWindows::FormWatch final : FormObserver
{
public:
    FormWatch(LazyWindows& windows, Form& form) : windows_(windows), form_(form), watch_(form, *this) {}
    void VisibleChanged() override
    {
        if (form_.Visible())
            windows_.Open();
    }

private:
    LazyWindows& windows_;
    Form& form_;
    Observation watch_;
};

LazyWindows::LazyWindows() = default;

LazyWindows::~LazyWindows()
{
    Detach();
}

void LazyWindows::Attach(Application& app, ImageTransform& preview_operations)
{
    app_ = &app;
    preview_operations_ = &preview_operations;
    for (Form* form : std::initializer_list<Form*>{&app.frmPleaseWait, &app.frmMainMDI})
        watches_.push_back(std::make_unique<FormWatch>(*this, *form));
}

void LazyWindows::Detach()
{
    watches_.clear();
    if (module_)
        destroy_(std::exchange(module_, nullptr));
    tried_ = true;
    app_ = nullptr;
}

void LazyWindows::RunWindow()
{
    if (module_)
        module_->Run();
}

void LazyWindows::Run(const std::function<void()>& work)
{
    if (!module_)
        return work();
    const PumpScope pump(*this, Pump::Events);
    module_->RunInBackground(work);
}

WindowModule* LazyWindows::Open()
{
    if (tried_ || !bHasDisplay())
        return module_;
    tried_ = true;
    void* library = OpenModule(kFileName);
    const auto create = ModuleFunction<CreateWindowModule>(library, kCreateWindowModule);
    destroy_ = ModuleFunction<DestroyWindowModule>(library, kDestroyWindowModule);
    if (create && destroy_)
        module_ = create();
    if (!module_)
        has_display_ = false;
    else if (app_)
        module_->Mirror(*app_, *preview_operations_);
    return module_;
}

bool LazyWindows::bHasDisplay() const
{
    if (!has_display_)
        has_display_ = CanOpenDisplay();
    return *has_display_;
}

BoxAnswer LazyWindows::ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                               BoxButtons buttons)
{
    WindowModule* module = OpenForBox();
    return module ? module->ShowBox(text, title, icon, buttons)
                  : headless_.MsgBox(text, title, icon, buttons);
}

std::size_t LazyWindows::ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                                    const std::vector<ChoiceButton>& buttons)
{
    WindowModule* module = OpenForBox();
    return module ? module->ShowChoice(text, title, icon, buttons)
                  : headless_.nChooseButton(text, title, icon, buttons);
}

std::string LazyWindows::ShowFilePicker(FilePicker& picker)
{
    WindowModule* module = OpenForBox();
    return module ? module->PickFile(picker) : headless_.sPickFile(picker);
}

std::string LazyWindows::ShowFolderPicker(const std::string& title, const std::string& start_folder)
{
    WindowModule* module = OpenForBox();
    return module ? module->PickFolder(title, start_folder) : headless_.sPickFolder(title, start_folder);
}

std::optional<std::int32_t> LazyWindows::ShowColourPicker(std::int32_t start)
{
    WindowModule* module = OpenForBox();
    return module ? module->PickColour(start) : headless_.lPickColour(start);
}

std::optional<std::string> LazyWindows::ShowFontPicker(const std::string& start)
{
    WindowModule* module = OpenForBox();
    return module ? module->PickFont(start) : headless_.sPickFont(start);
}

void LazyWindows::ShowForm(Form& frm)
{
    if (WindowModule* module = Open())
        module->ShowModal(frm);
}

void LazyWindows::HandleEvents()
{
    if (module_)
        module_->HandleEvents();
}

std::string LazyWindows::sMatchingFont(const std::string& name) const
{
    return module_ ? module_->MatchingFont(name) : "";
}

void LazyWindows::LaunchHelp(const std::string& help_file, std::int32_t topic)
{
    WindowModule* module = Open();
    if (!module || !module->LaunchHelp(help_file, topic))
        headless_.LaunchHelp(help_file, topic);
}
