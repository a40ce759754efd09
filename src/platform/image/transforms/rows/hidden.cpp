// Fills hidden pixels from an image pyramid of visible colours.
#include "src/platform/image/transforms/rows/hidden.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

namespace
{

using Cell = std::array<std::uint8_t, 4>;  // blue, green, red; 0 if no pixel is visible, else 255

struct Level {
    std::size_t width, height;
    std::vector<Cell> cells;
};

// The weighted mean of the visible ones of four cells.
template <typename Weight>
Cell Mean(const std::array<const std::uint8_t*, 4>& quarters, const Weight& weight)
{
    std::uint32_t weights[4], all = 0, any = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        weights[i] = quarters[i] ? weight(quarters[i][3]) : 0U;
        all += weights[i];
        any |= weights[i] ^ weights[0];
    }
    if (all == 0)
        return {0, 0, 0, 0};
    Cell result{0, 0, 0, 255};
    for (std::size_t c = 0; c < 3; ++c) {
        std::uint32_t sum = 0;
        if (any == 0) {  // equal weights, the usual case
            for (const std::uint8_t* p : quarters)
                sum += p[c];
            result[c] = static_cast<std::uint8_t>((sum + 2) / 4);
            continue;
        }
        for (std::size_t i = 0; i < 4; ++i)
            sum += weights[i] > 0 ? weights[i] * quarters[i][c] : 0U;
        result[c] = static_cast<std::uint8_t>((sum + all / 2) / all);
    }
    return result;
}

// at(x, y) gives a cell or pixel.
template <typename At, typename Weight>
Level Halve(std::size_t width, std::size_t height, const At& at, const Weight& weight)
{
    Level level{(width + 1) / 2, (height + 1) / 2, {}};
    level.cells.resize(level.width * level.height);
    const auto inside = [&](std::size_t x, std::size_t y) {
        return x < width && y < height ? at(x, y) : nullptr;
    };
    for (std::size_t y = 0; y < level.height; ++y)
        for (std::size_t x = 0; x < level.width; ++x)
            level.cells[y * level.width + x] = Mean({inside(2 * x, 2 * y), inside(2 * x + 1, 2 * y),
                                                     inside(2 * x, 2 * y + 1), inside(2 * x + 1, 2 * y + 1)},
                                                    weight);
    return level;
}

// Each level has half the width and height of the one before; the last is a single cell.
std::vector<Level> BuildLevels(const ImageBuffer& image)
{
    std::vector<Level> result;
    result.push_back(Halve(
        static_cast<std::size_t>(image.width), static_cast<std::size_t>(image.height),
        [&](std::size_t x, std::size_t y) { return Row(image, static_cast<std::int32_t>(y)) + 4 * x; },
        [](std::uint8_t alpha) { return std::uint32_t{alpha}; }));
    while (result.back().cells.size() > 1) {
        const Level& last = result.back();
        result.push_back(Halve(
            last.width, last.height,
            [&](std::size_t x, std::size_t y) { return last.cells[y * last.width + x].data(); },
            [](std::uint8_t any) { return any ? 1U : 0U; }));
    }
    return result;
}

std::size_t CountHidden(const ImageBuffer& image)
{
    std::size_t found = 0;
    for (std::size_t i = 3; image.channels == 4 && i < image.bytes.size(); i += 4)
        found += image.bytes[i] == 0;
    return found;
}

}  // namespace

bool HasHiddenPixels(const ImageBuffer& image)
{
    return CountHidden(image) > 0;
}

HiddenColours::HiddenColours(ImageBuffer& image) : image_(image)
{
    const std::size_t count = CountHidden(image);
    if (count == 0 || 4 * count == image.bytes.size())
        return;
    std::vector<Level> all = BuildLevels(image);
    hidden_.reserve(3 * count);
    for (std::size_t i = 0; i < image.bytes.size(); i += 4)
        if (image.bytes[i + 3] == 0)
            hidden_.insert(hidden_.end(), &image.bytes[i], &image.bytes[i] + 3);

    for (std::size_t n = all.size() - 1; n-- > 0;) {
        Level& level = all[n];
        for (std::size_t i = 0; i < level.cells.size(); ++i)
            if (level.cells[i][3] == 0)
                level.cells[i] =
                    all[n + 1].cells[i / level.width / 2 * all[n + 1].width + i % level.width / 2];
    }
    const auto width = static_cast<std::size_t>(image.width);
    for (std::size_t i = 0; 4 * i < image.bytes.size(); ++i)
        if (image.bytes[4 * i + 3] == 0) {
            const Cell& cell = all[0].cells[i / width / 2 * all[0].width + i % width / 2];
            std::copy_n(cell.begin(), 3, &image.bytes[4 * i]);
        }
}

HiddenColours::~HiddenColours()
{
    const std::uint8_t* own = hidden_.data();
    for (std::size_t i = 0; i < image_.bytes.size() && own != hidden_.data() + hidden_.size(); i += 4)
        if (image_.bytes[i + 3] == 0) {
            std::copy_n(own, 3, &image_.bytes[i]);
            own += 3;
        }
}

}  // namespace transforms
