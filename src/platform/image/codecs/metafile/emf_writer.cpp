// Writes an EMF with the four records it takes to show a picture.
#include "src/platform/image/codecs/metafile/emf.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"

static constexpr std::uint32_t kHeaderSize = 108;
static constexpr std::uint32_t kStretchModeSize = 12;
static constexpr std::uint32_t kBitmapRecordSize = 80;
static constexpr std::uint32_t kEndSize = 20;
static constexpr std::uint32_t kColorOnColor = 3;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

// A reference device with an integral number of millimetres: 1920 pixels at 96 dpi are 508 mm.
static constexpr std::uint32_t kDeviceWidth = 1920;
static constexpr std::uint32_t kDeviceHeight = 1440;
static constexpr std::uint32_t kDeviceMillimetresWide = 508;
static constexpr std::uint32_t kDeviceMillimetresHigh = 381;

// The number of continuation bytes after the first byte of a UTF-8 character.
static std::size_t ContinuationBytes(std::uint8_t first)
{
    return first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
}

static void AppendUtf16(std::vector<std::uint16_t>& words, const std::string& text)
{
    for (std::size_t n = 0; n < text.size();) {
        const auto first = static_cast<std::uint8_t>(text[n++]);
        const std::size_t more = ContinuationBytes(first);
        std::uint32_t code = more == 0 ? first : first & (0x3Fu >> more);
        for (std::size_t i = 0; i < more && n < text.size(); ++i)
            code = code << 6 | (static_cast<std::uint8_t>(text[n++]) & 0x3F);
        if (code >= 0x10000 && code <= 0x10FFFF) {
            words.push_back(static_cast<std::uint16_t>(0xD800 + ((code - 0x10000) >> 10)));
            words.push_back(static_cast<std::uint16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
        } else if (code != 0)
            words.push_back(static_cast<std::uint16_t>(code));
    }
}

// The program's name and the user's texts, each NUL-terminated, with a second NUL at the end.
static std::vector<std::uint16_t> DescriptionOf(const ImageInfoTexts& texts)
{
    std::string about;
    for (const std::string* text : {&texts.sTitle, &texts.sDescription, &texts.sAuthor, &texts.sCopyright})
        if (!text->empty())
            about += (about.empty() ? "" : "; ") + *text;
    std::vector<std::uint16_t> words;
    if (about.empty())
        return words;
    AppendUtf16(words, "Varnel");
    words.push_back(0);
    AppendUtf16(words, about);
    words.push_back(0);
    words.push_back(0);
    return words;
}

static std::uint32_t FrameExtent(std::int32_t pixels)
{
    return static_cast<std::uint32_t>(std::lround(pixels * 2540.0 / 96));
}

static void WriteHeader(const ImageBuffer& image, const std::vector<std::uint16_t>& about,
                        std::uint32_t header_size, std::uint32_t file_size, OutputFile& out)
{
    const auto width = static_cast<std::uint32_t>(image.width);
    const auto height = static_cast<std::uint32_t>(image.height);
    for (const std::uint32_t n : {1u, header_size,                // header record
                                  0u, 0u, width - 1, height - 1,  // bounds, inclusive
                                  0u, 0u, FrameExtent(image.width), FrameExtent(image.height), 0x464D4520u,
                                  0x10000u, file_size, 4u})  // signature, version, bytes, records
        out.WriteU32Le(n);
    out.WriteU16Le(1);  // one handle: the metafile itself
    out.WriteU16Le(0);
    const auto words = static_cast<std::uint32_t>(about.size());
    for (const std::uint32_t n : {words, words == 0 ? 0u : kHeaderSize, 0u,  // description, palette
                                  kDeviceWidth, kDeviceHeight, kDeviceMillimetresWide, kDeviceMillimetresHigh,
                                  0u, 0u, 0u,  // pixel format
                                  kDeviceMillimetresWide * 1000, kDeviceMillimetresHigh * 1000})
        out.WriteU32Le(n);
    for (const std::uint16_t word : about)
        out.WriteU16Le(word);
    if (about.size() % 2 != 0)
        out.WriteU16Le(0);
}

bool EncodeEmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    const std::vector<std::uint16_t> about = DescriptionOf(settings.texts);
    const std::uint64_t header_size = kHeaderSize + (about.size() + 1) / 2 * 4;
    const std::uint64_t dib = MetafileDibHeaderSize(image) + MetafileDibBitsSize(image);
    const std::uint64_t file_size = header_size + kStretchModeSize + kBitmapRecordSize + dib + kEndSize;
    if (file_size > std::numeric_limits<std::uint32_t>::max())
        return false;
    WriteHeader(image, about, static_cast<std::uint32_t>(header_size), static_cast<std::uint32_t>(file_size),
                out);
    for (const std::uint32_t n : {21u, kStretchModeSize, kColorOnColor})
        out.WriteU32Le(n);

    const auto width = static_cast<std::uint32_t>(image.width);
    const auto height = static_cast<std::uint32_t>(image.height);
    const std::uint32_t dib_header = MetafileDibHeaderSize(image);
    for (const std::uint32_t n : {81u,
                                  static_cast<std::uint32_t>(kBitmapRecordSize + dib),
                                  0u,
                                  0u,
                                  width - 1,
                                  height - 1,  // bounds
                                  0u,
                                  0u,
                                  0u,
                                  0u,
                                  width,
                                  height,  // destination and source origin, source size
                                  kBitmapRecordSize,
                                  dib_header,
                                  kBitmapRecordSize + dib_header,
                                  static_cast<std::uint32_t>(MetafileDibBitsSize(image)),
                                  0u,
                                  kSourceCopy,
                                  width,
                                  height})
        out.WriteU32Le(n);
    if (!WriteMetafileDib(image, out))
        return false;
    for (const std::uint32_t n : {14u, kEndSize, 0u, 0x10u, kEndSize})
        out.WriteU32Le(n);
    return !out.Failed();
}
