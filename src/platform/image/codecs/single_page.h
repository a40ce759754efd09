// The decoder of a format whose files hold one picture.
// Room: platform/image/codecs.
#pragma once

#include <memory>
#include <utility>

#include "src/platform/image/codecs/codec.h"

/// A decoder of one page out of a routine that does what DecodeFrame promises. The routine keeps what Open
/// found.
template <typename Decode>
class SinglePageDecoder : public ImageDecoder
{
public:
    explicit SinglePageDecoder(Decode fnDecode) : m_fnDecode(std::move(fnDecode)) {}
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override
    {
        return lFrame == 0 && m_fnDecode(aImage);
    }

private:
    Decode m_fnDecode;
};

template <typename Decode>
std::unique_ptr<ImageDecoder> pSinglePage(Decode fnDecode)
{
    return std::make_unique<SinglePageDecoder<Decode>>(std::move(fnDecode));
}
