// Closing the main windows, with and without a run in the way.
#include "src/shell/modClosing.h"

#include <algorithm>

#include "src/commands/modRunState.h"
#include "src/dispatch/modDispatcher.h"
#include "src/scheduler/modSchedule.h"
#include "src/scheduler/modSchedulerLink.h"
#include "tests/editing/support/editing_form.h"

namespace
{

class ClosingForm : public EditingForm
{
protected:
    ClosingForm()
    {
        LinkScheduler(app);
        ConnectClosing(app);
        app.frmMainMDI.SetVisible(true);
    }
    /// A run of three tasks; a person closes the frame while the second file is worked on.
    void CloseInMidRun()
    {
        AddTask("a");
        AddTask("b");
        AddTask("c");
        app.images.AddImage("/in/c.bmp");
        app.images.on_call = [this] {
            if (app.images.calls.back() == "LoadImage /in/b.bmp")
                app.windows.DoEvents();
        };
        app.windows.on_do_events = [this] {
            if (!app.images.calls.empty() && app.images.calls.back() == "LoadImage /in/b.bmp" && !bClosed) {
                bClosed = true;
                app.frmMainMDI.UserCloses();
                bVisibleAfterwards = app.frmMainMDI.Visible();
            }
        };
        frm.keyConvert.UserClicks();
    }
    /// The sections written to, in order, each once.
    std::vector<std::string> aSections() const
    {
        std::vector<std::string> aNames;
        for (const std::string& sWrite : app.ini.written)
            if (const std::string sName = sWrite.substr(0, sWrite.find('/'));
                std::find(aNames.begin(), aNames.end(), sName) == aNames.end())
                aNames.push_back(sName);
        return aNames;
    }

    bool bClosed = false;
    bool bVisibleAfterwards = false;
};

}  // namespace

TEST_F(ClosingForm, SavesEachSectionTheFrameLast)
{
    app.files.AddFile("/in/nightly.VJB");
    app.frmScheduler.cbScheduledJobFile.SetText("/in/nightly.VJB");
    GetCalendarTimerDataFromGUI(app);
    CollectDataFromFrmScheduler(app);

    EXPECT_TRUE(app.frmMainMDI.UserCloses());

    const std::vector<std::string> aNames = aSections();
    ASSERT_FALSE(aNames.empty());
    EXPECT_LT(std::find(aNames.begin(), aNames.end(), "frmScheduler"),
              std::find(aNames.begin(), aNames.end(), "frmMain"));
    EXPECT_EQ(aNames.back(), "frmMainMDI");
    EXPECT_FALSE(app.frmMainMDI.Visible());
    EXPECT_FALSE(frm.Visible());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ClosingForm, ClosesByTheMenuAndByTheContentToo)
{
    app.frmMainMDI.mnuExit.UserClicks();
    EXPECT_FALSE(app.frmMainMDI.Visible());

    app.frmMainMDI.SetVisible(true);
    frm.SetVisible(true);
    app.ini.written.clear();
    frm.UserCloses();
    EXPECT_FALSE(app.frmMainMDI.Visible());
    EXPECT_EQ(aSections().back(), "frmMainMDI");
}

TEST_F(ClosingForm, AsksNothingAboutEdits)
{
    AddTask("a");
    frm.fgToDo.SetRow(1);
    frm.cbTargetFile.UserTypes("/out/other.gif");

    app.frmMainMDI.UserCloses();

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_FALSE(app.frmMainMDI.Visible());
}

TEST_F(ClosingForm, AsksInMidRun)
{
    CloseInMidRun();

    ASSERT_EQ(app.windows.choices.size(), 1u);
    const std::vector<ChoiceButton>& aButtons = app.windows.choices[0];
    ASSERT_EQ(aButtons.size(), 3u);
    EXPECT_EQ(aButtons[0].sText, "Finish this file");
    EXPECT_EQ(aButtons[0].eRole, ButtonRole::Accept);
    EXPECT_EQ(aButtons[1].sText, "Stop now");
    EXPECT_EQ(aButtons[1].eRole, ButtonRole::Destructive);
    EXPECT_EQ(aButtons[2].sText, "Go on");
    EXPECT_EQ(aButtons[2].eRole, ButtonRole::Reject);
}

TEST_F(ClosingForm, GoesOnWithTheRunOnRequest)
{
    CloseInMidRun();

    EXPECT_TRUE(app.frmMainMDI.Visible());
    EXPECT_TRUE(app.files.Has("/out/c.png"));
    EXPECT_EQ(sCell(3, kColPass), "+");
    EXPECT_TRUE(app.ini.written.empty());
}

TEST_F(ClosingForm, FinishesTheFileInWorkFirst)
{
    app.windows.chosen = {0};

    CloseInMidRun();

    EXPECT_TRUE(bVisibleAfterwards);
    EXPECT_FALSE(app.frmMainMDI.Visible());
    EXPECT_TRUE(app.files.Has("/out/b.png"));
    EXPECT_FALSE(app.files.Has("/out/c.png"));
    EXPECT_EQ(aSections().back(), "frmMainMDI");
}

TEST_F(ClosingForm, AbandonsTheFileInWorkOnStopNow)
{
    app.windows.chosen = {1};

    CloseInMidRun();

    EXPECT_FALSE(app.frmMainMDI.Visible());
    EXPECT_TRUE(app.files.Has("/out/a.png"));
    EXPECT_FALSE(app.files.Has("/out/b.png"));
    EXPECT_EQ(sCell(2, kColPass), "");
    EXPECT_EQ(aSections().back(), "frmMainMDI");
}

TEST_F(ClosingForm, WaitsForWorkThatIsNoRun)
{
    app.windows.on_do_events = [this] {
        app.frmMainMDI.UserCloses();
        bVisibleAfterwards = app.frmMainMDI.Visible();
    };

    Dispatch(app, Act::Ordinary, [this] { app.windows.DoEvents(); });

    EXPECT_TRUE(bVisibleAfterwards);
    EXPECT_FALSE(app.frmMainMDI.Visible());
    EXPECT_TRUE(app.windows.choices.empty());
}

TEST_F(ClosingForm, KeepsTheLastNormalPlaceOfAMaximizedWindow)
{
    app.frmMainMDI.UserPlaces({kWindowNormal, 300, 450, 12000, 9000});
    app.frmMainMDI.UserPlaces({kWindowMaximized, 300, 450, 12000, 9000});
    app.ini.Set("frmMainMDI", "Left", "150");

    app.frmMainMDI.UserCloses();

    EXPECT_EQ(app.ini.Stored("frmMainMDI", "WindowState"), "2");
    EXPECT_EQ(app.ini.Stored("frmMainMDI", "Left"), "150");
}
