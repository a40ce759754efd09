// Finds the colours of plain areas, so that these come out without a speckle.
#include "src/platform/image/quantiser/quantiser_flat.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

static constexpr std::size_t kBlock = 8;  // pixels a side
static constexpr std::uint64_t kLeastShare = 512;
static constexpr std::uint32_t kNoColour = 0x1000000;

static std::uint32_t ColourAt(const std::uint8_t* pPixel)
{
    return pPixel[0] | static_cast<std::uint32_t>(pPixel[1]) << 8 |
           static_cast<std::uint32_t>(pPixel[2]) << 16;
}

static bool bPlain(const std::uint8_t* pBlock, std::size_t nChannels, std::size_t nRowBytes)
{
    if (nChannels == 4 && pBlock[3] < 128)
        return false;
    // All bytes but the last pixel's are equal to those one pixel on; all rows are equal to the first.
    if (std::memcmp(pBlock, pBlock + nChannels, (kBlock - 1) * nChannels) != 0)
        return false;
    for (std::size_t nRow = 1; nRow < kBlock; ++nRow)
        if (std::memcmp(pBlock, pBlock + nRow * nRowBytes, kBlock * nChannels) != 0)
            return false;
    return true;
}

std::vector<FlatColour> aFlatColours(const ImageBuffer& aImage)
{
    const auto nWidth = static_cast<std::size_t>(aImage.width),
               nHeight = static_cast<std::size_t>(aImage.height);
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nRowBytes = nWidth * nChannels;
    std::unordered_map<std::uint32_t, std::uint64_t> colCounts;
    for (std::size_t y = 0; y + kBlock <= nHeight; y += kBlock)
        for (std::size_t x = 0; x + kBlock <= nWidth; x += kBlock) {
            const std::uint8_t* pBlock = aImage.bytes.data() + y * nRowBytes + x * nChannels;
            if (bPlain(pBlock, nChannels, nRowBytes))
                colCounts[ColourAt(pBlock)] += kBlock * kBlock;
        }
    std::vector<std::pair<std::uint64_t, std::uint32_t>> aCounts;
    for (const auto& [nColour, nPixels] : colCounts)
        if (nPixels >= nWidth * nHeight / kLeastShare)
            aCounts.emplace_back(nPixels, nColour);
    std::sort(aCounts.rbegin(), aCounts.rend());
    aCounts.resize(std::min(aCounts.size(), kMaxFlatColours));
    std::vector<FlatColour> aFlats;
    for (const auto& [nPixels, nColour] : aCounts)
        aFlats.push_back({{static_cast<std::uint8_t>(nColour), static_cast<std::uint8_t>(nColour >> 8),
                           static_cast<std::uint8_t>(nColour >> 16)},
                          nPixels});
    return aFlats;
}

void TakeFlatColours(const ImageBuffer& aImage, const std::vector<FlatColour>& aFlats, std::size_t nFirst,
                     PixelBytes& aIndexes)
{
    // A hash table with so many empty places that nearly every pixel is settled by one look.
    struct Place {
        std::uint32_t nColour = kNoColour;
        std::uint32_t nIndex = 0;
    };
    std::array<Place, 1024> aPlaces;
    const auto nFirstPlace = [](std::uint32_t nColour) { return nColour * 0x9E3779B1u >> 22; };
    for (std::size_t i = 0; i < aFlats.size(); ++i) {
        const std::uint32_t nColour = ColourAt(aFlats[i].aColour.data());
        std::size_t nPlace = nFirstPlace(nColour);
        while (aPlaces[nPlace].nColour != kNoColour)
            nPlace = (nPlace + 1) % aPlaces.size();
        aPlaces[nPlace] = {nColour, static_cast<std::uint32_t>(nFirst + i)};
    }
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::uint8_t* pPixel = aImage.bytes.data();
    for (std::size_t i = 0; i < aIndexes.size(); ++i, pPixel += nChannels) {
        const std::uint32_t nColour = ColourAt(pPixel);
        std::size_t nPlace = nFirstPlace(nColour);
        while (aPlaces[nPlace].nColour != nColour && aPlaces[nPlace].nColour != kNoColour)
            nPlace = (nPlace + 1) % aPlaces.size();
        if (aPlaces[nPlace].nColour == nColour && (nChannels == 3 || pPixel[3] >= 128))
            aIndexes[i] = static_cast<std::uint8_t>(aPlaces[nPlace].nIndex);
    }
}
