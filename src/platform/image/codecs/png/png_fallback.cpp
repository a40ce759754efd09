// Decodes PNG files through libpng.
#include "src/platform/image/codecs/png/png_fallback.h"

#include <png.h>

#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/png/png_pixels.h"

bool bPngNeedsFallback(const PngInfo& objInfo)
{
    const PngHeader& objHeader = objInfo.objHeader;
    const bool bTransparentColour =
        objHeader.objColour != PngColour::Palette && !objInfo.aTransparency.empty();
    return objHeader.bInterlaced || objHeader.nDepth == 16 || objHeader.objColour == PngColour::GreyAlpha ||
           bTransparentColour;
}

namespace
{
// What the library's calls work on. It lives outside the function that they jump back to, so that a jump
// leaves nothing undestroyed.
struct Decoding {
    InputFile& objFile;
    std::uint64_t nPosition = 0;
    png_structp pPng = nullptr;
    png_infop pInfo = nullptr;
    std::vector<png_bytep> aRows;
    std::size_t nStride = 0;

    explicit Decoding(InputFile& objSource) : objFile(objSource) {}
    ~Decoding() { png_destroy_read_struct(&pPng, &pInfo, nullptr); }
    Decoding(const Decoding&) = delete;
    Decoding& operator=(const Decoding&) = delete;
};
}  // namespace

static void ReadBytes(png_structp pPng, png_bytep pOut, std::size_t nCount)
{
    auto& objDecoding = *static_cast<Decoding*>(png_get_io_ptr(pPng));
    if (objDecoding.objFile.ReadAt(objDecoding.nPosition, {pOut, nCount}) != nCount)
        png_error(pPng, "cut short");
    objDecoding.nPosition += nCount;
}

[[noreturn]] static void JumpBack(png_structp pPng, png_const_charp)
{
    png_longjmp(pPng, 1);
}

static void Ignore(png_structp, png_const_charp) {}

// No object with a destructor may live in this function or in what it calls.
static bool bReadRows(Decoding& objDecoding, const PngInfo& objInfo)
{
    png_structp pPng = objDecoding.pPng;
    png_infop pInfo = objDecoding.pInfo;
    if (setjmp(png_jmpbuf(pPng)))  // NOLINT: the library's way of reporting
        return false;
    png_set_read_fn(pPng, &objDecoding, &ReadBytes);
    // What stands beside the pixels is read elsewhere; here it could only fail.
    png_set_keep_unknown_chunks(pPng, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_user_limits(pPng, static_cast<png_uint_32>(kMaxSide), static_cast<png_uint_32>(kMaxSide));
    png_read_info(pPng, pInfo);

    const PngHeader& objHeader = objInfo.objHeader;
    if (objHeader.objColour == PngColour::Palette) {
        png_set_packing(pPng);  // an index a byte
    } else {
        if (objHeader.nDepth == 16) {
            if (dPngGammaExponent(objInfo) != 1)
                png_set_gamma(pPng, kPngScreenGamma, objInfo.dGamma);
            png_set_scale_16(pPng);
        }
        if (objHeader.nDepth < 8)
            png_set_expand_gray_1_2_4_to_8(pPng);
        if (!objInfo.aTransparency.empty())
            png_set_tRNS_to_alpha(pPng);
        if (objHeader.objColour == PngColour::GreyAlpha || !objInfo.aTransparency.empty())
            png_set_gray_to_rgb(pPng);
        png_set_bgr(pPng);
    }
    png_set_interlace_handling(pPng);
    png_read_update_info(pPng, pInfo);
    if (png_get_rowbytes(pPng, pInfo) != objDecoding.nStride ||
        png_get_image_height(pPng, pInfo) != objHeader.nHeight)
        return false;
    png_read_image(pPng, objDecoding.aRows.data());
    return true;
}

static bool bSpreadIndices(const PngInfo& objInfo, const ImageBuffer& aIndices, ImageBuffer& aResult)
{
    const PngPalette objPalette = objPaletteOf(objInfo);
    if (!Allocate(aResult, objInfo.objHeader.nWidth, objInfo.objHeader.nHeight, objPalette.lChannels))
        return false;
    LookUpRow(objPalette, 8, aIndices.bytes.data(), aResult.bytes.data(), aIndices.bytes.size());
    return true;
}

bool bDecodePngByLibrary(InputFile& objFile, const PngInfo& objInfo, ImageBuffer& aImage)
{
    const PngHeader& objHeader = objInfo.objHeader;
    const bool bPalette = objHeader.objColour == PngColour::Palette;
    const bool bAlpha = objHeader.nSamples() % 2 == 0 || (!bPalette && !objInfo.aTransparency.empty());
    const std::int32_t lChannels = bAlpha ? 4 : objHeader.objColour == PngColour::Rgb ? 3 : 1;
    ImageBuffer aRead;
    if (!Allocate(aRead, objHeader.nWidth, objHeader.nHeight, lChannels))
        return false;

    Decoding objDecoding(objFile);
    objDecoding.nStride = aRead.bytes.size() / objHeader.nHeight;
    for (std::size_t y = 0; y < objHeader.nHeight; ++y)
        objDecoding.aRows.push_back(aRead.bytes.data() + y * objDecoding.nStride);
    objDecoding.pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &JumpBack, &Ignore);
    objDecoding.pInfo = objDecoding.pPng ? png_create_info_struct(objDecoding.pPng) : nullptr;
    if (!objDecoding.pInfo || !bReadRows(objDecoding, objInfo))
        return false;

    const double dExponent = dPngGammaExponent(objInfo);
    ImageBuffer aResult;
    if (bPalette && !bSpreadIndices(objInfo, aRead, aResult))
        return false;
    if (!bPalette)
        aResult = std::move(aRead);
    if (dExponent != 1 && objHeader.nDepth != 16)
        ApplyGamma(dExponent, aResult.channels, aResult.bytes.data(),
                   aResult.bytes.size() / static_cast<std::size_t>(aResult.channels));
    aImage = std::move(aResult);
    return true;
}
