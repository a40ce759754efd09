// Tests of icons and cursors from hand-made bytes: masks, alpha, corrupt directories.
#include "src/platform/image/codecs/ico/icon_directory.h"

#include <gtest/gtest.h>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/ico/cur.h"
#include "src/platform/image/codecs/ico/ico.h"
#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;
using Picture = std::vector<std::uint8_t>;

// A bitmap as stored in icons: rows includes those of the mask.
static ByteMaker Bitmap(std::uint32_t width, std::uint32_t rows, std::uint32_t bits,
                        std::uint32_t colours = 0)
{
    ByteMaker maker;
    maker.U32Le({40, width, rows}).U16Le({1, bits}).U32Le({0, 0, 0, 0, colours, 0});
    return maker;
}

// 2 by 1 pixels of 24 bits; the second is masked out.
static Picture SmallBitmap(int blue = 1)
{
    return Bitmap(2, 2, 24).U8({blue, 2, 3, 4, 5, 6, 0, 0}).U8({0x40, 0, 0, 0}).Data();
}

struct Entry {
    Picture picture;
    int width = 2;
    int height = 1;
    std::int64_t offset = -1;  ///< overrides the true offset in the directory
    std::int64_t size = -1;
};

static std::vector<std::uint8_t> Icon(const std::vector<Entry>& entries, std::uint32_t kind = 1,
                                      int count = -1)
{
    ByteMaker maker;
    maker.U16Le({0, kind, static_cast<std::uint32_t>(count < 0 ? static_cast<int>(entries.size()) : count)});
    std::size_t offset = 6 + 16 * entries.size();
    for (const Entry& entry : entries) {
        maker.U8({entry.width, entry.height, 0, 0, 1, 0, 0, 0});
        maker.U32Le({static_cast<std::uint32_t>(entry.size < 0 ? std::ssize(entry.picture) : entry.size),
                     static_cast<std::uint32_t>(entry.offset < 0 ? static_cast<std::int64_t>(offset)
                                                                 : entry.offset)});
        offset += entry.picture.size();
    }
    for (const Entry& entry : entries)
        maker.All(entry.picture);
    return maker.Data();
}

static Levels LevelsOf(const std::vector<std::uint8_t>& file, std::int32_t frame = 0)
{
    const auto image = Decoded(kIcoCodec, file, frame);
    if (!image)
        return {-1};
    EXPECT_EQ(image->channels, 4);
    return {image->bytes.begin(), image->bytes.end()};
}

static std::int32_t FramesOf(const std::vector<std::uint8_t>& bytes)
{
    InputFile file(bytes);
    const auto decoder = kIcoCodec.open(file);
    return decoder ? decoder->FrameCount() : 0;
}

TEST(IconBitmaps, AreTransparentWhereMaskIsSet)
{
    EXPECT_EQ(LevelsOf(Icon({{SmallBitmap()}})), (Levels{1, 2, 3, 255, 4, 5, 6, 0}));
}

TEST(IconBitmaps, HaveMaskAfterPixelsAtEveryDepth)
{
    const auto one = Bitmap(2, 2, 1).U8({1, 1, 1, 0, 2, 2, 2, 0, 0x40, 0, 0, 0, 0x80, 0, 0, 0});
    const auto four = Bitmap(2, 2, 4, 2).U8({1, 1, 1, 0, 2, 2, 2, 0, 0x01, 0, 0, 0, 0x80, 0, 0, 0});
    const auto eight = Bitmap(2, 2, 8, 2).U8({1, 1, 1, 0, 2, 2, 2, 0, 0, 1, 0, 0, 0x80, 0, 0, 0});
    const auto sixteen = Bitmap(2, 2, 16).U16Le({0x0421, 0x0842}).U8({0x80, 0, 0, 0});
    const Levels expected = {1, 1, 1, 0, 2, 2, 2, 255};

    EXPECT_EQ(LevelsOf(Icon({{one.Data()}})), expected);
    EXPECT_EQ(LevelsOf(Icon({{four.Data()}})), expected);
    EXPECT_EQ(LevelsOf(Icon({{eight.Data()}})), expected);
    EXPECT_EQ(LevelsOf(Icon({{sixteen.Data()}})), (Levels{8, 8, 8, 0, 16, 16, 16, 255}));
}

TEST(IconBitmaps, StorePixelsAndMaskFromBottomUp)
{
    const auto maker = Bitmap(1, 4, 24).U8({1, 1, 1, 0, 2, 2, 2, 0}).U8({0, 0, 0, 0, 0x80, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{maker.Data(), 1, 2}})), (Levels{2, 2, 2, 0, 1, 1, 1, 255}));
}

TEST(IconBitmaps, UseAlphaOfThirtyTwoBitPixels)
{
    const auto maker = Bitmap(2, 2, 32).U8({1, 2, 3, 100, 4, 5, 6, 0}).U8({0xC0, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{maker.Data()}})), (Levels{1, 2, 3, 100, 4, 5, 6, 0}));
}

TEST(IconBitmaps, FallBackToMaskIfAlphaIsZeroEverywhere)
{
    const auto maker = Bitmap(2, 2, 32).U8({1, 2, 3, 0, 4, 5, 6, 0});
    ByteMaker masked = maker;
    masked.U8({0x80, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{masked.Data()}})), (Levels{1, 2, 3, 0, 4, 5, 6, 255}));
    EXPECT_EQ(LevelsOf(Icon({{maker.Data()}})), (Levels{1, 2, 3, 255, 4, 5, 6, 255}))
        << "the mask is optional";
}

TEST(IconBitmaps, ShowInvertedPixelsAsOpaque)
{
    // Like a text cursor: everything is masked out, the first pixel inverts, the second does nothing.
    const auto maker = Bitmap(2, 2, 1).U8({0, 0, 0, 0, 255, 255, 255, 0, 0x80, 0, 0, 0, 0xC0, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{maker.Data()}})), (Levels{0, 0, 0, 255, 0, 0, 0, 0}));
}

TEST(IconBitmaps, AreOpaqueIfHeaderCountsNoMaskRows)
{
    const auto maker = Bitmap(2, 2, 24).U8({1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{maker.Data(), 2, 2}})),
              (Levels{7, 8, 9, 255, 10, 11, 12, 255, 1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(IconBitmaps, AreRefusedIfMaskIsMissing)
{
    const auto maker = Bitmap(2, 2, 24).U8({1, 2, 3, 4, 5, 6, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{maker.Data()}})), Levels{-1});
}

TEST(IconBitmaps, AreRefusedInUnsupportedForms)
{
    ByteMaker runs;
    runs.U32Le({40, 2, 2}).U16Le({1, 8}).U32Le({1, 0, 0, 0, 1, 0}).U8({1, 1, 1, 0, 2, 0, 0, 1, 0, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Icon({{runs.Data()}})), Levels{-1});
    EXPECT_EQ(LevelsOf(Icon({{Bitmap(2, 1, 24).Zeros(50).Data(), 2, 7}})), Levels{-1}) << "no row of pixels";
    EXPECT_EQ(LevelsOf(Icon({{Bitmap(60000, 16000, 32).Zeros(50).Data()}})), Levels{-1});
    EXPECT_EQ(LevelsOf(Icon({{Picture{}, 2, 1, 22, 0}})), Levels{-1}) << "empty entry";
    EXPECT_EQ(LevelsOf(Icon({{Picture{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0}}})), Levels{-1});
}

TEST(IconPngs, AlwaysDecodeToFourChannels)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer inner = Pattern(9, 5, channels);
        const auto image = Decoded(kIcoCodec, Icon({{Encoded(kPngCodec, inner), 9, 5}}));

        ASSERT_TRUE(image);
        EXPECT_EQ(image->channels, 4);
        EXPECT_EQ(BgraOf(*image), BgraOf(inner));
    }
}

TEST(IconPngs, AffectOnlyTheirOwnPageIfTruncated)
{
    auto png = Encoded(kPngCodec, Pattern(9, 5, 3));
    png.resize(png.size() / 2);
    const auto file = Icon({{png, 9, 5}, {SmallBitmap(20)}});

    EXPECT_EQ(LevelsOf(file, 0), Levels{-1});
    EXPECT_EQ(LevelsOf(file, 1)[0], 20);
}

TEST(IconDirectory, ListsPagesInFileOrder)
{
    const auto file = Icon({{SmallBitmap(10)}, {SmallBitmap(20)}, {SmallBitmap(30)}});

    EXPECT_EQ(FramesOf(file), 3);
    for (std::int32_t frame = 0; frame < 3; ++frame)
        EXPECT_EQ(LevelsOf(file, frame)[0], 10 + 10 * frame);
}

TEST(IconDirectory, LosesOnlyCorruptEntries)
{
    const auto file = Icon({{SmallBitmap(10), 2, 1, 0x7FFFFFFF},
                            {SmallBitmap(20)},
                            {SmallBitmap(30), 2, 1, -1, 0x7FFFFFFF},
                            {SmallBitmap(40), 2, 1, 3},
                            {SmallBitmap(50), 2, 1, -1, 20},
                            {SmallBitmap(60), 99, 99}});

    ASSERT_EQ(FramesOf(file), 6);
    EXPECT_EQ(LevelsOf(file, 0), Levels{-1}) << "beyond the file";
    EXPECT_EQ(LevelsOf(file, 1)[0], 20);
    EXPECT_EQ(LevelsOf(file, 2), Levels{-1}) << "longer than the file";
    EXPECT_EQ(LevelsOf(file, 3), Levels{-1}) << "overlaps the directory";
    EXPECT_EQ(LevelsOf(file, 4), Levels{-1}) << "too short";
    EXPECT_EQ(LevelsOf(file, 5)[0], 60) << "the size in the bitmap wins";
}

TEST(IconDirectory, MayReferToSamePictureTwice)
{
    const auto file = Icon({{SmallBitmap(10)}, {Picture{}, 2, 1, 38, std::ssize(SmallBitmap())}});

    EXPECT_EQ(LevelsOf(file, 0), LevelsOf(file, 1));
}

TEST(IconDirectory, IsLimitedBySizeOfFile)
{
    EXPECT_EQ(FramesOf(Icon({{SmallBitmap()}}, 1, 65535)),
              static_cast<std::int32_t>((16 + SmallBitmap().size()) / 16));
    EXPECT_EQ(FramesOf(Icon({}, 1, 5)), 0);
    EXPECT_EQ(FramesOf(Icon({{SmallBitmap()}}, 1, 0)), 0);
    EXPECT_EQ(FramesOf({}), 0);
}

static std::int32_t MainFrameOf(const std::vector<std::uint8_t>& bytes)
{
    InputFile file(bytes);
    return kIcoCodec.open(file)->MainFrame();
}

// A bitmap of 24 or 32 bits with its mask.
static Picture Square(std::uint32_t side, std::uint32_t bits)
{
    const std::size_t mask = (side + 31) / 32 * 4;
    return Bitmap(side, side * 2, bits).Zeros(side * (side * bits / 8 + mask)).Data();
}

TEST(IconDirectory, HasLargestPictureAsMainPage)
{
    EXPECT_EQ(MainFrameOf(Icon({{Square(16, 32)}, {Square(48, 24)}, {Square(32, 32)}})), 1);
    EXPECT_EQ(MainFrameOf(Icon({{Square(16, 24)}, {Square(16, 32)}, {Square(16, 24)}})), 1) << "the deepest";
    EXPECT_EQ(MainFrameOf(Icon({{Square(16, 32)}, {Square(16, 32)}})), 0) << "the first of equals";
    EXPECT_EQ(MainFrameOf(Icon({{Square(16, 32)}, {Encoded(kPngCodec, Noise(64, 64, 4)), 0, 0}})), 1);
}

TEST(IconDirectory, IgnoresItsOwnSizesWhenItPicksMainPage)
{
    EXPECT_EQ(MainFrameOf(Icon({{Square(16, 32), 0, 0}, {Square(32, 32), 16, 16}})), 1);
}

TEST(IconDirectory, NeverHasCorruptMainPageIfAnotherIsWhole)
{
    auto png = Encoded(kPngCodec, Noise(64, 64, 4));
    png.resize(20);

    EXPECT_EQ(MainFrameOf(Icon({{Square(64, 32), 64, 64, 0x7FFFFFFF}, {png, 64, 64}, {Square(16, 32)}})), 2);
}

TEST(IconBitmaps, HaveMaskIfDirectoryCountsItsRowsToo)
{
    const auto deep = Bitmap(2, 4, 24).U8({1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0}).Zeros(8);
    const auto flat =
        Bitmap(2, 4, 1).U8({1, 1, 1, 0, 2, 2, 2, 0}).U8({0x40, 0, 0, 0, 0x80, 0, 0, 0}).Zeros(8);

    EXPECT_EQ(LevelsOf(Icon({{Picture(deep.Data().begin(), deep.Data().end() - 4), 2, 4}})), Levels{-1})
        << "neither the mask nor four rows are complete";
    EXPECT_EQ(LevelsOf(Icon({{deep.Data(), 2, 4}})),
              (Levels{7, 8, 9, 255, 10, 11, 12, 255, 1, 2, 3, 255, 4, 5, 6, 255}));
    EXPECT_EQ(LevelsOf(Icon({{flat.Data(), 2, 4}})),
              (Levels{2, 2, 2, 255, 1, 1, 1, 255, 1, 1, 1, 255, 2, 2, 2, 255}));
}

TEST(IconSniff, DistinguishesIconsFromCursors)
{
    const auto icon_file = Icon({{SmallBitmap()}}, 1);
    const auto cursor_file = Icon({{SmallBitmap()}}, 2);

    EXPECT_TRUE(kIcoCodec.sniff(icon_file, ""));
    EXPECT_FALSE(kCurCodec.sniff(icon_file, ""));
    EXPECT_FALSE(kIcoCodec.sniff(cursor_file, ""));
    EXPECT_TRUE(kCurCodec.sniff(cursor_file, ""));
    EXPECT_FALSE(kIcoCodec.sniff(Icon({{SmallBitmap()}}, 3), ""));
    EXPECT_TRUE(Decoded(kCurCodec, cursor_file));
}

TEST(IconSniff, RequiresPlausibleEntry)
{
    EXPECT_TRUE(kIcoCodec.sniff(Icon({{SmallBitmap(), 2, 1, 3}, {SmallBitmap()}}), ""));
    EXPECT_FALSE(kIcoCodec.sniff(Icon({{SmallBitmap(), 2, 1, 3}}), ""));
    EXPECT_FALSE(kIcoCodec.sniff(Icon({{SmallBitmap(), 2, 1, -1, 0}}), ""));
    EXPECT_FALSE(kIcoCodec.sniff(ByteMaker().Zeros(100).Data(), ""));
    EXPECT_FALSE(kIcoCodec.sniff(Bytes{}, ""));
}

TEST(IconCodecs, HaveNoEncoder)
{
    EXPECT_EQ(kIcoCodec.encode, nullptr);
    EXPECT_EQ(kCurCodec.encode, nullptr);
    EXPECT_EQ(kIcoCodec.type, FileType{12});
    EXPECT_EQ(kCurCodec.type, FileType{13});
}
