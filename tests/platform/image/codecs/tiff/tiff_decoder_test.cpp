// Tests of reading TIFF files beyond the samples: pages, metadata, damage.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "src/platform/image/base/input_file.h"
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

Block aSample(const std::string& sName)
{
    return aFileContent(sSamplePath("tiff/" + sName + ".tif"));
}

// KB by which reading damaged files may make the process grow. The address sanitizer keeps what was freed.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kMostGrowth = 600 * 1024;
#else
constexpr long kMostGrowth = 150 * 1024;
#endif

// A grey picture that tells which page it is.
ImageBuffer aPage(int nPage, std::int32_t lSide = 16)
{
    ImageBuffer aImage;
    aImage.width = lSide;
    aImage.height = lSide;
    aImage.channels = 1;
    aImage.bytes.assign(static_cast<std::size_t>(lSide) * static_cast<std::size_t>(lSide),
                        static_cast<std::uint8_t>(nPage % 251));
    return aImage;
}

void WritePages(const std::string& sFile, int nPages, std::int32_t lSide)
{
    const auto pDocument = TiffDocument::pBegin(sFile, aPage(0, lSide), {});
    ASSERT_TRUE(pDocument);
    for (int i = 1; i < nPages; ++i)
        ASSERT_TRUE(pDocument->bAppend(aPage(i, lSide), {}));
}

// A file of nothing but directories of one tag, chained.
Block aBareDirectories(std::uint32_t nCount, std::uint32_t nAfterTheLast)
{
    ByteMaker objFile;
    objFile.Text("II").U16Le({42}).U32Le({8});
    for (std::uint32_t i = 0; i < nCount; ++i) {
        const std::uint32_t nNext = i + 1 < nCount ? 8 + 18 * (i + 1) : nAfterTheLast;
        objFile.U16Le({1, 256, 3}).U32Le({1, 1, nNext});
    }
    return objFile.aBytes();
}

std::int32_t lPagesOf(const Block& aFile)
{
    InputFile objFile{Bytes(aFile)};
    const auto pDecoder = codecTiff.Open(objFile);
    return pDecoder ? pDecoder->FrameCount() : 0;
}
}  // namespace

TEST(TiffSniff, KnowsBothByteOrdersAndBothSizesOfOffsets)
{
    const auto bKnown = [](std::string_view sHead) {
        return codecTiff.Sniff({reinterpret_cast<const std::uint8_t*>(sHead.data()), sHead.size()}, "tif");
    };

    EXPECT_TRUE(bKnown({"II*\0", 4}));
    EXPECT_TRUE(bKnown({"MM\0*", 4}));
    EXPECT_TRUE(bKnown({"II+\0", 4}));
    EXPECT_TRUE(bKnown({"MM\0+", 4}));
    EXPECT_FALSE(bKnown({"II\0*", 4}));
    EXPECT_FALSE(bKnown({"IM*\0", 4}));
    EXPECT_FALSE(bKnown("II*"));
    EXPECT_FALSE(bKnown(""));
}

TEST(TiffPages, ComeInAnyOrderForOnePassOverTheFile)
{
    const TestFolder objFolder;
    constexpr int kPages = 400;
    WritePages(objFolder.sPath("pages.tif"), kPages, 64);
    const auto pFile = InputFile::Open(objFolder.sPath("pages.tif"));
    std::vector<int> aOrder(kPages);
    std::iota(aOrder.begin(), aOrder.end(), 0);
    std::shuffle(aOrder.begin(), aOrder.end(), std::mt19937(1));

    const IoCount objBefore = objIoSoFar();
    const auto pDecoder = codecTiff.Open(*pFile);
    ASSERT_TRUE(pDecoder);
    ASSERT_EQ(pDecoder->FrameCount(), kPages);
    for (const int nPage : aOrder) {
        ImageBuffer aImage;
        ASSERT_TRUE(pDecoder->DecodeFrame(nPage, aImage));
        ASSERT_EQ(aImage.bytes, aPage(nPage, 64).bytes);
    }
    const std::uint64_t nRead = objIoSoFar().nRead - objBefore.nRead;

    // Looking for each page from the first directory on would read 400 times 200 directories of 200 bytes: 16
    // MB.
    EXPECT_LT(nRead, pFile->Size() * 3 / 2);
}

TEST(TiffPages, OfARingAreCountedOnce)
{
    EXPECT_EQ(lPagesOf(aBareDirectories(5, 0)), 5);
    EXPECT_EQ(lPagesOf(aBareDirectories(5, 8)), 5);
    EXPECT_EQ(lPagesOf(aBareDirectories(5, 8 + 18 * 2)), 5);
}

TEST(TiffPages, EndWhereTheChainLeavesTheFile)
{
    EXPECT_EQ(lPagesOf(aBareDirectories(5, 100000)), 5);
    EXPECT_EQ(lPagesOf(aBareDirectories(5, 8 + 18 * 5 - 1)), 5);
    Block aCut = aBareDirectories(5, 0);
    aCut.resize(aCut.size() - 10);
    EXPECT_EQ(lPagesOf(aCut), 4);
}

TEST(TiffPages, AreNoMoreThanSixteenBitsCount)
{
    EXPECT_EQ(lPagesOf(aBareDirectories(70000, 0)), 65535);
}

TEST(TiffPages, ThatAreBrokenLeaveTheOthersReadable)
{
    const TestFolder objFolder;
    WritePages(objFolder.sPath("pages.tif"), 3, 16);
    Block aFile = aFileContent(objFolder.sPath("pages.tif"));
    // The second page claims another compression.
    const Block aCompression = {0x03, 0x01, 3, 0, 1, 0, 0, 0, 1, 0};
    auto itTag = std::search(aFile.begin(), aFile.end(), aCompression.begin(), aCompression.end());
    itTag = std::search(itTag + 1, aFile.end(), aCompression.begin(), aCompression.end());
    ASSERT_NE(itTag, aFile.end());
    itTag[8] = 77;

    EXPECT_TRUE(aDecoded(codecTiff, aFile, 0));
    EXPECT_FALSE(aDecoded(codecTiff, aFile, 1));
    EXPECT_TRUE(aDecoded(codecTiff, aFile, 2));
}

TEST(TiffReading, TakesNoMemoryForAStripBesideThePicture)
{
    const TestFolder objFolder;
    // 48 megapixels of 16 bits in one strip: 96 MB stored, 48 MB as a picture.
    const std::string sFile = objFolder.sPath("large.tif");
    sPython(
        "import sys; from PIL import Image; Image.MAX_IMAGE_PIXELS = None\n"
        "Image.new('I;16', (8000, 6000), 32896).save(sys.argv[1], compression='tiff_deflate', "
        "tiffinfo={278: 6000})\n",
        sFile);
    const auto pFile = InputFile::Open(sFile);
    ASSERT_LT(pFile->Size(), 8u * 1024 * 1024);
    rusage objBefore{};
    getrusage(RUSAGE_SELF, &objBefore);

    ImageBuffer aImage;
    ASSERT_TRUE(codecTiff.Open(*pFile)->DecodeFrame(0, aImage));

    rusage objAfter{};
    getrusage(RUSAGE_SELF, &objAfter);
    EXPECT_EQ(aImage.bytes[12345], 128);
    EXPECT_LT(objAfter.ru_maxrss - objBefore.ru_maxrss, (48 + 32) * 1024);  // KB
}

TEST(TiffMetadata, ComesFromItsTags)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("tags.tif");
    sPython(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "i = T.ImageFileDirectory_v2()\n"
        "i[271] = 'Cameras Ltd'; i[270] = 'Hills'; i[282] = 100.0; i[283] = 50.0; i[296] = 3\n"
        "i[700] = b'<x:xmpmeta/>'; i.tagtype[700] = 1\n"
        "i[33723] = b'\\x1c\\x02\\x00\\x00\\x02\\x00\\x04'; i.tagtype[33723] = 7\n"
        "Image.new('RGB', (5, 4), (1, 2, 3)).save(sys.argv[1], tiffinfo=i, "
        "exif=None)\n",
        sFile);
    const auto aImage = aDecoded(codecTiff, aFileContent(sFile));

    ASSERT_TRUE(aImage);
    EXPECT_DOUBLE_EQ(aImage->dots_per_inch_x, 254);
    EXPECT_DOUBLE_EQ(aImage->dots_per_inch_y, 127);
    EXPECT_EQ(std::string(aImage->metadata.xmp.begin(), aImage->metadata.xmp.end()), "<x:xmpmeta/>");
    EXPECT_EQ(aImage->metadata.iptc, (Block{0x1c, 2, 0, 0, 2, 0, 4}));
    const IfdReader objExif(aImage->metadata.exif);
    const auto aEntries = objExif.Entries(objExif.FirstDirectory());
    const IfdEntry* pMake = EntryWithTag(aEntries, kTagMake);
    ASSERT_TRUE(pMake);
    const auto* pText = reinterpret_cast<const char*>(aImage->metadata.exif.data() + pMake->value_offset);
    EXPECT_STREQ(pText, "Cameras Ltd");
    EXPECT_TRUE(EntryWithTag(aEntries, kTagImageDescription));
    EXPECT_FALSE(EntryWithTag(aEntries, 256));
}

TEST(TiffMetadata, HasItsIptcAlsoAmongImageResources)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("tags.tif");
    sPython(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "i = T.ImageFileDirectory_v2(); i.tagtype[34377] = 7\n"
        "i[34377] = b'8BIM\\x04\\x04\\0\\0\\0\\0\\0\\x07\\x1c\\x02\\x00\\x00\\x02\\x00\\x04\\0'\n"
        "Image.new('L', (5, 4)).save(sys.argv[1], tiffinfo=i)\n",
        sFile);

    const auto aImage = aDecoded(codecTiff, aFileContent(sFile));

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->metadata.iptc, (Block{0x1c, 2, 0, 0, 2, 0, 4}));
}

TEST(TiffMetadata, KeepsItsDirectoryOfExifInEitherByteOrder)
{
    for (const bool bBigEndian : {false, true}) {
        ByteMaker objFile;
        // One page of 2 by 1, whose EXIF directory holds a date and an exposure of 1/250.
        const auto Put16 = [&](std::uint32_t n) {
            objFile.U8({static_cast<int>(bBigEndian ? n >> 8 : n & 255),
                        static_cast<int>(bBigEndian ? n & 255 : n >> 8)});
        };
        const auto Put32 = [&](std::uint32_t n) {
            Put16(bBigEndian ? n >> 16 : n & 0xFFFF);
            Put16(bBigEndian ? n & 0xFFFF : n >> 16);
        };
        const auto Entry = [&](std::uint32_t nTag, std::uint32_t nType, std::uint32_t nCount,
                               std::uint32_t nValue) {
            Put16(nTag);
            Put16(nType);
            Put32(nCount);
            if (nType == 3) {
                Put16(nValue);
                Put16(0);
            } else {
                Put32(nValue);
            }
        };
        objFile.Text(bBigEndian ? "MM" : "II");
        Put16(42);
        Put32(8);
        Put16(8);
        Entry(256, 3, 1, 2);
        Entry(257, 3, 1, 1);
        Entry(258, 3, 1, 8);
        Entry(259, 3, 1, 1);
        Entry(262, 3, 1, 1);
        Entry(273, 4, 1, 110);
        Entry(279, 4, 1, 2);
        Entry(34665, 4, 1, 112);
        Put32(0);
        objFile.U8({10, 20});
        Put16(2);
        Entry(0x829A, 5, 1, 142);
        Entry(0x9003, 2, 20, 150);
        Put32(0);
        Put32(1);
        Put32(250);
        objFile.Text("2024:03:05 10:20:30").U8({0});
        ASSERT_EQ(objFile.nSize(), 170u);

        const auto aImage = aDecoded(codecTiff, objFile.aBytes());

        ASSERT_TRUE(aImage);
        EXPECT_EQ(aImage->bytes, (PixelBytes{10, 20}));
        const IfdReader objExif(aImage->metadata.exif);
        const auto aFirst = objExif.Entries(objExif.FirstDirectory());
        const IfdEntry* pPointer = EntryWithTag(aFirst, kTagExifDirectory);
        ASSERT_TRUE(pPointer);
        const auto aInner = objExif.Entries(objExif.Number(*pPointer).value_or(0));
        ASSERT_EQ(aInner.size(), 2u);
        EXPECT_DOUBLE_EQ(objExif.Rational(aInner[0]).value_or(0), 0.004);
        EXPECT_EQ(aInner[1].value_size, 20u);
    }
}

TEST(TiffProfiles, AreKeptWhereTheyFitAndAppliedToInks)
{
    const TestFolder objFolder;
    const auto WithProfile = [&](const std::string& sMode, const std::string& sColour,
                                 const Block& aProfile) {
        WriteFileContent(objFolder.sPath("p.icc"), aProfile);
        const std::string sFile = objFolder.sPath("p.tif");
        sPython(
            "import sys; from PIL import Image\n"
            "Image.new('" +
                sMode + "', (3, 2), " + sColour +
                ").save(sys.argv[1], icc_profile=open(sys.argv[2], 'rb').read())\n",
            sFile + " " + objFolder.sPath("p.icc"));
        return aDecoded(codecTiff, aFileContent(sFile)).value_or(ImageBuffer{});
    };

    EXPECT_EQ(WithProfile("RGB", "(9, 8, 7)", aSwappedProfile()).icc_profile, aSwappedProfile());
    EXPECT_EQ(WithProfile("L", "100", aGreyProfile(1.8)).icc_profile, aGreyProfile(1.8));
    EXPECT_TRUE(WithProfile("L", "100", aSwappedProfile()).icc_profile.empty());
    EXPECT_TRUE(WithProfile("RGB", "(9, 8, 7)", aCmykProfile()).icc_profile.empty());

    const ImageBuffer aInks = WithProfile("CMYK", "(255, 0, 0, 0)", aCmykProfile());
    EXPECT_TRUE(aInks.icc_profile.empty());
    ASSERT_EQ(aInks.channels, 3);
    // This profile's cyan is another one's yellow.
    EXPECT_LT(aInks.bytes[0], 60);
    EXPECT_GT(aInks.bytes[2], 200);

    const ImageBuffer aGrey = WithProfile("LA", "(100, 50)", aGreyProfile(1.0));
    EXPECT_TRUE(aGrey.icc_profile.empty());
    ASSERT_EQ(aGrey.channels, 4);
    EXPECT_EQ(aGrey.bytes[3], 50);
    EXPECT_NEAR(aGrey.bytes[0], 168, 2);  // 100 of linear light
    EXPECT_EQ(aGrey.bytes[0], aGrey.bytes[2]);
}

class DamagedTiff : public testing::TestWithParam<const char*>
{
};

TEST_P(DamagedTiff, EndsInAPictureOrARefusalWhicheverByteIsWrong)
{
    const Block aGood = aSample(GetParam());
    ASSERT_TRUE(aDecoded(codecTiff, aGood));
    rusage objBefore{};
    getrusage(RUSAGE_SELF, &objBefore);

    // In the larger samples a part of the bytes does; what stands side by side is alike there.
    const std::size_t nStep = aGood.size() / 1500 + 1;
    for (std::size_t i = 0; i < aGood.size(); i += nStep) {
        for (const int nWrong : {0x00, 0xFF, aGood[i] ^ 0x80, aGood[i] + 1}) {
            Block aFile = aGood;
            aFile[i] = static_cast<std::uint8_t>(nWrong);
            InputFile objFile{Bytes(aFile)};
            ImageBuffer aImage;
            const auto pDecoder = codecTiff.Open(objFile);
            if (pDecoder && pDecoder->DecodeFrame(0, aImage)) {
                ASSERT_EQ(aImage.bytes.size(), static_cast<std::size_t>(aImage.width) *
                                                   static_cast<std::size_t>(aImage.height) *
                                                   static_cast<std::size_t>(aImage.channels));
            }
        }
    }

    rusage objAfter{};
    getrusage(RUSAGE_SELF, &objAfter);
    EXPECT_LT(objAfter.ru_maxrss - objBefore.ru_maxrss, kMostGrowth);
}

TEST_P(DamagedTiff, IsRefusedOrWholeWhereverItIsCut)
{
    const Block aGood = aSample(GetParam());
    const auto aWhole = aDecoded(codecTiff, aGood);
    ASSERT_TRUE(aWhole);

    for (std::size_t nSize = 0; nSize < aGood.size(); ++nSize) {
        // Not all that stands at a file's end is needed for the picture; what is decoded must be right.
        const auto aImage = aDecoded(codecTiff, Bytes(aGood).first(nSize));
        if (aImage) {
            ASSERT_EQ(aImage->bytes, aWhole->bytes) << nSize;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedTiff,
                         testing::Values("g4", "g3-2d", "bits-lzw", "palette-4", "directory-first",
                                         "jpeg-grey", "bigtiff", "tiles", "planes", "ycbcr-2-2", "old-jpeg",
                                         "zstd", "logluv", "float-predictor", "lerc", "webp", "jbig"));
