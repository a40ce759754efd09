// Reads numbers, points and matrices.
#include "src/platform/image/metafile/emfplus/data_readers.h"

#include <array>
#include <bit>

double ReadFloat(ByteReader& reader)
{
    return std::bit_cast<float>(reader.U32Le());
}

Point ReadPointF(ByteReader& reader)
{
    const double x = ReadFloat(reader);
    return {x, ReadFloat(reader)};
}

Rect ReadRectF(ByteReader& reader, bool compressed)
{
    std::array<double, 4> d{};
    for (double& value : d)
        value = compressed ? reader.I16Le() : ReadFloat(reader);
    return {d[0], d[1], d[0] + d[2], d[1] + d[3]};
}

Affine ReadMatrix(ByteReader& reader)
{
    std::array<double, 6> d{};
    for (double& value : d)
        value = ReadFloat(reader);
    const Affine matrix{d[0], d[1], d[2], d[3], d[4], d[5]};
    return matrix.Finite() ? matrix : Affine{};
}

// A number of 7 bits in a byte, or of 15 bits in two if the first byte's high bit is set.
static double ReadPackedNumber(ByteReader& reader)
{
    const std::int32_t first = reader.U8();
    if ((first & 0x80) == 0)
        return first < 0x40 ? first : first - 0x80;
    const std::int32_t value = (first & 0x7F) << 8 | reader.U8();
    return value < 0x4000 ? value : value - 0x8000;
}

std::optional<std::vector<Point>> ReadPlusPoints(ByteReader& reader, std::uint64_t count, PointFormat format)
{
    const std::uint64_t least = format == PointFormat::kFloat ? 8 : format == PointFormat::kShort ? 4 : 2;
    if (reader.Failed() || reader.Left() / least < count)
        return std::nullopt;
    std::vector<Point> points(count);
    Point before;
    for (Point& point : points) {
        if (format == PointFormat::kFloat)
            point = ReadPointF(reader);
        else if (format == PointFormat::kShort) {
            point.x = reader.I16Le();
            point.y = reader.I16Le();
        } else {
            point.x = before.x + ReadPackedNumber(reader);
            point.y = before.y + ReadPackedNumber(reader);
            before = point;
        }
    }
    if (reader.Failed())
        return std::nullopt;
    return points;
}

std::optional<std::vector<double>> ReadFloats(ByteReader& reader, std::uint64_t count)
{
    if (reader.Failed() || reader.Left() / 4 < count)
        return std::nullopt;
    std::vector<double> result(count);
    for (double& value : result)
        value = ReadFloat(reader);
    return result;
}
