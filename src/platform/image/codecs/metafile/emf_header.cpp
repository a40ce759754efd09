// Reads an EMF's header and checks its records.
#include "src/platform/image/codecs/metafile/emf_header.h"

#include <cmath>

static constexpr std::uint32_t kHeaderRecord = 1;
static constexpr std::uint32_t kEndRecord = 14;
static constexpr std::uint32_t kMark = 0x464D4520;  // " EMF"
static constexpr std::uint32_t kMinHeader = 88;
static constexpr std::uint32_t kHeaderWithMicrometres = 108;
static constexpr std::uint64_t kMarkOffset = 40;

static constexpr double kHundredthsPerInch = 2540;
static constexpr double kPixelsPerInch = 96;

bool IsEmf(Bytes head)
{
    ByteReader reader(head);
    const bool valid_record = reader.U32Le() == kHeaderRecord && reader.U32Le() >= kMinHeader;
    reader.Take(kMarkOffset - 8);
    return valid_record && reader.U32Le() == kMark;
}

static std::int32_t ToPixels(double hundredths)
{
    const double d = std::floor(hundredths / kHundredthsPerInch * kPixelsPerInch + 0.5);
    return d < 1 ? 1 : d > 1e9 ? 1'000'000'000 : static_cast<std::int32_t>(d);
}

std::optional<EmfHeader> ReadEmfHeader(Bytes file)
{
    if (!IsEmf(file))
        return std::nullopt;
    ByteReader reader(file);
    EmfHeader header;
    reader.U32Le();
    header.size = reader.U32Le();
    double bounds[4], frame[4];
    for (double& d : bounds)
        d = reader.I32Le();
    for (double& d : frame)
        d = reader.I32Le();
    reader.Take(4 + 4 + 4 + 4);  // signature, version, bytes, records
    header.objects = reader.U16Le();
    reader.Take(2 + 4 + 4 + 4);  // reserved, description, palette
    const double device_x = reader.I32Le();
    const double device_y = reader.I32Le();
    double millimetres_x = reader.I32Le();
    double millimetres_y = reader.I32Le();
    if (reader.Failed())
        return std::nullopt;
    if (header.size >= kHeaderWithMicrometres && (millimetres_x <= 0 || millimetres_y <= 0)) {
        reader.Take(12);  // pixel format
        millimetres_x = reader.I32Le() / 1000.0;
        millimetres_y = reader.I32Le() / 1000.0;
    }
    const auto dots = [](double device, double millimetres) {
        return device > 0 && millimetres > 0 ? device / millimetres : kPixelsPerInch / 25.4;
    };
    header.dots_per_millimetre_x = dots(device_x, millimetres_x);
    header.dots_per_millimetre_y = dots(device_y, millimetres_y);
    if (frame[2] <= frame[0] || frame[3] <= frame[1]) {
        // Without a frame, use the drawing bounds, which are inclusive.
        for (int n = 0; n < 4; ++n)
            frame[n] = (bounds[n] + (n >= 2 ? 1 : 0)) * 100 /
                       (n % 2 == 0 ? header.dots_per_millimetre_x : header.dots_per_millimetre_y);
        if (bounds[2] < bounds[0] || bounds[3] < bounds[1])
            return std::nullopt;
    }
    header.frame_left = frame[0];
    header.frame_top = frame[1];
    header.frame_width = frame[2] - frame[0];
    header.frame_height = frame[3] - frame[1];
    header.width = ToPixels(header.frame_width);
    header.height = ToPixels(header.frame_height);
    return header;
}

bool IsWholeEmf(Bytes file)
{
    Bytes left = file;
    for (;;) {
        ByteReader reader(left);
        const std::uint32_t type = reader.U32Le();
        const std::uint32_t size = reader.U32Le();
        if (reader.Failed() || size < 8 || size > left.size())
            return false;
        if (type == kEndRecord)
            return true;
        left = left.subspan(size);
    }
}
