// OpenJPEG's objects with owners, reading from bytes and writing to a file, and silent.
// Room: platform/image/codecs/j2k.
#pragma once

#include <openjpeg.h>

#include <cstdint>
#include <memory>

#include "src/platform/image/base/byte_reader.h"

class OutputFile;

struct J2kDeleter {
    void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};
using J2kImage = std::unique_ptr<opj_image_t, J2kDeleter>;

/// A decoder or an encoder (opj_create_decompress, opj_create_compress), owned; what it has to say is
/// dropped. Throws std::bad_alloc if it is null.
class J2kCodec
{
public:
    explicit J2kCodec(opj_codec_t* codec);
    ~J2kCodec();
    J2kCodec(const J2kCodec&) = delete;
    J2kCodec& operator=(const J2kCodec&) = delete;
    opj_codec_t* get() const { return codec_; }

    /// Lets it use the machine's cores, up to 8, if the picture is large enough for that to pay; the result
    /// is the same. To be called between its setup and its start.
    void UseThreads(std::uint64_t pixels) const;

private:
    opj_codec_t* codec_;
};

/// A stream that reads bytes or writes into a file from its position on; either is lent for the life of the
/// stream. Throws std::bad_alloc.
class J2kStream
{
public:
    explicit J2kStream(Bytes bytes);
    explicit J2kStream(OutputFile& out);
    ~J2kStream();
    J2kStream(const J2kStream&) = delete;
    J2kStream& operator=(const J2kStream&) = delete;
    opj_stream_t* get() const { return stream_; }

private:
    static OPJ_SIZE_T Read(void* out, OPJ_SIZE_T count, void* self);
    static OPJ_SIZE_T Write(void* in, OPJ_SIZE_T count, void* self);
    static OPJ_OFF_T Skip(OPJ_OFF_T count, void* self);
    static OPJ_BOOL Seek(OPJ_OFF_T position, void* self);
    void Connect(bool reads);

    Bytes bytes_;
    OutputFile* out_ = nullptr;
    std::uint64_t position_ = 0;  ///< in the bytes, or in the file from where it began
    std::uint64_t start_ = 0;     ///< where it began in the file
    opj_stream_t* stream_ = nullptr;
};
