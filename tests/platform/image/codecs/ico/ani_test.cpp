// Tests of animated cursors from hand-made bytes: sequences, raw frames, corrupt chunks.
#include "src/platform/image/codecs/ico/ani.h"

#include <gtest/gtest.h>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static ByteMaker Chunk(std::string_view name, const ByteMaker& data, std::int64_t claimed = -1)
{
    ByteMaker maker;
    maker.Text(name).U32Le(
        {claimed < 0 ? static_cast<std::uint32_t>(data.Size()) : static_cast<std::uint32_t>(claimed)});
    maker.All(data.Data()).Zeros(data.Size() % 2);
    return maker;
}

static ByteMaker HeaderChunk(std::uint32_t flags, std::uint32_t bits = 0, std::uint32_t width = 0,
                             std::uint32_t height = 0)
{
    return Chunk("anih", ByteMaker().U32Le({36, 0, 0, width, height, bits, 1, 6, flags}));
}

static std::vector<std::uint8_t> Animation(std::initializer_list<ByteMaker> chunks)
{
    ByteMaker body;
    body.Text("ACON");
    for (const ByteMaker& maker : chunks)
        body.All(maker.Data());
    return Chunk("RIFF", body).Data();
}

static ByteMaker Frames(std::initializer_list<ByteMaker> frames)
{
    ByteMaker maker;
    maker.Text("fram");
    for (const ByteMaker& frame : frames)
        maker.All(Chunk("icon", frame).Data());
    return Chunk("LIST", maker);
}

// A one-pixel cursor identified by its blue channel.
static ByteMaker Cursor(int blue)
{
    ByteMaker maker;
    maker.U16Le({0, 2, 1}).U8({1, 1, 0, 0, 0, 0, 0, 0}).U32Le({48, 22});
    maker.U32Le({40, 1, 2}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0}).U8({blue, 0, 0, 0}).U32Le({0});
    return maker;
}

// The blue channel of each page; -1 for a refused one.
static Levels Blues(const std::vector<std::uint8_t>& bytes)
{
    InputFile file(bytes);
    const auto decoder = kAniCodec.open(file);
    Levels found;
    for (std::int32_t frame = 0; decoder && frame < decoder->FrameCount(); ++frame) {
        ImageBuffer image;
        const bool decoded = decoder->DecodeFrame(frame, image);
        EXPECT_TRUE(!decoded || image.channels == 4);
        found.push_back(decoded ? image.bytes[0] : -1);
    }
    return found;
}

TEST(AniDecoder, ReadsFramesInFileOrderByDefault)
{
    EXPECT_EQ(Blues(Animation({HeaderChunk(1), Frames({Cursor(1), Cursor(2), Cursor(3)})})),
              (Levels{1, 2, 3}));
}

TEST(AniDecoder, FollowsOrderOfSequenceChunk)
{
    const auto sequence = Chunk("seq ", ByteMaker().U32Le({1, 0, 1, 7}));

    EXPECT_EQ(Blues(Animation({HeaderChunk(3), sequence, Frames({Cursor(1), Cursor(2)})})),
              (Levels{2, 1, 2, -1}))
        << "a step without a valid frame is an unreadable page";
}

// An icon of 24-bit squares, each of one colour.
static ByteMaker Squares(std::initializer_list<std::uint32_t> sides)
{
    ByteMaker directory, pictures;
    directory.U16Le({0, 1, static_cast<std::uint32_t>(sides.size())});
    for (const std::uint32_t side : sides) {
        ByteMaker picture;
        picture.U32Le({40, side, side * 2}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0});
        for (std::uint32_t i = 0; i < side * side; ++i)
            picture.U8({static_cast<int>(side), 0, 0});
        picture.Zeros(side * 4);
        directory.U8({1, 1, 0, 0, 1, 0, 24, 0})
            .U32Le({static_cast<std::uint32_t>(picture.Size()),
                    static_cast<std::uint32_t>(6 + 16 * sides.size() + pictures.Size())});
        pictures.All(picture.Data());
    }
    return directory.All(pictures.Data());
}

TEST(AniDecoder, ShowsLargestPictureOfEachStep)
{
    EXPECT_EQ(Blues(Animation({HeaderChunk(1), Frames({Squares({4, 16, 8}), Squares({8, 4})})})),
              (Levels{16, 8}));
}

TEST(AniDecoder, HasFirstOfLargestStepsAsMainPage)
{
    const auto main_frame_of = [](const std::vector<std::uint8_t>& bytes) {
        InputFile file(bytes);
        return kAniCodec.open(file)->MainFrame();
    };
    const auto frames = Frames({Squares({4}), Squares({8, 16}), Squares({16})});

    EXPECT_EQ(main_frame_of(Animation({frames})), 1);
    EXPECT_EQ(main_frame_of(Animation({Chunk("seq ", ByteMaker().U32Le({9, 0, 2, 1})), frames})), 2);
}

TEST(AniDecoder, SkipsUnknownChunks)
{
    const auto info =
        Chunk("LIST", ByteMaker().Text("INFO").All(Chunk("IART", ByteMaker().Text("me!")).Data()));

    EXPECT_EQ(Blues(Animation({info, Chunk("rate", ByteMaker().U32Le({6})),
                               Chunk("odd ", ByteMaker().U8({1})), Frames({Cursor(1)}), HeaderChunk(1)})),
              Levels{1});
}

TEST(AniDecoder, ReadsFramesThatAreBitmapFiles)
{
    const auto bitmap = Encoded(kBmpCodec, Pattern(3, 3, 3));

    EXPECT_EQ(Blues(Animation({HeaderChunk(0), Frames({ByteMaker().All(bitmap)})})), Levels{0});
    EXPECT_EQ(Blues(Animation({HeaderChunk(1), Frames({ByteMaker().All(bitmap)})})), Levels{-1})
        << "the header announces icons";
}

TEST(AniDecoder, ReadsRawFramesWithSizeFromHeader)
{
    const ByteMaker bits = ByteMaker().U8({1, 2, 3, 0, 4, 5, 6, 0});
    const ByteMaker bitmap =
        ByteMaker().U32Le({40, 1, 1}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0}).U8({9, 8, 7, 0});

    EXPECT_EQ(Blues(Animation({HeaderChunk(0, 24, 1, 2), Frames({bits, bitmap})})), (Levels{4, 9}));
    EXPECT_EQ(Blues(Animation({HeaderChunk(0, 24, 60000, 8000), Frames({bits})})), Levels{-1});
    EXPECT_EQ(Blues(Animation({HeaderChunk(0, 0, 1, 2), Frames({bits})})), Levels{-1});
}

TEST(AniDecoder, ReadsWhatIsPresentOfOversizedChunks)
{
    auto frames = Frames({Cursor(1), Cursor(2)});
    auto file = Animation({frames});
    for (std::size_t i = 16; i < 20; ++i)
        file[i] = 0xFF;  // the size of the list

    EXPECT_EQ(Blues(file), (Levels{1, 2}));
    file.resize(file.size() - 20);
    EXPECT_EQ(Blues(file), (Levels{1, -1}));
}

TEST(AniDecoder, RefusesFileWithoutFrames)
{
    EXPECT_FALSE(Decoded(kAniCodec, Animation({})));
    EXPECT_FALSE(Decoded(kAniCodec, Animation({HeaderChunk(1), Frames({})})));
    EXPECT_FALSE(Decoded(kAniCodec, ByteMaker().Text("RIFF").U32Le({4}).Text("WAVE").Data()));
    EXPECT_FALSE(Decoded(kAniCodec, ByteMaker().Text("RIFF").Data()));
}

TEST(AniDecoder, RefusesInvalidFrames)
{
    EXPECT_EQ(Blues(Animation({HeaderChunk(1), Frames({ByteMaker(), Cursor(5), ByteMaker().Zeros(30)})})),
              (Levels{-1, 5, -1}));
    EXPECT_EQ(Blues(Animation({HeaderChunk(0), Frames({ByteMaker(), ByteMaker().U8({40, 0, 0, 0})})})),
              (Levels{-1, -1}));
}

TEST(AniCodec, HasNoEncoder)
{
    EXPECT_EQ(kAniCodec.encode, nullptr);
    EXPECT_EQ(kAniCodec.type, FileType{14});
}
