// Tests of TIFF files that grow page by page.
#include "src/platform/image/codecs/tiff/tiff_document.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/tiff.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/io_count.h"
#include "tests/support/paths.h"

namespace
{
// Pages that are all different, and of different kinds.
ImageBuffer aPage(int nPage)
{
    ImageBuffer aImage = aPattern(60 + nPage, 40, nPage % 3 == 0 ? 1 : nPage % 3 == 1 ? 3 : 4);
    aImage.bytes[0] = static_cast<std::uint8_t>(nPage);
    return aImage;
}

std::int32_t lPages(const std::string& sFile)
{
    const auto pFile = InputFile::Open(sFile);
    const auto pDecoder = pFile ? codecTiff.Open(*pFile) : nullptr;
    return pDecoder ? pDecoder->FrameCount() : 0;
}

// How many of the pages from the first on are as they were given.
int nPagesIntact(const std::string& sFile)
{
    const auto pFile = InputFile::Open(sFile);
    const auto pDecoder = pFile ? codecTiff.Open(*pFile) : nullptr;
    int nIntact = 0;
    for (int i = 0; pDecoder && i < pDecoder->FrameCount(); ++i) {
        ImageBuffer aImage;
        if (!pDecoder->DecodeFrame(i, aImage) || aImage.bytes != aPage(i).bytes)
            break;
        ++nIntact;
    }
    return nIntact;
}

/// Files of this process may not grow beyond a size while the object lives, as if the disk were full.
class FullDisk
{
public:
    explicit FullDisk(std::uint64_t nBytes)
    {
        m_pOldHandler = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_objOld);
        const rlimit objNew{nBytes, m_objOld.rlim_max};
        setrlimit(RLIMIT_FSIZE, &objNew);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_objOld);
        signal(SIGXFSZ, m_pOldHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_objOld{};
    void (*m_pOldHandler)(int) = nullptr;
};
}  // namespace

TEST(TiffDocument, IsAWholeFileAfterEveryPage)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    const auto pDocument = TiffDocument::pBegin(sFile, aPage(0), {});
    ASSERT_TRUE(pDocument);
    EXPECT_EQ(nPagesIntact(sFile), 1);

    for (int i = 1; i < 8; ++i) {
        SaveSettings objSettings;
        objSettings.lTIFFCompression = i % 2;
        ASSERT_TRUE(pDocument->bAppend(aPage(i), objSettings));
        EXPECT_EQ(nPagesIntact(sFile), i + 1);
        EXPECT_EQ(lPages(sFile), i + 1);
    }
}

TEST(TiffDocument, IsReadByOtherPrograms)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    {
        const auto pDocument = TiffDocument::pBegin(sFile, aPage(0), {});
        ASSERT_TRUE(pDocument);
        for (int i = 1; i < 5; ++i)
            ASSERT_TRUE(pDocument->bAppend(aPage(i), {}));
    }
    std::string sOutput;
    EXPECT_TRUE(bRun("tiffinfo -D " + sFile + " | grep -c 'TIFF directory'", &sOutput)) << sOutput;
    EXPECT_EQ(sOutput, "5\n");
    EXPECT_TRUE(bRun(ImageMagick("identify") + " -format '%wx%h ' " + sFile, &sOutput));
    EXPECT_EQ(sOutput, "60x40 61x40 62x40 63x40 64x40 ");
    EXPECT_EQ(sPython("import sys; from PIL import Image\ni = Image.open(sys.argv[1])\n"
                      "for n in range(i.n_frames):\n  i.seek(n); i.load(); print(i.mode, i.size[0])",
                      sFile),
              "L 60\nRGB 61\nRGBA 62\nL 63\nRGB 64\n");
}

TEST(TiffDocument, WritesEachPageOnceAndReadsNothing)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    constexpr int kPages = 1000;
    const IoCount objBefore = objIoSoFar();
    {
        const auto pDocument = TiffDocument::pBegin(sFile, aPage(0), {});
        ASSERT_TRUE(pDocument);
        for (int i = 1; i < kPages; ++i)
            ASSERT_TRUE(pDocument->bAppend(aPage(1), {}));
    }
    const IoCount objAfter = objIoSoFar();

    const std::uint64_t nSize = std::filesystem::file_size(sFile);
    EXPECT_EQ(lPages(sFile), kPages);
    EXPECT_LT(objAfter.nWritten - objBefore.nWritten, nSize + nSize / 10);
    EXPECT_LT(objAfter.nRead - objBefore.nRead, 100'000u);
}

TEST(TiffDocument, KeepsThePagesBeforeWhenTheDiskIsFullAndGoesOnAfterwards)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    const auto pDocument = TiffDocument::pBegin(sFile, aPage(0), {});
    ASSERT_TRUE(pDocument && pDocument->bAppend(aPage(1), {}));
    const auto aBefore = aFileContent(sFile);

    for (const std::uint64_t nMore : {0u, 1u, 100u, 5000u, 9900u}) {
        const FullDisk objFull(aBefore.size() + nMore);
        EXPECT_FALSE(pDocument->bAppend(aPage(2), {}));
        EXPECT_EQ(aFileContent(sFile), aBefore);
    }

    EXPECT_TRUE(pDocument->bAppend(aPage(2), {}));
    EXPECT_EQ(nPagesIntact(sFile), 3);
}

TEST(TiffDocument, KeepsThePagesBeforeWhenTheProcessIsEnded)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    const pid_t nChild = fork();
    ASSERT_GE(nChild, 0);
    if (nChild == 0) {
        const auto pDocument = TiffDocument::pBegin(sFile, aPage(0), {});
        if (!pDocument || !pDocument->bAppend(aPage(1), {}))
            _exit(1);
        // The system ends the process in the middle of the third page.
        const rlimit objLimit{std::filesystem::file_size(sFile) + 3000, RLIM_INFINITY};
        const rlimit objNoCore{0, 0};
        setrlimit(RLIMIT_CORE, &objNoCore);
        setrlimit(RLIMIT_FSIZE, &objLimit);
        signal(SIGXFSZ, SIG_DFL);
        ImageBuffer aLarge = aPattern(2000, 500, 3);
        (void)pDocument->bAppend(aLarge, {});
        _exit(2);
    }
    int nStatus = 0;
    waitpid(nChild, &nStatus, 0);

    EXPECT_TRUE(WIFSIGNALED(nStatus) && WTERMSIG(nStatus) == SIGXFSZ) << nStatus;
    EXPECT_EQ(lPages(sFile), 2);
    EXPECT_EQ(nPagesIntact(sFile), 2);
}

TEST(TiffDocument, LeavesAnOlderFileWhenItsFirstPageFails)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    WriteFileContent(sFile, {'o', 'l', 'd'});
    {
        const FullDisk objFull(2000);
        EXPECT_FALSE(TiffDocument::pBegin(sFile, aPage(1), {}));
    }
    EXPECT_EQ(aFileContent(sFile), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(std::filesystem::path(sFile).parent_path()), {}),
        1);
}

TEST(TiffDocument, TurnsIntoOneOfLongOffsetsBeforeItIsTooLarge)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("d.tif");
    SaveSettings objSettings;
    objSettings.objTexts.sTitle = "A title of more than eight bytes";
    objSettings.objTexts.sEquipmentModel = "X-1000";
    ImageBuffer aFirst = aPage(0);
    aFirst.dots_per_inch_x = aFirst.dots_per_inch_y = 300;
    // A page counts as 8 MB and more, so the fourth is the first that may not fit.
    const std::uint64_t nClassicEnd = nMostPageBytes(aFirst) + 50'000;
    const auto pDocument = TiffDocument::pBegin(sFile, aFirst, objSettings, nClassicEnd);
    ASSERT_TRUE(pDocument);
    int nPages = 1;
    while (aFileContent(sFile)[2] == 42 && nPages < 20) {
        ASSERT_TRUE(pDocument->bAppend(aPage(nPages), objSettings));
        ++nPages;
        ASSERT_EQ(nPagesIntact(sFile), nPages);
    }
    ASSERT_GT(nPages, 2);
    ASSERT_LT(nPages, 20);
    ASSERT_TRUE(pDocument->bAppend(aPage(nPages), objSettings));

    EXPECT_EQ(nPagesIntact(sFile), nPages + 1);
    const auto aFile = aFileContent(sFile);
    for (int i = 0; i <= nPages; ++i) {
        const auto aImage = aDecoded(codecTiff, aFile, i);
        ASSERT_TRUE(aImage);
        const IfdReader objExif(aImage->metadata.exif);
        const auto aEntries = objExif.Entries(objExif.FirstDirectory());
        ASSERT_TRUE(EntryWithTag(aEntries, kTagDocumentName));
        const IfdEntry* pModel = EntryWithTag(aEntries, kTagModel);
        ASSERT_TRUE(pModel);
        EXPECT_STREQ(reinterpret_cast<const char*>(aImage->metadata.exif.data() + pModel->value_offset),
                     "X-1000");
    }
    EXPECT_DOUBLE_EQ(aDecoded(codecTiff, aFile)->dots_per_inch_x, 300);
    std::string sOutput;
    EXPECT_TRUE(bRun("tiffinfo -D " + sFile, &sOutput));
    EXPECT_EQ(sOutput.find("rror"), std::string::npos) << sOutput;
    EXPECT_EQ(sOutput.find("arning"), std::string::npos) << sOutput;
}
