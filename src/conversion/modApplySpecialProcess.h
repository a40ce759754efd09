// Applies a special process to an image between loading and saving.
// Room: conversion.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "src/catalogue/modSpecialProcessCatalogue.h"

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// Always True: carry on with saving. Leaves aImage unchanged for a conversion (action contains "C") or a
/// resize to 0 by 0; an unknown process number applies nothing. Raises clsRaisedError if a value doesn't fit
/// its argument ("Overflow") or the operation fails; aImage is then unchanged.
bool bApplySpecialProcess(Application& app, clsConversionOptions& objOptions, ImageBuffer& aImage);

/// Applies the operation to aImage. Raises clsRaisedError as above. objRow must be an image process, not the
/// launch.
void CallOperation(Application& app, const SpecialProcessRow& objRow, std::span<const DetailsValue> aValues,
                   ImageBuffer& aImage);

/// While it lives, loads may reduce pictures if the request only resizes them to less than half (see
/// ImageFile::SetSmallestSize). For the load that bApplySpecialProcess follows, and no other.
class ReducedLoading
{
public:
    ReducedLoading(Application& app, const clsConversionOptions& objOptions);
    ~ReducedLoading();
    ReducedLoading(const ReducedLoading&) = delete;
    ReducedLoading& operator=(const ReducedLoading&) = delete;

private:
    Application& m_app;
};

/// If one of the sizes is 0, computes it from the other and the image's aspect ratio, rounded. The ratio of
/// an image without height is 1. Raises kErrOverflow if the size doesn't fit 32 bits.
void CompleteSize(Application& app, const ImageBuffer& aImage, std::int32_t& lWidth, std::int32_t& lHeight);
