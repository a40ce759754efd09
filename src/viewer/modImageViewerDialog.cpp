// Fills the viewer dialog, turns pages and saves them.
#include "src/viewer/modImageViewerDialog.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "src/base/text.h"
#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modPickFile.h"
#include "src/platform/image_library.h"
#include "src/platform/window_services.h"
#include "src/settings/modMRU.h"
#include "src/settings/modSettings.h"
#include "src/translator/modTranslator.h"
#include "src/viewer/modViewerText.h"

namespace
{

constexpr std::int32_t kUnknown = -1;
constexpr std::int32_t kCompressionLZW = 1;
constexpr std::int32_t kFirstJPEGQuality = 75;

constexpr const char* kAllPictureTypes =
    "All Picture Types|*.bmp;*.dib;*.emf;*.gif;*.png;*.ico;*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.cpt;*.wmf;*.cur;"
    "*.ani;*.jp2;*.jpc;*.j2k;*.tga;*.pcx;*.ras|";

using SaveOperation = bool (ImageFile::*)(const ImageBuffer&, const std::string&);

struct SaveType {
    const char* sFilter;
    SaveOperation fnSave;
};

constexpr std::array<SaveType, 11> kSaveTypes{{
    {"BMP Files (*.bmp)|*.bmp", &ImageFile::SaveBMP},
    {"JPEG Files (*.jpg)|*.jpg", &ImageFile::SaveJPEG},
    {"GIF Files (*.gif)|*.gif", &ImageFile::SaveGIF},
    {"TIFF Files (*.tiff)|*.tif;*.tiff;*.cpt", &ImageFile::SaveTIFF},
    {"PCX Files (*.pcx)|*.pcx", &ImageFile::SavePCX},
    {"WMF Files (*.wmf)|*.wmf", &ImageFile::SaveWMF},
    {"EMF Files (*.emf)|*.emf", &ImageFile::SaveEMF},
    {"TGA Files (*.tga)|*.tga", &ImageFile::SaveTGA},
    {"PNG Files (*.png)|*.png", &ImageFile::SavePNG},
    {"RAS Files (*.ras)|*.ras", &ImageFile::SaveRAS},
    {"JPEG2000 Files (*.j2k)|*.j2k", &ImageFile::SaveJ2K},
}};

}  // namespace

static void ClearFrame(frmImageViewer& frm)
{
    frm.ImageView1.SetImage(nullptr);
    frm.ImageView1.SetTag("");
    frm.pViewerImage = nullptr;
    frm.sbStatus.SetCaption("");
}

static void ShowNoFile(frmImageViewer& frm)
{
    frm.framePicNav.SetVisible(false);
    ClearFrame(frm);
}

static void ShowPage(Application& app, const std::string& sFile, std::int32_t lFrame)
{
    frmImageViewer& frm = app.frmImageViewer;
    const auto pImage = std::make_shared<ImageBuffer>();
    if (!app.svc.ImageFile1.LoadFrame(sFile, lFrame, *pImage)) {
        ClearFrame(frm);
        return;
    }
    frm.pViewerImage = pImage;
    frm.sbStatus.SetCaption(sViewerText(app, frm.lViewerFrames, lFrame,
                                        app.svc.ImageUtility1.GetWidth(*pImage),
                                        app.svc.ImageUtility1.GetHeight(*pImage)));
    frm.lblFrame.SetCaption(std::to_string(lFrame + 1));
    const RedrawLock objLock(frm.ImageView1);
    frm.ImageView1.SetImage(pImage, lFrame);
    frm.ImageView1.FitToWindow();
    frm.ImageView1.SetTag(sTrim(sFile));
}

static void TurnPage(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    const BusyPointer objPointer(app);
    std::int32_t lShown = kUnknown;
    // The events that are let in may turn on to the next page.
    while (frm.lViewerFrames >= 1 && lShown != frm.HScrollFrame.Value()) {
        lShown = frm.HScrollFrame.Value();
        app.svc.objWindows.DoEvents();
        ShowPage(app, frm.cbFile.Text(), lShown);
    }
}

static void HScrollFrame_Change(Application& app)
{
    if (!app.bInternalGridChange)
        TurnPage(app);
}

static void GoToFirstPage(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    const InternalChange objChange(app);
    frm.HScrollFrame.SetRange(0, frm.lViewerFrames - 1);
    frm.HScrollFrame.SetValue(0);
}

void LoadViewerFile(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    const std::string sFile = frm.cbFile.Text();
    if (!bFileExists(app, sFile)) {
        ShowNoFile(frm);
        return;
    }
    frm.lViewerFrames = app.svc.ImageFile1.GetFrameCount(sFile);
    if (frm.lViewerFrames < 1) {
        ShowNoFile(frm);
        return;
    }
    frm.framePicNav.SetVisible(frm.lViewerFrames >= 2);
    GoToFirstPage(app);
    TurnPage(app);
}

static void ShowFileOfText(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    if (!bFileExists(app, frm.cbFile.Text()))
        ShowNoFile(frm);
    else if (!bEqualIgnoringCase(sTrim(frm.cbFile.Text()), frm.ImageView1.Tag()))
        LoadViewerFile(app);
}

static void cbFile_Change(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    if (frm.bFillingFileList)
        return;
    std::string sShown;
    // While a file is loaded, a person may type on.
    do {
        sShown = frm.cbFile.Text();
        ShowFileOfText(app);
    } while (sShown != frm.cbFile.Text());
}

static void FillFileList(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    frm.bFillingFileList = true;
    FillComboBoxFromMRU(app, frm.cbFile, *frm.pMRU);
    frm.bFillingFileList = false;
}

// Cancelling leaves the count of pages unknown, so that no page can be turned until a file is loaded again.
// That is intentional.
static void cmdGetFilePath_Click(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    frm.lViewerFrames = kUnknown;
    std::int32_t lFilterIndex = 1;
    const std::string sFile =
        sPickFileInFolder(app, "Select File", kAllPictureTypes, lFilterIndex, frm.cbFile.Text());
    if (sFile.empty())
        return;
    frm.bFillingFileList = true;
    frm.cbFile.SetText(sFile);
    frm.bFillingFileList = false;
    LoadViewerFile(app);
}

static std::string sSaveFilter()
{
    std::string sFilter;
    for (const SaveType& objType : kSaveTypes)
        sFilter += (sFilter.empty() ? "" : "|") + std::string(objType.sFilter);
    return sFilter;
}

// The page is saved with the library's first values, whatever the tasks want; their values are put back.
static void Save(Application& app, SaveOperation fnSave, const std::string& sFile)
{
    ImageFile& ImageFile1 = app.svc.ImageFile1;
    const BusyPointer objPointer(app);
    ImageFile1.SetInfo({});
    ImageFile1.SetJPEGQuality(kFirstJPEGQuality);
    ImageFile1.SetTIFFCompression(kCompressionLZW);
    // Not reported, as the user sees in the folder whether there is a file.
    static_cast<void>((ImageFile1.*fnSave)(*app.frmImageViewer.pViewerImage, sFile));
    ImageFile1.SetJPEGQuality(app.frmMain.lJPEGQuality);
    ImageFile1.SetTIFFCompression(app.frmMain.lTIFFCompression);
}

static void CommandSave_Click(Application& app)
{
    if (!app.frmImageViewer.pViewerImage)
        return;
    FilePicker objPicker{"Save image to file", sSaveFilter()};
    objPicker.bToSave = true;
    const std::string sFile = app.svc.objWindows.sPickFile(objPicker);
    const auto nType = static_cast<std::size_t>(objPicker.lFilterIndex - 1);
    if (!sFile.empty() && nType < kSaveTypes.size())
        Save(app, kSaveTypes[nType].fnSave, sFile);
}

static void cmdApply_Click(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    AddUniqueItemToCollection(*frm.pMRU, frm.cbFile.Text());
    frm.Unload();
}

static void cmdCancel_Click(Application& app)
{
    app.frmImageViewer.Unload();
}

static void SetCaptions(frmImageViewer& frm)
{
    frm.SetCaption("Image Viewer");
    frm.cmdApply.SetCaption("&Apply");
    frm.cmdCancel.SetCaption("&Cancel");
    frm.CommandSave.SetCaption("Save image to file");
    frm.cmdGetFilePath.SetCaption("File");
}

void frmImageViewer_Load(Application& app)
{
    frmImageViewer& frm = app.frmImageViewer;
    SetCaptions(frm);
    frm.lViewerFrames = kUnknown;
    ShowNoFile(frm);
    frm.cbFile.OnClick = Handler(app, cbFile_Change);
    frm.cbFile.OnChange = Handler(app, cbFile_Change);
    for (CommandButton* pButton : {&frm.cmdGetFilePath, &frm.picSelectSourceFile})
        pButton->OnClick = Handler(app, cmdGetFilePath_Click);
    frm.HScrollFrame.OnChange = Handler(app, HScrollFrame_Change);
    frm.CommandSave.OnClick = Handler(app, CommandSave_Click);
    frm.cmdApply.OnClick = Handler(app, cmdApply_Click);
    frm.cmdCancel.OnClick = Handler(app, cmdCancel_Click);
    ConnectDialog(app, frm, frm.cmdCancel, kHelpImageViewer);
    frm.ImageView1.OnResize = [&frm] { frm.ImageView1.FitToWindow(); };
    frm.OnUnload = [&app] { SaveIniFile(app, app.frmImageViewer); };
    ReadIniFile(app, frm);
}

void SetUpImageViewer(Application& app, clsMRU& mru)
{
    frmImageViewer& frm = app.frmImageViewer;
    frm.pMRU = &mru;
    FillFileList(app);
    LoadViewerFile(app);
    app.svc.objWindows.ShowModal(frm);
    frm.pMRU = nullptr;
    ClearFrame(frm);  // a large picture isn't kept
}

static std::pair<ComboBox*, clsMRU*> FileOfView(frmMain& frm, std::int32_t lView)
{
    const bool bConversion = bContains(frm.sActionToDo, "C");
    if (lView == 0 && bConversion)
        return {&frm.cbOriginalFile, &frm.mruSource};
    if (lView == 0)
        return {&frm.cbOriginalFileSpecialized, &frm.mruSourceSpecialized};
    if (bConversion)
        return {&frm.cbTargetFile, &frm.mruTarget};
    return {&frm.cbTargetFileSpecialized, &frm.mruTargetSpecialized};
}

void ImageViewMain_DblClick(Application& app, std::int32_t lView)
{
    const auto [pcb, pMRU] = FileOfView(app.frmMain, lView);
    frmImageViewer_Load(app);
    app.frmImageViewer.SetCaption(
        sTranslate(app, lView == 0 ? "View and select Original File" : "View and select Target File"));
    AddUniqueItemToCollection(*pMRU, pcb->Text());
    SetUpImageViewer(app, *pMRU);
    FillComboBoxFromMRU(app, *pcb, *pMRU);
    if (pcb->ListCount() > 0)
        pcb->SetListIndex(0);  // by hand this time: it becomes the task's file
}
