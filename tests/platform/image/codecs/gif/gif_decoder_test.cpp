// Tests of the GIF decoder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/gif/gif.h"
#include "src/platform/image/codecs/gif/gif_decoder.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "tests/platform/image/support/gif_maker.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;
using Pages = std::vector<ImageBuffer>;

Block Sample(const std::string& name)
{
    return FileContent(SamplePath("gif/" + name));
}

Pages PagesOf(const Block& file)
{
    Pages result;
    for (std::int32_t i = 0;; ++i) {
        auto page = Decoded(kGifCodec, file, i);
        if (!page)
            return result;
        result.push_back(std::move(*page));
    }
}

std::int32_t Frames(const Block& file)
{
    InputFile input(file);
    const auto decoder = kGifCodec.open(input);
    return decoder ? decoder->FrameCount() : 0;
}

// Any page as B, G, R, A; transparent pixels are cleared.
PixelBytes FourChannels(ImageBuffer image)
{
    if (image.channels == 1) {
        ImageBuffer colour = image;
        colour.channels = 3;
        colour.bytes.clear();
        for (const std::uint8_t grey : image.bytes)
            colour.bytes.insert(colour.bytes.end(), 3, grey);
        image = colour;
    }
    if (image.channels == 3) {
        EXPECT_TRUE(AddAlpha(image));
    }
    for (std::size_t i = 0; i < image.bytes.size(); i += 4)
        if (image.bytes[i + 3] == 0)
            std::fill_n(image.bytes.begin() + static_cast<std::ptrdiff_t>(i), 3, std::uint8_t{0});
    return image.bytes;
}

// All pages as composited by another program, concatenated.
PixelBytes CompositeByImageMagick(const std::string& name)
{
    const TestFolder folder;
    const std::string out = folder.Path("out");
    std::string output;
    EXPECT_TRUE(RunCommand(ImageMagick("convert") + " " + SamplePath("gif/" + name) +
                               " -coalesce -alpha set -depth 8 bgra:" + out,
                           &output))
        << output;
    ImageBuffer all;
    all.channels = 4;
    const Block bytes = FileContent(out);
    all.bytes.assign(bytes.begin(), bytes.end());
    return FourChannels(all);
}

const GifColours kColours = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};

// The page in letters: Red, Green, Blue, White, K for black and "." for transparent.
std::string LettersOfPage(const ImageBuffer& image)
{
    std::string result;
    const PixelBytes bytes = FourChannels(image);
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const int code = (bytes[i] ? 1 : 0) + (bytes[i + 1] ? 2 : 0) + (bytes[i + 2] ? 4 : 0);
        result += bytes[i + 3] == 0 ? '.' : "KBGCRMYW"[code];
    }
    return result;
}

std::vector<std::string> LettersOfPages(const Block& file)
{
    std::vector<std::string> result;
    for (const ImageBuffer& page : PagesOf(file))
        result.push_back(LettersOfPage(page));
    return result;
}

using Texts = std::vector<std::string>;
}  // namespace

class GifPages : public testing::TestWithParam<const char*>
{
};

TEST_P(GifPages, MatchCompositionOfOtherPrograms)
{
    PixelBytes all;
    for (const ImageBuffer& page : PagesOf(Sample(GetParam()))) {
        const PixelBytes bytes = FourChannels(page);
        all.insert(all.end(), bytes.begin(), bytes.end());
    }

    EXPECT_FALSE(all.empty());
    EXPECT_TRUE(all == CompositeByImageMagick(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Samples, GifPages,
                         testing::Values("good/gm-plain.gif", "good/im-interlaced.gif", "good/pil-grey.gif",
                                         "good/pil-two-colours.gif", "good/pil-transparent.gif",
                                         "good/im-optimised.gif", "good/gifsicle-optimised.gif",
                                         "good/im-dispose-none.gif", "good/im-dispose-background.gif",
                                         "good/im-dispose-previous.gif"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::erase_if(
                                 name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return name;
                         });

TEST(GifDecoder, ReturnsGreyColourOrAlphaAsNeeded)
{
    EXPECT_EQ(Decoded(kGifCodec, Sample("good/pil-grey.gif"))->channels, 1);
    EXPECT_EQ(Decoded(kGifCodec, Sample("good/gm-plain.gif"))->channels, 3);
    EXPECT_EQ(Decoded(kGifCodec, Sample("good/pil-transparent.gif"))->channels, 4);
}

TEST(GifDecoder, DecodesFilesOfOtherPrograms)
{
    const auto scene = ReadPnm(SamplePath("gif/scene.ppm"));
    for (const char* name : {"good/gm-plain.gif", "good/im-interlaced.gif", "good/im-optimised.gif",
                             "good/gifsicle-optimised.gif"})
        EXPECT_LE(DifferenceBetween(*Decoded(kGifCodec, Sample(name)), *scene).greatest, 3) << name;
}

TEST(GifDecoder, KeepsFrameUnlessDisposalSaysOtherwise)
{
    for (const int disposal : {0, 1, 5, 7})
        EXPECT_EQ(LettersOfPages(GifMaker(3, 1, kColours)
                                     .Control(disposal)
                                     .Frame(0, 0, 2, 1, {0, 0})
                                     .Control(disposal)
                                     .Frame(1, 0, 1, 1, {1})
                                     .Frame(2, 0, 1, 1, {2})
                                     .End()
                                     .File()),
                  (Texts{"RR.", "RG.", "RGB"}));
}

TEST(GifDecoder, ClearsFrameWithBackgroundDisposal)
{
    EXPECT_EQ(LettersOfPages(GifMaker(3, 1, kColours, 3)
                                 .Frame(0, 0, 3, 1, {0, 0, 0})
                                 .Control(2)
                                 .Frame(1, 0, 1, 1, {1})
                                 .Frame(2, 0, 1, 1, {2})
                                 .End()
                                 .File()),
              (Texts{"RRR", "RGR", "R.B"}));
}

TEST(GifDecoder, RestoresCanvasAfterFrameWithPreviousDisposal)
{
    for (const int disposal : {3, 4})
        EXPECT_EQ(LettersOfPages(GifMaker(3, 1, kColours)
                                     .Frame(0, 0, 2, 1, {0, 1})
                                     .Control(disposal)
                                     .Frame(1, 0, 2, 1, {2, 2})
                                     .Control(disposal)
                                     .Frame(0, 0, 1, 1, {3})
                                     .Frame(2, 0, 1, 1, {2})
                                     .End()
                                     .File()),
                  (Texts{"RG.", "RBB", "WG.", "RGB"}));
}

TEST(GifDecoder, ClearsCanvasIfFirstFrameIsDisposedToPrevious)
{
    EXPECT_EQ(LettersOfPages(GifMaker(2, 1, kColours)
                                 .Control(3)
                                 .Frame(0, 0, 2, 1, {0, 0})
                                 .Frame(0, 0, 1, 1, {1})
                                 .End()
                                 .File()),
              (Texts{"RR", "G."}));
}

TEST(GifDecoder, ShowsCanvasThroughTransparentIndex)
{
    EXPECT_EQ(LettersOfPages(GifMaker(3, 1, kColours)
                                 .Frame(0, 0, 2, 1, {0, 1})
                                 .Control(0, 2)
                                 .Frame(0, 0, 3, 1, {2, 3, 2})
                                 .End()
                                 .File()),
              (Texts{"RG.", "RW."}));
}

TEST(GifDecoder, ForgetsGraphicControlAfterItsFrame)
{
    EXPECT_EQ(LettersOfPages(GifMaker(1, 1, kColours)
                                 .Control(0, 0)
                                 .Frame(0, 0, 1, 1, {0})
                                 .Frame(0, 0, 1, 1, {0})
                                 .End()
                                 .File()),
              (Texts{".", "R"}));
}

TEST(GifDecoder, AppliesGraphicControlToPlainText)
{
    EXPECT_EQ(LettersOfPages(
                  GifMaker(1, 1, kColours).Control(0, 0).PlainText().Frame(0, 0, 1, 1, {0}).End().File()),
              (Texts{"R"}));
}

TEST(GifDecoder, SkipsComments)
{
    EXPECT_EQ(
        LettersOfPages(
            GifMaker(1, 1, kColours).Control(0, 0).Comment("hello").Frame(0, 0, 1, 1, {0}).End().File()),
        (Texts{"."}));
}

TEST(GifDecoder, PrefersLocalColourTable)
{
    const GifColours local = {{255, 255, 255}, {0, 0, 0}};

    EXPECT_EQ(
        LettersOfPages(
            GifMaker(2, 1, kColours).Frame(0, 0, 2, 1, {0, 1}, local).Frame(0, 0, 1, 1, {2}).End().File()),
        (Texts{"WK", "BK"}));
}

TEST(GifDecoder, MapsExcessIndexesToBlackAndDefaultsToGreys)
{
    EXPECT_EQ(
        LettersOfPages(GifMaker(2, 1, {{255, 0, 0}, {0, 255, 0}}).Frame(0, 0, 2, 1, {1, 3}).End().File()),
        (Texts{"GK"}));
    const auto greys = Decoded(kGifCodec, GifMaker(2, 1, {}).Frame(0, 0, 2, 1, {1, 3}).End().File());
    ASSERT_TRUE(greys);
    EXPECT_EQ(greys->bytes, (PixelBytes{1, 3}));
}

TEST(GifDecoder, ClipsFramesToCanvas)
{
    EXPECT_EQ(LettersOfPages(GifMaker(2, 2, kColours)
                                 .Control(3)
                                 .Frame(1, 1, 2, 2, {0, 1, 2, 3})
                                 .Control(2)
                                 .Frame(5, 5, 1, 1, {0})
                                 .Frame(0, 1, 3, 1, {1, 2, 3})
                                 .End()
                                 .File()),
              (Texts{"...R", "....", "..GB"}));
}

TEST(GifDecoder, SizesEmptyCanvasByFirstFrame)
{
    const auto image = Decoded(kGifCodec, GifMaker(0, 0, kColours).Frame(1, 0, 1, 2, {0, 1}).End().File());

    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 2);
    EXPECT_EQ(image->height, 2);
    EXPECT_EQ(LettersOfPage(*image), ".R.G");
}

TEST(GifDecoder, DrawsNothingForEmptyFrame)
{
    EXPECT_EQ(LettersOfPages(GifMaker(1, 1, kColours)
                                 .Frame(0, 0, 1, 1, {2})
                                 .Frame(0, 0, 0, 1, {})
                                 .Frame(0, 0, 1, 1, {1})
                                 .End()
                                 .File()),
              (Texts{"B", "B", "G"}));
}

TEST(GifDecoder, DeinterlacesRows)
{
    for (std::uint32_t height = 1; height <= 20; ++height) {
        // Rows hold their number modulo 4 and are stored in the order of the four passes.
        std::vector<int> stored;
        for (const auto& [first, step] : {std::pair{0u, 8u}, {4u, 8u}, {2u, 4u}, {1u, 2u}})
            for (std::uint32_t y = first; y < height; y += step)
                stored.push_back(static_cast<int>(y % 4));
        std::string wanted;
        for (std::uint32_t y = 0; y < height; ++y)
            wanted += "RGBW"[y % 4];

        const auto file =
            GifMaker(1, height, kColours).Descriptor(0, 0, 1, height, {}, true).Pixels(stored).End().File();

        EXPECT_EQ(LettersOfPages(file), Texts{wanted});
    }
}

TEST(GifDecoder, DecodesPagesInAnyOrder)
{
    const Block file = Sample("good/im-dispose-previous.gif");
    const Pages in_order = PagesOf(file);
    InputFile input(file);
    const auto decoder = kGifCodec.open(input);
    ASSERT_EQ(decoder->FrameCount(), 5);

    for (const std::int32_t frame : {4, 0, 2, 2, 1, 3}) {
        ImageBuffer page;
        ASSERT_TRUE(decoder->DecodeFrame(frame, page)) << frame;
        EXPECT_EQ(DifferenceBetween(page, in_order[static_cast<std::size_t>(frame)]).greatest, 0) << frame;
    }
    ImageBuffer page;
    EXPECT_FALSE(decoder->DecodeFrame(-1, page));
    EXPECT_FALSE(decoder->DecodeFrame(5, page));
    EXPECT_EQ(page.width, 0);
}

TEST(GifDecoder, RefusesTruncatedFrameButKeepsEarlierOnes)
{
    const Block file = Sample("cut/last-frame.gif");
    InputFile input(file);
    const auto decoder = kGifCodec.open(input);
    const std::int32_t last = decoder->FrameCount() - 1;
    ASSERT_GT(last, 0);
    ImageBuffer page;

    EXPECT_FALSE(decoder->DecodeFrame(last, page));
    EXPECT_EQ(page.width, 0);
    EXPECT_TRUE(decoder->DecodeFrame(last - 1, page));
    EXPECT_FALSE(decoder->DecodeFrame(last, page));
    EXPECT_TRUE(decoder->DecodeFrame(0, page));
}

TEST(GifDecoder, RefusesTruncationAtAnyByte)
{
    const Block file = Sample("good/gm-plain.gif");
    for (std::size_t size = 0; size + 1 < file.size(); ++size)
        EXPECT_FALSE(Decoded(kGifCodec, Bytes(file).first(size))) << size;
    EXPECT_TRUE(Decoded(kGifCodec, Bytes(file).first(file.size() - 1)));  // only the trailer is missing
}

TEST(GifDecoder, RefusesCorruptAndForeignFiles)
{
    for (const char* name : {"cut/in-pixels.gif", "lying/size.gif", "foreign/png.gif"})
        EXPECT_FALSE(Decoded(kGifCodec, Sample(name))) << name;
    EXPECT_FALSE(kGifCodec.sniff(Sample("foreign/png.gif"), "gif"));
    EXPECT_TRUE(kGifCodec.sniff(Sample("good/gm-plain.gif"), ""));
    EXPECT_EQ(Frames(GifMaker(1, 1, kColours).End().File()), 0);
    EXPECT_EQ(Frames(GifMaker(0, 0, kColours).Frame(0, 0, 0, 0, {}).End().File()), 0);
}

TEST(GifDecoder, RefusesCanvasTooLargeForFile)
{
    EXPECT_EQ(Frames(GifMaker(60000, 8000, kColours).Frame(0, 0, 1, 1, {0}).End().File()), 0);
    EXPECT_EQ(Frames(GifMaker(4000, 4000, kColours).Frame(0, 0, 1, 1, {0}).End().File()), 1);
}

TEST(GifDecoder, ShowsNothingAfterFrameWithInvalidCodes)
{
    const Block file = GifMaker(2, 1, kColours)
                           .Frame(0, 0, 2, 1, {0, 1})
                           .Descriptor(0, 0, 2, 1)
                           .Data(2, {0xFF, 0xFF})
                           .Frame(0, 0, 2, 1, {0, 1})
                           .End()
                           .File();

    EXPECT_EQ(Frames(file), 3);
    EXPECT_TRUE(Decoded(kGifCodec, file, 0));
    EXPECT_FALSE(Decoded(kGifCodec, file, 1));
    EXPECT_FALSE(Decoded(kGifCodec, file, 2));
}

TEST(GifDecoder, DecodesCodesOfMoreThanNineBits)
{
    // Ten-bit codes: clear (512), 1, 2, the string 1 2 (514), end (513).
    const std::vector<std::uint8_t> codes = {0x00, 0x06, 0x20, 0x80, 0x80, 0x01, 0x02};
    const auto file_of = [](int bits, const std::vector<std::uint8_t>& data) {
        return GifMaker(4, 1, kColours)
            .Descriptor(0, 0, 4, 1)
            .Data(bits, data)
            .Frame(0, 0, 1, 1, {3})
            .End()
            .File();
    };

    const Pages pages = PagesOf(file_of(9, codes));

    ASSERT_EQ(pages.size(), 2u) << "the frame after the data is found";
    EXPECT_EQ(
        FourChannels(pages[0]),
        FourChannels(PagesOf(GifMaker(4, 1, kColours).Frame(0, 0, 4, 1, {1, 2, 1, 2}).End().File())[0]));
    EXPECT_FALSE(Decoded(kGifCodec, file_of(9, {0x00, 0x06, 0x20}))) << "too few codes";
    EXPECT_FALSE(Decoded(kGifCodec, file_of(9, {0x00, 0xFE, 0x3F, 0x80, 0x80, 0x01, 0x02})))
        << "an unknown code";
    EXPECT_FALSE(Decoded(kGifCodec, file_of(12, codes)));
}

TEST(GifDecoder, StopsCountingFramesAtLimit)
{
    GifMaker maker(1, 1, kColours);
    for (std::int32_t i = 0; i < kMaxGifFrames + 10; ++i)
        maker.Frame(0, 0, 1, 1, {0});

    EXPECT_EQ(Frames(maker.End().File()), kMaxGifFrames);
}

TEST(GifDecoder, SurvivesCorruptionOfAnySingleByte)
{
    const Block file = Sample("good/im-dispose-previous.gif");
    for (std::size_t i = 0; i < file.size(); ++i) {
        Block broken = file;
        broken[i] = static_cast<std::uint8_t>(broken[i] ^ (i % 3 == 0 ? 0x01 : i % 3 == 1 ? 0x80 : 0xFF));
        InputFile input(broken);
        const auto decoder = kGifCodec.open(input);
        ImageBuffer page;
        for (std::int32_t frame = 0; decoder && frame < decoder->FrameCount(); ++frame)
            if (decoder->DecodeFrame(frame, page)) {
                EXPECT_EQ(page.bytes.size(), static_cast<std::size_t>(page.width) *
                                                 static_cast<std::size_t>(page.height) *
                                                 static_cast<std::size_t>(page.channels));
            }
    }
}
