// Applies a special process through the image library.
#include "src/conversion/modApplySpecialProcess.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/forms/Application.h"
#include "src/platform/image_library.h"
#include "src/platform/image_transform.h"
#include "src/platform/locale.h"

static std::int32_t lRounded(double dValue)
{
    const double dRounded = std::nearbyint(dValue);
    if (std::fabs(dRounded) > std::numeric_limits<std::int32_t>::max())
        throw clsRaisedError(kErrOverflow, "Overflow");
    return static_cast<std::int32_t>(dRounded);
}

void CompleteSize(Application& app, const ImageBuffer& aImage, std::int32_t& lWidth, std::int32_t& lHeight)
{
    const double dImageWidth = app.svc.ImageUtility1.GetWidth(aImage);
    const double dImageHeight = app.svc.ImageUtility1.GetHeight(aImage);
    const double dRatio = dImageHeight != 0 ? dImageWidth / dImageHeight : 1.0;
    if (lWidth == 0)
        lWidth = lRounded(lHeight * dRatio);
    if (dRatio != 0 && lHeight == 0)
        lHeight = lRounded(lWidth / dRatio);
}

// False if the size is 0 by 0, which leaves the image alone. The "retain aspect ratio" field (the last) is
// intentionally ignored: a size of 0 is always computed from the other, and two given sizes are taken
// literally.
static bool bPrepareResize(Application& app, const ImageBuffer& aImage, DetailsValues& aValues)
{
    std::int32_t& lWidth = std::get<std::int32_t>(aValues[0]);
    std::int32_t& lHeight = std::get<std::int32_t>(aValues[1]);
    if (lWidth == 0 && lHeight == 0)
        return false;
    CompleteSize(app, aImage, lWidth, lHeight);
    return true;
}

static DetailsValues aDetailsOf(Application& app, const clsConversionOptions& objOptions,
                                const SpecialProcessRow& objRow)
{
    std::string sPrefix;  // required by ReadDetails; the item has already read it
    DetailsValues aValues = aFreshValues(objRow);
    ReadDetails(objRow, objOptions.sExtraParams, sPrefix, aValues, app.svc.objLocale.cDecimalSign());
    return aValues;
}

ReducedLoading::ReducedLoading(Application& app, const clsConversionOptions& objOptions) : m_app(app)
{
    // A picture of twice the size leaves the interpolation enough to choose from. Without interpolation the
    // result consists of certain pixels of the full picture.
    constexpr std::int32_t kReserve = 2;
    constexpr std::int32_t kLargest = 32767;
    if (bContains(objOptions.sActionToDo, "C") || objOptions.lSpecialProcess != SP_TRANSFORM_RESIZE)
        return;
    const DetailsValues aValues = aDetailsOf(app, objOptions, *pSpecialProcess(SP_TRANSFORM_RESIZE));
    const auto lSize = [&](std::size_t nField) {
        return std::clamp(std::get<std::int32_t>(aValues[nField]), 0, kLargest);
    };
    const bool bInterpolates = std::get<std::int32_t>(aValues[2]) > 0;
    if (bInterpolates)
        app.svc.ImageFile1.SetSmallestSize(kReserve * lSize(0), kReserve * lSize(1));
}

ReducedLoading::~ReducedLoading()
{
    m_app.svc.ImageFile1.SetSmallestSize(0, 0);
}

void CallOperation(Application& app, const SpecialProcessRow& objRow, std::span<const DetailsValue> aValues,
                   ImageBuffer& aImage)
{
    if (app.svc.ImageTransform1.Apply(objRow.fnCall(aValues), aImage, aImage) == OperationResult::Failed)
        throw clsRaisedError(kErrOutOfMemory,
                             std::string(objRow.sLabel ? objRow.sLabel : objRow.sConstant) +
                                 " could not be done (picture too large, out of memory, or the transforms "
                                 "are not installed)");
}

bool bApplySpecialProcess(Application& app, clsConversionOptions& objOptions, ImageBuffer& aImage)
{
    if (bContains(objOptions.sActionToDo, "C"))
        return true;
    const SpecialProcessRow* pRow = pSpecialProcess(objOptions.lSpecialProcess);
    if (!pRow || !pRow->fnCall)
        return true;
    DetailsValues aValues = aDetailsOf(app, objOptions, *pRow);
    if (objOptions.lSpecialProcess == SP_TRANSFORM_RESIZE && !bPrepareResize(app, aImage, aValues))
        return true;
    CallOperation(app, *pRow, aValues, aImage);
    return true;
}
