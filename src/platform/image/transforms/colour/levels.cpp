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

OperationResult Brightness(const ImageBuffer& source, ImageBuffer& result, std::int32_t level)
{
    if (level == 0)
        return OperationResult::Unchanged;
    return ApplyTable(source, result, AddTable(level));
}

OperationResult Contrast(const ImageBuffer& source, ImageBuffer& result, double stretch)
{
    if (std::isnan(stretch) || stretch <= 0)
        return OperationResult::Unchanged;
    const double gain = 1 + std::min(stretch, 1.0);
    return ApplyTable(source, result, TableOf([=](double v) { return 127.5 + gain * (v - 127.5); }));
}

OperationResult Gamma(const ImageBuffer& source, ImageBuffer& result, double gamma)
{
    if (std::isnan(gamma) || gamma == 1)
        return OperationResult::Unchanged;
    const double exponent = std::max(gamma, 0.0);
    // pow(0, 0) is 1, which would make black jump to white when gamma reaches 0.
    return ApplyTable(source, result,
                      TableOf([=](double v) { return v > 0 ? 255 * std::pow(v / 255, exponent) : 0; }));
}

OperationResult Red(const ImageBuffer& source, ImageBuffer& result, std::int32_t level)
{
    if (level == 0)
        return OperationResult::Unchanged;
    return ApplyTables(source, result, IdentityTable(), IdentityTable(), AddTable(level));
}

OperationResult Green(const ImageBuffer& source, ImageBuffer& result, std::int32_t level)
{
    if (level == 0)
        return OperationResult::Unchanged;
    return ApplyTables(source, result, IdentityTable(), AddTable(level), IdentityTable());
}

OperationResult Blue(const ImageBuffer& source, ImageBuffer& result, std::int32_t level)
{
    if (level == 0)
        return OperationResult::Unchanged;
    return ApplyTables(source, result, AddTable(level), IdentityTable(), IdentityTable());
}

OperationResult Colorize(const ImageBuffer& source, ImageBuffer& result, std::uint8_t red, std::uint8_t green,
                         std::uint8_t blue)
{
    const auto scaled = [](std::uint8_t share) { return TableOf([=](double v) { return v * share / 255; }); };
    if (red == 255 && green == 255 && blue == 255)
        return OperationResult::Unchanged;
    return ApplyTables(source, result, scaled(blue), scaled(green), scaled(red));
}

OperationResult Invert(const ImageBuffer& source, ImageBuffer& result)
{
    return ApplyTable(source, result, TableOf([](double v) { return 255 - v; }));
}

OperationResult Posterize(const ImageBuffer& source, ImageBuffer& result, std::int32_t levels)
{
    if (levels >= 256)
        return OperationResult::Unchanged;
    const double steps = std::max(levels, 2) - 1;
    return ApplyTable(source, result,
                      TableOf([=](double v) { return 255 * std::floor(v * steps / 255 + 0.5) / steps; }));
}

}  // namespace transforms
