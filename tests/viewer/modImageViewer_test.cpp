// The viewer of the main form.
#include "src/viewer/modImageViewer.h"

#include <gtest/gtest.h>

#include "src/commands/modMenuToolbar.h"
#include "src/commands/modRunState.h"
#include "src/platform/image_buffer.h"
#include "tests/fakes/control_watchers.h"
#include "tests/fakes/test_application.h"

namespace
{

using Texts = std::vector<std::string>;

constexpr const char* kOriginal = "/in/a.png";
constexpr const char* kTarget = "/out/a.jpg";
constexpr const char* kPages = "/in/pages.tif";

// A main form on show with a task from kOriginal (400 x 200) to kTarget; each view is 200 x 200.
class ImageViewer : public testing::Test
{
protected:
    ImageViewer()
    {
        app.images.AddImage(kOriginal, {1});
        app.images.sizes[kOriginal] = {400, 200};
        app.images.AddImage(kTarget, {2});
        app.images.sizes[kTarget] = {100, 50};
        app.images.AddImage(kPages, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        app.images.sizes[kPages] = {60, 30};
        frm.cbOriginalFile.SetText(kOriginal);
        frm.cbTargetFile.SetText(kTarget);
        for (ImageView& objView : frm.ImageViewMain)
            objView.UserResizes(200, 200);
        ConnectImageViewer(app);
        frm.SetVisible(true);
        // Stands for the preview of a process.
        app.objHooks.UpdatePreview = [this](Application&) { aPreviews.push_back(lPageOf(0)); };
    }
    void AddPreviewTab()
    {
        frm.sActionToDo = "S";
        frm.cbOriginalFileSpecialized.SetText(kOriginal);
        frm.cbTargetFileSpecialized.SetText(kTarget);
        frm.tsImageViewer.AddTab("Preview");
    }
    std::string sStatus() const { return app.frmMainMDI.sbMain.Panel(2); }
    /// The page on show, from 1, or 0 for a blank view.
    int lPageOf(std::int32_t lView) const
    {
        const auto& pImage = frm.ImageViewMain(lView).pImage();
        return pImage ? pImage->bytes.at(0) : 0;
    }

    TestApplication app;
    frmMain& frm = app.frmMain;
    std::vector<int> aPreviews;  ///< the page of the original at each preview
};

}  // namespace

TEST_F(ImageViewer, ShowsOriginalAndTargetOfAConversion)
{
    EXPECT_TRUE(LoadImageViewer(app, kViewOriginal, false));
    EXPECT_EQ(lPageOf(0), 1);
    EXPECT_EQ(frm.tsImageViewer.SelectedTab(), 1);
    EXPECT_EQ(sStatus(), "Image Width: [400], Image Height: [200]");

    EXPECT_TRUE(LoadImageViewer(app, kViewTarget, false));
    EXPECT_EQ(lPageOf(1), 2);
    EXPECT_EQ(frm.tsImageViewer.SelectedTab(), 2);
    EXPECT_EQ(sStatus(), "Image Width: [100], Image Height: [50]");
}

TEST_F(ImageViewer, ShowsTheFilesOfASpecialProcessInItsMode)
{
    AddPreviewTab();
    frm.cbOriginalFileSpecialized.SetText(kPages);

    LoadImageViewer(app, kViewOriginal, false);

    EXPECT_EQ(frm.ImageViewMain(0).Tag(), kPages);
    EXPECT_EQ(sStatus(), "Total frames: [12], Current frame: [1], Image Width: [60], Image Height: [30]");
}

TEST_F(ImageViewer, LoadsAFileOnShowAgainOnlyByForce)
{
    LoadImageViewer(app, kViewOriginal, false);
    app.images.calls.clear();

    frm.cbOriginalFile.SetText("  /IN/A.PNG ");
    EXPECT_TRUE(LoadImageViewer(app, kViewOriginal, false));
    EXPECT_EQ(app.images.calls, Texts{});

    frm.cbOriginalFile.SetText(kOriginal);
    EXPECT_TRUE(LoadImageViewer(app, kViewOriginal, true));
    EXPECT_EQ(app.images.calls, (Texts{"LoadFrame /in/a.png 0"}));
}

TEST_F(ImageViewer, TellsOfALoadWhileItGoesOn)
{
    Texts aSeen;
    app.images.on_call = [&] {
        aSeen.push_back(sStatus());
        EXPECT_TRUE(app.bInternalGridChange);
        EXPECT_TRUE(app.frmMainMDI.Hourglass());
    };

    LoadImageViewer(app, kViewOriginal, false);

    EXPECT_EQ(aSeen, Texts{"Loading Image, please wait..."});
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST_F(ImageViewer, SaysThatAnOriginalDoesNotExistAndBlanksItsView)
{
    LoadImageViewer(app, kViewOriginal, false);
    frm.cbOriginalFile.SetText("/in/none.png");

    EXPECT_TRUE(LoadImageViewer(app, kViewOriginal, false));

    EXPECT_EQ(sStatus(), "File does not exist: /in/none.png");
    EXPECT_EQ(lPageOf(0), 0);
    EXPECT_EQ(frm.ImageViewMain(0).Tag(), "");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ImageViewer, SaysThatATargetMayNotExistYetWithoutABox)
{
    frm.cbTargetFile.SetText("/out/none.jpg");

    EXPECT_TRUE(LoadImageViewer(app, kViewTarget, false));

    EXPECT_EQ(sStatus(), "Target file may not exist. Check the target folder.");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ImageViewer, KeepsTheMessageOfAMissingFileAfterAClickOrReload)
{
    frm.cbTargetFile.SetText("/out/none.jpg");

    frm.tsImageViewer.UserChooses(2);
    EXPECT_EQ(sStatus(), "Target file may not exist. Check the target folder.");

    app.frmMainMDI.sbMain.SetPanel(2, "");
    frm.cmdReloadImage(1).UserClicks();
    EXPECT_EQ(sStatus(), "Target file may not exist. Check the target folder.");
}

TEST_F(ImageViewer, HidesThePagesOfAFileWithOne)
{
    LoadImageViewer(app, kViewOriginal, false);

    EXPECT_FALSE(frm.framePicNav(0).Visible());
    EXPECT_EQ(frm.aFrames[0], 1);
    EXPECT_EQ(frm.HScrollFrame(0).Max(), 0);
}

TEST_F(ImageViewer, CountsPagesOfTiffsOnly)
{
    app.images.AddImage("/in/many.gif", {1, 2, 3});
    frm.cbOriginalFile.SetText("/in/many.gif");

    LoadImageViewer(app, kViewOriginal, false);

    EXPECT_EQ(app.images.calls, Texts{"LoadFrame /in/many.gif 0"});
    EXPECT_FALSE(frm.framePicNav(0).Visible());
}

TEST_F(ImageViewer, TurnsTheTwelvePagesOfAFile)
{
    frm.cbOriginalFile.SetText(kPages);
    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_TRUE(frm.framePicNav(0).Visible());
    EXPECT_EQ(frm.HScrollFrame(0).Min(), 0);
    EXPECT_EQ(frm.HScrollFrame(0).Max(), 11);
    EXPECT_EQ(frm.lblFrame(0).Caption(), "1");

    frm.HScrollFrame(0).UserScrolls(11);

    EXPECT_EQ(lPageOf(0), 12);
    EXPECT_EQ(frm.lblFrame(0).Caption(), "12");
    EXPECT_EQ(sStatus(), "Total frames: [12], Current frame: [12], Image Width: [60], Image Height: [30]");
    EXPECT_EQ(frm.ImageViewMain(0).Page(), 11);
}

TEST_F(ImageViewer, BlanksAPageThatCannotBeLoadedButStillTurnsPages)
{
    frm.cbOriginalFile.SetText(kPages);
    LoadImageViewer(app, kViewOriginal, false);
    const std::string sBefore = sStatus();
    app.images.broken_page = 3;

    frm.HScrollFrame(0).UserScrolls(3);
    EXPECT_EQ(lPageOf(0), 0);
    EXPECT_EQ(frm.ImageViewMain(0).Tag(), "");
    EXPECT_EQ(sStatus(), sBefore);

    frm.HScrollFrame(0).UserScrolls(4);
    EXPECT_EQ(lPageOf(0), 5);
}

TEST_F(ImageViewer, CannotLoadATiffWithoutPages)
{
    app.images.AddImage("/in/bad.tif", {1});
    app.images.broken.insert("/in/bad.tif");
    frm.cbOriginalFile.SetText(kPages);
    LoadImageViewer(app, kViewOriginal, false);
    frm.cbOriginalFile.SetText("/in/bad.tif");

    EXPECT_TRUE(LoadImageViewer(app, kViewOriginal, false));

    EXPECT_EQ(sStatus(), "Unable to load image");
    EXPECT_EQ(lPageOf(0), 0);
    EXPECT_FALSE(frm.framePicNav(0).Visible());
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(ImageViewer, SaysNothingOfAPictureThatCannotBeLoaded)
{
    LoadImageViewer(app, kViewOriginal, false);
    app.images.broken.insert(kOriginal);

    EXPECT_FALSE(LoadImageViewer(app, kViewOriginal, true));

    EXPECT_EQ(lPageOf(0), 0);
    EXPECT_EQ(sStatus(), "");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ImageViewer, KeepsTheLastOriginalForThePreview)
{
    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_EQ(frm.pOriginalImage, frm.ImageViewMain(0).pImage());

    LoadImageViewer(app, kViewTarget, false);
    EXPECT_EQ(frm.pOriginalImage->width, 400);
}

TEST_F(ImageViewer, FitsThePictureAndShowsItsZoom)
{
    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 0.5);
    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "50%");
    EXPECT_EQ(frm.SliderZoom.Value(), 50);
    EXPECT_EQ(frm.scrollOffsetX.Value(), 250);
    EXPECT_EQ(frm.scrollOffsetY.Value(), 250);
    EXPECT_EQ(frm.lViewWidth, 200);
    EXPECT_EQ(frm.lViewHeight, 100);

    app.images.sizes[kOriginal] = {300, 300};
    LoadImageViewer(app, kViewOriginal, true);
    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "67%");
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 200.0 / 300);
}

TEST_F(ImageViewer, DoesNotRoundTheZoomOfAPageThatIsTurned)
{
    app.images.sizes[kPages] = {300, 300};
    frm.cbOriginalFile.SetText(kPages);
    LoadImageViewer(app, kViewOriginal, false);

    frm.HScrollFrame(0).UserScrolls(1);

    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 200.0 / 300);
    EXPECT_FALSE(frm.scrollOffsetX.Enabled());
}

TEST_F(ImageViewer, ZoomsTheSelectedViewByTheSlider)
{
    LoadImageViewer(app, kViewOriginal, false);
    LoadImageViewer(app, kViewTarget, false);

    frm.SliderZoom.UserScrolls(320);

    EXPECT_DOUBLE_EQ(frm.ImageViewMain(1).Zoom(), 3.2);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 0.5);
    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "320%");
}

TEST_F(ImageViewer, ZoomsWhileTheSliderIsDragged)
{
    LoadImageViewer(app, kViewOriginal, false);

    frm.SliderZoom.UserDrags(75);

    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 0.75);
    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "75%");
}

TEST_F(ImageViewer, LeavesTheZoomAloneWhileCodeMovesTheSlider)
{
    LoadImageViewer(app, kViewOriginal, false);
    app.bInternalGridChange = true;

    frm.SliderZoom.SetValue(300);

    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 0.5);
}

TEST_F(ImageViewer, ScrollsOnlyWhatIsLargerThanTheFittedPicture)
{
    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_FALSE(frm.scrollOffsetX.Enabled());
    EXPECT_FALSE(frm.scrollOffsetY.Enabled());

    frm.SliderZoom.UserScrolls(51);
    EXPECT_TRUE(frm.scrollOffsetX.Enabled());
    EXPECT_TRUE(frm.scrollOffsetY.Enabled());

    frm.SliderZoom.UserScrolls(50);
    EXPECT_FALSE(frm.scrollOffsetX.Enabled());
    EXPECT_FALSE(frm.scrollOffsetY.Enabled());
}

TEST_F(ImageViewer, ScrollsNoPictureThatIsSmallerThanTheViewAtHundredPercent)
{
    LoadImageViewer(app, kViewTarget, false);  // 100 x 50

    frm.SliderZoom.UserScrolls(100);

    EXPECT_FALSE(frm.scrollOffsetX.Enabled());
    EXPECT_FALSE(frm.scrollOffsetY.Enabled());
}

TEST_F(ImageViewer, MovesThePictureByItsScrollBars)
{
    LoadImageViewer(app, kViewOriginal, false);
    frm.SliderZoom.UserScrolls(200);

    frm.scrollOffsetX.UserScrolls(0);
    frm.scrollOffsetY.UserDrags(500);

    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).OffsetX(), 0);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).OffsetY(), 200);
    frm.scrollOffsetX.UserScrolls(375);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).OffsetX(), 300);
}

TEST_F(ImageViewer, ShowsZoomAndPlaceThatAPersonGivesByMouse)
{
    LoadImageViewer(app, kViewOriginal, false);

    frm.ImageViewMain(0).UserZooms(2.344);
    frm.ImageViewMain(0).UserScrolls(100.3, 150);

    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "234%");
    EXPECT_EQ(frm.SliderZoom.Value(), 234);
    EXPECT_EQ(frm.scrollOffsetX.Value(), 125);
    EXPECT_EQ(frm.scrollOffsetY.Value(), 375);
    EXPECT_TRUE(frm.scrollOffsetX.Enabled());
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 2.344);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).OffsetX(), 100.3);
}

TEST_F(ImageViewer, KeepsAFittedPictureFittedWhenTheViewIsResized)
{
    LoadImageViewer(app, kViewOriginal, false);

    frm.ImageViewMain(0).UserResizes(400, 400);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 1);
    EXPECT_EQ(frm.lblZoomPercentage.Caption(), "100%");

    frm.SliderZoom.UserScrolls(300);
    frm.ImageViewMain(0).UserResizes(500, 500);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 3);
}

TEST_F(ImageViewer, ShowsTheViewOfTheSelectedTabAlone)
{
    frm.tsImageViewer.UserChooses(2);
    EXPECT_FALSE(frm.ImageViewMain(0).Visible());
    EXPECT_TRUE(frm.ImageViewMain(1).Visible());
    EXPECT_FALSE(frm.ImageViewMain(2).Visible());
    EXPECT_FALSE(frm.picZoomMainPicture(0).Visible());
    EXPECT_TRUE(frm.picZoomMainPicture(1).Visible());

    frm.tsImageViewer.UserChooses(1);
    EXPECT_TRUE(frm.ImageViewMain(0).Visible());
    EXPECT_FALSE(frm.ImageViewMain(1).Visible());
}

TEST_F(ImageViewer, LoadsTheFileOfATabAtEachClick)
{
    frm.tsImageViewer.UserChooses(2);
    frm.tsImageViewer.UserChooses(2);
    frm.tsImageViewer.UserChooses(1);

    EXPECT_EQ(app.images.calls,
              (Texts{"LoadFrame /out/a.jpg 0", "LoadFrame /out/a.jpg 0", "LoadFrame /in/a.png 0"}));
    EXPECT_EQ(sStatus(), "Image Width: [400], Image Height: [200]");
}

TEST_F(ImageViewer, GivesTheFocusBackToTheTasksOnceAFormIsOnShow)
{
    int lFocused = 0;
    const FocusWatcher objWatcher(frm.fgToDo, [&] { ++lFocused; });

    frm.tsImageViewer.UserChooses(2);
    EXPECT_EQ(lFocused, 1);

    frm.SetVisible(false);
    frm.tsImageViewer.UserChooses(1);
    EXPECT_EQ(lFocused, 1);
}

TEST_F(ImageViewer, LoadsNothingByAClickWithoutAutomaticLoading)
{
    frm.bAutoLoadImages = false;

    frm.tsImageViewer.UserChooses(2);
    EXPECT_EQ(app.images.calls, Texts{});
    EXPECT_TRUE(frm.ImageViewMain(1).Visible());

    frm.cmdReloadImage(1).UserClicks();
    EXPECT_EQ(app.images.calls, Texts{"LoadFrame /out/a.jpg 0"});
    EXPECT_EQ(sStatus(), "Image Width: [100], Image Height: [50]");
}

TEST_F(ImageViewer, LoadsTheOriginalAndMakesThePreviewOnItsTab)
{
    AddPreviewTab();

    frm.tsImageViewer.UserChooses(3);

    EXPECT_EQ(app.images.calls, Texts{"LoadFrame /in/a.png 0"});
    EXPECT_EQ(aPreviews, std::vector<int>{1});
    EXPECT_EQ(frm.tsImageViewer.SelectedTab(), 3);
    EXPECT_TRUE(frm.ImageViewMain(2).Visible());
}

TEST_F(ImageViewer, PreviewsThePageOnShow)
{
    AddPreviewTab();
    frm.cbOriginalFileSpecialized.SetText(kPages);
    frm.tsImageViewer.UserChooses(1);
    frm.HScrollFrame(0).UserScrolls(6);

    frm.tsImageViewer.UserChooses(3);

    EXPECT_EQ(aPreviews, std::vector<int>{7});
    EXPECT_EQ(frm.HScrollFrame(0).Value(), 6);
    EXPECT_FALSE(frm.framePicNav(0).Visible());

    frm.tsImageViewer.UserChooses(1);
    EXPECT_TRUE(frm.framePicNav(0).Visible());
    EXPECT_EQ(lPageOf(0), 1);
}

TEST_F(ImageViewer, MakesNoPreviewOfAPictureThatCannotBeLoaded)
{
    AddPreviewTab();
    app.images.broken.insert(kOriginal);

    frm.tsImageViewer.UserChooses(3);

    EXPECT_TRUE(aPreviews.empty());
    EXPECT_EQ(frm.tsImageViewer.SelectedTab(), 3);
}

TEST_F(ImageViewer, RenewsThePreviewAloneByItsReloadButton)
{
    AddPreviewTab();
    frm.tsImageViewer.UserChooses(3);
    app.images.calls.clear();

    frm.cmdReloadImage(2).UserClicks();

    EXPECT_EQ(app.images.calls, Texts{});
    EXPECT_EQ(aPreviews.size(), 2u);
}

TEST_F(ImageViewer, ChangesTabsButLoadsNothingWhileARunGoesOn)
{
    LoadImageViewer(app, kViewOriginal, false);
    app.images.calls.clear();
    const RunScope objRun(app);

    frm.tsImageViewer.UserChooses(2);
    frm.cmdReloadImage(1).UserClicks();

    EXPECT_EQ(app.images.calls, Texts{});
    EXPECT_TRUE(frm.ImageViewMain(1).Visible());
    EXPECT_FALSE(frm.cmdReloadImage(1).Enabled());
    EXPECT_FALSE(frm.framePicNav(0).Enabled());
    frm.tsImageViewer.UserChooses(1);
    frm.SliderZoom.UserScrolls(200);
    EXPECT_DOUBLE_EQ(frm.ImageViewMain(0).Zoom(), 2);
}

TEST_F(ImageViewer, BeginsNoSecondLoadWhileOneGoesOn)
{
    app.images.on_call = [this] {
        app.windows.on_do_events = [this] { frm.tsImageViewer.UserChooses(2); };
        app.windows.DoEvents();
        app.windows.on_do_events = nullptr;
    };

    frm.cmdReloadImage(0).UserClicks();

    EXPECT_EQ(app.images.calls, Texts{"LoadFrame /in/a.png 0"});
    EXPECT_EQ(frm.ImageViewMain(0).Tag(), kOriginal);
}

TEST_F(ImageViewer, ServesTheEditingOfTasks)
{
    app.objHooks.LoadImageViewer(app, kViewTarget);
    app.objHooks.LoadImageViewer(app, kViewTarget);
    EXPECT_EQ(app.images.calls, Texts{"LoadFrame /out/a.jpg 0"});

    app.objHooks.tsImageViewer_Click(app);
    EXPECT_EQ(app.images.calls.size(), 2u);
}

TEST_F(ImageViewer, TranslatesItsTexts)
{
    app.objTranslator.dictTranslations = {{"Image Width", "Breite"},
                                          {"Image Height", "Höhe"},
                                          {"Total frames", "Seiten"},
                                          {"Current frame", "Seite"},
                                          {"File does not exist:", "Keine Datei:"}};
    frm.cbOriginalFile.SetText(kPages);

    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_EQ(sStatus(), "Seiten: [12], Seite: [1], Breite: [60], Höhe: [30]");

    frm.cbOriginalFile.SetText("/in/none.png");
    LoadImageViewer(app, kViewOriginal, false);
    EXPECT_EQ(sStatus(), "Keine Datei: /in/none.png");
}
