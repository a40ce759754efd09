// Decides how a picture is written as PNG.
#include "src/platform/image/codecs/png/png_plan.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/codecs/png/filters/png_filter.h"
#include "src/platform/image/deflate/run_length.h"

static constexpr std::size_t kSamples = 3;
static constexpr std::size_t kSampleMost = 24 * 1024;  // bytes of rows in each
static constexpr std::size_t kSampleShare = 48;        // of the picture, but for small ones
static constexpr std::size_t kSampleLeast = 4 * 1024;
// Percent of pixels that are what their neighbours are. A photograph's sky and shadows may have many of them.
static constexpr std::size_t kFlat = 40;
static constexpr std::size_t kGraphic = 65;

PngRowSource::PngRowSource(const ImageBuffer& aImage, PngPlan& objPlan)
    : m_aImage(aImage), m_objPlan(objPlan), m_nBytes(objPlan.objLayout.objHeader(aImage).nRowBytes())
{
    m_aHere.resize(m_nBytes + 2 * kPngRowSlack, 0);
    m_aAbove.resize(m_nBytes + 2 * kPngRowSlack, 0);
}

void PngRowSource::Make(std::size_t y, std::uint8_t* pOut)
{
    if (!m_objPlan.bFilter) {
        *pOut = static_cast<std::uint8_t>(PngFilter::None);
        MakePngRow(m_objPlan.objLayout, m_aImage, y, pOut + 1);
        return;
    }
    std::swap(m_aHere, m_aAbove);
    if (y != m_nNext || y == 0)
        std::fill(m_aAbove.begin(), m_aAbove.end(), std::uint8_t{0});
    m_nNext = y + 1;
    MakePngRow(m_objPlan.objLayout, m_aImage, y, m_aHere.data() + kPngRowSlack);
    const PngFilterRow objRow = {m_aHere.data() + kPngRowSlack, m_aAbove.data() + kPngRowSlack, m_nBytes,
                                 m_objPlan.objLayout.nPixelBytes()};
    const PngFilters& objFilters = objPngFilters();
    objFilters.Apply(objFilters.Choose(objRow), objRow, pOut);
}

// Bits that the picture would take by the plan, going by samples that are deflated each for itself. A small
// picture is one sample.
static std::uint64_t nSampleBits(const ImageBuffer& aImage, PngPlan& objPlan)
{
    const auto nHeight = static_cast<std::size_t>(aImage.height);
    PngRowSource objRows(aImage, objPlan);
    const std::size_t nRowBytes = objRows.nFilteredBytes();
    // The same rows for every plan, however wide their rows are.
    const std::size_t nPixelRow =
        std::size_t{static_cast<std::uint32_t>(aImage.width)} * static_cast<std::size_t>(aImage.channels);
    const std::size_t nSample = std::clamp(nPixelRow * nHeight / kSampleShare, kSampleLeast, kSampleMost);
    const std::size_t nRows = std::min(std::max<std::size_t>(nSample / nPixelRow, 2), nHeight);
    PixelBytes aBuffer;
    aBuffer.resize(PngQuickCopies::kFrontSlack + nRows * nRowBytes + 2 * kPngRowSlack, 0);
    std::uint8_t* const pRows = aBuffer.data() + PngQuickCopies::kFrontSlack;
    const std::size_t nBytes = nRows * nRowBytes;
    PngTokens aTokens;
    PngQuickCopies objFinder;
    const std::size_t nSamples = nRows < nHeight ? kSamples : 1;
    std::uint64_t nBits = 0;
    for (std::size_t i = 0; i < nSamples; ++i) {
        const std::size_t nFirst = (nHeight - nRows) * (2 * i + 1) / (2 * nSamples);
        for (std::size_t y = 0; y < nRows; ++y)
            objRows.Make(nFirst + y, pRows + y * nRowBytes);
        objFinder.Forget();
        objFinder.Find(pRows, 0, nBytes, false, aTokens);
        const std::uint64_t nWithCopies = PngBlock(aTokens, pRows, nBytes).Bits();
        FindPngRuns(pRows, nBytes, 0, objPlan.objLayout.nPixelBytes(), FirstPngCosts(), aTokens);
        nBits += std::min(nWithCopies, PngBlock(aTokens, pRows, nBytes).Bits());
    }
    return nBits * nHeight / (nSamples * nRows) +
           8 * (objPlan.objLayout.aPalette.size() + objPlan.objLayout.aTransparency.size());
}

// The percentage of pixels in the sampled rows that are what their left neighbours are.
static std::size_t nFlatness(const ImageBuffer& aImage)
{
    constexpr std::size_t kRows = 16;
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    const auto nHeight = static_cast<std::size_t>(aImage.height);
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    std::size_t nSame = 0;
    for (std::size_t i = 0; i < kRows; ++i) {
        const std::uint8_t* const p =
            aImage.bytes.data() + nHeight * (2 * i + 1) / (2 * kRows) * nWidth * nChannels;
        for (std::size_t x = 1; x < nWidth; ++x)
            nSame += std::memcmp(p + x * nChannels, p + (x - 1) * nChannels, nChannels) == 0 ? 1 : 0;
    }
    return nSame * 100 / (kRows * nWidth);
}

static PngContent objContentOf(const ImageBuffer& aImage, const PngLayout& objLayout)
{
    if (objLayout.objColour == PngColour::Grey && objLayout.nDepth == 1)
        return PngContent::Scan;
    if (objLayout.objColour == PngColour::Palette || objLayout.nDepth < 8)
        return PngContent::Drawing;
    const std::size_t nFlat = nFlatness(aImage);
    return nFlat > kGraphic ? PngContent::Graphic : nFlat > kFlat ? PngContent::Flat : PngContent::Photograph;
}

PngPlan objPlanFor(const ImageBuffer& aImage)
{
    std::vector<PngLayout> aLayouts = aPngLayouts(aImage);
    const PngContent objContent = objContentOf(aImage, aLayouts[0]);
    std::vector<PngPlan> aPlans;
    for (PngLayout& objLayout : aLayouts) {
        // Differences of numbers packed into bytes mean nothing.
        if (objLayout.nDepth == 8)
            aPlans.push_back({objLayout, true, objContent});
        if (objContent != PngContent::Photograph)
            aPlans.push_back({objLayout, false, objContent});
    }
    std::size_t nBest = 0;
    std::uint64_t nLeast = ~std::uint64_t{0};
    for (std::size_t i = 0; i < aPlans.size() && aPlans.size() > 1; ++i) {
        const std::uint64_t nBits = nSampleBits(aImage, aPlans[i]);
        if (nBits < nLeast) {
            nLeast = nBits;
            nBest = i;
        }
    }
    return std::move(aPlans[nBest]);
}
