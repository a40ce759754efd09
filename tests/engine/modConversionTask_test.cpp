// Running a conversion task over its file list.
#include "src/engine/modConversionTask.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/control_watchers.h"
#include "tests/fakes/test_application.h"

namespace
{

class ConversionTask : public testing::Test
{
protected:
    ConversionTask()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.frmMain.bRunning = true;
        app.files.AddFolder("/in");
        app.files.AddFolder("/out");
        objOptions.lOriginalFileType = 2;
        objOptions.lTargetFileType = 8;
        objOptions.sExtraParams = "*^0^FALSE^75";
    }

    void AddPictures(int lCount)
    {
        for (int l = 1; l <= lCount; ++l)
            app.images.AddImage("/in/" + std::to_string(l) + ".bmp");
    }
    std::int32_t lRun(const std::string& sSource, const std::string& sTarget)
    {
        objOptions.sOriginalFile = sSource;
        objOptions.sTargetFile = sTarget;
        std::int32_t lResult = 12345;
        PerformBlockConversion(app, 1, objOptions, lResult);
        return lResult;
    }
    std::vector<std::string> aSaved() const
    {
        std::vector<std::string> aResult;
        for (const std::string& sCall : app.images.calls)
            if (sCall.starts_with("Save"))
                aResult.push_back(sCall);
        return aResult;
    }
    // Pauses the run while it processes events before file lPosition, from 1.
    void PauseAtHeadOf(int lPosition)
    {
        app.windows.on_do_events = [this, lPosition] {
            if (static_cast<int>(aSaved().size()) == lPosition - 1)
                app.frmMain.bRunning = false;
        };
    }

    TestApplication app;
    clsConversionOptions objOptions;
};

using Calls = std::vector<std::string>;

}  // namespace

TEST_F(ConversionTask, ConvertsASingleFileWithoutLoggingIt)
{
    app.images.AddImage("/in/a.bmp");

    EXPECT_EQ(lRun("/in/a.bmp", "/out/a.png"), 0);

    EXPECT_EQ(aSaved(), (Calls{"SavePNG /out/a.png"}));
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(8), "/in/a.bmp");
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(11), "1000.0");
}

TEST_F(ConversionTask, FailsIfASingleFileDoesNotLoad)
{
    app.files.AddFile("/in/a.bmp", "");
    app.images.broken.insert("/in/a.bmp");

    EXPECT_EQ(lRun("/in/a.bmp", "/out/a.png"), -101);

    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11),
              "Unsupported source image file format. Unable to load image.");
}

TEST_F(ConversionTask, FailsIfTheFolderIsMissing)
{
    EXPECT_EQ(lRun("/missing/*.bmp", "/out/*.png"), -10000);

    EXPECT_EQ(objOptions.lErr, -10000);
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 10), "-");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11), "Folder: /missing/ does not exist");
}

TEST_F(ConversionTask, SucceedsSilentlyForAnEmptyList)
{
    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), 0);

    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
}

TEST_F(ConversionTask, MirrorsTheTreeBelowTheTargetFolder)
{
    app.images.AddImage("C:\\in\\a.bmp");
    app.images.AddImage("C:\\in\\a\\b.bmp");
    objOptions.bDoSubfolders = true;

    EXPECT_EQ(lRun("C:\\in\\*.bmp", "C:\\out\\*.png"), 0);

    EXPECT_EQ(aSaved(), (Calls{"SavePNG C:\\out\\a.png", "SavePNG C:\\out\\a\\b.png"}));
    EXPECT_TRUE(app.files.FolderExists("C:\\out\\a"));
}

TEST_F(ConversionTask, SavesBesideTheSourcesOnRequest)
{
    app.images.AddImage("/in/sub/b.bmp");
    objOptions.bDoSubfolders = true;
    objOptions.bSaveInOriginalFolder = true;

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(aSaved(), (Calls{"SavePNG /in/sub/b.png"}));
}

TEST_F(ConversionTask, PrefersTheTargetPatternsExtensionToTheTypes)
{
    AddPictures(1);

    lRun("/in/*.bmp", "/out/*.jpeg");
    lRun("/in/*.bmp", "/out/*.");

    EXPECT_EQ(aSaved(), (Calls{"SavePNG /out/1.jpeg", "SavePNG /out/1.png"}));
}

TEST_F(ConversionTask, AppendsManySourcesToOneTiff)
{
    AddPictures(2);
    objOptions.lTargetFileType = 3;
    objOptions.sExtraParams = "*^0^TRUE^75";

    EXPECT_EQ(lRun("/in/*.bmp", "/out/all.tif"), 0);

    EXPECT_EQ(app.images.PagesOf("/out/all.tif").size(), 2u);
}

TEST_F(ConversionTask, IgnoresAWildcardTargetOfASingleSource)
{
    AddPictures(1);

    EXPECT_EQ(lRun("/in/1.bmp", "/out/*.png"), 0);

    EXPECT_TRUE(app.images.calls.empty());
}

TEST_F(ConversionTask, IgnoresListedFilesThatDoNotLoad)
{
    AddPictures(2);
    app.images.broken.insert("/in/2.bmp");

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), 0);

    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
}

TEST_F(ConversionTask, LogsAFailedFileAndCarriesOn)
{
    AddPictures(3);
    app.images.unwritable.insert("/out/2.png");

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), -103);

    EXPECT_EQ(app.frmMain.fgLog.Rows(), 3);
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 4), "/in/2.bmp");
    EXPECT_EQ(aSaved().size(), 3u);
}

TEST_F(ConversionTask, ReportsEveryFileButReturnsTheLastResult)
{
    AddPictures(2);
    app.images.unwritable.insert("/out/1.png");
    app.frmMain.sLogFile = "/out/report.txt";

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), 0);

    EXPECT_EQ(app.frmMain.fgLog.Rows(), 4);
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 10), "-");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(2, 10), "+");
}

TEST_F(ConversionTask, LogsAnUnreadableSubfolderAndCarriesOn)
{
    AddPictures(1);
    app.images.AddImage("/in/no/2.bmp");
    app.images.AddImage("/in/yes/3.bmp");
    app.files.unlistable.insert("/in/no");
    objOptions.bDoSubfolders = true;

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), -10000);

    EXPECT_EQ(aSaved(), (Calls{"SavePNG /out/1.png", "SavePNG /out/yes/3.png"}));
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 4), "/in/no");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 10), "-");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11), "Unable to read folder: /in/no");
}

TEST_F(ConversionTask, TrashesSourcesThatShareATarget)
{
    app.images.AddImage("/in/a.bmp");
    app.images.AddImage("/in/A.dib");
    app.images.AddImage("/in/b.bmp");
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;

    EXPECT_EQ(lRun("/in/*.*", "/out/*.png"), 0);

    EXPECT_EQ(app.files.trashed_files, (Calls{"/in/a.bmp", "/in/A.dib"}));
    EXPECT_EQ(app.files.deleted_files, Calls{"/in/b.bmp"});
}

TEST_F(ConversionTask, TrashesAllSourcesOfOneTargetFile)
{
    AddPictures(2);
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;

    EXPECT_EQ(lRun("/in/*.bmp", "/out/one.png"), 0);

    EXPECT_EQ(app.files.trashed_files, (Calls{"/in/1.bmp", "/in/2.bmp"}));
}

TEST_F(ConversionTask, DeletesSourcesThatBecamePagesOfOneTiff)
{
    AddPictures(2);
    objOptions.lTargetFileType = 3;
    objOptions.sExtraParams = "*^0^TRUE^75";
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;

    EXPECT_EQ(lRun("/in/*.bmp", "/out/all.tif"), 0);

    EXPECT_FALSE(app.files.Has("/in/1.bmp"));
    EXPECT_FALSE(app.files.Has("/in/2.bmp"));
    EXPECT_TRUE(app.files.trashed_files.empty());
}

TEST_F(ConversionTask, TrashesSourcesThatALinkLeadsOutOfTheTree)
{
    app.images.AddImage("/in/sub/b.bmp");
    app.images.AddImage("/elsewhere/a.bmp");
    app.files.AddLink("/in/link", "/elsewhere");
    objOptions.bDoSubfolders = true;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.png"), 0);

    EXPECT_EQ(app.files.trashed_files, Calls{"/in/link/a.bmp"});
    EXPECT_EQ(app.files.deleted_files, Calls{"/in/sub/b.bmp"});
}

TEST_F(ConversionTask, ShowsProgressForEachFile)
{
    AddPictures(3);
    std::vector<std::string> aPercents;
    const PanelWatcher objWatcher(app.frmMainMDI.sbMain, [&] {
        const std::string& sPercent = app.frmMainMDI.sbMain.Panel(6);
        if (!sPercent.empty() && (aPercents.empty() || aPercents.back() != sPercent))
            aPercents.push_back(sPercent);
    });

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(aPercents,
              (Calls{" 33.3 Percent Complete ", " 66.7 Percent Complete ", " 100.0 Percent Complete "}));
}

TEST_F(ConversionTask, ResumesOneFileBeforeThePause)
{
    AddPictures(6);
    PauseAtHeadOf(5);

    lRun("/in/*.bmp", "/out/*.png");
    EXPECT_EQ(app.frmMain.lResumeFileIndex, 4);

    app.windows.on_do_events = nullptr;
    app.images.calls.clear();
    app.frmMain.bRunning = true;
    lRun("/in/*.bmp", "/out/*.png");
    EXPECT_EQ(aSaved().front(), "SavePNG /out/4.png");
    EXPECT_EQ(aSaved().size(), 3u);
}

TEST_F(ConversionTask, StartsOverIfPausedAtTheSecondFile)
{
    AddPictures(4);
    PauseAtHeadOf(2);

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(app.frmMain.lResumeFileIndex, 0);
}

TEST_F(ConversionTask, RepeatsTheLastFileIfPausedDuringIt)
{
    AddPictures(3);
    const PanelWatcher objWatcher(app.frmMainMDI.sbMain, [&] {
        if (app.frmMainMDI.sbMain.Panel(8) == "/in/3.bmp")
            app.frmMain.bRunning = false;
    });

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(aSaved().size(), 3u);
    EXPECT_EQ(app.frmMain.lResumeFileIndex, 3);
}

TEST_F(ConversionTask, AppliesTheResumePositionToTheNextTask)
{
    AddPictures(4);
    app.frmMain.lResumeFileIndex = 3;

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(aSaved(), (Calls{"SavePNG /out/3.png", "SavePNG /out/4.png"}));
    EXPECT_EQ(app.frmMain.lResumeFileIndex, 3);
}

TEST_F(ConversionTask, ReportsAPauseWhileBuildingTheList)
{
    AddPictures(2);
    app.windows.on_do_events = [&] { app.frmMain.bRunning = false; };

    lRun("/in/*.bmp", "/out/*.png");

    EXPECT_EQ(objOptions.sErr, "Conversion Process paused.");
    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_TRUE(aSaved().empty());
}
