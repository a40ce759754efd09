// Tests of the message boxes and answers of a run without a display.
#include "src/platform/headless/headless_windows.h"

#include <gtest/gtest.h>

#include "src/controls/control.h"
#include "tests/support/paths.h"

struct FormForTest : Form {
    FormForTest() : Form("frmForTest") {}
};

static std::string BoxOutput(HeadlessWindows& windows, const std::string& text)
{
    testing::internal::CaptureStderr();
    windows.MsgBox(text, "Error", BoxIcon::Information, BoxButtons::Ok);
    return testing::internal::GetCapturedStderr();
}

TEST(HeadlessWindows, PrintsBoxesOnStandardErrorOnly)
{
    HeadlessWindows windows;
    testing::internal::CaptureStdout();

    EXPECT_EQ(BoxOutput(windows, "Unable to launch application."), "Error: Unable to launch application.\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(HeadlessWindows, BreaksLinesAtCarriageReturns)
{
    HeadlessWindows windows;

    EXPECT_EQ(BoxOutput(windows, "one\rtwo"), "Error: one\ntwo\n");
}

TEST(HeadlessWindows, AnswersOkButNoToQuestions)
{
    HeadlessWindows windows;
    testing::internal::CaptureStderr();

    EXPECT_EQ(windows.MsgBox("a", "b", BoxIcon::Warning, BoxButtons::Ok), BoxAnswer::Ok);
    EXPECT_EQ(windows.MsgBox("a", "b", BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::No);
    EXPECT_EQ(windows.MsgBox("a", "b", BoxIcon::Question, BoxButtons::YesNoCancel), BoxAnswer::No);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "b: a\nb: a\nb: a\n");
}

TEST(HeadlessWindows, AnswersCancelToOkCancelQuestions)
{
    HeadlessWindows windows;
    testing::internal::CaptureStderr();

    EXPECT_EQ(windows.MsgBox("Continue?", "Special Request", BoxIcon::Information, BoxButtons::OkCancel),
              BoxAnswer::Cancel);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Special Request: Continue?\n");
}

TEST(HeadlessWindows, ChoosesRejectButton)
{
    HeadlessWindows windows;
    testing::internal::CaptureStderr();

    EXPECT_EQ(windows.nChooseButton("Close?", "Varnel", BoxIcon::Question,
                                    {{"Finish this file", ButtonRole::Accept},
                                     {"Stop now", ButtonRole::Destructive},
                                     {"Go on", ButtonRole::Reject}}),
              2u);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Varnel: Close?\n");
}

TEST(HeadlessWindows, PicksNoFileAndShowsNoForm)
{
    HeadlessWindows windows;
    FormForTest frm;

    FilePicker picker{"Open", "All|*.*", 3};
    EXPECT_EQ(windows.sPickFile(picker), "");
    EXPECT_EQ(picker.lFilterIndex, 3);
    EXPECT_EQ(windows.sPickFolder("Browse For Folder", "/home"), "");
    EXPECT_EQ(windows.lPickColour(255), std::nullopt);
    EXPECT_EQ(windows.sPickFont("Sans"), std::nullopt);
    windows.ShowModal(frm);
    windows.DoEvents();
    EXPECT_FALSE(frm.Visible());
    EXPECT_FALSE(windows.bHasDisplay());
}

TEST(HeadlessWindows, PrintsHelpTopics)
{
    HeadlessWindows windows;
    testing::internal::CaptureStderr();

    windows.LaunchHelp(SourceFolder() + "/share/Help/Varnel.html", 30);

    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("Using the command line\n"));
}

TEST(HeadlessWindows, NamesHelpTopicsThatItDoesNotFind)
{
    HeadlessWindows windows;
    testing::internal::CaptureStderr();

    windows.LaunchHelp("Varnel.HLP", 9999);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Help: Varnel.HLP, topic 9999\n");
}
