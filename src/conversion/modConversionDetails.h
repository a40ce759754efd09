// Options of a conversion: eleven fields, each followed by "^", as stored with a task.
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

#include "src/platform/image_library.h"

struct Application;

struct ConversionDetails {
    std::string sPagesToDo;         ///< page ranges, or "*" or "" for all pages
    std::int32_t lCompression = 0;  ///< of a TIFF
    bool bAppendToTiff = false;
    std::int32_t lQuality = 0;  ///< of a JPEG
    ImageInfoTexts objTexts;
};

/// Parses pages, compression, append, quality and the seven texts into objDetails. Does nothing if there is
/// no "^". A field that is missing or doesn't convert keeps its value, but a quality that is missing or isn't
/// a number is 100, and an empty append is False.
void SplitImageConversionOptions(const std::string& sOptions, char cDecimalSign,
                                 ConversionDetails& objDetails);

/// The inverse. No field may contain a "^".
std::string sJoinImageConversionOptions(const ConversionDetails& objDetails);

/// Parses the options of an item. Compression and quality are also stored in frmMain, where a field that
/// doesn't convert keeps the value of the item before.
ConversionDetails SplitImageConversionOptions(Application& app, const std::string& sExtraParams);
