// Loads pictures into the views of the main form; zooms and scrolls them.
#include "src/viewer/modImageViewer.h"

#include <cmath>
#include <initializer_list>
#include <memory>
#include <string>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/commands/modRunState.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileTypes.h"
#include "src/platform/image_library.h"
#include "src/translator/modTranslator.h"
#include "src/viewer/modImageViewerDialog.h"
#include "src/viewer/modViewerText.h"

constexpr std::int32_t kTypeTiff = 3;  ///< the only type whose pages the viewer counts
constexpr double kMiddleOfScrollBar = 250;
constexpr double kLengthOfScrollBar = 500;

// A preview is made from the original, but belongs to the target.
static std::string sPathOfView(const frmMain& frm, std::int32_t lView)
{
    if (bContains(frm.sActionToDo, "C"))
        return lView == kViewOriginal ? frm.cbOriginalFile.Text() : frm.cbTargetFile.Text();
    return lView == kViewOriginal ? frm.cbOriginalFileSpecialized.Text() : frm.cbTargetFileSpecialized.Text();
}

static std::int32_t lSelectedView(const frmMain& frm)
{
    return frm.tsImageViewer.SelectedTab() - 1;
}

static void ShowStatus(Application& app, const std::string& sText)
{
    app.frmMainMDI.sbMain.SetPanel(kPanelProgress, sText);
}

static void ShowPages(frmMain& frm, std::int32_t lView)
{
    frm.framePicNav(lView).SetVisible(lView == lSelectedView(frm) && frm.aFrames.at(lView) >= 2);
}

static void SetPages(frmMain& frm, std::int32_t lView, std::int32_t lFrames)
{
    frm.aFrames.at(lView) = lFrames;
    ShowPages(frm, lView);
}

static void ReportMissingFile(Application& app, std::int32_t lView, const std::string& sPath)
{
    if (lView == kViewTarget)
        ShowStatus(app, sTranslate(app, "Target file may not exist. Check the target folder."));
    else
        ShowStatus(app, sTranslate(app, "File does not exist:") + " " + sPath);
}

static std::int32_t lCountFrames(Application& app, const std::string& sPath)
{
    if (lFileTypeFromExtension(sExtensionOfPath(sPath)) != kTypeTiff)
        return 1;
    const BusyPointer objPointer(app);
    return app.svc.ImageFile1.GetFrameCount(sPath);
}

// Selects the view's tab and loads a page of its file, or the last one if it has fewer.
static bool bLoadFile(Application& app, std::int32_t lView, const std::string& sPath, std::int32_t lPage)
{
    frmMain& frm = app.frmMain;
    const InternalChange objChange(app);
    ShowStatus(app, sTranslate(app, "Loading Image, please wait..."));
    frm.tsImageViewer.SelectTab(lView + 1);
    const std::int32_t lFrames = lCountFrames(app, sPath);
    if (lFrames < 1) {
        SetPages(frm, lView, 0);
        ClearFrame(app, lView);
        ShowStatus(app, sTranslate(app, "Unable to load image"));
        return true;
    }
    SetPages(frm, lView, lFrames);
    frm.HScrollFrame(lView).SetRange(0, lFrames - 1);
    frm.HScrollFrame(lView).SetValue(lPage);
    const bool bResult = LoadFrame(app, lView, frm.HScrollFrame(lView).Value());
    if (!bResult)
        ShowStatus(app, "");
    return bResult;
}

static bool bIsOnShow(const frmMain& frm, std::int32_t lView, const std::string& sPath)
{
    return bEqualIgnoringCase(sTrim(sPath), frm.ImageViewMain(lView).Tag());
}

static bool bLoadImageViewer(Application& app, std::int32_t lView, bool bForce, std::int32_t lPage)
{
    frmMain& frm = app.frmMain;
    const std::string sPath = sPathOfView(frm, lView);
    if (bIsOnShow(frm, lView, sPath) && !bForce)
        return true;
    if (bFileExists(app, sPath))
        return bLoadFile(app, lView, sPath, lPage);
    SetPages(frm, lView, 0);
    ClearFrame(app, lView);
    ReportMissingFile(app, lView, sPath);
    return true;
}

bool LoadImageViewer(Application& app, std::int32_t lView, bool bForce)
{
    return bLoadImageViewer(app, lView, bForce, 0);
}

static void FitToWindow(frmMain& frm, std::int32_t lView)
{
    ImageView& objView = frm.ImageViewMain(lView);
    objView.FitToWindow();
    frm.aFitted.at(lView) = true;
    frm.lViewWidth = objView.ShownWidth();
    frm.lViewHeight = objView.ShownHeight();
}

bool LoadFrame(Application& app, std::int32_t lView, std::int32_t lFrame)
{
    frmMain& frm = app.frmMain;
    const std::string sPath = sPathOfView(frm, lView);
    const BusyPointer objPointer(app);
    // While a worker loads, a click on a tab must not begin another load.
    const InternalChange objChange(app);
    const auto pImage = std::make_shared<ImageBuffer>();
    if (!app.svc.ImageFile1.LoadFrame(sPath, lFrame, *pImage)) {
        ClearFrame(app, lView);
        return false;
    }
    frm.aImageWidth.at(lView) = app.svc.ImageUtility1.GetWidth(*pImage);
    frm.aImageHeight.at(lView) = app.svc.ImageUtility1.GetHeight(*pImage);
    frm.lblFrame(lView).SetCaption(std::to_string(lFrame + 1));
    {
        const RedrawLock objLock(frm.ImageViewMain(lView));
        frm.ImageViewMain(lView).SetImage(pImage, lFrame);
        FitToWindow(frm, lView);
    }
    frm.ImageViewMain(lView).SetTag(sTrim(sPath));
    if (lView == kViewOriginal)
        frm.pOriginalImage = pImage;
    UpdateGUIForImageViewer(app, lView);
    return true;
}

void ClearFrame(Application& app, std::int32_t lView)
{
    app.frmMain.ImageViewMain(lView).SetImage(nullptr);
    app.frmMain.ImageViewMain(lView).SetTag("");
}

static std::int32_t lRounded(double dValue)
{
    return static_cast<std::int32_t>(std::nearbyint(dValue));
}

// Only a picture that is larger than when it was fitted can be scrolled.
static void EnableScrollBars(frmMain& frm, std::int32_t lView)
{
    const ImageView& objView = frm.ImageViewMain(lView);
    frm.scrollOffsetX.SetEnabled(objView.ShownWidth() > frm.lViewWidth);
    frm.scrollOffsetY.SetEnabled(objView.ShownHeight() > frm.lViewHeight);
}

static std::int32_t lScrollValue(double dOffset, std::int32_t lSize)
{
    return lRounded((dOffset - 0.5 * lSize) * kLengthOfScrollBar / lSize + kMiddleOfScrollBar);
}

static void ShowOffset(frmMain& frm, std::int32_t lView)
{
    const ImageView& objView = frm.ImageViewMain(lView);
    const std::int32_t lWidth = frm.aImageWidth.at(lView);
    const std::int32_t lHeight = frm.aImageHeight.at(lView);
    if (lWidth < 1 || lHeight < 1)
        return;
    frm.scrollOffsetX.SetValue(lScrollValue(objView.OffsetX(), lWidth));
    frm.scrollOffsetY.SetValue(lScrollValue(objView.OffsetY(), lHeight));
}

static void ShowZoomAndOffset(Application& app, std::int32_t lView)
{
    frmMain& frm = app.frmMain;
    const std::int32_t lPercent = lRounded(frm.ImageViewMain(lView).Zoom() * 100);
    // Slider and bars show rounded values: they mustn't round the view in turn.
    const InternalChange objChange(app);
    frm.lblZoomPercentage.SetCaption(std::to_string(lPercent) + "%");
    frm.SliderZoom.SetValue(lPercent);
    ShowOffset(frm, lView);
    EnableScrollBars(frm, lView);
}

void UpdateGUIForImageViewer(Application& app, std::int32_t lView)
{
    const frmMain& frm = app.frmMain;
    ShowStatus(app, sViewerText(app, frm.aFrames.at(lView), frm.HScrollFrame(lView).Value(),
                                frm.aImageWidth.at(lView), frm.aImageHeight.at(lView)));
    ShowZoomAndOffset(app, lView);
}

// A message about a missing file stays in the panel.
static void UpdateGUIForSelectedView(Application& app)
{
    const std::int32_t lView = lSelectedView(app.frmMain);
    if (app.frmMain.ImageViewMain(lView).pImage())
        UpdateGUIForImageViewer(app, lView);
}

static void ShowSelectedView(frmMain& frm)
{
    const std::int32_t lSelected = lSelectedView(frm);
    for (std::int32_t lView = 0; lView < frm.ImageViewMain.Count(); ++lView) {
        frm.ImageViewMain(lView).SetVisible(lView == lSelected);
        frm.cmdReloadImage(lView).SetVisible(lView == lSelected);
        ShowPages(frm, lView);
    }
    for (std::int32_t lView = 0; lView < frm.picZoomMainPicture.Count(); ++lView)
        frm.picZoomMainPicture(lView).SetVisible(lView == lSelected);
    for (Control* pControl :
         std::initializer_list<Control*>{&frm.ImageViewMain(lSelected), &frm.SliderZoom, &frm.frameLabelZoom,
                                         &frm.frameZoomPercentage, &frm.scrollOffsetX, &frm.scrollOffsetY})
        pControl->BringToFront();
}

static void UpdatePreview(Application& app)
{
    if (app.objHooks.UpdatePreview)
        app.objHooks.UpdatePreview(app);
}

// The preview shows the page of the original that was on show before.
static bool bLoadForPreview(Application& app)
{
    frmMain& frm = app.frmMain;
    const bool bSameFile = bIsOnShow(frm, kViewOriginal, sPathOfView(frm, kViewOriginal));
    const std::int32_t lPage = bSameFile ? frm.HScrollFrame(kViewOriginal).Value() : 0;
    const bool bResult = bLoadImageViewer(app, kViewOriginal, true, lPage);
    {
        const InternalChange objChange(app);
        frm.tsImageViewer.SelectTab(kViewPreview + 1);
    }
    if (bResult)
        UpdatePreview(app);
    return bResult;
}

void tsImageViewer_Click(Application& app)
{
    frmMain& frm = app.frmMain;
    ShowSelectedView(frm);
    if (app.bInternalGridChange || !frm.bAutoLoadImages || bRunInProgress(app))
        return;
    const std::int32_t lView = lSelectedView(frm);
    if (lView == kViewPreview ? bLoadForPreview(app) : LoadImageViewer(app, lView, true))
        UpdateGUIForSelectedView(app);
    if (frm.Visible())
        frm.fgToDo.SetFocus();
}

static void HScrollFrame_Change(Application& app, std::int32_t lView)
{
    if (!app.bInternalGridChange)
        LoadFrame(app, lView, app.frmMain.HScrollFrame(lView).Value());
}

static void SliderZoom_Change(Application& app)
{
    if (app.bInternalGridChange)
        return;
    frmMain& frm = app.frmMain;
    const std::int32_t lView = lSelectedView(frm);
    const std::int32_t lPercent = frm.SliderZoom.Value();
    frm.ImageViewMain(lView).SetZoom(lPercent / 100.0);
    frm.aFitted.at(lView) = false;
    frm.lblZoomPercentage.SetCaption(std::to_string(lPercent) + "%");
    EnableScrollBars(frm, lView);
}

static double dOffset(const ScrollBar& objBar, std::int32_t lSize)
{
    return (objBar.Value() - kMiddleOfScrollBar) / kLengthOfScrollBar * lSize + lSize * 0.5;
}

static void scrollOffsetX_Change(Application& app)
{
    frmMain& frm = app.frmMain;
    const std::int32_t lView = lSelectedView(frm);
    ImageView& objView = frm.ImageViewMain(lView);
    if (!app.bInternalGridChange)
        objView.SetOffset(dOffset(frm.scrollOffsetX, frm.aImageWidth.at(lView)), objView.OffsetY());
}

static void scrollOffsetY_Change(Application& app)
{
    frmMain& frm = app.frmMain;
    const std::int32_t lView = lSelectedView(frm);
    ImageView& objView = frm.ImageViewMain(lView);
    if (!app.bInternalGridChange)
        objView.SetOffset(objView.OffsetX(), dOffset(frm.scrollOffsetY, frm.aImageHeight.at(lView)));
}

static void cmdReloadImage_Click(Application& app, std::int32_t lView)
{
    if (lView == kViewPreview)
        UpdatePreview(app);
    else
        LoadImageViewer(app, lView, true);
    UpdateGUIForSelectedView(app);
}

static void ImageViewMain_Zoom(Application& app, std::int32_t lView)
{
    app.frmMain.aFitted.at(lView) = false;
    ShowZoomAndOffset(app, lView);
}

// A picture that fills the view goes on filling it.
static void ImageViewMain_Resize(Application& app, std::int32_t lView)
{
    frmMain& frm = app.frmMain;
    if (!frm.ImageViewMain(lView).pImage() || !frm.aFitted.at(lView))
        return;
    if (lView != lSelectedView(frm)) {
        frm.ImageViewMain(lView).FitToWindow();
        return;
    }
    FitToWindow(frm, lView);
    ShowZoomAndOffset(app, lView);
}

/// A routine that belongs to one view.
using ViewRoutine = void (*)(Application&, std::int32_t);

static std::function<void()> ViewHandler(Application& app, ViewRoutine fnRoutine, std::int32_t lView,
                                         Act eAct = Act::Ordinary)
{
    return Handler(
        app, [fnRoutine, lView](Application& a) { fnRoutine(a, lView); }, eAct);
}

static void ConnectView(Application& app, std::int32_t lView)
{
    frmMain& frm = app.frmMain;
    frm.HScrollFrame(lView).OnChange = ViewHandler(app, HScrollFrame_Change, lView);
    if (lView != kViewPreview) {
        frm.ImageViewMain(lView).OnDblClick = ViewHandler(app, ImageViewMain_DblClick, lView);
        frm.picZoomMainPicture(lView).OnDblClick = ViewHandler(app, ImageViewMain_DblClick, lView);
    }
    frm.cmdReloadImage(lView).OnClick = ViewHandler(app, cmdReloadImage_Click, lView);
    ImageView& objView = frm.ImageViewMain(lView);
    objView.OnZoom = ViewHandler(app, ImageViewMain_Zoom, lView, Act::MidRun);
    objView.OnScroll = ViewHandler(app, ShowZoomAndOffset, lView, Act::MidRun);
    // Not an act: a view may get another size at any time.
    objView.OnResize = [&app, lView] { ImageViewMain_Resize(app, lView); };
}

void ConnectImageViewer(Application& app)
{
    frmMain& frm = app.frmMain;
    frm.tsImageViewer.OnClick = Handler(app, tsImageViewer_Click, Act::MidRun);
    frm.SliderZoom.OnChange = Handler(app, SliderZoom_Change, Act::MidRun);
    frm.SliderZoom.OnScroll = frm.SliderZoom.OnChange;
    frm.scrollOffsetX.OnChange = Handler(app, scrollOffsetX_Change, Act::MidRun);
    frm.scrollOffsetX.OnScroll = frm.scrollOffsetX.OnChange;
    frm.scrollOffsetY.OnChange = Handler(app, scrollOffsetY_Change, Act::MidRun);
    frm.scrollOffsetY.OnScroll = frm.scrollOffsetY.OnChange;
    for (std::int32_t lView = 0; lView < frm.ImageViewMain.Count(); ++lView) {
        ConnectView(app, lView);
        SetPages(frm, lView, 0);
    }
    app.objHooks.tsImageViewer_Click = tsImageViewer_Click;
    app.objHooks.UpdateGUIForImageViewer = UpdateGUIForImageViewer;
    app.objHooks.LoadImageViewer = [](Application& a, std::int32_t lView) {
        LoadImageViewer(a, lView, false);
    };
    ShowSelectedView(frm);
}
