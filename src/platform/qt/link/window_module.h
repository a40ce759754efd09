// The module that draws windows, as the program sees it.
// Room: platform/qt/link.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/window_services.h"

class ImageTransform;
struct Application;

/// Mirrors the forms of an Application in windows. Needs a display. Nothing throws.
class WindowModule
{
public:
    virtual ~WindowModule() = default;

    /// Shows the forms that are visible, and from now on follows all forms. Call it once.
    /// Previews are made with preview_operations, on a thread of their own.
    virtual void Mirror(Application& app, ImageTransform& preview_operations) = 0;
    /// Handles events until the frame window is closed.
    virtual void Run() = 0;

    // These do what the functions of WindowServices with such names do.
    virtual BoxAnswer ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                              BoxButtons buttons) = 0;
    virtual std::size_t ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                                   const std::vector<ChoiceButton>& buttons) = 0;
    virtual std::string PickFile(FilePicker& picker) = 0;
    virtual std::string PickFolder(const std::string& title, const std::string& start_folder) = 0;
    virtual std::optional<std::int32_t> PickColour(std::int32_t start) = 0;
    virtual std::optional<std::string> PickFont(const std::string& start) = 0;
    virtual void ShowModal(Form& frm) = 0;
    virtual void HandleEvents() = 0;
    /// See Background in background_image.h.
    virtual void RunInBackground(const std::function<void()>& work) = 0;
    virtual std::string MatchingFont(const std::string& name) const = 0;
    /// False if there is no help to show.
    virtual bool LaunchHelp(const std::string& help_file, std::int32_t topic) = 0;
};

/// The module's entry points.
using CreateWindowModule = WindowModule*();
using DestroyWindowModule = void(WindowModule*);
constexpr char kCreateWindowModule[] = "VarnelCreateWindowModule";
constexpr char kDestroyWindowModule[] = "VarnelDestroyWindowModule";
