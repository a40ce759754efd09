// The main form over a special process, without a window.
// Room: tests/panel/support.
#pragma once

#include <string>

#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "tests/editing/support/editing_form.h"
#include "tests/support/special_processes.h"

class PanelForm : public EditingForm
{
protected:
    PanelForm()
    {
        frm.rbActionToDo(1).UserClicks();
        frm.sImageConversionOptions = kPrefix;
        frm.bDirtyConversionItem = false;
    }

    void Choose(std::int32_t lSpecialProcess) { ChooseItem(frm.cbSpecialProcesses, lSpecialProcess); }
    /// The process shown with these values, as after the choice of a row.
    void Show(std::int32_t lSpecialProcess, const std::string& sOwnDetails)
    {
        sDetails(lSpecialProcess) = kPrefix + sOwnDetails;
        Choose(lSpecialProcess);
    }
    std::string& sDetails(std::int32_t lSpecialProcess)
    {
        return frm.asSP_Details.at(static_cast<std::size_t>(lSpecialProcess));
    }
    /// The process's own fields, as they were last read from the panel.
    std::string sOwnDetails(std::int32_t lSpecialProcess)
    {
        const std::string& sAll = sDetails(lSpecialProcess);
        std::size_t nAt = 0;
        for (int lField = 0; lField < 11; ++lField)
            nAt = sAll.find('^', nAt) + 1;
        return sAll.substr(nAt);
    }

    const std::string kPrefix = "1^0^FALSE^75^^^^^^^^";
    TextBox& txt1 = frm.txtSpecialProcessTextEntry1;
    TextBox& txt1b = frm.txtSpecialProcessTextEntry1b;
    TextBox& txt1c = frm.txtSpecialProcessTextEntry1c;
    TextBox& txt2 = frm.txtSpecialProcessTextEntry2;
    ComboBox& cbList = frm.cbSpecialProcessListBox;
    CheckBox& cbCheck = frm.cbSpecialProcessBoolean;
    TabStrip& tsParameters = frm.tsSpecialProcessParameters;
};
