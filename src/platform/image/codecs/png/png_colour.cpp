// Reads gAMA, cHRM and cICP chunks.
#include "src/platform/image/codecs/png/png_colour.h"

#include <cmath>

#include "src/platform/image/codecs/png/png_info.h"

// Codes of ITU-T H.273.
static bool ReadPrimaries(std::uint32_t code, RgbSpace& space)
{
    switch (code) {
        case 1:  // BT.709 and sRGB
            return true;
        case 5:  // BT.470, system B and G
            space.red = {0.64, 0.33};
            space.green = {0.29, 0.60};
            space.blue = {0.15, 0.06};
            return true;
        case 6:  // BT.601
        case 7:  // SMPTE 240
            space.red = {0.630, 0.340};
            space.green = {0.310, 0.595};
            space.blue = {0.155, 0.070};
            return true;
        case 9:  // BT.2020 and BT.2100
            space.red = {0.708, 0.292};
            space.green = {0.170, 0.797};
            space.blue = {0.131, 0.046};
            return true;
        case 11:  // DCI-P3
            space.white = {0.314, 0.351};
            [[fallthrough]];
        case 12:  // Display P3
            space.red = {0.680, 0.320};
            space.green = {0.265, 0.690};
            space.blue = {0.150, 0.060};
            return true;
        default:
            return false;
    }
}

static bool ReadTransfer(std::uint32_t code, RgbSpace& space)
{
    switch (code) {
        case 1:   // BT.709
        case 6:   // BT.601
        case 14:  // BT.2020, 10 bits
        case 15:  // BT.2020, 12 bits
            space.transfer = TransferFunction::kBt709;
            return true;
        case 4:
            space.transfer = TransferFunction::kGamma;
            space.gamma = 2.2;
            return true;
        case 5:
            space.transfer = TransferFunction::kGamma;
            space.gamma = 2.8;
            return true;
        case 8:  // linear
            space.transfer = TransferFunction::kGamma;
            space.gamma = 1;
            return true;
        case 13:
            space.transfer = TransferFunction::kSrgb;
            return true;
        case 16:
            space.transfer = TransferFunction::kPq;
            return true;
        case 18:
            space.transfer = TransferFunction::kHlg;
            return true;
        default:
            return false;
    }
}

std::optional<RgbSpace> ReadPngCodedSpace(Bytes chunk)
{
    ByteReader reader(chunk);
    const std::uint32_t primaries = reader.U8();
    const std::uint32_t transfer = reader.U8();
    const bool is_rgb = reader.U8() == 0;
    const bool is_full_range = reader.U8() == 1;
    RgbSpace space;
    if (reader.Failed() || reader.Left() > 0 || !is_rgb || !is_full_range ||
        !ReadPrimaries(primaries, space) || !ReadTransfer(transfer, space))
        return std::nullopt;
    return space;
}

std::optional<RgbSpace> ReadPngChromaticities(Bytes chunk)
{
    ByteReader reader(chunk);
    RgbSpace space;
    for (Chromaticity* c : {&space.white, &space.red, &space.green, &space.blue}) {
        c->x = reader.U32Be() / 100'000.0;
        c->y = reader.U32Be() / 100'000.0;
    }
    if (reader.Failed() || !IsUsable(space))
        return std::nullopt;
    return space;
}

std::optional<RgbSpace> SpaceToConvert(const PngInfo& info)
{
    constexpr double kScreenGamma = 2.2;
    if (info.coded_space) {
        const bool is_srgb =
            info.coded_space->transfer == TransferFunction::kSrgb && HasSrgbPrimaries(*info.coded_space);
        return is_srgb ? std::nullopt : info.coded_space;
    }
    if (info.is_srgb || !info.icc_profile.empty() || info.gamma < 0.05 || info.gamma > 5)
        return std::nullopt;
    RgbSpace space = info.chromaticities.value_or(RgbSpace{});
    const bool is_ordinary = std::abs(1 / (info.gamma * kScreenGamma) - 1) < 0.05;
    if (is_ordinary && HasSrgbPrimaries(space))
        return std::nullopt;
    space.transfer = is_ordinary ? TransferFunction::kSrgb : TransferFunction::kGamma;
    space.gamma = 1 / info.gamma;
    return space;
}
