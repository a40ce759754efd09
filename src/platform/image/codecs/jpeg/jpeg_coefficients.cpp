// Frees the coefficients of a progressive JPEG while its rows are being produced.
#include "src/platform/image/codecs/jpeg/jpeg_coefficients.h"

#include "src/platform/image/base/picture_memory.h"

void JpegCoefficients::Follow(jpeg_decompress_struct& jpeg)
{
    request_ = jpeg.mem->request_virt_barray;
    access_ = jpeg.mem->access_virt_barray;
    jpeg.client_data = this;
    jpeg.mem->request_virt_barray = Request;
    jpeg.mem->access_virt_barray = Access;
}

jvirt_barray_ptr JpegCoefficients::Request(j_common_ptr jpeg, int pool, boolean is_zero, JDIMENSION blocks,
                                           JDIMENSION row_count, JDIMENSION max_at_once)
{
    auto& self = *static_cast<JpegCoefficients*>(jpeg->client_data);
    const jvirt_barray_ptr key = self.request_(jpeg, pool, is_zero, blocks, row_count, max_at_once);
    if (self.component_count_ < self.components_.size()) {
        Rows& rows = self.components_[self.component_count_++];
        rows.key = key;
        rows.bytes = blocks * sizeof(JBLOCK);
    }
    return key;
}

JBLOCKARRAY JpegCoefficients::Access(j_common_ptr jpeg, jvirt_barray_ptr key, JDIMENSION first,
                                     JDIMENSION count, boolean writable)
{
    auto& self = *static_cast<JpegCoefficients*>(jpeg->client_data);
    const JBLOCKARRAY rows = self.access_(jpeg, key, first, count, writable);
    if (writable)  // scans are still being read
        return rows;
    for (Rows& kept : self.components_)
        if (kept.key == key)
            self.FreePassedRows(kept, rows, first, count);
    return rows;
}

// Frees only rows that libjpeg itself has returned pointers to, and only bytes known to belong to them.
void JpegCoefficients::FreePassedRows(Rows& rows, JBLOCKARRAY blocks, JDIMENSION first, JDIMENSION count)
{
    for (JDIMENSION i = 0; i < rows.last_count && rows.last_row + i < first; ++i) {
        auto* const row = reinterpret_cast<std::uint8_t*>(rows.last_blocks[i]);
        if (row != rows.end)
            rows.begin = row;
        rows.end = row + rows.bytes;
    }
    rows.begin = ReleasePages(rows.begin, rows.end);
    rows.last_blocks = blocks;
    rows.last_row = first;
    rows.last_count = count;
}
