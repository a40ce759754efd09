// Writes PNG files.
#include "src/platform/image/codecs/png/png.h"

#include <array>
#include <utility>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_metadata.h"
#include "src/platform/image/codecs/png/png_plan.h"

static bool WriteHeader(OutputFile& out, const PngHeader& header)
{
    std::array<std::uint8_t, 13> chunk{};
    for (std::size_t i = 0; i < 4; ++i) {
        chunk[i] = static_cast<std::uint8_t>(header.width >> (24 - 8 * i));
        chunk[4 + i] = static_cast<std::uint8_t>(header.height >> (24 - 8 * i));
    }
    chunk[8] = static_cast<std::uint8_t>(header.depth);
    chunk[9] = static_cast<std::uint8_t>(header.colour);
    return WritePngChunk(out, PngType("IHDR"), chunk);
}

static bool WritePalette(OutputFile& out, const PngLayout& layout)
{
    return (layout.palette.empty() || WritePngChunk(out, PngType("PLTE"), layout.palette)) &&
           (layout.transparency.empty() || WritePngChunk(out, PngType("tRNS"), layout.transparency));
}

static bool WritePixels(OutputFile& out, const ImageBuffer& image, PngPlan& plan)
{
    const auto height = static_cast<std::size_t>(image.height);
    PngRowSource rows(image, plan);
    if (DeflatesWhole(plan.content, rows.FilteredBytes() * height)) {
        PixelBytes all;
        ResizeFresh(all, rows.FilteredBytes() * height + PngDeflater::kSlack);
        for (std::size_t y = 0; y < height; ++y)
            rows.Make(y, all.data() + y * rows.FilteredBytes());
        return WriteDeflated(out, Bytes(all).first(rows.FilteredBytes() * height));
    }
    PngDeflater deflater(out, rows.FilteredBytes(), height, plan.layout.PixelSize(), plan.content);
    for (std::size_t y = 0; y < height; ++y) {
        rows.Make(y, deflater.NextRow());
        if (!deflater.FinishRow())
            return false;
    }
    return true;
}

bool EncodePng(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    PngPlan plan = PlanFor(image);
    const PngColour colour = plan.layout.colour;
    const bool is_grey = colour == PngColour::kGrey || colour == PngColour::kGreyAlpha;
    return out.Write(kPngSignature) && WriteHeader(out, plan.layout.Header(image)) &&
           WritePngMetadata(out, image, is_grey, settings.texts) && WritePalette(out, plan.layout) &&
           WritePixels(out, image, plan) && WritePngChunk(out, PngType("IEND"), {});
}
