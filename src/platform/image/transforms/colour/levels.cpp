// Colour operations that look at one channel's value at a time.
#include "src/platform/image/transforms/colour/levels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/tables.h"

namespace transforms
{

template <typename Formula>
static Table aTableOf(const Formula& dFormula)
{
    Table aTable;
    for (std::size_t n = 0; n < aTable.size(); ++n)
        aTable[n] = nLevel(dFormula(static_cast<double>(n)));
    return aTable;
}

static Table aAdded(std::int32_t lLevel)
{
    const double dLevel = std::clamp(lLevel, -255, 255);
    return aTableOf([=](double v) { return v + dLevel; });
}

bool Brightness(ImageBuffer& aImage, std::int32_t lLevel)
{
    if (lLevel != 0)
        ApplyTable(aImage, aAdded(lLevel));
    return true;
}

bool Contrast(ImageBuffer& aImage, double dStretch)
{
    if (std::isnan(dStretch) || dStretch <= 0)
        return true;
    const double dGain = 1 + std::min(dStretch, 1.0);
    ApplyTable(aImage, aTableOf([=](double v) { return 127.5 + dGain * (v - 127.5); }));
    return true;
}

bool Gamma(ImageBuffer& aImage, double dGamma)
{
    if (std::isnan(dGamma) || dGamma == 1)
        return true;
    const double dExponent = std::max(dGamma, 0.0);
    // 0 to the power of 0 would be 1, and black alone would jump to white when gamma reaches 0.
    ApplyTable(aImage, aTableOf([=](double v) { return v > 0 ? 255 * std::pow(v / 255, dExponent) : 0; }));
    return true;
}

bool Red(ImageBuffer& aImage, std::int32_t lLevel)
{
    if (lLevel != 0)
        ApplyTables(aImage, aIdentityTable(), aIdentityTable(), aAdded(lLevel));
    return true;
}

bool Green(ImageBuffer& aImage, std::int32_t lLevel)
{
    if (lLevel != 0)
        ApplyTables(aImage, aIdentityTable(), aAdded(lLevel), aIdentityTable());
    return true;
}

bool Blue(ImageBuffer& aImage, std::int32_t lLevel)
{
    if (lLevel != 0)
        ApplyTables(aImage, aAdded(lLevel), aIdentityTable(), aIdentityTable());
    return true;
}

bool Colorize(ImageBuffer& aImage, std::uint8_t nRed, std::uint8_t nGreen, std::uint8_t nBlue)
{
    const auto aScaled = [](std::uint8_t nShare) {
        return aTableOf([=](double v) { return v * nShare / 255; });
    };
    if (nRed < 255 || nGreen < 255 || nBlue < 255)
        ApplyTables(aImage, aScaled(nBlue), aScaled(nGreen), aScaled(nRed));
    return true;
}

bool Invert(ImageBuffer& aImage)
{
    ApplyTable(aImage, aTableOf([](double v) { return 255 - v; }));
    return true;
}

bool Posterize(ImageBuffer& aImage, std::int32_t lLevels)
{
    if (lLevels >= 256)
        return true;
    const double dSteps = std::max(lLevels, 2) - 1;
    ApplyTable(aImage, aTableOf([=](double v) { return 255 * std::floor(v * dSteps / 255 + 0.5) / dSteps; }));
    return true;
}

}  // namespace transforms
