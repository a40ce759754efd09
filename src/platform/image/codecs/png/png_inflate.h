// The zlib stream in a PNG's IDAT chunks, inflated incrementally.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "src/platform/image/codecs/png/png_chunks.h"

struct inflate_state;

/// Verifies every chunk's CRC, but not the Adler-32 of the stream: that would only reject files whose writer
/// got it wrong and which display fine everywhere else.
class PngInflater
{
public:
    /// first is the file's first IDAT; reader must outlive this object. Throws std::bad_alloc.
    PngInflater(PngChunkReader& reader, const PngChunk& first);
    ~PngInflater();

    /// Inflates the next out.size() bytes. False if the stream is broken or too short, or a CRC is wrong; out
    /// is then undefined.
    [[nodiscard]] bool Fill(std::span<std::uint8_t> out);

    /// Skips the rest of the IDAT chunks, checking their CRCs. False if the file is broken or truncated.
    /// PlaceAfter() is then the position after the last IDAT.
    [[nodiscard]] bool Finish();
    std::uint64_t PlaceAfter() const { return PngChunkReader::PlaceAfter(chunk_); }

private:
    /// Between 1 and max bytes of input; none at the end of the last chunk.
    Bytes TakeInput(std::uint32_t max);
    bool NextChunk();

    PngChunkReader& reader_;
    PngChunk chunk_;
    std::uint32_t taken_ = 0;  ///< bytes of the chunk's data consumed
    std::uint32_t sum_ = 0;    ///< CRC so far, of the chunk's type and the data consumed
    bool broken_ = false;
    bool end_ = false;  ///< the next chunk isn't an IDAT
    std::unique_ptr<inflate_state> state_;
};
