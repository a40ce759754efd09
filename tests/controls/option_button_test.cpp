// Option buttons: one of a group is chosen.
#include "src/controls/option_button.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "tests/fakes/recording_views.h"

namespace
{

struct OptionForm : Form {
    OptionForm() : Form("frmOption")
    {
        rbOne.OnClick = [this] { sClicks += "one "; };
        rbTwo.OnClick = [this] { sClicks += "two "; };
        rbActionToDo.OnClick = [this](std::int32_t lIndex) { sClicks += std::to_string(lIndex) + " "; };
    }
    OptionGroup objGroup;
    OptionButton rbOne{*this, "rbOne", objGroup};
    OptionButton rbTwo{*this, "rbTwo", objGroup};
    OptionButtonFamily rbActionToDo{*this, "rbActionToDo", 2};
    std::string sClicks;
};

}  // namespace

TEST(OptionButton, TakesTheChoiceFromItsSiblingsWithoutAClickOfTheirs)
{
    OptionForm frm;
    frm.rbOne.SetValue(true);
    frm.sClicks.clear();
    RecordingView<OptionButton> objOne(frm.rbOne), objTwo(frm.rbTwo);

    frm.rbTwo.SetValue(true);
    frm.rbTwo.SetValue(true);

    EXPECT_FALSE(frm.rbOne.Value());
    EXPECT_TRUE(frm.rbTwo.Value());
    EXPECT_EQ(frm.sClicks, "two ");
    EXPECT_EQ(objOne.sTold, "value ");
    EXPECT_EQ(objTwo.sTold, "value ");
}

TEST(OptionButton, LosesItsChoiceWithoutAClick)
{
    OptionForm frm;
    frm.rbOne.SetValue(true);
    frm.sClicks.clear();
    RecordingView<OptionButton> objView(frm.rbOne);
    frm.rbOne.SetValue(false);
    EXPECT_EQ(frm.sClicks, "");
    EXPECT_EQ(objView.sTold, "value ");
}

TEST(OptionButton, IsChosenByAPersonsClick)
{
    OptionForm frm;
    frm.rbOne.UserClicks();
    frm.rbTwo.UserClicks();
    frm.rbTwo.UserClicks();
    frm.rbOne.SetEnabled(false);
    frm.rbOne.UserClicks();
    EXPECT_EQ(frm.sClicks, "one two ");
    EXPECT_TRUE(frm.rbTwo.Value());
}

TEST(OptionButtonFamily, IsOneObjectWithMembersByIndex)
{
    OptionForm frm;
    EXPECT_EQ(frm.pControl("rbActionToDo(0)"), &frm.rbActionToDo(0));
    EXPECT_EQ(frm.pControl("rbActionToDo(1)"), &frm.rbActionToDo(1));
    EXPECT_EQ(frm.rbActionToDo.Count(), 2);
    EXPECT_EQ(frm.rbActionToDo.lChosen(), -1);
    EXPECT_THROW(frm.rbActionToDo(2), std::out_of_range);

    frm.rbActionToDo(1).SetValue(true);
    frm.rbActionToDo(0).UserClicks();

    EXPECT_EQ(frm.rbActionToDo.lChosen(), 0);
    EXPECT_EQ(frm.sClicks, "1 0 ");
}

TEST(Family, PutsOneMemberIntoEachFrameOfAnother)
{
    struct NavForm : Form {
        NavForm() : Form("frmNav") {}
        Family<Frame> framePicNav{*this, "framePicNav", 3};
        Family<ScrollBar> HScrollFrame{framePicNav, "HScrollFrame"};
    } frm;

    EXPECT_EQ(frm.HScrollFrame.Count(), 3);
    EXPECT_EQ(frm.HScrollFrame(2).sName(), "HScrollFrame(2)");
    EXPECT_EQ(frm.HScrollFrame(2).pFrame(), &frm.framePicNav(2));
    frm.framePicNav(2).SetVisible(false);
    EXPECT_FALSE(frm.HScrollFrame(2).bTakesActs());
    EXPECT_TRUE(frm.HScrollFrame(1).bTakesActs());
}
