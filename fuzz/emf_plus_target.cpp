// Fuzzes the EMF+ player: the input is the records of one file, which are wrapped into an EMF. So every input
// reaches the player, whatever its records are.
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "src/platform/image/codecs/metafile/emf.h"

static void Put(std::vector<std::uint8_t>& file, std::initializer_list<std::uint32_t> values)
{
    for (const std::uint32_t value : values)
        for (unsigned shift = 0; shift < 32; shift += 8)
            file.push_back(static_cast<std::uint8_t>(value >> shift));
}

// An EMF of 200 by 150 pixels whose only record is a comment with the records.
static std::vector<std::uint8_t> Wrapped(const std::uint8_t* data, std::size_t size)
{
    const auto padded = static_cast<std::uint32_t>((size + 3) / 4 * 4);
    std::vector<std::uint8_t> file;
    Put(file, {1, 88, 0, 0, 199, 149, 0, 0, 5292, 3969, 0x464D4520, 0x10000, 88 + 16 + padded + 20, 3, 1});
    Put(file, {0, 0, 0, 1920, 1440, 508, 381});
    Put(file, {70, 16 + padded, 4 + padded, 0x2B464D45});
    file.insert(file.end(), data, data + size);
    file.resize(88 + 16 + padded);
    Put(file, {14, 20, 0, 16, 20});
    return file;
}

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("VARNEL_MAX_MEGAPIXELS", "4", 1);  // large images only cost time
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::uint8_t> file = Wrapped(data, size);
    try {
        ImageBuffer image;
        if (DecodeEmf(file, image) && (image.width != 200 || image.height != 150 || image.channels != 3))
            std::abort();
    } catch (const std::bad_alloc&) {
        // The only exception that a decoder may throw.
    }
    return 0;
}
