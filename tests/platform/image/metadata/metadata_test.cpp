// Tests of the metadata that travels from a load to a save.
#include "src/platform/image/metadata/metadata.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "src/platform/image/metadata/metadata_edit.h"
#include "src/platform/image/metadata/metadata_ifd.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{
using Block = std::vector<std::uint8_t>;

struct TagValue {
    std::uint16_t nTag, nType;
    std::uint32_t nCount;
    Block aValue;
};

Block aNumber(std::uint32_t nValue, std::size_t nSize, bool bBigEndian)
{
    Block aBytes(nSize);
    if (nSize == 2)
        PutU16(aBytes, 0, static_cast<std::uint16_t>(nValue), bBigEndian);
    else
        PutU32(aBytes, 0, nValue, bBigEndian);
    return aBytes;
}

// A camera's block: first directory, EXIF directory with a maker note, second directory, thumbnail at the
// end.
struct CameraExif {
    bool bBigEndian = false;
    std::uint16_t nOrientation = 6;
    Block aThumbnail = Block(5000, 0xAB);
    std::size_t nMakerNoteOffset = 0;

    TagValue Short(std::uint16_t nTag, std::uint32_t n) const
    {
        return {nTag, 3, 1, aNumber(n, 2, bBigEndian)};
    }
    TagValue Long(std::uint16_t nTag, std::uint32_t n) const
    {
        return {nTag, 4, 1, aNumber(n, 4, bBigEndian)};
    }
    TagValue Ratio(std::uint16_t nTag, std::uint32_t n) const
    {
        Block aValue = aNumber(n, 4, bBigEndian);
        const Block aOne = aNumber(1, 4, bBigEndian);
        aValue.insert(aValue.end(), aOne.begin(), aOne.end());
        return {nTag, 5, 1, aValue};
    }
    static TagValue Text(std::uint16_t nTag, const std::string& s)
    {
        Block aValue(s.begin(), s.end());
        aValue.push_back(0);
        return {nTag, 2, static_cast<std::uint32_t>(aValue.size()), aValue};
    }

    // Appends a directory and its values; returns where the offset of the next directory has to be written.
    std::size_t Append(Block& aBlock, const std::vector<TagValue>& aTags)
    {
        const std::size_t nStart = aBlock.size();
        aBlock.resize(nStart + 2 + aTags.size() * 12 + 4);
        PutU16(aBlock, nStart, static_cast<std::uint16_t>(aTags.size()), bBigEndian);
        for (std::size_t i = 0; i < aTags.size(); ++i) {
            const std::size_t nEntry = nStart + 2 + i * 12;
            PutU16(aBlock, nEntry, aTags[i].nTag, bBigEndian);
            PutU16(aBlock, nEntry + 2, aTags[i].nType, bBigEndian);
            PutU32(aBlock, nEntry + 4, aTags[i].nCount, bBigEndian);
            if (aTags[i].aValue.size() <= 4) {
                std::copy(aTags[i].aValue.begin(), aTags[i].aValue.end(),
                          aBlock.begin() + static_cast<long>(nEntry) + 8);
                continue;
            }
            if (aTags[i].nTag == 0x927C)
                nMakerNoteOffset = aBlock.size();
            PutU32(aBlock, nEntry + 8, static_cast<std::uint32_t>(aBlock.size()), bBigEndian);
            aBlock.insert(aBlock.end(), aTags[i].aValue.begin(), aTags[i].aValue.end());
            aBlock.resize((aBlock.size() + 1) / 2 * 2);
        }
        return nStart + 2 + aTags.size() * 12;
    }

    Block aMade()
    {
        Block aBlock = bBigEndian ? Block{'M', 'M', 0, 42, 0, 0, 0, 8} : Block{'I', 'I', 42, 0, 8, 0, 0, 0};
        const std::size_t nNext = Append(
            aBlock, {Text(kTagMake, "Cameras Ltd"), Short(kTagOrientation, nOrientation),
                     Ratio(kTagXResolution, 72), Ratio(kTagYResolution, 72), Short(kTagResolutionUnit, 2),
                     Text(kTagArtist, "Somebody Old"), Long(kTagExifDirectory, 0)});
        const std::size_t nPointer = nNext - 4;
        PutU32(aBlock, nPointer, static_cast<std::uint32_t>(aBlock.size()), bBigEndian);
        Append(aBlock, {Text(0x9003, "2020:01:02 03:04:05"),
                        {0x927C, 7, 100, Block(100, 0x5A)},
                        Short(kTagPixelXDimension, 40),
                        Long(kTagPixelYDimension, 30)});
        PutU32(aBlock, nNext, static_cast<std::uint32_t>(aBlock.size()), bBigEndian);
        const std::size_t nSecond = aBlock.size();
        Append(aBlock, {Short(0x0103, 6), Long(0x0201, 0),
                        Long(0x0202, static_cast<std::uint32_t>(aThumbnail.size()))});
        PutU32(aBlock, nSecond + 2 + 12 + 8, static_cast<std::uint32_t>(aBlock.size()), bBigEndian);
        aBlock.insert(aBlock.end(), aThumbnail.begin(), aThumbnail.end());
        return aBlock;
    }
};

std::uint32_t nFirstDirectoryNumber(const Block& aExif, std::uint16_t nTag)
{
    const IfdReader objReader(aExif);
    const auto aEntries = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pEntry = pEntryWithTag(aEntries, nTag);
    return pEntry ? objReader.nNumber(*pEntry).value_or(0) : 0;
}

// What Pillow finds in the first directory, as "tag=value;" in the order of the tags.
std::string sAsPillowReadsIt(const Block& aExif)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("exif"), aExif);
    return sPython(
        "import sys\nfrom PIL import Image\n"
        "e = Image.Exif(); e.load(b'Exif\\0\\0' + open(sys.argv[1], 'rb').read())\n"
        "for t in sorted(e):\n"
        "    if t not in (0x8769,): print('%04X=%s' % (t, e[t]), end=';')\n"
        "x = e.get_ifd(0x8769)\n"
        "for t in sorted(x):\n    print('%04X=%s' % (t, x[t] if t != 0x927C else len(x[t])), end=';')\n",
        objFolder.sPath("exif"));
}

ImageInfoTexts AllTexts()
{
    return {"A title", "What is to be seen", "7/4/2021 9:05:00 PM", "Ann Author", "(c) Ann", "Maker & Sons",
            "Model 7"};
}

ImageInfoTexts TitleOnly(const std::string& sTitle)
{
    ImageInfoTexts objTexts;
    objTexts.sTitle = sTitle;
    return objTexts;
}
}  // namespace

TEST(ExifForSave, IsEmptyWithoutSourceAndTexts)
{
    EXPECT_TRUE(aExifForSave(aPattern(4, 4, 3), {}).empty());
}

TEST(ExifForSave, HoldsTheSevenTextsWhereReadersLookForThem)
{
    const Block aExif = aExifForSave(aPattern(4, 4, 3), AllTexts());

    EXPECT_EQ(sAsPillowReadsIt(aExif),
              "010D=A title;010E=What is to be seen;010F=Maker & Sons;0110=Model 7;0132=2021:07:04 21:05:00;"
              "013B=Ann Author;8298=(c) Ann;");
}

TEST(ExifForSave, KeepsTheSourcesTagsAndLetsTextsWin)
{
    for (const bool bBigEndian : {false, true}) {
        CameraExif objCamera{.bBigEndian = bBigEndian};
        ImageBuffer aImage = aPattern(64, 48, 3);
        aImage.metadata.exif = objCamera.aMade();
        aImage.dots_per_inch_x = aImage.dots_per_inch_y = 299.5;
        ImageInfoTexts objTexts;
        objTexts.sAuthor = "Somebody with a longer name than the one before";
        objTexts.sTitle = "New";

        const Block aExif = aExifForSave(aImage, objTexts);

        EXPECT_EQ(sAsPillowReadsIt(aExif),
                  "010D=New;010F=Cameras Ltd;0112=1;011A=299.5;011B=299.5;0128=2;"
                  "013B=Somebody with a longer name than the one before;"
                  "9003=2020:01:02 03:04:05;927C=100;A002=64;A003=48;");
    }
}

TEST(ExifForSave, LeavesTheMakerNoteWhereItsInnerOffsetsExpectIt)
{
    CameraExif objCamera;
    ImageBuffer aImage = aPattern(64, 48, 3);
    aImage.metadata.exif = objCamera.aMade();

    const Block aExif = aExifForSave(aImage, AllTexts());

    const Block aNote(aExif.begin() + static_cast<long>(objCamera.nMakerNoteOffset),
                      aExif.begin() + static_cast<long>(objCamera.nMakerNoteOffset) + 100);
    EXPECT_EQ(aNote, Block(100, 0x5A));
}

TEST(ExifForSave, DropsTheThumbnailAndItsDirectory)
{
    CameraExif objCamera;
    ImageBuffer aImage = aPattern(64, 48, 3);
    aImage.metadata.exif = objCamera.aMade();

    const Block aExif = aExifForSave(aImage, {});

    EXPECT_EQ(std::count(aExif.begin(), aExif.end(), 0xAB), 0);
    EXPECT_LT(aExif.size(), aImage.metadata.exif.size() - 5000);
    EXPECT_EQ(IfdReader(aExif).nNextDirectory(IfdReader(aExif).nFirstDirectory()), 0u);
}

TEST(ExifForSave, GrowsNoFurtherWhenTheSameTextsAreSavedAgain)
{
    CameraExif objCamera;
    ImageBuffer aImage = aPattern(64, 48, 3);
    aImage.metadata.exif = objCamera.aMade();
    const Block aOnce = aExifForSave(aImage, AllTexts());
    aImage.metadata.exif = aOnce;

    EXPECT_EQ(aExifForSave(aImage, AllTexts()), aOnce);
}

TEST(ExifForSave, LeavesOutWhatTellsHowAFileStoredItsPixels)
{
    CameraExif objCamera;
    Block aBlock = {'I', 'I', 42, 0, 8, 0, 0, 0};
    objCamera.Append(aBlock, {objCamera.Short(0x0100, 9), objCamera.Short(0x0103, 4),
                              CameraExif::Text(kTagMake, "M"), objCamera.Long(0x0111, 8)});
    ImageBuffer aImage = aPattern(4, 4, 3);
    aImage.metadata.exif = aBlock;

    EXPECT_EQ(sAsPillowReadsIt(aExifForSave(aImage, {})), "010F=M;");
}

TEST(ExifForSave, TakesABlockThatIsNoneForNone)
{
    ImageBuffer aImage = aPattern(4, 4, 3);
    aImage.metadata.exif = {'X', 'X', 1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(aExifForSave(aImage, {}).empty());
    EXPECT_EQ(sAsPillowReadsIt(aExifForSave(aImage, TitleOnly("T"))), "010D=T;");
}

TEST(ExifForSave, EndsATextAtItsFirstZero)
{
    const Block aExif = aExifForSave(aPattern(4, 4, 3), TitleOnly(std::string("abcdef\0ghi", 10)));
    EXPECT_EQ(sAsPillowReadsIt(aExif), "010D=abcdef;");
}

TEST(FinishLoaded, TurnsThePictureAndSetsTheOrientationToOne)
{
    CameraExif objCamera;
    ImageBuffer aImage = aPattern(40, 30, 3);
    aImage.dots_per_inch_x = 100;
    aImage.dots_per_inch_y = 200;
    aImage.metadata.exif = objCamera.aMade();
    const std::string sXmp = "<rdf:Description tiff:Orientation=\"6\"/>";
    aImage.metadata.xmp.assign(sXmp.begin(), sXmp.end());

    FinishLoaded(aImage);

    EXPECT_EQ(aImage.width, 30);
    EXPECT_EQ(aImage.height, 40);
    EXPECT_EQ(aImage.dots_per_inch_x, 200);
    EXPECT_EQ(nFirstDirectoryNumber(aImage.metadata.exif, kTagOrientation), 1u);
    const std::string sAfter(aImage.metadata.xmp.begin(), aImage.metadata.xmp.end());
    EXPECT_EQ(sAfter, "<rdf:Description tiff:Orientation=\"1\"/>");
    EXPECT_EQ(std::count(aImage.metadata.exif.begin(), aImage.metadata.exif.end(), 0xAB), 0);
}

TEST(FinishLoaded, SurvivesEveryBlockThatIsCutOrChanged)
{
    CameraExif objCamera{.aThumbnail = Block(20, 0xAB)};
    const Block aGood = objCamera.aMade();
    const auto TakesIt = [](const Block& aExif) {
        ImageBuffer aImage = aPattern(3, 2, 3);
        aImage.metadata.exif = aExif;
        FinishLoaded(aImage);
        EXPECT_EQ(aImage.bytes.size(), 18u);
        const Block aSaved = aExifForSave(aImage, AllTexts());
        EXPECT_LE(aSaved.size(), aExif.size() + 1000);
        EXPECT_EQ(IfdReader(aSaved).nNextDirectory(IfdReader(aSaved).nFirstDirectory()), 0u);
    };
    for (std::size_t n = 0; n <= aGood.size(); ++n)
        TakesIt(Block(aGood.begin(), aGood.begin() + static_cast<long>(n)));
    for (std::size_t n = 0; n < aGood.size(); ++n)
        for (const std::uint8_t nValue : Block{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Block aChanged = aGood;
            aChanged[n] = nValue;
            TakesIt(aChanged);
        }
    std::mt19937 objRandom(7);
    for (int i = 0; i < 20000; ++i) {
        Block aChanged = aGood;
        for (int k = 0; k < 6; ++k)
            aChanged[objRandom() % aChanged.size()] = static_cast<std::uint8_t>(objRandom());
        TakesIt(aChanged);
    }
}

TEST(ExifResolution, IsReadInInchesAndCentimetresAndOnlyThere)
{
    CameraExif objCamera;
    Block aExif = objCamera.aMade();
    EXPECT_EQ(objExifResolution(aExif).dDotsPerInchX, 72);
    const IfdReader objReader(aExif);
    const auto aEntries = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pUnit = pEntryWithTag(aEntries, kTagResolutionUnit);
    SetExifNumber(aExif, *pUnit, 3);
    EXPECT_DOUBLE_EQ(objExifResolution(aExif).dDotsPerInchY, 72 * 2.54);
    SetExifNumber(aExif, *pUnit, 1);
    EXPECT_EQ(objExifResolution(aExif).dDotsPerInchX, 0);
    EXPECT_EQ(objExifResolution({}).dDotsPerInchX, 0);
}

TEST(ExifDate, TurnsDatesIntoExifFormAndLeavesOtherTexts)
{
    EXPECT_EQ(sExifDate("7/4/2021"), "2021:07:04 00:00:00");
    EXPECT_EQ(sExifDate("12/31/1999 11:59:58 PM"), "1999:12:31 23:59:58");
    EXPECT_EQ(sExifDate("1/2/2003 12:05 am"), "2003:01:02 00:05:00");
    EXPECT_EQ(sExifDate("2021-07-04"), "2021:07:04 00:00:00");
    EXPECT_EQ(sExifDate("2021-07-04T23:01:02"), "2021:07:04 23:01:02");
    EXPECT_EQ(sExifDate("2021:07:04 23:01:02"), "2021:07:04 23:01:02");
    EXPECT_EQ(sExifDate("2/29/2020"), "2020:02:29 00:00:00");
    for (const char* sOther : {"", "  ", "Christmas", "2/29/2021", "13/1/2021", "0/1/2021", "7/4/21",
                               "2021-07-04x", "2021-7", "7/4/2021 25:00", "7/4/2021 13:00 PM", "7/4/2021 9",
                               "1:2:3", "99999/1/1", "2021-07:04", "summer 1999"})
        EXPECT_EQ(sExifDate(sOther), sOther);
}
