// Converts RGB colour spaces to sRGB.
#include "src/platform/image/colour/rgb_space.h"

#include <algorithm>
#include <cmath>

using Matrix = std::array<std::array<double, 3>, 3>;
using Vector = std::array<double, 3>;

static constexpr std::size_t kEncodeSteps = 16384;  // a fifth of a level at the dark end of the sRGB curve
static constexpr double kReferenceWhite = 203;      // cd/m2, BT.2408
static constexpr double kPeak = 1000 / kReferenceWhite;

static bool IsNear(const Chromaticity& a, const Chromaticity& b)
{
    constexpr double kTolerance = 0.002;
    return std::abs(a.x - b.x) < kTolerance && std::abs(a.y - b.y) < kTolerance;
}

bool HasSrgbPrimaries(const RgbSpace& space)
{
    const RgbSpace srgb;
    return IsNear(space.white, srgb.white) && IsNear(space.red, srgb.red) &&
           IsNear(space.green, srgb.green) && IsNear(space.blue, srgb.blue);
}

bool IsUsable(const RgbSpace& space)
{
    const auto is_colour = [](const Chromaticity& c) {
        return c.y > 0.00001 && c.x >= 0 && c.x + c.y <= 1.2;
    };
    const double area = (space.green.x - space.red.x) * (space.blue.y - space.red.y) -
                        (space.blue.x - space.red.x) * (space.green.y - space.red.y);
    return is_colour(space.white) && is_colour(space.red) && is_colour(space.green) &&
           is_colour(space.blue) && std::abs(area) > 0.001;
}

static Matrix Product(const Matrix& a, const Matrix& b)
{
    Matrix result{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            for (std::size_t k = 0; k < 3; ++k)
                result[i][j] += a[i][k] * b[k][j];
    return result;
}

static Vector Product(const Matrix& a, const Vector& v)
{
    Vector result{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            result[i] += a[i][k] * v[k];
    return result;
}

static Matrix Inverse(const Matrix& m)
{
    Matrix result{};
    double determinant = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            const std::size_t a = (j + 1) % 3, b = (j + 2) % 3, c = (i + 1) % 3, d = (i + 2) % 3;
            result[i][j] = m[a][c] * m[b][d] - m[a][d] * m[b][c];
        }
        determinant += m[0][i] * result[i][0];
    }
    for (auto& row : result)
        for (double& value : row)
            value /= determinant;
    return result;
}

static Vector XyzOf(const Chromaticity& c)
{
    return {c.x / c.y, 1, (1 - c.x - c.y) / c.y};
}

// Linear RGB to CIE XYZ: the primaries, scaled so that their sum is white.
static Matrix ToXyz(const RgbSpace& space)
{
    const Vector red = XyzOf(space.red), green = XyzOf(space.green), blue = XyzOf(space.blue);
    Matrix primaries{};
    for (std::size_t i = 0; i < 3; ++i)
        primaries[i] = {red[i], green[i], blue[i]};
    const Vector scale = Product(Inverse(primaries), XyzOf(space.white));
    for (auto& row : primaries)
        for (std::size_t j = 0; j < 3; ++j)
            row[j] *= scale[j];
    return primaries;
}

// Bradford's chromatic adaptation.
static Matrix Adaptation(const Chromaticity& from, const Chromaticity& to)
{
    const Matrix bradford = {
        {{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};
    const Vector cones_from = Product(bradford, XyzOf(from)), cones_to = Product(bradford, XyzOf(to));
    Matrix scale{};
    for (std::size_t i = 0; i < 3; ++i)
        scale[i][i] = cones_to[i] / cones_from[i];
    return Product(Inverse(bradford), Product(scale, bradford));
}

static double Reinhard(double light)
{
    return light * (1 + light / (kPeak * kPeak)) / (1 + light);
}

// The PQ curve of BT.2100 gives up to 10,000 cd/m2.
static double PqLight(double sample)
{
    constexpr double kM1 = 2610.0 / 16384, kM2 = 2523.0 / 32, kC1 = 3424.0 / 4096, kC2 = 2413.0 / 128,
                     kC3 = 2392.0 / 128;
    const double root = std::pow(sample, 1 / kM2);
    return 10000 * std::pow(std::max(root - kC1, 0.0) / (kC2 - kC3 * root), 1 / kM1) / kReferenceWhite;
}

// The HLG curve of BT.2100 gives the light of the scene; a display of 1000 cd/m2 shows it with a gamma
// of 1.2.
static double HlgLight(double sample)
{
    constexpr double kA = 0.17883277, kB = 0.28466892, kC = 0.55991073;
    const double scene = sample <= 0.5 ? sample * sample / 3 : (std::exp((sample - kC) / kA) + kB) / 12;
    return kPeak * std::pow(scene, 1.2);
}

static double LightOf(const RgbSpace& space, double sample)
{
    switch (space.transfer) {
        case TransferFunction::kGamma:
            return std::pow(sample, space.gamma);
        case TransferFunction::kBt709:
            return sample < 0.081 ? sample / 4.5 : std::pow((sample + 0.099) / 1.099, 1 / 0.45);
        case TransferFunction::kPq:
            return Reinhard(PqLight(sample));
        case TransferFunction::kHlg:
            return Reinhard(HlgLight(sample));
        default:
            return sample <= 0.04045 ? sample / 12.92 : std::pow((sample + 0.055) / 1.055, 2.4);
    }
}

static std::uint8_t SrgbLevel(double light)
{
    const double clipped = std::clamp(light, 0.0, 1.0);
    const double value = clipped <= 0.0031308 ? clipped * 12.92 : 1.055 * std::pow(clipped, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(value * 255));
}

RgbSpaceToSrgb::RgbSpaceToSrgb(const RgbSpace& space, std::uint32_t bits)
    : has_matrix_(!HasSrgbPrimaries(space))
{
    const std::size_t samples = std::size_t{1} << bits;
    levels_.resize(samples);
    light_.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        const double light = LightOf(space, static_cast<double>(i) / static_cast<double>(samples - 1));
        light_[i] = static_cast<float>(light);
        levels_[i] = SrgbLevel(light);
    }
    if (!has_matrix_)
        return;
    const RgbSpace srgb;
    const Matrix to_srgb =
        Product(Inverse(ToXyz(srgb)), Product(Adaptation(space.white, srgb.white), ToXyz(space)));
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            matrix_[i][j] = static_cast<float>(to_srgb[i][j]);
    encode_.resize(kEncodeSteps);
    for (std::size_t i = 0; i < kEncodeSteps; ++i)
        encode_[i] = SrgbLevel(static_cast<double>(i) / (kEncodeSteps - 1));
}

// red is the index of the red sample; out is in BGR order.
template <typename Sample>
void RgbSpaceToSrgb::ConvertPixels(const Sample* in, std::int32_t channels, std::size_t count,
                                   std::size_t red, std::uint8_t* out) const
{
    const auto step = static_cast<std::size_t>(channels);
    const auto level = [this](float light) {
        return encode_[static_cast<std::size_t>(std::clamp(light, 0.0f, 1.0f) * (kEncodeSteps - 1) + 0.5f)];
    };
    for (std::size_t i = 0; i < count; ++i, in += step, out += step) {
        if (channels == 1) {
            out[0] = levels_[in[0]];
            continue;
        }
        const Sample samples[3] = {in[red], in[1], in[2 - red]};
        if (channels == 4)
            out[3] = static_cast<std::uint8_t>(sizeof(Sample) == 1 ? in[3] : (in[3] * 255u + 32895) >> 16);
        // Greys are the same in every space.
        if (!has_matrix_ || (samples[0] == samples[1] && samples[1] == samples[2])) {
            for (std::size_t c = 0; c < 3; ++c)
                out[2 - c] = levels_[samples[c]];
            continue;
        }
        for (std::size_t c = 0; c < 3; ++c)
            out[2 - c] = level(matrix_[c][0] * light_[samples[0]] + matrix_[c][1] * light_[samples[1]] +
                               matrix_[c][2] * light_[samples[2]]);
    }
}

void RgbSpaceToSrgb::Convert(std::uint8_t* pixels, std::int32_t channels, std::size_t count) const
{
    ConvertPixels(pixels, channels, count, 2, pixels);
}

void RgbSpaceToSrgb::Convert(const std::uint16_t* in, std::int32_t channels, std::size_t count,
                             std::uint8_t* out) const
{
    ConvertPixels(in, channels, count, 0, out);
}
