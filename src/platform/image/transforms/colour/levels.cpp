// Colour operations that map each channel by itself.
#include "src/platform/image/transforms/colour/levels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/tables.h"

namespace transforms
{

template <typename Formula>
static Table TableOf(const Formula& formula)
{
    Table table;
    for (std::size_t n = 0; n < table.size(); ++n)
        table[n] = ClampToLevel(formula(static_cast<double>(n)));
    return table;
}

static Table AddTable(std::int32_t level)
{
    const double added = std::clamp(level, -255, 255);
    return TableOf([=](double v) { return v + added; });
}

bool Brightness(ImageBuffer& image, std::int32_t level)
{
    if (level != 0)
        ApplyTable(image, AddTable(level));
    return true;
}

bool Contrast(ImageBuffer& image, double stretch)
{
    if (std::isnan(stretch) || stretch <= 0)
        return true;
    const double gain = 1 + std::min(stretch, 1.0);
    ApplyTable(image, TableOf([=](double v) { return 127.5 + gain * (v - 127.5); }));
    return true;
}

bool Gamma(ImageBuffer& image, double gamma)
{
    if (std::isnan(gamma) || gamma == 1)
        return true;
    const double exponent = std::max(gamma, 0.0);
    // pow(0, 0) is 1, which would make black jump to white when gamma reaches 0.
    ApplyTable(image, TableOf([=](double v) { return v > 0 ? 255 * std::pow(v / 255, exponent) : 0; }));
    return true;
}

bool Red(ImageBuffer& image, std::int32_t level)
{
    if (level != 0)
        ApplyTables(image, IdentityTable(), IdentityTable(), AddTable(level));
    return true;
}

bool Green(ImageBuffer& image, std::int32_t level)
{
    if (level != 0)
        ApplyTables(image, IdentityTable(), AddTable(level), IdentityTable());
    return true;
}

bool Blue(ImageBuffer& image, std::int32_t level)
{
    if (level != 0)
        ApplyTables(image, AddTable(level), IdentityTable(), IdentityTable());
    return true;
}

bool Colorize(ImageBuffer& image, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    const auto scaled = [](std::uint8_t share) { return TableOf([=](double v) { return v * share / 255; }); };
    if (red < 255 || green < 255 || blue < 255)
        ApplyTables(image, scaled(blue), scaled(green), scaled(red));
    return true;
}

bool Invert(ImageBuffer& image)
{
    ApplyTable(image, TableOf([](double v) { return 255 - v; }));
    return true;
}

bool Posterize(ImageBuffer& image, std::int32_t levels)
{
    if (levels >= 256)
        return true;
    const double steps = std::max(levels, 2) - 1;
    ApplyTable(image, TableOf([=](double v) { return 255 * std::floor(v * steps / 255 + 0.5) / steps; }));
    return true;
}

}  // namespace transforms
