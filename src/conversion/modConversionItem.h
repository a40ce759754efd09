// Turns one source file into one or more target files.
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// Loads, applies the special process if there is one, and saves, for one file. The outcome is left in lErr
/// and sErr of the request; while the pages of a TIFF are split, sTargetFile is rewritten for each. The
/// result is lErr, with one exception that callers rely on: a file that could not be loaded leaves the result
/// at 0 (or at -100, for a missing target folder) while lErr says -101. A bad page entry raises
/// clsRaisedError.
std::int32_t PerformConversionItemNCTOCX(Application& app, clsConversionOptions& objOptions);

/// The same, followed by the deletion of the source where the settings ask for it, the result is 0 and the
/// source is not the target. Method 1 only: with any other nothing is converted, and the result is 0.
std::int32_t lPerformConversionItem(Application& app, clsConversionOptions& objOptions);

/// True when deleting the source would delete the target that was just written: the same text, whatever its
/// case, or another path to the same file.
bool bSourceIsTarget(Application& app, const clsConversionOptions& objOptions);

/// Saves aImage by file type code. lErr and sErr are set to 0 and "", or, for a failed save and for a type
/// that can't be saved alike, to -103 "Unable to convert".
bool bSaveImageAsType(Application& app, clsConversionOptions& objOptions, std::int32_t lType,
                      const std::string& sFile, const ImageBuffer& aImage);
