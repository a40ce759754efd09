// Writes a WMF with the headers and the few records it takes to show a picture.
#include "src/platform/image/codecs/metafile/wmf.h"

#include <array>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"

static constexpr std::int32_t kMaxPixels = 32767;
static constexpr std::uint16_t kUnitsPerInch = 96;

static constexpr std::uint32_t kHeaderWords = 9;
static constexpr std::uint32_t kModeWords = 4;
static constexpr std::uint32_t kWindowWords = 5;
static constexpr std::uint32_t kBitmapWords = 14;  // without the bitmap
static constexpr std::uint32_t kEndWords = 3;

static constexpr std::uint16_t kAnisotropic = 8;
static constexpr std::uint16_t kColorOnColor = 3;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static void WriteWords(OutputFile& out, std::initializer_list<std::uint16_t> words)
{
    for (const std::uint16_t word : words)
        out.WriteU16Le(word);
}

static void WriteRecord(OutputFile& out, std::uint32_t word_count, std::initializer_list<std::uint16_t> words)
{
    out.WriteU32Le(word_count);
    WriteWords(out, words);
}

static void WritePlaceableHeader(std::uint16_t width, std::uint16_t height, OutputFile& out)
{
    // Key, handle, left, top, right, bottom, units per inch, two reserved words; then the XOR of them all.
    const std::array<std::uint16_t, 10> words{0xCDD7, 0x9AC6, 0, 0, 0, width, height, kUnitsPerInch, 0, 0};
    std::uint16_t check = 0;
    for (const std::uint16_t word : words) {
        out.WriteU16Le(word);
        check = check ^ word;
    }
    out.WriteU16Le(check);
}

bool EncodeWmf(const ImageBuffer& image, const SaveSettings&, OutputFile& out)
{
    if (image.width > kMaxPixels || image.height > kMaxPixels)
        return false;
    const auto width = static_cast<std::uint16_t>(image.width);
    const auto height = static_cast<std::uint16_t>(image.height);
    const std::uint64_t dib = MetafileDibHeaderSize(image) + MetafileDibBitsSize(image);
    const auto bitmap_words = static_cast<std::uint32_t>(kBitmapWords + dib / 2);
    const std::uint32_t file_words =
        kHeaderWords + 2 * kModeWords + 2 * kWindowWords + bitmap_words + kEndWords;

    WritePlaceableHeader(width, height, out);
    WriteWords(out, {1, kHeaderWords, 0x0300});
    out.WriteU32Le(file_words);
    out.WriteU16Le(0);  // objects
    out.WriteU32Le(bitmap_words);
    out.WriteU16Le(0);
    WriteRecord(out, kModeWords, {0x0103, kAnisotropic});
    WriteRecord(out, kWindowWords, {0x020B, 0, 0});
    WriteRecord(out, kWindowWords, {0x020C, height, width});
    WriteRecord(out, kModeWords, {0x0107, kColorOnColor});
    out.WriteU32Le(bitmap_words);
    out.WriteU16Le(0x0F43);
    out.WriteU32Le(kSourceCopy);
    // Colour usage; then height, width, y and x of source and destination.
    WriteWords(out, {0, height, width, 0, 0, height, width, 0, 0});
    if (!WriteMetafileDib(image, out))
        return false;
    WriteRecord(out, kEndWords, {0});
    return !out.Failed();
}
