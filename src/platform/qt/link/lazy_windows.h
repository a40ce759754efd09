// The window services of the program: without windows until one is needed.
// Room: platform/qt/link.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/headless/headless_windows.h"
#include "src/platform/qt/link/background_image.h"
#include "src/platform/qt/link/window_module.h"
#include "src/platform/window_services.h"

/// Opens the module libvarnel_window.so on the first form shown, or on the first box if boxes may open
/// windows, provided there is a display. A run that shows none doesn't load it and needs neither display nor
/// toolkit. Without the module it does what HeadlessWindows does.
class LazyWindows : public WindowServices, public Background
{
public:
    LazyWindows();
    LazyWindows(const LazyWindows&) = delete;
    LazyWindows& operator=(const LazyWindows&) = delete;
    ~LazyWindows() override;

    /// Call this before a form is shown. Both must live until Detach. preview_operations are for previews
    /// alone.
    void Attach(Application& app, ImageTransform& preview_operations);
    /// Closes all windows; nothing is shown from then on. Call it before the Application goes.
    void Detach();
    /// Handles events until the frame window is closed.
    void RunWindow();

    void Run(const std::function<void()>& work) override;

    void LetBoxesOpenWindows() override { boxes_open_windows_ = true; }
    void LaunchHelp(const std::string& help_file, std::int32_t topic) override;
    std::string sMatchingFont(const std::string& name) const override;
    bool bHasDisplay() const override;

private:
    class FormWatch;

    BoxAnswer ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons) override;
    std::size_t ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                           const std::vector<ChoiceButton>& buttons) override;
    std::string ShowFilePicker(FilePicker& picker) override;
    std::string ShowFolderPicker(const std::string& title, const std::string& start_folder) override;
    std::optional<std::int32_t> ShowColourPicker(std::int32_t start) override;
    std::optional<std::string> ShowFontPicker(const std::string& start) override;
    void ShowForm(Form& frm) override;
    void HandleEvents() override;

    /// The opened module, or null where there is none.
    WindowModule* Open();
    WindowModule* OpenForBox() { return boxes_open_windows_ ? Open() : module_; }

    HeadlessWindows headless_;
    Application* app_ = nullptr;
    ImageTransform* preview_operations_ = nullptr;
    std::vector<std::unique_ptr<FormWatch>> watches_;  ///< until the module follows the forms itself
    mutable std::optional<bool> has_display_;
    bool boxes_open_windows_ = false;
    bool tried_ = false;
    WindowModule* module_ = nullptr;
    DestroyWindowModule* destroy_ = nullptr;
};
