// Compresses filtered rows into IDAT chunks.
// Room: platform/image/codecs/png.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/deflate/blocks.h"
#include "src/platform/image/deflate/match_finder.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// What the analysis says about the rows; it decides how they are compressed.
enum class PngContent : std::uint8_t {
    kPhotograph,  ///< our encoder: runs, and matches where a sample shows that they pay
    kFlat,        ///< many pixels equal their neighbours; otherwise like kPhotograph
    kGraphic,     ///< most pixels equal their neighbours: libdeflate
    kDrawing,     ///< few colours: libdeflate
    kScan         ///< 1-bit black and white: our encoder, with matches
};

/// True for rows that are compressed as a whole, with libdeflate: drawings and graphics, and small pictures
/// that aren't photographs. It finds more repetition than our encoder, but can't compress strip by strip.
bool DeflatesWhole(PngContent content, std::size_t byte_count);

/// Writes the filtered rows as one IDAT chunk. Throws std::bad_alloc. False if writing failed.
[[nodiscard]] bool WriteDeflated(OutputFile& out, Bytes rows);

/// Writes one zlib stream strip by strip, keeping only the filtered rows of the current strip and the 32 KB
/// before it. Where matches don't shrink a strip clearly, as in most photographs, only runs are coded.
class PngDeflater
{
public:
    /// row_bytes includes the filter byte; pixel_bytes is 1 to 4. Throws std::bad_alloc.
    PngDeflater(OutputFile& out, std::size_t row_bytes, std::size_t rows, std::uint32_t pixel_bytes,
                PngContent content);

    /// Where to put the next row. Up to kSlack bytes past it may be overwritten too.
    std::uint8_t* NextRow() { return Buffer() + filled_; }
    static constexpr std::size_t kSlack = 64;

    /// Call this when the row at NextRow() is complete. After the last row the stream is finished. False if
    /// writing failed.
    [[nodiscard]] bool FinishRow();

private:
    std::uint8_t* Buffer() { return buffer_.data() + PngMatchFinder::kFrontSlack; }
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

    PixelBytes buffer_;       ///< slack, the 32 KB window, then the strip
    std::size_t begin_ = 0;   ///< start of the strip
    std::size_t filled_ = 0;  ///< end of the rows so far

    PngTokens runs_;
    PngTokens matches_;
    PngCosts costs_ = FirstPngCosts();  ///< from the runs of the previous strip
    PngMatchFinder finder_;
    bool is_noise_ = false;
    std::uint32_t skip_ = 0;  ///< strips left that reuse the verdict that matches don't pay
    std::uint32_t max_skip_ = 0;

    PixelBytes packed_;  ///< the current chunk's data
    PngBitWriter bits_;
    std::uint32_t adler_ = 1;
};
