// Joins libtiff to InputFile and to memory.
#include "src/platform/image/codecs/tiff/tiff_handle.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <span>

#include "src/platform/image/base/input_file.h"

// Handlers that belong to one file: libtiff's own are the whole process's and write to standard error.
static int Ignore(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

static int CloseNothing(thandle_t)
{
    return 0;
}

static int MapNothing(thandle_t, void**, toff_t*)
{
    return 0;
}

static void UnmapNothing(thandle_t, void*, toff_t) {}

static TIFF* pOpen(const char* sMode, thandle_t pClient, TIFFReadWriteProc pRead, TIFFReadWriteProc pWrite,
                   TIFFSeekProc pSeek, TIFFSizeProc pSize, std::uint64_t nLargestBlock)
{
    const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> pOptions(TIFFOpenOptionsAlloc(),
                                                                                &TIFFOpenOptionsFree);
    if (!pOptions)
        return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions.get(), &Ignore, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(pOptions.get(), &Ignore, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(pOptions.get(), static_cast<tmsize_t>(nLargestBlock));
    return TIFFClientOpenExt("picture", sMode, pClient, pRead, pWrite, pSeek, &CloseNothing, pSize,
                             &MapNothing, &UnmapNothing, pOptions.get());
}

static std::uint64_t nSought(std::uint64_t nPosition, std::uint64_t nSize, toff_t nOffset, int nWhence)
{
    return nWhence == SEEK_SET ? nOffset : nOffset + (nWhence == SEEK_CUR ? nPosition : nSize);
}

TiffInput::TiffInput(InputFile& objFile) : m_objFile(objFile)
{
    // libtiff holds one strip as it stands in the file, so nothing it asks for is larger than the file; what
    // its decoders need beside that is small. "h": no directory yet; "m": no mapping; "c": strips as the file
    // has them.
    const std::uint64_t nLargestBlock = objFile.Size() + 256ull * 1024 * 1024;
    m_pTiff.reset(pOpen("rhmc", this, &Read, &Write, &Seek, &Size, nLargestBlock));
}

tmsize_t TiffInput::Read(thandle_t pThis, void* pOut, tmsize_t nCount)
{
    auto& obj = *static_cast<TiffInput*>(pThis);
    const std::size_t nRead = obj.m_objFile.ReadAt(
        obj.m_nPosition,
        {static_cast<std::uint8_t*>(pOut), static_cast<std::size_t>(std::max<tmsize_t>(nCount, 0))});
    obj.m_nPosition += nRead;
    return static_cast<tmsize_t>(nRead);
}

tmsize_t TiffInput::Write(thandle_t, void*, tmsize_t)
{
    return -1;
}

toff_t TiffInput::Seek(thandle_t pThis, toff_t nOffset, int nWhence)
{
    auto& obj = *static_cast<TiffInput*>(pThis);
    obj.m_nPosition = nSought(obj.m_nPosition, obj.m_objFile.Size(), nOffset, nWhence);
    return obj.m_nPosition;
}

toff_t TiffInput::Size(thandle_t pThis)
{
    return static_cast<TiffInput*>(pThis)->m_objFile.Size();
}

TiffStripEncoder::TiffStripEncoder()
{
    m_pTiff.reset(pOpen("wlm", this, &Read, &Write, &Seek, &Size, 0));
}

std::vector<std::uint8_t> TiffStripEncoder::aEncoded(std::uint32_t nStrip, std::vector<std::uint8_t>& aStrip)
{
    // libtiff puts each strip at the end of its file; what stands before it has been handed out.
    m_aWritten.clear();
    m_nPosition = 0;
    if (TIFFWriteEncodedStrip(Handle(), nStrip, aStrip.data(), static_cast<tmsize_t>(aStrip.size())) < 0 ||
        m_bFailed)
        return {};
    return std::move(m_aWritten);
}

tmsize_t TiffStripEncoder::Read(thandle_t, void*, tmsize_t)
{
    return -1;
}

tmsize_t TiffStripEncoder::Write(thandle_t pThis, void* pBytes, tmsize_t nCount)
{
    auto& obj = *static_cast<TiffStripEncoder*>(pThis);
    try {
        const auto* pFirst = static_cast<const std::uint8_t*>(pBytes);
        obj.m_aWritten.insert(obj.m_aWritten.end(), pFirst, pFirst + nCount);
    } catch (const std::bad_alloc&) {
        obj.m_bFailed = true;
        return -1;
    }
    return nCount;
}

toff_t TiffStripEncoder::Seek(thandle_t pThis, toff_t nOffset, int nWhence)
{
    auto& obj = *static_cast<TiffStripEncoder*>(pThis);
    obj.m_nPosition = nSought(obj.m_nPosition, obj.m_aWritten.size(), nOffset, nWhence);
    return obj.m_nPosition;
}

toff_t TiffStripEncoder::Size(thandle_t pThis)
{
    return static_cast<TiffStripEncoder*>(pThis)->m_aWritten.size();
}
