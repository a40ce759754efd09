// What follows while a person types a source or a target.
#include "tests/editing/support/editing_form.h"

TEST_F(EditingForm, ProposesTheSamePathInLowerCaseWithTheTargetsExtension)
{
    ChooseItem(frm.cbFileTypeTarget, 8);

    frm.cbOriginalFile.UserTypes("C:\\Pics\\A.BMP");

    EXPECT_EQ(frm.cbTargetFile.Text(), "c:\\pics\\a.png");
}

TEST_F(EditingForm, ProposesThePatternInTheFolderOfAWildcard)
{
    ChooseItem(frm.cbFileTypeTarget, 8);

    frm.cbOriginalFile.UserTypes("C:\\Pics\\*.BMP");

    EXPECT_EQ(frm.cbTargetFile.Text(), "C:\\Pics\\*.png");
}

TEST_F(EditingForm, ProposesNothingWithoutAPoint)
{
    frm.cbTargetFile.UserTypes("/out/x.png");

    frm.cbOriginalFile.UserTypes("C:\\Pics");

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/x.png");
}

TEST_F(EditingForm, SelectsTheTypeOfAnExtensionInAnyCase)
{
    frm.cbOriginalFile.UserTypes("/in/a.JPG");
    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 1);
    frm.cbOriginalFile.UserTypes("/in/a.tiff");
    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 3);

    frm.cbTargetFile.UserTypes("/out/a.TIF");
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 3);
}

TEST_F(EditingForm, LeavesTheTypeForAnUnknownExtension)
{
    frm.cbOriginalFile.UserTypes("/in/a.gif");

    frm.cbOriginalFile.UserTypes("/in/a.xyz");
    frm.cbTargetFile.UserTypes("/out/a.ico");

    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 4);
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 1);
}

TEST_F(EditingForm, RemovesQuotesFromPaths)
{
    frm.cbOriginalFile.UserTypes("\"/in/A b.gif\"");
    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/A b.gif");
    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 4);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/a b.jpg");

    frm.cbTargetFile.UserTypes("\"/out/x.png\"");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/x.png");
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 8);
}

TEST_F(EditingForm, OpensTheFolderBoxesForAWildcard)
{
    frm.cbOriginalFile.UserTypes("/in/*.bmp");

    EXPECT_TRUE(frm.cbSaveToOriginalFolder.Enabled());
    EXPECT_TRUE(frm.cbDoSubfolders.Enabled());
    EXPECT_FALSE(frm.cmdSelectTargetFile.Visible());
    EXPECT_FALSE(frm.picSelectTargetFile.Visible());
    EXPECT_FALSE(frm.cmdLaunchOriginal.Visible());
    EXPECT_FALSE(frm.cmdLaunchTarget.Visible());
}

TEST_F(EditingForm, ClosesTheFolderBoxesForOneFile)
{
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    frm.cbSaveToOriginalFolder.UserToggles();

    frm.cbOriginalFile.UserTypes("/in/a.bmp");

    EXPECT_FALSE(frm.cbSaveToOriginalFolder.Enabled());
    EXPECT_EQ(frm.cbSaveToOriginalFolder.Value(), 0);
    EXPECT_TRUE(frm.frameTargetFile.Enabled());
    EXPECT_FALSE(frm.cbDoSubfolders.Enabled());
    EXPECT_TRUE(frm.cmdSelectTargetFile.Visible());
    EXPECT_TRUE(frm.cmdLaunchOriginal.Visible());
    EXPECT_TRUE(frm.cmdLaunchTarget.Visible());
}

TEST_F(EditingForm, RenewsTheExtensionOfAnUntouchedProposal)
{
    frm.cbOriginalFile.UserTypes("/in/a.bmp");

    ChooseItem(frm.cbFileTypeTarget, 4);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/a.gif");
    ChooseItem(frm.cbFileTypeTarget, 8);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/a.png");
}

TEST_F(EditingForm, KeepsAnEditedTargetWhenTheTypeChanges)
{
    frm.cbOriginalFile.UserTypes("/in/a.bmp");
    frm.cbTargetFile.UserTypes("/out/mine.jpg");

    ChooseItem(frm.cbFileTypeTarget, 4);

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/mine.jpg");
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 4);
}

TEST_F(EditingForm, KeepsTheTargetOfATaskWhenTheTypeChanges)
{
    frm.cbOriginalFile.UserTypes("/in/a.bmp");
    frm.cmdAdd.UserClicks();
    frm.fgToDo.SetRow(1);

    ChooseItem(frm.cbFileTypeTarget, 4);

    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/a.jpg");
}

TEST_F(EditingForm, TakesARecentTextForATypedOne)
{
    AddTask("a");
    AddTask("b");

    frm.cbOriginalFile.UserChooses(1);

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/a.bmp");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/a.png");
    EXPECT_TRUE(frm.bDirtyConversionItem);
}

TEST_F(EditingForm, GivesTheFieldsOfASpecialProcessTheSameHabits)
{
    frm.rbActionToDo(1).UserClicks();
    ChooseItem(frm.cbSpecialProcesses, 36);
    frm.frameSelectFilesForSpecialProcessing.SetVisible(true);

    frm.cbOriginalFileSpecialized.UserTypes("\"C:\\Pics\\A.TIFF\"");
    EXPECT_EQ(frm.cbOriginalFileSpecialized.Text(), "C:\\Pics\\A.TIFF");
    EXPECT_EQ(lType(frm.cbFileTypeOriginalSpecialized), 3);
    EXPECT_EQ(frm.cbTargetFileSpecialized.Text(), "c:\\pics\\a.tif");
    EXPECT_TRUE(frm.cmdSelectTargetFileSpecialized.Visible());

    frm.cbOriginalFileSpecialized.UserTypes("C:\\Pics\\*.gif");
    EXPECT_EQ(lType(frm.cbFileTypeOriginalSpecialized), 4);
    EXPECT_EQ(frm.cbTargetFileSpecialized.Text(), "C:\\Pics\\*.gif");
    EXPECT_TRUE(frm.cbDoSubfoldersSpecialized.Enabled());
    EXPECT_FALSE(frm.cmdSelectTargetFileSpecialized.Visible());

    frm.cbSaveToOriginalFolderSpecialized.UserToggles();
    EXPECT_FALSE(frm.frameTargetFileSpecialized.Enabled());
    EXPECT_EQ(frm.cbOriginalFile.Text(), "");
}

TEST_F(EditingForm, LoadsTheViewOfATypedSourceAndTarget)
{
    std::vector<std::int32_t> aViews;
    app.objHooks.LoadImageViewer = [&](Application&, std::int32_t lView) { aViews.push_back(lView); };
    frm.bAutoLoadImages = true;

    frm.cbOriginalFile.UserTypes("/in/a.bmp");
    EXPECT_EQ(aViews, std::vector<std::int32_t>{0});

    frm.cbTargetFile.UserTypes("/out/not-yet.png");
    EXPECT_EQ(aViews, (std::vector<std::int32_t>{0, 1}));
}

TEST_F(EditingForm, LoadsTheViewOfAProposalOnlyIfItExists)
{
    std::vector<std::int32_t> aViews;
    app.objHooks.LoadImageViewer = [&](Application&, std::int32_t lView) { aViews.push_back(lView); };
    frm.bAutoLoadImages = true;
    app.files.AddFile("/in/b.jpg");

    frm.cbOriginalFile.UserTypes("/in/a.bmp");
    frm.cbOriginalFile.UserTypes("/in/b.bmp");

    EXPECT_EQ(aViews, (std::vector<std::int32_t>{0, 0, 1}));
}

TEST_F(EditingForm, IsDirtyAfterEachChangeOfAField)
{
    AddTask("a");
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    const std::vector<std::pair<const char*, std::function<void()>>> aChanges = {
        {"cbDoSubfolders", [&] { frm.cbDoSubfolders.UserToggles(); }},
        {"cbFileTypeOriginal", [&] { frm.cbFileTypeOriginal.UserChooses(3); }},
        {"cbFileTypeTarget", [&] { frm.cbFileTypeTarget.UserChooses(3); }},
        {"cbOriginalFile", [&] { frm.cbOriginalFile.UserTypes("/in/x*.bmp"); }},
        {"cbTargetFile", [&] { frm.cbTargetFile.UserTypes("/out/x*.bmp"); }},
        {"cbSaveToOriginalFolder", [&] { frm.cbSaveToOriginalFolder.UserToggles(); }},
        {"rbActionToDo", [&] { frm.rbActionToDo(1).UserClicks(); }},
        {"cbFileTypeOriginalSpecialized", [&] { frm.cbFileTypeOriginalSpecialized.UserChooses(3); }},
        {"cbOriginalFileSpecialized", [&] { frm.cbOriginalFileSpecialized.UserTypes("/in/x*.bmp"); }},
        {"cbDoSubfoldersSpecialized", [&] { frm.cbDoSubfoldersSpecialized.UserToggles(); }},
    };
    for (const auto& [sField, fnChange] : aChanges) {
        frm.bDirtyConversionItem = false;
        frm.frameSelectFilesForSpecialProcessing.SetVisible(true);
        fnChange();
        EXPECT_TRUE(frm.bDirtyConversionItem) << sField;
    }
}

TEST_F(EditingForm, IsNotDirtyAfterItsLoad)
{
    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(EditingForm, StoresASpecialProcessAwayWhenAConversionIsChosen)
{
    frm.rbActionToDo(1).UserClicks();
    ChooseItem(frm.cbSpecialProcesses, 36);
    frm.txtSpecialProcessTextEntry1.SetText("7");
    frm.sImageConversionOptions = "1^0^FALSE^75^^^^^^^^";

    frm.rbActionToDo(0).UserClicks();

    EXPECT_EQ(frm.asSP_Details[36], "1^0^FALSE^75^^^^^^^^7^");
    EXPECT_EQ(frm.sActionToDo, "C");
    EXPECT_EQ(frm.lConversionMethod, 1);
}

TEST_F(EditingForm, TakesConversionOptionsOnlyIfTheyChanged)
{
    std::string sNew = frm.sImageConversionOptions;
    std::string sGiven;
    app.objHooks.EditConversionOptions = [&](Application&, const std::string& sOptions) {
        sGiven = sOptions;
        return sNew;
    };

    frm.cmdImageConversionAdvancedOptions.UserClicks();
    EXPECT_EQ(sGiven, frm.sImageConversionOptions);
    EXPECT_FALSE(frm.bDirtyConversionItem);

    sNew = "*^1^TRUE^90^^^^^^^^";
    frm.fgToDo.UserDoubleClicks();
    EXPECT_EQ(frm.sImageConversionOptions, sNew);
    EXPECT_TRUE(frm.bDirtyConversionItem);
}
