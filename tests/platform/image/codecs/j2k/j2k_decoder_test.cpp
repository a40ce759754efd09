// Tests of the JPEG 2000 decoder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_codestream.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/jp2_maker.h"
#include "tests/platform/image/support/profiles.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block Sample(const std::string& name)
{
    return FileContent(SamplePath("j2k/" + name));
}

ImageBuffer Scene(const std::string& name = "scene.ppm")
{
    return ReadPnm(SamplePath("j2k/" + name)).value();
}

// Encodes the picture losslessly as a codestream.
Block Stream(const ImageBuffer& image)
{
    SaveSettings settings;
    settings.jpeg_quality = 100;
    return Encoded(kJ2kCodec, image, settings);
}

ImageBuffer OfPixel(const PixelBytes& pixel)
{
    ImageBuffer image;
    image.width = 5;
    image.height = 3;
    image.channels = static_cast<std::int32_t>(pixel.size());
    for (int i = 0; i < 15; ++i)
        image.bytes.insert(image.bytes.end(), pixel.begin(), pixel.end());
    return image;
}

// The first pixel of a JP2 file whose components are each constant.
PixelBytes DecodePixel(const PixelBytes& components, const Block& header_boxes)
{
    // The encoder takes B, G, R, which become components 2, 1 and 0.
    PixelBytes pixel = components;
    if (pixel.size() >= 3)
        std::swap(pixel[0], pixel[2]);
    const auto image = Decoded(
        kJ2kCodec, Jp2File(5, 3, static_cast<int>(pixel.size()), header_boxes, Stream(OfPixel(pixel))));
    if (!image)
        return {};
    return {image->bytes.begin(), image->bytes.begin() + image->channels};
}

void ExpectNear(const PixelBytes& one, const PixelBytes& other, int within)
{
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t i = 0; i < one.size(); ++i)
        EXPECT_NEAR(one[i], other[i], within) << i;
}

// The position of a marker in a file.
std::size_t MarkerAt(const Block& file, int second)
{
    for (std::size_t i = 0; i + 1 < file.size(); ++i)
        if (file[i] == 0xFF && file[i + 1] == second)
            return i;
    return file.size();
}

const Block kResolution = Jp2Box("res ", Jp2Box("resc", {0, 100, 0, 1, 0, 200, 0, 1, 1, 1}));
}  // namespace

struct J2kSample {
    const char* name;
    const char* scene;
    int within;
};

class J2kKinds : public testing::TestWithParam<J2kSample>
{
};

TEST_P(J2kKinds, DecodeToScene)
{
    const auto image = Decoded(kJ2kCodec, Sample(GetParam().name));

    ASSERT_TRUE(image);
    EXPECT_LE(DifferenceBetween(*image, Scene(GetParam().scene)).greatest, GetParam().within);
}

INSTANTIATE_TEST_SUITE_P(
    Samples, J2kKinds,
    testing::Values(
        J2kSample{"good/opj-plain.j2k", "scene.ppm", 0}, J2kSample{"good/opj-plain.jp2", "scene.ppm", 0},
        J2kSample{"good/opj-tiles.j2k", "scene.ppm", 0}, J2kSample{"good/opj-offset.j2k", "scene.ppm", 0},
        J2kSample{"good/opj-packets.jp2", "scene.ppm", 0}, J2kSample{"good/opj-parts.j2k", "scene.ppm", 0},
        J2kSample{"good/pil-tiles.jp2", "scene.ppm", 0}, J2kSample{"good/opj-lossy.j2k", "scene.ppm", 60},
        J2kSample{"good/im-lossy.jp2", "scene.ppm", 40}, J2kSample{"good/opj-grey.jp2", "scene-grey.pgm", 0},
        J2kSample{"good/opj-bit1.j2k", "scene-bit1.pgm", 0}, J2kSample{"good/opj-bits12.j2k", "scene.ppm", 0},
        J2kSample{"good/opj-bits16.j2k", "scene.ppm", 0}, J2kSample{"good/opj-signed.j2k", "scene.ppm", 0}),
    [](const auto& test) {
        std::string name = test.param.name;
        std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
        return name;
    });

TEST(J2kDecoder, MatchesReferenceDecoderExactly)
{
    const TestFolder folder;
    for (const char* name : {"good/opj-lossy.j2k", "good/im-lossy.jp2"}) {
        ASSERT_TRUE(RunCommand("opj_decompress -i " + SamplePath(std::string("j2k/") + name) + " -o " +
                               folder.Path("out.png") + " && " + ImageMagick("convert") + " " +
                               folder.Path("out.png") + " " + folder.Path("out.ppm")));
        EXPECT_EQ(
            DifferenceBetween(*Decoded(kJ2kCodec, Sample(name)), *ReadPnm(folder.Path("out.ppm"))).greatest,
            0)
            << name;
    }
}

TEST(J2kDecoder, TreatsSubsampledComponentsAsChroma)
{
    const auto image = Decoded(kJ2kCodec, Sample("good/opj-ycc420.j2k"));

    ASSERT_TRUE(image);
    EXPECT_EQ(image->channels, 3);
    EXPECT_LT(DifferenceBetween(*image, Scene("scene-even.ppm")).mean, 4);
}

TEST(J2kDecoder, FindsAlphaByChannelDefinition)
{
    const auto colour = Decoded(kJ2kCodec, Sample("good/pil-alpha.jp2")),
               grey = Decoded(kJ2kCodec, Sample("good/pil-grey-alpha.jp2"));
    ASSERT_TRUE(colour && grey);
    ASSERT_EQ(colour->channels, 4);
    ASSERT_EQ(grey->channels, 4);
    const ImageBuffer wanted = Scene(), wanted_grey = Scene("scene-grey.pgm"),
                      wanted_alpha = Scene("scene-alpha.pgm");

    for (std::size_t i = 0; i < wanted_alpha.bytes.size(); ++i) {
        ASSERT_EQ(colour->bytes[i * 4 + 3], wanted_alpha.bytes[i]);
        ASSERT_EQ(grey->bytes[i * 4 + 3], wanted_alpha.bytes[i]);
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_EQ(colour->bytes[i * 4 + c], wanted.bytes[i * 3 + c]);
            ASSERT_EQ(grey->bytes[i * 4 + c], wanted_grey.bytes[i]);
        }
    }
}

TEST(J2kDecoder, UnpremultipliesAlpha)
{
    const Block alpha =
        Jp2Box("cdef", {0, 4, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 2, 0, 2, 0, 0, 0, 3, 0, 3, 0, 2, 0, 0});

    EXPECT_EQ(DecodePixel({100, 50, 20, 128}, ByteMaker().All(Jp2Colours(16)).All(alpha).Data()),
              (PixelBytes{40, 100, 199, 128}));
}

TEST(J2kDecoder, ReordersComponentsByChannelDefinition)
{
    // Component 0 is blue (association 3), 1 green and 2 red.
    const Block order = Jp2Box("cdef", {0, 3, 0, 0, 0, 0, 0, 3, 0, 1, 0, 0, 0, 2, 0, 2, 0, 0, 0, 1});

    EXPECT_EQ(DecodePixel({10, 20, 30}, ByteMaker().All(Jp2Colours(16)).All(order).Data()),
              (PixelBytes{10, 20, 30}));
    EXPECT_EQ(DecodePixel({10, 20, 30}, Jp2Colours(16)), (PixelBytes{30, 20, 10}));
}

TEST(J2kDecoder, ConvertsYccToRgb)
{
    for (const std::uint32_t space : {18u, 24u}) {
        EXPECT_EQ(DecodePixel({76, 85, 255}, Jp2Colours(space)), (PixelBytes{0, 0, 254}));
        EXPECT_EQ(DecodePixel({90, 128, 128}, Jp2Colours(space)), (PixelBytes{90, 90, 90}));
    }
}

TEST(J2kDecoder, ConvertsCmykToRgb)
{
    EXPECT_EQ(DecodePixel({0, 255, 0, 0}, Jp2Colours(12)), (PixelBytes{255, 0, 255}));
    EXPECT_EQ(DecodePixel({0, 0, 255, 128}, Jp2Colours(12)), (PixelBytes{0, 127, 127}));
}

TEST(J2kDecoder, ConvertsLabToRgb)
{
    // L* 54.3, a* 80.8, b* 69.9 is sRGB red with a D50 white point. As bytes: a over -85..85, b over
    // -75..125.
    const Block defaults = Jp2Colours(14);
    ExpectNear(DecodePixel({138, 249, 185}, defaults), {0, 0, 255}, 6);
    ExpectNear(DecodePixel({255, 128, 96}, defaults), {255, 255, 255}, 2);
    // The same with explicit ranges and offsets: a and b over -128..127.
    const Block own = Jp2Colours(14, ByteMaker().U32Be({100, 0, 255, 128, 255, 128, 0x00443530}).Data());
    ExpectNear(DecodePixel({138, 209, 198}, own), {0, 0, 255}, 6);
}

TEST(J2kDecoder, LooksUpPaletteIndexes)
{
    ImageBuffer indexes = OfPixel({0});
    indexes.bytes[1] = 1;
    const Block palette = Jp2Box("pclr", {0, 2, 3, 7, 7, 7, 10, 20, 30, 40, 50, 60});
    const Block mapping = Jp2Box("cmap", {0, 0, 1, 0, 0, 0, 1, 1, 0, 0, 1, 2});

    const auto image = Decoded(
        kJ2kCodec,
        Jp2File(5, 3, 1, ByteMaker().All(Jp2Colours(16)).All(palette).All(mapping).Data(), Stream(indexes)));

    ASSERT_TRUE(image);
    EXPECT_EQ(PixelBytes(image->bytes.begin(), image->bytes.begin() + 6),
              (PixelBytes{30, 20, 10, 60, 50, 40}));
}

TEST(J2kDecoder, KeepsProfileThatFitsPixels)
{
    const auto colour =
        Decoded(kJ2kCodec, Jp2File(5, 3, 3, Jp2Profile(SwappedProfile()), Stream(OfPixel({1, 2, 3}))));
    const auto grey =
        Decoded(kJ2kCodec, Jp2File(5, 3, 1, Jp2Profile(GreyProfile(1.0)), Stream(OfPixel({7}))));
    const auto wrong =
        Decoded(kJ2kCodec, Jp2File(5, 3, 3, Jp2Profile(GreyProfile(1.0)), Stream(OfPixel({1, 2, 3}))));

    ASSERT_TRUE(colour && grey && wrong);
    EXPECT_EQ(colour->icc_profile, SwappedProfile());
    EXPECT_EQ(colour->bytes[0], 1);
    EXPECT_EQ(grey->icc_profile, GreyProfile(1.0));
    EXPECT_TRUE(wrong->icc_profile.empty());
}

TEST(J2kDecoder, ConvertsCmykThroughEmbeddedProfile)
{
    // The profile swaps cyan and yellow: full cyan appears yellow.
    ExpectNear(DecodePixel({255, 0, 0, 0}, Jp2Profile(CmykProfile())), {0, 255, 255}, 12);
}

TEST(J2kDecoder, ReadsResolutionAndMetadata)
{
    const Block exif = {'I', 'I', 42, 0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const auto uuid = [](const std::string& id, const Block& content) {
        return Jp2Box("uuid", ByteMaker().Text(id).All(content).Data());
    };
    const Block boxes =
        ByteMaker()
            .All(uuid("JpgTiffExif->JP2", exif))
            .All(uuid("\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC", {'<', 'x', '>'}))
            .All(uuid("\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38", {0x1C, 2}))
            .All(uuid("0123456789abcdef", {1, 2, 3}))
            .Data();

    const auto image =
        Decoded(kJ2kCodec, Jp2File(5, 3, 1, ByteMaker().All(Jp2Colours(17)).All(kResolution).Data(),
                                   Stream(OfPixel({7})), boxes));

    ASSERT_TRUE(image);
    EXPECT_DOUBLE_EQ(image->dots_per_inch_x, 2000 * 0.0254);
    EXPECT_DOUBLE_EQ(image->dots_per_inch_y, 1000 * 0.0254);
    EXPECT_EQ(image->metadata.exif, exif);
    EXPECT_EQ(image->metadata.xmp, (Block{'<', 'x', '>'}));
    EXPECT_EQ(image->metadata.iptc, (Block{0x1C, 2}));
}

TEST(J2kDecoder, RefusesTruncationAtAnyByteBeforeEndMarker)
{
    for (const char* name : {"good/opj-plain.j2k", "good/opj-packets.jp2", "good/opj-parts.j2k"}) {
        const Block file = Sample(name);
        for (std::size_t size = 0; size + 2 < file.size(); ++size)
            ASSERT_FALSE(Decoded(kJ2kCodec, Bytes(file).first(size))) << name << " " << size;
        for (const std::size_t missing : {1u, 2u}) {
            const auto image = Decoded(kJ2kCodec, Bytes(file).first(file.size() - missing));
            ASSERT_TRUE(image) << name;
            EXPECT_EQ(DifferenceBetween(*image, Decoded(kJ2kCodec, file).value()).greatest, 0) << name;
        }
    }
}

TEST(J2kDecoder, SkipsUnknownMarkersWithoutParameters)
{
    for (const char* name : {"good/opj-plain.j2k", "good/opj-tiles.j2k"}) {
        const Block good = Sample(name);
        Block file = good;
        const auto insert = [&file](std::size_t at, const Block& bytes) {
            file.insert(file.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin(), bytes.end());
        };
        // Two in the header of the first tile-part, whose length changes, and one in the main header.
        const std::size_t part = MarkerAt(file, 0x90);
        const std::size_t length = file[part + 8] * 256u + file[part + 9] + 4;
        file[part + 8] = static_cast<std::uint8_t>(length / 256);
        file[part + 9] = static_cast<std::uint8_t>(length % 256);
        insert(part + 12, {0xFF, 0x30, 0xFF, 0x3F});
        insert(MarkerAt(file, 0x52), {0xFF, 0x35});

        const auto image = Decoded(kJ2kCodec, file);

        ASSERT_TRUE(image) << name;
        EXPECT_EQ(DifferenceBetween(*image, Decoded(kJ2kCodec, good).value()).greatest, 0) << name;
    }
}

TEST(J2kDecoder, AcceptsUnsizedLastTilePartBeforeEndMarker)
{
    Block file = Sample("good/opj-plain.j2k");
    const std::size_t part = MarkerAt(file, 0x90);
    std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(part) + 6, 4, std::uint8_t{0});

    const auto image = Decoded(kJ2kCodec, file);

    ASSERT_TRUE(image);
    EXPECT_EQ(DifferenceBetween(*image, Scene()).greatest, 0);
    EXPECT_FALSE(Decoded(kJ2kCodec, Bytes(file).first(file.size() - 2)));
    EXPECT_FALSE(Decoded(kJ2kCodec, Bytes(file).first(file.size() * 2 / 3)));
}

TEST(J2kDecoder, RefusesFilesWithMissingTile)
{
    Block file = Sample("good/opj-tiles.j2k");
    // Cuts out the first tile-part.
    const std::size_t part = MarkerAt(file, 0x90);
    const std::size_t length = file[part + 8] * 256u + file[part + 9];
    file.erase(file.begin() + static_cast<std::ptrdiff_t>(part),
               file.begin() + static_cast<std::ptrdiff_t>(part + length));

    EXPECT_FALSE(Decoded(kJ2kCodec, file));
}

TEST(J2kDecoder, RefusesCorruptAndForeignFiles)
{
    for (const char* name : {"cut/in-pixels.j2k", "cut/in-pixels.jp2", "lying/size.jp2",
                             "lying/too-large.j2k", "foreign/png.j2k"})
        EXPECT_FALSE(Decoded(kJ2kCodec, Sample(name))) << name;
    EXPECT_FALSE(kJ2kCodec.sniff(Sample("foreign/png.j2k"), "j2k"));
    EXPECT_TRUE(kJ2kCodec.sniff(Sample("good/opj-plain.j2k"), ""));
    EXPECT_TRUE(kJ2kCodec.sniff(Sample("good/opj-plain.jp2"), ""));
}

TEST(J2kCodestream, IsRefusedIfTilesOrPacketsExceedItsSize)
{
    const Block good = Sample("good/opj-plain.j2k");
    const std::size_t siz = MarkerAt(good, 0x51), cod = MarkerAt(good, 0x52);
    J2kLayout size;
    ASSERT_TRUE(MayDecode(good, size));
    EXPECT_EQ(size.components.size(), 3u);
    const auto with = [&](std::size_t at, const Block& bytes) {
        Block file = good;
        std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
        J2kLayout ignored;
        return MayDecode(file, ignored);
    };

    EXPECT_FALSE(with(siz + 22, {0, 0, 0, 1, 0, 0, 0, 1}));  // 1 x 1 tiles
    EXPECT_FALSE(with(siz + 22, {0, 0, 0, 0, 0, 0, 0, 1}));  // 0 x 1 tiles
    EXPECT_FALSE(with(siz + 14, {0, 0, 0, 83}));             // empty image area
    EXPECT_FALSE(with(siz + 38, {0, 0}));                    // no components
    EXPECT_FALSE(with(siz + 38, {0xFF, 0xFF}));              // more than the segment holds
    EXPECT_FALSE(with(siz + 41, {0}));                       // a component without a step
    EXPECT_FALSE(with(cod + 6, {0xFF, 0xFF}));               // layers
    EXPECT_FALSE(with(cod + 9, {33}));                       // decomposition levels
    EXPECT_FALSE(with(cod + 10, {20}));                      // code-block size
}

TEST(J2kDecoder, SurvivesCorruptionOfAnySingleByte)
{
    for (const char* name : {"good/opj-packets.jp2", "good/opj-bit1.j2k"}) {
        const Block file = Sample(name);
        for (std::size_t i = 0; i < file.size(); i += i < 400 ? 1 : 4) {  // after that there are only packets
            Block broken = file;
            broken[i] = static_cast<std::uint8_t>(broken[i] ^ (i % 3 == 0 ? 0x01 : i % 3 == 1 ? 0x80 : 0xFF));
            if (const auto image = Decoded(kJ2kCodec, broken)) {
                EXPECT_EQ(image->bytes.size(), static_cast<std::size_t>(image->width) *
                                                   static_cast<std::size_t>(image->height) *
                                                   static_cast<std::size_t>(image->channels));
            }
        }
    }
}
