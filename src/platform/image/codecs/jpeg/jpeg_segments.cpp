// Reads and makes application segments.
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

using namespace std::string_view_literals;

static constexpr std::string_view kExifName = "Exif\0\0"sv;
static constexpr std::string_view kXmpName = "http://ns.adobe.com/xap/1.0/\0"sv;
static constexpr std::string_view kIccName = "ICC_PROFILE\0"sv;
static constexpr std::string_view kPhotoshopName = "Photoshop 3.0\0"sv;
static constexpr std::uint16_t kIptcResource = 0x0404;
static constexpr std::size_t kLongestSegment = 65533;
static constexpr std::size_t kProfileLimit = 16 * 1024 * 1024;

static bool bBeginsWith(Bytes aBytes, std::string_view sName)
{
    return aBytes.size() >= sName.size() &&
           std::equal(sName.begin(), sName.end(), aBytes.begin(),
                      [](char c, auto n) { return static_cast<std::uint8_t>(c) == n; });
}

static std::vector<std::uint8_t> aCopy(Bytes aBytes)
{
    return {aBytes.begin(), aBytes.end()};
}

namespace
{
// Gathers a profile from its numbered parts, which may come in any order.
class ProfileParts
{
public:
    void Add(Bytes aSegment)
    {
        ByteReader objReader(aSegment);
        const std::size_t nNumber = objReader.U8();
        const std::size_t nParts = objReader.U8();
        m_nParts = m_nParts == 0 ? nParts : m_nParts;
        if (objReader.Failed() || nNumber < 1 || nNumber > nParts || nParts != m_nParts ||
            !m_aParts[nNumber].empty()) {
            m_bBroken = true;
            return;
        }
        m_aParts[nNumber] = aSegment.subspan(2);
    }
    std::vector<std::uint8_t> aWhole() const
    {
        std::vector<std::uint8_t> aProfile;
        for (std::size_t i = 1; i <= m_nParts && !m_bBroken; ++i) {
            if (m_aParts[i].empty() || aProfile.size() > kProfileLimit)
                return {};
            aProfile.insert(aProfile.end(), m_aParts[i].begin(), m_aParts[i].end());
        }
        return aProfile;
    }

private:
    std::array<Bytes, 256> m_aParts;
    std::size_t m_nParts = 0;
    bool m_bBroken = false;
};
}  // namespace

// The IPTC datasets among Photoshop's resources: each "8BIM", a number, a name and its bytes, both filled up
// to even lengths.
static std::vector<std::uint8_t> aIptcOfResources(Bytes aResources)
{
    ByteReader objReader(aResources);
    while (objReader.Left() >= 12) {
        const Bytes aMark = objReader.Take(4);
        const std::uint16_t nNumber = objReader.U16Be();
        const std::uint8_t nName = objReader.U8();
        objReader.Take(nName % 2 == 0 ? nName + 1u : nName);
        const std::uint64_t nSize = objReader.U32Be();
        const Bytes aData = objReader.Take(nSize);
        if (!bBeginsWith(aMark, "8BIM") || objReader.Failed())
            break;
        if (nNumber == kIptcResource && !aData.empty() && aData[0] == 0x1C)
            return aCopy(aData);
        objReader.Take(nSize % 2 != 0 && objReader.Left() > 0 ? 1 : 0);
    }
    return {};
}

static void ReadFrame(Bytes aSegment, std::uint8_t nMarker, JpegSegments& objSegments)
{
    ByteReader objReader(aSegment);
    objReader.U8();  // bits a sample
    const std::uint16_t nHeight = objReader.U16Be();
    const std::uint16_t nWidth = objReader.U16Be();
    if (objReader.Failed() || objSegments.bHasFrame)
        return;
    objSegments.bHasFrame = true;
    objSegments.nWidth = nWidth;
    objSegments.nHeight = nHeight;
    objSegments.bArithmetic = nMarker > 0xC8;
}

JpegSegments objReadSegments(Bytes aFile)
{
    JpegSegments objSegments;
    ProfileParts objProfile;
    std::vector<std::uint8_t> aResources;
    ByteReader objReader(aFile);
    objReader.Take(2);
    while (!objReader.Failed()) {
        // Between segments anything but a marker is skipped, as decoders do.
        std::uint8_t nMarker = objReader.U8();
        if (nMarker != 0xFF)
            continue;
        while (nMarker == 0xFF && !objReader.Failed())
            nMarker = objReader.U8();
        const bool bAlone = nMarker == 0x00 || nMarker == 0x01 || (nMarker >= 0xD0 && nMarker <= 0xD8);
        if (bAlone)
            continue;
        if (nMarker == 0xD9)
            break;
        if (nMarker == 0xDA) {
            objSegments.nBytesOfScans = objReader.Left();
            break;
        }
        const std::uint16_t nLength = objReader.U16Be();
        const Bytes aSegment = objReader.Take(nLength < 2 ? 0u : nLength - 2u);
        if (nMarker >= 0xC0 && nMarker <= 0xCF && nMarker != 0xC4 && nMarker != 0xC8 && nMarker != 0xCC)
            ReadFrame(aSegment, nMarker, objSegments);
        else if (nMarker == 0xE1 && bBeginsWith(aSegment, kExifName.substr(0, 5)) && aSegment.size() > 6 &&
                 objSegments.objMetadata.exif.empty())
            objSegments.objMetadata.exif = aCopy(aSegment.subspan(6));
        else if (nMarker == 0xE1 && bBeginsWith(aSegment, kXmpName) && objSegments.objMetadata.xmp.empty())
            objSegments.objMetadata.xmp = aCopy(aSegment.subspan(kXmpName.size()));
        else if (nMarker == 0xE2 && bBeginsWith(aSegment, kIccName))
            objProfile.Add(aSegment.subspan(kIccName.size()));
        else if (nMarker == 0xED && bBeginsWith(aSegment, kPhotoshopName))
            aResources.insert(aResources.end(), aSegment.begin() + kPhotoshopName.size(), aSegment.end());
    }
    objSegments.objMetadata.iptc = aIptcOfResources(aResources);
    objSegments.aIccProfile = objProfile.aWhole();
    return objSegments;
}

static JpegSegment objSegment(int nApplication, std::string_view sName, Bytes aBytes)
{
    JpegSegment objResult{nApplication, {sName.begin(), sName.end()}};
    objResult.aBytes.insert(objResult.aBytes.end(), aBytes.begin(), aBytes.end());
    return objResult;
}

// The packet without the blanks before its end mark, which are only room for editing it in place.
static std::vector<std::uint8_t> aWithoutPadding(const std::vector<std::uint8_t>& aXmp)
{
    static constexpr std::string_view kEnd = "<?xpacket end"sv;
    const auto itEnd = std::find_end(aXmp.begin(), aXmp.end(), kEnd.begin(), kEnd.end());
    const auto bBlank = [](std::uint8_t n) { return n == ' ' || n == '\n' || n == '\r' || n == '\t'; };
    const auto itPadding = std::find_if_not(std::make_reverse_iterator(itEnd), aXmp.rend(), bBlank).base();
    std::vector<std::uint8_t> aShort(aXmp.begin(), itPadding);
    aShort.insert(aShort.end(), itEnd, aXmp.end());
    return aShort;
}

static std::vector<std::uint8_t> aResourceOfIptc(Bytes aIptc)
{
    std::vector<std::uint8_t> aResource = {'8', 'B', 'I', 'M', kIptcResource >> 8, kIptcResource & 0xFF,
                                           0,   0};
    for (const unsigned nShift : {24u, 16u, 8u, 0u})
        aResource.push_back(static_cast<std::uint8_t>(aIptc.size() >> nShift));
    aResource.insert(aResource.end(), aIptc.begin(), aIptc.end());
    aResource.resize((aResource.size() + 1) / 2 * 2);
    return aResource;
}

std::vector<JpegSegment> aSegmentsToWrite(const ImageMetadata& objMetadata, Bytes aIccProfile)
{
    std::vector<JpegSegment> aSegments;
    const auto AddIfItFits = [&](JpegSegment objNew) {
        if (objNew.aBytes.size() <= kLongestSegment)
            aSegments.push_back(std::move(objNew));
    };
    if (!objMetadata.exif.empty())
        AddIfItFits(objSegment(1, kExifName, objMetadata.exif));
    if (objMetadata.xmp.size() + kXmpName.size() > kLongestSegment)
        AddIfItFits(objSegment(1, kXmpName, aWithoutPadding(objMetadata.xmp)));
    else if (!objMetadata.xmp.empty())
        AddIfItFits(objSegment(1, kXmpName, objMetadata.xmp));
    if (!objMetadata.iptc.empty())
        AddIfItFits(objSegment(13, kPhotoshopName, aResourceOfIptc(objMetadata.iptc)));

    const std::size_t nPart = kLongestSegment - kIccName.size() - 2;
    const std::size_t nParts = (aIccProfile.size() + nPart - 1) / nPart;
    for (std::size_t i = 0; i < nParts && nParts <= 255; ++i) {
        JpegSegment objPart = objSegment(2, kIccName, {});
        objPart.aBytes.push_back(static_cast<std::uint8_t>(i + 1));
        objPart.aBytes.push_back(static_cast<std::uint8_t>(nParts));
        const Bytes aPart = aIccProfile.subspan(i * nPart, std::min(nPart, aIccProfile.size() - i * nPart));
        objPart.aBytes.insert(objPart.aBytes.end(), aPart.begin(), aPart.end());
        aSegments.push_back(std::move(objPart));
    }
    return aSegments;
}
