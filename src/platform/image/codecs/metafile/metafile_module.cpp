// Opens the player module.
#include "src/platform/image/codecs/metafile/metafile_module.h"

#include "src/platform/image/base/module_file.h"

static constexpr char kFileName[] = "libvarnel_metafile.so";

MetafileModule LoadMetafileModule()
{
    static void* module = nullptr;
    if (!module)
        module = OpenModule(kFileName);
    return {ModuleFunction<PlayMetafile>(module, kPlayMetafile),
            ModuleFunction<MeasureMetafile>(module, kMeasureMetafile)};
}
