// Writes the headers and the few records of a WMF that shows a picture.
#include "src/platform/image/codecs/metafile/wmf_writer.h"

#include <array>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"

static constexpr std::int32_t kMostPixels = 32767;
static constexpr std::uint16_t kUnitsPerInch = 96;

static constexpr std::uint32_t kHeaderWords = 9;
static constexpr std::uint32_t kModeWords = 4;
static constexpr std::uint32_t kWindowWords = 5;
static constexpr std::uint32_t kBitmapWords = 14;  // without the bitmap
static constexpr std::uint32_t kEndWords = 3;

static constexpr std::uint16_t kAnisotropic = 8;
static constexpr std::uint16_t kColorOnColor = 3;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static void WriteWords(OutputFile& objOut, std::initializer_list<std::uint16_t> aWords)
{
    for (const std::uint16_t nWord : aWords)
        objOut.WriteU16Le(nWord);
}

static void WriteRecord(OutputFile& objOut, std::uint32_t nWords, std::initializer_list<std::uint16_t> aWords)
{
    objOut.WriteU32Le(nWords);
    WriteWords(objOut, aWords);
}

static void WritePlaceableHeader(std::uint16_t nWidth, std::uint16_t nHeight, OutputFile& objOut)
{
    // Mark, handle, left, top, right, bottom, units, two words reserved; then their exclusive or.
    const std::array<std::uint16_t, 10> aWords{0xCDD7, 0x9AC6, 0, 0, 0, nWidth, nHeight, kUnitsPerInch, 0, 0};
    std::uint16_t nCheck = 0;
    for (const std::uint16_t nWord : aWords) {
        objOut.WriteU16Le(nWord);
        nCheck = nCheck ^ nWord;
    }
    objOut.WriteU16Le(nCheck);
}

bool bWriteWmf(const ImageBuffer& aImage, const SaveSettings&, OutputFile& objOut)
{
    if (aImage.width > kMostPixels || aImage.height > kMostPixels)
        return false;
    const auto nWidth = static_cast<std::uint16_t>(aImage.width);
    const auto nHeight = static_cast<std::uint16_t>(aImage.height);
    const std::uint64_t nDib = nMetafileDibHeaderSize(aImage) + nMetafileDibBitsSize(aImage);
    const auto nBitmapWords = static_cast<std::uint32_t>(kBitmapWords + nDib / 2);
    const std::uint32_t nFileWords =
        kHeaderWords + 2 * kModeWords + 2 * kWindowWords + nBitmapWords + kEndWords;

    WritePlaceableHeader(nWidth, nHeight, objOut);
    WriteWords(objOut, {1, kHeaderWords, 0x0300});
    objOut.WriteU32Le(nFileWords);
    objOut.WriteU16Le(0);  // objects
    objOut.WriteU32Le(nBitmapWords);
    objOut.WriteU16Le(0);
    WriteRecord(objOut, kModeWords, {0x0103, kAnisotropic});
    WriteRecord(objOut, kWindowWords, {0x020B, 0, 0});
    WriteRecord(objOut, kWindowWords, {0x020C, nHeight, nWidth});
    WriteRecord(objOut, kModeWords, {0x0107, kColorOnColor});
    objOut.WriteU32Le(nBitmapWords);
    objOut.WriteU16Le(0x0F43);
    objOut.WriteU32Le(kSourceCopy);
    // Usage of the colours; source height, width, y and x; target height, width, y and x.
    WriteWords(objOut, {0, nHeight, nWidth, 0, 0, nHeight, nWidth, 0, 0});
    if (!bWriteMetafileDib(aImage, objOut))
        return false;
    WriteRecord(objOut, kEndWords, {0});
    return !objOut.Failed();
}
