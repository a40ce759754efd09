// Converts one source file to one or more target files.
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// Loads one file, applies the special process if any, and saves it. Sets lErr and sErr of the request; when
/// the pages of a TIFF are split, sTargetFile changes with each page. Returns lErr, with one intentional
/// exception: if loading fails, lErr is -101 but the result is 0 (or -100 if the target folder is missing).
/// Raises clsRaisedError for a malformed page range.
std::int32_t PerformConversionItemNCTOCX(Application& app, clsConversionOptions& objOptions);

/// Same, then deletes the source if the settings say so, the result is 0 and the source isn't the target. Any
/// method but 1 converts nothing and gives 0.
std::int32_t lPerformConversionItem(Application& app, clsConversionOptions& objOptions);

/// True if source and target are the same file, so that deleting the source would delete the new target:
/// equal paths ignoring case, or two paths to one file.
bool bSourceIsTarget(Application& app, const clsConversionOptions& objOptions);

/// Deletes the source once everything that was saved is on the disk. False, with lErr and sErr set to -103
/// "Unable to convert", if the system reports that something isn't: the source then stays.
bool bDeleteOriginalFile(Application& app, clsConversionOptions& objOptions);

/// Saves aImage in the format of a file type. Sets lErr and sErr to 0 and "", or to -103 "Unable to convert"
/// if saving fails or the type can't be saved.
bool bSaveImageAsType(Application& app, clsConversionOptions& objOptions, std::int32_t lType,
                      const std::string& sFile, const ImageBuffer& aImage);
