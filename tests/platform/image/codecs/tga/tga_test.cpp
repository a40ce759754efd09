// Tests of Targa files: types, origins, colour maps, alpha and runs from hand-made bytes, and written texts.
#include "src/platform/image/codecs/tga/tga.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/platform/image/codecs/tga/tga_header.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static constexpr int kFromRight = 16, kFromTop = 32;

static ByteMaker Header(int kind, std::uint32_t width, std::uint32_t height, int bits,
                        int descriptor = kFromTop)
{
    ByteMaker maker;
    maker.U8({0, 0, kind}).Zeros(9).U16Le({width, height}).U8({bits, descriptor});
    return maker;
}

static ByteMaker MappedHeader(std::uint32_t width, int bits, std::uint32_t first, std::uint32_t length,
                              int map_bits, int descriptor = kFromTop)
{
    ByteMaker maker;
    maker.U8({0, 1, 1})
        .U16Le({first, length})
        .U8({map_bits, 0, 0, 0, 0})
        .U16Le({width, 1})
        .U8({bits, descriptor});
    return maker;
}

// Adds a footer and an extension area with the given attributes type for alpha.
static ByteMaker WithExtension(ByteMaker maker, int alpha)
{
    const auto extension = static_cast<std::uint32_t>(maker.Size());
    maker.U16Le({495}).Zeros(492).U8({alpha});
    maker.U32Le({extension, 0}).Text("TRUEVISION-XFILE.").U8({0});
    return maker;
}

static Levels LevelsOf(const ByteMaker& maker)
{
    const auto image = Decoded(kTgaCodec, maker.Data());
    return image ? Levels{image->bytes.begin(), image->bytes.end()} : Levels{-1};
}

TEST(TgaDecoder, ReadsRowsFromAllFourCorners)
{
    const auto from = [](int descriptor) {
        return LevelsOf(Header(3, 2, 2, 8, descriptor).U8({1, 2, 3, 4}));
    };

    EXPECT_EQ(from(0), (Levels{3, 4, 1, 2}));
    EXPECT_EQ(from(kFromTop), (Levels{1, 2, 3, 4}));
    EXPECT_EQ(from(kFromRight), (Levels{4, 3, 2, 1}));
    EXPECT_EQ(from(kFromRight | kFromTop), (Levels{2, 1, 4, 3}));
}

TEST(TgaDecoder, MirrorsRowsOfAnyChannelCount)
{
    EXPECT_EQ(LevelsOf(Header(2, 3, 1, 24, kFromTop | kFromRight).U8({1, 2, 3, 4, 5, 6, 7, 8, 9})),
              (Levels{7, 8, 9, 4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 32, kFromTop | kFromRight | 8).U8({1, 2, 3, 4, 5, 6, 7, 8})),
              (Levels{5, 6, 7, 8, 1, 2, 3, 4}));
}

TEST(TgaDecoder, ReadsFifteenAndSixteenBits)
{
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 15).U16Le({0x7C00, 0x8210})), (Levels{0, 0, 255, 132, 132, 0}));
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 16).U16Le({0x7C00, 0x8210})), (Levels{0, 0, 255, 132, 132, 0}))
        << "the header announces no alpha";
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 16, kFromTop | 1).U16Le({0x7C00, 0x8210})),
              (Levels{0, 0, 255, 0, 132, 132, 0, 255}));
}

TEST(TgaDecoder, ReadsColourMapsOfEveryDepthAndOffset)
{
    EXPECT_EQ(LevelsOf(MappedHeader(3, 8, 5, 2, 24).U8({1, 2, 3, 4, 5, 6}).U8({6, 5, 0})),
              (Levels{4, 5, 6, 1, 2, 3, 0, 0, 0}));
    EXPECT_EQ(LevelsOf(MappedHeader(2, 8, 0, 2, 15).U16Le({0x7C00, 0x001F}).U8({1, 0})),
              (Levels{255, 0, 0, 0, 0, 255}));
    EXPECT_EQ(LevelsOf(MappedHeader(2, 8, 0, 2, 32).U8({1, 2, 3, 4, 5, 6, 7, 8}).U8({1, 0})),
              (Levels{5, 6, 7, 8, 1, 2, 3, 4}));
    EXPECT_EQ(LevelsOf(MappedHeader(2, 8, 0, 2, 24).U8({7, 7, 7, 9, 9, 9}).U8({1, 0})), (Levels{9, 7}))
        << "a map of greys";
    EXPECT_EQ(LevelsOf(MappedHeader(2, 16, 300, 2, 24).U8({7, 7, 7, 9, 9, 9}).U16Le({301, 65535})),
              (Levels{9, 0}));
}

TEST(TgaDecoder, SkipsIdAndUnusedColourMap)
{
    ByteMaker maker;
    maker.U8({5, 1, 2}).U16Le({0, 2}).U8({24, 0, 0, 0, 0}).U16Le({1, 1}).U8({24, kFromTop});

    EXPECT_EQ(LevelsOf(maker.Text("hello").Zeros(6).U8({1, 2, 3})), (Levels{1, 2, 3}));
}

TEST(TgaDecoder, ReadsGreyWithAlpha)
{
    EXPECT_EQ(LevelsOf(Header(3, 2, 1, 16, kFromTop | 8).U8({10, 20, 30, 40})),
              (Levels{10, 10, 10, 20, 30, 30, 30, 40}));
}

TEST(TgaDecoder, ReadsRunLengthAndRawPackets)
{
    EXPECT_EQ(LevelsOf(Header(10, 2, 2, 24).U8({0x81, 1, 2, 3, 1, 4, 5, 6, 7, 8, 9})),
              (Levels{1, 2, 3, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(LevelsOf(Header(11, 2, 2, 8).U8({0x80, 9, 0x82, 7})), (Levels{9, 7, 7, 7}))
        << "a packet continues in the next row";
    EXPECT_EQ(LevelsOf(Header(11, 2, 2, 8).U8({0x80, 9, 2, 7, 6, 5})), (Levels{9, 7, 6, 5}));
    EXPECT_EQ(LevelsOf(Header(11, 2, 1, 8).U8({0xFF, 9})), (Levels{9, 9})) << "an excess packet is clipped";
    EXPECT_EQ(LevelsOf(Header(9, 1, 1, 8).U8({0, 0})), Levels{-1}) << "indexes without a map";
}

TEST(TgaDecoder, RefusesTruncatedPackets)
{
    for (const auto& end : {std::vector<std::uint8_t>{}, {0x81}, {0x81, 1, 2}, {1, 1, 2, 3}, {0x80, 1, 2, 3}})
        EXPECT_EQ(LevelsOf(Header(10, 2, 1, 24).All(end)), Levels{-1});
}

TEST(TgaAlpha, IsUsedUnlessItIsZeroEverywhere)
{
    const Levels with = {1, 2, 3, 4, 5, 6, 7, 8};

    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 32, kFromTop | 8).U8({1, 2, 3, 4, 5, 6, 7, 8})), with);
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 32).U8({1, 2, 3, 4, 5, 6, 7, 8})), with)
        << "not announced, but present";
    EXPECT_EQ(LevelsOf(Header(2, 2, 1, 32, kFromTop | 8).U8({1, 2, 3, 0, 5, 6, 7, 0})),
              (Levels{1, 2, 3, 5, 6, 7}));
}

TEST(TgaAlpha, FollowsAttributesTypeOfExtensionArea)
{
    const ByteMaker maker = Header(2, 2, 1, 32, kFromTop | 8).U8({10, 20, 30, 128, 5, 6, 7, 0});
    const Levels kept = {10, 20, 30, 128, 5, 6, 7, 0};

    EXPECT_EQ(LevelsOf(WithExtension(maker, 0)), kept) << "denied, but present";
    EXPECT_EQ(LevelsOf(WithExtension(maker, 1)), kept) << "denied, but present";
    EXPECT_EQ(LevelsOf(WithExtension(maker, 2)), kept);
    EXPECT_EQ(LevelsOf(WithExtension(maker, 3)), kept);
    EXPECT_EQ(LevelsOf(WithExtension(maker, 4)), (Levels{20, 40, 60, 128, 5, 6, 7, 0})) << "divided by alpha";
    EXPECT_EQ(LevelsOf(WithExtension(maker, 99)), kept) << "unknown attributes type";
}

TEST(TgaAlpha, IsDroppedIfUniformAndDenied)
{
    const ByteMaker clear = Header(2, 2, 1, 32).U8({1, 2, 3, 0, 5, 6, 7, 0});
    const ByteMaker opaque = Header(2, 2, 1, 32).U8({1, 2, 3, 255, 5, 6, 7, 255});
    const ByteMaker half = Header(2, 2, 1, 32).U8({1, 2, 3, 128, 5, 6, 7, 128});
    const Levels colours = {1, 2, 3, 5, 6, 7};

    for (const int denied : {0, 1}) {
        EXPECT_EQ(LevelsOf(WithExtension(clear, denied)), colours);
        EXPECT_EQ(LevelsOf(WithExtension(opaque, denied)), colours);
        EXPECT_EQ(LevelsOf(WithExtension(half, denied)), (Levels{1, 2, 3, 128, 5, 6, 7, 128}));
    }
    for (const int allowed : {2, 3, 99}) {
        EXPECT_EQ(LevelsOf(WithExtension(clear, allowed)), colours);
        EXPECT_EQ(LevelsOf(WithExtension(opaque, allowed)), (Levels{1, 2, 3, 255, 5, 6, 7, 255}));
    }
}

TEST(TgaAlpha, IsClampedIfPremultipliedColourExceedsIt)
{
    EXPECT_EQ(LevelsOf(WithExtension(Header(2, 1, 1, 32).U8({200, 100, 50, 100}), 4)),
              (Levels{255, 255, 128, 100}));
}

TEST(TgaAlpha, SurvivesCorruptFooter)
{
    ByteMaker maker = Header(2, 1, 1, 32, kFromTop | 8).U8({1, 2, 3, 4}).Zeros(600);
    for (const std::uint32_t extension : {0u, 17u, 200u, 0xFFFFFFFFu}) {
        ByteMaker footer = maker;
        footer.U32Le({extension, 0}).Text("TRUEVISION-XFILE.").U8({0});
        EXPECT_EQ(LevelsOf(footer), (Levels{1, 2, 3, 4})) << extension;
    }
}

TEST(TgaSniff, RequiresExtensionAndPlausibleHeader)
{
    const auto known = [](const ByteMaker& maker, std::string_view extension = "tga") {
        return kTgaCodec.sniff(maker.Data(), extension);
    };

    for (const char* extension : {"tga", "targa", "vda", "icb", "vst"})
        EXPECT_TRUE(known(Header(2, 1, 1, 24), extension));
    EXPECT_FALSE(known(Header(2, 1, 1, 24), "jpg"));
    EXPECT_FALSE(known(Header(2, 1, 1, 24), ""));
    EXPECT_FALSE(known(Header(2, 0, 1, 24)));
    EXPECT_FALSE(known(Header(2, 1, 1, 17)));
    EXPECT_FALSE(known(Header(2, 1, 1, 8)));
    EXPECT_FALSE(known(Header(3, 1, 1, 24)));
    EXPECT_FALSE(known(Header(0, 1, 1, 24)));
    EXPECT_FALSE(known(Header(32, 1, 1, 24)));
    EXPECT_FALSE(known(Header(33, 1, 1, 24)));
    EXPECT_FALSE(known(Header(1, 1, 1, 8))) << "indexes without a map";
    EXPECT_FALSE(known(Header(2, 1, 1, 24, 0x40))) << "interleaved";
    EXPECT_FALSE(known(MappedHeader(1, 8, 0, 1, 8))) << "a map of unknown depth";
    EXPECT_FALSE(known(ByteMaker().Text("GIF89a, and then some more")));
    EXPECT_FALSE(known(ByteMaker().Zeros(17)));
}

TEST(TgaDecoder, RefusesSizesLargerThanData)
{
    EXPECT_EQ(LevelsOf(Header(2, 60000, 8000, 24).Zeros(5000)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(10, 60000, 8000, 24).Zeros(5000)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(2, 65535, 1, 24).Zeros(200000)), Levels{-1}) << "too wide";
}

// The extension area of an uncompressed 8 by 2 picture.
static std::vector<std::uint8_t> WrittenArea(const ImageInfoTexts& info, std::int32_t channels = 3)
{
    SaveSettings settings;
    settings.texts = info;
    const auto file = Encoded(kTgaCodec, Noise(8, 2, channels), settings);
    EXPECT_EQ(file.size(), 18u + 16 * static_cast<std::size_t>(channels) + 495 + 26);
    return {file.end() - 26 - 495, file.end() - 26};
}

static ImageInfoTexts TextsWith(const std::string& title, const std::string& description,
                                const std::string& date_time, const std::string& author)
{
    ImageInfoTexts result;
    result.sTitle = title;
    result.sDescription = description;
    result.sDateTime = date_time;
    result.sAuthor = author;
    return result;
}

static std::string TextAt(const std::vector<std::uint8_t>& area, std::size_t offset)
{
    return reinterpret_cast<const char*>(area.data() + offset);
}

TEST(TgaTexts, GoToTheirFields)
{
    const auto area = WrittenArea(TextsWith("The title", "What is seen", "2021-03-04 15:06:07", "Somebody"));

    EXPECT_EQ(ByteReader(area).U16Le(), 495);
    EXPECT_EQ(TextAt(area, 2), "Somebody");
    EXPECT_EQ(TextAt(area, 43), "The title");
    EXPECT_EQ(TextAt(area, 43 + 81), "What is seen");
    EXPECT_EQ(Levels(area.begin() + 367, area.begin() + 379),
              (Levels{3, 0, 4, 0, 2021 % 256, 2021 / 256, 15, 0, 6, 0, 7, 0}));
    EXPECT_EQ(TextAt(area, 379), "The title");
    EXPECT_EQ(TextAt(area, 426), "Varnel");
    EXPECT_EQ(area.back(), 0);
}

TEST(TgaTexts, LeaveFieldsEmptyIfEmptyOrInvalidDate)
{
    const auto area = WrittenArea(TextsWith("", "", "last summer", ""));

    for (std::size_t i = 2; i < 426; ++i)
        EXPECT_EQ(area[i], 0) << i;
}

TEST(TgaTexts, AreTruncatedBetweenCharacters)
{
    const std::string long_text(500, 'x');
    const auto area = WrittenArea(TextsWith("t", long_text, "", std::string(39, 'a') + "€uro"));

    EXPECT_EQ(TextAt(area, 2), std::string(39, 'a'));
    for (std::size_t line = 1; line < 4; ++line)
        EXPECT_EQ(TextAt(area, 43 + 81 * line), std::string(80, 'x'));
    EXPECT_EQ(Levels(area.begin() + 367, area.begin() + 379), Levels(12, 0))
        << "the text must not overflow into the date";
}

TEST(TgaTexts, AreSplitAtLineEndsAndTolerateStrayBytes)
{
    const auto area = WrittenArea(TextsWith("", "one\n\ntwo\n" + std::string(200, '\x80'), "", ""));

    EXPECT_EQ(TextAt(area, 43), "one");
    EXPECT_EQ(TextAt(area, 43 + 81), "");
    EXPECT_EQ(TextAt(area, 43 + 162), "two");
}

TEST(TgaEncoder, MarksAlphaAsUseful)
{
    EXPECT_EQ(WrittenArea({}, 4).back(), 3);
}

TEST(TgaEncoder, WritesRunsIfTheySaveFifth)
{
    ImageBuffer flat = Pattern(100, 50, 3);
    std::fill(flat.bytes.begin(), flat.bytes.end(), std::uint8_t{9});

    EXPECT_EQ(Encoded(kTgaCodec, flat)[2], 10);
    EXPECT_LT(Encoded(kTgaCodec, flat).size(), 1500u);
    EXPECT_EQ(Encoded(kTgaCodec, Noise(100, 50, 3))[2], 2);
    EXPECT_EQ(Encoded(kTgaCodec, Noise(100, 50, 1))[2], 3);
}
