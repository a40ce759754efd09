// Details of a conversion: eleven fields joined by "^", as stored with a task.
// Room: conversion.
#pragma once

#include <string>

#include "src/platform/image_library.h"

struct Application;

/// The fields that belong to one item.
struct ConversionDetails {
    std::string sPagesToDo;  ///< page ranges, or "*" or "" for all pages
    bool bAppendToTiff = false;
    ImageInfoTexts objTexts;
};

/// Parses sExtraParams: pages, compression, append, quality and the seven texts. Does nothing if there are
/// fewer than two fields. A field that doesn't convert keeps its value; compression and quality, stored in
/// frmMain, keep it from item to item. A quality that isn't a number is 100.
ConversionDetails SplitImageConversionOptions(Application& app, const std::string& sExtraParams);
