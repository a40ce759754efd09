// Window services that answer from a script and keep what was shown.
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

    std::vector<Box> aBoxes;         ///< every box shown, in order
    std::deque<BoxAnswer> aAnswers;  ///< answers to give, first in front; Ok or Yes when there is none left
    std::vector<std::string> aPickers;    ///< "title|filter" of every picker
    std::deque<std::string> aPicks;       ///< paths to pick; "" when there is none left
    std::vector<Form*> aModalForms;       ///< every form shown modally
    std::vector<std::string> aHelpCalls;  ///< "file#topic"
    int lDoEvents = 0;
    std::function<void()> OnDoEvents;        ///< what the user does while events are let through
    std::function<void(Form&)> OnShowModal;  ///< what the user does with a modal form
    std::function<void()> OnBox;             ///< runs while a box is shown
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
