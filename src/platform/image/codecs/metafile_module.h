// Opens the module that plays metafiles, when it is first needed.
// Room: platform_image. May use: platform.
#pragma once

#include "src/platform/image/metafile/metafile_api.h"

/// The module's entry points, both null if there is no module or none of this build.
struct MetafileModule {
    PlayMetafile* pPlay = nullptr;
    MeasureMetafile* pMeasure = nullptr;
};

/// It is looked for in VARNEL_MODULE_DIR, if that is set; otherwise beside the program, in the folder "lib"
/// beside the program's folder, and where the system's loader looks. A module that was found is kept until
/// the process ends.
MetafileModule objMetafileModule();
