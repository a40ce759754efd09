// Reads the basic structures of EMF+ records.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/metafile/canvas/geometry.h"

/// How a record stores its points.
enum class PointFormat { kFloat, kShort, kRelative };

double ReadFloat(ByteReader& reader);
Point ReadPointF(ByteReader& reader);
/// Position and size, as four floats or four 16-bit integers.
Rect ReadRectF(ByteReader& reader, bool compressed = false);
Affine ReadMatrix(ByteReader& reader);
/// Nothing if data is missing.
std::optional<std::vector<Point>> ReadPlusPoints(ByteReader& reader, std::uint64_t count, PointFormat format);
/// Nothing if data is missing.
std::optional<std::vector<double>> ReadFloats(ByteReader& reader, std::uint64_t count);
