// Reads and builds application segments.
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

using namespace std::string_view_literals;

static constexpr std::string_view kExifName = "Exif\0\0"sv;
static constexpr std::string_view kXmpName = "http://ns.adobe.com/xap/1.0/\0"sv;
static constexpr std::string_view kIccName = "ICC_PROFILE\0"sv;
static constexpr std::string_view kPhotoshopName = "Photoshop 3.0\0"sv;
static constexpr std::uint16_t kIptcResource = 0x0404;
static constexpr std::size_t kLongestSegment = 65533;
static constexpr std::size_t kProfileLimit = 16 * 1024 * 1024;

static bool BeginsWith(Bytes bytes, std::string_view name)
{
    return bytes.size() >= name.size() &&
           std::equal(name.begin(), name.end(), bytes.begin(),
                      [](char c, auto n) { return static_cast<std::uint8_t>(c) == n; });
}

static std::vector<std::uint8_t> CopyBytes(Bytes bytes)
{
    return {bytes.begin(), bytes.end()};
}

namespace
{
// Assembles a profile from numbered parts, which may come in any order.
class ProfileParts
{
public:
    void Add(Bytes segment)
    {
        ByteReader reader(segment);
        const std::size_t number = reader.U8();
        const std::size_t parts = reader.U8();
        part_count_ = part_count_ == 0 ? parts : part_count_;
        if (reader.Failed() || number < 1 || number > parts || parts != part_count_ ||
            !parts_[number].empty()) {
            broken_ = true;
            return;
        }
        parts_[number] = segment.subspan(2);
    }
    std::vector<std::uint8_t> Assemble() const
    {
        std::vector<std::uint8_t> profile;
        for (std::size_t i = 1; i <= part_count_ && !broken_; ++i) {
            if (parts_[i].empty() || profile.size() > kProfileLimit)
                return {};
            profile.insert(profile.end(), parts_[i].begin(), parts_[i].end());
        }
        return profile;
    }

private:
    std::array<Bytes, 256> parts_;
    std::size_t part_count_ = 0;
    bool broken_ = false;
};
}  // namespace

// The IPTC datasets in Photoshop's image resources: "8BIM", an ID, a name and data, the latter two padded to
// even lengths.
static std::vector<std::uint8_t> IptcOfResources(Bytes resources)
{
    ByteReader reader(resources);
    while (reader.Left() >= 12) {
        const Bytes mark = reader.Take(4);
        const std::uint16_t number = reader.U16Be();
        const std::uint8_t name = reader.U8();
        reader.Take(name % 2 == 0 ? name + 1u : name);
        const std::uint64_t size = reader.U32Be();
        const Bytes data = reader.Take(size);
        if (!BeginsWith(mark, "8BIM") || reader.Failed())
            break;
        if (number == kIptcResource && !data.empty() && data[0] == 0x1C)
            return CopyBytes(data);
        reader.Take(size % 2 != 0 && reader.Left() > 0 ? 1 : 0);
    }
    return {};
}

static void ReadFrame(Bytes segment, std::uint8_t marker, JpegSegments& segments)
{
    ByteReader reader(segment);
    reader.U8();  // bits per sample
    const std::uint16_t height = reader.U16Be();
    const std::uint16_t width = reader.U16Be();
    if (reader.Failed() || segments.has_frame)
        return;
    segments.has_frame = true;
    segments.width = width;
    segments.height = height;
    segments.arithmetic = marker > 0xC8;
}

// True for stuffed zeros, restart markers and others without a length.
static bool HasNoSegment(std::uint8_t marker)
{
    return marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

// True if an end marker comes next.
static bool IsEnd(Bytes rest)
{
    return rest.size() >= 2 && rest[0] == 0xFF && rest[1] == 0xD9;
}

Bytes WithoutTruncatedSegment(Bytes file)
{
    if (file.size() < 2 || IsEnd(file.last(2)))
        return file;
    auto at = file.begin();
    while ((at = std::find(at, file.end(), 0xFF)) != file.end()) {
        const Bytes rest(at, file.end());
        const std::uint8_t marker = rest.size() > 1 ? rest[1] : std::uint8_t{0};
        if (IsEnd(rest))
            return file;
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        std::size_t size = 2;
        if (!HasNoSegment(marker) && rest.size() >= 4)
            size += rest[2] * 256u + rest[3];
        else if (!HasNoSegment(marker))
            size = rest.size() + 1;
        if (size > rest.size())
            return Bytes(file.begin(), at);
        at += static_cast<std::ptrdiff_t>(size);
    }
    return file;
}

JpegSegments ReadSegments(Bytes file)
{
    JpegSegments segments;
    ProfileParts profile;
    std::vector<std::uint8_t> resources;
    ByteReader reader(file);
    reader.Take(2);
    while (!reader.Failed()) {
        // Skip garbage between segments, as decoders do.
        std::uint8_t marker = reader.U8();
        if (marker != 0xFF)
            continue;
        while (marker == 0xFF && !reader.Failed())
            marker = reader.U8();
        if (HasNoSegment(marker))
            continue;
        if (marker == 0xD9)
            break;
        const std::uint16_t length = reader.U16Be();
        const Bytes segment = reader.Take(length < 2 ? 0u : length - 2u);
        if (marker == 0xDA) {
            segments.bytes_of_scans = reader.Failed() || IsEnd(file.last(reader.Left())) ? 0 : reader.Left();
            break;
        }
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC)
            ReadFrame(segment, marker, segments);
        else if (marker == 0xE1 && BeginsWith(segment, kExifName.substr(0, 5)) && segment.size() > 6 &&
                 segments.metadata.exif.empty())
            segments.metadata.exif = CopyBytes(segment.subspan(6));
        else if (marker == 0xE1 && BeginsWith(segment, kXmpName) && segments.metadata.xmp.empty())
            segments.metadata.xmp = CopyBytes(segment.subspan(kXmpName.size()));
        else if (marker == 0xE2 && BeginsWith(segment, kIccName))
            profile.Add(segment.subspan(kIccName.size()));
        else if (marker == 0xED && BeginsWith(segment, kPhotoshopName))
            resources.insert(resources.end(), segment.begin() + kPhotoshopName.size(), segment.end());
    }
    segments.metadata.iptc = IptcOfResources(resources);
    segments.icc_profile = profile.Assemble();
    return segments;
}

static JpegSegment MakeSegment(int application, std::string_view name, Bytes bytes)
{
    JpegSegment result{application, {name.begin(), name.end()}};
    result.bytes.insert(result.bytes.end(), bytes.begin(), bytes.end());
    return result;
}

// The packet without the padding before its end marker, which only leaves room for in-place editing.
static std::vector<std::uint8_t> WithoutPadding(const std::vector<std::uint8_t>& xmp)
{
    static constexpr std::string_view kEnd = "<?xpacket end"sv;
    const auto end = std::find_end(xmp.begin(), xmp.end(), kEnd.begin(), kEnd.end());
    const auto blank = [](std::uint8_t n) { return n == ' ' || n == '\n' || n == '\r' || n == '\t'; };
    const auto padding = std::find_if_not(std::make_reverse_iterator(end), xmp.rend(), blank).base();
    std::vector<std::uint8_t> result(xmp.begin(), padding);
    result.insert(result.end(), end, xmp.end());
    return result;
}

static std::vector<std::uint8_t> ResourceOfIptc(Bytes iptc)
{
    std::vector<std::uint8_t> resource = {'8', 'B', 'I', 'M', kIptcResource >> 8, kIptcResource & 0xFF, 0, 0};
    for (const unsigned shift : {24u, 16u, 8u, 0u})
        resource.push_back(static_cast<std::uint8_t>(iptc.size() >> shift));
    resource.insert(resource.end(), iptc.begin(), iptc.end());
    resource.resize((resource.size() + 1) / 2 * 2);
    return resource;
}

std::vector<JpegSegment> SegmentsToWrite(const ImageMetadata& metadata, Bytes icc_profile)
{
    std::vector<JpegSegment> segments;
    const auto add_if_it_fits = [&](JpegSegment segment) {
        if (segment.bytes.size() <= kLongestSegment)
            segments.push_back(std::move(segment));
    };
    if (!metadata.exif.empty())
        add_if_it_fits(MakeSegment(1, kExifName, metadata.exif));
    if (metadata.xmp.size() + kXmpName.size() > kLongestSegment)
        add_if_it_fits(MakeSegment(1, kXmpName, WithoutPadding(metadata.xmp)));
    else if (!metadata.xmp.empty())
        add_if_it_fits(MakeSegment(1, kXmpName, metadata.xmp));
    if (!metadata.iptc.empty())
        add_if_it_fits(MakeSegment(13, kPhotoshopName, ResourceOfIptc(metadata.iptc)));

    const std::size_t max_part = kLongestSegment - kIccName.size() - 2;
    const std::size_t parts = (icc_profile.size() + max_part - 1) / max_part;
    for (std::size_t i = 0; i < parts && parts <= 255; ++i) {
        JpegSegment segment = MakeSegment(2, kIccName, {});
        segment.bytes.push_back(static_cast<std::uint8_t>(i + 1));
        segment.bytes.push_back(static_cast<std::uint8_t>(parts));
        const Bytes bytes =
            icc_profile.subspan(i * max_part, std::min(max_part, icc_profile.size() - i * max_part));
        segment.bytes.insert(segment.bytes.end(), bytes.begin(), bytes.end());
        segments.push_back(std::move(segment));
    }
    return segments;
}
