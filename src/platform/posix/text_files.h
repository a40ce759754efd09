// Text files, read line by line and written atomically.
// Room: platform/posix.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "src/platform/file_system.h"
#include "src/platform/files/output_file.h"

/// Reads a file in blocks. Lines may have any length and contain any byte, including NUL. A UTF-8 byte order
/// mark is dropped. The whole file is checked for valid UTF-8 before the first line is returned.
class PosixTextReader : public TextReader
{
public:
    /// Takes ownership of the descriptor of a regular file. Raises clsRaisedError if it can't be read.
    PosixTextReader(int descriptor, std::string name);
    ~PosixTextReader() override;
    PosixTextReader(const PosixTextReader&) = delete;
    PosixTextReader& operator=(const PosixTextReader&) = delete;

    bool ReadLine(std::string& line) override;

private:
    /// Appends the next block to what is left of the last one; false at the end of the file.
    bool Fill();
    bool IsWholeFileUtf8();

    int descriptor_;
    std::string name_;  ///< for error descriptions
    std::string buffer_;
    std::size_t begin_ = 0;  ///< start of the next line in buffer_
    std::int64_t position_ = 0;
    bool utf8_ = true;
};

/// Ends each line with CR LF.
class PosixTextWriter : public TextWriter
{
public:
    /// Raises clsRaisedError if no file can be created at host_path.
    PosixTextWriter(const std::string& host_path, std::string name, FileSaver& saver);

    void WriteLine(const std::string& line) override;
    void Commit() override;

private:
    OutputFile file_;
    std::string name_;
};

/// Raises clsRaisedError kErrPathFileAccess; the description names the path and the reason.
[[noreturn]] void RaisePathFileAccess(const std::string& path, const std::string& reason);
