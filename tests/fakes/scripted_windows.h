// Window services that answer from a script and record what was shown.
// Room: tests/fakes.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "src/platform/window_services.h"

class ScriptedWindows : public WindowServices
{
public:
    struct Box {
        std::string text;
        std::string title;
        BoxIcon icon;
        BoxButtons buttons;
    };

    std::vector<Box> boxes;               ///< all message boxes shown, in order
    std::deque<BoxAnswer> answers;        ///< answers to give, in order; then Ok or Yes
    std::vector<std::string> pickers;     ///< all file dialogs as "title|filter"
    std::deque<std::string> picks;        ///< paths to return, in order; then ""
    std::vector<Form*> modal_forms;       ///< all forms shown modally
    std::vector<std::string> help_calls;  ///< all help calls as "file#topic"
    int do_events = 0;
    std::function<void()> on_do_events;        ///< simulates the user while events are processed
    std::function<void(Form&)> on_show_modal;  ///< simulates the user in a modal form
    std::function<void()> on_box;              ///< called while a message box is shown
    bool display = false;

    BoxAnswer MsgBox(const std::string& text, const std::string& title, BoxIcon icon,
                     BoxButtons buttons) override
    {
        boxes.push_back({text, title, icon, buttons});
        if (on_box)
            on_box();
        if (answers.empty())
            return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Yes;
        const BoxAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::string sPickFile(const std::string& title, const std::string& filter, std::int32_t, bool) override
    {
        pickers.push_back(title + "|" + filter);
        if (picks.empty())
            return "";
        const std::string pick = picks.front();
        picks.pop_front();
        return pick;
    }
    void ShowModal(Form& frm) override
    {
        modal_forms.push_back(&frm);
        if (on_show_modal)
            on_show_modal(frm);
    }
    void DoEvents() override
    {
        ++do_events;
        if (on_do_events)
            on_do_events();
    }
    void LaunchHelp(const std::string& help_file, std::int32_t topic) override
    {
        help_calls.push_back(help_file + "#" + std::to_string(topic));
    }
    bool bHasDisplay() const override { return display; }
};
