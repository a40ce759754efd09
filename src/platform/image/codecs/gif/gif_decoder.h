// Draws the frames of a GIF on its logical screen, as a viewer shows them.
// Room: platform/image/codecs/gif.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/gif/gif_reader.h"

/// The most frames that are counted; a file may claim millions in a few bytes each.
constexpr std::int32_t kMaxGifFrames = 65536;

/// Page n is the screen after frame n was drawn. Where nothing was drawn it is transparent, whatever the
/// file's background colour says; so do browsers. A page has 4 channels if any pixel is transparent, else 1
/// if all are grey, else 3.
class GifDecoder : public ImageDecoder
{
public:
    /// Null for a file without a logical screen that may be shown, or without a frame. file is lent for the
    /// life of the decoder.
    static std::unique_ptr<GifDecoder> Open(Bytes file);

    /// The frame that is cut short or broken, if any, is the last one counted.
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
    bool Show(ImageBuffer& image) const;

    Bytes file_;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::int32_t frames_ = 0;

    std::unique_ptr<GifReader> reader_;
    std::int32_t drawn_ = 0;              ///< how many frames the screen has seen
    std::optional<std::int32_t> broken_;  ///< from this frame on nothing can be shown
    PixelBytes screen_;                   ///< B, G, R, A; A is 0 or 255
    GifDisposal disposal_ = GifDisposal::kKeep;
    Area dispose_area_{};  ///< of the frame drawn last
    PixelBytes before_;    ///< what that area held before, if it is to be restored
};
