// What needs a window: boxes, pickers, modal forms, the event pump, the desktop.
// Room: platform. Real ones: platform/qt, platform/headless. Scripted one: tests/fakes.
#pragma once

#include <cstdint>
#include <string>

class Form;

enum class BoxIcon { Information, Warning, Question };
enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

/// Texts come translated. Nothing throws.
class WindowServices
{
public:
    virtual ~WindowServices() = default;
    /// Shows a message and waits for the answer. With no window to show it in, it goes to standard error; the
    /// answer is then Ok, or No where there is a question.
    virtual BoxAnswer MsgBox(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                             BoxButtons eButtons) = 0;
    /// The path picked in a file dialog, or "" when it was cancelled. sFilter is "Label|*.ext|Label|*.ext",
    /// lIndex the filter chosen at first, counted from 1.
    virtual std::string sPickFile(const std::string& sTitle, const std::string& sFilter, std::int32_t lIndex,
                                  bool bToSave) = 0;
    /// Shows a form and returns when it was hidden.
    virtual void ShowModal(Form& frm) = 0;
    /// Lets events that wait be handled: how Pause reaches a run.
    virtual void DoEvents() = 0;
    /// Opens the help at a topic.
    virtual void LaunchHelp(const std::string& sHelpFile, std::int32_t lTopic) = 0;
    /// True when windows can be shown: a command line's boxes are shown then.
    [[nodiscard]] virtual bool bHasDisplay() const = 0;
};
