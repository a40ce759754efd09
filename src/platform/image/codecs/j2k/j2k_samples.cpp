// Scales samples of any precision and spacing to bytes.
#include "src/platform/image/codecs/j2k/j2k_samples.h"

#include <algorithm>

static constexpr OPJ_UINT32 kTableBits = 16;

static std::uint32_t UpDivided(std::uint32_t nValue, std::uint32_t nBy)
{
    return nValue / nBy + (nValue % nBy != 0 ? 1 : 0);
}

PixelGrid objPixelGrid(const opj_image_t& objImage, std::uint32_t nStepX, std::uint32_t nStepY)
{
    PixelGrid objGrid{nStepX, nStepY, UpDivided(objImage.x0, nStepX), UpDivided(objImage.y0, nStepY), 0, 0};
    objGrid.nWidth = UpDivided(objImage.x1, nStepX) - objGrid.nFirstX;
    objGrid.nHeight = UpDivided(objImage.y1, nStepY) - objGrid.nFirstY;
    return objGrid;
}

// The sample that lies at or before a pixel, along one axis.
static std::uint32_t SampleAt(std::uint32_t nPixel, std::uint32_t nFirst, std::uint32_t nStep,
                              std::uint32_t nSampleStep, std::uint32_t nFirstSample, std::uint32_t nSamples)
{
    const std::uint64_t nSample = (std::uint64_t{nFirst} + nPixel) * nStep / nSampleStep;
    const std::uint64_t nFromFirst = nSample - std::min<std::uint64_t>(nSample, nFirstSample);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(nFromFirst, nSamples - 1));
}

SampleRows::SampleRows(const opj_image_comp_t& objComponent, const PixelGrid& objGrid)
    : m_pComponent(&objComponent),
      m_objGrid(objGrid),
      m_nMost((std::uint64_t{1} << objComponent.prec) - 1),
      m_nOffset(objComponent.sgnd ? std::int64_t{1} << (objComponent.prec - 1) : 0)
{
    m_aColumns.resize(objGrid.nWidth);
    for (std::uint32_t x = 0; x < objGrid.nWidth; ++x) {
        m_aColumns[x] =
            SampleAt(x, objGrid.nFirstX, objGrid.nStepX, objComponent.dx, objComponent.x0, objComponent.w);
        m_bDirect = m_bDirect && m_aColumns[x] == x;
    }
    m_bDirect = m_bDirect && objComponent.prec == 8 && !objComponent.sgnd;
    if (!m_bDirect && objComponent.prec <= kTableBits)
        for (std::uint64_t nValue = 0; nValue <= m_nMost; ++nValue)
            m_aScaled.push_back(nScaled(nValue));
}

std::uint8_t SampleRows::nScaled(std::uint64_t nValue) const
{
    return static_cast<std::uint8_t>((nValue * 255 + m_nMost / 2) / m_nMost);
}

std::uint8_t SampleRows::nByte(std::int64_t nSample) const
{
    const auto nMost = static_cast<std::int64_t>(m_nMost);
    const auto nValue = static_cast<std::uint64_t>(std::clamp<std::int64_t>(nSample + m_nOffset, 0, nMost));
    return m_aScaled.empty() ? nScaled(nValue) : m_aScaled[nValue];
}

void SampleRows::Read(std::uint32_t y, std::uint8_t* pOut, std::size_t nStride) const
{
    const std::uint32_t nRow =
        SampleAt(y, m_objGrid.nFirstY, m_objGrid.nStepY, m_pComponent->dy, m_pComponent->y0, m_pComponent->h);
    const OPJ_INT32* pRow = m_pComponent->data + std::size_t{nRow} * m_pComponent->w;
    if (m_bDirect)
        for (std::uint32_t x = 0; x < m_objGrid.nWidth; ++x)
            pOut[x * nStride] = static_cast<std::uint8_t>(std::clamp(pRow[x], 0, 255));
    else
        for (std::uint32_t x = 0; x < m_objGrid.nWidth; ++x)
            pOut[x * nStride] = nByte(pRow[m_aColumns[x]]);
}
