// libtiff on our files: opened without a message to anybody, read where it asks, written into memory.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

class InputFile;

/// A file open for reading. Only its header has been read; a page is chosen by its directory's offset.
class TiffInput
{
public:
    /// file is lent for the life of this object. Handle() is null for a file that libtiff doesn't take.
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

/// What libtiff's encoders make of a picture's strips, without a file around them.
class TiffStripEncoder
{
public:
    TiffStripEncoder();
    /// To set the tags that the encoder goes by; null without memory.
    TIFF* Handle() const { return tiff_.get(); }
    /// The encoded bytes of strip strip_index; empty after a failure. strip is changed.
    std::vector<std::uint8_t> Encode(std::uint32_t strip_index, std::vector<std::uint8_t>& strip);

private:
    struct Forget {
        void operator()(TIFF* tiff) const { TIFFCleanup(tiff); }  // TIFFClose would add a directory
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
