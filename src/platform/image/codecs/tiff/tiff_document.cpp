// Appends pages to a TIFF file in place.
#include "src/platform/image/codecs/tiff/tiff_document.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"

static bool bWriteWhole(int nDescriptor, std::uint64_t nOffset, Bytes aBytes)
{
    while (!aBytes.empty()) {
        const ssize_t nWritten =
            pwrite(nDescriptor, aBytes.data(), aBytes.size(), static_cast<off_t>(nOffset));
        if (nWritten < 0 && errno == EINTR)
            continue;
        if (nWritten <= 0)
            return false;
        nOffset += static_cast<std::uint64_t>(nWritten);
        aBytes = aBytes.subspan(static_cast<std::size_t>(nWritten));
    }
    return true;
}

static bool bReadWhole(int nDescriptor, std::uint64_t nOffset, std::vector<std::uint8_t>& aBytes)
{
    std::size_t nDone = 0;
    while (nDone < aBytes.size()) {
        const ssize_t nRead = pread(nDescriptor, aBytes.data() + nDone, aBytes.size() - nDone,
                                    static_cast<off_t>(nOffset + nDone));
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0)
            return false;
        nDone += static_cast<std::size_t>(nRead);
    }
    return true;
}

namespace
{
/// Writes behind the end of a file.
class EndOfFile : public TiffSink
{
public:
    EndOfFile(int nDescriptor, std::uint64_t nPosition) : m_nDescriptor(nDescriptor), m_nPosition(nPosition)
    {
    }
    bool Write(Bytes aBytes) override
    {
        if (!bWriteWhole(m_nDescriptor, m_nPosition, aBytes))
            return false;
        m_nPosition += aBytes.size();
        return true;
    }
    std::uint64_t Position() const override { return m_nPosition; }

private:
    int m_nDescriptor;
    std::uint64_t m_nPosition;
};
}  // namespace

std::unique_ptr<TiffDocument> TiffDocument::pBegin(const std::string& sHostPath, const ImageBuffer& aImage,
                                                   const SaveSettings& objSettings, std::uint64_t nClassicEnd)
{
    std::unique_ptr<TiffDocument> pDocument(new TiffDocument);
    pDocument->m_nClassicEnd = nClassicEnd;
    pDocument->m_bBigTiff = nMostPageBytes(aImage) > nClassicEnd;
    OutputFile objOut(sHostPath);
    TiffPagePlace objPlace;
    if (objOut.Failed() ||
        !bWriteTiffFile(objOut, aImage, objSettings, {pDocument->m_bBigTiff, true, 0}, objPlace))
        return nullptr;
    pDocument->m_nEnd = objOut.Size();
    pDocument->m_nNextPointer = objPlace.nNextPointer;
    pDocument->m_nPages = 1;
    if (!objOut.Commit())
        return nullptr;
    pDocument->m_nDescriptor = objOut.TakeDescriptor();
    return pDocument;
}

TiffDocument::~TiffDocument()
{
    if (m_nDescriptor >= 0)
        close(m_nDescriptor);
}

bool TiffDocument::bWriteAt(std::uint64_t nOffset, Bytes aBytes) const
{
    return bWriteWhole(m_nDescriptor, nOffset, aBytes);
}

bool TiffDocument::bAppend(const ImageBuffer& aImage, const SaveSettings& objSettings)
{
    const auto ForgetWhatIsBehind = [this] {
        // A file that can't be cut keeps bytes that nothing points to, which harms no reader.
        if (ftruncate(m_nDescriptor, static_cast<off_t>(m_nEnd)) != 0)
            return;
    };
    try {
        if (bAppendPage(aImage, objSettings))
            return true;
    } catch (...) {
        ForgetWhatIsBehind();
        throw;
    }
    ForgetWhatIsBehind();
    return false;
}

bool TiffDocument::bAppendPage(const ImageBuffer& aImage, const SaveSettings& objSettings)
{
    if (!m_bBigTiff && m_nEnd + nMostPageBytes(aImage) > m_nClassicEnd && !bMakeBig())
        return false;
    EndOfFile objSink(m_nDescriptor, m_nEnd);
    TiffPagePlace objPlace;
    if (!bWriteTiffPage(objSink, aImage, objSettings, {m_bBigTiff, true, m_nPages}, objPlace))
        return false;
    std::vector<std::uint8_t> aPointer;
    AppendNumber(aPointer, objPlace.nDirectory, m_bBigTiff ? 8 : 4);
    if (!bWriteAt(m_nNextPointer, aPointer))
        return false;
    m_nNextPointer = objPlace.nNextPointer;
    m_nEnd = objSink.Position();
    ++m_nPages;
    return true;
}

static std::uint64_t nNumberAt(const std::vector<std::uint8_t>& aBytes, std::size_t nAt, std::uint32_t nSize)
{
    std::uint64_t nValue = 0;
    for (std::uint32_t i = nSize; i > 0; --i)
        nValue = nValue << 8 | aBytes[nAt + i - 1];
    return nValue;
}

/// A directory of a file that becomes one with 64-bit offsets. Its values stay where they are.
struct WidenedDirectory {
    std::uint64_t nDirectory = 0;    ///< the new one, put behind the file's end
    std::uint64_t nNextPointer = 0;  ///< its own
    std::uint64_t nOldNext = 0;      ///< the directory after the old one
};

// Writes the classic directory at nOld anew in the wide form, the directories that it points to before it.
static bool bWiden(int nDescriptor, std::uint64_t nOld, EndOfFile& objSink, WidenedDirectory& objNew)
{
    std::vector<std::uint8_t> aCount(2);
    if (!bReadWhole(nDescriptor, nOld, aCount))
        return false;
    const std::uint64_t nCount = nNumberAt(aCount, 0, 2);
    std::vector<std::uint8_t> aOld(nCount * 12 + 4);
    if (!bReadWhole(nDescriptor, nOld + 2, aOld))
        return false;
    std::vector<std::uint8_t> aNew;
    AppendNumber(aNew, nCount, 8);
    for (std::uint64_t i = 0; i < nCount; ++i) {
        const std::size_t nEntry = i * 12;
        const auto nTag = static_cast<std::uint16_t>(nNumberAt(aOld, nEntry, 2));
        const auto nType = static_cast<std::uint16_t>(nNumberAt(aOld, nEntry + 2, 2));
        const std::uint64_t nValues = nNumberAt(aOld, nEntry + 4, 4);
        const std::uint64_t nSize = nValues * nTiffTypeSize(nType);
        AppendNumber(aNew, nTag, 2);
        if (bPointsToTiffDirectory(nTag)) {
            WidenedDirectory objInner;
            if (!bWiden(nDescriptor, nNumberAt(aOld, nEntry + 8, 4), objSink, objInner))
                return false;
            AppendNumber(aNew, 18, 2);
            AppendNumber(aNew, 1, 8);
            AppendNumber(aNew, objInner.nDirectory, 8);
            continue;
        }
        AppendNumber(aNew, nType, 2);
        AppendNumber(aNew, nValues, 8);
        const std::uint64_t nOffset = nNumberAt(aOld, nEntry + 8, 4);
        if (nSize > 4 && nSize <= 8) {  // what now fits into the entry has to be there
            std::vector<std::uint8_t> aValue(nSize);
            if (!bReadWhole(nDescriptor, nOffset, aValue))
                return false;
            aValue.resize(8);
            aNew.insert(aNew.end(), aValue.begin(), aValue.end());
        } else {
            AppendNumber(aNew, nOffset, 8);
        }
    }
    AppendNumber(aNew, 0, 8);
    if (objSink.Position() % 2 != 0) {
        const std::uint8_t nFill = 0;
        if (!objSink.Write({&nFill, 1}))
            return false;
    }
    objNew.nDirectory = objSink.Position();
    objNew.nOldNext = nNumberAt(aOld, nCount * 12, 4);
    objNew.nNextPointer = objNew.nDirectory + aNew.size() - 8;
    return objSink.Write(aNew);
}

// All directories are written anew behind the end; the header, which has room for both forms, then turns from
// the old chain to the new one in a single write.
bool TiffDocument::bMakeBig()
{
    std::vector<std::uint8_t> aFirst(4);
    if (!bReadWhole(m_nDescriptor, 4, aFirst))
        return false;
    EndOfFile objSink(m_nDescriptor, m_nEnd);
    std::uint64_t nNewFirst = 0;
    std::uint64_t nNextPointer = 0;
    for (std::uint64_t nOld = nNumberAt(aFirst, 0, 4); nOld != 0;) {
        WidenedDirectory objNew;
        if (!bWiden(m_nDescriptor, nOld, objSink, objNew))
            return false;
        std::vector<std::uint8_t> aPointer;
        AppendNumber(aPointer, objNew.nDirectory, 8);
        if (nNewFirst == 0)
            nNewFirst = objNew.nDirectory;
        else if (!bWriteAt(nNextPointer, aPointer))
            return false;
        nNextPointer = objNew.nNextPointer;
        nOld = objNew.nOldNext;
    }
    if (!bWriteAt(0, aTiffHeaderBytes(nNewFirst, true)))
        return false;
    m_nEnd = objSink.Position();
    m_nNextPointer = nNextPointer;
    m_bBigTiff = true;
    return true;
}
