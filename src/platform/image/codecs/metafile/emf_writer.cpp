// Writes the four records of an EMF that shows a picture.
#include "src/platform/image/codecs/metafile/emf_writer.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"

static constexpr std::uint32_t kHeaderSize = 108;
static constexpr std::uint32_t kStretchModeSize = 12;
static constexpr std::uint32_t kBitmapRecordSize = 80;
static constexpr std::uint32_t kEndSize = 20;
static constexpr std::uint32_t kColorOnColor = 3;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

// A reference device on which a millimetre comes out even: 96 pixels an inch are 1920 on 508 mm.
static constexpr std::uint32_t kDeviceWidth = 1920;
static constexpr std::uint32_t kDeviceHeight = 1440;
static constexpr std::uint32_t kDeviceMillimetresWide = 508;
static constexpr std::uint32_t kDeviceMillimetresHigh = 381;

// The rest of a UTF-8 character whose first byte is given: how many bytes follow.
static std::size_t nFollowing(std::uint8_t nFirst)
{
    return nFirst >= 0xF0 ? 3 : nFirst >= 0xE0 ? 2 : nFirst >= 0xC0 ? 1 : 0;
}

static void AppendUtf16(std::vector<std::uint16_t>& aWords, const std::string& sText)
{
    for (std::size_t n = 0; n < sText.size();) {
        const auto nFirst = static_cast<std::uint8_t>(sText[n++]);
        const std::size_t nMore = nFollowing(nFirst);
        std::uint32_t nCode = nMore == 0 ? nFirst : nFirst & (0x3Fu >> nMore);
        for (std::size_t i = 0; i < nMore && n < sText.size(); ++i)
            nCode = nCode << 6 | (static_cast<std::uint8_t>(sText[n++]) & 0x3F);
        if (nCode >= 0x10000 && nCode <= 0x10FFFF) {
            aWords.push_back(static_cast<std::uint16_t>(0xD800 + ((nCode - 0x10000) >> 10)));
            aWords.push_back(static_cast<std::uint16_t>(0xDC00 + ((nCode - 0x10000) & 0x3FF)));
        } else if (nCode != 0)
            aWords.push_back(static_cast<std::uint16_t>(nCode));
    }
}

// The program's name and what the user says of the picture, each ended by a zero, and one zero more.
static std::vector<std::uint16_t> aDescription(const ImageInfoTexts& objTexts)
{
    std::string sAbout;
    for (const std::string* pText :
         {&objTexts.sTitle, &objTexts.sDescription, &objTexts.sAuthor, &objTexts.sCopyright})
        if (!pText->empty())
            sAbout += (sAbout.empty() ? "" : "; ") + *pText;
    std::vector<std::uint16_t> aWords;
    if (sAbout.empty())
        return aWords;
    AppendUtf16(aWords, "Varnel");
    aWords.push_back(0);
    AppendUtf16(aWords, sAbout);
    aWords.push_back(0);
    aWords.push_back(0);
    return aWords;
}

static std::uint32_t nFrame(std::int32_t lPixels)
{
    return static_cast<std::uint32_t>(std::lround(lPixels * 2540.0 / 96));
}

static void WriteHeader(const ImageBuffer& aImage, const std::vector<std::uint16_t>& aAbout,
                        std::uint32_t nHeaderSize, std::uint32_t nFileSize, OutputFile& objOut)
{
    const auto nWidth = static_cast<std::uint32_t>(aImage.width);
    const auto nHeight = static_cast<std::uint32_t>(aImage.height);
    for (const std::uint32_t n : {1u, nHeaderSize,                  // header record
                                  0u, 0u, nWidth - 1, nHeight - 1,  // bounds: the last pixel included
                                  0u, 0u, nFrame(aImage.width), nFrame(aImage.height), 0x464D4520u, 0x10000u,
                                  nFileSize, 4u})  // mark, version, bytes, records
        objOut.WriteU32Le(n);
    objOut.WriteU16Le(1);  // objects: the metafile itself
    objOut.WriteU16Le(0);
    const auto nWords = static_cast<std::uint32_t>(aAbout.size());
    for (const std::uint32_t n : {nWords, nWords == 0 ? 0u : kHeaderSize, 0u,  // description, palette
                                  kDeviceWidth, kDeviceHeight, kDeviceMillimetresWide, kDeviceMillimetresHigh,
                                  0u, 0u, 0u,  // pixel format
                                  kDeviceMillimetresWide * 1000, kDeviceMillimetresHigh * 1000})
        objOut.WriteU32Le(n);
    for (const std::uint16_t nWord : aAbout)
        objOut.WriteU16Le(nWord);
    if (aAbout.size() % 2 != 0)
        objOut.WriteU16Le(0);
}

bool bWriteEmf(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    const std::vector<std::uint16_t> aAbout = aDescription(objSettings.objTexts);
    const std::uint64_t nHeaderSize = kHeaderSize + (aAbout.size() + 1) / 2 * 4;
    const std::uint64_t nDib = nMetafileDibHeaderSize(aImage) + nMetafileDibBitsSize(aImage);
    const std::uint64_t nFileSize = nHeaderSize + kStretchModeSize + kBitmapRecordSize + nDib + kEndSize;
    if (nFileSize > std::numeric_limits<std::uint32_t>::max())
        return false;
    WriteHeader(aImage, aAbout, static_cast<std::uint32_t>(nHeaderSize),
                static_cast<std::uint32_t>(nFileSize), objOut);
    for (const std::uint32_t n : {21u, kStretchModeSize, kColorOnColor})
        objOut.WriteU32Le(n);

    const auto nWidth = static_cast<std::uint32_t>(aImage.width);
    const auto nHeight = static_cast<std::uint32_t>(aImage.height);
    const std::uint32_t nDibHeader = nMetafileDibHeaderSize(aImage);
    for (const std::uint32_t n : {81u,
                                  static_cast<std::uint32_t>(kBitmapRecordSize + nDib),
                                  0u,
                                  0u,
                                  nWidth - 1,
                                  nHeight - 1,  // bounds
                                  0u,
                                  0u,
                                  0u,
                                  0u,
                                  nWidth,
                                  nHeight,  // target and source corner, source size
                                  kBitmapRecordSize,
                                  nDibHeader,
                                  kBitmapRecordSize + nDibHeader,
                                  static_cast<std::uint32_t>(nMetafileDibBitsSize(aImage)),
                                  0u,
                                  kSourceCopy,
                                  nWidth,
                                  nHeight})
        objOut.WriteU32Le(n);
    if (!bWriteMetafileDib(aImage, objOut))
        return false;
    for (const std::uint32_t n : {14u, kEndSize, 0u, 0x10u, kEndSize})
        objOut.WriteU32Le(n);
    return !objOut.Failed();
}
