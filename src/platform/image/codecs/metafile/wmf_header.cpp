// Reads the headers of a WMF and counts through its records.
#include "src/platform/image/codecs/metafile/wmf_header.h"

static constexpr std::uint32_t kPlaceable = 0x9AC6CDD7;
static constexpr std::uint64_t kPlaceableSize = 22;
static constexpr std::uint16_t kHeaderWords = 9;
static constexpr std::uint8_t kSetWindowOrg = 0x0B;
static constexpr std::uint8_t kSetWindowExt = 0x0C;

static bool bIsPlainHeader(Bytes aHead)
{
    ByteReader rd(aHead);
    const std::uint16_t nKind = rd.U16Le();
    const std::uint16_t nWords = rd.U16Le();
    const std::uint16_t nVersion = rd.U16Le();
    rd.Take(4 + 2 + 4 + 2);
    return !rd.Failed() && (nKind == 1 || nKind == 2) && nWords == kHeaderWords &&
           (nVersion == 0x0100 || nVersion == 0x0300);
}

bool bIsWmf(Bytes aHead)
{
    if (ByteReader(aHead).U32Le() == kPlaceable)
        return aHead.size() > kPlaceableSize && bIsPlainHeader(aHead.subspan(kPlaceableSize));
    return bIsPlainHeader(aHead);
}

std::optional<WmfHeader> objReadWmfHeader(Bytes aFile)
{
    if (!bIsWmf(aFile))
        return std::nullopt;
    WmfHeader objHeader;
    ByteReader rd(aFile);
    objHeader.bPlaceable = rd.U32Le() == kPlaceable;
    if (objHeader.bPlaceable) {
        rd.U16Le();  // handle
        objHeader.dLeft = rd.I16Le();
        objHeader.dTop = rd.I16Le();
        objHeader.dWidth = rd.I16Le() - objHeader.dLeft;
        objHeader.dHeight = rd.I16Le() - objHeader.dTop;
        objHeader.dUnitsPerInch = rd.U16Le();
        rd.Take(4 + 2);  // reserved, checksum: many writers get it wrong
    } else
        rd = ByteReader(aFile);
    rd.Take(2 + 2 + 2 + 4);  // kind, words, version, size
    objHeader.nObjects = rd.U16Le();
    rd.Take(4 + 2);
    objHeader.nRecordsOffset = aFile.size() - rd.Left();
    if (rd.Failed() || (objHeader.bPlaceable && (objHeader.dWidth == 0 || objHeader.dHeight == 0)))
        return std::nullopt;
    return objHeader;
}

WmfRecords objWalkWmf(Bytes aRecords)
{
    WmfRecords objResult;
    for (;;) {
        ByteReader rd(aRecords);
        const std::uint64_t nSize = std::uint64_t{rd.U32Le()} * 2;
        const std::uint16_t nFunction = rd.U16Le();
        if (rd.Failed() || nSize < 6 || nSize > aRecords.size())
            return objResult;
        const auto nNumber = static_cast<std::uint8_t>(nFunction);
        const std::int16_t iY = rd.I16Le();
        const std::int16_t iX = rd.I16Le();
        if (nNumber == kSetWindowOrg && nSize >= 10 && !objResult.dWindowLeft) {
            objResult.dWindowLeft = iX;
            objResult.dWindowTop = iY;
        } else if (nNumber == kSetWindowExt && nSize >= 10 && !objResult.dWindowWidth && iX != 0 && iY != 0) {
            objResult.dWindowWidth = iX;
            objResult.dWindowHeight = iY;
        }
        if (nFunction == 0) {
            objResult.bWhole = true;
            return objResult;
        }
        aRecords = aRecords.subspan(nSize);
    }
}
