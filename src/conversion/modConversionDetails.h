// The details of a conversion: the eleven fields that a task carries joined by "^".
// Room: conversion.
#pragma once

#include <string>

#include "src/platform/image_library.h"

struct Application;

/// What one item needs of its details.
struct ConversionDetails {
    std::string sPagesToDo;  ///< a page range, or "*", or "" for all pages
    bool bAppendToTiff = false;
    ImageInfoTexts objTexts;
};

/// Unpacks sExtraParams: pages, compression, append, quality and the seven texts. Fewer than two fields
/// unpack nothing. A field that doesn't convert keeps the value it had; compression and quality keep it from
/// item to item, in frmMain. A quality that is no number is 100.
ConversionDetails SplitImageConversionOptions(Application& app, const std::string& sExtraParams);
