// The metadata segments of a JPEG file: size, EXIF, XMP, IPTC, profile.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

struct JpegSegments {
    bool has_frame = false;  ///< a frame header precedes the first scan
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool arithmetic = false;
    std::uint64_t bytes_of_scans = 0;  ///< bytes after the first scan's header; 0 if there is no picture data
    ImageMetadata metadata;
    std::vector<std::uint8_t> icc_profile;  ///< as stored: may be broken or for another colour space
};

/// Reads the segments before the first scan. Never fails: broken segments are skipped. Only the first EXIF
/// block and the first XMP packet count; extended XMP is ignored.
JpegSegments ReadSegments(Bytes file);

/// The file without a segment at its end that is truncated, such as the Huffman tables of the next
/// progressive scan.
Bytes WithoutTruncatedSegment(Bytes file);

/// A segment to write: the n of APPn and at most 65,533 bytes.
struct JpegSegment {
    int application = 0;
    std::vector<std::uint8_t> bytes;
};

/// The metadata segments in the order to write them. A block that doesn't fit is left out; an XMP packet only
/// if it is too long even without its padding.
std::vector<JpegSegment> SegmentsToWrite(const ImageMetadata& metadata, Bytes icc_profile);

/// Maximum bytes of an EXIF block in one segment.
constexpr std::size_t kLongestExif = 65533 - 6;
