// Opens the player module.
#include "src/platform/image/codecs/metafile/metafile_module.h"

#include "src/platform/image/base/module_file.h"

static constexpr char kFileName[] = "libvarnel_metafile.so";

MetafileModule objMetafileModule()
{
    static void* pModule = nullptr;
    if (!pModule)
        pModule = OpenModule(kFileName);
    return {ModuleFunction<PlayMetafile>(pModule, kPlayMetafile),
            ModuleFunction<MeasureMetafile>(pModule, kMeasureMetafile)};
}
