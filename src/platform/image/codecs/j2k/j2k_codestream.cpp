// Walks the markers of a JPEG 2000 codestream (ISO/IEC 15444-1, annexes A and B).
#include "src/platform/image/codecs/j2k/j2k_codestream.h"

#include <algorithm>
#include <array>

#include "src/platform/image/base/limits.h"

static constexpr std::uint16_t kSiz = 0xFF51, kCod = 0xFF52, kCoc = 0xFF53, kSot = 0xFF90, kSod = 0xFF93,
                               kEoc = 0xFFD9;
static constexpr std::uint64_t kMostComponents = 64;
static constexpr std::uint64_t kMostSamples = 4 * kMaxMegapixels * 1'000'000;
static constexpr std::uint64_t kMostTiles = 65535;
static constexpr std::uint64_t kMostTileComponents = 262144;
static constexpr std::uint64_t kMostCodeBlocks =
    8'000'000;                                        // of at least 16 x 16 samples in the largest pictures
static constexpr std::uint64_t kTilePartHeader = 12;  // bytes of the SOT segment with its marker

static std::uint64_t UpDivided(std::uint64_t nValue, std::uint64_t nBy)
{
    return (nValue + nBy - 1) / nBy;
}

std::uint64_t J2kSize::TilesAcross() const
{
    return UpDivided(nRight - nTileLeft, nTileWidth);
}

std::uint64_t J2kSize::TilesDown() const
{
    return UpDivided(nBottom - nTileTop, nTileHeight);
}

static bool bReadSize(Bytes aSegment, J2kSize& objSize)
{
    ByteReader rd(aSegment);
    rd.U16Be();  // capabilities
    objSize.nRight = rd.U32Be();
    objSize.nBottom = rd.U32Be();
    objSize.nLeft = rd.U32Be();
    objSize.nTop = rd.U32Be();
    objSize.nTileWidth = rd.U32Be();
    objSize.nTileHeight = rd.U32Be();
    objSize.nTileLeft = rd.U32Be();
    objSize.nTileTop = rd.U32Be();
    const std::uint64_t nComponents = rd.U16Be();
    if (rd.Failed() || nComponents == 0 || nComponents > kMostComponents)
        return false;
    std::uint64_t nLeastX = 256, nLeastY = 256, nSamples = 0;
    for (std::uint64_t i = 0; i < nComponents; ++i) {
        rd.U8();  // precision, which the library checks
        const J2kComponent objComponent{rd.U8(), rd.U8()};
        if (rd.Failed() || objComponent.nStepX == 0 || objComponent.nStepY == 0)
            return false;
        nLeastX = std::min<std::uint64_t>(nLeastX, objComponent.nStepX);
        nLeastY = std::min<std::uint64_t>(nLeastY, objComponent.nStepY);
        objSize.aComponents.push_back(objComponent);
    }
    const J2kSize& o = objSize;
    const bool bTiles = o.nTileWidth > 0 && o.nTileHeight > 0 && o.nTileLeft <= o.nLeft &&
                        o.nTileTop <= o.nTop && std::uint64_t{o.nTileLeft} + o.nTileWidth > o.nLeft &&
                        std::uint64_t{o.nTileTop} + o.nTileHeight > o.nTop;
    if (!bTiles || o.nLeft >= o.nRight || o.nTop >= o.nBottom)
        return false;
    const std::uint64_t nWidth = UpDivided(o.nRight, nLeastX) - UpDivided(o.nLeft, nLeastX);
    const std::uint64_t nHeight = UpDivided(o.nBottom, nLeastY) - UpDivided(o.nTop, nLeastY);
    for (const J2kComponent& objComponent : o.aComponents)
        nSamples += UpDivided(o.nRight - o.nLeft, objComponent.nStepX) *
                    UpDivided(o.nBottom - o.nTop, objComponent.nStepY);
    const std::uint64_t nTiles = o.TilesAcross() * o.TilesDown();
    return IsSizeAllowed(nWidth, nHeight) && nSamples <= kMostSamples && nTiles <= kMostTiles &&
           nTiles * nComponents <= kMostTileComponents;
}

/// How a tile's component is cut into precincts and code blocks.
struct CodingStyle {
    std::uint64_t nLayers = 1;
    std::uint32_t nLevels = 0;
    std::uint32_t nBlockWidth = 6, nBlockHeight = 6;           ///< as powers of two
    std::array<std::uint32_t, 33> aPrecinctX{}, aPrecinctY{};  ///< as powers of two, by resolution
};

struct Amount {
    std::uint64_t nPackets = 0;
    std::uint64_t nCodeBlocks = 0;
};

struct Interval {
    std::uint64_t nFirst, nEnd;

    Interval DividedUp(std::uint64_t nBy) const { return {UpDivided(nFirst, nBy), UpDivided(nEnd, nBy)}; }
    /// How many cells of a grid of steps of 2^nPower it touches.
    std::uint64_t Cells(std::uint32_t nPower) const
    {
        return nEnd > nFirst ? UpDivided(nEnd, std::uint64_t{1} << nPower) - (nFirst >> nPower) : 0;
    }
};

// The part of the picture that a tile covers along one axis.
static Interval TileAlong(std::uint64_t nTile, std::uint64_t nTileFirst, std::uint64_t nTileSize,
                          std::uint64_t nFirst, std::uint64_t nEnd)
{
    return {std::max(nTileFirst + nTile * nTileSize, nFirst),
            std::min(nTileFirst + (nTile + 1) * nTileSize, nEnd)};
}

static void Add(Amount& objAmount, const J2kSize& objSize, std::uint64_t nTile, std::size_t nComponent,
                const CodingStyle& objStyle)
{
    const J2kComponent& objComponent = objSize.aComponents[nComponent];
    const std::uint64_t nAcross = objSize.TilesAcross();
    const Interval objX =
        TileAlong(nTile % nAcross, objSize.nTileLeft, objSize.nTileWidth, objSize.nLeft, objSize.nRight)
            .DividedUp(objComponent.nStepX);
    const Interval objY =
        TileAlong(nTile / nAcross, objSize.nTileTop, objSize.nTileHeight, objSize.nTop, objSize.nBottom)
            .DividedUp(objComponent.nStepY);
    for (std::uint32_t nResolution = 0; nResolution <= objStyle.nLevels; ++nResolution) {
        const std::uint64_t nScale = std::uint64_t{1} << (objStyle.nLevels - nResolution);
        const Interval objAcross = objX.DividedUp(nScale), objDown = objY.DividedUp(nScale);
        const std::uint32_t nPrecinctX = objStyle.aPrecinctX[nResolution],
                            nPrecinctY = objStyle.aPrecinctY[nResolution];
        const std::uint64_t nPrecincts = objAcross.Cells(nPrecinctX) * objDown.Cells(nPrecinctY);
        objAmount.nPackets += nPrecincts * objStyle.nLayers;
        // Above the lowest resolution a precinct lies in three bands of half its size. A block is no larger
        // than that.
        const std::uint32_t nHalf = nResolution == 0 ? 0 : 1;
        const auto nBlocks = [&](const Interval& o, std::uint32_t nBlock, std::uint32_t nPrecinct) {
            return o.DividedUp(nHalf + 1).Cells(std::min(nBlock, nPrecinct - std::min(nHalf, nPrecinct)));
        };
        objAmount.nCodeBlocks += (nHalf == 0 ? 1 : 3) * nBlocks(objAcross, objStyle.nBlockWidth, nPrecinctX) *
                                 nBlocks(objDown, objStyle.nBlockHeight, nPrecinctY);
    }
}

// Reads the part that COD and COC segments have in common.
static bool bReadStyle(ByteReader& rd, bool bPrecincts, CodingStyle& objStyle)
{
    objStyle.nLevels = rd.U8();
    objStyle.nBlockWidth = rd.U8() + 2u;
    objStyle.nBlockHeight = rd.U8() + 2u;
    rd.Take(2);  // the blocks' coding passes and the wavelet
    if (rd.Failed() || objStyle.nLevels > 32 || objStyle.nBlockWidth > 10 || objStyle.nBlockHeight > 10)
        return false;
    for (std::size_t i = 0; i <= objStyle.nLevels; ++i) {
        const std::uint8_t nPowers = bPrecincts ? rd.U8() : 0xFF;
        objStyle.aPrecinctX[i] = nPowers & 15;
        objStyle.aPrecinctY[i] = nPowers >> 4;
    }
    return !rd.Failed();
}

/// The walk over one codestream.
class Walk
{
public:
    Walk(Bytes aCodestream, J2kSize& objSize) : m_aBytes(aCodestream), m_objSize(objSize) {}
    bool bDone();

private:
    bool bMainHeader();
    bool bTilePart();
    bool bTakeStyle(std::uint16_t nMarker, Bytes aSegment, std::int64_t nTile);
    bool bEveryTileWhole() const;

    std::uint64_t Position() const { return m_aBytes.size() - m_rd.Left(); }

    struct Tile {
        std::uint8_t nParts = 0;
        std::uint8_t nPartsClaimed = 0;  ///< 0 where no part says it
    };
    Bytes m_aBytes;
    J2kSize& m_objSize;
    ByteReader m_rd{m_aBytes};
    std::uint64_t m_nLayers = 1;
    std::vector<Tile> m_aTiles;
    std::size_t m_nStyles = 0;  ///< COD and COC segments of the header that is being read
};

// nTile is -1 in the main header, where a style counts for all tiles.
bool Walk::bTakeStyle(std::uint16_t nMarker, Bytes aSegment, std::int64_t nTile)
{
    ByteReader rd(aSegment);
    const std::size_t nComponents = m_objSize.aComponents.size();
    // One for all components and one for each are all that make sense; each costs a look at every tile.
    if (++m_nStyles > nComponents + 1)
        return false;
    std::size_t nFirst = 0, nEnd = nComponents;
    CodingStyle objStyle;
    if (nMarker == kCoc) {
        nFirst = rd.U8();  // two bytes only above 256 components
        nEnd = nFirst + 1;
    }
    const bool bPrecincts = (rd.U8() & 1) != 0;
    if (nMarker == kCod) {
        rd.U8();  // order of the packets
        m_nLayers = rd.U16Be();
        rd.U8();  // colour transform
    }
    objStyle.nLayers = m_nLayers;
    if (nEnd > nComponents || !bReadStyle(rd, bPrecincts, objStyle))
        return false;
    Amount objAmount;
    const auto nTiles = static_cast<std::int64_t>(m_aTiles.size());
    for (std::int64_t n = nTile < 0 ? 0 : nTile; n < (nTile < 0 ? nTiles : nTile + 1); ++n)
        for (std::size_t nComponent = nFirst; nComponent < nEnd; ++nComponent)
            Add(objAmount, m_objSize, static_cast<std::uint64_t>(n), nComponent, objStyle);
    // The smallest packet is a byte.
    return objAmount.nPackets <= m_aBytes.size() && objAmount.nCodeBlocks <= kMostCodeBlocks;
}

bool Walk::bMainHeader()
{
    m_rd.U16Be();  // the start, which made the file one of this format
    bool bStyle = false;
    for (;;) {
        if (m_rd.Left() >= 2 && m_aBytes[Position()] == (kSot >> 8) &&
            m_aBytes[Position() + 1] == (kSot & 255))
            return !m_aTiles.empty() && bStyle;
        const std::uint16_t nMarker = m_rd.U16Be();
        const std::uint16_t nLength = m_rd.U16Be();
        if (m_rd.Failed() || nMarker < 0xFF00 || nLength < 2 || (m_aTiles.empty() && nMarker != kSiz))
            return false;
        const Bytes aSegment = m_rd.Take(nLength - 2u);
        if (nMarker == kSiz) {
            if (!m_aTiles.empty() || m_rd.Failed() || !bReadSize(aSegment, m_objSize))
                return false;
            const std::uint64_t nTiles = m_objSize.TilesAcross() * m_objSize.TilesDown();
            if (nTiles * (kTilePartHeader + 2) > m_aBytes.size())
                return false;
            m_aTiles.resize(nTiles);
        } else if (nMarker == kCod || nMarker == kCoc) {
            bStyle = bStyle || nMarker == kCod;
            if (m_rd.Failed() || !bTakeStyle(nMarker, aSegment, -1))
                return false;
        }
    }
}

bool Walk::bTilePart()
{
    const std::uint64_t nStart = Position();
    m_rd.U16Be();  // SOT
    const std::uint16_t nSegment = m_rd.U16Be();
    const std::uint16_t nTile = m_rd.U16Be();
    const std::uint32_t nLength = m_rd.U32Be();
    m_rd.U8();  // number of the part
    const std::uint8_t nParts = m_rd.U8();
    if (m_rd.Failed() || nSegment != 10 || nTile >= m_aTiles.size() || m_aTiles[nTile].nParts == 255)
        return false;
    ++m_aTiles[nTile].nParts;
    m_aTiles[nTile].nPartsClaimed = std::max(m_aTiles[nTile].nPartsClaimed, nParts);
    std::uint64_t nEnd = nStart + nLength;
    if (nLength == 0) {
        // The last part, as long as what is left but the end marker, which must then be there.
        const std::size_t nSize = m_aBytes.size();
        if (m_aBytes[nSize - 2] != (kEoc >> 8) || m_aBytes[nSize - 1] != (kEoc & 255))
            return false;
        nEnd = nSize - 2;
    }
    if (nEnd > m_aBytes.size())
        return false;
    const std::uint64_t nLayersOfMain = m_nLayers;
    m_nStyles = 0;
    for (;;) {
        const std::uint16_t nMarker = m_rd.U16Be();
        if (nMarker == kSod)
            break;
        const std::uint16_t nMarkerLength = m_rd.U16Be();
        if (m_rd.Failed() || nMarker < 0xFF00 || nMarkerLength < 2)
            return false;
        const Bytes aSegment = m_rd.Take(nMarkerLength - 2u);
        if ((nMarker == kCod || nMarker == kCoc) && (m_rd.Failed() || !bTakeStyle(nMarker, aSegment, nTile)))
            return false;
    }
    m_nLayers = nLayersOfMain;
    if (m_rd.Failed() || Position() > nEnd)
        return false;
    m_rd.Take(nEnd - Position());
    return true;
}

bool Walk::bEveryTileWhole() const
{
    return std::all_of(m_aTiles.begin(), m_aTiles.end(), [](const Tile& objTile) {
        return objTile.nParts > 0 && (objTile.nPartsClaimed == 0 || objTile.nParts >= objTile.nPartsClaimed);
    });
}

bool Walk::bDone()
{
    if (!bMainHeader())
        return false;
    while (m_rd.Left() >= 2 && m_aBytes[Position()] == (kSot >> 8) &&
           m_aBytes[Position() + 1] == (kSot & 255))
        if (!bTilePart())
            return false;
    return m_rd.U16Be() == kEoc && bEveryTileWhole();
}

bool bMayDecode(Bytes aCodestream, J2kSize& objSize)
{
    return Walk(aCodestream, objSize).bDone();
}
