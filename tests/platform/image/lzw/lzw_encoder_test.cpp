// Tests of LZW compression for GIF; giflib decodes the output.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/gif/gif_reader.h"
#include "src/platform/image/lzw/lzw_encoder.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block Compress(const Block& indexes, unsigned bits)
{
    static const TestFolder kFolder;  // shared by thousands of calls
    FileSaver saver(false);
    OutputFile out(kFolder.Path("out"), saver);
    EXPECT_TRUE(WriteLzw(indexes, bits, out));
    EXPECT_TRUE(out.Commit());
    return FileContent(kFolder.Path("out"));
}

// Decodes compressed data by wrapping it in a file; empty if it is invalid.
Block Decompress(const Block& data, std::size_t count)
{
    const std::uint32_t width = count > 60000 ? 1000 : static_cast<std::uint32_t>(count);
    const std::uint32_t height = static_cast<std::uint32_t>(count) / width;
    ByteMaker file;
    file.Text("GIF87a").U16Le({width, height}).U8({0, 0, 0, 0x2C}).U16Le({0, 0, width, height}).U8({0});
    file.All(data).U8({0x3B});
    const auto reader = GifReader::Open(file.Data());
    GifFrame frame;
    if (!reader || reader->NextFrame(frame) != GifReader::Found::kFrame)
        return {};
    Block result;
    Block row(width);
    for (std::uint32_t y = 0; y < height; ++y) {
        if (!reader->ReadRow(row))
            return {};
        result.insert(result.end(), row.begin(), row.end());
    }
    return reader->NextFrame(frame) == GifReader::Found::kEnd ? result : Block{};
}

Block Noise(std::size_t count, unsigned bits)
{
    Block result;
    unsigned seed = 7;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1103515245 + 12345;
        result.push_back(static_cast<std::uint8_t>((seed >> 16) & ((1u << bits) - 1)));
    }
    return result;
}
}  // namespace

TEST(LzwEncoder, WritesCodesOfKnownExample)
{
    // Three equal 2-bit indexes in 3-bit codes: clear 4, the index, the pair (6), end 5.
    EXPECT_EQ(Compress({1, 1, 1}, 2), (Block{2, 2, 0x8C, 0x0B, 0}));
}

TEST(LzwEncoder, RoundTripsNoiseOfEveryWidthAcrossClears)
{
    for (unsigned bits = 1; bits <= 8; ++bits) {
        const Block indexes = Noise(200000, bits);
        EXPECT_TRUE(Decompress(Compress(indexes, bits), indexes.size()) == indexes) << bits;
    }
}

TEST(LzwEncoder, RoundTripsLengthsAroundCodeWidthChanges)
{
    // In noise nearly every index is a code, so after about as many the table is full or codes get wider.
    for (const auto& [first, last] : {std::pair{1, 12}, {245, 275}, {755, 795}, {1770, 1840}, {3800, 3990}})
        for (int count = first; count <= last; ++count) {
            const Block indexes = Noise(static_cast<std::size_t>(count), 8);
            ASSERT_TRUE(Decompress(Compress(indexes, 8), indexes.size()) == indexes) << count;
        }
    for (std::size_t count = 1; count < 100; ++count) {
        const Block indexes(count, 1);
        ASSERT_TRUE(Decompress(Compress(indexes, 1), count) == indexes) << count;
    }
}

TEST(LzwEncoder, PacksPlainPictureIntoFewBytes)
{
    const Block indexes(1000000, 3);
    const Block data = Compress(indexes, 8);

    EXPECT_LT(data.size(), 2200u);
    EXPECT_TRUE(Decompress(data, indexes.size()) == indexes);
}

RC_GTEST_PROP(LzwEncoder, GivesBackAnyIndexes, ())
{
    const auto bits = *rc::gen::inRange(1u, 9u);
    const auto indexes = *rc::gen::nonEmpty(
        rc::gen::container<Block>(rc::gen::map(rc::gen::arbitrary<std::uint8_t>(), [=](std::uint8_t n) {
            return static_cast<std::uint8_t>(n & ((1u << bits) - 1));
        })));

    RC_ASSERT(Decompress(Compress(indexes, bits), indexes.size()) == indexes);
}
