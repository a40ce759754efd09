// Gives the memory of a progressive JPEG's coefficients back.
#include "src/platform/image/codecs/jpeg/jpeg_coefficients.h"

#include "src/platform/image/base/picture_memory.h"

void JpegCoefficients::Follow(jpeg_decompress_struct& objJpeg)
{
    m_pRequest = objJpeg.mem->request_virt_barray;
    m_pAccess = objJpeg.mem->access_virt_barray;
    objJpeg.client_data = this;
    objJpeg.mem->request_virt_barray = Request;
    objJpeg.mem->access_virt_barray = Access;
}

jvirt_barray_ptr JpegCoefficients::Request(j_common_ptr pJpeg, int nPool, boolean bZero, JDIMENSION nBlocks,
                                           JDIMENSION nRows, JDIMENSION nMostAtOnce)
{
    auto& objThis = *static_cast<JpegCoefficients*>(pJpeg->client_data);
    const jvirt_barray_ptr pKey = objThis.m_pRequest(pJpeg, nPool, bZero, nBlocks, nRows, nMostAtOnce);
    if (objThis.m_nComponents < objThis.m_aComponents.size()) {
        Rows& objRows = objThis.m_aComponents[objThis.m_nComponents++];
        objRows.pKey = pKey;
        objRows.nBytes = nBlocks * sizeof(JBLOCK);
    }
    return pKey;
}

JBLOCKARRAY JpegCoefficients::Access(j_common_ptr pJpeg, jvirt_barray_ptr pKey, JDIMENSION nFirst,
                                     JDIMENSION nCount, boolean bWritable)
{
    auto& objThis = *static_cast<JpegCoefficients*>(pJpeg->client_data);
    const JBLOCKARRAY aRows = objThis.m_pAccess(pJpeg, pKey, nFirst, nCount, bWritable);
    if (bWritable)  // scans are still being read
        return aRows;
    for (Rows& objRows : objThis.m_aComponents)
        if (objRows.pKey == pKey)
            objThis.Passed(objRows, aRows, nFirst, nCount);
    return aRows;
}

// Only rows that libjpeg itself has pointed to are given back, and of these only what is known to be theirs.
void JpegCoefficients::Passed(Rows& objRows, JBLOCKARRAY aNew, JDIMENSION nFirst, JDIMENSION nCount)
{
    for (JDIMENSION i = 0; i < objRows.nLastCount && objRows.nLast + i < nFirst; ++i) {
        auto* const pRow = reinterpret_cast<std::uint8_t*>(objRows.aLast[i]);
        if (pRow != objRows.pEnd)
            objRows.pBegin = pRow;
        objRows.pEnd = pRow + objRows.nBytes;
    }
    objRows.pBegin = ReleasePages(objRows.pBegin, objRows.pEnd);
    objRows.aLast = aNew;
    objRows.nLast = nFirst;
    objRows.nLastCount = nCount;
}
