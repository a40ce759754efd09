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
        std::string sText;
        std::string sTitle;
        BoxIcon eIcon;
        BoxButtons eButtons;
    };

    std::vector<Box> aBoxes;              ///< all message boxes shown, in order
    std::deque<BoxAnswer> aAnswers;       ///< answers to give, in order; then Ok or Yes
    std::vector<std::string> aPickers;    ///< all file dialogs as "title|filter"
    std::deque<std::string> aPicks;       ///< paths to return, in order; then ""
    std::vector<Form*> aModalForms;       ///< all forms shown modally
    std::vector<std::string> aHelpCalls;  ///< all help calls as "file#topic"
    int lDoEvents = 0;
    std::function<void()> OnDoEvents;        ///< simulates the user while events are processed
    std::function<void(Form&)> OnShowModal;  ///< simulates the user in a modal form
    std::function<void()> OnBox;             ///< called while a message box is shown
    bool bDisplay = false;

    BoxAnswer MsgBox(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                     BoxButtons eButtons) override
    {
        aBoxes.push_back({sText, sTitle, eIcon, eButtons});
        if (OnBox)
            OnBox();
        if (aAnswers.empty())
            return eButtons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Yes;
        const BoxAnswer eAnswer = aAnswers.front();
        aAnswers.pop_front();
        return eAnswer;
    }
    std::string sPickFile(const std::string& sTitle, const std::string& sFilter, std::int32_t, bool) override
    {
        aPickers.push_back(sTitle + "|" + sFilter);
        if (aPicks.empty())
            return "";
        const std::string sPick = aPicks.front();
        aPicks.pop_front();
        return sPick;
    }
    void ShowModal(Form& frm) override
    {
        aModalForms.push_back(&frm);
        if (OnShowModal)
            OnShowModal(frm);
    }
    void DoEvents() override
    {
        ++lDoEvents;
        if (OnDoEvents)
            OnDoEvents();
    }
    void LaunchHelp(const std::string& sHelpFile, std::int32_t lTopic) override
    {
        aHelpCalls.push_back(sHelpFile + "#" + std::to_string(lTopic));
    }
    bool bHasDisplay() const override { return bDisplay; }
};
