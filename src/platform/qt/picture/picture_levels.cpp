// Halves pictures.
#include "src/platform/qt/picture/picture_levels.h"

#include <algorithm>
#include <cstdint>
#include <utility>

static constexpr int kSmallestLevel = 512;

static QImage Wrap(const ImageBuffer& picture)
{
    const auto stride = static_cast<qsizetype>(picture.width) * picture.channels;
    const QImage::Format format = picture.channels == 1   ? QImage::Format_Grayscale8
                                  : picture.channels == 3 ? QImage::Format_BGR888
                                                          : QImage::Format_ARGB32;
    return {picture.bytes.data(), picture.width, picture.height, stride, format};
}

namespace
{

/// How a pixel of some channels is read as a sum, and a mean is written. Levels of colour pictures have 32
/// bits a pixel, which Qt draws fastest.
struct Grey {
    static constexpr int kIn = 1;
    static constexpr int kOut = 1;
    static void Add(const std::uint8_t* pixel, unsigned* sum) { sum[0] += pixel[0]; }
    static void Put(const unsigned* sum, std::uint8_t* pixel)
    {
        pixel[0] = static_cast<std::uint8_t>((sum[0] + 2) / 4);
    }
};
struct Bgr {
    static constexpr int kIn = 3;
    static constexpr int kOut = 4;
    static void Add(const std::uint8_t* pixel, unsigned* sum)
    {
        for (int n = 0; n < 3; ++n)
            sum[n] += pixel[n];
    }
    static void Put(const unsigned* sum, std::uint8_t* pixel)
    {
        for (int n = 0; n < 3; ++n)
            pixel[n] = static_cast<std::uint8_t>((sum[n] + 2) / 4);
        pixel[3] = 255;
    }
};
struct Premultiplied {
    static constexpr int kIn = 4;
    static constexpr int kOut = 4;
    static void Add(const std::uint8_t* pixel, unsigned* sum)
    {
        for (int n = 0; n < 4; ++n)
            sum[n] += pixel[n];
    }
    static void Put(const unsigned* sum, std::uint8_t* pixel)
    {
        for (int n = 0; n < 4; ++n)
            pixel[n] = static_cast<std::uint8_t>((sum[n] + 2) / 4);
    }
};
struct Straight : Premultiplied {
    static void Add(const std::uint8_t* pixel, unsigned* sum)
    {
        for (int n = 0; n < 3; ++n)
            sum[n] += (pixel[n] * pixel[3] + 127u) / 255u;
        sum[3] += pixel[3];
    }
};

}  // namespace

// The last row and column of an odd size count twice.
template <typename Pixel>
static void Halve(const QImage& from, QImage& to)
{
    const int last = from.width() - 1;
    for (int y = 0; y < to.height(); ++y) {
        const std::uint8_t* above = from.constScanLine(2 * y);
        const std::uint8_t* below = from.constScanLine(std::min(2 * y + 1, from.height() - 1));
        std::uint8_t* out = to.scanLine(y);
        for (int x = 0; x < to.width(); ++x) {
            const int left = 2 * x * Pixel::kIn;
            const int right = std::min(2 * x + 1, last) * Pixel::kIn;
            unsigned sum[4] = {};
            Pixel::Add(above + left, sum);
            Pixel::Add(above + right, sum);
            Pixel::Add(below + left, sum);
            Pixel::Add(below + right, sum);
            Pixel::Put(sum, out + x * Pixel::kOut);
        }
    }
}

static QImage Half(const QImage& from)
{
    const QSize size((from.width() + 1) / 2, (from.height() + 1) / 2);
    const auto halved = [&](QImage::Format format, auto halve) {
        QImage to(size, format);
        if (!to.isNull())
            halve(from, to);
        return to;
    };
    switch (from.format()) {
        case QImage::Format_Grayscale8:
            return halved(QImage::Format_Grayscale8, Halve<Grey>);
        case QImage::Format_BGR888:
            return halved(QImage::Format_RGB32, Halve<Bgr>);
        case QImage::Format_RGB32:
            return halved(QImage::Format_RGB32, Halve<Premultiplied>);
        case QImage::Format_ARGB32:
            return halved(QImage::Format_ARGB32_Premultiplied, Halve<Straight>);
        default:
            return halved(QImage::Format_ARGB32_Premultiplied, Halve<Premultiplied>);
    }
}

PictureLevels::PictureLevels(std::shared_ptr<const ImageBuffer> picture) : picture_(std::move(picture))
{
    levels_.push_back(Wrap(*picture_));
}

std::shared_ptr<const PictureLevels> PictureLevels::Make(std::shared_ptr<const ImageBuffer> picture)
{
    auto levels = std::make_shared<PictureLevels>(std::move(picture));
    while (std::max(levels->levels_.back().width(), levels->levels_.back().height()) > kSmallestLevel) {
        QImage half = Half(levels->levels_.back());
        if (half.isNull())
            break;  // no memory: the levels so far will do
        levels->levels_.push_back(std::move(half));
    }
    return levels;
}

std::size_t PictureLevels::LevelFor(double zoom) const
{
    std::size_t level = 0;
    while (level + 1 < levels_.size() && zoom <= 0.5) {
        zoom *= 2;
        ++level;
    }
    return level;
}
