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
    double number = 0;  ///< for every double but the second of two, which gets other
    double other = 0;
    std::int32_t whole_number = 0;
    std::int32_t other_whole = 0;
    std::uint8_t byte = 0;
    bool flag = false;
};

struct NamedOperation {
    std::string name;
    std::function<bool(ImageTransform&)> apply;
};

/// All of them, each once.
std::vector<NamedOperation> AllOperations(const Arguments& arguments);

/// Applies one to the picture, by the kernels.
bool ApplyOperation(const NamedOperation& named_operation, ImageBuffer& image);
