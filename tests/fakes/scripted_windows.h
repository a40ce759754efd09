// Window services that answer from a script and record what was shown.
// Room: tests/fakes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
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

    std::vector<Box> boxes;                          ///< all boxes shown, in order
    std::deque<BoxAnswer> answers;                   ///< answers to give, in order; then Ok or Yes
    std::vector<std::vector<ChoiceButton>> choices;  ///< buttons of all boxes with buttons of their own
    std::deque<std::size_t> chosen;        ///< buttons to choose, in order; then the one that rejects
    std::vector<std::string> pickers;      ///< all file dialogs as "title|filter", folder dialogs as "title"
    std::vector<FilePicker> file_pickers;  ///< all file dialogs, as they were asked for
    std::vector<std::string> start_folders;   ///< of all folder dialogs
    std::deque<std::string> picks;            ///< paths to return, in order; then ""
    std::int32_t picked_filter = 0;           ///< filter to return from file dialogs; 0 keeps the first one
    std::vector<std::int32_t> start_colours;  ///< of all colour dialogs
    std::deque<std::int32_t> colours;         ///< colours to return, in order; then cancelled
    std::vector<std::string> start_fonts;     ///< of all font dialogs
    std::deque<std::string> fonts;            ///< fonts to return, in order; then cancelled
    std::vector<Form*> modal_forms;           ///< all forms shown modally
    std::vector<std::string> help_calls;      ///< all help calls as "file#topic"
    int do_events = 0;
    std::function<void()> on_do_events;        ///< simulates the user while events are processed
    std::function<void(Form&)> on_show_modal;  ///< simulates the user in a modal form
    std::function<void()> on_box;              ///< called while a box or a dialog is shown
    bool display = false;
    std::map<std::string, std::string>
        installed_fonts;  ///< font that each name gives; other names give "Sans"

    void LaunchHelp(const std::string& help_file, std::int32_t topic) override
    {
        help_calls.push_back(help_file + "#" + std::to_string(topic));
    }
    bool bHasDisplay() const override { return display; }
    std::string sMatchingFont(const std::string& name) const override
    {
        const auto found = installed_fonts.find(name);
        return found == installed_fonts.end() ? "Sans" : found->second;
    }

private:
    template <typename T>
    static std::optional<T> Next(std::deque<T>& script)
    {
        if (script.empty())
            return std::nullopt;
        T next = script.front();
        script.pop_front();
        return next;
    }
    void RunOnBox() const
    {
        if (on_box)
            on_box();
    }

    BoxAnswer ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons) override
    {
        boxes.push_back({text, title, icon, buttons});
        RunOnBox();
        const bool question = buttons == BoxButtons::YesNo || buttons == BoxButtons::YesNoCancel;
        return Next(answers).value_or(question ? BoxAnswer::Yes : BoxAnswer::Ok);
    }
    std::size_t ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                           const std::vector<ChoiceButton>& buttons) override
    {
        boxes.push_back({text, title, icon, BoxButtons::Ok});
        choices.push_back(buttons);
        RunOnBox();
        std::size_t reject = 0;
        while (buttons.at(reject).eRole != ButtonRole::Reject)
            ++reject;
        return Next(chosen).value_or(reject);
    }
    std::string ShowFilePicker(FilePicker& picker) override
    {
        pickers.push_back(picker.sTitle + "|" + picker.sFilter);
        file_pickers.push_back(picker);
        RunOnBox();
        const std::optional<std::string> pick = Next(picks);
        if (pick && picked_filter != 0)
            picker.lFilterIndex = picked_filter;
        return pick.value_or("");
    }
    std::string ShowFolderPicker(const std::string& title, const std::string& start_folder) override
    {
        pickers.push_back(title);
        start_folders.push_back(start_folder);
        RunOnBox();
        return Next(picks).value_or("");
    }
    std::optional<std::int32_t> ShowColourPicker(std::int32_t start) override
    {
        start_colours.push_back(start);
        RunOnBox();
        return Next(colours);
    }
    std::optional<std::string> ShowFontPicker(const std::string& start) override
    {
        start_fonts.push_back(start);
        RunOnBox();
        return Next(fonts);
    }
    void ShowForm(Form& frm) override
    {
        modal_forms.push_back(&frm);
        if (on_show_modal)
            on_show_modal(frm);
    }
    void HandleEvents() override
    {
        ++do_events;
        if (on_do_events)
            on_do_events();
    }
};
