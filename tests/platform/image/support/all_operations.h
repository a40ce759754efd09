// All operations on pictures, for tests of common guarantees.
// Room: tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image_transform.h"

/// The arguments for operations: each takes those that match its parameter types.
struct Arguments {
    double number = 0;  ///< for each double, except the second of two, which gets other
    double other = 0;
    std::int32_t whole_number = 0;
    std::int32_t other_whole = 0;
    std::uint8_t byte = 0;
    bool flag = false;
};

/// A call of each operation.
std::vector<OperationCall> AllOperations(const Arguments& arguments);

/// Applies one operation with the kernels, in place. False if it fails.
bool ApplyOperation(const OperationCall& call, ImageBuffer& image);
