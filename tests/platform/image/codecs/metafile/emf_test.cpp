// Tests of EMF files: detection, refusal, writing and reading back.
#include "src/platform/image/codecs/metafile/emf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "src/platform/image/codecs/metafile/emf_header.h"
#include "src/platform/image/codecs/registry.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

static std::vector<std::uint8_t> WrittenFile(const ImageBuffer& image, const ImageInfoTexts& texts = {})
{
    SaveSettings settings;
    settings.texts = texts;
    return Encoded(kEmfCodec, image, settings);
}

/// Inserts a no-op record before the bitmap, so that the file must be played.
static std::vector<std::uint8_t> ToBePlayed(std::vector<std::uint8_t> file)
{
    const std::vector<std::uint8_t> record = ByteMaker().U32Le({Emr::kSetBkMode, 12, 1}).Data();
    file.insert(file.begin() + static_cast<std::ptrdiff_t>(ByteReader(Bytes(file).subspan(4)).U32Le()),
                record.begin(), record.end());
    return file;
}

TEST(CodecEmf, IsFoundByTypeAndContent)
{
    const std::vector<std::uint8_t> file = EmfMaker(10, 10).File();

    EXPECT_EQ(CodecOfType(FileType{5}), &kEmfCodec);
    EXPECT_EQ(CodecOfContent(file, "png"), &kEmfCodec);
    EXPECT_FALSE(kEmfCodec.sniff(Bytes(file).first(43), "emf"));
}

TEST(EmfWriter, RoundTripsPixels)
{
    for (const std::int32_t channels : {1, 3})
        for (const auto& [width, height] :
             {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(400, 3)}) {
            const ImageBuffer image = Pattern(width, height, channels);
            const auto back = Decoded(kEmfCodec, WrittenFile(image));

            ASSERT_TRUE(back.has_value());
            EXPECT_EQ(back->width, width);
            EXPECT_EQ(back->height, height);
            EXPECT_EQ(back->channels, channels);
            EXPECT_EQ(back->bytes, image.bytes);
        }
}

TEST(EmfWriter, WritesRecordsThatPlayerDrawsExactly)
{
    for (const auto& [width, height] :
         {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(5000, 2)}) {
        const ImageBuffer image = Pattern(width, height, 3);
        const auto back = Decoded(kEmfCodec, ToBePlayed(WrittenFile(image)));

        ASSERT_TRUE(back.has_value());
        EXPECT_EQ(back->width, width);
        EXPECT_EQ(back->bytes, image.bytes);
    }
}

TEST(EmfWriter, SupportsPicturesWiderThanCairoSurfaces)
{
    const ImageBuffer image = Pattern(50000, 2, 3);
    const auto back = Decoded(kEmfCodec, WrittenFile(image));
    const auto played_back = Decoded(kEmfCodec, ToBePlayed(WrittenFile(image)));

    ASSERT_TRUE(back && played_back);
    EXPECT_EQ(back->bytes, image.bytes);
    EXPECT_EQ(played_back->bytes, image.bytes);
}

TEST(EmfWriter, WritesTextsAsDescription)
{
    ImageInfoTexts texts;
    texts.sTitle =
        "Stra\xC3\x9F"
        "e";
    texts.sAuthor = "\xF0\x9F\x98\x80";
    const std::vector<std::uint8_t> file = WrittenFile(Pattern(5, 5, 3), texts);
    ByteReader reader(Bytes(file).subspan(60));
    const std::uint32_t words = reader.U32Le();
    const std::uint32_t offset = reader.U32Le();
    ByteReader text_reader(Bytes(file).subspan(offset));
    std::u16string text;
    for (std::uint32_t n = 0; n < words; ++n)
        text.push_back(text_reader.U16Le());

    EXPECT_EQ(text, std::u16string(u"Varnel\0Stra\u00dfe; \U0001f600\0\0", 19));
    EXPECT_TRUE(Decoded(kEmfCodec, file).has_value());
}

TEST(EmfWriter, WritesHeaderThatMatchesFile)
{
    const std::vector<std::uint8_t> file = WrittenFile(Pattern(30, 20, 3));
    ByteReader reader(Bytes(file).subspan(48));

    EXPECT_EQ(reader.U32Le(), file.size());
    EXPECT_EQ(reader.U32Le(), 4u);  // number of records
    EXPECT_TRUE(IsWholeEmf(file));
    EXPECT_EQ(file.size() % 4, 0u);
}

TEST(EmfWriter, WritesFilesThatOtherProgramsRead)
{
    const TestFolder folder;
    for (const std::int32_t channels : {1, 3}) {
        const ImageBuffer image = Pattern(37, 23, channels);
        WriteFileContent(folder.Path("a.emf"), WrittenFile(image));
        ASSERT_TRUE(RunCommand("emf2svg-conv -i " + folder.Path("a.emf") + " -o " + folder.Path("a.svg")));
        ASSERT_TRUE(RunCommand("grep -o 'base64,[^\"]*' " + folder.Path("a.svg") +
                               " | cut -c8- | base64 -d > " + folder.Path("a.png")));
        ASSERT_TRUE(RunCommand("convert " + folder.Path("a.png") +
                               " -alpha off -type truecolor ppm:" + folder.Path("a.ppm")));
        const auto seen = ReadPnm(folder.Path("a.ppm"));

        ASSERT_TRUE(seen.has_value());
        ASSERT_EQ(seen->width, 37);
        ASSERT_EQ(seen->height, 23);
        for (std::int32_t x = 0; x < 37; ++x)
            ASSERT_EQ(ColorAt(*seen, x, x % 23), ColorAt(image, x, x % 23));
    }
}

TEST(EmfReader, RefusesTruncationAtAnyByte)
{
    for (const std::vector<std::uint8_t>& file :
         {WrittenFile(Pattern(7, 5, 3)), EmfMaker(20, 20)
                                             .Brush(1, kRed)
                                             .Record(Emr::kRectangle, {1, 1, 9, 9})
                                             .Bounded(Emr::kPolygon, {3, 1, 1, 9, 1, 5, 9})
                                             .File()})
        for (std::size_t size = 0; size < file.size() - 20; ++size)
            ASSERT_FALSE(Decoded(kEmfCodec, Bytes(file).first(size)).has_value()) << size;
}

TEST(EmfReader, RefusesEmptyOrOversizedFrame)
{
    std::vector<std::uint8_t> huge = EmfMaker(20, 20).File();
    huge[34] = 0x7F;  // over 2,000 metres wide
    std::vector<std::uint8_t> none = EmfMaker(20, 20).File();
    for (std::size_t n = 8; n < 40; ++n)
        none[n] = n < 16 ? 1 : 0;

    EXPECT_FALSE(Decoded(kEmfCodec, huge).has_value());
    EXPECT_FALSE(Decoded(kEmfCodec, none).has_value());
}

TEST(EmfReader, UsesBoundsIfFrameIsMissing)
{
    std::vector<std::uint8_t> file = EmfMaker(30, 20).File();
    for (std::size_t n = 24; n < 40; ++n)
        file[n] = 0;
    const auto image = Decoded(kEmfCodec, file);

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->width, 30);
    EXPECT_EQ(image->height, 20);
}

TEST(EmfReader, UsesFrameAtAnyDeviceResolution)
{
    std::vector<std::uint8_t> file =
        EmfMaker(40, 40).Brush(1, kRed).Select(kNullPen).Record(Emr::kRectangle, {0, 0, 100, 100}).File();
    // A 480 dpi device: 100 device pixels are 20 picture pixels.
    const std::vector<std::uint8_t> device = ByteMaker().U32Le({9600, 7200}).Data();
    std::copy(device.begin(), device.end(), file.begin() + 72);
    const auto image = Decoded(kEmfCodec, file);

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(CountOf(*image, kRed, {0, 0, 40, 40}), 400);
}

TEST(EmfReader, StartsAtCornerOfFrame)
{
    std::vector<std::uint8_t> file =
        EmfMaker(40, 40).Brush(1, kRed).Select(kNullPen).Record(Emr::kRectangle, {10, 20, 20, 30}).File();
    const std::vector<std::uint8_t> frame = ByteMaker().U32Le({265, 529, 1323, 1588}).Data();
    std::copy(frame.begin(), frame.end(), file.begin() + 24);
    const auto image = Decoded(kEmfCodec, file);

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(InkBounds(*image), (std::array<std::int32_t, 4>{0, 0, 10, 10}));
}

TEST(EmfReader, DrawsLargeFrameSmaller)
{
    EmfMaker maker(20000, 10000);
    const ImageBuffer image =
        Render(maker.Select(kNullPen).Brush(1, kRed).Record(Emr::kRectangle, {0, 0, 10000, 10000}));

    EXPECT_EQ(image.width, 8192);
    EXPECT_EQ(image.height, 4096);
    EXPECT_EQ(ColorAt(image, 4095, 4095), kRed);
    EXPECT_EQ(ColorAt(image, 4096, 4095), kWhite);
}

TEST(EmfReader, RefusesFileInWhichNothingCanBeDrawn)
{
    const auto refused = [](const EmfMaker& maker) { return !Decoded(kEmfCodec, maker.File()).has_value(); };

    EXPECT_TRUE(refused(EmfMaker(20, 20).Bounded(Emr::kPolygon, {1000, 1, 1})));
    EXPECT_TRUE(refused(EmfMaker(20, 20).Bounded(Emr::kPolyPolygon, {2, 4, 3, 3, 1, 1})));
    EXPECT_TRUE(refused(EmfMaker(20, 20).Bounded(Emr::kPolyPolygon, {0x40000000, 4, 3, 3, 1, 1})));
    EXPECT_TRUE(refused(EmfMaker(20, 20).Record(Emr::kRectangle, {1, 2})));
    EXPECT_TRUE(refused(
        EmfMaker(20, 20).Bounded(Emr::kStretchDibits, {0, 0, 0, 0, 1, 1, 80, 40, 4000, 4, 0, 0, 1, 1})));
}

TEST(EmfReader, RefusesFileDrawnByEmfPlusOnly)
{
    const auto comment = [](std::uint16_t flags) {
        return ByteMaker()
            .U32Le({32, 0x2B464D45})
            .U16Le({0x4001, flags})
            .U32Le({28, 16, 0xDBC01001, 0, 96, 96});
    };

    EXPECT_FALSE(Decoded(kEmfCodec, EmfMaker(20, 20).Record(Emr::kComment, comment(0)).File()).has_value());
    EXPECT_TRUE(Decoded(kEmfCodec, EmfMaker(20, 20).Record(Emr::kComment, comment(1)).File()).has_value());
    EXPECT_TRUE(
        Decoded(
            kEmfCodec,
            EmfMaker(20, 20).Record(Emr::kComment, comment(0)).Record(Emr::kRectangle, {1, 1, 9, 9}).File())
            .has_value());
}

TEST(EmfReader, RefusesFileThatExceedsWorkBudget)
{
    EmfMaker maker(1000, 1000);
    for (int n = 0; n < 3000; ++n)
        maker.Transfer(Emr::kBitBlt, {0, 0, 1000, 1000}, kWhiteness, {0, 0}, {});

    EXPECT_FALSE(Decoded(kEmfCodec, maker.File()).has_value());
}

// Files of other programs; see tests/samples/emf/README.md.
TEST(EmfReader, DrawsFilesOfOtherPrograms)
{
    struct Expected {
        const char* name;
        std::int32_t width, height;
        int min_ink, max_ink;  ///< percentage of the pixels
    };
    for (const Expected& expected : {Expected{"emf/good/gnuplot-plot.emf", 399, 264, 4, 25},
                                     Expected{"emf/good/fig2dev-drawing.emf", 371, 232, 4, 30},
                                     Expected{"emf/good/pstoedit-page.emf", 354, 235, 90, 100}}) {
        const std::vector<std::uint8_t> file = FileContent(SamplePath(expected.name));
        const auto image = Decoded(kEmfCodec, file);

        ASSERT_TRUE(image.has_value()) << expected.name;
        EXPECT_EQ(image->width, expected.width) << expected.name;
        EXPECT_EQ(image->height, expected.height) << expected.name;
        const int ink = 100 - 100 * CountOf(*image, kWhite, {0, 0, expected.width, expected.height}) /
                                  (expected.width * expected.height);
        EXPECT_GE(ink, expected.min_ink) << expected.name;
        EXPECT_LE(ink, expected.max_ink) << expected.name;
    }
}

TEST(EmfReader, DrawsColouredShapesOfOtherProgramInPlace)
{
    const auto image = Decoded(kEmfCodec, FileContent(SamplePath("emf/good/fig2dev-drawing.emf")));

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(ColorAt(*image, 222, 40), kYellow);  // in the circle
    EXPECT_EQ(ColorAt(*image, 80, 5), kBlue);      // on the box's outline
    EXPECT_EQ(ColorAt(*image, 80, 40), kWhite);    // in the box, which is white
    EXPECT_GT(CountOf(*image, kGreen, {290, 5, 370, 80}), 1000);
}
