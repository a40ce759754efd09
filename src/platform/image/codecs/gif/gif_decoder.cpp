// Composes the frames of a GIF on its logical screen.
#include "src/platform/image/codecs/gif/gif_decoder.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/pixels/pixel_rows.h"

// The screen size costs the file nothing, so a few bytes may claim any. Up to this many pixels that is
// harmless; beyond, the file must be large enough to fill the screen.
static constexpr std::uint64_t kHarmlessScreen = 16'000'000;
static constexpr std::uint64_t kScreenPixelsPerByte = 4096;

std::unique_ptr<GifDecoder> GifDecoder::Open(Bytes file)
{
    std::unique_ptr<GifDecoder> decoder(new GifDecoder(file));
    return decoder->ReadFile() ? std::move(decoder) : nullptr;
}

bool GifDecoder::ReadFile()
{
    const auto reader = GifReader::Open(file_);
    if (!reader)
        return false;
    width_ = reader->ScreenWidth();
    height_ = reader->ScreenHeight();
    GifFrame frame;
    while (frames_ < kMaxGifFrames) {
        const GifReader::Found found = reader->NextFrame(frame);
        if (found == GifReader::Found::kEnd)
            break;
        // Some writers leave the screen size 0: use the extent of the first frame.
        if (frames_ == 0 && width_ == 0)
            width_ = frame.left + frame.width;
        if (frames_ == 0 && height_ == 0)
            height_ = frame.top + frame.height;
        ++frames_;
        if (found == GifReader::Found::kBroken || !reader->SkipPixels())
            break;
    }
    const std::uint64_t pixels = std::uint64_t{width_} * height_;
    return frames_ > 0 && IsSizeAllowed(width_, height_) &&
           (pixels <= kHarmlessScreen || pixels / kScreenPixelsPerByte <= file_.size());
}

bool GifDecoder::Restart()
{
    reader_ = GifReader::Open(file_);
    drawn_ = 0;
    disposal_ = GifDisposal::kKeep;
    screen_.assign(std::size_t{width_} * height_ * 4, 0);
    return reader_ != nullptr;
}

GifDecoder::Area GifDecoder::AreaOf(const GifFrame& frame) const
{
    return {std::min(frame.left, width_), std::min(frame.top, height_),
            std::min(frame.left + frame.width, width_), std::min(frame.top + frame.height, height_)};
}

// Applies the disposal of the last frame drawn.
void GifDecoder::Dispose()
{
    if (disposal_ == GifDisposal::kKeep)
        return;
    const std::size_t row_bytes = std::size_t{dispose_area_.right - dispose_area_.left} * 4;
    if (row_bytes == 0)
        return;
    const std::uint8_t* before = before_.data();
    for (std::uint32_t y = dispose_area_.top; y < dispose_area_.bottom; ++y) {
        std::uint8_t* row = &screen_[(std::size_t{y} * width_ + dispose_area_.left) * 4];
        if (disposal_ == GifDisposal::kClear) {
            std::memset(row, 0, row_bytes);
        } else {
            std::memcpy(row, before, row_bytes);
            before += row_bytes;
        }
    }
}

bool GifDecoder::DrawFrame(const GifFrame& frame, const Area& area)
{
    if (frame.width == 0 || frame.height == 0)
        return reader_->SkipPixels();
    PixelBytes row(frame.width);
    GifRowOrder order(frame.height, frame.interlaced);
    for (std::uint32_t i = 0; i < frame.height; ++i) {
        if (!reader_->ReadRow(row))
            return false;
        const std::uint32_t y = frame.top + order.Next();
        if (y >= area.bottom || area.left == area.right)
            continue;
        std::uint8_t* out = &screen_[(std::size_t{y} * width_ + area.left) * 4];
        for (std::uint32_t x = 0; x < area.right - area.left; ++x, out += 4)
            if (row[x] != frame.transparent)
                std::memcpy(out, frame.colours[row[x]].data(), 4);
    }
    return true;
}

bool GifDecoder::DrawNext()
{
    GifFrame frame;
    if (reader_->NextFrame(frame) != GifReader::Found::kFrame)
        return false;
    Dispose();
    disposal_ = frame.disposal;
    dispose_area_ = AreaOf(frame);
    if (disposal_ == GifDisposal::kRestore) {
        before_.clear();
        for (std::uint32_t y = dispose_area_.top; y < dispose_area_.bottom; ++y) {
            const auto row = screen_.begin() + static_cast<std::ptrdiff_t>(std::size_t{y} * width_ * 4);
            before_.insert(before_.end(), row + std::ptrdiff_t{dispose_area_.left} * 4,
                           row + std::ptrdiff_t{dispose_area_.right} * 4);
        }
    }
    return DrawFrame(frame, dispose_area_);
}

bool GifDecoder::DecodeFrame(std::int32_t frame, ImageBuffer& image)
{
    if (frame < 0 || frame >= frames_ || (broken_ && frame >= *broken_))
        return false;
    if ((!reader_ || frame + 1 < drawn_) && !Restart())
        return false;
    while (drawn_ <= frame) {
        if (!DrawNext()) {
            // The canvas under later frames is undefined.
            broken_ = drawn_;
            reader_.reset();
            return false;
        }
        ++drawn_;
    }
    return CopyScreen(image);
}

bool GifDecoder::CopyScreen(ImageBuffer& image) const
{
    std::uint8_t opaque = 255;
    std::uint8_t colour = 0;
    const std::size_t pixels = screen_.size() / 4;
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint8_t* pixel = &screen_[i * 4];
        colour |= static_cast<std::uint8_t>((pixel[0] ^ pixel[1]) | (pixel[2] ^ pixel[1]));
        opaque &= pixel[3];
    }
    const std::int32_t channels = opaque != 255 ? 4 : colour == 0 ? 1 : 3;
    ImageBuffer result;
    if (!Allocate(result, width_, height_, channels))
        return false;
    if (channels == 4)
        std::copy(screen_.begin(), screen_.end(), result.bytes.begin());
    else if (channels == 3)
        PackRowFromFourBytes(screen_.data(), result.bytes.data(), pixels);
    else
        for (std::size_t i = 0; i < pixels; ++i)
            result.bytes[i] = screen_[i * 4];
    image = std::move(result);
    return true;
}
