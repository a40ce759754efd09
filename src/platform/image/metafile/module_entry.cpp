// Entry points of the player module.
#include <algorithm>
#include <exception>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/device/metafile_api.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

// Larger pictures are played once per tile, because Cairo's surfaces are limited.
static constexpr std::int32_t kTileSide = 16384;

// The work budget: a constant, which lasts for about five seconds, plus shares for the size of the picture
// and of the file.
static std::uint64_t WorkBudget(const MetafileRequest& request)
{
    const auto pixels =
        static_cast<std::uint64_t>(request.width) * static_cast<std::uint64_t>(request.height);
    return 3'000'000'000 + pixels * 48 + request.records.size() * 64;
}

static bool Play(const MetafileRequest& request, Canvas& canvas)
{
    DeviceContext dc(canvas, request);
    return request.enhanced ? PlayEmf(dc, request) : PlayWmf(dc, request);
}

static void CopyOut(const Canvas& canvas, const MetafileRequest& request)
{
    const Box& box = canvas.Area();
    for (std::int32_t y = box.top; y < box.bottom; ++y) {
        const std::uint32_t* from = canvas.Row(y);
        std::uint8_t* to =
            request.pixels + (static_cast<std::size_t>(y) * static_cast<std::size_t>(request.width) +
                              static_cast<std::size_t>(box.left)) *
                                 3;
        for (std::int32_t x = 0; x < box.Width(); ++x, to += 3) {
            to[0] = static_cast<std::uint8_t>(from[x]);
            to[1] = static_cast<std::uint8_t>(from[x] >> 8);
            to[2] = static_cast<std::uint8_t>(from[x] >> 16);
        }
    }
}

static bool IsUsable(const MetafileRequest* request)
{
    return request && request->version == kMetafileApiVersion;
}

extern "C" __attribute__((visibility("default"))) bool VarnelPlayMetafile(const MetafileRequest* request)
try {
    if (!IsUsable(request) || !request->pixels || request->width < 1 || request->height < 1)
        return false;
    Budget budget(WorkBudget(*request));
    for (std::int32_t top = 0; top < request->height; top += kTileSide)
        for (std::int32_t left = 0; left < request->width; left += kTileSide) {
            const Box box{left, top, std::min(left + kTileSide, request->width),
                          std::min(top + kTileSide, request->height)};
            const std::unique_ptr<Canvas> canvas = Canvas::Create(box, budget);
            if (!canvas || !Play(*request, *canvas))
                return false;
            CopyOut(*canvas, *request);
        }
    return true;
} catch (const std::exception&) {
    return false;
}

extern "C" __attribute__((visibility("default"))) bool VarnelMeasureMetafile(const MetafileRequest* request,
                                                                             MetafileBounds* bounds)
try {
    if (!IsUsable(request) || !bounds || request->enhanced)
        return false;
    Budget budget(WorkBudget(*request));
    const std::unique_ptr<Canvas> canvas = Canvas::CreateMeasuring(budget);
    if (!Play(*request, *canvas) || canvas->Touched().Empty())
        return false;
    const Box& box = canvas->Touched();
    *bounds = {box.left, box.top, box.right, box.bottom};
    return true;
} catch (const std::exception&) {
    return false;
}
