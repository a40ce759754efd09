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
    PosixTextReader(int nDescriptor, std::string sName);
    ~PosixTextReader() override;
    PosixTextReader(const PosixTextReader&) = delete;
    PosixTextReader& operator=(const PosixTextReader&) = delete;

    bool ReadLine(std::string& sLine) override;

private:
    /// Reads the next block behind what is left of the last one; False at the end of the file.
    bool bFill();
    bool bWholeFileIsUtf8();

    int m_nDescriptor;
    std::string m_sName;  ///< for descriptions of errors
    std::string m_sBuffer;
    std::size_t m_nBegin = 0;  ///< where in the buffer the next line begins
    std::int64_t m_nPosition = 0;
    bool m_bUtf8 = true;
};

/// Ends each line with CR LF.
class PosixTextWriter : public TextWriter
{
public:
    /// Raises clsRaisedError when no file can be made at sHostPath.
    PosixTextWriter(const std::string& sHostPath, std::string sName);

    void WriteLine(const std::string& sLine) override;
    void Commit() override;

private:
    ReplacingFile m_objFile;
    std::string m_sName;
};

/// Raises clsRaisedError kErrPathFileAccess; the description names the path and what the system says of
/// nError.
[[noreturn]] void RaisePathFileAccess(const std::string& sPath, const std::string& sReason);
