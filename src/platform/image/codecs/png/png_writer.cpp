// Writes PNG files.
#include "src/platform/image/codecs/png/png_writer.h"

#include <array>
#include <utility>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_metadata.h"
#include "src/platform/image/codecs/png/png_plan.h"

static bool WriteHeader(OutputFile& objOut, const PngHeader& objHeader)
{
    std::array<std::uint8_t, 13> aChunk{};
    for (std::size_t i = 0; i < 4; ++i) {
        aChunk[i] = static_cast<std::uint8_t>(objHeader.nWidth >> (24 - 8 * i));
        aChunk[4 + i] = static_cast<std::uint8_t>(objHeader.nHeight >> (24 - 8 * i));
    }
    aChunk[8] = static_cast<std::uint8_t>(objHeader.nDepth);
    aChunk[9] = static_cast<std::uint8_t>(objHeader.objColour);
    return WritePngChunk(objOut, nPngType("IHDR"), aChunk);
}

static bool WritePalette(OutputFile& objOut, const PngLayout& objLayout)
{
    return (objLayout.aPalette.empty() || WritePngChunk(objOut, nPngType("PLTE"), objLayout.aPalette)) &&
           (objLayout.aTransparency.empty() ||
            WritePngChunk(objOut, nPngType("tRNS"), objLayout.aTransparency));
}

static bool WritePixels(OutputFile& objOut, const ImageBuffer& aImage, PngPlan& objPlan)
{
    const auto nHeight = static_cast<std::size_t>(aImage.height);
    PngRowSource objRows(aImage, objPlan);
    PngDeflater objDeflater(objOut, objRows.nFilteredBytes(), nHeight, objPlan.objLayout.nPixelBytes(),
                            objPlan.objContent);
    for (std::size_t y = 0; y < nHeight; ++y) {
        objRows.Make(y, objDeflater.pNextRow());
        if (!objDeflater.RowDone())
            return false;
    }
    return true;
}

bool EncodePng(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    PngPlan objPlan = objPlanFor(aImage);
    const PngColour objColour = objPlan.objLayout.objColour;
    const bool bGrey = objColour == PngColour::Grey || objColour == PngColour::GreyAlpha;
    return objOut.Write(kPngSignature) && WriteHeader(objOut, objPlan.objLayout.objHeader(aImage)) &&
           WritePngMetadata(objOut, aImage, bGrey, objSettings.objTexts) &&
           WritePalette(objOut, objPlan.objLayout) && WritePixels(objOut, aImage, objPlan) &&
           WritePngChunk(objOut, nPngType("IEND"), {});
}
