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
    /// Null for a file without a logical screen that may be shown, or without a frame. aFile is lent for the
    /// life of the decoder.
    static std::unique_ptr<GifDecoder> Open(Bytes aFile);

    /// The frame that is cut short or broken, if any, is the last one counted.
    std::int32_t FrameCount() override { return m_lFrames; }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override;

private:
    struct Area {
        std::uint32_t nLeft, nTop, nRight, nBottom;
    };

    explicit GifDecoder(Bytes aFile) : m_aFile(aFile) {}
    bool ReadFile();
    bool Restart();
    bool DrawNext();
    bool DrawFrame(const GifFrame& objFrame, const Area& objArea);
    void Dispose();
    Area AreaOf(const GifFrame& objFrame) const;
    bool Show(ImageBuffer& aImage) const;

    Bytes m_aFile;
    std::uint32_t m_nWidth = 0;
    std::uint32_t m_nHeight = 0;
    std::int32_t m_lFrames = 0;

    std::unique_ptr<GifReader> m_pReader;
    std::int32_t m_lDrawn = 0;              ///< how many frames the screen has seen
    std::optional<std::int32_t> m_lBroken;  ///< from this frame on nothing can be shown
    PixelBytes m_aScreen;                   ///< B, G, R, A; A is 0 or 255
    GifDisposal m_objDisposal = GifDisposal::Keep;
    Area m_objDisposeArea{};  ///< of the frame drawn last
    PixelBytes m_aBefore;     ///< what that area held before, if it is to be restored
};
