// Creates, encodes and decodes small images.
#include "tests/e2e/support/picture.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <sstream>

#include "tests/e2e/support/program.h"

constexpr std::size_t kHeaders = 54;

Picture objPicture(int lWidth, int lHeight, const std::function<Rgb(int x, int y)>& fnPixel)
{
    Picture objResult{lWidth, lHeight, {}};
    for (int y = 0; y < lHeight; ++y)
        for (int x = 0; x < lWidth; ++x)
            objResult.aPixels.push_back(fnPixel(x, y));
    return objResult;
}

static void PutLittleEndian(std::string& sBytes, std::uint32_t nValue, int lBytes)
{
    for (int l = 0; l < lBytes; ++l, nValue >>= 8)
        sBytes += static_cast<char>(nValue & 255);
}

std::string sBmpOf(const Picture& objPicture)
{
    const std::size_t nRow = (static_cast<std::size_t>(objPicture.lWidth) * 3 + 3) / 4 * 4;
    const std::size_t nPixels = nRow * static_cast<std::size_t>(objPicture.lHeight);
    std::string sFile = "BM";
    PutLittleEndian(sFile, static_cast<std::uint32_t>(kHeaders + nPixels), 4);
    for (const auto& [nValue, lBytes] : {std::pair{0u, 4},
                                         {54u, 4},
                                         {40u, 4},
                                         {static_cast<unsigned>(objPicture.lWidth), 4},
                                         {static_cast<unsigned>(objPicture.lHeight), 4},
                                         {1u, 2},
                                         {24u, 2}})
        PutLittleEndian(sFile, nValue, lBytes);
    sFile.resize(kHeaders, '\0');
    for (int y = objPicture.lHeight - 1; y >= 0; --y) {
        for (int x = 0; x < objPicture.lWidth; ++x)
            for (const std::size_t nChannel : {2u, 1u, 0u})
                sFile += static_cast<char>(objPicture.At(x, y)[nChannel]);
        sFile.resize((sFile.size() - kHeaders + nRow - 1) / nRow * nRow + kHeaders, '\0');
    }
    return sFile;
}

Picture objReferenceDecode(const std::string& sFile)
{
    const std::string sPpm = sReferenceDecode(sFile);
    std::istringstream objHeader(sPpm);
    std::string sMagic;
    int lWidth = 0, lHeight = 0, lMost = 0;
    objHeader >> sMagic >> lWidth >> lHeight >> lMost;
    const auto nPixels = static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight);
    if (sMagic != "P6" || lMost != 255 || sPpm.size() < nPixels * 3)
        return {};
    std::size_t nByte = sPpm.size() - nPixels * 3;
    return objPicture(lWidth, lHeight, [&](int, int) {
        Rgb aPixel{};
        for (int& lChannel : aPixel)
            lChannel = static_cast<unsigned char>(sPpm[nByte++]);
        return aPixel;
    });
}

void PrintTo(const Picture& objPicture, std::ostream* pStream)
{
    *pStream << objPicture.lWidth << "x" << objPicture.lHeight << ":";
    for (std::size_t i = 0; i < std::min<std::size_t>(objPicture.aPixels.size(), 16); ++i)
        *pStream << " " << objPicture.aPixels[i][0] << "," << objPicture.aPixels[i][1] << ","
                 << objPicture.aPixels[i][2];
}
