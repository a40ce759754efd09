// What becomes of the source of an item.
#include "src/conversion/modOriginalFile.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/commands/modRunState.h"
#include "src/conversion/modConversionItem.h"
#include "tests/conversion/support/conversion_items.h"
#include "tests/fakes/test_application.h"

namespace
{

using Files = std::vector<std::string>;

class OriginalFile : public testing::Test
{
protected:
    OriginalFile()
    {
        app.frmMain.bDeleteOriginalFileAfterProcessing = true;
        app.bCommandLineMode = true;
        app.images.AddImage("/in/a.bmp", {1});
        app.files.AddFolder("/out");
    }

    std::int32_t lConvert(OriginalRule eRule = OriginalRule::MayBeDeleted)
    {
        return lPerformConversionItem(app, objOptions, eRule);
    }

    TestApplication app;
    clsConversionOptions objOptions = objRequest("/in/a.bmp", 2, "/out/a.png", 8);
};

}  // namespace

TEST_F(OriginalFile, IsDeletedOnceItsTargetIsOnTheDisk)
{
    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.files.deleted_files, Files{"/in/a.bmp"});
    EXPECT_EQ(app.files.syncs, 1);
    EXPECT_TRUE(app.files.trashed_files.empty());
}

TEST_F(OriginalFile, GoesToTheTrashIfItCouldNotBeRead)
{
    app.images.broken.insert("/in/a.bmp");

    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.files.trashed_files, Files{"/in/a.bmp"});
    EXPECT_TRUE(app.files.deleted_files.empty());
}

TEST_F(OriginalFile, GoesToTheTrashIfNothingWasMadeOfIt)
{
    objOptions.lConversionMethod = 2;

    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.files.trashed_files, Files{"/in/a.bmp"});
}

TEST_F(OriginalFile, GoesToTheTrashIfItWasReplacedDuringTheConversion)
{
    app.images.on_call = [this] {
        if (app.images.calls.back().starts_with("Save"))
            app.images.AddImage("/in/a.bmp", {9});
    };

    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.files.trashed_files, Files{"/in/a.bmp"});
    EXPECT_TRUE(app.files.deleted_files.empty());
}

TEST_F(OriginalFile, StaysIfItIsReplacedWhileDeletingIsRetried)
{
    app.files.undeletable.insert("/in/a.bmp");
    app.windows.on_do_events = [this] {
        if (!app.clock.sleeps.empty() && app.files.undeletable.contains("/in/a.bmp")) {
            app.images.AddImage("/in/a.bmp", {9});
            app.files.undeletable.clear();
        }
    };

    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.images.PagesOf("/in/a.bmp"), Pages{9});
}

TEST_F(OriginalFile, GoesToTheTrashOnRequest)
{
    EXPECT_EQ(lConvert(OriginalRule::OnlyToTrash), 0);

    EXPECT_EQ(app.files.trashed_files, Files{"/in/a.bmp"});
}

TEST_F(OriginalFile, GoesToTheTrashIfATargetHasVanished)
{
    objOptions = objRequest("/in/a.tif", 3, "/out/a.png", 8);
    app.images.AddImage("/in/a.tif", {1, 2});
    app.images.on_call = [this] {
        if (app.images.calls.back() == "SavePNG /out/a-2.png")
            app.files.DeleteFile("/out/a-1.png");
    };

    EXPECT_EQ(lConvert(), 0);

    EXPECT_EQ(app.files.trashed_files, Files{"/in/a.tif"});
}

TEST_F(OriginalFile, StaysWithALineInTheReportIfThereIsNoTrash)
{
    app.images.broken.insert("/in/a.bmp");
    app.files.has_trash = false;
    objOptions.sLogFile = "/out/report.txt";

    EXPECT_EQ(lConvert(), 0);

    EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    EXPECT_EQ(app.files.Content("/out/report.txt"),
              "Unable to delete the original file or to move it to the trash: /in/a.bmp\n");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(OriginalFile, StaysWithABoxIfThereIsNeitherTrashNorReport)
{
    app.images.broken.insert("/in/a.bmp");
    app.files.has_trash = false;

    EXPECT_EQ(lConvert(), 0);

    EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text,
              "Unable to delete the original file or to move it to the trash: /in/a.bmp");
}

TEST_F(OriginalFile, StaysIfATargetIsTheSameFileByAnotherPath)
{
    objOptions = objRequest("/in/x-2.tif", 3, "/link/x.tif", 3);
    app.images.AddImage("/in/x-2.tif", {1, 2});  // the second page is saved over it
    app.files.AddLink("/link", "/in");

    EXPECT_EQ(lConvert(), 0);

    EXPECT_TRUE(app.files.Has("/in/x-2.tif"));
    EXPECT_TRUE(app.files.deleted_files.empty());
    EXPECT_TRUE(app.files.trashed_files.empty());
}

TEST_F(OriginalFile, StaysIfTheDiskDoesNotConfirmTheTarget)
{
    app.files.fail_syncs = true;

    EXPECT_EQ(lConvert(), -103);

    EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    EXPECT_EQ(objOptions.sErr, "Unable to convert");
}
