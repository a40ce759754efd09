// Check boxes: a click for each new value.
#include "src/controls/check_box.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_views.h"

namespace
{

struct CheckForm : Form {
    CheckForm() : Form("frmCheck")
    {
        chk.OnClick = [this] { ++nClick; };
    }
    CheckBox chk{*this, "chk"};
    int nClick = 0;
};

}  // namespace

TEST(CheckBox, ClicksOnlyWhenItsValueChanges)
{
    CheckForm frm;
    RecordingView<CheckBox> objView(frm.chk);

    frm.chk.SetValue(0);
    frm.chk.SetValue(1);
    frm.chk.SetValue(1);

    EXPECT_EQ(frm.chk.Value(), 1);
    EXPECT_EQ(frm.nClick, 1);
    EXPECT_EQ(objView.sTold, "value ");
}

TEST(CheckBox, ChangesWithEachToggleOfAPerson)
{
    CheckForm frm;
    frm.chk.UserToggles();
    EXPECT_EQ(frm.chk.Value(), 1);
    frm.chk.UserToggles();
    EXPECT_EQ(frm.chk.Value(), 0);
    EXPECT_EQ(frm.nClick, 2);
}

TEST(CheckBox, TakesItsTickBackFromTheViewWhereAToggleIsRefused)
{
    CheckForm frm;
    frm.chk.SetEnabled(false);
    RecordingView<CheckBox> objView(frm.chk);

    frm.chk.UserToggles();

    EXPECT_EQ(frm.chk.Value(), 0);
    EXPECT_EQ(frm.nClick, 0);
    EXPECT_EQ(objView.sTold, "value ");
}
