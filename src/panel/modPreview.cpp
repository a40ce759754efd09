// Previews a special process.
#include "src/panel/modPreview.h"

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/editing/modItemFromGUI.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/platform/image_library.h"
#include "src/platform/image_transform.h"
#include "src/platform/locale.h"

constexpr std::int32_t kPreviewTab = 3;
constexpr std::int32_t kViewOriginal = 0;
constexpr std::int32_t kViewPreview = 2;

using Picture = std::shared_ptr<const ImageBuffer>;

static void ReadPanel(Application& app)
{
    clsConversionOptions objOptions;  // only asSP_Details is of interest here
    GetSpecializedItemFromGUI(app, objOptions);
}

static PreviewKey objKey(const Application& app)
{
    return {lSelectedProcess(app), app.frmMain.HScrollFrame(kViewOriginal).Value(),
            app.frmMain.cbOriginalFileSpecialized.Text()};
}

static std::string& sDetailsOf(Application& app, std::int32_t lSpecialProcess)
{
    return app.frmMain.asSP_Details.at(static_cast<std::size_t>(lSpecialProcess));
}

static DetailsValues aValuesOf(Application& app, const SpecialProcessRow& objRow)
{
    std::string sPrefix;
    DetailsValues aValues = aFreshValues(objRow);
    ReadDetails(objRow, sDetailsOf(app, objRow.lSpecialProcess), sPrefix, aValues,
                app.svc.objLocale.cDecimalSign());
    return aValues;
}

static std::string sRounded(double dValue)
{
    const double dRounded = std::nearbyint(dValue);
    if (std::fabs(dRounded) > std::numeric_limits<std::int32_t>::max())
        throw clsRaisedError(kErrOverflow, "Overflow");
    return std::to_string(static_cast<std::int32_t>(dRounded));
}

// The order of a resize's values in its details.
enum : std::size_t { kWidth = 0, kHeight = 1, kRetainAspectRatio = 4 };

static void KeepProportions(Application& app, const SpecialProcessRow& objRow, const ImageBuffer& aImage,
                            PanelInput eInput)
{
    const DetailsValues aValues = aValuesOf(app, objRow);
    if (!std::get<bool>(aValues[kRetainAspectRatio]))
        return;
    frmMain& frm = app.frmMain;
    const double dHeight = app.svc.ImageUtility1.GetHeight(aImage);
    const double dRatio = dHeight != 0 ? app.svc.ImageUtility1.GetWidth(aImage) / dHeight : 1.0;
    if (eInput == PanelInput::Text1)
        frm.txtSpecialProcessTextEntry2.SetText(sRounded(std::get<std::int32_t>(aValues[kWidth]) / dRatio));
    else
        frm.txtSpecialProcessTextEntry1.SetText(sRounded(std::get<std::int32_t>(aValues[kHeight]) * dRatio));
}

// The operation may run on another thread, so it owns all it needs.
static MakePreview fnMake(OperationCall objCall, Picture pSource)
{
    return [objCall = std::move(objCall),
            pSource = std::move(pSource)](ImageTransform& objTransform) -> Picture {
        const auto pResult = std::make_shared<ImageBuffer>();
        switch (objTransform.Apply(objCall, *pSource, *pResult)) {
            case OperationResult::Changed:
                return pResult;
            case OperationResult::Unchanged:
                return pSource;
            default:
                return nullptr;
        }
    };
}

static void ShowPreview(Application& app, const Picture& pImage, std::int32_t lPage, bool bFit)
{
    frmMain& frm = app.frmMain;
    ImageView& objView = frm.ImageViewMain(kViewPreview);
    frm.aImageWidth[kViewPreview] = app.svc.ImageUtility1.GetWidth(*pImage);
    frm.aImageHeight[kViewPreview] = app.svc.ImageUtility1.GetHeight(*pImage);
    {
        const RedrawLock objLock(objView);
        objView.SetTag("");
        objView.SetImage(pImage, lPage);
        if (bFit) {
            objView.FitToWindow();
            frm.aFitted[kViewPreview] = true;
            frm.lViewWidth = objView.ShownWidth();
            frm.lViewHeight = objView.ShownHeight();
        }
    }
    if (app.objHooks.UpdateGUIForImageViewer)
        app.objHooks.UpdateGUIForImageViewer(app, kViewPreview);
}

static void Preview(Application& app, const SpecialProcessRow& objRow, PanelInput eInput)
{
    frmMain& frm = app.frmMain;
    const Picture pSource = frm.pOriginalImage;
    if (!pSource)
        return;
    const bool bResize = objRow.lSpecialProcess == SP_TRANSFORM_RESIZE;
    if (bResize) {
        KeepProportions(app, objRow, *pSource, eInput);
        ReadPanel(app);
    }
    // Ticking the box of a resize keeps the zoom, so that the change of size is seen.
    const bool bFit = !bResize || eInput != PanelInput::Choice;
    const auto fnShow = [&app, objPreview = objKey(app), bFit](const Picture& pImage) {
        if (!pImage)
            return;
        app.frmMain.objLastPreview = objPreview;
        ShowPreview(app, pImage, objPreview.lPage, bFit);
    };
    const MakePreview fnPreview = fnMake(objRow.fnCall(aValuesOf(app, objRow)), pSource);
    if (app.objHooks.RunPreview)
        app.objHooks.RunPreview(fnPreview, fnShow);
    else
        fnShow(fnPreview(app.svc.ImageTransform1));
}

void UpdateGUIforSpecialProcessBasedOnUserInput(Application& app, PanelInput eInput)
{
    if (app.bInternalGridChange)
        return;
    const InternalChange objChange(app, InternalChange::After::Clear);
    const BusyPointer objPointer(app);
    frmMain& frm = app.frmMain;
    if (frm.tsImageViewer.TabCount() >= kPreviewTab && frm.tsImageViewer.SelectedTab() != kPreviewTab)
        frm.tsImageViewer.SelectTab(kPreviewTab);
    const SpecialProcessRow* pRow = pSpecialProcess(lSelectedProcess(app));
    if (!pRow || !pRow->fnCall)
        return;
    const std::string sOldDetails = sDetailsOf(app, pRow->lSpecialProcess);
    ReadPanel(app);
    if (eInput != PanelInput::None && objKey(app) == frm.objLastPreview &&
        sDetailsOf(app, pRow->lSpecialProcess) == sOldDetails)
        return;
    try {
        Preview(app, *pRow, eInput);
    } catch (const clsRaisedError&) {
        // The preview stays as it was; a run with these numbers will say what is wrong with them.
    }
}
