// Compares deflate encoders on the filtered rows of PNGs:
//   bench_deflate [-r ROUNDS] FOLDER...
// prints, for each folder of pictures, the speed and the size of every encoder. All of them get the same
// rows, which are made beforehand, and write IDAT chunks with checksums to a file in memory.
#include <isa-l/igzip_lib.h>
#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_plan.h"
#include "src/platform/image/codecs/registry.h"

namespace fs = std::filesystem;

namespace
{
/// The filtered rows of a picture.
struct Rows {
    std::size_t row_bytes = 0;
    std::size_t height = 0;
    std::uint32_t pixel_bytes = 1;
    PngContent content = PngContent::kPhotograph;
    std::vector<std::uint8_t> bytes;
};

/// Compresses the rows to a file; false if that failed.
using Encode = std::function<bool(const Rows& rows, OutputFile& out)>;

struct Encoder {
    std::string name;
    Encode encode;
    double seconds = 0;  ///< of all pictures, each in its best round
    std::uint64_t size = 0;
};
}  // namespace

static bool EncodeByUs(const Rows& rows, OutputFile& out)
{
    PngDeflater deflater(out, rows.row_bytes, rows.height, rows.pixel_bytes, rows.content);
    for (std::size_t y = 0; y < rows.height; ++y) {
        std::copy_n(rows.bytes.data() + y * rows.row_bytes, rows.row_bytes, deflater.NextRow());
        if (!deflater.FinishRow())
            return false;
    }
    return true;
}

// As the program writes a PNG: with libdeflate if the content repeats.
static bool EncodeAsProgram(const Rows& rows, OutputFile& out)
{
    return DeflatesWhole(rows.content, rows.bytes.size()) ? WriteDeflated(out, rows.bytes)
                                                          : EncodeByUs(rows, out);
}

static Encode ByLibdeflate(int level)
{
    return [level](const Rows& rows, OutputFile& out) {
        const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
            libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
        std::vector<std::uint8_t> packed(libdeflate_zlib_compress_bound(compressor.get(), rows.bytes.size()));
        packed.resize(libdeflate_zlib_compress(compressor.get(), rows.bytes.data(), rows.bytes.size(),
                                               packed.data(), packed.size()));
        return !packed.empty() && WritePngChunk(out, PngType("IDAT"), packed);
    };
}

static Encode ByIsal(std::uint32_t level)
{
    return [level](const Rows& rows, OutputFile& out) {
        static constexpr std::uint32_t kWork[] = {ISAL_DEF_LVL0_DEFAULT, ISAL_DEF_LVL1_DEFAULT,
                                                  ISAL_DEF_LVL2_DEFAULT, ISAL_DEF_LVL3_DEFAULT};
        const auto stream = std::make_unique<isal_zstream>();
        isal_deflate_init(stream.get());
        std::vector<std::uint8_t> work(kWork[level]), packed(128 * 1024);
        stream->level = level;
        stream->level_buf = work.data();
        stream->level_buf_size = kWork[level];
        stream->gzip_flag = IGZIP_ZLIB;
        stream->next_in = const_cast<std::uint8_t*>(rows.bytes.data());
        stream->avail_in = static_cast<std::uint32_t>(rows.bytes.size());
        stream->end_of_stream = 1;
        do {
            stream->next_out = packed.data();
            stream->avail_out = static_cast<std::uint32_t>(packed.size());
            if (isal_deflate(stream.get()) != COMP_OK ||
                !WritePngChunk(out, PngType("IDAT"), Bytes(packed).first(packed.size() - stream->avail_out)))
                return false;
        } while (stream->internal_state.state != ZSTATE_END);
        return true;
    };
}

static Encode ByZlib(int level, int strategy)
{
    return [level, strategy](const Rows& rows, OutputFile& out) {
        z_stream stream{};
        std::vector<std::uint8_t> packed(128 * 1024);
        if (deflateInit2(&stream, level, Z_DEFLATED, 15, 8, strategy) != Z_OK)
            return false;
        stream.next_in = const_cast<std::uint8_t*>(rows.bytes.data());
        stream.avail_in = static_cast<uInt>(rows.bytes.size());
        int result = Z_OK;
        bool written = true;
        while (result == Z_OK && written) {
            stream.next_out = packed.data();
            stream.avail_out = static_cast<uInt>(packed.size());
            result = deflate(&stream, Z_FINISH);
            written =
                WritePngChunk(out, PngType("IDAT"), Bytes(packed).first(packed.size() - stream.avail_out));
        }
        deflateEnd(&stream);
        return result == Z_STREAM_END && written;
    };
}

static std::vector<Encoder> Encoders()
{
    std::vector<Encoder> encoders = {{"Varnel", EncodeAsProgram}, {"our encoder", EncodeByUs}};
    for (const int level : {1, 2, 4, 6})
        encoders.push_back({"libdeflate " + std::to_string(level), ByLibdeflate(level)});
    for (const std::uint32_t level : {0u, 1u, 2u, 3u})
        encoders.push_back({"ISA-L " + std::to_string(level), ByIsal(level)});
    for (const int level : {1, 6})
        encoders.push_back({"zlib " + std::to_string(level), ByZlib(level, Z_DEFAULT_STRATEGY)});
    encoders.push_back({"zlib runs", ByZlib(1, Z_RLE)});
    return encoders;
}

// Nothing for a file that isn't a picture.
static std::vector<Rows> RowsOf(const fs::path& path)
{
    std::vector<Rows> pages;
    const auto file = InputFile::Open(path.string());
    const Codec* codec = file ? CodecOfContent(file->Head(), path.extension().string()) : nullptr;
    const auto decoder = codec ? codec->open(*file) : nullptr;
    for (std::int32_t frame = 0; decoder && frame < decoder->FrameCount(); ++frame) {
        ImageBuffer image;
        if (!decoder->DecodeFrame(frame, image))
            break;
        PngPlan plan = PlanFor(image);
        PngRowSource source(image, plan);
        Rows rows;
        rows.row_bytes = source.FilteredBytes();
        rows.height = static_cast<std::size_t>(image.height);
        rows.pixel_bytes = plan.layout.PixelSize();
        rows.content = plan.content;
        rows.bytes.resize(rows.row_bytes * rows.height + PngDeflater::kSlack);
        for (std::size_t y = 0; y < rows.height; ++y)
            source.Make(y, rows.bytes.data() + y * rows.row_bytes);
        rows.bytes.resize(rows.row_bytes * rows.height);
        pages.push_back(std::move(rows));
    }
    return pages;
}

static double CpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Runs all encoders on one picture, turn by turn, so that a drifting machine affects all alike.
static bool Measure(const Rows& rows, int rounds, std::vector<Encoder>& encoders)
{
    FileSaver saver(false);
    std::vector<double> best(encoders.size(), std::numeric_limits<double>::max());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < encoders.size(); ++i) {
            OutputFile out("/dev/shm/bench_deflate.out", saver);
            const double start = CpuSeconds();
            if (!encoders[i].encode(rows, out))
                return false;
            best[i] = std::min(best[i], CpuSeconds() - start);
            if (round == 0)
                encoders[i].size += out.Position();
        }
    for (std::size_t i = 0; i < encoders.size(); ++i)
        encoders[i].seconds += best[i];
    return true;
}

int main(int count, char** arguments)
{
    std::vector<std::string> folders(arguments + 1, arguments + count);
    int rounds = 3;
    if (folders.size() > 2 && folders[0] == "-r") {
        rounds = std::atoi(folders[1].c_str());
        folders.erase(folders.begin(), folders.begin() + 2);
    }
    if (folders.empty() || rounds < 1) {
        std::fputs("usage: bench_deflate [-r ROUNDS] FOLDER...\n", stderr);
        return 2;
    }
    for (const std::string& folder : folders) {
        std::vector<fs::path> paths;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
            if (entry.is_regular_file())
                paths.push_back(entry.path());
        std::sort(paths.begin(), paths.end());
        std::vector<Encoder> encoders = Encoders();
        std::uint64_t bytes = 0;
        for (const fs::path& path : paths)
            for (const Rows& rows : RowsOf(path)) {
                bytes += rows.bytes.size();
                if (!Measure(rows, rounds, encoders)) {
                    std::fprintf(stderr, "%s: an encoder failed\n", path.c_str());
                    return 1;
                }
            }
        std::printf("\n%s: %.1f MB of filtered rows\n\n| encoder | MB/s | MB | size |\n|---|---|---|---|\n",
                    folder.c_str(), static_cast<double>(bytes) * 1e-6);
        for (const Encoder& encoder : encoders)
            std::printf("| %s | %.0f | %.2f | %.1f %% |\n", encoder.name.c_str(),
                        static_cast<double>(bytes) * 1e-6 / encoder.seconds,
                        static_cast<double>(encoder.size) * 1e-6,
                        100.0 * static_cast<double>(encoder.size) / static_cast<double>(encoders[0].size));
    }
    return 0;
}
