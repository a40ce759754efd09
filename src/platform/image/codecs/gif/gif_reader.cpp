// Reads the frames of a GIF with giflib's record interface.
#include "src/platform/image/codecs/gif/gif_reader.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/limits.h"

// The most pixels per byte of LZW data: a 12-bit code expands to at most 4096 pixels, shorter codes to fewer.
static constexpr std::uint64_t kPixelsPerByte = 4096 * 8 / 12 + 1;

static constexpr std::uint8_t kMostGiflibBits = 8;

int GifReader::Give(GifFileType* gif, std::uint8_t* out, int count)
{
    auto& reader = *static_cast<GifReader*>(gif->UserData);
    const std::size_t given = std::min(reader.left_.size(), static_cast<std::size_t>(std::max(count, 0)));
    if (given > 0)
        std::memcpy(out, reader.left_.data(), given);
    const std::ptrdiff_t place = reader.code_size_ ? reader.code_size_ - reader.left_.data() : -1;
    if (place >= 0 && place < static_cast<std::ptrdiff_t>(given))
        out[place] = kMostGiflibBits;
    reader.left_ = reader.left_.subspan(given);
    return static_cast<int>(given);
}

std::unique_ptr<GifReader> GifReader::Open(Bytes file)
{
    std::unique_ptr<GifReader> reader(new GifReader(file));
    reader->gif_ = DGifOpen(reader.get(), &GifReader::Give, nullptr);
    return reader->gif_ ? std::move(reader) : nullptr;
}

GifReader::~GifReader()
{
    if (gif_)
        DGifCloseFile(gif_, nullptr);
}

std::uint32_t GifReader::ScreenWidth() const
{
    return static_cast<std::uint32_t>(gif_->SWidth);
}

std::uint32_t GifReader::ScreenHeight() const
{
    return static_cast<std::uint32_t>(gif_->SHeight);
}

// Only the graphic control matters: comment and application extensions draw nothing. A graphic control before
// a plain text extension applies to the text.
bool GifReader::ReadExtension(GifFrame& frame)
{
    int code = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(gif_, &code, &block) == GIF_ERROR)
        return false;
    if (code == PLAINTEXT_EXT_FUNC_CODE) {
        frame.disposal = GifDisposal::kKeep;
        frame.transparent = -1;
    }
    GraphicsControlBlock control{};
    if (code == GRAPHICS_EXT_FUNC_CODE && block &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
        frame.transparent = control.TransparentColor;
        // Disposal 4 is a common mistake for 3: those writers set the third bit.
        const bool restore = control.DisposalMode == DISPOSE_PREVIOUS || control.DisposalMode == 4;
        frame.disposal = restore                                      ? GifDisposal::kRestore
                         : control.DisposalMode == DISPOSE_BACKGROUND ? GifDisposal::kClear
                                                                      : GifDisposal::kKeep;
    }
    while (block)
        if (DGifGetExtensionNext(gif_, &block) == GIF_ERROR)
            return false;
    return true;
}

void GifReader::SetColours(GifFrame& frame) const
{
    const ColorMapObject* map = gif_->Image.ColorMap ? gif_->Image.ColorMap : gif_->SColorMap;
    for (std::size_t i = 0; i < frame.colours.size(); ++i) {
        const auto grey = static_cast<std::uint8_t>(i);
        if (!map)
            frame.colours[i] = {grey, grey, grey, 255};
        else if (i >= static_cast<std::size_t>(map->ColorCount))
            frame.colours[i] = {0, 0, 0, 255};
        else
            frame.colours[i] = {map->Colors[i].Blue, map->Colors[i].Green, map->Colors[i].Red, 255};
    }
}

// Reads the image descriptor. giflib refuses codes for more than 8 bits per pixel, so it is told 8 and we
// decode them.
bool GifReader::ReadImageHeader()
{
    constexpr std::size_t kDescriptor = 9;
    wide_codes_.reset();
    code_size_ = nullptr;
    if (left_.size() > kDescriptor) {
        const unsigned flags = left_[kDescriptor - 1];
        const std::size_t colours = (flags & 0x80) != 0 ? std::size_t{2} << (flags & 7) : 0;
        const std::size_t at = kDescriptor + 3 * colours;
        if (at < left_.size() && left_[at] > kMostGiflibBits && left_[at] <= kWidestGifCodes) {
            code_size_ = left_.data() + at;
            wide_codes_ = std::make_unique<GifWideCodes>(left_[at]);
        }
    }
    return DGifGetImageHeader(gif_) != GIF_ERROR;
}

GifReader::Found GifReader::NextFrame(GifFrame& frame)
{
    frame = GifFrame{};
    if (wide_codes_ && !SkipPixels())  // the data may go on after the last pixel
        return Found::kEnd;
    for (;;) {
        GifRecordType type = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(gif_, &type) == GIF_ERROR || type == TERMINATE_RECORD_TYPE)
            return Found::kEnd;
        if (type == IMAGE_DESC_RECORD_TYPE)
            break;
        if (!ReadExtension(frame))
            return Found::kEnd;
    }
    if (!ReadImageHeader())
        return Found::kBroken;
    frame.left = static_cast<std::uint32_t>(gif_->Image.Left);
    frame.top = static_cast<std::uint32_t>(gif_->Image.Top);
    frame.width = static_cast<std::uint32_t>(gif_->Image.Width);
    frame.height = static_cast<std::uint32_t>(gif_->Image.Height);
    frame.interlaced = gif_->Image.Interlace;
    SetColours(frame);
    const std::uint64_t pixels = std::uint64_t{frame.width} * frame.height;
    const bool possible =
        pixels == 0 || (IsSizeAllowed(frame.width, frame.height) && pixels <= left_.size() * kPixelsPerByte);
    return possible ? Found::kFrame : Found::kBroken;
}

bool GifReader::ReadRow(std::span<std::uint8_t> row)
{
    if (wide_codes_)
        return wide_codes_->ReadRow(left_, row);
    return DGifGetLine(gif_, row.data(), static_cast<int>(row.size())) == GIF_OK;
}

bool GifReader::SkipPixels()
{
    wide_codes_.reset();
    GifByteType* block = nullptr;
    do {
        if (DGifGetCodeNext(gif_, &block) == GIF_ERROR)
            return false;
    } while (block);
    return true;
}

std::uint32_t GifRowOrder::Next()
{
    static constexpr std::array<std::uint32_t, 4> kFirst = {0, 4, 2, 1};
    static constexpr std::array<std::uint32_t, 4> kStep = {8, 8, 4, 2};
    if (interlaced_)
        while (next_ >= height_ && pass_ + 1 < kFirst.size())
            next_ = kFirst[++pass_];
    const std::uint32_t row = next_;
    next_ += interlaced_ ? kStep[pass_] : 1;
    return row;
}
