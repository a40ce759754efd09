// The preview of a process, and a resize that keeps its proportions.
#include "tests/panel/support/panel_form.h"

#include "src/forms/scope_guards.h"
#include "src/panel/modPreview.h"

namespace
{

class PreviewForm : public PanelForm
{
protected:
    PreviewForm()
    {
        auto pImage = std::make_shared<ImageBuffer>();
        pImage->width = 200;
        pImage->height = 100;
        pImage->channels = 1;
        pImage->bytes.assign(200 * 100, 7);
        frm.pOriginalImage = pImage;
        app.objHooks.UpdateGUIForImageViewer = [this](Application&, std::int32_t lView) {
            aUpdatedViews.push_back(lView);
        };
    }
    /// The operations done since the last call.
    std::vector<std::string> aOperations() { return std::exchange(app.transform.calls, {}); }
    using Calls = std::vector<std::string>;

    ImageView& objPreview = frm.ImageViewMain(2);
    std::vector<std::int32_t> aUpdatedViews;
};

}  // namespace

TEST_F(PreviewForm, AppliesTheProcessToTheUntouchedPicture)
{
    Choose(SP_GAMMA);

    txt1.UserTypes("2");
    txt1.UserTypes("2.5");

    EXPECT_EQ(app.transform.calls, (Calls{"Gamma 2.0", "Gamma 2.5"}));
    ASSERT_TRUE(objPreview.pImage());
    EXPECT_EQ(objPreview.pImage()->width, 200);
    EXPECT_EQ(frm.pOriginalImage->bytes.size(), 20000u);
    EXPECT_EQ(frm.aImageWidth[2], 200);
    EXPECT_EQ(frm.aImageHeight[2], 100);
    EXPECT_EQ(aUpdatedViews, (std::vector<std::int32_t>{2, 2}));
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST_F(PreviewForm, ShowsTheTabOfThePreviewWithoutLoadingAnything)
{
    int lLoads = 0;
    frm.tsImageViewer.OnClick = [&] { lLoads += app.bInternalGridChange ? 0 : 1; };
    Choose(SP_GAMMA);
    ASSERT_EQ(frm.tsImageViewer.SelectedTab(), 1);

    txt1.UserTypes("2");

    EXPECT_EQ(frm.tsImageViewer.SelectedTab(), 3);
    EXPECT_EQ(lLoads, 0);
}

TEST_F(PreviewForm, RunsWithZeroForATextThatIsNoNumber)
{
    Choose(SP_GAMMA);

    txt1.UserTypes("much");

    EXPECT_EQ(aOperations(), Calls{"Gamma 0.0"});
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(PreviewForm, IsNotRepeatedWhileNothingHasChanged)
{
    Choose(SP_GAMMA);
    txt1.UserTypes("2");
    aOperations();

    txt1.UserTypes("2.0");
    EXPECT_EQ(aOperations(), Calls{});

    frm.HScrollFrame(0).SetRange(0, 3);
    frm.HScrollFrame(0).SetValue(1);
    txt1.UserTypes("2.00");
    EXPECT_EQ(aOperations(), Calls{"Gamma 2.0"});

    frm.cbOriginalFileSpecialized.UserTypes("/in/b.bmp");
    txt1.UserTypes("2");
    EXPECT_EQ(aOperations(), Calls{"Gamma 2.0"});
}

TEST_F(PreviewForm, IsAlwaysMadeWhenNoInputChanged)
{
    Choose(SP_GAMMA);
    txt1.UserTypes("2");
    aOperations();

    app.objHooks.UpdatePreview(app);

    EXPECT_EQ(aOperations(), Calls{"Gamma 2.0"});
}

TEST_F(PreviewForm, IsMadeForANewProcessOnItsTabOnly)
{
    Choose(SP_GAMMA);
    EXPECT_EQ(aOperations(), Calls{});

    frm.tsImageViewer.UserChooses(3);
    Choose(SP_INVERT);

    EXPECT_EQ(aOperations(), Calls{"Invert"});
}

TEST_F(PreviewForm, IsNotMadeWhileTheProgramChangesFields)
{
    Choose(SP_GAMMA);
    const InternalChange objChange(app);

    UpdateGUIforSpecialProcessBasedOnUserInput(app, PanelInput::Text1);

    EXPECT_EQ(aOperations(), Calls{});
    EXPECT_TRUE(app.bInternalGridChange);
}

TEST_F(PreviewForm, IsNotMadeWithoutAPicture)
{
    frm.pOriginalImage = nullptr;
    Choose(SP_GAMMA);

    txt1.UserTypes("2");

    EXPECT_EQ(aOperations(), Calls{});
    EXPECT_EQ(sOwnDetails(SP_GAMMA), "2^");
}

TEST_F(PreviewForm, StaysAsItWasWhenTheOperationFails)
{
    Choose(SP_GAMMA);
    txt1.UserTypes("2");
    const auto pShown = objPreview.pImage();
    app.transform.fail = true;

    txt1.UserTypes("3");

    EXPECT_EQ(objPreview.pImage(), pShown);
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(PreviewForm, StaysAsItWasWhenANumberIsTooLargeForTheOperation)
{
    Choose(SP_COLORIZE);

    txt1.UserTypes("256");

    EXPECT_EQ(aOperations(), Calls{});
    EXPECT_FALSE(objPreview.pImage());
    EXPECT_EQ(txt1.Text(), "256");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(PreviewForm, FitsTheWindow)
{
    objPreview.UserResizes(100, 100);
    Choose(SP_GAMMA);

    txt1.UserTypes("2");

    EXPECT_DOUBLE_EQ(objPreview.Zoom(), 0.5);
    EXPECT_EQ(frm.lViewWidth, 100);
    EXPECT_EQ(frm.lViewHeight, 50);
}

TEST_F(PreviewForm, KeepsTheZoomWhenTheBoxOfAResizeIsTicked)
{
    objPreview.UserResizes(100, 100);
    Choose(SP_TRANSFORM_RESIZE);
    objPreview.SetZoom(2);

    cbCheck.UserToggles();

    EXPECT_DOUBLE_EQ(objPreview.Zoom(), 2);
}

TEST_F(PreviewForm, KeepsThePageOnShow)
{
    frm.HScrollFrame(0).SetRange(0, 3);
    frm.HScrollFrame(0).SetValue(2);
    Choose(SP_GAMMA);

    txt1.UserTypes("2");

    EXPECT_EQ(objPreview.Page(), 2);
}

TEST_F(PreviewForm, ResizesToTheNumbersAsTheyAre)
{
    Choose(SP_TRANSFORM_RESIZE);
    txt1.UserTypes("0");
    aOperations();

    txt2.UserTypes("50");

    EXPECT_EQ(aOperations(), Calls{"Resize 0 50 0 0"});
}

TEST_F(PreviewForm, RewritesTheHeightWhenTheWidthIsTyped)
{
    Choose(SP_TRANSFORM_RESIZE);
    cbCheck.UserToggles();
    aOperations();

    txt1.UserTypes("50");

    EXPECT_EQ(txt2.Text(), "25");
    EXPECT_EQ(aOperations(), Calls{"Resize 50 25 0 0"});
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "50^25^0^0^TRUE^");
}

TEST_F(PreviewForm, RewritesTheWidthWhenTheHeightIsTyped)
{
    Choose(SP_TRANSFORM_RESIZE);
    cbCheck.UserToggles();
    aOperations();

    txt2.UserTypes("33");

    EXPECT_EQ(txt1.Text(), "66");
    EXPECT_EQ(aOperations(), Calls{"Resize 66 33 0 0"});
}

TEST_F(PreviewForm, RewritesTheWidthWhenTheBoxIsTicked)
{
    Choose(SP_TRANSFORM_RESIZE);
    txt2.UserTypes("40");

    cbCheck.UserToggles();

    EXPECT_EQ(txt1.Text(), "80");
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "80^40^0^0^TRUE^");
}

TEST_F(PreviewForm, RunsElsewhereIfTheWindowOffersThat)
{
    MakePreview fnWaiting;
    std::function<void(std::shared_ptr<const ImageBuffer>)> fnWhenDone;
    app.objHooks.RunPreview = [&](MakePreview fnMake, auto fnShow) {
        fnWaiting = std::move(fnMake);
        fnWhenDone = std::move(fnShow);
    };
    Choose(SP_GAMMA);
    txt1.UserTypes("2");
    EXPECT_EQ(aOperations(), Calls{});
    EXPECT_FALSE(objPreview.pImage());

    RecordingImageTransform objOther;
    const auto pImage = fnWaiting(objOther);
    fnWhenDone(pImage);

    EXPECT_EQ(objOther.calls, Calls{"Gamma 2.0"});
    EXPECT_EQ(objPreview.pImage(), pImage);
}
