// Adapts libtiff to our files: opens them silently, reads on demand, encodes to memory.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

class InputFile;

/// An open file. Only its header has been read; pages are selected by directory offset.
class TiffInput
{
public:
    /// file must outlive this object. Handle() is null if libtiff rejects the file.
    explicit TiffInput(InputFile& file);
    TIFF* Handle() const { return tiff_.get(); }

private:
    struct Close {
        void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    };
    static tmsize_t Read(thandle_t self, void* out, tmsize_t count);
    static tmsize_t Write(thandle_t self, void* bytes, tmsize_t count);
    static toff_t Seek(thandle_t self, toff_t offset, int whence);
    static toff_t Size(thandle_t self);

    InputFile& file_;
    std::uint64_t position_ = 0;
    std::unique_ptr<TIFF, Close> tiff_;
};

/// Encodes strips with libtiff's codecs, without producing a file.
class TiffStripEncoder
{
public:
    TiffStripEncoder();
    /// For setting the tags that control the encoder; null if memory ran out.
    TIFF* Handle() const { return tiff_.get(); }
    /// Encodes strip number strip_index; empty on failure. Overwrites strip.
    std::vector<std::uint8_t> Encode(std::uint32_t strip_index, std::vector<std::uint8_t>& strip);

private:
    struct Forget {
        void operator()(TIFF* tiff) const { TIFFCleanup(tiff); }  // TIFFClose would write a directory
    };
    static tmsize_t Read(thandle_t self, void* out, tmsize_t count);
    static tmsize_t Write(thandle_t self, void* bytes, tmsize_t count);
    static toff_t Seek(thandle_t self, toff_t offset, int whence);
    static toff_t Size(thandle_t self);

    std::vector<std::uint8_t> written_;
    std::uint64_t position_ = 0;
    bool failed_ = false;
    std::unique_ptr<TIFF, Forget> tiff_;
};
