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
    /// Follows what objJpeg asks of its memory manager. For after jpeg_create_decompress and before
    /// jpeg_start_decompress; takes client_data, and outlives the decompression.
    void Follow(jpeg_decompress_struct& objJpeg);

private:
    /// One component's coefficients, as rows of blocks.
    struct Rows {
        jvirt_barray_ptr pKey = nullptr;
        std::size_t nBytes = 0;  ///< of a row
        JBLOCKARRAY aLast = nullptr;
        JDIMENSION nLast = 0;  ///< the first row of aLast
        JDIMENSION nLastCount = 0;
        std::uint8_t* pBegin = nullptr;  ///< of what isn't needed any more and was not given back yet
        std::uint8_t* pEnd = nullptr;
    };

    static jvirt_barray_ptr Request(j_common_ptr pJpeg, int nPool, boolean bZero, JDIMENSION nBlocks,
                                    JDIMENSION nRows, JDIMENSION nMostAtOnce);
    static JBLOCKARRAY Access(j_common_ptr pJpeg, jvirt_barray_ptr pKey, JDIMENSION nFirst, JDIMENSION nCount,
                              boolean bWritable);
    void Passed(Rows& objRows, JBLOCKARRAY aNew, JDIMENSION nFirst, JDIMENSION nCount);

    decltype(jpeg_memory_mgr::request_virt_barray) m_pRequest = nullptr;
    decltype(jpeg_memory_mgr::access_virt_barray) m_pAccess = nullptr;
    std::array<Rows, MAX_COMPONENTS> m_aComponents;
    std::size_t m_nComponents = 0;
};
