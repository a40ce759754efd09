// A TIFF file that grows page by page.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/tiff/tiff_writer.h"

class FileSaver;

/// The file takes its name in Finish, whole or not at all: until then, and after any failure, an older file
/// of that name is as it was. A page's data and directory are appended first; then a small write links them
/// to the last directory. Nothing is read back, so the cost is linear in the number of pages.
class TiffDocument
{
public:
    /// Begins with one page. Null on failure. Throws std::bad_alloc. The file is converted to BigTIFF before
    /// it exceeds classic_end bytes, which tests lower.
    static std::unique_ptr<TiffDocument> Begin(const std::string& host_path, const ImageBuffer& image,
                                               const SaveSettings& settings, FileSaver& saver,
                                               std::uint64_t classic_end = kClassicEnd);
    TiffDocument(const TiffDocument&) = delete;
    TiffDocument& operator=(const TiffDocument&) = delete;

    /// Appends a page. After false or std::bad_alloc the document can't be finished any more.
    bool Append(const ImageBuffer& image, const SaveSettings& settings);

    /// Puts the file into place. Nothing may be appended afterwards.
    [[nodiscard]] bool Finish();

private:
    TiffDocument(const std::string& host_path, FileSaver& saver) : out_(host_path, saver) {}
    bool AppendPage(const ImageBuffer& image, const SaveSettings& settings);
    bool MakeBig();
    bool WriteAt(std::uint64_t offset, Bytes bytes);
    bool ReadAt(std::uint64_t offset, std::vector<std::uint8_t>& bytes);
    struct WidenedDirectory;
    bool Widen(std::uint64_t old_offset, WidenedDirectory& widened);

    OutputFile out_;  ///< positioned at the end between calls
    std::uint64_t classic_end_ = kClassicEnd;
    std::uint64_t next_pointer_ = 0;  ///< offset of the last directory's link
    std::uint32_t pages_ = 0;
    bool big_tiff_ = false;
    bool lost_page_ = false;
};
