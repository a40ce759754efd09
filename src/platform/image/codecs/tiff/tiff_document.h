// A TIFF file that grows page by page.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "src/platform/image/codecs/tiff/tiff_writer.h"

/// After each call the file is a whole TIFF with the pages so far. A page's bytes and directory are put
/// behind the file's end first; then the last directory is made to point to it, which is one write of a few
/// bytes. So a full disk, or a process that is ended, leaves the pages before. Nothing is read back: n pages
/// cost what they are.
class TiffDocument
{
public:
    /// Writes a file of one page, whole or not at all, and keeps it open. Null after a failure. Throws
    /// std::bad_alloc. A classic file becomes one with 64-bit offsets before it passes classic_end bytes;
    /// tests make that small.
    static std::unique_ptr<TiffDocument> Begin(const std::string& host_path, const ImageBuffer& image,
                                               const SaveSettings& settings,
                                               std::uint64_t classic_end = kClassicEnd);
    ~TiffDocument();
    TiffDocument(const TiffDocument&) = delete;
    TiffDocument& operator=(const TiffDocument&) = delete;

    /// Adds a page. After False, or std::bad_alloc, the file is as it was, and another page may be tried.
    bool Append(const ImageBuffer& image, const SaveSettings& settings);

private:
    TiffDocument() = default;
    bool AppendPage(const ImageBuffer& image, const SaveSettings& settings);
    bool MakeBig();
    bool WriteAt(std::uint64_t offset, Bytes bytes) const;

    int descriptor_ = -1;
    std::uint64_t classic_end_ = kClassicEnd;
    std::uint64_t end_ = 0;           ///< bytes of the file
    std::uint64_t next_pointer_ = 0;  ///< where the last directory names the one after it
    std::uint32_t pages_ = 0;
    bool big_tiff_ = false;
};
