// Composes the frames of a GIF on its logical screen, as a viewer shows them.
// Room: platform/image/codecs/gif.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/gif/gif_reader.h"

/// Limit on the frame count; a file can claim millions with a few bytes each.
constexpr std::int32_t kMaxGifFrames = 65536;

/// Page n is the screen after frame n. Areas never drawn on are transparent, whatever background colour the
/// file names; browsers do the same. A page has 4 channels if any pixel is transparent, else 1 if all are
/// grey, else 3.
class GifDecoder : public ImageDecoder
{
public:
    /// Null if the logical screen is missing or too large, or if there is no frame. file must outlive the
    /// decoder.
    static std::unique_ptr<GifDecoder> Open(Bytes file);

    /// Stops at a truncated or broken frame, which is counted.
    std::int32_t FrameCount() override { return frames_; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    struct Area {
        std::uint32_t left, top, right, bottom;
    };

    explicit GifDecoder(Bytes file) : file_(file) {}
    bool ReadFile();
    bool Restart();
    bool DrawNext();
    bool DrawFrame(const GifFrame& frame, const Area& area);
    void Dispose();
    Area AreaOf(const GifFrame& frame) const;
    bool CopyScreen(ImageBuffer& image) const;

    Bytes file_;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::int32_t frames_ = 0;

    std::unique_ptr<GifReader> reader_;
    std::int32_t drawn_ = 0;              ///< number of frames drawn so far
    std::optional<std::int32_t> broken_;  ///< the first frame that can't be shown
    PixelBytes screen_;                   ///< BGRA; A is 0 or 255
    GifDisposal disposal_ = GifDisposal::kKeep;
    Area dispose_area_{};  ///< of the last frame drawn
    PixelBytes before_;    ///< previous contents of that area, if it will be restored
};
