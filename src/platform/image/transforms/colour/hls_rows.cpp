// The arithmetic of hue, lightness and saturation, compiled for finite numbers only.
#include "src/platform/image/transforms/colour/hls_rows.h"

#include <cmath>

#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{
struct Pixel {
    float blue, green, red;
};
}  // namespace

ROW_LOOP_PART static float Clamp(float f, float low, float high)
{
    f = f < low ? low : f;
    return f > high ? high : f;
}

// M and m stay while the hue rotates: each channel becomes m + C times its weight at the new hue, which is 1
// within 60 degrees of the channel's own hue and falls to 0 at 120.
ROW_LOOP_PART static Pixel TurnPixel(Pixel pixel, float max, float min, float turn)
{
    const float chroma = max - min;
    const float from_green = pixel.blue - pixel.red;
    const float from_red = pixel.green - pixel.blue;
    const float from_blue = pixel.red - pixel.green;
    const float difference = pixel.red == max ? from_red : pixel.green == max ? from_green : from_blue;
    const float sector = pixel.red == max ? 0.0F : pixel.green == max ? 2.0F : 4.0F;
    float hue = difference / (chroma < 1.0F ? 1.0F : chroma) + sector + turn;
    hue -= hue >= 6.0F ? 6.0F : 0.0F;
    hue += hue < 0.0F ? 6.0F : 0.0F;
    return {min + chroma * Clamp(2.0F - std::fabs(hue - 4.0F), 0.0F, 1.0F),
            min + chroma * Clamp(2.0F - std::fabs(hue - 2.0F), 0.0F, 1.0F),
            min + chroma * Clamp(std::fabs(hue - 3.0F) - 1.0F, 0.0F, 1.0F)};
}

// At constant hue each channel's distance from the lightness scales with the chroma. Without kLight the
// lightness stays, and with it the largest possible chroma.
template <bool kLight>
ROW_LOOP_PART static Pixel Scaled(Pixel pixel, float max, float min, const HlsChange& change)
{
    const float chroma = max - min;
    const float sum = max + min;
    const float room = 255.0F - std::fabs(sum - 255.0F);
    float new_sum = sum;
    float new_chroma = chroma * change.saturation;
    new_chroma = new_chroma > room ? room : new_chroma;
    if constexpr (kLight) {
        new_sum = sum * change.light_scale + change.light_add;
        const float new_room = 255.0F - std::fabs(new_sum - 255.0F);
        const float ratio = new_room / (room < 1.0F ? 1.0F : room);
        const float cap = new_room < 255.0F / 8.0F ? 1.0F : new_room * (8.0F / 255.0F);
        new_chroma *= ratio < cap ? ratio : cap;
    }
    const float gain = new_chroma / (chroma < 1.0F ? 1.0F : chroma);
    const float middle = sum / 2.0F, new_middle = new_sum / 2.0F;
    return {new_middle + (pixel.blue - middle) * gain, new_middle + (pixel.green - middle) * gain,
            new_middle + (pixel.red - middle) * gain};
}

template <bool kTurn, bool kScale, bool kLight>
ROW_LOOP_PART static void ChangePlanes(FloatPlanes& planes, std::size_t pixels, const HlsChange& given)
{
    const HlsChange change = given;  // a local copy that the stores below can't alias
    float* __restrict blue = planes.blue;
    float* __restrict green = planes.green;
    float* __restrict red = planes.red;
    for (std::size_t i = 0; i < pixels; ++i) {
        Pixel pixel{blue[i], green[i], red[i]};
        const float blue_green = pixel.blue < pixel.green ? pixel.green : pixel.blue;
        const float max = blue_green < pixel.red ? pixel.red : blue_green;
        const float less_of_two = pixel.blue < pixel.green ? pixel.blue : pixel.green;
        const float min = less_of_two < pixel.red ? less_of_two : pixel.red;
        if constexpr (kTurn)
            pixel = TurnPixel(pixel, max, min, change.turn);
        if constexpr (kScale)
            pixel = Scaled<kLight>(pixel, max, min, change);
        blue[i] = pixel.blue;
        green[i] = pixel.green;
        red[i] = pixel.red;
    }
}

ROW_LOOP static void Turn(FloatPlanes& planes, std::size_t pixels, const HlsChange& change)
{
    ChangePlanes<true, false, false>(planes, pixels, change);
}
ROW_LOOP static void Saturate(FloatPlanes& planes, std::size_t pixels, const HlsChange& change)
{
    ChangePlanes<false, true, false>(planes, pixels, change);
}
ROW_LOOP static void TurnAndSaturate(FloatPlanes& planes, std::size_t pixels, const HlsChange& change)
{
    ChangePlanes<true, true, false>(planes, pixels, change);
}
ROW_LOOP static void Scale(FloatPlanes& planes, std::size_t pixels, const HlsChange& change)
{
    ChangePlanes<false, true, true>(planes, pixels, change);
}
ROW_LOOP static void TurnAndScale(FloatPlanes& planes, std::size_t pixels, const HlsChange& change)
{
    ChangePlanes<true, true, true>(planes, pixels, change);
}

HlsRow ChooseHlsRow(const HlsChange& change)
{
    const bool rotates = change.turn > 0 && change.turn < 6;
    if (change.light_scale != 1 || change.light_add != 0)
        return rotates ? TurnAndScale : Scale;
    if (change.saturation != 1)
        return rotates ? TurnAndSaturate : Saturate;
    return rotates ? Turn : nullptr;
}

}  // namespace transforms
