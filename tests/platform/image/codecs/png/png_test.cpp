// Tests of the PNG reader and writer.
#include "src/platform/image/codecs/png/png.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/png/png_deflate.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{

using Block = std::vector<std::uint8_t>;

// Decodes a file with libpng to 8-bit grey, RGB or RGBA.
std::optional<ImageBuffer> DecodeByLibpng(const Block& file, std::int32_t channels)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        return std::nullopt;
    image.format = channels == 1 ? PNG_FORMAT_GRAY : channels == 3 ? PNG_FORMAT_BGR : PNG_FORMAT_BGRA;
    ImageBuffer result;
    result.width = static_cast<std::int32_t>(image.width);
    result.height = static_cast<std::int32_t>(image.height);
    result.channels = channels;
    result.bytes.resize(PNG_IMAGE_SIZE(image));
    const bool done = png_image_finish_read(&image, nullptr, result.bytes.data(), 0, nullptr) != 0;
    png_image_free(&image);
    return done ? std::optional(result) : std::nullopt;
}

// A file of the given type, depth and interlace, written by libpng, whose pixels use the full range.
Block WrittenByLibpng(int colour_type, int depth, bool interlaced, std::uint32_t width = 23,
                      std::uint32_t height = 17)
{
    Block file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &file,
        [](png_structp p, png_bytep data, png_size_t n) {
            auto* target = static_cast<Block*>(png_get_io_ptr(p));
            target->insert(target->end(), data, data + n);
        },
        nullptr);
    png_set_IHDR(png, info, width, height, depth, colour_type,
                 interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (colour_type == PNG_COLOR_TYPE_PALETTE) {
        std::vector<png_color> palette(static_cast<std::size_t>(1 << depth));
        for (std::size_t i = 0; i < palette.size(); ++i)
            palette[i] = {static_cast<png_byte>(i * 37), static_cast<png_byte>(255 - i),
                          static_cast<png_byte>(i * 5)};
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    }
    png_write_info(png, info);
    const std::size_t row_index = png_get_rowbytes(png, info);
    std::vector<Block> rows(height, Block(row_index));
    std::mt19937 random(7);
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < row_index; ++x)
            rows[y][x] = static_cast<std::uint8_t>(y % 3 == 0 ? random() : x * 9 + y * 4);
    std::vector<png_bytep> pointers;
    for (Block& row : rows)
        pointers.push_back(row.data());
    png_write_image(png, pointers.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

ImageBuffer RandomPicture(std::int32_t width, std::int32_t height, std::int32_t channels, int colour_count,
                          unsigned seed)
{
    std::mt19937 random(seed);
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    Block colours(static_cast<std::size_t>(colour_count * channels));
    for (std::uint8_t& n : colours)
        n = static_cast<std::uint8_t>(random());
    for (std::int32_t i = 0; i < width * height; ++i) {
        const auto colour =
            static_cast<std::ptrdiff_t>(random() % static_cast<unsigned>(colour_count)) * channels;
        image.bytes.insert(image.bytes.end(), colours.begin() + colour, colours.begin() + colour + channels);
    }
    return image;
}

// The picture as B, G, R, A, to compare pictures with different channels.
PixelBytes FourChannels(const ImageBuffer& image)
{
    PixelBytes result;
    for (std::size_t i = 0; i < image.bytes.size(); i += static_cast<std::size_t>(image.channels)) {
        const std::uint8_t* p = &image.bytes[i];
        const bool is_grey = image.channels == 1;
        for (const std::uint8_t n : {p[0], is_grey ? p[0] : p[1], is_grey ? p[0] : p[2],
                                     image.channels == 4 ? p[3] : std::uint8_t{255}})
            result.push_back(n);
    }
    return result;
}

void ExpectRoundTrip(const ImageBuffer& image, const std::string& what)
{
    const Block file = Encoded(kPngCodec, image);
    const auto ours = Decoded(kPngCodec, file);
    const auto theirs = DecodeByLibpng(file, 4);
    ASSERT_TRUE(ours) << what;
    ASSERT_TRUE(theirs) << what;
    EXPECT_EQ(ours->width, image.width) << what;
    EXPECT_EQ(ours->height, image.height) << what;
    EXPECT_TRUE(FourChannels(*ours) == FourChannels(image)) << what;
    EXPECT_TRUE(theirs->bytes == FourChannels(image)) << what;
}

int ColourTypeOf(const Block& file)
{
    return file.at(25);
}

int DepthOf(const Block& file)
{
    return file.at(24);
}

}  // namespace

TEST(PngReader, ReadsEveryTypeDepthAndInterlaceLikeLibpng)
{
    struct Kind {
        int colour_type;
        std::vector<int> depths;
        std::int32_t channels;
    };
    const Kind kinds[] = {{PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8}, 1},
                          {PNG_COLOR_TYPE_RGB, {8}, 3},
                          {PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}, 3},
                          {PNG_COLOR_TYPE_GRAY_ALPHA, {8}, 4},
                          {PNG_COLOR_TYPE_RGB_ALPHA, {8}, 4}};
    for (const Kind& kind : kinds) {
        for (const int depth : kind.depths) {
            for (const bool interlaced : {false, true}) {
                const Block file = WrittenByLibpng(kind.colour_type, depth, interlaced);
                const std::string what = "type " + std::to_string(kind.colour_type) + ", depth " +
                                         std::to_string(depth) + (interlaced ? ", interlaced" : "");

                const auto ours = Decoded(kPngCodec, file);

                ASSERT_TRUE(ours) << what;
                const auto theirs = DecodeByLibpng(file, 4);
                ASSERT_TRUE(theirs) << what;
                EXPECT_EQ(ours->channels, kind.channels) << what;
                EXPECT_TRUE(FourChannels(*ours) == theirs->bytes) << what;
            }
        }
    }
}

TEST(PngReader, RoundsSixteenBitsToEight)
{
    for (const int colour_type :
         {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB_ALPHA}) {
        const Block file = WrittenByLibpng(colour_type, 16, false, 3, 1);
        const auto ours = Decoded(kPngCodec, file);
        ASSERT_TRUE(ours) << colour_type;

        // libpng scales exactly only with png_set_scale_16.
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        std::pair<const Block*, std::size_t> source{&file, 0};
        png_set_read_fn(png, &source, [](png_structp p, png_bytep data, png_size_t n) {
            auto* reading = static_cast<std::pair<const Block*, std::size_t>*>(png_get_io_ptr(p));
            std::memcpy(data, reading->first->data() + reading->second, n);
            reading->second += n;
        });
        png_read_info(png, info);
        png_set_scale_16(png);
        png_set_gray_to_rgb(png);
        png_set_bgr(png);
        png_set_filler(png, 255, PNG_FILLER_AFTER);
        png_read_update_info(png, info);
        Block row(png_get_rowbytes(png, info));
        png_read_row(png, row.data(), nullptr);
        png_destroy_read_struct(&png, &info, nullptr);

        const PixelBytes expected(row.begin(), row.end());
        EXPECT_TRUE(FourChannels(*ours) == expected) << colour_type;
    }
}

TEST(PngReader, ReadsFilesOfOtherPrograms)
{
    const TestFolder folder;
    const ImageBuffer image = Pattern(201, 77, 3);
    WritePnm(folder.Path("a.ppm"), image);
    const std::vector<std::string> makers = {
        ImageMagick("convert") + " " + folder.Path("a.ppm") + " " + folder.Path("o.png"),
        ImageMagick("convert") + " " + folder.Path("a.ppm") + " -interlace PNG " + folder.Path("o.png"),
        "gm convert " + folder.Path("a.ppm") + " " + folder.Path("o.png"),
        "pnmtopng " + folder.Path("a.ppm") + " > " + folder.Path("o.png") + " 2>/dev/null"};
    for (const std::string& maker : makers) {
        ASSERT_TRUE(RunCommand(maker)) << maker;

        const auto ours = Decoded(kPngCodec, FileContent(folder.Path("o.png")));

        ASSERT_TRUE(ours) << maker;
        EXPECT_TRUE(ours->bytes == image.bytes) << maker;
    }
}

TEST(PngReader, AppliesTransparentColoursOfTrns)
{
    const TestFolder folder;
    Python(
        "import sys\n"
        "from PIL import Image\n"
        "p = Image.new('P', (4, 1)); p.putpalette([255,0,0, 0,255,0, 0,0,255] + [0]*759)\n"
        "p.putdata([0, 1, 2, 1]); p.save(sys.argv[1] + '/p.png', transparency=bytes([255, 0, 128]))\n"
        "g = Image.new('L', (3, 1)); g.putdata([5, 6, 7]); g.save(sys.argv[1] + '/g.png', transparency=6)\n"
        "c = Image.new('RGB', (2, 1)); c.putdata([(1, 2, 3), (4, 5, 6)])\n"
        "c.save(sys.argv[1] + '/c.png', transparency=(4, 5, 6))\n",
        folder.Path(""));
    const auto palette = Decoded(kPngCodec, FileContent(folder.Path("p.png")));
    const auto grey = Decoded(kPngCodec, FileContent(folder.Path("g.png")));
    const auto colour = Decoded(kPngCodec, FileContent(folder.Path("c.png")));
    ASSERT_TRUE(palette && grey && colour);

    EXPECT_EQ(palette->channels, 4);
    EXPECT_EQ(palette->bytes[3], 255);
    EXPECT_EQ(palette->bytes[7], 0);
    EXPECT_EQ(palette->bytes[11], 128);
    EXPECT_EQ(grey->channels, 4);
    EXPECT_EQ(grey->bytes[7], 0);
    EXPECT_EQ(grey->bytes[11], 255);
    EXPECT_EQ(colour->bytes[3], 255);
    EXPECT_EQ(colour->bytes[7], 0);
}

TEST(PngReader, RefusesEmptyForeignAndTruncatedFiles)
{
    EXPECT_FALSE(Decoded(kPngCodec, Block{}));
    EXPECT_FALSE(Decoded(kPngCodec, FileContent(SamplePath("README.md"))));
    const Block whole = WrittenByLibpng(PNG_COLOR_TYPE_RGB, 8, false);
    const std::size_t end_chunk = 12;
    for (std::size_t n = 0; n + end_chunk < whole.size(); n += 1 + n / 40)
        EXPECT_FALSE(Decoded(kPngCodec, Bytes(whole).first(n))) << n;
}

TEST(PngReader, RefusesHeaderThatClaimsTooMuch)
{
    Block file = WrittenByLibpng(PNG_COLOR_TYPE_RGB, 8, false);
    const Block sides = {0, 0, 0xEA, 0x60, 0, 0, 0xEA, 0x60};  // 60,000 x 60,000: over the limit
    std::copy(sides.begin(), sides.end(), file.begin() + 16);
    EXPECT_FALSE(Decoded(kPngCodec, file));

    const Block large = {0, 0, 0x40, 0, 0, 0, 0x40, 0};  // 16,384 x 16,384: within the limit
    std::copy(large.begin(), large.end(), file.begin() + 16);
    EXPECT_FALSE(Decoded(kPngCodec, file));
}

TEST(PngReader, SurvivesCorruptionOfAnySingleByte)
{
    for (const bool interlaced : {false, true}) {
        const Block whole = WrittenByLibpng(PNG_COLOR_TYPE_PALETTE, 8, interlaced, 9, 7);
        for (std::size_t i = 0; i < whole.size(); ++i) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                Block broken = whole;
                broken[i] = static_cast<std::uint8_t>(broken[i] ^ flip);
                const auto image = Decoded(kPngCodec, broken);
                if (image) {
                    EXPECT_EQ(image->bytes.size(), static_cast<std::size_t>(image->width) *
                                                       static_cast<std::size_t>(image->height) *
                                                       static_cast<std::size_t>(image->channels));
                }
            }
        }
    }
}

TEST(PngWriter, RoundTripsPicturesOfEveryKindAndSize)
{
    const std::pair<std::int32_t, std::int32_t> sizes[] = {{1, 1}, {1, 9},   {9, 1},   {3, 2},    {8, 8},
                                                           {7, 5}, {33, 17}, {64, 64}, {257, 31}, {1000, 3}};
    for (const auto& [width, height] : sizes)
        for (const std::int32_t channels : {1, 3, 4})
            for (const int colours : {1, 2, 3, 16, 17, 256, 5000})
                ExpectRoundTrip(RandomPicture(width, height, channels, colours, 11),
                                std::to_string(width) + "x" + std::to_string(height) + ", " +
                                    std::to_string(channels) + " channels, " + std::to_string(colours) +
                                    " colours");
}

TEST(PngWriter, RoundTripsSmoothPicturesOfManyStrips)
{
    for (const std::int32_t channels : {1, 3, 4})
        ExpectRoundTrip(Pattern(1501, 701, channels), std::to_string(channels) + " channels");
}

TEST(PngWriter, StoresBlackAndWhiteAsOneBit)
{
    ImageBuffer page = RandomPicture(100, 50, 1, 1, 1);
    for (std::size_t i = 0; i < page.bytes.size(); ++i)
        page.bytes[i] = i % 7 < 3 ? 255 : 0;

    const Block file = Encoded(kPngCodec, page);

    EXPECT_EQ(DepthOf(file), 1);
    EXPECT_EQ(ColourTypeOf(file), PNG_COLOR_TYPE_GRAY);
    ExpectRoundTrip(page, "black and white");
}

TEST(PngWriter, StoresFewColoursInPalette)
{
    const ImageBuffer graphic = RandomPicture(120, 90, 3, 9, 3);

    const Block file = Encoded(kPngCodec, graphic);

    EXPECT_EQ(ColourTypeOf(file), PNG_COLOR_TYPE_PALETTE);
    EXPECT_EQ(DepthOf(file), 4);
}

// Text in a few letters and shades of grey and blue, on a mostly plain background.
static ImageBuffer Screenshot(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    const ImageBuffer letters = RandomPicture(8, 12 * 20, channels, 5000, 5);
    ImageBuffer image = RandomPicture(width, height, channels, 1, 6);
    std::mt19937 random(3);
    const auto pixel = static_cast<std::size_t>(channels);
    for (std::int32_t y = 30; y + 12 <= height; y += 20)
        for (std::int32_t x = 10; x + 8 <= width; x += 9) {
            const auto letter = static_cast<std::int32_t>(random() % 20);
            for (std::int32_t row = 0; row < 12; ++row)
                std::copy_n(letters.bytes.data() + static_cast<std::size_t>((letter * 12 + row) * 8) * pixel,
                            8 * pixel,
                            image.bytes.data() + static_cast<std::size_t>((y + row) * width + x) * pixel);
        }
    return image;
}

TEST(PngWriter, RoundTripsScreensDrawingsAndScansOfManyStrips)
{
    for (const std::int32_t channels : {1, 3, 4})
        ExpectRoundTrip(Screenshot(900, 700, channels),
                        "screen of " + std::to_string(channels) + " channels");
    ImageBuffer few = Screenshot(900, 700, 3);
    for (std::uint8_t& n : few.bytes)
        n &= 0x80;
    ExpectRoundTrip(few, "drawing");
    ImageBuffer scan = Screenshot(2500, 1500, 1);
    for (std::uint8_t& n : scan.bytes)
        n = n < 128 ? 0 : 255;
    ExpectRoundTrip(scan, "scan");
}

TEST(PngWriter, RoundTripsGraphicTooLargeToDeflateWhole)
{
    ImageBuffer image;
    image.width = 5000;
    image.height = 4500;
    image.channels = 3;
    image.bytes.resize(std::size_t{5000} * 4500 * 3);
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        image.bytes[i] = static_cast<std::uint8_t>(i % 3 * 40 + i / 60 * 7 + i / 900 * 13 + i / 15000 / 9);
    ASSERT_FALSE(DeflatesWhole(PngContent::kGraphic, image.bytes.size()));
    ASSERT_TRUE(DeflatesWhole(PngContent::kGraphic, image.bytes.size() / 2));

    const auto back = Decoded(kPngCodec, Encoded(kPngCodec, image));

    ASSERT_TRUE(back);
    EXPECT_TRUE(back->bytes == image.bytes);
}

TEST(PngWriter, FindsRepeatedLettersOfScreenshot)
{
    const ImageBuffer image = Screenshot(900, 700, 3);

    EXPECT_LT(Encoded(kPngCodec, image).size(), image.bytes.size() / 6);
}

TEST(PngWriter, WritesSameFileForSamePicture)
{
    for (const ImageBuffer& image : {Screenshot(900, 700, 4), Pattern(1501, 701, 3), Screenshot(48, 48, 4)}) {
        const Block first = Encoded(kPngCodec, image);
        Encoded(kPngCodec, Pattern(300, 200, 3));

        EXPECT_TRUE(Encoded(kPngCodec, image) == first);
    }
}

TEST(PngWriter, AvoidsPaletteThatCostsMoreThanItSaves)
{
    ImageBuffer icon = RandomPicture(24, 24, 3, 1, 1);
    for (std::int32_t i = 0; i < 24 * 24; ++i)
        for (std::int32_t c = 0; c < 3; ++c)
            icon.bytes[static_cast<std::size_t>(i * 3 + c)] =
                static_cast<std::uint8_t>(i % 24 < 8 ? 255 : 3 * (i / 24 + i % 24) + 20 * c);

    const Block file = Encoded(kPngCodec, icon);

    EXPECT_EQ(ColourTypeOf(file), PNG_COLOR_TYPE_RGB);
    EXPECT_LT(file.size(), 250U);
    ExpectRoundTrip(icon, "icon");
}

TEST(PngWriter, CopiesResolutionProfileAndMetadata)
{
    ImageBuffer image = Pattern(20, 10, 3);
    image.dots_per_inch_x = 300;
    image.dots_per_inch_y = 150;
    const std::string xmp = "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>";
    image.metadata.xmp.assign(xmp.begin(), xmp.end());

    const auto back = Decoded(kPngCodec, Encoded(kPngCodec, image));

    ASSERT_TRUE(back);
    EXPECT_NEAR(back->dots_per_inch_x, 300, 0.02);
    EXPECT_NEAR(back->dots_per_inch_y, 150, 0.02);
    EXPECT_TRUE(back->metadata.xmp == image.metadata.xmp);
}

TEST(PngWriter, WritesTextsThatOtherProgramsRead)
{
    const TestFolder folder;
    SaveSettings settings;
    settings.texts.sTitle = "A title";
    settings.texts.sDescription =
        "Gr\xC3\xBC\xC3\x9F"
        "e \xE2\x82\xAC";
    settings.texts.sAuthor = "Somebody";
    settings.texts.sCopyright = "2026";
    WriteFileContent(folder.Path("a.png"), Encoded(kPngCodec, Pattern(8, 8, 3), settings));

    const std::string texts = Python(
        "import sys\n"
        "from PIL import Image\n"
        "t = Image.open(sys.argv[1]).text\n"
        "sys.stdout.buffer.write('|'.join([t['Title'], t['Description'], t['Author'], "
        "t['Copyright']]).encode('utf-8'))\n",
        folder.Path("a.png"));

    EXPECT_EQ(texts,
              "A title|Gr\xC3\xBC\xC3\x9F"
              "e \xE2\x82\xAC|Somebody|2026");
}

TEST(PngWriter, WritesNoTextsIfThereAreNone)
{
    const Block file = Encoded(kPngCodec, Pattern(8, 8, 3));
    const std::string file_path(file.begin(), file.end());

    EXPECT_EQ(file_path.find("tEXt"), std::string::npos);
    EXPECT_EQ(file_path.find("iTXt"), std::string::npos);
    EXPECT_EQ(file_path.find("eXIf"), std::string::npos);
}
