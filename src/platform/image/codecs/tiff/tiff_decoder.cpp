// Decodes the pages of a TIFF file.
#include "src/platform/image/codecs/tiff/tiff_decoder.h"

#include <optional>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image/codecs/tiff/directory/tiff_metadata.h"
#include "src/platform/image/codecs/tiff/tiff_handle.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"
#include "src/platform/image/codecs/tiff/tiff_pixel_reader.h"
#include "src/platform/image/colour/colour_profile.h"

namespace
{
class TiffDecoder : public ImageDecoder
{
public:
    TiffDecoder(InputFile& objFile, const TiffHeader& objHeader, std::vector<std::uint64_t> aPages)
        : m_objFile(objFile), m_objHeader(objHeader), m_aPages(std::move(aPages)), m_objInput(objFile)
    {
    }
    bool Ready() const { return m_objInput.Handle() != nullptr; }
    std::int32_t FrameCount() override { return static_cast<std::int32_t>(m_aPages.size()); }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override;

private:
    InputFile& m_objFile;
    TiffHeader m_objHeader;
    std::vector<std::uint64_t> m_aPages;
    TiffInput m_objInput;
};
}  // namespace

// A grey profile of a picture that has become BGRA for its alpha: the grey is turned, so that no profile is
// needed.
static void ApplyGreyProfile(std::vector<std::uint8_t> aProfile, ImageBuffer& aImage)
{
    ImageBuffer aGrey;
    aGrey.width = aImage.width;
    aGrey.height = aImage.height;
    aGrey.channels = 1;
    aGrey.icc_profile = std::move(aProfile);
    aGrey.bytes.resize(aImage.bytes.size() / 4);
    for (std::size_t i = 0; i < aGrey.bytes.size(); ++i)
        aGrey.bytes[i] = aImage.bytes[i * 4];
    if (!ConvertToSrgb(aGrey))
        return;
    for (std::size_t i = 0; i < aGrey.bytes.size(); ++i)
        aImage.bytes[i * 4] = aImage.bytes[i * 4 + 1] = aImage.bytes[i * 4 + 2] = aGrey.bytes[i];
}

bool TiffDecoder::DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage)
{
    const std::uint64_t nDirectory = m_aPages[static_cast<std::size_t>(lFrame)];
    if (!bDirectoryPlausible(m_objFile, m_objHeader, nDirectory) ||
        !TIFFSetSubDirectory(m_objInput.Handle(), nDirectory))
        return false;
    const std::optional<TiffLayout> objLayout = objReadLayout(m_objInput.Handle(), m_objFile);
    if (!objLayout)
        return false;
    const std::vector<TiffEntry> aEntries = aReadEntries(m_objFile, m_objHeader, nDirectory);
    std::vector<std::uint8_t> aProfile = aReadTiffProfile(m_objFile, m_objHeader, aEntries);
    ImageBuffer aResult;
    if (!bReadTiffPixels(m_objInput.Handle(), *objLayout, m_objFile, aProfile, aResult))
        return false;
    ReadTiffMetadata(m_objFile, m_objHeader, aEntries, objLayout->nOrientation, aResult);
    const bool bOwnColours =
        objLayout->enColour == TiffColour::kGrey || objLayout->enColour == TiffColour::kRgb ||
        objLayout->enColour == TiffColour::kPalette || objLayout->enColour == TiffColour::kYCbCr;
    if (bOwnColours && ProfileFits(aProfile, aResult.channels))
        aResult.icc_profile = std::move(aProfile);
    else if (objLayout->enColour == TiffColour::kGrey && aResult.channels == 4 && ProfileFits(aProfile, 1))
        ApplyGreyProfile(std::move(aProfile), aResult);
    aImage = std::move(aResult);
    return true;
}

std::unique_ptr<ImageDecoder> pOpenTiff(InputFile& objFile)
{
    const std::optional<TiffHeader> objHeader = objReadTiffHeader(objFile);
    if (!objHeader)
        return nullptr;
    std::vector<std::uint64_t> aPages = aPageDirectories(objFile, *objHeader);
    if (aPages.empty())
        return nullptr;
    auto pDecoder = std::make_unique<TiffDecoder>(objFile, *objHeader, std::move(aPages));
    if (!pDecoder->Ready())
        return nullptr;
    return pDecoder;
}
