// Converts one source file to one or more target files.
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

#include "src/conversion/modOriginalFile.h"

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// Loads one file, applies the special process if any, and saves it. Sets lErr and sErr of the request; when
/// the pages of a TIFF are split, sTargetFile changes with each page. Returns lErr, with one intentional
/// exception: if loading fails, lErr is -101 but the result is 0 (or -100 if the target folder is missing).
/// Raises clsRaisedError for a malformed page range. pFiles, if any, receives the source and the files saved.
std::int32_t PerformConversionItemNCTOCX(Application& app, clsConversionOptions& objOptions,
                                         ItemFiles* pFiles = nullptr);

/// Same, then disposes of the source if the settings say so and the result is 0 (see modOriginalFile.h). Any
/// method but 1 converts nothing and gives 0.
std::int32_t lPerformConversionItem(Application& app, clsConversionOptions& objOptions,
                                    OriginalRule eRule = OriginalRule::MayBeDeleted);

/// Saves aImage in the format of a file type. Sets lErr and sErr to 0 and "", or to -103 "Unable to convert"
/// if saving fails or the type can't be saved.
bool bSaveImageAsType(Application& app, clsConversionOptions& objOptions, std::int32_t lType,
                      const std::string& sFile, const ImageBuffer& aImage);
