// The values that the panel shows, and the steps, colours and lists that change them.
#include "tests/panel/support/panel_form.h"

TEST_F(PanelForm, ShowsTheFirstStartValuesOfAProcess)
{
    Choose(SP_EMBOSS);

    EXPECT_EQ(txt1.Text(), "0.00");
    EXPECT_EQ(txt1c.Text(), "10.00");
    EXPECT_EQ(txt1b.Text(), "1");
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(PanelForm, ShowsTwoDecimalsForFiveProcessesOnly)
{
    Show(SP_TRANSFORM_ROTATE, "33.335^255^");
    EXPECT_EQ(txt1.Text(), "33.34");

    Show(SP_BALANCEHLS, "1^0.5^-0.25^");
    EXPECT_EQ(txt1.Text() + " " + txt1b.Text() + " " + txt1c.Text(), "1.00 0.50 -0.25");

    Show(SP_RELIEF, "1^2^3^");
    EXPECT_EQ(txt1.Text() + " " + txt1b.Text() + " " + txt1c.Text(), "1.00 2.00 3.00");

    Show(SP_TEXTURIZE, "1^2^3^");
    EXPECT_EQ(txt1.Text() + " " + txt2.Text(), "1.00 2.00");

    Show(SP_CONTRAST, "0.755^");
    EXPECT_EQ(txt1.Text(), "0.755");

    Show(SP_MOTIONBLUR, "90^10^");
    EXPECT_EQ(txt1.Text() + " " + txt2.Text(), "90 10");
}

TEST_F(PanelForm, ShowsNumbersWithTheDecimalSignOfTheUser)
{
    app.locale.sign = ',';

    Show(SP_TRANSFORM_ROTATE, "1,5^0^");
    EXPECT_EQ(txt1.Text(), "1,50");

    Show(SP_CONTRAST, "0,75^");
    EXPECT_EQ(txt1.Text(), "0,75");
}

TEST_F(PanelForm, ShowsZeroForValuesThatAreMissing)
{
    sDetails(SP_FILTERBLUR).clear();
    Choose(SP_FILTERBLUR);
    EXPECT_EQ(txt1.Text(), "0");

    Choose(SP_FILTERSOBEL);
    EXPECT_EQ(cbList.ListIndex(), 0);
}

TEST_F(PanelForm, TakesThePrefixOfTheDetailsAsTheOptions)
{
    sDetails(SP_GAMMA) = "2^1^TRUE^80^a^b^c^d^e^f^g^0.5^";

    Choose(SP_GAMMA);

    EXPECT_EQ(frm.sImageConversionOptions, "2^1^TRUE^80^a^b^c^d^e^f^g^");
    EXPECT_EQ(txt1.Text(), "0.5");
}

TEST_F(PanelForm, ShowsAColourAsAColourAndAsANumber)
{
    Show(SP_TRANSFORM_ROTATE, "90^16711680^");

    EXPECT_EQ(frm.lblColorSelected1.BackColor(), 16711680);
    EXPECT_EQ(frm.lblColorSelected1.Caption(), std::string(13, ' '));
    EXPECT_EQ(frm.lblColorSelected2.Caption(), "16711680");
}

TEST_F(PanelForm, ShowsBooleansAsTheyAreStored)
{
    for (const bool bValue : {false, true}) {
        const std::string sValue = bValue ? "True" : "False";
        Show(SP_SKEW, sValue + "^45^");
        EXPECT_EQ(cbList.ListIndex(), bValue ? 1 : 0);

        Show(SP_DILATION, sValue + "^1^2^");
        EXPECT_EQ(cbCheck.Value(), bValue ? 1 : 0);

        Show(SP_TRANSFORM_RESIZE, "1^2^0^0^" + sValue + "^");
        EXPECT_EQ(cbCheck.Value(), bValue ? 1 : 0);

        Show(SP_DEINTERLACE, "False^" + sValue + "^");
        EXPECT_EQ(cbCheck.Value(), bValue ? 1 : 0);
    }
}

TEST_F(PanelForm, ShowsTheChoiceOfThreeProcessesTheWrongWayRound)
{
    for (const bool bValue : {false, true}) {
        const std::string sValue = bValue ? "True" : "False";
        Show(SP_ADDNOISE, sValue + "^35^");
        EXPECT_EQ(cbList.ListIndex(), bValue ? 0 : 1);

        Show(SP_DEINTERLACE, sValue + "^False^");
        EXPECT_EQ(cbList.ListIndex(), bValue ? 0 : 1);

        Show(SP_MOSAIC, sValue + "^6^");
        EXPECT_EQ(cbCheck.Value(), bValue ? 0 : 1);
    }
}

TEST_F(PanelForm, TurnsSuchAChoiceOverEachTimeItIsShown)
{
    Show(SP_MOSAIC, "False^6^");
    ASSERT_EQ(cbCheck.Value(), 1);
    txt1.UserTypes("7");
    EXPECT_EQ(sOwnDetails(SP_MOSAIC), "True^7^");

    Choose(SP_GAMMA);
    Choose(SP_MOSAIC);
    EXPECT_EQ(cbCheck.Value(), 0);
    txt1.UserTypes("8");
    EXPECT_EQ(sOwnDetails(SP_MOSAIC), "False^8^");
}

TEST_F(PanelForm, IgnoresAnInterpolationThatDoesNotExist)
{
    Show(SP_TRANSFORM_RESIZE, "1^2^2^0^FALSE^");
    Show(SP_TRANSFORM_RESIZE, "1^2^3^0^FALSE^");

    EXPECT_EQ(cbList.ListIndex(), -1);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(PanelForm, TellsOfAnyOtherChoiceThatDoesNotExist)
{
    Show(SP_FILTERSOBEL, "2^");

    EXPECT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(PanelForm, KeepsTheLastValuesOfEachProcess)
{
    Choose(SP_GAMMA);
    txt1.UserTypes("2.2");
    Choose(SP_CONTRAST);
    EXPECT_EQ(txt1.Text(), "0.75");

    Choose(SP_GAMMA);

    EXPECT_EQ(txt1.Text(), "2.2");
}

TEST_F(PanelForm, ReadsEveryChangeIntoTheDetails)
{
    Choose(SP_TRANSFORM_RESIZE);
    txt1.UserTypes("640");
    txt2.UserTypes("480");
    tsParameters.UserChooses(2);
    cbList.UserChooses(2);

    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "640^480^2^0^FALSE^");
}

TEST_F(PanelForm, MakesTheItemDirtyByEveryChange)
{
    const auto ExpectDirty = [&](const char* sWhat) {
        EXPECT_TRUE(frm.bDirtyConversionItem) << sWhat;
        frm.bDirtyConversionItem = false;
    };
    Choose(SP_TRANSFORM_RESIZE);
    ExpectDirty("process");
    txt1.UserTypes("1");
    ExpectDirty("text 1");
    txt2.UserTypes("1");
    ExpectDirty("text 2");
    cbCheck.UserToggles();
    ExpectDirty("check box");
    tsParameters.UserChooses(2);
    EXPECT_FALSE(frm.bDirtyConversionItem);
    cbList.UserChooses(1);
    ExpectDirty("list");
    Choose(SP_RELIEF);
    frm.bDirtyConversionItem = false;
    tsParameters.UserChooses(2);
    txt1b.UserTypes("1");
    ExpectDirty("text 1b");
    tsParameters.UserChooses(3);
    txt1c.UserTypes("1");
    ExpectDirty("text 1c");
    Choose(SP_LAUNCH);
    frm.bDirtyConversionItem = false;
    frm.cbCommandLine.UserTypes("/bin/true");
    ExpectDirty("program");
    frm.cbCommandLineArguments.UserTypes("a");
    ExpectDirty("arguments");
    frm.cbCommandLineWindowState.UserChooses(0);
    ExpectDirty("window state");
    frm.cbCommandLineThreadPriority.UserChooses(0);
    ExpectDirty("priority");
    frm.txtCommandLineWaitTimeInSeconds.UserTypes("5");
    ExpectDirty("wait");
}

TEST_F(PanelForm, MarksANumberThatIsNone)
{
    Choose(SP_GAMMA);
    EXPECT_FALSE(txt1.BackColor().has_value());

    txt1.UserTypes("much");
    EXPECT_TRUE(txt1.BackColor().has_value());
    EXPECT_EQ(txt1.ToolTipText(), "This is not a valid number. 0 is used instead.");
    EXPECT_EQ(sOwnDetails(SP_GAMMA), "0^");
    EXPECT_TRUE(app.windows.boxes.empty());

    txt1.UserTypes("1");
    EXPECT_FALSE(txt1.BackColor().has_value());
    EXPECT_EQ(txt1.ToolTipText(), "");
}

TEST_F(PanelForm, MarksANumberThatIsTooLargeForItsParameter)
{
    Choose(SP_GAUSSIANBLUR);
    txt1.UserTypes("3000000000");
    EXPECT_TRUE(txt1.BackColor().has_value());
    EXPECT_EQ(sOwnDetails(SP_GAUSSIANBLUR), "0^");

    Choose(SP_TRANSFORM_ROTATE);
    txt1.UserTypes("3000000000");
    EXPECT_FALSE(txt1.BackColor().has_value());
}

TEST_F(PanelForm, StepsItsBarsFromTheMiddle)
{
    for (const ScrollBar* pBar : {&frm.VScrollSpecialProcess1, &frm.VScrollSpecialProcess1b,
                                  &frm.VScrollSpecialProcess1c, &frm.VScrollSpecialProcess2}) {
        EXPECT_EQ(pBar->Min(), 0);
        EXPECT_EQ(pBar->Max(), 32767);
        EXPECT_EQ(pBar->Value(), 16000);
    }
}

TEST_F(PanelForm, CountsUpWhenABarMovesUp)
{
    Choose(SP_TRANSFORM_RESIZE);
    txt1.UserTypes("100");
    txt2.UserTypes("50");

    frm.VScrollSpecialProcess1.UserScrolls(15999);
    frm.VScrollSpecialProcess1.UserScrolls(15000);
    EXPECT_EQ(txt1.Text(), "102");

    frm.VScrollSpecialProcess1.UserScrolls(15001);
    EXPECT_EQ(txt1.Text(), "101");

    frm.VScrollSpecialProcess2.UserScrolls(16001);
    EXPECT_EQ(txt2.Text(), "49");
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "101^49^0^0^FALSE^");
}

TEST_F(PanelForm, StepsThreeTabsOfOneNumberEach)
{
    Show(SP_COLORIZE, "10^20^30^");
    tsParameters.UserChooses(2);
    frm.VScrollSpecialProcess1b.UserScrolls(15999);
    tsParameters.UserChooses(3);
    frm.VScrollSpecialProcess1c.UserScrolls(16001);

    EXPECT_EQ(sOwnDetails(SP_COLORIZE), "10^21^29^");
}

TEST_F(PanelForm, StepsInWholeNumbersBeyondTheRange)
{
    Choose(SP_CONTRAST);
    txt1.UserTypes("0.75");
    frm.VScrollSpecialProcess1.UserScrolls(15999);
    EXPECT_EQ(txt1.Text(), "2");

    txt1.UserTypes("0.5");
    frm.VScrollSpecialProcess1.UserScrolls(16000);
    EXPECT_EQ(txt1.Text(), "-1");
}

TEST_F(PanelForm, OnlyMovesTheFocusWhereThereIsNoNumberToStep)
{
    Choose(SP_CONTRAST);
    txt1.UserTypes("much");
    struct FocusView : TextObserver {
        void FocusRequested() override { ++lRequests; }
        int lRequests = 0;
    } objView;
    const Observation objWatch(txt1, objView);

    frm.VScrollSpecialProcess1.UserScrolls(15999);

    EXPECT_EQ(txt1.Text(), "much");
    EXPECT_EQ(objView.lRequests, 1);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(PanelForm, TellsWhenAStepLeavesThirtyTwoBits)
{
    Choose(SP_GAUSSIANBLUR);
    txt1.UserTypes("2147483647");

    frm.VScrollSpecialProcess1.UserScrolls(15999);

    EXPECT_EQ(sLastBox(), "Overflow");
    EXPECT_EQ(txt1.Text(), "2147483647");
}

TEST_F(PanelForm, TakesAnotherColour)
{
    Show(SP_TRANSFORM_ROTATE, "90^255^");
    tsParameters.UserChooses(2);
    frm.bDirtyConversionItem = false;
    app.windows.colours = {65280};

    frm.cmdSpecialProcessShowDialog.UserClicks();

    EXPECT_EQ(app.windows.start_colours, std::vector<std::int32_t>{255});
    EXPECT_EQ(frm.lblColorSelected1.BackColor(), 65280);
    EXPECT_EQ(frm.lblColorSelected2.Caption(), "65280");
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_ROTATE), "90^65280^");
    EXPECT_TRUE(frm.bDirtyConversionItem);
}

TEST_F(PanelForm, ChangesNothingWhenTheColourDialogIsCancelled)
{
    Show(SP_TRANSFORM_ROTATE, "90^255^");
    tsParameters.UserChooses(2);
    frm.bDirtyConversionItem = false;

    frm.cmdSpecialProcessShowDialog.UserClicks();

    EXPECT_EQ(frm.lblColorSelected2.Caption(), "255");
    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(PanelForm, ChangesNothingForTheColourThatIsShown)
{
    Show(SP_TRANSFORM_ROTATE, "90^255^");
    tsParameters.UserChooses(2);
    frm.bDirtyConversionItem = false;
    app.windows.colours = {255};

    frm.cmdSpecialProcessShowDialog.UserClicks();

    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(PanelForm, PicksAColourByAClickOnTheShownOneToo)
{
    for (const std::int32_t lSpecialProcess : {2, 3, 6}) {
        Choose(lSpecialProcess);
        tsParameters.UserChooses(tsParameters.TabCount());
        app.windows.start_colours.clear();

        frm.lblColorSelected1.UserClicks();

        EXPECT_EQ(app.windows.start_colours.size(), 1u) << lSpecialProcess;
    }
}

TEST_F(PanelForm, OffersToRequestAProcessByMail)
{
    Choose(SP_GAMMA);
    app.windows.answers = {BoxAnswer::Ok, BoxAnswer::Ok};

    Choose(-1);

    ASSERT_EQ(app.windows.boxes.size(), 2u);
    EXPECT_EQ(app.windows.boxes[0].text,
              "You can request that Orbelan add a special processing feature.  Continue?");
    EXPECT_EQ(app.windows.boxes[0].title, "Special Request");
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::OkCancel);
    EXPECT_EQ(app.windows.boxes[1].text,
              "Please give us a detailed description of what it is you want to have done to the files.\n\n"
              " EMail to: sales@orbelan.example\n\n"
              "Clicking OK will open the EMail software automatically for you.");
    EXPECT_EQ(app.windows.boxes[1].title, "Special Request");
    EXPECT_EQ(app.windows.boxes[1].buttons, BoxButtons::OkCancel);
    EXPECT_EQ(app.launcher.opened, std::vector<std::string>{"address mailto:sales@orbelan.example"});
}

TEST_F(PanelForm, LeavesTheFirstEntrySelectedWhenTheRequestIsCancelled)
{
    Choose(SP_GAMMA);
    app.windows.answers = {BoxAnswer::Cancel};
    frm.bDirtyConversionItem = false;

    Choose(-1);

    EXPECT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(frm.cbSpecialProcesses.ListIndex(), 0);
    EXPECT_TRUE(frm.frameCommandLine.Visible());
    EXPECT_TRUE(frm.bDirtyConversionItem);
    EXPECT_TRUE(app.launcher.opened.empty());
}

TEST_F(PanelForm, KeepsThePreviewTabForALaunch)
{
    Choose(SP_GAMMA);
    ASSERT_EQ(frm.tsImageViewer.TabCount(), 3);
    EXPECT_EQ(frm.tsImageViewer.TabCaption(3), "Preview");

    Choose(SP_LAUNCH);

    EXPECT_EQ(frm.tsImageViewer.TabCount(), 3);
    EXPECT_FALSE(frm.frameImageViewer.Visible());
}

TEST_F(PanelForm, ShowsTheDetailsOfASelectedRow)
{
    frm.fgToDo.AddItem("\t" + kPrefix + "2.5^\t1\tS20\t/in/a.bmp\t2\tbmp\t/out/a.bmp\t2\tbmp", 1);

    frm.fgToDo.SetRow(2);
    frm.fgToDo.SetRow(1);

    EXPECT_EQ(txt1.Text(), "2.5");
    EXPECT_EQ(frm.lblSpecialProcessTextEntryDescription1.Caption(),
              "Gamma level. [Must be >= 0.0, 1.0 = No change]");
    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(PanelForm, UpdatesTheRowWithAChangedParameter)
{
    frm.fgToDo.AddItem("\t" + kPrefix + "2.5^\t1\tS20\t/in/a.bmp\t2\tbmp\t/out/a.bmp\t2\tbmp", 1);
    frm.fgToDo.SetRow(2);
    frm.fgToDo.SetRow(1);

    txt1.UserTypes("3");
    ASSERT_TRUE(frm.keyUpdate.Enabled());
    frm.cmdUpdate.UserClicks();

    EXPECT_EQ(sCell(1, kColDetails), kPrefix + "3^");
}
