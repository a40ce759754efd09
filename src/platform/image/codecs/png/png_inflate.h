// The pixels' data of a PNG: the IDAT chunks one after the other, inflated piece by piece.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "src/platform/image/codecs/png/png_chunks.h"

struct inflate_state;

/// Every chunk's check sum is held against its data. The stream's own sum is not: it would find nothing that
/// those don't, but for files whose writer got it wrong, which show well everywhere.
class PngInflater
{
public:
    /// first is the first IDAT of the file that reader reads; reader outlives this object. Throws
    /// std::bad_alloc.
    PngInflater(PngChunkReader& reader, const PngChunk& first);
    ~PngInflater();

    /// Inflates the next out.size() bytes. False when the stream ends before, is broken, or the file is; the
    /// bytes are then of no particular value.
    [[nodiscard]] bool Fill(std::span<std::uint8_t> out);

    /// Passes over what is left of the chunks, checking their sums. False when the file is broken or ends
    /// within them. PlaceAfter() is then behind the last IDAT.
    [[nodiscard]] bool Finish();
    std::uint64_t PlaceAfter() const { return PngChunkReader::PlaceAfter(chunk_); }

private:
    /// One to max next bytes of the stream; none at the end of the last chunk.
    Bytes TakeInput(std::uint32_t max);
    bool NextChunk();

    PngChunkReader& reader_;
    PngChunk chunk_;
    std::uint32_t taken_ = 0;  ///< of the chunk's data
    std::uint32_t sum_ = 0;    ///< of the chunk's letters and the data taken
    bool broken_ = false;
    bool end_ = false;  ///< the chunk after the last one is no IDAT
    std::unique_ptr<inflate_state> state_;
};
