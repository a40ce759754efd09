// Counts the colours of a picture and gives up when there are too many for a palette.
#include "src/platform/image/quantiser/quantiser_exact.h"

#include <array>

static constexpr std::size_t kMostColours = 256;

// A hash table of at most 256 colours in 1024 places.
class ColourIndex
{
public:
    /// The index of nColour, a new one if it is new; -1 if there are 256 others.
    std::int32_t Of(std::uint32_t nColour)
    {
        std::size_t nPlace = nColour * 0x9E3779B1u >> 22;
        while (m_aPlaces[nPlace].nIndex >= 0 && m_aPlaces[nPlace].nColour != nColour)
            nPlace = (nPlace + 1) % m_aPlaces.size();
        Place& objPlace = m_aPlaces[nPlace];
        if (objPlace.nIndex < 0) {
            if (m_nColours == kMostColours)
                return -1;
            objPlace = {nColour, static_cast<std::int32_t>(m_nColours++)};
        }
        return objPlace.nIndex;
    }
    std::size_t Count() const { return m_nColours; }

private:
    struct Place {
        std::uint32_t nColour = 0;
        std::int32_t nIndex = -1;
    };
    std::array<Place, 1024> m_aPlaces;
    std::size_t m_nColours = 0;
};

static IndexedImage objGreys(const ImageBuffer& aImage)
{
    std::array<bool, 256> aUsed{};
    for (const std::uint8_t nGrey : aImage.bytes)
        aUsed[nGrey] = true;
    IndexedImage objResult;
    std::array<std::uint8_t, 256> aIndexOf{};
    for (std::size_t i = 0; i < 256; ++i)
        if (aUsed[i]) {
            const auto nGrey = static_cast<std::uint8_t>(i);
            aIndexOf[i] = static_cast<std::uint8_t>(objResult.aPalette.size());
            objResult.aPalette.push_back({nGrey, nGrey, nGrey});
        }
    objResult.aIndexes.resize(aImage.bytes.size());
    for (std::size_t i = 0; i < aImage.bytes.size(); ++i)
        objResult.aIndexes[i] = aIndexOf[aImage.bytes[i]];
    return objResult;
}

std::optional<IndexedImage> objExact(const ImageBuffer& aImage)
{
    if (aImage.channels == 1)
        return objGreys(aImage);
    constexpr std::uint32_t kTransparent = 0x1000000;  // no colour
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nPixels = aImage.bytes.size() / nChannels;
    ColourIndex objColours;
    IndexedImage objResult;
    objResult.aIndexes.reserve(nPixels);  // touched only as far as the colours suffice
    std::uint32_t nLast = ~std::uint32_t{0};
    std::uint8_t nLastIndex = 0;
    const std::uint8_t* pPixel = aImage.bytes.data();
    for (std::size_t i = 0; i < nPixels; ++i, pPixel += nChannels) {
        std::uint32_t nColour = pPixel[0] | static_cast<std::uint32_t>(pPixel[1]) << 8 |
                                static_cast<std::uint32_t>(pPixel[2]) << 16;
        if (nChannels == 4 && pPixel[3] < 128)
            nColour = kTransparent;
        if (nColour != nLast) {
            nLast = nColour;
            const std::int32_t nIndex = objColours.Of(nColour);
            if (nIndex < 0)
                return std::nullopt;
            nLastIndex = static_cast<std::uint8_t>(nIndex);
            if (objColours.Count() > objResult.aPalette.size()) {
                objResult.aPalette.push_back({static_cast<std::uint8_t>(nColour),
                                              static_cast<std::uint8_t>(nColour >> 8),
                                              static_cast<std::uint8_t>(nColour >> 16)});
                if (nColour == kTransparent)
                    objResult.nTransparent = nIndex;
            }
        }
        objResult.aIndexes.push_back(nLastIndex);
    }
    return objResult;
}
