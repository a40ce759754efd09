// The segments of a JPEG file beside its picture: size, EXIF, XMP, IPTC, profile.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

struct JpegSegments {
    bool has_frame = false;  ///< a frame header was found before the first scan
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool arithmetic = false;
    std::uint64_t bytes_of_scans = 0;  ///< bytes from the first scan's header to the end of the file
    ImageMetadata metadata;
    std::vector<std::uint8_t>
        icc_profile;  ///< as the file has it: it may be broken or of another colour space
};

/// Reads the segments before the first scan. Never fails: what is broken is left out. Of several EXIF blocks
/// or XMP packets the first counts; an extended XMP packet (one that continues the first) is left out.
JpegSegments ReadSegments(Bytes file);

/// One segment to write: the number n of APPn, and its bytes, at most 65,533.
struct JpegSegment {
    int application = 0;
    std::vector<std::uint8_t> bytes;
};

/// The segments that hold the blocks, in the order to write them. A block that doesn't fit is left out, a
/// long XMP packet not before its padding has been.
std::vector<JpegSegment> SegmentsToWrite(const ImageMetadata& metadata, Bytes icc_profile);

/// The longest EXIF block that a segment holds, in bytes.
constexpr std::size_t kLongestExif = 65533 - 6;
