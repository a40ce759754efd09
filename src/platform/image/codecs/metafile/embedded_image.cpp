// Decodes the image files that EMF+ records hold.
#include "src/platform/image/codecs/metafile/embedded_image.h"

#include <memory>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/registry.h"

bool DecodeEmbeddedImage(Bytes bytes, ImageBuffer& image)
{
    InputFile file(bytes);
    const Codec* codec = CodecOfContent(file.Head(), "");
    if (!codec || codec->type == FileType::kEmf || codec->type == FileType::kWmf)
        return false;
    const std::unique_ptr<ImageDecoder> decoder = codec->open(file);
    return decoder && decoder->DecodeFrame(0, image);
}
