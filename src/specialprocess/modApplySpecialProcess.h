// Applies a special process to a loaded picture, between its load and its save.
// Room: sp_apply. May use: base, platform, forms, sp_catalogue, sp_details.
#pragma once

struct Application;
struct ImageBuffer;
struct clsConversionOptions;

/// True: go on to the save. A conversion (an action that holds "C") leaves aImage alone.
bool bApplySpecialProcess(Application& app, clsConversionOptions& objOptions, ImageBuffer& aImage);
