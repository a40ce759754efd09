// Reads fonts and string formats, and picks the reader of an object.
#include <algorithm>

#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/objects.h"

static std::optional<PlusFont> ReadFont(ByteReader& reader)
{
    reader.U32Le();  // version
    PlusFont font;
    font.size = ReadFloat(reader);
    font.unit = reader.U32Le();
    font.style = reader.U32Le();
    reader.U32Le();  // reserved
    const std::uint64_t length = reader.U32Le();
    if (reader.Failed() || reader.Left() / 2 < length || !std::isfinite(font.size))
        return std::nullopt;
    font.family = Utf8(DecodeUtf16(reader.Take(length * 2)));
    return font;
}

static std::optional<PlusStringFormat> ReadStringFormat(ByteReader& reader)
{
    reader.U32Le();  // version
    PlusStringFormat format;
    format.flags = reader.U32Le();
    reader.U32Le();  // language
    format.align = reader.U32Le();
    format.line_align = reader.U32Le();
    reader.Take(4 + 4 + 4);  // digits, tab
    format.hotkey = reader.U32Le();
    format.leading = std::clamp(ClampToDrawable(ReadFloat(reader)), 0.0, 100.0);
    format.trailing = std::clamp(ClampToDrawable(ReadFloat(reader)), 0.0, 100.0);
    if (reader.Failed())
        return std::nullopt;
    return format;
}

// Wraps an object for the table.
template <typename T>
static std::optional<PlusObject> Shared(std::optional<T> object)
{
    if (!object)
        return std::nullopt;
    return PlusObject(std::make_shared<const T>(std::move(*object)));
}

std::optional<PlusObject> ReadObject(ObjectKind kind, Bytes data, const ImageFileDecoder& decode)
{
    ByteReader reader(data);
    switch (kind) {
        case ObjectKind::kBrush:
            return Shared(ReadPlusBrush(reader, decode));
        case ObjectKind::kPen:
            return Shared(ReadPlusPen(reader, decode));
        case ObjectKind::kPath:
            return Shared(ReadPlusPath(reader));
        case ObjectKind::kRegion:
            return Shared(ReadPlusRegion(reader));
        case ObjectKind::kImage:
            return Shared(ReadPlusImage(reader, decode));
        case ObjectKind::kFont:
            return Shared(ReadFont(reader));
        case ObjectKind::kStringFormat:
            return Shared(ReadStringFormat(reader));
        case ObjectKind::kImageAttributes:  // how to continue a picture beyond its edges
        case ObjectKind::kCustomLineCap:    // pens hold copies of theirs
            return PlusObject{};
    }
    return std::nullopt;
}
