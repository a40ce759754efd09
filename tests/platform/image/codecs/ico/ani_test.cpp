// Animated cursors from hand-made bytes: sequences, bare frames, chunks that lie.
#include "src/platform/image/codecs/ico/ani.h"

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static ByteMaker objChunk(std::string_view sName, const ByteMaker& mkData, std::int64_t lClaimed = -1)
{
    ByteMaker mk;
    mk.Text(sName).U32Le(
        {lClaimed < 0 ? static_cast<std::uint32_t>(mkData.nSize()) : static_cast<std::uint32_t>(lClaimed)});
    mk.All(mkData.aBytes()).Zeros(mkData.nSize() % 2);
    return mk;
}

static ByteMaker objHeaderChunk(std::uint32_t nFlags, std::uint32_t nBits = 0, std::uint32_t nWidth = 0,
                                std::uint32_t nHeight = 0)
{
    return objChunk("anih", ByteMaker().U32Le({36, 0, 0, nWidth, nHeight, nBits, 1, 6, nFlags}));
}

static std::vector<std::uint8_t> aAnimation(std::initializer_list<ByteMaker> aChunks)
{
    ByteMaker mkBody;
    mkBody.Text("ACON");
    for (const ByteMaker& mk : aChunks)
        mkBody.All(mk.aBytes());
    return objChunk("RIFF", mkBody).aBytes();
}

static ByteMaker objFrames(std::initializer_list<ByteMaker> aFrames)
{
    ByteMaker mk;
    mk.Text("fram");
    for (const ByteMaker& mkFrame : aFrames)
        mk.All(objChunk("icon", mkFrame).aBytes());
    return objChunk("LIST", mk);
}

// A cursor of one pixel whose blue tells it from the others.
static ByteMaker objCursor(int lBlue)
{
    ByteMaker mk;
    mk.U16Le({0, 2, 1}).U8({1, 1, 0, 0, 0, 0, 0, 0}).U32Le({48, 22});
    mk.U32Le({40, 1, 2}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0}).U8({lBlue, 0, 0, 0}).U32Le({0});
    return mk;
}

// The blue of each page; -1 for one that is refused.
static Levels aBlues(const std::vector<std::uint8_t>& aFile)
{
    InputFile objFile(aFile);
    const auto pDecoder = codecAni.Open(objFile);
    Levels aFound;
    for (std::int32_t lFrame = 0; pDecoder && lFrame < pDecoder->FrameCount(); ++lFrame) {
        ImageBuffer aImage;
        const bool bDecoded = pDecoder->DecodeFrame(lFrame, aImage);
        EXPECT_TRUE(!bDecoded || aImage.channels == 4);
        aFound.push_back(bDecoded ? aImage.bytes[0] : -1);
    }
    return aFound;
}

TEST(AniReads, TheFramesAsTheyLieInTheFile)
{
    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(1), objFrames({objCursor(1), objCursor(2), objCursor(3)})})),
              (Levels{1, 2, 3}));
}

TEST(AniReads, TheFramesInTheOrderOfTheSequence)
{
    const auto mkSequence = objChunk("seq ", ByteMaker().U32Le({1, 0, 1, 7}));

    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(3), mkSequence, objFrames({objCursor(1), objCursor(2)})})),
              (Levels{2, 1, 2, -1}))
        << "a step that names no frame is no page to be had";
}

TEST(AniReads, PastChunksThatItDoesNotKnow)
{
    const auto mkInfo =
        objChunk("LIST", ByteMaker().Text("INFO").All(objChunk("IART", ByteMaker().Text("me!")).aBytes()));

    EXPECT_EQ(aBlues(aAnimation({mkInfo, objChunk("rate", ByteMaker().U32Le({6})),
                                 objChunk("odd ", ByteMaker().U8({1})), objFrames({objCursor(1)}),
                                 objHeaderChunk(1)})),
              Levels{1});
}

TEST(AniReads, FramesThatAreBitmapFiles)
{
    const auto aBitmap = aEncoded(kBmpCodec, aPattern(3, 3, 3));

    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(0), objFrames({ByteMaker().All(aBitmap)})})), Levels{0});
    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(1), objFrames({ByteMaker().All(aBitmap)})})), Levels{-1})
        << "the header promised icons";
}

TEST(AniReads, FramesThatAreBareBitsOfTheHeadersSize)
{
    const ByteMaker mkBits = ByteMaker().U8({1, 2, 3, 0, 4, 5, 6, 0});
    const ByteMaker mkBitmap =
        ByteMaker().U32Le({40, 1, 1}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0}).U8({9, 8, 7, 0});

    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(0, 24, 1, 2), objFrames({mkBits, mkBitmap})})),
              (Levels{4, 9}));
    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(0, 24, 60000, 8000), objFrames({mkBits})})), Levels{-1});
    EXPECT_EQ(aBlues(aAnimation({objHeaderChunk(0, 0, 1, 2), objFrames({mkBits})})), Levels{-1});
}

TEST(AniReads, WhatIsThereOfChunksThatClaimMore)
{
    auto mkFrames = objFrames({objCursor(1), objCursor(2)});
    auto aFile = aAnimation({mkFrames});
    for (std::size_t i = 16; i < 20; ++i)
        aFile[i] = 0xFF;  // the size of the list

    EXPECT_EQ(aBlues(aFile), (Levels{1, 2}));
    aFile.resize(aFile.size() - 20);
    EXPECT_EQ(aBlues(aFile), (Levels{1, -1}));
}

TEST(AniReads, NothingWithoutFrames)
{
    EXPECT_FALSE(aDecoded(codecAni, aAnimation({})));
    EXPECT_FALSE(aDecoded(codecAni, aAnimation({objHeaderChunk(1), objFrames({})})));
    EXPECT_FALSE(aDecoded(codecAni, ByteMaker().Text("RIFF").U32Le({4}).Text("WAVE").aBytes()));
    EXPECT_FALSE(aDecoded(codecAni, ByteMaker().Text("RIFF").aBytes()));
}

TEST(AniReads, NoFrameThatIsNone)
{
    EXPECT_EQ(aBlues(aAnimation(
                  {objHeaderChunk(1), objFrames({ByteMaker(), objCursor(5), ByteMaker().Zeros(30)})})),
              (Levels{-1, 5, -1}));
    EXPECT_EQ(
        aBlues(aAnimation({objHeaderChunk(0), objFrames({ByteMaker(), ByteMaker().U8({40, 0, 0, 0})})})),
        (Levels{-1, -1}));
}

TEST(AniCodec, OnlyReads)
{
    EXPECT_EQ(codecAni.Encode, nullptr);
    EXPECT_EQ(codecAni.lType, 14);
}
