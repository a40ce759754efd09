// Tests of the GIF encoder.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "src/platform/image/codecs/gif/gif.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

ImageBuffer Blank(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    image.bytes.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                           static_cast<std::size_t>(channels),
                       0);
    return image;
}

// A picture with exactly `colours` colours.
ImageBuffer OfColours(std::int32_t width, std::int32_t height, unsigned colours)
{
    ImageBuffer image = Blank(width, height, 3);
    unsigned seed = 1;
    for (std::size_t i = 0; i < image.bytes.size(); i += 3) {
        seed = seed * 1103515245 + 12345;
        const unsigned colour = i / 3 < colours ? static_cast<unsigned>(i / 3) : (seed >> 16) % colours;
        image.bytes[i] = static_cast<std::uint8_t>(colour * 7);
        image.bytes[i + 1] = static_cast<std::uint8_t>(colour);
        image.bytes[i + 2] = static_cast<std::uint8_t>(colour / 256 * 50);
    }
    return image;
}

// The file as another program decodes it, without alpha.
ImageBuffer By(const std::string& program, const Block& file)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("in.gif"), file);
    std::string output;
    EXPECT_TRUE(RunCommand(program + " " + folder.Path("in.gif") + " " + folder.Path("out.ppm"), &output))
        << output;
    EXPECT_EQ(output, "");
    return ReadPnm(folder.Path("out.ppm")).value_or(ImageBuffer{});
}

const std::string kPillow =
    "/usr/bin/python3 -c 'import sys; from PIL import Image; "
    "Image.open(sys.argv[1]).convert(\"RGB\").save(sys.argv[2])'";

std::string Identify(const Block& file, const std::string& format)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("in.gif"), file);
    std::string output;
    EXPECT_TRUE(
        RunCommand(ImageMagick("identify") + " -format '" + format + "' " + folder.Path("in.gif"), &output))
        << output;
    return output;
}
}  // namespace

class GifColourCounts : public testing::TestWithParam<unsigned>
{
};

TEST_P(GifColourCounts, UpTo256SurviveRoundTripThroughOtherPrograms)
{
    const ImageBuffer image = OfColours(61, 43, GetParam());

    const Block file = Encoded(kGifCodec, image);

    ASSERT_FALSE(file.empty());
    const auto back = Decoded(kGifCodec, file);
    ASSERT_TRUE(back);
    if (GetParam() == 1)
        EXPECT_EQ(back->channels, 1);  // a single colour, black, is grey
    else
        EXPECT_EQ(DifferenceBetween(*back, image).greatest, 0);
    EXPECT_EQ(DifferenceBetween(By(ImageMagick("convert"), file), image).greatest, 0);
    EXPECT_EQ(DifferenceBetween(By("gm convert", file), image).greatest, 0);
    EXPECT_EQ(DifferenceBetween(By(kPillow, file), image).greatest, 0);
}

INSTANTIATE_TEST_SUITE_P(Colours, GifColourCounts,
                         testing::Values(1, 2, 3, 4, 5, 8, 9, 16, 17, 33, 65, 128, 129, 255, 256));

TEST(GifEncoder, KeepsAll256Greys)
{
    ImageBuffer image = Blank(256, 3, 1);
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        image.bytes[i] = static_cast<std::uint8_t>(i * 5);

    const auto back = Decoded(kGifCodec, Encoded(kGifCodec, image));

    ASSERT_TRUE(back);
    EXPECT_EQ(DifferenceBetween(*back, image).greatest, 0);
}

TEST(GifEncoder, WritesSmallestSufficientColourTable)
{
    EXPECT_EQ(Encoded(kGifCodec, OfColours(10, 10, 2))[10] & 7, 0);
    EXPECT_EQ(Encoded(kGifCodec, OfColours(10, 10, 5))[10] & 7, 2);
    EXPECT_EQ(Encoded(kGifCodec, OfColours(40, 10, 256))[10] & 7, 7);
}

TEST(GifEncoder, QuantisesPictureWithMoreColours)
{
    const ImageBuffer image = Pattern(200, 150, 3);

    const auto back = Decoded(kGifCodec, Encoded(kGifCodec, image));

    ASSERT_TRUE(back);
    EXPECT_LT(DifferenceBetween(*back, image).mean, 6);
    std::set<std::array<std::uint8_t, 3>> colours;
    for (std::size_t i = 0; i < back->bytes.size(); i += 3)
        colours.insert({back->bytes[i], back->bytes[i + 1], back->bytes[i + 2]});
    EXPECT_GT(colours.size(), 240u);
    EXPECT_LE(colours.size(), 256u);
}

TEST(GifEncoder, MakesPixelsBelowHalfAlphaTransparent)
{
    for (const std::int32_t width : {6, 200}) {  // few colours and many
        const ImageBuffer image = Pattern(width, width, 4);
        const auto back = Decoded(kGifCodec, Encoded(kGifCodec, image));
        ASSERT_TRUE(back);
        ASSERT_EQ(back->channels, 4);
        double sum = 0;
        for (std::size_t i = 0; i < image.bytes.size(); i += 4) {
            ASSERT_EQ(back->bytes[i + 3], image.bytes[i + 3] < 128 ? 0 : 255);
            for (std::size_t c = 0; c < 3 && image.bytes[i + 3] >= 128; ++c)
                sum += std::abs(back->bytes[i + c] - image.bytes[i + c]);
        }
        EXPECT_LT(sum / static_cast<double>(image.bytes.size()), 6);
    }
}

TEST(GifEncoder, ReservesNoColourForUnusedTransparency)
{
    ImageBuffer image = OfColours(61, 43, 256), with_alpha = Blank(61, 43, 4);
    for (std::size_t i = 0; i < image.bytes.size() / 3; ++i) {
        std::copy_n(&image.bytes[i * 3], 3, &with_alpha.bytes[i * 4]);
        with_alpha.bytes[i * 4 + 3] = 128;
    }

    const auto back = Decoded(kGifCodec, Encoded(kGifCodec, with_alpha));

    ASSERT_TRUE(back);
    EXPECT_EQ(DifferenceBetween(*back, image).greatest, 0);
}

TEST(GifEncoder, KeepsFullyTransparentPicture)
{
    const auto back = Decoded(kGifCodec, Encoded(kGifCodec, Blank(5, 4, 4)));

    ASSERT_TRUE(back);
    EXPECT_EQ(back->channels, 4);
    EXPECT_EQ(back->bytes, PixelBytes(80, 0));
}

TEST(GifEncoder, WritesTextsAsComment)
{
    SaveSettings settings;
    settings.texts.sTitle = "A title";
    settings.texts.sAuthor = "K\xC3\xA4the";
    settings.texts.sCopyright = std::string(700, 'c');

    const Block file = Encoded(kGifCodec, OfColours(4, 4, 3), settings);

    EXPECT_EQ(std::string(file.begin(), file.begin() + 6), "GIF89a");
    EXPECT_EQ(Identify(file, "%c"),
              "Title: A title\nAuthor: K\xC3\xA4the\nCopyright: " + std::string(700, 'c'));
    EXPECT_TRUE(Decoded(kGifCodec, file));
}

TEST(GifEncoder, WritesNoCommentWithoutTexts)
{
    const Block file = Encoded(kGifCodec, OfColours(4, 4, 3));

    EXPECT_EQ(std::string(file.begin(), file.begin() + 6), "GIF87a");
    EXPECT_EQ(Identify(file, "%c"), "");
}

TEST(GifEncoder, SupportsMaximumSides)
{
    for (const auto& [width, height] : {std::pair{65500, 1}, {1, 65500}, {1, 1}}) {
        const ImageBuffer image = Pattern(width, height, 1);
        const auto back = Decoded(kGifCodec, Encoded(kGifCodec, image));
        ASSERT_TRUE(back);
        EXPECT_EQ(DifferenceBetween(*back, image).greatest, 0);
    }
}

RC_GTEST_PROP(GifEncoder, GivesBackAnyPictureOfFewColours, ())
{
    const auto width = *rc::gen::inRange(1, 60), height = *rc::gen::inRange(1, 60);
    const auto channels = *rc::gen::element(1, 3);
    const auto colours = *rc::gen::nonEmpty(rc::gen::container<Block>(rc::gen::arbitrary<std::uint8_t>()));
    ImageBuffer image = Blank(width, height, channels);
    // Runs of all lengths make strings of all lengths.
    const auto runs = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 400)));
    std::size_t pixel = 0;
    const auto step = static_cast<std::size_t>(channels);
    for (std::size_t run = 0; pixel * step < image.bytes.size(); ++run)
        for (int i = 0; i < runs[run % runs.size()] && pixel * step < image.bytes.size(); ++i, ++pixel)
            std::fill_n(&image.bytes[pixel * step], step,
                        colours[(run * 7) % std::min<std::size_t>(colours.size(), 200)]);
    // Equal channels would be read as grey; 255 - x never equals x.
    if (channels == 3)
        for (std::size_t i = 0; i < image.bytes.size(); i += 3)
            image.bytes[i] = static_cast<std::uint8_t>(255 - image.bytes[i + 1]);

    const auto back = Decoded(kGifCodec, Encoded(kGifCodec, image));

    RC_ASSERT(back.has_value());
    RC_ASSERT(DifferenceBetween(*back, image).greatest == 0);
}
