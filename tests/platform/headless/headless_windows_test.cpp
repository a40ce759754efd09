// What a run without windows says, and what it answers.
#include "src/platform/headless/headless_windows.h"

#include "src/controls/control.h"

struct FormForTest : Form {
    FormForTest() : Form("frmForTest") {}
};

static std::string sShown(HeadlessWindows& objWindows, const std::string& sText)
{
    testing::internal::CaptureStderr();
    objWindows.MsgBox(sText, "Error", BoxIcon::Information, BoxButtons::Ok);
    return testing::internal::GetCapturedStderr();
}

TEST(HeadlessWindows, ShowABoxOnStandardErrorAndNothingOnStandardOutput)
{
    HeadlessWindows objWindows;
    testing::internal::CaptureStdout();

    EXPECT_EQ(sShown(objWindows, "Unable to launch application."), "Error: Unable to launch application.\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(HeadlessWindows, BreakLinesWhereATextHasCarriageReturns)
{
    HeadlessWindows objWindows;

    EXPECT_EQ(sShown(objWindows, "one\rtwo"), "Error: one\ntwo\n");
}

TEST(HeadlessWindows, AnswerOkAndNoToEveryQuestion)
{
    HeadlessWindows objWindows;
    testing::internal::CaptureStderr();

    EXPECT_EQ(objWindows.MsgBox("a", "b", BoxIcon::Warning, BoxButtons::Ok), BoxAnswer::Ok);
    EXPECT_EQ(objWindows.MsgBox("a", "b", BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::No);
    EXPECT_EQ(objWindows.MsgBox("a", "b", BoxIcon::Question, BoxButtons::YesNoCancel), BoxAnswer::No);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "b: a\nb: a\nb: a\n");
}

TEST(HeadlessWindows, PickNothingAndShowNoForm)
{
    HeadlessWindows objWindows;
    FormForTest frm;

    EXPECT_EQ(objWindows.sPickFile("Open", "All|*.*", 1, false), "");
    objWindows.ShowModal(frm);
    objWindows.DoEvents();
    EXPECT_FALSE(frm.Visible());
    EXPECT_FALSE(objWindows.bHasDisplay());
}

TEST(HeadlessWindows, SayWhereTheHelpStands)
{
    HeadlessWindows objWindows;
    testing::internal::CaptureStderr();
    objWindows.LaunchHelp("Varnel.HLP", 12);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Help: Varnel.HLP, topic 12\n");
}
