// Finds lines in blocks of a file, and writes lines to a file that replaces the old one.
#include "src/platform/posix/text_files.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "src/base/raised_error.h"
#include "src/base/text_encoding.h"

static constexpr std::size_t kBlockSize = 256 * 1024;
// No line of a text is longer; a file that is all one line isn't text, and would fill the memory.
static constexpr std::size_t kLongestLine = 256 * 1024 * 1024;
static constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";

void RaisePathFileAccess(const std::string& sPath, const std::string& sReason)
{
    throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + sPath + " (" + sReason + ")");
}

PosixTextReader::PosixTextReader(int nDescriptor, std::string sName)
    : m_nDescriptor(nDescriptor), m_sName(std::move(sName))
{
    try {
        m_bUtf8 = bWholeFileIsUtf8();
        m_sBuffer.clear();
        m_nPosition = 0;
        if (bFill() && m_sBuffer.starts_with(kMarkUtf8))
            m_nBegin = kMarkUtf8.size();
    } catch (...) {
        close(m_nDescriptor);
        throw;
    }
}

PosixTextReader::~PosixTextReader()
{
    close(m_nDescriptor);
}

bool PosixTextReader::bFill()
{
    const std::size_t nOld = m_sBuffer.size();
    m_sBuffer.resize(nOld + kBlockSize);
    ssize_t nRead = 0;
    do
        nRead = pread(m_nDescriptor, m_sBuffer.data() + nOld, kBlockSize, m_nPosition);
    while (nRead < 0 && errno == EINTR);
    const int nError = errno;
    m_sBuffer.resize(nOld + static_cast<std::size_t>(nRead > 0 ? nRead : 0));
    if (nRead < 0)
        RaisePathFileAccess(m_sName, std::generic_category().message(nError));
    m_nPosition += nRead;
    return nRead > 0;
}

// The length of the text up to a character that its end cuts short.
static std::size_t nWithoutCutCharacter(std::string_view sBytes)
{
    for (std::size_t nBack = 1; nBack <= 3 && nBack <= sBytes.size(); ++nBack) {
        const auto nByte = static_cast<unsigned char>(sBytes[sBytes.size() - nBack]);
        if ((nByte & 0xC0) == 0x80)
            continue;
        const std::size_t nLength = nByte >= 0xF0 ? 4 : nByte >= 0xE0 ? 3 : nByte >= 0xC0 ? 2 : 1;
        return nLength > nBack ? sBytes.size() - nBack : sBytes.size();
    }
    return sBytes.size();
}

bool PosixTextReader::bWholeFileIsUtf8()
{
    while (bFill()) {
        const std::size_t nWhole = nWithoutCutCharacter(m_sBuffer);
        if (!bIsUtf8(std::string_view(m_sBuffer).substr(0, nWhole)))
            return false;
        m_sBuffer.erase(0, nWhole);
    }
    return m_sBuffer.empty();
}

bool PosixTextReader::ReadLine(std::string& sLine)
{
    std::size_t nEnd = m_sBuffer.find('\n', m_nBegin);
    while (nEnd == std::string::npos) {
        m_sBuffer.erase(0, m_nBegin);
        m_nBegin = 0;
        const std::size_t nSearched = m_sBuffer.size();
        if (nSearched > kLongestLine)
            RaisePathFileAccess(m_sName, "line too long");
        if (!bFill())
            break;
        nEnd = m_sBuffer.find('\n', nSearched);
    }
    if (nEnd == std::string::npos && m_nBegin == m_sBuffer.size())
        return false;

    std::string_view sFound = std::string_view(m_sBuffer).substr(m_nBegin, nEnd - m_nBegin);
    m_nBegin = nEnd == std::string::npos ? m_sBuffer.size() : nEnd + 1;
    if (sFound.ends_with('\r'))
        sFound.remove_suffix(1);
    if (m_bUtf8)
        sLine.assign(sFound);
    else
        sLine = sUtf8FromWindows1252(sFound);
    return true;
}

PosixTextWriter::PosixTextWriter(const std::string& sHostPath, std::string sName)
    : m_objFile(sHostPath), m_sName(std::move(sName))
{
    if (m_objFile.bFailed())
        RaisePathFileAccess(m_sName, m_objFile.sError());
}

void PosixTextWriter::WriteLine(const std::string& sLine)
{
    m_objFile.Write(sLine);
    m_objFile.Write("\r\n");
}

void PosixTextWriter::Commit()
{
    if (!m_objFile.Commit())
        RaisePathFileAccess(m_sName, m_objFile.sError());
}
