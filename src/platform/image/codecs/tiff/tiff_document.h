// A TIFF file that grows page by page.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "src/platform/files/descriptor.h"
#include "src/platform/image/codecs/tiff/tiff_writer.h"

class FileSaver;

/// The file is a complete TIFF after every call. A page's data and directory are appended first; then a small
/// write links them to the last directory. So a full disk or a killed process leaves the earlier pages
/// intact. Nothing is read back, so the cost is linear in the number of pages.
class TiffDocument
{
public:
    /// Writes a single-page file atomically and keeps it open. Null on failure. Throws std::bad_alloc. The
    /// file is converted to BigTIFF before it exceeds classic_end bytes, which tests lower.
    static std::unique_ptr<TiffDocument> Begin(const std::string& host_path, const ImageBuffer& image,
                                               const SaveSettings& settings, FileSaver& saver,
                                               std::uint64_t classic_end = kClassicEnd);
    ~TiffDocument();
    TiffDocument(const TiffDocument&) = delete;
    TiffDocument& operator=(const TiffDocument&) = delete;

    /// Appends a page. After false or std::bad_alloc the file is unchanged, and appending can be retried.
    bool Append(const ImageBuffer& image, const SaveSettings& settings);

private:
    explicit TiffDocument(FileSaver& saver) : saver_(saver) {}
    bool AppendPage(const ImageBuffer& image, const SaveSettings& settings);
    bool MakeBig();
    bool WriteAt(std::uint64_t offset, Bytes bytes) const;

    FileSaver& saver_;
    Descriptor file_;
    std::uint64_t classic_end_ = kClassicEnd;
    std::uint64_t end_ = 0;           ///< size of the file
    std::uint64_t next_pointer_ = 0;  ///< offset of the last directory's link
    std::uint32_t pages_ = 0;
    bool big_tiff_ = false;
};
