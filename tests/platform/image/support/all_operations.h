// Every operation on a picture, for tests of what they all promise.
// Room: tests.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "src/platform/image_transform.h"

/// The numbers that operations are called with: each takes those of its arguments' types.
struct Arguments {
    double dNumber = 0;  ///< for every double but the second of two, which gets dOther
    double dOther = 0;
    std::int32_t lNumber = 0;
    std::int32_t lOther = 0;
    std::uint8_t nByte = 0;
    bool bFlag = false;
};

struct NamedOperation {
    std::string sName;
    std::function<bool(ImageTransform&)> fnApply;
};

/// All of them, each once.
std::vector<NamedOperation> aAllOperations(const Arguments& obj);

/// Applies one to the picture, by the kernels.
bool bApply(const NamedOperation& obj, ImageBuffer& aImage);
