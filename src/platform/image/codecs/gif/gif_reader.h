// Reads the frames of a GIF one at a time, so memory doesn't grow with the number of frames.
// Room: platform/image/codecs/gif.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/gif/gif_wide_codes.h"

struct GifFileType;

enum class GifDisposal { kKeep, kClear, kRestore };

/// A frame's place on the logical screen and how to draw it.
struct GifFrame {
    std::uint32_t left = 0;  ///< pixels; a frame may overlap the edge of the screen or be outside it
    std::uint32_t top = 0;
    std::uint32_t width = 0;  ///< 0 to 65535, like height; an empty frame draws nothing
    std::uint32_t height = 0;
    GifDisposal disposal = GifDisposal::kKeep;  ///< applied to the frame's area before the next frame
    std::int32_t transparent = -1;              ///< index of the transparent colour; -1 = none
    bool interlaced = false;
    /// BGR and 255, by index. Indices past the end of the colour table are black; without any table they are
    /// greys.
    std::array<std::array<std::uint8_t, 4>, 256> colours{};
};

/// Unusable after any call has failed. Neither copied nor moved: giflib keeps a pointer to it.
class GifReader
{
public:
    /// Reads the logical screen; null if there is none. file must outlive the reader.
    static std::unique_ptr<GifReader> Open(Bytes file);
    ~GifReader();
    GifReader(const GifReader&) = delete;
    GifReader& operator=(const GifReader&) = delete;

    std::uint32_t ScreenWidth() const;  ///< 0 to 65535
    std::uint32_t ScreenHeight() const;

    enum class Found { kFrame, kEnd, kBroken };
    /// Advances to the next frame header; read or skip its pixels before the next call. Returns End at the
    /// end of the file or at anything that isn't a GIF block, and Broken if the header is truncated or
    /// invalid, or claims more pixels than the rest of the file can hold.
    Found NextFrame(GifFrame& frame);
    /// Reads the frame's next row of indices in file order (see GifRowOrder). row must have the frame's
    /// width.
    bool ReadRow(std::span<std::uint8_t> row);
    /// Skips the rest of the frame's data without decoding it.
    bool SkipPixels();

private:
    explicit GifReader(Bytes file) : left_(file) {}
    static int Give(GifFileType* gif, std::uint8_t* out, int count);
    bool ReadExtension(GifFrame& frame);
    bool ReadImageHeader();
    void SetColours(GifFrame& frame) const;

    Bytes left_;
    const std::uint8_t* code_size_ = nullptr;   ///< of a frame with wide codes: giflib is given another
    std::unique_ptr<GifWideCodes> wide_codes_;  ///< of the current frame; null if giflib decodes it
    GifFileType* gif_ = nullptr;
};

/// The row order of a GIF frame: 0, 1, 2, ... or, if interlaced, every 8th row from 0, every 8th from 4,
/// every 4th from 2 and every 2nd from 1.
class GifRowOrder
{
public:
    GifRowOrder(std::uint32_t height, bool interlaced) : height_(height), interlaced_(interlaced) {}
    /// The next row number. Don't call it more often than there are rows.
    std::uint32_t Next();

private:
    std::uint32_t height_;
    bool interlaced_;
    std::uint32_t next_ = 0;
    std::size_t pass_ = 0;
};
