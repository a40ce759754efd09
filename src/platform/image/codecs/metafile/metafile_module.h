// Opens the module that plays metafiles, when it is first needed.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/metafile/device/metafile_api.h"

/// The module's entry points, both null if there is no module or none of this build.
struct MetafileModule {
    PlayMetafile* play = nullptr;
    MeasureMetafile* measure = nullptr;
};

/// Where it is looked for: module_file.h. A module that was found is kept until the process ends.
MetafileModule LoadMetafileModule();
