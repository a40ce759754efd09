// Tests of carrying metadata from load to save.
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
    std::uint16_t tag, type;
    std::uint32_t count;
    Block value;
};

Block Number(std::uint32_t value, std::size_t size, bool big_endian)
{
    Block bytes(size);
    if (size == 2)
        PutU16(bytes, 0, static_cast<std::uint16_t>(value), big_endian);
    else
        PutU32(bytes, 0, value, big_endian);
    return bytes;
}

// An EXIF block like a camera's: IFD0, EXIF IFD with a maker note, IFD1, thumbnail at the end.
struct CameraExif {
    bool big_endian = false;
    std::uint16_t orientation = 6;
    Block thumbnail = Block(5000, 0xAB);
    std::size_t maker_note_offset = 0;

    TagValue Short(std::uint16_t tag, std::uint32_t n) const { return {tag, 3, 1, Number(n, 2, big_endian)}; }
    TagValue Long(std::uint16_t tag, std::uint32_t n) const { return {tag, 4, 1, Number(n, 4, big_endian)}; }
    TagValue Ratio(std::uint16_t tag, std::uint32_t n) const
    {
        Block value = Number(n, 4, big_endian);
        const Block one = Number(1, 4, big_endian);
        value.insert(value.end(), one.begin(), one.end());
        return {tag, 5, 1, value};
    }
    static TagValue Text(std::uint16_t tag, const std::string& s)
    {
        Block value(s.begin(), s.end());
        value.push_back(0);
        return {tag, 2, static_cast<std::uint32_t>(value.size()), value};
    }

    // Appends a directory and its values; returns the position of the next directory's offset.
    std::size_t Append(Block& block, const std::vector<TagValue>& tags)
    {
        const std::size_t start = block.size();
        block.resize(start + 2 + tags.size() * 12 + 4);
        PutU16(block, start, static_cast<std::uint16_t>(tags.size()), big_endian);
        for (std::size_t i = 0; i < tags.size(); ++i) {
            const std::size_t entry = start + 2 + i * 12;
            PutU16(block, entry, tags[i].tag, big_endian);
            PutU16(block, entry + 2, tags[i].type, big_endian);
            PutU32(block, entry + 4, tags[i].count, big_endian);
            if (tags[i].value.size() <= 4) {
                std::copy(tags[i].value.begin(), tags[i].value.end(),
                          block.begin() + static_cast<long>(entry) + 8);
                continue;
            }
            if (tags[i].tag == 0x927C)
                maker_note_offset = block.size();
            PutU32(block, entry + 8, static_cast<std::uint32_t>(block.size()), big_endian);
            block.insert(block.end(), tags[i].value.begin(), tags[i].value.end());
            block.resize((block.size() + 1) / 2 * 2);
        }
        return start + 2 + tags.size() * 12;
    }

    Block Build()
    {
        Block block = big_endian ? Block{'M', 'M', 0, 42, 0, 0, 0, 8} : Block{'I', 'I', 42, 0, 8, 0, 0, 0};
        const std::size_t next = Append(
            block, {Text(kTagMake, "Cameras Ltd"), Short(kTagOrientation, orientation),
                    Ratio(kTagXResolution, 72), Ratio(kTagYResolution, 72), Short(kTagResolutionUnit, 2),
                    Text(kTagArtist, "Somebody Old"), Long(kTagExifDirectory, 0)});
        const std::size_t pointer = next - 4;
        PutU32(block, pointer, static_cast<std::uint32_t>(block.size()), big_endian);
        Append(block, {Text(0x9003, "2020:01:02 03:04:05"),
                       {0x927C, 7, 100, Block(100, 0x5A)},
                       Short(kTagPixelXDimension, 40),
                       Long(kTagPixelYDimension, 30)});
        PutU32(block, next, static_cast<std::uint32_t>(block.size()), big_endian);
        const std::size_t second = block.size();
        Append(block, {Short(0x0103, 6), Long(0x0201, 0),
                       Long(0x0202, static_cast<std::uint32_t>(thumbnail.size()))});
        PutU32(block, second + 2 + 12 + 8, static_cast<std::uint32_t>(block.size()), big_endian);
        block.insert(block.end(), thumbnail.begin(), thumbnail.end());
        return block;
    }
};

std::uint32_t FirstDirectoryNumber(const Block& exif, std::uint16_t tag)
{
    const IfdReader reader(exif);
    const auto entries = reader.Entries(reader.FirstDirectory());
    const IfdEntry* entry = EntryWithTag(entries, tag);
    return entry ? reader.Number(*entry).value_or(0) : 0;
}

// The tags that Pillow reads from IFD0, as "tag=value;" in tag order.
std::string TagsByPillow(const Block& exif)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("exif"), exif);
    return Python(
        "import sys\nfrom PIL import Image\n"
        "e = Image.Exif(); e.load(b'Exif\\0\\0' + open(sys.argv[1], 'rb').read())\n"
        "for t in sorted(e):\n"
        "    if t not in (0x8769,): print('%04X=%s' % (t, e[t]), end=';')\n"
        "x = e.get_ifd(0x8769)\n"
        "for t in sorted(x):\n    print('%04X=%s' % (t, x[t] if t != 0x927C else len(x[t])), end=';')\n",
        folder.Path("exif"));
}

ImageInfoTexts AllTexts()
{
    return {"A title",      "Trees by a lake", "7/4/2021 9:05:00 PM", "Ann Author", "(c) Ann",
            "Maker & Sons", "Model 7"};
}

ImageInfoTexts TitleOnly(const std::string& title)
{
    ImageInfoTexts texts;
    texts.sTitle = title;
    return texts;
}
}  // namespace

TEST(ExifForSave, IsEmptyWithoutSourceAndTexts)
{
    EXPECT_TRUE(ExifForSave(Pattern(4, 4, 3), {}).empty());
}

TEST(ExifForSave, StoresSevenTextsWhereReadersExpectThem)
{
    const Block exif = ExifForSave(Pattern(4, 4, 3), AllTexts());

    EXPECT_EQ(TagsByPillow(exif),
              "010D=A title;010E=Trees by a lake;010F=Maker & Sons;0110=Model 7;0132=2021:07:04 21:05:00;"
              "013B=Ann Author;8298=(c) Ann;");
}

TEST(ExifForSave, KeepsTagsOfSourceButPrefersTexts)
{
    for (const bool big_endian : {false, true}) {
        CameraExif camera{.big_endian = big_endian};
        ImageBuffer image = Pattern(64, 48, 3);
        image.metadata.exif = camera.Build();
        image.dots_per_inch_x = image.dots_per_inch_y = 299.5;
        ImageInfoTexts texts;
        texts.sAuthor = "Somebody with a longer name than the one before";
        texts.sTitle = "New";

        const Block exif = ExifForSave(image, texts);

        EXPECT_EQ(TagsByPillow(exif),
                  "010D=New;010F=Cameras Ltd;0112=1;011A=299.5;011B=299.5;0128=2;"
                  "013B=Somebody with a longer name than the one before;"
                  "9003=2020:01:02 03:04:05;927C=100;A002=64;A003=48;");
    }
}

TEST(ExifForSave, KeepsOffsetOfMakerNote)
{
    CameraExif camera;
    ImageBuffer image = Pattern(64, 48, 3);
    image.metadata.exif = camera.Build();

    const Block exif = ExifForSave(image, AllTexts());

    const Block note(exif.begin() + static_cast<long>(camera.maker_note_offset),
                     exif.begin() + static_cast<long>(camera.maker_note_offset) + 100);
    EXPECT_EQ(note, Block(100, 0x5A));
}

TEST(ExifForSave, DropsThumbnailAndItsDirectory)
{
    CameraExif camera;
    ImageBuffer image = Pattern(64, 48, 3);
    image.metadata.exif = camera.Build();

    const Block exif = ExifForSave(image, {});

    EXPECT_EQ(std::count(exif.begin(), exif.end(), 0xAB), 0);
    EXPECT_LT(exif.size(), image.metadata.exif.size() - 5000);
    EXPECT_EQ(IfdReader(exif).NextDirectory(IfdReader(exif).FirstDirectory()), 0u);
}

TEST(ExifForSave, DoesNotGrowWhenSavedAgain)
{
    CameraExif camera;
    ImageBuffer image = Pattern(64, 48, 3);
    image.metadata.exif = camera.Build();
    const Block once = ExifForSave(image, AllTexts());
    image.metadata.exif = once;

    EXPECT_EQ(ExifForSave(image, AllTexts()), once);
}

TEST(ExifForSave, DropsTagsThatDescribePixelStorage)
{
    CameraExif camera;
    Block block = {'I', 'I', 42, 0, 8, 0, 0, 0};
    camera.Append(block, {camera.Short(0x0100, 9), camera.Short(0x0103, 4), CameraExif::Text(kTagMake, "M"),
                          camera.Long(0x0111, 8)});
    ImageBuffer image = Pattern(4, 4, 3);
    image.metadata.exif = block;

    EXPECT_EQ(TagsByPillow(ExifForSave(image, {})), "010F=M;");
}

TEST(ExifForSave, IgnoresInvalidBlock)
{
    ImageBuffer image = Pattern(4, 4, 3);
    image.metadata.exif = {'X', 'X', 1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(ExifForSave(image, {}).empty());
    EXPECT_EQ(TagsByPillow(ExifForSave(image, TitleOnly("T"))), "010D=T;");
}

TEST(ExifForSave, EndsTextAtFirstNul)
{
    const Block exif = ExifForSave(Pattern(4, 4, 3), TitleOnly(std::string("abcdef\0ghi", 10)));
    EXPECT_EQ(TagsByPillow(exif), "010D=abcdef;");
}

TEST(FinishLoaded, RotatesPictureAndResetsOrientation)
{
    CameraExif camera;
    ImageBuffer image = Pattern(40, 30, 3);
    image.dots_per_inch_x = 100;
    image.dots_per_inch_y = 200;
    image.metadata.exif = camera.Build();
    const std::string xmp = "<rdf:Description tiff:Orientation=\"6\"/>";
    image.metadata.xmp.assign(xmp.begin(), xmp.end());

    FinishLoaded(image);

    EXPECT_EQ(image.width, 30);
    EXPECT_EQ(image.height, 40);
    EXPECT_EQ(image.dots_per_inch_x, 200);
    EXPECT_EQ(FirstDirectoryNumber(image.metadata.exif, kTagOrientation), 1u);
    const std::string after(image.metadata.xmp.begin(), image.metadata.xmp.end());
    EXPECT_EQ(after, "<rdf:Description tiff:Orientation=\"1\"/>");
    EXPECT_EQ(std::count(image.metadata.exif.begin(), image.metadata.exif.end(), 0xAB), 0);
}

TEST(FinishLoaded, SurvivesTruncatedAndCorruptBlocks)
{
    CameraExif camera{.thumbnail = Block(20, 0xAB)};
    const Block good = camera.Build();
    const auto expect_survival = [](const Block& exif) {
        ImageBuffer image = Pattern(3, 2, 3);
        image.metadata.exif = exif;
        FinishLoaded(image);
        EXPECT_EQ(image.bytes.size(), 18u);
        const Block saved = ExifForSave(image, AllTexts());
        EXPECT_LE(saved.size(), exif.size() + 1000);
        EXPECT_EQ(IfdReader(saved).NextDirectory(IfdReader(saved).FirstDirectory()), 0u);
    };
    for (std::size_t n = 0; n <= good.size(); ++n)
        expect_survival(Block(good.begin(), good.begin() + static_cast<long>(n)));
    for (std::size_t n = 0; n < good.size(); ++n)
        for (const std::uint8_t value : Block{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Block changed = good;
            changed[n] = value;
            expect_survival(changed);
        }
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        Block changed = good;
        for (int k = 0; k < 6; ++k)
            changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
        expect_survival(changed);
    }
}

TEST(ExifResolution, IsReadInInchesAndCentimetresOnly)
{
    CameraExif camera;
    Block exif = camera.Build();
    EXPECT_EQ(ReadExifResolution(exif).dots_per_inch_x, 72);
    const IfdReader reader(exif);
    const auto entries = reader.Entries(reader.FirstDirectory());
    const IfdEntry* unit = EntryWithTag(entries, kTagResolutionUnit);
    SetExifNumber(exif, *unit, 3);
    EXPECT_DOUBLE_EQ(ReadExifResolution(exif).dots_per_inch_y, 72 * 2.54);
    SetExifNumber(exif, *unit, 1);
    EXPECT_EQ(ReadExifResolution(exif).dots_per_inch_x, 0);
    EXPECT_EQ(ReadExifResolution({}).dots_per_inch_x, 0);
}

TEST(ExifDate, NormalisesDatesAndKeepsOtherTexts)
{
    EXPECT_EQ(ExifDate("7/4/2021"), "2021:07:04 00:00:00");
    EXPECT_EQ(ExifDate("12/31/1999 11:59:58 PM"), "1999:12:31 23:59:58");
    EXPECT_EQ(ExifDate("1/2/2003 12:05 am"), "2003:01:02 00:05:00");
    EXPECT_EQ(ExifDate("2021-07-04"), "2021:07:04 00:00:00");
    EXPECT_EQ(ExifDate("2021-07-04T23:01:02"), "2021:07:04 23:01:02");
    EXPECT_EQ(ExifDate("2021:07:04 23:01:02"), "2021:07:04 23:01:02");
    EXPECT_EQ(ExifDate("2/29/2020"), "2020:02:29 00:00:00");
    for (const char* other : {"", "  ", "Christmas", "2/29/2021", "13/1/2021", "0/1/2021", "7/4/21",
                              "2021-07-04x", "2021-7", "7/4/2021 25:00", "7/4/2021 13:00 PM", "7/4/2021 9",
                              "1:2:3", "99999/1/1", "2021-07:04", "summer 1999"})
        EXPECT_EQ(ExifDate(other), other);
}
