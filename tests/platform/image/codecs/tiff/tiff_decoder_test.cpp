// Tests of the TIFF decoder beyond the samples: pages, metadata, corruption.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <tiff.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "src/platform/files/file_saver.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image/codecs/tiff/tiff.h"
#include "src/platform/image/codecs/tiff/tiff_document.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/io_count.h"
#include "tests/platform/image/support/profiles.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block Sample(const std::string& name)
{
    return FileContent(SamplePath("tiff/good/" + name + ".tif"));
}

// KB by which decoding damaged files may grow the process. ASan delays freeing memory.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kMostGrowth = 600 * 1024;
#else
constexpr long kMostGrowth = 150 * 1024;
#endif

// A grey picture that encodes its page number.
ImageBuffer Page(int page, std::int32_t side = 16)
{
    ImageBuffer image;
    image.width = side;
    image.height = side;
    image.channels = 1;
    image.bytes.assign(static_cast<std::size_t>(side) * static_cast<std::size_t>(side),
                       static_cast<std::uint8_t>(page % 251));
    return image;
}

void WritePages(const std::string& file, int pages, std::int32_t side)
{
    FileSaver saver(false);
    const auto document = TiffDocument::Begin(file, Page(0, side), {}, saver);
    ASSERT_TRUE(document);
    for (int i = 1; i < pages; ++i)
        ASSERT_TRUE(document->Append(Page(i, side), {}));
    ASSERT_TRUE(document->Finish());
}

// A file of chained directories with one tag each.
Block BareDirectories(std::uint32_t count, std::uint32_t after_the_last)
{
    ByteMaker file;
    file.Text("II").U16Le({42}).U32Le({8});
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t next = i + 1 < count ? 8 + 18 * (i + 1) : after_the_last;
        file.U16Le({1, 256, 3}).U32Le({1, 1, next});
    }
    return file.Data();
}

std::int32_t PagesOf(const Block& file)
{
    InputFile input{Bytes(file)};
    const auto decoder = kTiffCodec.open(input);
    return decoder ? decoder->FrameCount() : 0;
}
}  // namespace

TEST(TiffSniff, AcceptsBothByteOrdersAndBigTiff)
{
    const auto known = [](std::string_view head) {
        return kTiffCodec.sniff({reinterpret_cast<const std::uint8_t*>(head.data()), head.size()}, "tif");
    };

    EXPECT_TRUE(known({"II*\0", 4}));
    EXPECT_TRUE(known({"MM\0*", 4}));
    EXPECT_TRUE(known({"II+\0", 4}));
    EXPECT_TRUE(known({"MM\0+", 4}));
    EXPECT_FALSE(known({"II\0*", 4}));
    EXPECT_FALSE(known({"IM*\0", 4}));
    EXPECT_FALSE(known("II*"));
    EXPECT_FALSE(known(""));
}

TEST(TiffPages, AreReadInAnyOrderInSinglePass)
{
    const TestFolder folder;
    constexpr int kPages = 400;
    WritePages(folder.Path("pages.tif"), kPages, 64);
    const auto file = InputFile::Open(folder.Path("pages.tif"));
    std::vector<int> order(kPages);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));

    const IoCount before = IoSoFar();
    const auto decoder = kTiffCodec.open(*file);
    ASSERT_TRUE(decoder);
    ASSERT_EQ(decoder->FrameCount(), kPages);
    for (const int page : order) {
        ImageBuffer image;
        ASSERT_TRUE(decoder->DecodeFrame(page, image));
        ASSERT_EQ(image.bytes, Page(page, 64).bytes);
    }
    const std::uint64_t got = IoSoFar().read - before.read;

    // Walking from the first directory for each page would read 400 times 200 directories of 200 bytes: 16
    // MB.
    EXPECT_LT(got, file->Size() * 3 / 2);
}

TEST(TiffPages, AreCountedOnceIfChainIsLoop)
{
    EXPECT_EQ(PagesOf(BareDirectories(5, 0)), 5);
    EXPECT_EQ(PagesOf(BareDirectories(5, 8)), 5);
    EXPECT_EQ(PagesOf(BareDirectories(5, 8 + 18 * 2)), 5);
}

TEST(TiffPages, CountOneMoreIfChainBreaksOff)
{
    EXPECT_EQ(PagesOf(BareDirectories(5, 100000)), 6);
    EXPECT_EQ(PagesOf(BareDirectories(5, 8 + 18 * 5 - 1)), 6);
    Block cut = BareDirectories(5, 0);
    cut.resize(cut.size() - 10);
    EXPECT_EQ(PagesOf(cut), 5);
    Block without_last_link = BareDirectories(5, 0);
    without_last_link.resize(without_last_link.size() - 2);
    EXPECT_EQ(PagesOf(without_last_link), 6);
}

TEST(TiffPages, MissingFromCutFileFailToLoadAfterTheOthers)
{
    const TestFolder folder;
    constexpr int kPages = 6;
    WritePages(folder.Path("pages.tif"), kPages, 16);
    const Block file = FileContent(folder.Path("pages.tif"));
    int cuts = 0;
    for (std::size_t size = file.size() / 4; size < file.size(); size += 37) {
        const Block cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
        InputFile input{Bytes(cut)};
        const auto decoder = kTiffCodec.open(input);
        ASSERT_TRUE(decoder);
        const std::int32_t count = decoder->FrameCount();
        ImageBuffer image;
        int readable = 0;
        while (readable < count && decoder->DecodeFrame(readable, image))
            ++readable;
        EXPECT_LT(readable, kPages) << size;
        EXPECT_GT(count, readable) << size;
        ++cuts;
    }
    EXPECT_GT(cuts, 30);
}

TEST(TiffPages, AreNotLimitedToSixteenBitCount)
{
    EXPECT_EQ(PagesOf(BareDirectories(70000, 0)), 70000);
}

TEST(TiffPages, StayReadableBesideBrokenOnes)
{
    const TestFolder folder;
    WritePages(folder.Path("pages.tif"), 3, 16);
    Block file = FileContent(folder.Path("pages.tif"));
    // Gives the second page another compression.
    const Block compression = {0x03, 0x01, 3, 0, 1, 0, 0, 0, 1, 0};
    auto tag = std::search(file.begin(), file.end(), compression.begin(), compression.end());
    tag = std::search(tag + 1, file.end(), compression.begin(), compression.end());
    ASSERT_NE(tag, file.end());
    tag[8] = 77;

    EXPECT_TRUE(Decoded(kTiffCodec, file, 0));
    EXPECT_FALSE(Decoded(kTiffCodec, file, 1));
    EXPECT_TRUE(Decoded(kTiffCodec, file, 2));
}

TEST(TiffDecoder, AllocatesNoBufferForWholeStrip)
{
    const TestFolder folder;
    // 48 megapixels of 16 bits in one strip: 96 MB stored, 48 MB decoded.
    const std::string file_path = folder.Path("large.tif");
    Python(
        "import sys; from PIL import Image; Image.MAX_IMAGE_PIXELS = None\n"
        "Image.new('I;16', (8000, 6000), 32896).save(sys.argv[1], compression='tiff_deflate', "
        "tiffinfo={278: 6000})\n",
        file_path);
    const auto file = InputFile::Open(file_path);
    ASSERT_LT(file->Size(), 8u * 1024 * 1024);
    rusage before{};
    getrusage(RUSAGE_SELF, &before);

    ImageBuffer image;
    ASSERT_TRUE(kTiffCodec.open(*file)->DecodeFrame(0, image));

    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_EQ(image.bytes[12345], 128);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, (48 + 32) * 1024);  // KB
}

// A bilevel page as our encoder writes it: the header, the one strip, then the directory.
static Block FaxPage(std::int32_t compression, ImageBuffer& page)
{
    page = Pattern(300, 200, 1);
    for (std::size_t i = 0; i < page.bytes.size(); ++i)
        page.bytes[i] = (i % 300 / 20 + i / 300 / 8) % 3 == 0 ? 0 : 255;
    SaveSettings settings;
    settings.tiff_compression = compression;
    return Encoded(kTiffCodec, page, settings);
}

static std::size_t StripBytes(const Block& file)
{
    InputFile input{Bytes(file)};
    const TiffHeader header = ReadTiffHeader(input).value();
    const auto entries = ReadEntries(input, header, header.first_directory);
    return ReadNumber(input, header, *EntryOf(entries, TIFFTAG_STRIPBYTECOUNTS)).value();
}

TEST(TiffFax, ShowsWhatIsLeftOfDamagedPage)
{
    for (const std::int32_t compression : {2, 3, 4}) {
        SCOPED_TRACE("compression " + std::to_string(compression));
        ImageBuffer page;
        Block file = FaxPage(compression, page);
        const std::size_t strip = StripBytes(file);
        std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(8 + strip / 2), 4, std::uint8_t{0});

        const auto image = Decoded(kTiffCodec, file);

        ASSERT_TRUE(image);
        const auto end = std::mismatch(page.bytes.begin(), page.bytes.end(), image->bytes.begin()).first;
        EXPECT_GT(end - page.bytes.begin(), 300 * 80) << "the part above the damage";
        EXPECT_NE(end, page.bytes.end());
    }
}

TEST(TiffFax, ShowsWhatIsLeftOfShortenedStrip)
{
    for (const std::int32_t compression : {2, 3, 4}) {
        SCOPED_TRACE("compression " + std::to_string(compression));
        ImageBuffer page;
        Block file = FaxPage(compression, page);
        const std::size_t strip = StripBytes(file);
        const std::uint8_t count[] = {static_cast<std::uint8_t>(strip), static_cast<std::uint8_t>(strip >> 8),
                                      0, 0};
        const auto stored = std::find_end(file.begin(), file.end(), std::begin(count), std::end(count));
        ASSERT_NE(stored, file.end());
        stored[0] = static_cast<std::uint8_t>(strip / 2);
        stored[1] = static_cast<std::uint8_t>(strip / 2 >> 8);

        const auto image = Decoded(kTiffCodec, file);

        ASSERT_TRUE(image);
        const auto end = std::mismatch(page.bytes.begin(), page.bytes.end(), image->bytes.begin()).first;
        EXPECT_GT(end - page.bytes.begin(), 300 * 80) << "the part before the end";
        EXPECT_EQ(image->bytes.back(), 255) << "the missing part is white";
    }
}

TEST(TiffFax, IsRefusedIfNothingIsLeft)
{
    ImageBuffer page;
    Block file = FaxPage(4, page);
    std::fill_n(file.begin() + 8, StripBytes(file), std::uint8_t{0});

    EXPECT_FALSE(Decoded(kTiffCodec, file));
}

TEST(TiffMetadata, IsReadFromItsTags)
{
    const TestFolder folder;
    const std::string file = folder.Path("tags.tif");
    Python(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "i = T.ImageFileDirectory_v2()\n"
        "i[271] = 'Cameras Ltd'; i[270] = 'Hills'; i[282] = 100.0; i[283] = 50.0; i[296] = 3\n"
        "i[700] = b'<x:xmpmeta/>'; i.tagtype[700] = 1\n"
        "i[33723] = b'\\x1c\\x02\\x00\\x00\\x02\\x00\\x04'; i.tagtype[33723] = 7\n"
        "Image.new('RGB', (5, 4), (1, 2, 3)).save(sys.argv[1], tiffinfo=i, "
        "exif=None)\n",
        file);
    const auto image = Decoded(kTiffCodec, FileContent(file));

    ASSERT_TRUE(image);
    EXPECT_DOUBLE_EQ(image->dots_per_inch_x, 254);
    EXPECT_DOUBLE_EQ(image->dots_per_inch_y, 127);
    EXPECT_EQ(std::string(image->metadata.xmp.begin(), image->metadata.xmp.end()), "<x:xmpmeta/>");
    EXPECT_EQ(image->metadata.iptc, (Block{0x1c, 2, 0, 0, 2, 0, 4}));
    const IfdReader exif(image->metadata.exif);
    const auto entries = exif.Entries(exif.FirstDirectory());
    const IfdEntry* make = EntryWithTag(entries, kTagMake);
    ASSERT_TRUE(make);
    const auto* text = reinterpret_cast<const char*>(image->metadata.exif.data() + make->value_offset);
    EXPECT_STREQ(text, "Cameras Ltd");
    EXPECT_TRUE(EntryWithTag(entries, kTagImageDescription));
    EXPECT_FALSE(EntryWithTag(entries, 256));
}

TEST(TiffMetadata, FindsIptcAmongImageResources)
{
    const TestFolder folder;
    const std::string file = folder.Path("tags.tif");
    Python(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "i = T.ImageFileDirectory_v2(); i.tagtype[34377] = 7\n"
        "i[34377] = b'8BIM\\x04\\x04\\0\\0\\0\\0\\0\\x07\\x1c\\x02\\x00\\x00\\x02\\x00\\x04\\0'\n"
        "Image.new('L', (5, 4)).save(sys.argv[1], tiffinfo=i)\n",
        file);

    const auto image = Decoded(kTiffCodec, FileContent(file));

    ASSERT_TRUE(image);
    EXPECT_EQ(image->metadata.iptc, (Block{0x1c, 2, 0, 0, 2, 0, 4}));
}

TEST(TiffMetadata, KeepsExifDirectoryInEitherByteOrder)
{
    for (const bool big_endian : {false, true}) {
        ByteMaker input;
        // One page of 2 by 1, whose EXIF directory holds a date and an exposure of 1/250.
        const auto put16 = [&](std::uint32_t n) {
            input.U8({static_cast<int>(big_endian ? n >> 8 : n & 255),
                      static_cast<int>(big_endian ? n & 255 : n >> 8)});
        };
        const auto put32 = [&](std::uint32_t n) {
            put16(big_endian ? n >> 16 : n & 0xFFFF);
            put16(big_endian ? n & 0xFFFF : n >> 16);
        };
        const auto entry = [&](std::uint32_t tag, std::uint32_t type, std::uint32_t count,
                               std::uint32_t value) {
            put16(tag);
            put16(type);
            put32(count);
            if (type == 3) {
                put16(value);
                put16(0);
            } else {
                put32(value);
            }
        };
        input.Text(big_endian ? "MM" : "II");
        put16(42);
        put32(8);
        put16(8);
        entry(256, 3, 1, 2);
        entry(257, 3, 1, 1);
        entry(258, 3, 1, 8);
        entry(259, 3, 1, 1);
        entry(262, 3, 1, 1);
        entry(273, 4, 1, 110);
        entry(279, 4, 1, 2);
        entry(34665, 4, 1, 112);
        put32(0);
        input.U8({10, 20});
        put16(2);
        entry(0x829A, 5, 1, 142);
        entry(0x9003, 2, 20, 150);
        put32(0);
        put32(1);
        put32(250);
        input.Text("2024:03:05 10:20:30").U8({0});
        ASSERT_EQ(input.Size(), 170u);

        const auto image = Decoded(kTiffCodec, input.Data());

        ASSERT_TRUE(image);
        EXPECT_EQ(image->bytes, (PixelBytes{10, 20}));
        const IfdReader exif(image->metadata.exif);
        const auto first = exif.Entries(exif.FirstDirectory());
        const IfdEntry* pointer = EntryWithTag(first, kTagExifDirectory);
        ASSERT_TRUE(pointer);
        const auto inner = exif.Entries(exif.Number(*pointer).value_or(0));
        ASSERT_EQ(inner.size(), 2u);
        EXPECT_DOUBLE_EQ(exif.Rational(inner[0]).value_or(0), 0.004);
        EXPECT_EQ(inner[1].value_size, 20u);
    }
}

TEST(TiffProfiles, AreKeptIfTheyFitAndAppliedToCmyk)
{
    const TestFolder folder;
    const auto with_profile = [&](const std::string& mode, const std::string& colour, const Block& profile) {
        WriteFileContent(folder.Path("p.icc"), profile);
        const std::string file = folder.Path("p.tif");
        Python(
            "import sys; from PIL import Image\n"
            "Image.new('" +
                mode + "', (3, 2), " + colour +
                ").save(sys.argv[1], icc_profile=open(sys.argv[2], 'rb').read())\n",
            file + " " + folder.Path("p.icc"));
        return Decoded(kTiffCodec, FileContent(file)).value_or(ImageBuffer{});
    };

    EXPECT_EQ(with_profile("RGB", "(9, 8, 7)", SwappedProfile()).icc_profile, SwappedProfile());
    EXPECT_EQ(with_profile("L", "100", GreyProfile(1.8)).icc_profile, GreyProfile(1.8));
    EXPECT_TRUE(with_profile("L", "100", SwappedProfile()).icc_profile.empty());
    EXPECT_TRUE(with_profile("RGB", "(9, 8, 7)", CmykProfile()).icc_profile.empty());

    const ImageBuffer inks = with_profile("CMYK", "(255, 0, 0, 0)", CmykProfile());
    EXPECT_TRUE(inks.icc_profile.empty());
    ASSERT_EQ(inks.channels, 3);
    // This profile swaps cyan and yellow.
    EXPECT_LT(inks.bytes[0], 60);
    EXPECT_GT(inks.bytes[2], 200);

    const ImageBuffer grey = with_profile("LA", "(100, 50)", GreyProfile(1.0));
    EXPECT_TRUE(grey.icc_profile.empty());
    ASSERT_EQ(grey.channels, 4);
    EXPECT_EQ(grey.bytes[3], 50);
    EXPECT_NEAR(grey.bytes[0], 168, 2);  // 100 in linear light
    EXPECT_EQ(grey.bytes[0], grey.bytes[2]);
}

class DamagedTiff : public testing::TestWithParam<const char*>
{
};

TEST_P(DamagedTiff, DecodesOrIsRefusedWhicheverByteIsCorrupt)
{
    const Block good = Sample(GetParam());
    ASSERT_TRUE(Decoded(kTiffCodec, good));
    rusage before{};
    getrusage(RUSAGE_SELF, &before);

    // In larger samples, sampling some bytes is enough: neighbours are alike.
    const std::size_t step = good.size() / 1500 + 1;
    for (std::size_t i = 0; i < good.size(); i += step) {
        for (const int wrong : {0x00, 0xFF, good[i] ^ 0x80, good[i] + 1}) {
            Block file = good;
            file[i] = static_cast<std::uint8_t>(wrong);
            InputFile input{Bytes(file)};
            ImageBuffer image;
            const auto decoder = kTiffCodec.open(input);
            if (decoder && decoder->DecodeFrame(0, image)) {
                ASSERT_EQ(image.bytes.size(), static_cast<std::size_t>(image.width) *
                                                  static_cast<std::size_t>(image.height) *
                                                  static_cast<std::size_t>(image.channels));
            }
        }
    }

    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, kMostGrowth);
}

TEST_P(DamagedTiff, DecodesCorrectlyOrIsRefusedAfterTruncation)
{
    const Block good = Sample(GetParam());
    const auto whole = Decoded(kTiffCodec, good);
    ASSERT_TRUE(whole);

    for (std::size_t size = 0; size < good.size(); ++size) {
        // The end of a file isn't always needed; if decoding succeeds, the picture must be right.
        const auto image = Decoded(kTiffCodec, Bytes(good).first(size));
        if (image) {
            ASSERT_EQ(image->bytes, whole->bytes) << size;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedTiff,
                         testing::Values("im-g4", "libtiff-g3-2d", "pil-bits-lzw", "im-palette-4",
                                         "hand-directory-first", "im-jpeg-grey", "im-bigtiff", "im-tiles",
                                         "im-planes", "hand-ycbcr-2-2", "hand-old-jpeg", "im-zstd",
                                         "libtiff-logluv", "libtiff-float-predictor", "libtiff-lerc",
                                         "im-webp", "libtiff-jbig"));
