// RAII wrappers for OpenJPEG: silent, reading from memory and writing to a file.
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

/// Owns a decoder or encoder (opj_create_decompress, opj_create_compress) and suppresses its messages. Throws
/// std::bad_alloc if given null.
class J2kCodec
{
public:
    explicit J2kCodec(opj_codec_t* codec);
    ~J2kCodec();
    J2kCodec(const J2kCodec&) = delete;
    J2kCodec& operator=(const J2kCodec&) = delete;
    opj_codec_t* get() const { return codec_; }

    /// Enables up to 8 threads if the picture is large enough to benefit; the result is the same. Call it
    /// after setup and before starting.
    void UseThreads(std::uint64_t pixels) const;

private:
    opj_codec_t* codec_;
};

/// A stream that reads from memory, or writes to a file from its current position. The memory or file must
/// outlive the stream. Throws std::bad_alloc.
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
    std::uint64_t position_ = 0;  ///< in the memory, or in the file relative to start_
    std::uint64_t start_ = 0;     ///< where the stream starts in the file
    opj_stream_t* stream_ = nullptr;
};
