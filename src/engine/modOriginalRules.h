// Which sources of a walk may be deleted for good.
// Room: engine.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "src/conversion/modOriginalFile.h"

struct Application;
struct TargetPattern;
struct clsConversionOptions;

/// If several sources have the same target, only the last one's picture survives, unless each is added to a
/// TIFF. And a link in a folder tree may lead anywhere. Such sources only go to the trash. Costs nothing
/// unless the settings want sources deleted.
class OriginalRules
{
public:
    OriginalRules(Application& app, const clsConversionOptions& objOptions, const TargetPattern& objPattern,
                  const std::vector<std::string>& colFiles);

    OriginalRule eRuleFor(const std::string& sFile, const std::string& sTarget);

private:
    bool bBelowRoot(const std::string& sFile);

    Application& m_app;
    bool m_bWanted;
    std::vector<std::size_t> m_aTargets;  ///< a sorted hash for each file's target: a list may be long
    std::string m_sRealRoot;
    std::string m_sLastFolder;  ///< of the last file that was asked about
    bool m_bLastBelow = false;
};
