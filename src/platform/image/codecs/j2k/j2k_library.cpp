// Connects OpenJPEG with bytes and files.
#include "src/platform/image/codecs/j2k/j2k_library.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <thread>

#include "src/platform/image/base/output_file.h"

static constexpr OPJ_SIZE_T kStreamBuffer = 1 << 20;
static constexpr std::uint64_t kPixelsForThreads = 200'000;

static void SayNothing(const char*, void*) {}

J2kCodec::J2kCodec(opj_codec_t* pCodec) : m_pCodec(pCodec)
{
    if (!m_pCodec)
        throw std::bad_alloc();
    opj_set_info_handler(m_pCodec, SayNothing, nullptr);
    opj_set_warning_handler(m_pCodec, SayNothing, nullptr);
    opj_set_error_handler(m_pCodec, SayNothing, nullptr);
}

J2kCodec::~J2kCodec()
{
    opj_destroy_codec(m_pCodec);
}

void J2kCodec::UseThreads(std::uint64_t nPixels) const
{
    if (nPixels < kPixelsForThreads)
        return;
    const unsigned nCores = std::min(std::thread::hardware_concurrency(), 8u);
    if (nCores > 1)
        opj_codec_set_threads(m_pCodec, static_cast<int>(nCores));
}

J2kStream::J2kStream(Bytes aBytes) : m_aBytes(aBytes)
{
    Connect(true);
    opj_stream_set_user_data_length(m_pStream, m_aBytes.size());
}

J2kStream::J2kStream(OutputFile& objOut) : m_pOut(&objOut), m_nStart(objOut.Position())
{
    Connect(false);
}

void J2kStream::Connect(bool bReads)
{
    m_pStream = opj_stream_create(kStreamBuffer, bReads ? OPJ_STREAM_READ : OPJ_STREAM_WRITE);
    if (!m_pStream)
        throw std::bad_alloc();
    opj_stream_set_user_data(m_pStream, this, nullptr);
    opj_stream_set_read_function(m_pStream, &J2kStream::Read);
    opj_stream_set_write_function(m_pStream, &J2kStream::Write);
    opj_stream_set_skip_function(m_pStream, &J2kStream::Skip);
    opj_stream_set_seek_function(m_pStream, &J2kStream::Seek);
}

J2kStream::~J2kStream()
{
    opj_stream_destroy(m_pStream);
}

static constexpr OPJ_SIZE_T kFailed = ~OPJ_SIZE_T{0};

OPJ_SIZE_T J2kStream::Read(void* pOut, OPJ_SIZE_T nCount, void* pStream)
{
    auto& objStream = *static_cast<J2kStream*>(pStream);
    const std::size_t nGiven =
        std::min<std::size_t>(nCount, objStream.m_aBytes.size() - objStream.m_nPosition);
    if (nGiven == 0)
        return kFailed;  // the end
    std::memcpy(pOut, objStream.m_aBytes.data() + objStream.m_nPosition, nGiven);
    objStream.m_nPosition += nGiven;
    return nGiven;
}

OPJ_SIZE_T J2kStream::Write(void* pIn, OPJ_SIZE_T nCount, void* pStream)
{
    auto& objStream = *static_cast<J2kStream*>(pStream);
    if (!objStream.m_pOut->Write({static_cast<const std::uint8_t*>(pIn), nCount}))
        return kFailed;
    objStream.m_nPosition += nCount;
    return nCount;
}

OPJ_OFF_T J2kStream::Skip(OPJ_OFF_T nCount, void* pStream)
{
    auto& objStream = *static_cast<J2kStream*>(pStream);
    const auto nLeft = static_cast<OPJ_OFF_T>(objStream.m_aBytes.size() - objStream.m_nPosition);
    if (nCount < 0)
        return -1;
    if (!objStream.m_pOut && nCount > nLeft) {
        objStream.m_nPosition = objStream.m_aBytes.size();
        return nLeft > 0 ? nLeft : -1;
    }
    return Seek(static_cast<OPJ_OFF_T>(objStream.m_nPosition) + nCount, pStream) ? nCount : -1;
}

OPJ_BOOL J2kStream::Seek(OPJ_OFF_T nPosition, void* pStream)
{
    auto& objStream = *static_cast<J2kStream*>(pStream);
    if (nPosition < 0)
        return OPJ_FALSE;
    const auto nTo = static_cast<std::uint64_t>(nPosition);
    if (objStream.m_pOut ? !objStream.m_pOut->Seek(objStream.m_nStart + nTo)
                         : nTo > objStream.m_aBytes.size())
        return OPJ_FALSE;
    objStream.m_nPosition = nTo;
    return OPJ_TRUE;
}
