// The form's fields as a run request.
// Room: editing.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

/// Fills a new request from the fields of the chosen action. A target beside its source is written into the
/// target field first.
void BuildRequestFromGUI(Application& app, clsConversionOptions& objOptions);
void GetConversionItemFromGUI(Application& app, clsConversionOptions& objOptions);

/// Fields and parameter panel of the selected process; its details are kept in asSP_Details too. An entry
/// that is no number, or one too large, counts as 0.
void GetSpecializedItemFromGUI(Application& app, clsConversionOptions& objOptions);

/// The number of the process selected in cbSpecialProcesses; -1 for the entry that asks for a new one.
std::int32_t lSelectedProcess(const Application& app);

/// The details of a launch: priority, window state and time limit.
std::string sLaunchDetailsFromGUI(const Application& app);
