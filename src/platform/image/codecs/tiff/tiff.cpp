// TIFF's entry in the codec table.
#include "src/platform/image/codecs/tiff/tiff.h"

#include "src/platform/image/codecs/tiff/tiff_writer.h"

static bool Sniff(Bytes head, std::string_view)
{
    if (head.size() < 4)
        return false;
    const bool little = head[0] == 'I' && head[1] == 'I' && (head[2] == 42 || head[2] == 43) && head[3] == 0;
    const bool big = head[0] == 'M' && head[1] == 'M' && head[2] == 0 && (head[3] == 42 || head[3] == 43);
    return little || big;
}

static bool Encode(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    TiffPageForm form;
    form.big_tiff = MaxPageBytes(image) > kClassicEnd;
    TiffPagePlace place;
    return WriteTiffFile(out, image, settings, form, place);
}

const Codec kTiffCodec{FileType::kTiff, true, true, Sniff, OpenTiff, Encode};
