// Builds EMF and WMF files record by record.
#include "tests/platform/image/support/metafile_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"

static ByteMaker MakeDibHeader(std::int32_t width, std::int32_t height, std::uint32_t bits)
{
    ByteMaker result;
    result.U32Le({40, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)});
    result.U16Le({1, bits}).Zeros(24);
    return result;
}

static Dib DibOf(std::int32_t width, const std::vector<std::uint32_t>& colors, std::uint32_t bits)
{
    const std::int32_t height = static_cast<std::int32_t>(colors.size()) / width;
    Dib dib{MakeDibHeader(width, height, bits), {}};
    for (std::int32_t y = height; y-- > 0;) {
        for (std::int32_t x = 0; x < width; ++x) {
            const auto n = static_cast<int>(colors[static_cast<std::size_t>(y * width + x)]);
            dib.bits.U8({n >> 16 & 255, n >> 8 & 255, n & 255});
            if (bits == 32)
                dib.bits.U8({n >> 24 & 255});
        }
        while (dib.bits.Size() % 4 != 0)
            dib.bits.U8({0});
    }
    return dib;
}

Dib Dib24(std::int32_t width, const std::vector<std::uint32_t>& colors)
{
    return DibOf(width, colors, 24);
}

Dib Dib32(std::int32_t width, const std::vector<std::uint32_t>& colors)
{
    return DibOf(width, colors, 32);
}

Dib Dib1(const std::vector<std::string_view>& rows, std::uint32_t first, std::uint32_t second)
{
    const auto width = static_cast<std::int32_t>(rows[0].size());
    Dib dib{MakeDibHeader(width, static_cast<std::int32_t>(rows.size()), 1), {}};
    for (const std::uint32_t n : {first, second})
        dib.header.U8(
            {static_cast<int>(n >> 16 & 255), static_cast<int>(n >> 8 & 255), static_cast<int>(n & 255), 0});
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        for (std::size_t x = 0; x < row->size(); x += 8) {
            int byte = 0;
            for (std::size_t n = 0; n < 8; ++n)
                byte = byte << 1 | (x + n < row->size() && (*row)[x + n] == '#' ? 1 : 0);
            dib.bits.U8({byte});
        }
        while (dib.bits.Size() % 4 != 0)
            dib.bits.U8({0});
    }
    return dib;
}

static void PutFields(ByteMaker& bytes, std::initializer_list<std::int32_t> fields)
{
    for (const std::int32_t field : fields)
        bytes.U32Le({static_cast<std::uint32_t>(field)});
}

EmfMaker::EmfMaker(std::int32_t width, std::int32_t height) : width_(width), height_(height) {}

EmfMaker& EmfMaker::Record(std::uint32_t type, const ByteMaker& data)
{
    const std::size_t filled = (data.Size() + 3) / 4 * 4;
    records_.U32Le({type, static_cast<std::uint32_t>(filled + 8)}).All(data.Data());
    records_.Zeros(filled - data.Size());
    ++record_count_;
    return *this;
}

EmfMaker& EmfMaker::Record(std::uint32_t type, std::initializer_list<std::int32_t> fields)
{
    ByteMaker data;
    PutFields(data, fields);
    return Record(type, data);
}

EmfMaker& EmfMaker::Bounded(std::uint32_t type, std::initializer_list<std::int32_t> fields)
{
    ByteMaker data;
    data.Zeros(16);
    PutFields(data, fields);
    return Record(type, data);
}

EmfMaker& EmfMaker::Pen(std::int32_t index, std::uint32_t style, std::int32_t width, std::uint32_t color)
{
    Record(Emr::kCreatePen,
           {index, static_cast<std::int32_t>(style), width, 0, static_cast<std::int32_t>(color)});
    return Select(index);
}

EmfMaker& EmfMaker::Brush(std::int32_t index, std::uint32_t color, std::uint32_t style, std::uint32_t hatch)
{
    Record(Emr::kCreateBrush, {index, static_cast<std::int32_t>(style), static_cast<std::int32_t>(color),
                               static_cast<std::int32_t>(hatch)});
    return Select(index);
}

EmfMaker& EmfMaker::GeometricPen(std::int32_t index, std::uint32_t style, std::int32_t width,
                                 std::uint32_t color, std::initializer_list<std::int32_t> dashes)
{
    ByteMaker data;
    PutFields(data, {index, 0, 0, 0, 0, static_cast<std::int32_t>(0x10000 | style), width, 0,
                     static_cast<std::int32_t>(color), 0, static_cast<std::int32_t>(dashes.size())});
    PutFields(data, dashes);
    Record(Emr::kExtCreatePen, data);
    return Select(index);
}

EmfMaker& EmfMaker::Font(std::int32_t index, std::int32_t height, std::u16string_view face,
                         std::int32_t escapement, std::int32_t weight, std::uint32_t styles)
{
    ByteMaker data;
    PutFields(data, {index, height, 0, escapement, escapement, weight});
    data.U32Le({styles, 0});  // italic, underline, strike-out, character set; precisions, quality, pitch
    for (std::size_t n = 0; n < 32; ++n)
        data.U16Le({n < face.size() ? std::uint32_t{face[n]} : 0u});
    Record(Emr::kCreateFont, data);
    return Select(index);
}

EmfMaker& EmfMaker::Text(std::int32_t x, std::int32_t y, std::u16string_view text,
                         const std::vector<std::int32_t>& steps, std::uint32_t options,
                         std::initializer_list<std::int32_t> box)
{
    constexpr std::uint32_t kTextOffset = 76;
    const auto chars = static_cast<std::uint32_t>(text.size());
    const std::uint32_t steps_offset = steps.empty() ? 0 : kTextOffset + (chars * 2 + 3) / 4 * 4;
    ByteMaker data;
    data.Zeros(16).U32Le({1, 0, 0});
    PutFields(data, {x, y});
    data.U32Le({chars, kTextOffset, options});
    PutFields(data, box);
    data.U32Le({steps_offset});
    for (const char16_t character : text)
        data.U16Le({character});
    if (!steps.empty())
        data.Zeros(chars % 2 * 2);
    for (const std::int32_t step : steps)
        data.U32Le({static_cast<std::uint32_t>(step)});
    return Record(Emr::kExtTextOutW, data);
}

EmfMaker& EmfMaker::World(std::uint32_t mode, double d11, double d12, double d21, double d22, double x,
                          double y)
{
    ByteMaker data;
    for (const double d : {d11, d12, d21, d22, x, y})
        data.U32Le({std::bit_cast<std::uint32_t>(static_cast<float>(d))});
    if (mode == 0)
        return Record(Emr::kSetWorldTransform, data);
    data.U32Le({mode});
    return Record(Emr::kModifyWorldTransform, data);
}

EmfMaker& EmfMaker::Region(std::uint32_t type, std::initializer_list<std::int32_t> before,
                           const std::vector<std::array<std::int32_t, 4>>& rects)
{
    ByteMaker data;
    const auto size = static_cast<std::uint32_t>(32 + rects.size() * 16);
    if (type != Emr::kExtSelectClipRegion)
        data.Zeros(16);
    data.U32Le({size});
    PutFields(data, before);
    data.U32Le({32, 1, static_cast<std::uint32_t>(rects.size()), size - 32}).Zeros(16);
    for (const auto& rect : rects)
        PutFields(data, {rect[0], rect[1], rect[2], rect[3]});
    return Record(type, data);
}

EmfMaker& EmfMaker::StretchDib(const Dib& dib, std::array<std::int32_t, 4> dest,
                               std::array<std::int32_t, 4> source, std::uint32_t rop)
{
    ByteMaker data;
    const auto header = static_cast<std::uint32_t>(dib.header.Size());
    data.Zeros(16);
    PutFields(data, {dest[0], dest[1], source[0], source[1], source[2], source[3]});
    data.U32Le({80, header, 80 + header, static_cast<std::uint32_t>(dib.bits.Size()), 0, rop});
    PutFields(data, {dest[2], dest[3]});
    data.All(dib.header.Data()).All(dib.bits.Data());
    return Record(Emr::kStretchDibits, data);
}

EmfMaker& EmfMaker::Transfer(std::uint32_t type, std::array<std::int32_t, 4> dest, std::uint32_t how,
                             std::array<std::int32_t, 2> source, const std::optional<Dib>& dib,
                             std::initializer_list<std::int32_t> after)
{
    ByteMaker data;
    data.Zeros(16);
    PutFields(data, {dest[0], dest[1], dest[2], dest[3]});
    data.U32Le({how});
    PutFields(data, {source[0], source[1]});
    const auto one = std::bit_cast<std::uint32_t>(1.0f);
    data.U32Le({one, 0, 0, one, 0, 0, kWhite, 0});
    const auto start = static_cast<std::uint32_t>(8 + data.Size() + 16 + after.size() * 4);
    const auto header = static_cast<std::uint32_t>(dib ? dib->header.Size() : 0);
    const auto bits = static_cast<std::uint32_t>(dib ? dib->bits.Size() : 0);
    data.U32Le({dib ? start : 0, header, dib ? start + header : 0, bits});
    PutFields(data, after);
    if (dib)
        data.All(dib->header.Data()).All(dib->bits.Data());
    return Record(type, data);
}

std::vector<std::uint8_t> EmfMaker::File() const
{
    const auto frame = [](std::int32_t pixels) {
        return static_cast<std::uint32_t>(std::lround(pixels * 2540.0 / 96));
    };
    ByteMaker file;
    const auto size = static_cast<std::uint32_t>(100 + records_.Size() + 20);
    file.U32Le(
        {1, 100, 0, 0, static_cast<std::uint32_t>(width_ - 1), static_cast<std::uint32_t>(height_ - 1)});
    file.U32Le({0, 0, frame(width_), frame(height_), 0x464D4520, 0x10000, size, record_count_ + 1});
    file.U16Le({20, 0}).U32Le({0, 0, 0, 1920, 1440, 508, 381, 0, 0, 0});
    file.All(records_.Data()).U32Le({Emr::kEof, 20, 0, 16, 20});
    return file.Data();
}

WmfMaker& WmfMaker::Record(std::uint16_t function, const ByteMaker& parameters)
{
    const std::size_t words = (parameters.Size() + 1) / 2;
    records_.U32Le({static_cast<std::uint32_t>(words + 3)}).U16Le({function}).All(parameters.Data());
    records_.Zeros(words * 2 - parameters.Size());
    return *this;
}

WmfMaker& WmfMaker::Record(std::uint16_t function, std::initializer_list<std::int32_t> words)
{
    ByteMaker parameters;
    for (const std::int32_t word : words)
        parameters.U16Le({static_cast<std::uint32_t>(word) & 0xFFFF});
    return Record(function, parameters);
}

WmfMaker& WmfMaker::Pen(std::uint16_t style, std::int16_t width, std::uint32_t color)
{
    return Record(0x02FA, {style, width, 0, Low(color), High(color)});
}

WmfMaker& WmfMaker::Brush(std::uint32_t color, std::uint16_t style, std::uint16_t hatch)
{
    return Record(0x02FC, {style, Low(color), High(color), hatch});
}

WmfMaker& WmfMaker::Font(std::int16_t height, std::string_view face, std::uint8_t char_set)
{
    ByteMaker parameters;
    parameters.U16Le({static_cast<std::uint16_t>(height), 0, 0, 0, 400});
    parameters.U8({0, 0, 0, char_set, 0, 0, 0, 0}).Text(face).Zeros(32 - face.size());
    return Record(0x02FB, parameters);
}

std::vector<std::uint8_t> WmfMaker::File() const
{
    ByteMaker file;
    if (width_ != 0) {
        file.U32Le({0x9AC6CDD7})
            .U16Le({0, 0, 0, static_cast<std::uint16_t>(width_), static_cast<std::uint16_t>(height_),
                    units_per_inch_, 0, 0});
        std::uint32_t check = 0;
        for (std::size_t n = 0; n < 20; n += 2)
            check ^= file.Data()[n] | static_cast<std::uint32_t>(file.Data()[n + 1]) << 8;
        file.U16Le({check});
    }
    const auto words = static_cast<std::uint32_t>(9 + records_.Size() / 2 + 3);
    file.U16Le({1, 9, 0x0300}).U32Le({words}).U16Le({20}).U32Le({words}).U16Le({0});
    file.All(records_.Data()).U32Le({3}).U16Le({0});
    return file.Data();
}

static ImageBuffer Render(const Codec& codec, const std::vector<std::uint8_t>& file)
{
    const std::optional<ImageBuffer> image = Decoded(codec, file);
    EXPECT_TRUE(image.has_value());
    return image.value_or(ImageBuffer{});
}

ImageBuffer Render(const EmfMaker& maker)
{
    return Render(kEmfCodec, maker.File());
}

ImageBuffer Render(const WmfMaker& maker)
{
    return Render(kWmfCodec, maker.File());
}

std::uint32_t ColorAt(const ImageBuffer& image, std::int32_t x, std::int32_t y)
{
    if (x < 0 || y < 0 || x >= image.width || y >= image.height)
        return 0xBAD00BAD;
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::uint8_t* pixel =
        image.bytes.data() +
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x)) *
            channels;
    if (channels == 1)
        return pixel[0] * 0x10101u;
    return static_cast<std::uint32_t>(pixel[0]) << 16 | static_cast<std::uint32_t>(pixel[1]) << 8 | pixel[2];
}

int CountOf(const ImageBuffer& image, std::uint32_t color, std::array<std::int32_t, 4> box)
{
    int count = 0;
    for (std::int32_t y = box[1]; y < box[3]; ++y)
        for (std::int32_t x = box[0]; x < box[2]; ++x)
            count += ColorAt(image, x, y) == color ? 1 : 0;
    return count;
}

std::array<std::int32_t, 4> InkBounds(const ImageBuffer& image)
{
    std::array<std::int32_t, 4> box{image.width, image.height, 0, 0};
    for (std::int32_t y = 0; y < image.height; ++y)
        for (std::int32_t x = 0; x < image.width; ++x)
            if (ColorAt(image, x, y) != kWhite)
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x + 1),
                       std::max(box[3], y + 1)};
    return box[2] == 0 ? std::array<std::int32_t, 4>{} : box;
}
