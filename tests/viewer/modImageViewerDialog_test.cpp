// The dialog that shows one file at a larger size.
#include "src/viewer/modImageViewerDialog.h"

#include <gtest/gtest.h>

#include "src/platform/image_buffer.h"
#include "src/settings/modMRU.h"
#include "src/viewer/modImageViewer.h"
#include "tests/fakes/test_application.h"

namespace
{

using Texts = std::vector<std::string>;

constexpr const char* kOriginal = "/in/a.png";
constexpr const char* kTarget = "/out/a.jpg";
constexpr const char* kPages = "/in/pages.tif";

// A main form with a task from kOriginal (400 x 200) to kTarget, and kPages with three pages.
class ImageViewerDialog : public testing::Test
{
protected:
    ImageViewerDialog()
    {
        app.images.AddImage(kOriginal, {1});
        app.images.sizes[kOriginal] = {400, 200};
        app.images.AddImage(kTarget, {2});
        app.images.AddImage(kPages, {11, 12, 13});
        AddUniqueItemToCollection(frmMain_.mruSource, "/in/older.png");
        AddUniqueItemToCollection(frmMain_.mruTarget, "/out/older.jpg");
        frmMain_.cbOriginalFile.SetText(kOriginal);
        frmMain_.cbTargetFile.SetText(kTarget);
        frm.ImageView1.UserResizes(800, 800);
        ConnectImageViewer(app);
        for (ComboBox* pcb : {&frmMain_.cbOriginalFile, &frmMain_.cbTargetFile})
            pcb->OnClick = [this, pcb] {
                if (!app.bInternalGridChange)
                    aTaken.push_back(pcb->Text());
            };
    }
    /// Opens the dialog by a double click in a view; a person does fnActs in it.
    void Open(const std::function<void()>& fnActs, std::int32_t lView = 0)
    {
        app.windows.on_show_modal = [this, fnActs](Form&) {
            frm.SetVisible(true);
            fnActs();
        };
        frmMain_.tsImageViewer.SelectTab(lView + 1);
        app.images.calls.clear();
        frmMain_.ImageViewMain(lView).UserDoubleClicks();
        ASSERT_FALSE(app.windows.modal_forms.empty());
        EXPECT_EQ(app.windows.modal_forms.back(), &frm);
    }
    void Leave() { frm.cmdCancel.UserClicks(); }
    /// The page on show, or 0 for a blank view.
    int lPage() const { return frm.ImageView1.pImage() ? frm.ImageView1.pImage()->bytes.at(0) : 0; }
    Texts aListed() const
    {
        Texts aFiles;
        for (std::int32_t l = 0; l < frm.cbFile.ListCount(); ++l)
            aFiles.push_back(frm.cbFile.List(l));
        return aFiles;
    }

    TestApplication app;
    frmMain& frmMain_ = app.frmMain;
    frmImageViewer& frm = app.frmImageViewer;
    Texts aTaken;  ///< the files that the main form took
};

}  // namespace

TEST_F(ImageViewerDialog, ShowsTheFileOfTheViewAndTheRecentOnes)
{
    Open([this] {
        EXPECT_EQ(frm.Caption(), "View and select Original File");
        EXPECT_EQ(aListed(), (Texts{kOriginal, "/in/older.png"}));
        EXPECT_EQ(frm.cbFile.Text(), kOriginal);
        EXPECT_EQ(lPage(), 1);
        EXPECT_EQ(frm.sbStatus.Caption(), "Image Width: [400], Image Height: [200]");
        EXPECT_DOUBLE_EQ(frm.ImageView1.Zoom(), 2);
        EXPECT_FALSE(frm.framePicNav.Visible());
        Leave();
    });

    Open(
        [this] {
            EXPECT_EQ(frm.Caption(), "View and select Target File");
            EXPECT_EQ(aListed(), (Texts{kTarget, "/out/older.jpg"}));
            EXPECT_EQ(lPage(), 2);
            Leave();
        },
        1);
}

TEST_F(ImageViewerDialog, OpensFromThePictureBesideAViewToo)
{
    app.windows.on_show_modal = [this](Form&) { Leave(); };

    frmMain_.picZoomMainPicture(0).UserDoubleClicks();
    frmMain_.tsImageViewer.SelectTab(2);
    frmMain_.picZoomMainPicture(1).UserDoubleClicks();

    EXPECT_EQ(app.windows.modal_forms, (std::vector<Form*>{&frm, &frm}));
}

TEST_F(ImageViewerDialog, DoesNotOpenFromThePreview)
{
    frmMain_.tsImageViewer.AddTab("Preview");
    frmMain_.bAutoLoadImages = false;
    frmMain_.tsImageViewer.SelectTab(3);

    frmMain_.ImageViewMain(2).UserDoubleClicks();

    EXPECT_TRUE(app.windows.modal_forms.empty());
}

TEST_F(ImageViewerDialog, UsesTheListsOfASpecialProcessInItsMode)
{
    frmMain_.sActionToDo = "S";
    frmMain_.cbOriginalFileSpecialized.SetText(kPages);
    frmMain_.cbTargetFileSpecialized.SetText(kTarget);

    Open([this] {
        EXPECT_EQ(aListed(), Texts{kPages});
        Leave();
    });
    Open(
        [this] {
            EXPECT_EQ(aListed(), Texts{kTarget});
            Leave();
        },
        1);

    EXPECT_EQ(frmMain_.mruSourceSpecialized.colMRU, Texts{kPages});
    EXPECT_EQ(frmMain_.mruTargetSpecialized.colMRU, Texts{kTarget});
}

TEST_F(ImageViewerDialog, HandsTheAppliedFileToTheTask)
{
    Open([this] {
        frm.cbFile.UserTypes(kPages);
        frm.cmdApply.UserClicks();
        EXPECT_FALSE(frm.Visible());
    });

    EXPECT_EQ(frmMain_.cbOriginalFile.Text(), kPages);
    EXPECT_EQ(aTaken, Texts{kPages});
    EXPECT_EQ(frmMain_.mruSource.colMRU, (Texts{"/in/older.png", kOriginal, kPages}));
}

TEST_F(ImageViewerDialog, AppliesEvenAFileThatDoesNotExist)
{
    Open([this] {
        frm.cbFile.UserTypes("/in/none.png");
        EXPECT_EQ(lPage(), 0);
        frm.cmdApply.UserClicks();
    });

    EXPECT_EQ(frmMain_.mruSource.colMRU.back(), "/in/none.png");
    EXPECT_EQ(frmMain_.cbOriginalFile.Text(), "/in/none.png");
}

TEST_F(ImageViewerDialog, LeavesTheTaskItsFileOnCancelEscapeOrClose)
{
    for (const auto& fnLeave : std::vector<std::function<void()>>{
             [this] { Leave(); }, [this] { frm.cbFile.UserPresses("Esc"); }, [this] { frm.UserCloses(); }}) {
        app.windows.picks = {kPages};
        Open([&] {
            frm.cmdGetFilePath.UserClicks();
            EXPECT_EQ(lPage(), 11);
            fnLeave();
            EXPECT_FALSE(frm.Visible());
        });
        EXPECT_EQ(frmMain_.cbOriginalFile.Text(), kOriginal);
        EXPECT_EQ(frmMain_.mruSource.colMRU, (Texts{"/in/older.png", kOriginal}));
    }
}

TEST_F(ImageViewerDialog, ShowsAPickedFile)
{
    app.windows.picks = {kPages, kTarget};

    Open([this] {
        frm.cmdGetFilePath.UserClicks();
        EXPECT_EQ(frm.cbFile.Text(), kPages);
        EXPECT_EQ(lPage(), 11);
        frm.picSelectSourceFile.UserClicks();
        EXPECT_EQ(frm.cbFile.Text(), kTarget);
        EXPECT_EQ(lPage(), 2);
        Leave();
    });

    ASSERT_EQ(app.windows.file_pickers.size(), 2u);
    EXPECT_EQ(
        app.windows.file_pickers[0].sFilter,
        "All Picture Types|*.bmp;*.dib;*.emf;*.gif;*.png;*.ico;*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.cpt;*.wmf;"
        "*.cur;*.ani;*.jp2;*.jpc;*.j2k;*.tga;*.pcx;*.ras|");
    EXPECT_FALSE(app.windows.file_pickers[0].bToSave);
    EXPECT_EQ(app.images.calls,
              (Texts{"GetFrameCount /in/a.png", "LoadFrame /in/a.png 0", "GetFrameCount /in/pages.tif",
                     "LoadFrame /in/pages.tif 0", "GetFrameCount /out/a.jpg", "LoadFrame /out/a.jpg 0"}));
}

TEST_F(ImageViewerDialog, TurnsThePagesOfAnyFileThatHasSome)
{
    app.images.AddImage("/in/many.gif", {1, 2});

    Open([this] {
        frm.cbFile.UserTypes("/in/many.gif");
        EXPECT_TRUE(frm.framePicNav.Visible());
        EXPECT_EQ(frm.HScrollFrame.Max(), 1);
        EXPECT_EQ(frm.lblFrame.Caption(), "1");

        frm.HScrollFrame.UserScrolls(1);
        EXPECT_EQ(lPage(), 2);
        EXPECT_EQ(frm.lblFrame.Caption(), "2");
        EXPECT_EQ(frm.sbStatus.Caption(),
                  "Total frames: [2], Current frame: [2], Image Width: [1], Image Height: [1]");
        Leave();
    });
}

TEST_F(ImageViewerDialog, GoesBackToTheFirstPageWithAnotherFile)
{
    Open([this] {
        frm.cbFile.UserTypes(kPages);
        frm.HScrollFrame.UserScrolls(2);
        frm.cbFile.UserTypes(kTarget);
        EXPECT_EQ(lPage(), 2);
        frm.cbFile.UserTypes(kPages);
        EXPECT_EQ(lPage(), 11);
        EXPECT_EQ(frm.HScrollFrame.Value(), 0);
        Leave();
    });
}

TEST_F(ImageViewerDialog, DoesNotLoadTheFileOnShowAgain)
{
    Open([this] {
        app.images.calls.clear();
        frm.cbFile.UserTypes(" /IN/a.png");
        frm.cbFile.UserChooses(0);
        EXPECT_EQ(app.images.calls, Texts{});

        frm.cbFile.UserTypes(kTarget);
        frm.cbFile.UserChooses(0);
        EXPECT_EQ(lPage(), 1);
        Leave();
    });
}

TEST_F(ImageViewerDialog, LoadsTheFileThatWasTypedWhileAnotherWasLoaded)
{
    Open([this] {
        app.windows.on_do_events = [this] {
            app.windows.on_do_events = nullptr;
            frm.cbFile.UserTypes(kTarget);
        };
        frm.cbFile.UserTypes(kPages);
        EXPECT_EQ(frm.cbFile.Text(), kTarget);
        EXPECT_EQ(lPage(), 2);
        Leave();
    });
}

TEST_F(ImageViewerDialog, ShowsThePageThatWasTurnedToWhileAnotherWasLoaded)
{
    Open([this] {
        frm.cbFile.UserTypes(kPages);
        app.windows.on_do_events = [this] {
            app.windows.on_do_events = nullptr;
            EXPECT_TRUE(app.frmMainMDI.Hourglass());
            frm.HScrollFrame.UserScrolls(2);
        };
        frm.HScrollFrame.UserScrolls(1);
        EXPECT_EQ(lPage(), 13);
        EXPECT_FALSE(app.frmMainMDI.Hourglass());
        Leave();
    });
}

TEST_F(ImageViewerDialog, ShowsNothingOfAFileWithoutPages)
{
    app.images.broken.insert(kTarget);

    Open([this] {
        frm.cbFile.UserTypes(kTarget);
        EXPECT_EQ(lPage(), 0);
        EXPECT_EQ(frm.sbStatus.Caption(), "");
        EXPECT_EQ(frm.ImageView1.Tag(), "");
        frm.CommandSave.UserClicks();
        EXPECT_TRUE(app.windows.file_pickers.empty());
        EXPECT_TRUE(frm.Visible());
        Leave();
    });
}

TEST_F(ImageViewerDialog, BlanksAPageThatCannotBeLoadedButStillTurnsPages)
{
    app.images.broken_page = 1;

    Open([this] {
        frm.cbFile.UserTypes(kPages);
        frm.HScrollFrame.UserScrolls(1);
        EXPECT_EQ(lPage(), 0);
        frm.HScrollFrame.UserScrolls(2);
        EXPECT_EQ(lPage(), 13);
        Leave();
    });
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ImageViewerDialog, TurnsNoPageAfterACancelledPick)
{
    Open([this] {
        frm.cbFile.UserTypes(kPages);
        frm.cmdGetFilePath.UserClicks();
        frm.HScrollFrame.UserScrolls(1);
        EXPECT_EQ(lPage(), 11);
        Leave();
    });
}

TEST_F(ImageViewerDialog, SavesThePageOnShowAsTheChosenType)
{
    const Texts aOperations = {"SaveBMP", "SaveJPEG", "SaveGIF", "SaveTIFF", "SavePCX", "SaveWMF",
                               "SaveEMF", "SaveTGA",  "SavePNG", "SaveRAS",  "SaveJ2K"};
    Open([&] {
        frm.cbFile.UserTypes(kPages);
        frm.HScrollFrame.UserScrolls(1);
        for (std::size_t i = 0; i < aOperations.size(); ++i) {
            const std::string sFile = "/saved/page" + std::to_string(i);
            app.windows.picks = {sFile};
            app.windows.picked_filter = static_cast<std::int32_t>(i + 1);
            app.images.calls.clear();
            frm.CommandSave.UserClicks();
            EXPECT_EQ(app.images.calls,
                      (Texts{"JPEGQuality 75", "TIFFCompression 1", aOperations[i] + " " + sFile,
                             "JPEGQuality 75", "TIFFCompression 0"}));
            EXPECT_EQ(app.images.PagesOf(sFile), std::vector<std::uint8_t>{12});
        }
        Leave();
    });

    ASSERT_EQ(app.windows.file_pickers.size(), 11u);
    EXPECT_TRUE(app.windows.file_pickers[0].bToSave);
    EXPECT_EQ(app.windows.file_pickers[0].sFilter,
              "BMP Files (*.bmp)|*.bmp|JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif|"
              "TIFF Files (*.tiff)|*.tif;*.tiff;*.cpt|PCX Files (*.pcx)|*.pcx|WMF Files (*.wmf)|*.wmf|"
              "EMF Files (*.emf)|*.emf|TGA Files (*.tga)|*.tga|PNG Files (*.png)|*.png|"
              "RAS Files (*.ras)|*.ras|JPEG2000 Files (*.j2k)|*.j2k");
}

TEST_F(ImageViewerDialog, PutsTheLibrarysValuesBackAfterASave)
{
    frmMain_.lJPEGQuality = 40;
    frmMain_.lTIFFCompression = 4;
    app.windows.picks = {"/saved/a.bmp"};

    Open([this] {
        app.images.calls.clear();
        frm.CommandSave.UserClicks();
        EXPECT_EQ(app.images.calls, (Texts{"JPEGQuality 75", "TIFFCompression 1", "SaveBMP /saved/a.bmp",
                                           "JPEGQuality 40", "TIFFCompression 4"}));
        Leave();
    });
}

TEST_F(ImageViewerDialog, SavesNothingWithoutAPictureOrAName)
{
    Open([this] {
        app.images.calls.clear();
        frm.CommandSave.UserClicks();
        EXPECT_EQ(app.windows.file_pickers.size(), 1u);
        EXPECT_EQ(app.images.calls, Texts{});

        frm.cbFile.UserTypes("/in/none.png");
        frm.CommandSave.UserClicks();
        EXPECT_EQ(app.windows.file_pickers.size(), 1u);
        Leave();
    });
}

TEST_F(ImageViewerDialog, KeepsAFailedSaveToItself)
{
    app.windows.picks = {"/saved/a.bmp"};
    app.images.unwritable.insert("/saved/a.bmp");

    Open([this] {
        frm.CommandSave.UserClicks();
        EXPECT_TRUE(frm.Visible());
        Leave();
    });

    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ImageViewerDialog, FitsThePictureToTheWindow)
{
    Open([this] {
        frm.ImageView1.UserZooms(5);
        frm.ImageView1.UserResizes(400, 400);
        EXPECT_DOUBLE_EQ(frm.ImageView1.Zoom(), 1);
        Leave();
    });
}

TEST_F(ImageViewerDialog, RemembersItsPlace)
{
    const WindowPlace objPlace = {kWindowNormal, 300, 450, 9000, 6000};
    Open([&] {
        frm.UserPlaces(objPlace);
        Leave();
    });
    EXPECT_EQ(app.ini.Stored("frmImageViewer", "WindowState"), "0");
    EXPECT_EQ(app.ini.Stored("frmImageViewer", "Left"), "300");
    EXPECT_EQ(app.ini.Stored("frmImageViewer", "Height"), "6000");

    Open([&] {
        EXPECT_EQ(frm.Place(), objPlace);
        frm.UserPlaces({kWindowMaximized, 0, 0, 20000, 15000});
        Leave();
    });
    EXPECT_EQ(app.ini.Stored("frmImageViewer", "WindowState"), "2");
    EXPECT_EQ(app.ini.Stored("frmImageViewer", "Width"), "9000");
}

TEST_F(ImageViewerDialog, HasEnglishCaptionsInEveryLanguage)
{
    app.objTranslator.dictTranslations = {{"&Apply", "Anwenden"},
                                          {"&Cancel", "Abbrechen"},
                                          {"File", "Datei"},
                                          {"Save image to file", "Speichern"},
                                          {"View and select Original File", "Original ansehen"},
                                          {"Image Width", "Breite"}};

    Open([this] {
        EXPECT_EQ(frm.cmdApply.Caption(), "&Apply");
        EXPECT_EQ(frm.cmdCancel.Caption(), "&Cancel");
        EXPECT_EQ(frm.CommandSave.Caption(), "Save image to file");
        EXPECT_EQ(frm.cmdGetFilePath.Caption(), "File");
        EXPECT_EQ(frm.Caption(), "Original ansehen");
        EXPECT_EQ(frm.sbStatus.Caption(), "Breite: [400], Image Height: [200]");
        Leave();
    });
}

TEST_F(ImageViewerDialog, KeepsNoPictureInMemoryOnceClosed)
{
    Open([this] { Leave(); });

    EXPECT_EQ(frm.ImageView1.pImage(), nullptr);
    EXPECT_EQ(frm.pViewerImage, nullptr);
}
