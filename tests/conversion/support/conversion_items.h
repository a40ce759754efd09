// Helpers for conversion tests: requests for one file, and the image library calls they made.
// Room: tests/conversion/support.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/base/clsConversionOptions.h"
#include "tests/fakes/test_application.h"

inline clsConversionOptions objRequest(const std::string& sSource, std::int32_t lSourceType,
                                       const std::string& sTarget, std::int32_t lTargetType,
                                       const std::string& sDetails = "*^0^FALSE^75")
{
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = sSource;
    objOptions.lOriginalFileType = lSourceType;
    objOptions.sTargetFile = sTarget;
    objOptions.lTargetFileType = lTargetType;
    objOptions.sExtraParams = sDetails;
    return objOptions;
}

// The recorded load, save and append calls, without property setters.
inline std::vector<std::string> aPictureCalls(const TestApplication& app)
{
    std::vector<std::string> aResult;
    for (const std::string& sCall : app.images.calls)
        if (sCall.starts_with("Load") || sCall.starts_with("Save") || sCall.starts_with("Append"))
            aResult.push_back(sCall);
    return aResult;
}

using Calls = std::vector<std::string>;
using Pages = std::vector<std::uint8_t>;
