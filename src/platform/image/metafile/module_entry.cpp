// The entry points of the player module.
#include <algorithm>
#include <exception>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/device/metafile_api.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

// The widest surface is that of Cairo; what is wider is played once for each of its parts.
static constexpr std::int32_t kTileSide = 16384;

// What a metafile may cost: so much in any case, and more by the size of the picture and of the file.
static std::uint64_t nGranted(const MetafileRequest& objRequest)
{
    const auto nPixels =
        static_cast<std::uint64_t>(objRequest.lWidth) * static_cast<std::uint64_t>(objRequest.lHeight);
    return 1'500'000'000 + nPixels * 48 + objRequest.aRecords.size() * 64;
}

static bool bPlay(const MetafileRequest& objRequest, Canvas& objCanvas)
{
    DeviceContext dc(objCanvas, objRequest);
    return objRequest.bEnhanced ? bPlayEmf(dc, objRequest) : bPlayWmf(dc, objRequest);
}

static void CopyOut(const Canvas& objCanvas, const MetafileRequest& objRequest)
{
    const Box& box = objCanvas.Area();
    for (std::int32_t y = box.lTop; y < box.lBottom; ++y) {
        const std::uint32_t* pFrom = objCanvas.Row(y);
        std::uint8_t* pTo =
            objRequest.pPixels + (static_cast<std::size_t>(y) * static_cast<std::size_t>(objRequest.lWidth) +
                                  static_cast<std::size_t>(box.lLeft)) *
                                     3;
        for (std::int32_t x = 0; x < box.Width(); ++x, pTo += 3) {
            pTo[0] = static_cast<std::uint8_t>(pFrom[x]);
            pTo[1] = static_cast<std::uint8_t>(pFrom[x] >> 8);
            pTo[2] = static_cast<std::uint8_t>(pFrom[x] >> 16);
        }
    }
}

static bool bUsable(const MetafileRequest* pRequest)
{
    return pRequest && pRequest->nVersion == kMetafileApiVersion;
}

extern "C" __attribute__((visibility("default"))) bool VarnelPlayMetafile(const MetafileRequest* pRequest)
try {
    if (!bUsable(pRequest) || !pRequest->pPixels || pRequest->lWidth < 1 || pRequest->lHeight < 1)
        return false;
    Budget objBudget(nGranted(*pRequest));
    for (std::int32_t lTop = 0; lTop < pRequest->lHeight; lTop += kTileSide)
        for (std::int32_t lLeft = 0; lLeft < pRequest->lWidth; lLeft += kTileSide) {
            const Box box{lLeft, lTop, std::min(lLeft + kTileSide, pRequest->lWidth),
                          std::min(lTop + kTileSide, pRequest->lHeight)};
            const std::unique_ptr<Canvas> pCanvas = Canvas::Create(box, objBudget);
            if (!pCanvas || !bPlay(*pRequest, *pCanvas))
                return false;
            CopyOut(*pCanvas, *pRequest);
        }
    return true;
} catch (const std::exception&) {
    return false;
}

extern "C" __attribute__((visibility("default"))) bool VarnelMeasureMetafile(const MetafileRequest* pRequest,
                                                                             MetafileBounds* pBounds)
try {
    if (!bUsable(pRequest) || !pBounds || pRequest->bEnhanced)
        return false;
    Budget objBudget(nGranted(*pRequest));
    const std::unique_ptr<Canvas> pCanvas = Canvas::CreateMeasuring(objBudget);
    if (!bPlay(*pRequest, *pCanvas) || pCanvas->Touched().Empty())
        return false;
    const Box& box = pCanvas->Touched();
    *pBounds = {box.lLeft, box.lTop, box.lRight, box.lBottom};
    return true;
} catch (const std::exception&) {
    return false;
}
