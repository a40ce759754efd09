// Timers: tick for the logic while they are on.
#include "src/controls/timer.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_views.h"

TEST(Timer, TicksOnlyWhileItIsOnAndHasAnInterval)
{
    struct TimerForm : Form {
        TimerForm() : Form("frmTimer") {}
        Timer Timer1{*this, "Timer1"};
    } frm;
    RecordingView<Timer> objView(frm.Timer1);
    int nTicks = 0;
    frm.Timer1.OnTimer = [&] { ++nTicks; };

    frm.Timer1.Tick();
    frm.Timer1.SetEnabled(true);
    frm.Timer1.Tick();
    EXPECT_EQ(nTicks, 0);
    frm.Timer1.SetInterval(1000);
    frm.Timer1.Tick();
    frm.Timer1.Tick();
    EXPECT_EQ(nTicks, 2);
    frm.Timer1.SetEnabled(false);
    frm.Timer1.Tick();

    EXPECT_EQ(nTicks, 2);
    EXPECT_EQ(objView.sTold, "enabled interval enabled ");
}
