// Opens the module that plays metafiles on first use.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/metafile/device/metafile_api.h"

/// The module's entry points; both null if the module is missing or from another build.
struct MetafileModule {
    PlayMetafile* play = nullptr;
    MeasureMetafile* measure = nullptr;
};

/// Loads the module (see module_file.h for where it is searched). Once found, it stays loaded until the
/// process ends.
MetafileModule LoadMetafileModule();
