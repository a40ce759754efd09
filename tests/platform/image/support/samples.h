// Finds the files in tests/samples/ and reads their expected images.
// Room: tests/platform/image/support.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "src/platform/image_buffer.h"

/// The paths of the samples of one format and kind ("good", "cut", "lying", "foreign", "unsupported"),
/// sorted. Empty if there is no such folder.
std::vector<std::string> SamplesOf(const std::string& format, const std::string& kind);

struct ExpectedImage {
    ImageBuffer image;
    int within = 0;                 ///< tolerance for each level
    std::optional<double> average;  ///< tolerance for the mean difference, instead of `within`
    int cell = 1;                   ///< each pixel is the mean of `cell` by `cell` pixels
};

/// Reads the PAM file next to a sample: the expected image of page `frame`, counted from 0. Nothing if there
/// is none. Grey with alpha is expanded to B, G, R, A. Comments in the header set the tolerance:
/// "# within 3", "# on average within 2.5", "# cells of 4". A malformed file fails the test.
std::optional<ExpectedImage> ReadExpectedImage(const std::string& sample, int frame);
