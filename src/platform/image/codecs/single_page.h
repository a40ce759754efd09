// A decoder for formats with one picture per file.
// Room: platform/image/codecs.
#pragma once

#include <memory>
#include <utility>

#include "src/platform/image/codecs/codec.h"

/// Makes a single-page decoder from a callable that satisfies DecodeFrame()'s contract and keeps what open()
/// found.
template <typename Decode>
class SinglePageDecoder : public ImageDecoder
{
public:
    explicit SinglePageDecoder(Decode decode) : decode_(std::move(decode)) {}
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override { return frame == 0 && decode_(image); }

private:
    Decode decode_;
};

template <typename Decode>
std::unique_ptr<ImageDecoder> SinglePage(Decode decode)
{
    return std::make_unique<SinglePageDecoder<Decode>>(std::move(decode));
}
