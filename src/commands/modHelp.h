// The help: its topics and how to open it.
// Room: commands.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// Topics are anchors of the help document: "#30". A process has topic 100 plus its number.
enum HelpTopic : std::int32_t {
    kHelpNoTopic = -1234,  ///< opens the document at its start
    kHelpMainWindow = 10,
    kHelpConversionOptions = 11,
    kHelpOptions = 12,
    kHelpScheduler = 13,
    kHelpImageViewer = 15,
    kHelpTypeMatch = 16,
    kHelpAbout = 17,
    kHelpCommandLine = 30,
    kHelpFirstProcess = 100
};

/// Sets sHelpFile, which is the same for all languages.
void InitializeHelpFile(Application& app);

/// Opens the help at a topic. The Japanese help has no topics and opens at its start.
void LaunchHelp(Application& app, std::int32_t lTopic);
