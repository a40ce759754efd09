// Tests of WMF files: detection, refusal, writing and reading back.
#include "src/platform/image/codecs/metafile/wmf.h"

#include <gtest/gtest.h>

#include "src/platform/image/codecs/registry.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

/// Inserts a no-op record at the front, so that the file must be played.
static std::vector<std::uint8_t> ToBePlayed(std::vector<std::uint8_t> file)
{
    const std::vector<std::uint8_t> record = ByteMaker().U32Le({4}).U16Le({0x0102, 1}).Data();
    file.insert(file.begin() + 40, record.begin(), record.end());
    return file;
}

TEST(CodecWmf, IsFoundByTypeAndContent)
{
    const std::vector<std::uint8_t> placeable = WmfMaker(10, 10).File();
    const std::vector<std::uint8_t> plain = WmfMaker().File();

    EXPECT_EQ(CodecOfType(FileType{11}), &kWmfCodec);
    EXPECT_EQ(CodecOfContent(placeable, ""), &kWmfCodec);
    EXPECT_EQ(CodecOfContent(plain, "jpg"), &kWmfCodec);
    EXPECT_FALSE(kWmfCodec.sniff(Bytes(placeable).first(22), "wmf"));
    EXPECT_FALSE(kWmfCodec.sniff(Bytes(plain).subspan(1), "wmf"));
}

TEST(WmfWriter, RoundTripsPixels)
{
    for (const std::int32_t channels : {1, 3})
        for (const auto& [width, height] :
             {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(32767, 2)}) {
            const ImageBuffer image = Pattern(width, height, channels);
            const auto back = Decoded(kWmfCodec, Encoded(kWmfCodec, image));

            ASSERT_TRUE(back.has_value());
            EXPECT_EQ(back->width, width);
            EXPECT_EQ(back->channels, channels);
            EXPECT_EQ(back->bytes, image.bytes);
        }
}

TEST(WmfWriter, WritesRecordsThatPlayerDrawsExactly)
{
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(37, 23), std::pair(20000, 2)}) {
        const ImageBuffer image = Pattern(width, height, 3);
        const auto back = Decoded(kWmfCodec, ToBePlayed(Encoded(kWmfCodec, image)));

        ASSERT_TRUE(back.has_value());
        EXPECT_EQ(back->width, width);
        EXPECT_EQ(back->bytes, image.bytes);
    }
}

TEST(WmfWriter, RefusesPictureTooLargeForRecord)
{
    EXPECT_TRUE(Encoded(kWmfCodec, Pattern(32768, 1, 3)).empty());
    EXPECT_TRUE(Encoded(kWmfCodec, Pattern(1, 32768, 3)).empty());
}

TEST(WmfWriter, WritesHeaderWithValidChecksumAndSizes)
{
    const std::vector<std::uint8_t> file = Encoded(kWmfCodec, Pattern(30, 20, 1));
    ByteReader reader(file);
    std::uint16_t check = 0;
    for (int n = 0; n < 10; ++n)
        check = check ^ reader.U16Le();
    EXPECT_EQ(reader.U16Le(), check);
    reader.Take(6);

    EXPECT_EQ(reader.U32Le() * 2 + 22, file.size());
}

TEST(WmfWriter, WritesFilesThatOtherProgramsRead)
{
    const TestFolder folder;
    for (const std::int32_t channels : {1, 3}) {
        const ImageBuffer image = Pattern(37, 23, channels);
        WriteFileContent(folder.Path("a.wmf"), Encoded(kWmfCodec, image));
        ASSERT_TRUE(RunCommand("cd " + folder.Path("") + " && wmf2svg -o a.svg a.wmf"));
        ASSERT_TRUE(RunCommand("convert " + folder.Path("a-1.png") +
                               " -alpha off -type truecolor ppm:" + folder.Path("a.ppm")));
        const auto seen = ReadPnm(folder.Path("a.ppm"));

        ASSERT_TRUE(seen.has_value());
        ASSERT_EQ(seen->width, 37);
        ASSERT_EQ(seen->height, 23);
        for (std::int32_t x = 0; x < 37; ++x)
            ASSERT_EQ(ColorAt(*seen, x, x % 23), ColorAt(image, x, x % 23));
    }
}

TEST(WmfReader, RefusesTruncationAtAnyByte)
{
    for (const std::vector<std::uint8_t>& file :
         {Encoded(kWmfCodec, Pattern(7, 5, 3)), WmfMaker(20, 20)
                                                    .Brush(kRed)
                                                    .Select(0)
                                                    .Record(0x041B, {9, 9, 1, 1})
                                                    .Record(0x0324, {3, 1, 1, 9, 1, 5, 9})
                                                    .File()})
        for (std::size_t size = 0; size < file.size(); ++size)
            ASSERT_FALSE(Decoded(kWmfCodec, Bytes(file).first(size)).has_value()) << size;
}

TEST(WmfReader, RefusesEmptyOrOversizedPicture)
{
    EXPECT_FALSE(Decoded(kWmfCodec, WmfMaker(30000, 30000).UnitsPerInch(1).File()).has_value());
    EXPECT_FALSE(Decoded(kWmfCodec, WmfMaker(10, 0).File()).has_value());
}

TEST(WmfReader, RefusesFileInWhichNothingCanBeDrawn)
{
    const auto refused = [](const WmfMaker& maker) { return !Decoded(kWmfCodec, maker.File()).has_value(); };

    EXPECT_TRUE(refused(WmfMaker(20, 20).Record(0x0324, {1000, 1, 1})));
    EXPECT_TRUE(refused(WmfMaker(20, 20).Record(0x0538, {2, 3, 30000, 1, 1})));
    EXPECT_TRUE(refused(WmfMaker(20, 20).Record(0x041B, {1, 2})));
    EXPECT_TRUE(refused(WmfMaker(20, 20).Record(0x0521, {200, 1, 1})));
    EXPECT_TRUE(refused(WmfMaker(20, 20).Record(0x06FF, {0, 6, 0, 0, 0, 900, 4, 5, 5, 35, 20})));
}

TEST(WmfReader, AcceptsHeaderWithoutChecksum)
{
    std::vector<std::uint8_t> file = WmfMaker(20, 20).File();
    file[20] ^= 0x55;

    EXPECT_TRUE(Decoded(kWmfCodec, file).has_value());
}

// A file of another program; see tests/samples/wmf/README.md.
TEST(WmfReader, DrawsFileOfOtherProgram)
{
    const auto image = Decoded(kWmfCodec, FileContent(SamplePath("wmf/good/libuemf-shapes.wmf")));

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->width, 288);
    EXPECT_EQ(image->height, 192);
    EXPECT_EQ(ColorAt(*image, 50, 35), 0xA0F0FFu);   // in the rectangle
    EXPECT_EQ(ColorAt(*image, 10, 35), 0xC80000u);   // on its outline
    EXPECT_EQ(ColorAt(*image, 230, 50), 0x00A000u);  // in the triangle
    EXPECT_EQ(ColorAt(*image, 30, 85), 0x00A000u);   // in the pie
    EXPECT_EQ(ColorAt(*image, 70, 85), kWhite);      // in its missing wedge
    EXPECT_GT(CountOf(*image, 0xA000A0, {10, 125, 110, 155}), 100);
}
