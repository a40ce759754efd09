// The main form as a person has it in front of them, without a window.
// Room: tests/editing/support.
#pragma once

#include <string>
#include <vector>

#include "src/job/modTaskTables.h"
#include "src/shell/modMainForms.h"
#include "tests/fakes/test_application.h"

class EditingForm : public testing::Test
{
protected:
    EditingForm()
    {
        app.files.AddFolder("/in");
        app.files.AddFolder("/out");
        app.images.AddImage("/in/a.bmp");
        app.images.AddImage("/in/b.bmp");
        LoadMainForms(app);
        frm.SetVisible(true);
        frm.bAutoLoadImages = false;
    }

    /// A task from /in/NAME.bmp to /out/NAME.png, added as a person does.
    void AddTask(const std::string& sName)
    {
        frm.cbOriginalFile.UserTypes("/in/" + sName + ".bmp");
        frm.cbTargetFile.UserTypes("/out/" + sName + ".png");
        frm.cmdAdd.UserClicks();
    }
    std::string sCell(std::int32_t lRow, std::int32_t lCol) const
    {
        return frm.fgToDo.TextMatrix(lRow, lCol);
    }
    std::vector<std::string> aRow(std::int32_t lRow) const
    {
        std::vector<std::string> aCells;
        for (std::int32_t lCol = 0; lCol < frm.fgToDo.Cols(); ++lCol)
            aCells.push_back(sCell(lRow, lCol));
        return aCells;
    }
    std::int32_t lTasks() const { return frm.fgToDo.Rows() - 2; }
    /// The number of the selected type.
    static std::int32_t lType(const ComboBox& cb) { return cb.ItemData(cb.ListIndex()); }
    static void ChooseItem(ComboBox& cb, std::int32_t lItemData)
    {
        for (std::int32_t l = 0; l < cb.ListCount(); ++l)
            if (cb.ItemData(l) == lItemData)
                cb.UserChooses(l);
    }
    std::string sLastBox() const { return app.windows.boxes.empty() ? "" : app.windows.boxes.back().text; }

    TestApplication app;
    frmMain& frm = app.frmMain;
};
