// Walks through the frames of a GIF, one at a time, so that a file with a great many of them fills no
// memory.
// Room: platform/image/codecs/gif.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "src/platform/image/base/byte_reader.h"

struct GifFileType;

enum class GifDisposal { kKeep, kClear, kRestore };

/// Where a frame lies on the logical screen and how it is to be drawn.
struct GifFrame {
    std::uint32_t left = 0;  ///< pixels; a frame may reach beyond the screen, or lie outside it
    std::uint32_t top = 0;
    std::uint32_t width = 0;  ///< 0..65535, as is the height; an empty frame draws nothing
    std::uint32_t height = 0;
    GifDisposal disposal = GifDisposal::kKeep;  ///< what becomes of its area before the next frame
    std::int32_t transparent = -1;              ///< the index that draws nothing; -1 for none
    bool interlaced = false;
    /// B, G, R, 255 by index. Indexes beyond the file's colour table are black; a file without any table is
    /// grey.
    std::array<std::array<std::uint8_t, 4>, 256> colours{};
};

/// After a failure of any call the reader is of no more use. Not copied or moved: the library keeps a pointer
/// to it.
class GifReader
{
public:
    /// Reads the logical screen; null if there is none. file is lent for the life of the reader.
    static std::unique_ptr<GifReader> Open(Bytes file);
    ~GifReader();
    GifReader(const GifReader&) = delete;
    GifReader& operator=(const GifReader&) = delete;

    std::uint32_t ScreenWidth() const;  ///< 0..65535
    std::uint32_t ScreenHeight() const;

    enum class Found { kFrame, kEnd, kBroken };
    /// Goes to the next frame's header; its pixels are to be read or skipped before the next call. End where
    /// the file ends between two frames, or where something begins that isn't GIF. Broken for a frame whose
    /// header is cut short or wrong, or claims more pixels than the rest of the file can hold.
    Found NextFrame(GifFrame& frame);
    /// The frame's next row of indexes, in the order of the file (see GifRowOrder). row holds the frame's
    /// width.
    bool ReadRow(std::span<std::uint8_t> row);
    /// Passes over what is left of the frame's data without decoding it.
    bool SkipPixels();

private:
    explicit GifReader(Bytes file) : left_(file) {}
    static int Give(GifFileType* gif, std::uint8_t* out, int count);
    bool ReadExtension(GifFrame& frame);
    void SetColours(GifFrame& frame) const;

    Bytes left_;
    GifFileType* gif_ = nullptr;
};

/// The rows of a frame in the order in which a GIF stores them: 0, 1, 2, ... or, interlaced, every 8th row,
/// those halfway between, every 4th from 2 and every 2nd from 1.
class GifRowOrder
{
public:
    GifRowOrder(std::uint32_t height, bool interlaced) : height_(height), interlaced_(interlaced) {}
    /// The row that comes next; called no more often than there are rows.
    std::uint32_t Next();

private:
    std::uint32_t height_;
    bool interlaced_;
    std::uint32_t next_ = 0;
    std::size_t pass_ = 0;
};
