// Frees the coefficients of a progressive JPEG while its rows are being produced.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>  // jpeglib.h needs FILE

#include <jpeglib.h>

/// A multi-scan JPEG is read completely before the first row is known, into coefficients that take four bytes
/// per byte of a full-colour picture. Without this class, memory would peak at three pictures. But libjpeg
/// requests the coefficient rows from its memory manager once, top to bottom, while producing the picture, so
/// rows above the current one can be freed.
class JpegCoefficients
{
public:
    /// Hooks into jpeg's memory manager. Call it between jpeg_create_decompress and jpeg_start_decompress.
    /// Uses client_data; this object must outlive the decompression.
    void Follow(jpeg_decompress_struct& jpeg);

private:
    /// One component's coefficients, in rows of blocks.
    struct Rows {
        jvirt_barray_ptr key = nullptr;
        std::size_t bytes = 0;  ///< per row
        JBLOCKARRAY last_blocks = nullptr;
        JDIMENSION last_row = 0;  ///< first row of last_blocks
        JDIMENSION last_count = 0;
        std::uint8_t* begin = nullptr;  ///< start of what has been passed but not freed yet
        std::uint8_t* end = nullptr;
    };

    static jvirt_barray_ptr Request(j_common_ptr jpeg, int pool, boolean is_zero, JDIMENSION blocks,
                                    JDIMENSION row_count, JDIMENSION max_at_once);
    static JBLOCKARRAY Access(j_common_ptr jpeg, jvirt_barray_ptr key, JDIMENSION first, JDIMENSION count,
                              boolean writable);
    void FreePassedRows(Rows& rows, JBLOCKARRAY blocks, JDIMENSION first, JDIMENSION count);

    decltype(jpeg_memory_mgr::request_virt_barray) request_ = nullptr;
    decltype(jpeg_memory_mgr::access_virt_barray) access_ = nullptr;
    std::array<Rows, MAX_COMPONENTS> components_;
    std::size_t component_count_ = 0;
};
