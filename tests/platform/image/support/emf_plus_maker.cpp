// Builds EMF files that are drawn by EMF+ records.
#include "tests/platform/image/support/emf_plus_maker.h"

#include <gtest/gtest.h>

#include <bit>

#include "src/platform/image/codecs/metafile/emf.h"
#include "tests/platform/image/support/image_tools.h"

PlusBytes& PlusBytes::U(std::initializer_list<std::uint32_t> values)
{
    U32Le(values);
    return *this;
}

PlusBytes& PlusBytes::F(std::initializer_list<double> values)
{
    for (const double value : values)
        U32Le({std::bit_cast<std::uint32_t>(static_cast<float>(value))});
    return *this;
}

PlusBytes& PlusBytes::Utf16(std::u16string_view text)
{
    for (const char16_t unit : text)
        U16Le({unit});
    return *this;
}

PlusBytes& PlusBytes::With(const ByteMaker& other)
{
    All(other.Data());
    return *this;
}

PlusBytes SolidBrush(std::uint32_t color)
{
    return PlusBytes().U({Plus::kVersion, 0, color});
}

PlusBytes SolidPen(std::uint32_t color, double width)
{
    return PlusBytes().U({Plus::kVersion, 0, 0, 0}).F({width}).With(SolidBrush(color));
}

PlusBytes PathOf(std::initializer_list<double> coordinates, std::initializer_list<int> types)
{
    PlusBytes path;
    path.U({Plus::kVersion, static_cast<std::uint32_t>(types.size()), 0}).F(coordinates);
    path.U8(types).Zeros((4 - types.size() % 4) % 4);
    return path;
}

static ByteMaker Comment(std::uint16_t type, std::uint16_t flags, const ByteMaker& data)
{
    const std::size_t padding = (4 - data.Size() % 4) % 4;
    const auto size = static_cast<std::uint32_t>(data.Size() + padding);
    ByteMaker comment;
    comment.U32Le({size + 16, 0x2B464D45}).U16Le({type, flags}).U32Le({size + 12, size});
    comment.All(data.Data()).Zeros(padding);
    return comment;
}

EmfPlusMaker::EmfPlusMaker(std::int32_t width, std::int32_t height, bool dual) : emf_(width, height)
{
    Record(Plus::kHeader, dual ? 1 : 0, PlusBytes().U({Plus::kVersion, 1, 96, 96}));
}

EmfPlusMaker& EmfPlusMaker::Record(std::uint16_t type, std::uint16_t flags, const ByteMaker& data)
{
    emf_.Record(Emr::kComment, Comment(type, flags, data));
    return *this;
}

EmfPlusMaker& EmfPlusMaker::Object(std::uint16_t kind, std::uint16_t id, const ByteMaker& data)
{
    return Record(Plus::kObject, static_cast<std::uint16_t>(kind << 8 | id), data);
}

EmfPlusMaker& EmfPlusMaker::FillRect(std::uint32_t color, std::initializer_list<double> rect)
{
    return Record(Plus::kFillRects, Plus::kColor, PlusBytes().U({color, 1}).F(rect));
}

std::vector<std::uint8_t> EmfPlusMaker::File(bool with_end) const
{
    EmfMaker emf = emf_;
    if (with_end)
        emf.Record(Emr::kComment, Comment(Plus::kEndOfFile, 0, {}));
    return emf.File();
}

ImageBuffer Render(const EmfPlusMaker& maker)
{
    const std::optional<ImageBuffer> image = Decoded(kEmfCodec, maker.File());
    EXPECT_TRUE(image.has_value());
    return image.value_or(ImageBuffer{});
}
