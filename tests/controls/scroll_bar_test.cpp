// Numbers between two limits: scroll bars, sliders, progress bars.
#include "src/controls/scroll_bar.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/fakes/recording_views.h"

namespace
{

struct RangeForm : Form {
    RangeForm() : Form("frmRange")
    {
        hs.OnChange = [this] { sRaised += "change" + std::to_string(hs.Value()) + " "; };
        hs.OnScroll = [this] { sRaised += "scroll" + std::to_string(hs.Value()) + " "; };
    }
    ScrollBar hs{*this, "hs", 0, 100};
    Slider SliderZoom{*this, "SliderZoom", 1, 1000};
    ProgressBar pbJob{*this, "pbJob", 0, 1000};
    std::string sRaised;
};

}  // namespace

TEST(RangeControl, BeginsAtItsLowerLimit)
{
    RangeForm frm;
    EXPECT_EQ(frm.hs.Value(), 0);
    EXPECT_EQ(frm.SliderZoom.Value(), 1);
    EXPECT_EQ(frm.pbJob.Max(), 1000);
}

TEST(RangeControl, PutsAValueOutOfRangeToTheNearestLimit)
{
    RangeForm frm;
    frm.SliderZoom.SetValue(5000);
    EXPECT_EQ(frm.SliderZoom.Value(), 1000);
    frm.SliderZoom.SetValue(-5000);
    EXPECT_EQ(frm.SliderZoom.Value(), 1);
}

TEST(RangeControl, ChangesForEachNewValue)
{
    RangeForm frm;
    RecordingView<RangeControl> objView(frm.hs);
    frm.hs.SetValue(7);
    frm.hs.SetValue(7);
    EXPECT_EQ(frm.sRaised, "change7 ");
    EXPECT_EQ(objView.sTold, "value ");
}

TEST(RangeControl, TakesItsValueIntoANewRange)
{
    RangeForm frm;
    frm.hs.SetValue(50);
    frm.sRaised.clear();
    RecordingView<RangeControl> objView(frm.hs);

    frm.hs.SetRange(0, 100);
    frm.hs.SetRange(0, 60);
    EXPECT_EQ(frm.sRaised, "");
    frm.hs.SetRange(0, 11);

    EXPECT_EQ(frm.sRaised, "change11 ");
    EXPECT_EQ(objView.sTold, "range range value ");
    frm.hs.SetRange(5, 2);
    EXPECT_EQ(frm.hs.Max(), 5);
}

TEST(ScrollBar, ScrollsWhileDraggedAndChangesWhenLetGo)
{
    RangeForm frm;
    frm.hs.UserDrags(10);
    frm.hs.UserDrags(20);
    frm.hs.UserScrolls(20);
    frm.hs.UserScrolls(20);
    frm.hs.UserScrolls(21);
    EXPECT_EQ(frm.sRaised, "scroll10 scroll20 change20 change21 ");
}

TEST(ScrollBar, StaysWhereItIsWhileDisabled)
{
    RangeForm frm;
    frm.hs.SetEnabled(false);
    RecordingView<RangeControl> objView(frm.hs);
    frm.hs.UserDrags(10);
    frm.hs.UserScrolls(10);
    EXPECT_EQ(frm.hs.Value(), 0);
    EXPECT_EQ(frm.sRaised, "");
    EXPECT_EQ(objView.sTold, "value value ");
}
