// Text files of the host, read line by line and written whole.
// Room: platform/posix.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "src/platform/file_system.h"
#include "src/platform/posix/replacing_file.h"

/// Reads a file in blocks; lines may be of any length, and any byte, NUL too, may stand in them. A mark of
/// UTF-8 at the head is dropped. Whether the file is UTF-8 as a whole is found out before the first line is
/// handed out.
class PosixTextReader : public TextReader
{
public:
    /// Takes the descriptor of an open regular file, and closes it. Raises clsRaisedError when it can't be
    /// read.
    PosixTextReader(int descriptor, std::string name);
    ~PosixTextReader() override;
    PosixTextReader(const PosixTextReader&) = delete;
    PosixTextReader& operator=(const PosixTextReader&) = delete;

    bool ReadLine(std::string& line) override;

private:
    /// Reads the next block behind what is left of the last one; False at the end of the file.
    bool Fill();
    bool IsWholeFileUtf8();

    int descriptor_;
    std::string name_;  ///< for descriptions of errors
    std::string buffer_;
    std::size_t begin_ = 0;  ///< where in the buffer the next line begins
    std::int64_t position_ = 0;
    bool utf8_ = true;
};

/// Ends each line with CR LF.
class PosixTextWriter : public TextWriter
{
public:
    /// Raises clsRaisedError when no file can be made at host_path.
    PosixTextWriter(const std::string& host_path, std::string name);

    void WriteLine(const std::string& line) override;
    void Commit() override;

private:
    ReplacingFile file_;
    std::string name_;
};

/// Raises clsRaisedError kErrPathFileAccess; the description names the path and what the system says of
/// error.
[[noreturn]] void RaisePathFileAccess(const std::string& path, const std::string& reason);
