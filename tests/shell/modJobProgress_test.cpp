// The progress bar of a run.
#include "src/shell/modJobProgress.h"

#include "tests/editing/support/editing_form.h"

namespace
{

class ProgressForm : public EditingForm
{
protected:
    ProgressForm()
    {
        ConnectJobProgress(app);
        app.images.on_call = [this] {
            if (app.images.calls.back().starts_with("LoadImage")) {
                aValues.push_back(pbJob.Value());
                aTimesLeft.push_back(pbJob.ToolTipText());
                bSeen = bSeen || pbJob.Visible();
                app.clock.tick += 4000;
            }
        };
    }

    ProgressBar& pbJob = app.frmMainMDI.pbJob;
    std::vector<std::int32_t> aValues;
    std::vector<std::string> aTimesLeft;
    bool bSeen = false;
};

}  // namespace

TEST_F(ProgressForm, IsShownOnlyWhileARunGoesOn)
{
    AddTask("a");
    EXPECT_FALSE(pbJob.Visible());

    frm.keyConvert.UserClicks();

    EXPECT_TRUE(bSeen);
    EXPECT_FALSE(pbJob.Visible());
}

TEST_F(ProgressForm, GoesOverTheTasksOfTheJob)
{
    AddTask("a");
    AddTask("b");
    AddTask("a");
    AddTask("b");

    frm.keyConvert.UserClicks();

    EXPECT_EQ(aValues, (std::vector<std::int32_t>{0, 250, 500, 750}));
    EXPECT_EQ(pbJob.Max(), 1000);
}

TEST_F(ProgressForm, GoesOverTheFilesOfAWildcard)
{
    AddTask("a");
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    frm.cbTargetFile.UserTypes("/out/*.gif");
    frm.cmdAdd.UserClicks();

    frm.keyConvert.UserClicks();

    EXPECT_EQ(aValues, (std::vector<std::int32_t>{0, 500, 750}));
}

TEST_F(ProgressForm, TellsTheTimeLeftOnceItCanBeGuessed)
{
    for (int l = 0; l < 30; ++l)
        AddTask(l % 2 == 0 ? "a" : "b");

    frm.keyConvert.UserClicks();

    ASSERT_EQ(aTimesLeft.size(), 30u);
    EXPECT_EQ(aTimesLeft[0], "");
    EXPECT_EQ(aTimesLeft[1], "Minutes left: 2");
    EXPECT_EQ(aTimesLeft[29], "Seconds left: 4");
}
