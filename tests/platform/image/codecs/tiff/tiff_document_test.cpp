// Tests of multi-page TIFF files that grow page by page.
#include "src/platform/image/codecs/tiff/tiff_document.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "src/platform/files/file_saver.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/tiff.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/io_count.h"
#include "tests/support/paths.h"

namespace
{
// Distinct pages of several kinds.
ImageBuffer Page(int page)
{
    ImageBuffer image = Pattern(60 + page, 40, page % 3 == 0 ? 1 : page % 3 == 1 ? 3 : 4);
    image.bytes[0] = static_cast<std::uint8_t>(page);
    return image;
}

std::int32_t Pages(const std::string& file_path)
{
    const auto file = InputFile::Open(file_path);
    const auto decoder = file ? kTiffCodec.open(*file) : nullptr;
    return decoder ? decoder->FrameCount() : 0;
}

// The number of leading pages that match the given ones.
int PagesIntact(const std::string& file_path)
{
    const auto file = InputFile::Open(file_path);
    const auto decoder = file ? kTiffCodec.open(*file) : nullptr;
    int intact = 0;
    for (int i = 0; decoder && i < decoder->FrameCount(); ++i) {
        ImageBuffer image;
        if (!decoder->DecodeFrame(i, image) || image.bytes != Page(i).bytes)
            break;
        ++intact;
    }
    return intact;
}

/// Limits the size of files during its lifetime, as if the disk were full.
class FullDisk
{
public:
    explicit FullDisk(std::uint64_t bytes)
    {
        old_handler_ = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        signal(SIGXFSZ, old_handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};
}  // namespace

TEST(TiffDocument, HoldsAsManyPagesAsWereAppended)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    for (int pages = 1; pages <= 8; ++pages) {
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        ASSERT_TRUE(document);
        for (int i = 1; i < pages; ++i) {
            SaveSettings settings;
            settings.tiff_compression = i % 2;
            ASSERT_TRUE(document->Append(Page(i), settings));
        }

        ASSERT_TRUE(document->Finish());

        EXPECT_EQ(PagesIntact(file), pages);
        EXPECT_EQ(Pages(file), pages);
    }
}

TEST(TiffDocument, AppearsOnlyWhenItIsFinished)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    {
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        ASSERT_TRUE(document && document->Append(Page(1), {}));
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    EXPECT_FALSE(std::filesystem::exists(file));

    const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
    ASSERT_TRUE(document && document->Append(Page(1), {}));
    EXPECT_TRUE(document->Finish());
    EXPECT_EQ(PagesIntact(file), 2);
}

TEST(TiffDocument, IsReadByOtherPrograms)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    {
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        ASSERT_TRUE(document);
        for (int i = 1; i < 5; ++i)
            ASSERT_TRUE(document->Append(Page(i), {}));
        ASSERT_TRUE(document->Finish());
    }
    std::string output;
    EXPECT_TRUE(RunCommand("tiffinfo -D " + file + " | grep -c 'TIFF directory'", &output)) << output;
    EXPECT_EQ(output, "5\n");
    EXPECT_TRUE(RunCommand(ImageMagick("identify") + " -format '%wx%h ' " + file, &output));
    EXPECT_EQ(output, "60x40 61x40 62x40 63x40 64x40 ");
    EXPECT_EQ(Python("import sys; from PIL import Image\ni = Image.open(sys.argv[1])\n"
                     "for n in range(i.n_frames):\n  i.seek(n); i.load(); print(i.mode, i.size[0])",
                     file),
              "L 60\nRGB 61\nRGBA 62\nL 63\nRGB 64\n");
}

TEST(TiffDocument, WritesEachPageOnceAndReadsNothing)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    constexpr int kPages = 1000;
    const IoCount before = IoSoFar();
    {
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        ASSERT_TRUE(document);
        for (int i = 1; i < kPages; ++i)
            ASSERT_TRUE(document->Append(Page(1), {}));
        ASSERT_TRUE(document->Finish());
    }
    const IoCount after = IoSoFar();

    const std::uint64_t size = std::filesystem::file_size(file);
    EXPECT_EQ(Pages(file), kPages);
    EXPECT_LT(after.written - before.written, size + size / 10);
    EXPECT_LT(after.read - before.read, 100'000u);
}

TEST(TiffDocument, KeepsOldFileIfDiskIsFullAtAnyPage)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    const std::vector<std::uint8_t> old = {'o', 'l', 'd'};
    WriteFileContent(file, old);
    int failures = 0;
    for (std::uint64_t room = 1000; room < 60'000; room += 3001) {
        const FullDisk full(room);
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        bool done = document != nullptr;
        for (int i = 1; done && i < 5; ++i)
            (void)document->Append(Page(i), {});  // a later page may fit again: the file still lacks one
        done = done && document->Finish();
        failures += !done;
        EXPECT_EQ(FileContent(file) == old, !done) << room;
        EXPECT_EQ(PagesIntact(file), done ? 5 : 0) << room;
        WriteFileContent(file, old);
    }
    EXPECT_GE(failures, 5);
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(std::filesystem::path(file).parent_path()), {}), 1);
}

TEST(TiffDocument, IsNeverFinishedAfterItLostAPage)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
    ASSERT_TRUE(document && document->Append(Page(1), {}));
    {
        const FullDisk full(100);
        EXPECT_FALSE(document->Append(Pattern(2000, 500, 3), {}));
    }

    EXPECT_FALSE(document->Append(Page(2), {}));
    EXPECT_FALSE(document->Finish());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(TiffDocument, KeepsOldFileIfProcessIsKilled)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    const std::vector<std::uint8_t> old = {'o', 'l', 'd'};
    WriteFileContent(file, old);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto document = TiffDocument::Begin(file, Page(0), {}, saver);
        if (!document || !document->Append(Page(1), {}))
            _exit(1);
        // The kernel kills the process in the middle of the third page.
        const rlimit limit{200'000, RLIM_INFINITY};
        const rlimit no_core{0, 0};
        setrlimit(RLIMIT_CORE, &no_core);
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_DFL);
        ImageBuffer large = Pattern(2000, 500, 3);
        (void)document->Append(large, {});
        _exit(2);
    }
    int status = 0;
    waitpid(child, &status, 0);

    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << status;
    EXPECT_EQ(FileContent(file), old);
}

TEST(TiffDocument, KeepsOldFileIfFirstPageFails)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    WriteFileContent(file, {'o', 'l', 'd'});
    {
        const FullDisk full(2000);
        EXPECT_FALSE(TiffDocument::Begin(file, Page(1), {}, saver));
    }
    EXPECT_EQ(FileContent(file), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(std::filesystem::path(file).parent_path()), {}), 1);
}

TEST(TiffDocument, BecomesBigTiffBeforeItGetsTooLarge)
{
    const TestFolder folder;
    FileSaver saver(false);
    const std::string file = folder.Path("d.tif");
    SaveSettings settings;
    settings.texts.sTitle = "A title of more than eight bytes";
    settings.texts.sEquipmentModel = "X-1000";
    ImageBuffer first = Page(0);
    first.dots_per_inch_x = first.dots_per_inch_y = 300;
    // A page counts as at least 8 MB, so the fourth is the first that may not fit.
    const std::uint64_t classic_end = MaxPageBytes(first) + 50'000;
    const auto write = [&](int pages) {
        const auto document = TiffDocument::Begin(file, first, settings, saver, classic_end);
        for (int i = 1; i < pages; ++i)
            EXPECT_TRUE(document && document->Append(Page(i), settings));
        EXPECT_TRUE(document && document->Finish());
        EXPECT_EQ(PagesIntact(file), pages);
    };
    int pages = 1;
    for (write(pages); FileContent(file)[2] == 42 && pages < 20; write(pages))
        ++pages;
    ASSERT_GT(pages, 2);
    ASSERT_LT(pages, 20);
    write(pages + 1);

    EXPECT_EQ(PagesIntact(file), pages + 1);
    const auto bytes = FileContent(file);
    for (int i = 0; i <= pages; ++i) {
        const auto image = Decoded(kTiffCodec, bytes, i);
        ASSERT_TRUE(image);
        const IfdReader exif(image->metadata.exif);
        const auto entries = exif.Entries(exif.FirstDirectory());
        ASSERT_TRUE(EntryWithTag(entries, kTagDocumentName));
        const IfdEntry* model = EntryWithTag(entries, kTagModel);
        ASSERT_TRUE(model);
        EXPECT_STREQ(reinterpret_cast<const char*>(image->metadata.exif.data() + model->value_offset),
                     "X-1000");
    }
    EXPECT_DOUBLE_EQ(Decoded(kTiffCodec, bytes)->dots_per_inch_x, 300);
    std::string output;
    EXPECT_TRUE(RunCommand("tiffinfo -D " + file, &output));
    EXPECT_EQ(output.find("rror"), std::string::npos) << output;
    EXPECT_EQ(output.find("arning"), std::string::npos) << output;
}
