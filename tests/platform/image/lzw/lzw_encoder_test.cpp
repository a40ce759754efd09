// Tests of the compression of GIF pictures: what it writes is read by giflib.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/gif/gif_reader.h"
#include "src/platform/image/lzw/lzw_encoder.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block aCompressed(const Block& aIndexes, unsigned nBits)
{
    static const TestFolder objFolder;  // one for the thousands of calls
    OutputFile objOut(objFolder.sPath("out"));
    EXPECT_TRUE(bWriteLzw(aIndexes, nBits, objOut));
    EXPECT_TRUE(objOut.Commit());
    return aFileContent(objFolder.sPath("out"));
}

// The indexes as they come back from a file around the compressed data; empty if it can't be read.
Block aBack(const Block& aData, std::size_t nCount)
{
    const std::uint32_t nWidth = nCount > 60000 ? 1000 : static_cast<std::uint32_t>(nCount);
    const std::uint32_t nHeight = static_cast<std::uint32_t>(nCount) / nWidth;
    ByteMaker objFile;
    objFile.Text("GIF87a")
        .U16Le({nWidth, nHeight})
        .U8({0, 0, 0, 0x2C})
        .U16Le({0, 0, nWidth, nHeight})
        .U8({0});
    objFile.All(aData).U8({0x3B});
    const auto pReader = GifReader::Open(objFile.aBytes());
    GifFrame objFrame;
    if (!pReader || pReader->NextFrame(objFrame) != GifReader::Found::Frame)
        return {};
    Block aResult;
    Block aRow(nWidth);
    for (std::uint32_t y = 0; y < nHeight; ++y) {
        if (!pReader->ReadRow(aRow))
            return {};
        aResult.insert(aResult.end(), aRow.begin(), aRow.end());
    }
    return pReader->NextFrame(objFrame) == GifReader::Found::End ? aResult : Block{};
}

Block aNoise(std::size_t nCount, unsigned nBits)
{
    Block aResult;
    unsigned nSeed = 7;
    for (std::size_t i = 0; i < nCount; ++i) {
        nSeed = nSeed * 1103515245 + 12345;
        aResult.push_back(static_cast<std::uint8_t>((nSeed >> 16) & ((1u << nBits) - 1)));
    }
    return aResult;
}
}  // namespace

TEST(LzwEncoder, WritesTheCodesOfTheKnownExample)
{
    // Three equal indexes of two bits: clear 4, the index, the string of two (6), end 5; codes of 3 bits.
    EXPECT_EQ(aCompressed({1, 1, 1}, 2), (Block{2, 2, 0x8C, 0x0B, 0}));
}

TEST(LzwEncoder, ComesBackForNoiseOfEveryWidthThroughManyClearings)
{
    for (unsigned nBits = 1; nBits <= 8; ++nBits) {
        const Block aIndexes = aNoise(200000, nBits);
        EXPECT_TRUE(aBack(aCompressed(aIndexes, nBits), aIndexes.size()) == aIndexes) << nBits;
    }
}

TEST(LzwEncoder, ComesBackForEveryLengthAroundTheChangesOfWidth)
{
    // In noise nearly each index is a code of its own, so the table is full or wider after about as many.
    for (const auto& [nFirst, nLast] : {std::pair{1, 12}, {245, 275}, {755, 795}, {1770, 1840}, {3800, 3990}})
        for (int nCount = nFirst; nCount <= nLast; ++nCount) {
            const Block aIndexes = aNoise(static_cast<std::size_t>(nCount), 8);
            ASSERT_TRUE(aBack(aCompressed(aIndexes, 8), aIndexes.size()) == aIndexes) << nCount;
        }
    for (std::size_t nCount = 1; nCount < 100; ++nCount) {
        const Block aIndexes(nCount, 1);
        ASSERT_TRUE(aBack(aCompressed(aIndexes, 1), nCount) == aIndexes) << nCount;
    }
}

TEST(LzwEncoder, PacksAPlainPictureIntoNearlyNothing)
{
    const Block aIndexes(1000000, 3);
    const Block aData = aCompressed(aIndexes, 8);

    EXPECT_LT(aData.size(), 2200u);
    EXPECT_TRUE(aBack(aData, aIndexes.size()) == aIndexes);
}

RC_GTEST_PROP(LzwEncoder, GivesBackAnyIndexes, ())
{
    const auto nBits = *rc::gen::inRange(1u, 9u);
    const auto aIndexes = *rc::gen::nonEmpty(
        rc::gen::container<Block>(rc::gen::map(rc::gen::arbitrary<std::uint8_t>(), [=](std::uint8_t n) {
            return static_cast<std::uint8_t>(n & ((1u << nBits) - 1));
        })));

    RC_ASSERT(aBack(aCompressed(aIndexes, nBits), aIndexes.size()) == aIndexes);
}
