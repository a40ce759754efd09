// Gives the memory of a progressive JPEG's coefficients back while the rows of its picture come out.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>  // jpeglib.h needs FILE

#include <jpeglib.h>

/// A JPEG of many scans is read whole before its first row is known, as coefficients that take four bytes for
/// each byte of a picture with full colour. Together with the picture that would be three pictures at the
/// end. But libjpeg asks its memory manager for the coefficients' rows from top to bottom, once, when it
/// makes the picture: what lies above isn't needed any more.
class JpegCoefficients
{
public:
    /// Follows what jpeg asks of its memory manager. For after jpeg_create_decompress and before
    /// jpeg_start_decompress; takes client_data, and outlives the decompression.
    void Follow(jpeg_decompress_struct& jpeg);

private:
    /// One component's coefficients, as rows of blocks.
    struct Rows {
        jvirt_barray_ptr key = nullptr;
        std::size_t bytes = 0;  ///< of a row
        JBLOCKARRAY last_blocks = nullptr;
        JDIMENSION last_row = 0;  ///< the first row of last_blocks
        JDIMENSION last_count = 0;
        std::uint8_t* begin = nullptr;  ///< of what isn't needed any more and was not given back yet
        std::uint8_t* end = nullptr;
    };

    static jvirt_barray_ptr Request(j_common_ptr jpeg, int pool, boolean is_zero, JDIMENSION blocks,
                                    JDIMENSION row_count, JDIMENSION max_at_once);
    static JBLOCKARRAY Access(j_common_ptr jpeg, jvirt_barray_ptr key, JDIMENSION first, JDIMENSION count,
                              boolean writable);
    void Passed(Rows& rows, JBLOCKARRAY blocks, JDIMENSION first, JDIMENSION count);

    decltype(jpeg_memory_mgr::request_virt_barray) request_ = nullptr;
    decltype(jpeg_memory_mgr::access_virt_barray) access_ = nullptr;
    std::array<Rows, MAX_COMPONENTS> components_;
    std::size_t component_count_ = 0;
};
