// Reads Windows animated cursors.
#include "src/platform/image/codecs/ico/ani.h"

#include <array>
#include <numeric>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/ico/icon_directory.h"
#include "src/platform/image/codecs/ico/riff.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kFormHeaderSize = 12;  // "RIFF", a size, "ACON"
static constexpr std::uint32_t kFramesAreIcons = 1;

/// What the chunk "anih" says of frames that are bare bits.
struct AniHeader {
    std::uint32_t nWidth = 0;
    std::uint32_t nHeight = 0;
    std::uint32_t nBits = 0;
    std::uint32_t nFlags = kFramesAreIcons;
};

struct AniFile {
    AniHeader objHeader;
    std::vector<Bytes> aFrames;
    std::vector<std::uint32_t> aSteps;  ///< indexes of frames; some may lie
};

static bool Sniff(Bytes aHead, std::string_view)
{
    ByteReader rd(aHead);
    const bool bRiff = rd.U32Le() == nRiffId("RIFF");
    rd.U32Le();  // size: what follows is taken as far as the file goes
    return bRiff && rd.U32Le() == nRiffId("ACON");
}

static AniHeader objReadHeader(Bytes aData)
{
    AniHeader objHeader;
    ByteReader rd(aData);
    rd.Take(12);  // its size, the counts of frames and steps: both are counted here
    objHeader.nWidth = rd.U32Le();
    objHeader.nHeight = rd.U32Le();
    objHeader.nBits = rd.U32Le();
    rd.Take(8);  // planes, rate
    const std::uint32_t nFlags = rd.U32Le();
    if (!rd.Failed())
        objHeader.nFlags = nFlags;
    return objHeader;
}

static void ReadList(Bytes aData, AniFile& objAni)
{
    ByteReader rd(aData);
    if (rd.U32Le() != nRiffId("fram"))
        return;
    for (const RiffChunk& objChunk : aRiffChunks(rd.Take(rd.Left()))) {
        if (objChunk.nId == nRiffId("icon"))
            objAni.aFrames.push_back(objChunk.aData);
    }
}

static AniFile objReadChunks(Bytes aFile)
{
    AniFile objAni;
    for (const RiffChunk& objChunk : aRiffChunks(aFile.subspan(kFormHeaderSize))) {
        if (objChunk.nId == nRiffId("anih")) {
            objAni.objHeader = objReadHeader(objChunk.aData);
        } else if (objChunk.nId == nRiffId("seq ")) {
            ByteReader rd(objChunk.aData);
            while (rd.Left() >= 4)
                objAni.aSteps.push_back(rd.U32Le());
        } else if (objChunk.nId == nRiffId("LIST")) {
            ReadList(objChunk.aData, objAni);
        }
    }
    if (objAni.aSteps.empty()) {
        objAni.aSteps.resize(objAni.aFrames.size());
        std::iota(objAni.aSteps.begin(), objAni.aSteps.end(), 0u);
    }
    return objAni;
}

// A bitmap as a file, with its header, or as bits whose header is the animation's.
static bool bDecodeBareFrame(const AniHeader& objHeader, Bytes aFrame, ImageBuffer& aImage)
{
    ByteReader rd(aFrame);
    const std::uint32_t nStart = rd.U32Le();
    if ((nStart & 0xFFFF) == ('B' | 'M' << 8)) {
        InputFile objFile(aFrame);
        const Codec* pBitmap = pCodecOfContent(objFile.Head(), "");
        const std::unique_ptr<ImageDecoder> pDecoder = pBitmap ? pBitmap->Open(objFile) : nullptr;
        return pDecoder && pDecoder->DecodeFrame(0, aImage);
    }
    constexpr std::uint32_t kInfoHeaderSize = 40;
    DibHeader objOwn;
    if (nStart == kInfoHeaderSize && ReadDibHeader(aFrame, objOwn) && objOwn.bits_offset <= aFrame.size())
        return DecodeDibBits(objOwn, aFrame.subspan(objOwn.bits_offset), aImage);
    std::array<std::uint8_t, kInfoHeaderSize> aMade{};
    const auto Put = [&aMade](std::size_t nPlace, std::uint32_t nValue) {
        for (std::size_t i = 0; i < 4; ++i)
            aMade[nPlace + i] = static_cast<std::uint8_t>(nValue >> (8 * i));
    };
    Put(0, kInfoHeaderSize);
    Put(4, objHeader.nWidth);
    Put(8, objHeader.nHeight);
    Put(12, 1 | (objHeader.nBits & 0xFFFF) << 16);
    return DecodeDib(aMade, aFrame, aImage);
}

static bool bDecodeFrame(const AniHeader& objHeader, Bytes aFrame, ImageBuffer& aImage)
{
    if (bIconFile(aFrame, IconKind::kIcon) || bIconFile(aFrame, IconKind::kCursor))
        return bDecodeIconEntry(aFrame, aIconEntries(aFrame).front(), aImage);
    ImageBuffer aResult;
    if ((objHeader.nFlags & kFramesAreIcons) != 0 || !bDecodeBareFrame(objHeader, aFrame, aResult) ||
        !AddAlpha(aResult))
        return false;
    aImage = std::move(aResult);
    return true;
}

/// An open animation. The frames are spans of the file's bytes, which the file keeps.
class AniDecoder : public ImageDecoder
{
public:
    explicit AniDecoder(AniFile objAni) : m_objAni(std::move(objAni)) {}

    std::int32_t FrameCount() override { return static_cast<std::int32_t>(m_objAni.aSteps.size()); }

    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override
    {
        if (lFrame < 0 || lFrame >= FrameCount())
            return false;
        const std::uint32_t nFrame = m_objAni.aSteps[static_cast<std::size_t>(lFrame)];
        return nFrame < m_objAni.aFrames.size() &&
               bDecodeFrame(m_objAni.objHeader, m_objAni.aFrames[nFrame], aImage);
    }

private:
    AniFile m_objAni;
};

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    const Bytes aFile = objFile.All();
    if (!Sniff(aFile, ""))
        return nullptr;
    AniFile objAni = objReadChunks(aFile);
    if (objAni.aFrames.empty())
        return nullptr;
    return std::make_unique<AniDecoder>(std::move(objAni));
}

const Codec codecAni{14, true, false, Sniff, Open, nullptr};
