// The pixels' data of a PNG that is written: filtered rows go in, IDAT chunks come out.
// Room: platform/image/codecs/png.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/deflate/blocks.h"
#include "src/platform/image/deflate/quick_copies.h"
#include "src/platform/image/deflate/thorough_copies.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// What the rows hold, as far as that is known beforehand.
enum class PngContent : std::uint8_t {
    kPhotograph,  ///< samples tell whether copies pay, and they are looked for quickly
    kFlat,        ///< many pixels are as their neighbours; else as photographs
    kGraphic,     ///< most pixels are as their neighbours: strips that shrink well are searched thoroughly
    kDrawing,     ///< few colours: copies are looked for thoroughly
    kScan         ///< black and white in bits: copies are looked for quickly
};

/// One zlib stream, made in strips: the filtered rows of a strip and the 32 KB before it are all that is kept
/// of the picture. Where copies from afar don't make a strip clearly smaller, which is so in most
/// photographs, only runs are looked for.
class PngDeflater
{
public:
    /// For rows rows of row_bytes each, the filter's byte included; pixel_bytes is 1 to 4. Throws
    /// std::bad_alloc.
    PngDeflater(OutputFile& out, std::size_t row_bytes, std::size_t rows, std::uint32_t pixel_bytes,
                PngContent content);

    /// Where the next row is to be put. kSlack bytes behind it may be written too.
    std::uint8_t* NextRow() { return Buffer() + filled_; }
    static constexpr std::size_t kSlack = 64;

    /// The row is there. After the last one the stream is finished. False when the file has failed.
    [[nodiscard]] bool RowDone();

private:
    std::uint8_t* Buffer() { return buffer_.data() + PngQuickCopies::kFrontSlack; }
    bool CompressStrip(bool last);
    bool CompressByTrial(bool last);
    bool SamplePays();
    void Learn(bool paid);
    bool WriteBlock(const PngBlock& block, bool last);
    bool FlushChunk(bool end);

    OutputFile& out_;
    std::size_t row_bytes_;
    std::size_t rows_left_;
    std::uint32_t pixel_bytes_;
    PngContent content_;
    std::size_t strip_size_;

    PixelBytes buffer_;       ///< slack, what copies may reach back to, then the strip
    std::size_t begin_ = 0;   ///< where the strip begins
    std::size_t filled_ = 0;  ///< where it ends so far

    PngTokens runs_;
    PngTokens copies_;
    PngCosts costs_ = FirstPngCosts();  ///< by the runs of the strip before
    PngQuickCopies quick_;
    PngThoroughCopies thorough_;
    bool is_noise_ = false;
    std::uint32_t skip_ = 0;  ///< strips that go by the last trial, in which copies did not pay
    std::uint32_t max_skip_ = 0;

    PixelBytes packed_;  ///< a chunk's data so far
    PngBitWriter bits_;
    std::uint32_t adler_ = 1;
};
