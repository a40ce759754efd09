// The form's fields as a request.
#include "src/editing/modItemFromGUI.h"

#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/editing/modItemToGrid.h"
#include "tests/editing/support/editing_form.h"
#include "tests/support/special_processes.h"

namespace
{

class SpecialForm : public EditingForm
{
protected:
    SpecialForm()
    {
        app.objHooks.ShowProcessPanel = nullptr;  // the tests fill the inputs
        frm.rbActionToDo(1).UserClicks();
        frm.sImageConversionOptions = "1^0^FALSE^75^^^^^^^^";
        frm.frameSelectFilesForSpecialProcessing.SetVisible(true);
        frm.frameCommandLine.SetVisible(true);
    }
    clsConversionOptions objRequest(std::int32_t lSpecialProcess)
    {
        ChooseItem(frm.cbSpecialProcesses, lSpecialProcess);
        clsConversionOptions objOptions;
        BuildRequestFromGUI(app, objOptions);
        return objOptions;
    }
    std::string sOwnDetails(std::int32_t lSpecialProcess)
    {
        const std::string sDetails = objRequest(lSpecialProcess).sExtraParams;
        EXPECT_TRUE(sDetails.starts_with(frm.sImageConversionOptions)) << sDetails;
        return sDetails.substr(frm.sImageConversionOptions.size());
    }
    void FillSlots()
    {
        frm.txtSpecialProcessTextEntry1.SetText("11.4");
        frm.txtSpecialProcessTextEntry1b.SetText("12.5");
        frm.txtSpecialProcessTextEntry1c.SetText("13");
        frm.txtSpecialProcessTextEntry2.SetText("14");
        frm.cbSpecialProcessBoolean.SetValue(1);
        for (const char* sChoice : {"a", "b", "c"})
            frm.cbSpecialProcessListBox.AddItem(sChoice);
        frm.cbSpecialProcessListBox.SetListIndex(1);
        frm.lblColorSelected2.SetCaption("255");
    }
};

}  // namespace

TEST_F(EditingForm, BuildsARequestFromTheConversionFields)
{
    frm.cbOriginalFile.UserTypes("  /in/*.bmp ");
    frm.cbTargetFile.UserTypes(" /out/*.png ");
    frm.cbDoSubfolders.UserToggles();
    clsConversionOptions objOptions;

    BuildRequestFromGUI(app, objOptions);

    EXPECT_EQ(objOptions.sActionToDo, "C");
    EXPECT_EQ(objOptions.lConversionMethod, 1);
    EXPECT_EQ(objOptions.sOriginalFile, "/in/*.bmp");
    EXPECT_EQ(objOptions.sTargetFile, "/out/*.png");
    EXPECT_TRUE(objOptions.bDoSubfolders);
    EXPECT_FALSE(objOptions.bSaveInOriginalFolder);
    EXPECT_EQ(objOptions.sExtraParams, frm.sImageConversionOptions);
}

TEST_F(SpecialForm, BuildsARequestFromItsFields)
{
    frm.cbOriginalFileSpecialized.UserTypes(" /in/a.gif ");
    frm.cbTargetFileSpecialized.UserTypes("/out/a.gif");

    const clsConversionOptions objOptions = objRequest(SP_INVERT);

    EXPECT_EQ(objOptions.sActionToDo, "S24");
    EXPECT_EQ(objOptions.lSpecialProcess, 24);
    EXPECT_EQ(objOptions.lConversionMethod, 4);
    EXPECT_EQ(objOptions.sOriginalFile, "/in/a.gif");
    EXPECT_EQ(objOptions.sTargetFile, "/out/a.gif");
    EXPECT_EQ(objOptions.lOriginalFileType, 4);
    EXPECT_EQ(objOptions.lTargetFileType, 4);
    EXPECT_EQ(objOptions.sExtraParams, frm.sImageConversionOptions);
}

TEST_F(SpecialForm, ReadsEachSlotByTheShapeOfTheProcess)
{
    FillSlots();

    EXPECT_EQ(sOwnDetails(SP_GAUSSIANBLUR), "11^");
    EXPECT_EQ(sOwnDetails(SP_GAMMA), "11.4^");
    EXPECT_EQ(sOwnDetails(SP_BALANCEHLS), "11.4^12.5^13^");
    EXPECT_EQ(sOwnDetails(SP_COLORIZE), "11^12^13^");
    EXPECT_EQ(sOwnDetails(SP_SHIFT), "11^14^255^");
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_ROTATE), "11.4^255^");
    EXPECT_EQ(sOwnDetails(SP_SKEW), "True^14^");
    EXPECT_EQ(sOwnDetails(SP_FLIP), "1^");
    EXPECT_EQ(sOwnDetails(SP_DILATION), "True^11^14^");
    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "11^14^1^255^TRUE^");
    EXPECT_EQ(sOwnDetails(SP_ZOOMBLUR), "11^");
    EXPECT_EQ(sOwnDetails(SP_DEINTERLACE), "True^True^");
}

TEST_F(SpecialForm, CountsEntriesThatAreNoNumberAsZero)
{
    frm.txtSpecialProcessTextEntry1.SetText("wide");
    frm.txtSpecialProcessTextEntry2.SetText("99999999999");
    frm.lblColorSelected2.SetCaption("");
    for (const char* sChoice : {"a", "b", "c"})
        frm.cbSpecialProcessListBox.AddItem(sChoice);
    frm.cbSpecialProcessListBox.SetListIndex(0);

    EXPECT_EQ(sOwnDetails(SP_TRANSFORM_RESIZE), "0^0^0^0^FALSE^");
}

TEST_F(SpecialForm, ReadsTheUsersDecimalSign)
{
    app.locale.sign = ',';
    frm.txtSpecialProcessTextEntry1.SetText("0,75");

    EXPECT_EQ(sOwnDetails(SP_GAMMA), "0,75^");
}

TEST_F(SpecialForm, KeepsTheDetailsOfTheProcess)
{
    FillSlots();

    const std::string sDetails = objRequest(SP_GAMMA).sExtraParams;

    EXPECT_EQ(frm.asSP_Details[SP_GAMMA], sDetails);
}

TEST_F(SpecialForm, BuildsTheRequestOfALaunch)
{
    frm.cbCommandLine.SetText("/bin/true");
    frm.cbCommandLineArguments.SetText("a \"b c\"");
    ChooseItem(frm.cbCommandLineThreadPriority, 128);
    ChooseItem(frm.cbCommandLineWindowState, 3);
    frm.txtCommandLineWaitTimeInSeconds.SetText("20");

    const clsConversionOptions objOptions = objRequest(SP_LAUNCH);

    EXPECT_EQ(objOptions.sOriginalFile, "/bin/true");
    EXPECT_EQ(objOptions.sTargetFile, "a \"b c\"");
    EXPECT_EQ(objOptions.sExtraParams, "128^3^20");
    EXPECT_EQ(objOptions.lOriginalFileType, clsConversionOptions().lOriginalFileType);
}

TEST_F(SpecialForm, PutsTheTargetBesideItsSourceOnRequest)
{
    frm.cbOriginalFileSpecialized.UserTypes("/in/*.gif");
    frm.cbSaveToOriginalFolderSpecialized.UserToggles();

    const clsConversionOptions objOptions = objRequest(SP_INVERT);

    EXPECT_EQ(objOptions.sTargetFile, "/in/*.gif");
    EXPECT_TRUE(objOptions.bSaveInOriginalFolder);
    EXPECT_EQ(frm.cbTargetFileSpecialized.Text(), "/in/*.gif");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/*.gif");
}

TEST_F(SpecialForm, IsAddedAndUpdatedAsATask)
{
    app.images.AddImage("/in/a.gif");
    FillSlots();
    ChooseItem(frm.cbSpecialProcesses, SP_GAMMA);
    frm.cbOriginalFileSpecialized.UserTypes("/in/a.gif");
    frm.cbTargetFileSpecialized.UserTypes("/out/a.gif");

    frm.cmdAdd.UserClicks();
    EXPECT_EQ(aRow(1), (std::vector<std::string>{"", "1^0^FALSE^75^^^^^^^^11.4^", "1", "S20", "/in/a.gif",
                                                 "4", "gif", "/out/a.gif", "4", "gif", ""}));

    frm.fgToDo.SetRow(1);
    frm.txtSpecialProcessTextEntry1.SetText("2");
    frm.cbTargetFileSpecialized.UserTypes("/out/b.gif");
    frm.cmdUpdate.UserClicks();
    EXPECT_EQ(aRow(1), (std::vector<std::string>{"", "1^0^FALSE^75^^^^^^^^2^", "1", "S20", "/in/a.gif", "4",
                                                 "gif", "/out/b.gif", "4", "gif", ""}));
}

TEST_F(SpecialForm, AddsAndUpdatesALaunchWithoutFiles)
{
    ChooseItem(frm.cbSpecialProcesses, SP_LAUNCH);
    frm.cbCommandLine.SetText("/bin/true");

    frm.cmdAdd.UserClicks();
    EXPECT_EQ(sCell(1, kColAction), "S100");
    EXPECT_EQ(sCell(1, kColOriginal), "/bin/true");
    EXPECT_EQ(sCell(1, kColTarget), "");

    frm.fgToDo.SetRow(1);
    frm.cbCommandLineArguments.SetText("--help");
    UpdateGridFromGUI_SpecializedItem(app);
    EXPECT_EQ(sCell(1, kColTarget), "--help");
    EXPECT_EQ(sCell(1, kColDetails), "32^1^-1");
}

TEST_F(SpecialForm, WritesNothingOverTheMarkerRow)
{
    UpdateGridFromGUI_SpecializedItem(app);
    UpdateGridFromGUI_ConversionItem(app);

    EXPECT_EQ(sCell(1, kColNumber), "*");
    EXPECT_EQ(sCell(1, kColAction), "");
}
