// What needs a window: boxes, pickers, modal forms, the event pump, help.
// Room: platform. Implemented by platform/qt and platform/headless; in tests by tests/fakes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class Form;

enum class BoxIcon { Information, Warning, Question };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

enum class ButtonRole { Accept, Destructive, Reject };

/// A button with custom text.
struct ChoiceButton {
    std::string sText;
    ButtonRole eRole = ButtonRole::Accept;
};

/// A file dialog.
struct FilePicker {
    std::string sTitle = {};
    std::string sFilter = {};       ///< "Label|*.ext;*.ext|Label|*.ext"
    std::int32_t lFilterIndex = 1;  ///< from 1; afterwards the one that was chosen
    bool bToSave = false;  ///< asks before it replaces a file; to open, any name is taken without a question
    std::string sStartFolder = {};  ///< a folder of the host; "" leaves it to the desktop
};

/// Texts come translated. Nothing throws.
///
/// The public functions wait for a person, and events arrive meanwhile: each notes that in Pumps(), so that
/// the dispatcher can tell an act of a person from an event that the program's own code raises. An
/// implementation overrides the private functions.
class WindowServices
{
public:
    /// What lets events in.
    enum class Pump {
        Events,  ///< work is in progress and looks at the events now and then
        Box,     ///< a box or a picker waits for its answer
        Form     ///< a modal form is open
    };

    /// Notes a pump for a scope. For services that wait for their own work and let events in meanwhile.
    class PumpScope
    {
    public:
        PumpScope(WindowServices& objWindows, Pump ePump) : m_objWindows(objWindows)
        {
            m_objWindows.m_aPumps.push_back(ePump);
        }
        ~PumpScope() { m_objWindows.m_aPumps.pop_back(); }
        PumpScope(const PumpScope&) = delete;
        PumpScope& operator=(const PumpScope&) = delete;

    private:
        WindowServices& m_objWindows;
    };

    virtual ~WindowServices() = default;

    /// Shows a message and waits for the answer. With no window to show it in, it goes to standard error; the
    /// answer is then Ok, or the one that changes nothing (No, else Cancel) where there is a question.
    BoxAnswer MsgBox(const std::string& sText, const std::string& sTitle, BoxIcon eIcon, BoxButtons eButtons)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowBox(sText, sTitle, eIcon, eButtons);
    }

    /// A question with buttons of its own; gives the index of the one chosen. Exactly one has the role
    /// Reject: it is the default, Escape chooses it, and it is the answer without a window.
    std::size_t nChooseButton(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                              const std::vector<ChoiceButton>& aButtons)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowChoice(sText, sTitle, eIcon, aButtons);
    }

    /// The path picked in a file dialog, "" if it was cancelled; lFilterIndex then keeps its value.
    std::string sPickFile(FilePicker& objPicker)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowFilePicker(objPicker);
    }

    /// The folder picked, without a separator at its end (a root keeps its own); "" if it was cancelled.
    /// sStartFolder is a folder of the host, or "".
    std::string sPickFolder(const std::string& sTitle, const std::string& sStartFolder)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowFolderPicker(sTitle, sStartFolder);
    }

    /// The colour picked (low byte red, then green, then blue); nothing if it was cancelled.
    std::optional<std::int32_t> lPickColour(std::int32_t lStart)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowColourPicker(lStart);
    }

    /// The name of the font picked; nothing if it was cancelled.
    std::optional<std::string> sPickFont(const std::string& sStart)
    {
        const PumpScope objPump(*this, Pump::Box);
        return ShowFontPicker(sStart);
    }

    /// Shows a form and returns when it was hidden.
    void ShowModal(Form& frm)
    {
        const PumpScope objPump(*this, Pump::Form);
        ShowForm(frm);
    }

    /// Handles pending events: how Pause reaches a run.
    void DoEvents()
    {
        const PumpScope objPump(*this, Pump::Events);
        HandleEvents();
    }

    /// Opens the help at a topic; a topic below 0 is its start. sHelpFile is the path of a document, or a
    /// name if the program's own folder has none.
    virtual void LaunchHelp(const std::string& sHelpFile, std::int32_t lTopic) = 0;
    /// The name of the font that the system shows texts in when asked for sName; "" without a display.
    [[nodiscard]] virtual std::string sMatchingFont(const std::string& /*sName*/) const { return ""; }
    /// From now on, a box may open the first window. Until then the boxes of a process that shows no form go
    /// to standard error.
    virtual void LetBoxesOpenWindows() {}
    /// True when windows can be shown.
    [[nodiscard]] virtual bool bHasDisplay() const = 0;

    /// The pumps that are at work, the innermost last.
    const std::vector<Pump>& Pumps() const { return m_aPumps; }

private:
    virtual BoxAnswer ShowBox(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                              BoxButtons eButtons) = 0;
    virtual std::size_t ShowChoice(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                                   const std::vector<ChoiceButton>& aButtons) = 0;
    virtual std::string ShowFilePicker(FilePicker& objPicker) = 0;
    virtual std::string ShowFolderPicker(const std::string& sTitle, const std::string& sStartFolder) = 0;
    virtual std::optional<std::int32_t> ShowColourPicker(std::int32_t lStart) = 0;
    virtual std::optional<std::string> ShowFontPicker(const std::string& sStart) = 0;
    virtual void ShowForm(Form& frm) = 0;
    virtual void HandleEvents() = 0;

    std::vector<Pump> m_aPumps;
};
