// Status bars: panels that are made as they are written to.
#include "src/controls/status_bar.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_views.h"

namespace
{

struct BarForm : Form {
    BarForm() : Form("frmBar") {}
    StatusBar sb{*this, "sb"};
};

}  // namespace

TEST(StatusBar, MakesThePanelsThatAreWrittenTo)
{
    BarForm frm;
    RecordingView<StatusBar> objView(frm.sb);

    frm.sb.SetPanel(11, "1.5");
    frm.sb.SetPanel(11, "1.5");
    frm.sb.SetPanel(0, "none");
    frm.sb.SetPanel(-1, "none");

    EXPECT_EQ(frm.sb.Panel(11), "1.5");
    EXPECT_EQ(frm.sb.Panel(2), "");
    EXPECT_EQ(frm.sb.Panel(0), "");
    EXPECT_EQ(frm.sb.Panel(99), "");
    EXPECT_EQ(frm.sb.PanelCount(), 11);
    EXPECT_EQ(objView.sTold, "panel11 ");
}

TEST(StatusBar, GivesAPanelAToolTip)
{
    BarForm frm;
    RecordingView<StatusBar> objView(frm.sb);
    frm.sb.SetPanelToolTipText(2, "tip");
    EXPECT_EQ(frm.sb.PanelToolTipText(2), "tip");
    EXPECT_EQ(frm.sb.Panel(2), "");
    EXPECT_EQ(objView.sTold, "panel2 ");
}
