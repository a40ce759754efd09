// Applies a special process to a loaded picture, between its load and its save.
// Room: conversion.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "src/catalogue/modSpecialProcessCatalogue.h"

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// True: go on to the save. A conversion (an action that holds "C") leaves aImage alone, and so does a resize
/// to 0 by 0; a number that is no process calls no operation. Raises clsRaisedError when the process can't be
/// applied: a number too large for its argument ("Overflow"), or an operation that failed. aImage is empty
/// then.
bool bApplySpecialProcess(Application& app, clsConversionOptions& objOptions, ImageBuffer& aImage);

/// Calls the process's operation on the picture that ImageTransform1 holds. Raises clsRaisedError as above.
/// The row is one of an image process, not the launch.
void CallOperation(Application& app, const SpecialProcessRow& objRow, std::span<const DetailsValue> aValues);

/// Where one of the two sizes is 0, puts the one that keeps the picture's proportions, rounded; the ratio of
/// a picture without height is 1. Raises kErrOverflow when the size is beyond 32 bits.
void CompleteSize(Application& app, const ImageBuffer& aImage, std::int32_t& lWidth, std::int32_t& lHeight);
