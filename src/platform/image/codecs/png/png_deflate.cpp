// Deflates the filtered rows of a PNG.
#include "src/platform/image/codecs/png/png_deflate.h"

#include <libdeflate.h>

#include <algorithm>
#include <memory>
#include <new>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/deflate/run_length.h"

static constexpr std::size_t kStripSize = 128 * 1024;
static constexpr std::size_t kSampleSize = 8 * 1024;
static constexpr std::size_t kSampleReach = 16 * 1024;
static constexpr std::size_t kChunkSize = 128 * 1024;
// Pictures of more bytes are never compressed as a whole, to bound the memory.
static constexpr std::size_t kMaxWhole = 64 * 1024 * 1024;
static constexpr std::size_t kSmallPicture = 64 * 1024;
static constexpr int kLibraryLevel = 4;
// Searching for matches takes three times as long, so it must save at least 1/kWorthShare of the run-length
// result.
static constexpr std::uint64_t kWorthShare = 10;
// A strip that shrinks to 1/kEmptyShare is all but empty and predicts nothing about the strips after it.
static constexpr std::uint64_t kEmptyShare = 128;
// After a strip where matches didn't pay, the next ones skip the trial: more each time, up to this many.
static constexpr std::uint32_t kMaxSkipped = 6;

bool DeflatesWhole(PngContent content, std::size_t byte_count)
{
    const bool small = content == PngContent::kFlat && byte_count <= kSmallPicture;
    const bool repeats = content == PngContent::kGraphic || content == PngContent::kDrawing;
    return small || (repeats && byte_count <= kMaxWhole);
}

bool WriteDeflated(OutputFile& out, Bytes rows)
{
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
        libdeflate_alloc_compressor(kLibraryLevel), &libdeflate_free_compressor);
    if (!compressor)
        throw std::bad_alloc();
    // Not a PixelBytes, which would make all of it resident: graphics fill only a small part.
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), rows.size());
    const auto packed = std::make_unique_for_overwrite<std::uint8_t[]>(bound);
    const std::size_t size =
        libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), packed.get(), bound);
    return size > 0 && WritePngChunk(out, PngType("IDAT"), Bytes(packed.get(), size));
}

PngDeflater::PngDeflater(OutputFile& out, std::size_t row_bytes, std::size_t rows, std::uint32_t pixel_bytes,
                         PngContent content)
    : out_(out),
      row_bytes_(row_bytes),
      rows_left_(rows),
      pixel_bytes_(pixel_bytes),
      content_(content),
      strip_size_(row_bytes * std::clamp<std::size_t>(kStripSize / row_bytes, 1, rows)),
      bits_(nullptr, 0, 0)
{
    buffer_.resize(PngMatchFinder::kFrontSlack + kPngWindow + strip_size_ + kSlack);
    std::fill_n(buffer_.begin(), PngMatchFinder::kFrontSlack, std::uint8_t{0});
    // Room for a chunk and for the block that completes it.
    packed_.resize(std::min(row_bytes * rows, kChunkSize + kStripSize * 3 / 2) + 1024);
    // zlib header: deflate, 32 KB window, no dictionary, default level.
    bits_.SetOut(packed_.data());
    bits_.Put(0x78, 8);
    bits_.Put(0x9C, 8);
    bits_.Flush();
}

bool PngDeflater::FinishRow()
{
    filled_ += row_bytes_;
    --rows_left_;
    if (rows_left_ > 0 && filled_ - begin_ < strip_size_)
        return true;
    if (!CompressStrip(rows_left_ == 0))
        return false;
    const std::size_t kept = std::min<std::size_t>(filled_, kPngWindow);
    const std::size_t moved = filled_ - kept;
    std::memmove(Buffer(), Buffer() + moved, kept);
    finder_.ShiftPositions(moved);
    begin_ = filled_ = kept;
    return true;
}

// Each strip is one block. Smaller blocks gain nothing, because each carries its code tables.
bool PngDeflater::CompressStrip(bool last)
{
    const std::uint8_t* const bytes = Buffer() + begin_;
    const std::size_t byte_count = filled_ - begin_;
    adler_ = libdeflate_adler32(adler_, bytes, byte_count);
    if (content_ == PngContent::kPhotograph || content_ == PngContent::kFlat)
        return CompressByTrial(last);
    finder_.Find(Buffer(), begin_, filled_, false, matches_);
    return WriteBlock(PngBlock(matches_, bytes, byte_count), last);
}

bool PngDeflater::CompressByTrial(bool last)
{
    const std::uint8_t* const bytes = Buffer() + begin_;
    const std::size_t byte_count = filled_ - begin_;
    FindPngRuns(bytes, byte_count, begin_, pixel_bytes_, costs_, runs_);
    const PngBlock runs(runs_, bytes, byte_count);
    costs_ = runs.Costs();

    const bool empty = runs.Bits() < 8 * byte_count / kEmptyShare;
    const bool skip = skip_ > 0 && !empty;
    skip_ -= skip ? 1 : 0;
    if (skip || !SamplePays())
        return WriteBlock(runs, last);

    finder_.Find(Buffer(), begin_, filled_, is_noise_, matches_);
    const PngBlock matches(matches_, bytes, byte_count);
    return WriteBlock(matches.Bits() < runs.Bits() ? matches : runs, last);
}

// Compresses the middle of the strip both ways and compares the sizes.
bool PngDeflater::SamplePays()
{
    const std::size_t sample_size = std::min(kSampleSize, filled_ - begin_);
    const std::size_t begin = begin_ + (filled_ - begin_ - sample_size) / 2;
    const std::uint8_t* const sample = Buffer() + begin;
    FindPngRuns(sample, sample_size, begin, pixel_bytes_, costs_, matches_);
    const std::uint64_t runs = PngBlock(matches_, sample, sample_size).Bits();
    is_noise_ = runs > 4 * sample_size;
    finder_.Find(Buffer(), begin, begin + sample_size, is_noise_, matches_, kSampleReach);
    finder_.Forget();
    Learn(PngBlock(matches_, sample, sample_size).Bits() < runs - runs / kWorthShare);
    return skip_ == 0;
}

void PngDeflater::Learn(bool paid)
{
    max_skip_ = paid ? 0 : std::min(max_skip_ + 2, kMaxSkipped);
    skip_ = max_skip_;
}

bool PngDeflater::WriteBlock(const PngBlock& block, bool last)
{
    const auto used = static_cast<std::size_t>(bits_.Out() - packed_.data());
    if (packed_.size() < used + block.MaxBytes()) {
        packed_.resize(used + block.MaxBytes());
        bits_.SetOut(packed_.data() + used);
    }
    block.Write(bits_, last);
    return FlushChunk(last);
}

// Writes the compressed data as an IDAT chunk once there is enough of it, or at the end.
bool PngDeflater::FlushChunk(bool end)
{
    if (end) {
        bits_.Align();
        for (int shift = 24; shift >= 0; shift -= 8)
            bits_.Put(adler_ >> shift & 0xFF, 8);
        bits_.Flush();
    }
    const auto used = static_cast<std::size_t>(bits_.Out() - packed_.data());
    if (!end && used < kChunkSize)
        return true;
    bits_.SetOut(packed_.data());
    return WritePngChunk(out_, PngType("IDAT"), Bytes(packed_).first(used));
}
