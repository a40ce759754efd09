// Compares the targets of a walk with one another, and folders with the walk's root.
#include "src/engine/modOriginalRules.h"

#include <algorithm>
#include <functional>

#include "src/base/case_folding.h"
#include "src/base/clsConversionOptions.h"
#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/conversion/modConversionDetails.h"
#include "src/forms/Application.h"
#include "src/job/modFileLists.h"
#include "src/job/modTargetNaming.h"

constexpr std::int32_t kTypeTiff = 3;

static std::size_t nHash(const std::string& sTarget)
{
    return std::hash<std::string>{}(sFoldCase(sTarget));
}

// Every source becomes a page of the same file.
static bool bAddsPages(Application& app, const clsConversionOptions& objOptions)
{
    return objOptions.lTargetFileType == kTypeTiff &&
           SplitImageConversionOptions(app, objOptions.sExtraParams).bAppendToTiff;
}

OriginalRules::OriginalRules(Application& app, const clsConversionOptions& objOptions,
                             const TargetPattern& objPattern, const std::vector<std::string>& colFiles)
    : m_app(app), m_bWanted(app.frmMain.bDeleteOriginalFileAfterProcessing)
{
    if (!m_bWanted)
        return;
    m_sRealRoot = app.svc.objFileSystem.sRealPath(sFolderOfPattern(objOptions.sOriginalFile));
    if (bAddsPages(app, objOptions))
        return;
    m_aTargets.reserve(colFiles.size());
    std::string sFolderToMake;
    for (const std::string& sFile : colFiles)
        m_aTargets.push_back(nHash(sTargetForFile(objPattern, sFile, sFolderToMake)));
    std::sort(m_aTargets.begin(), m_aTargets.end());
}

bool OriginalRules::bBelowRoot(const std::string& sFile)
{
    const std::string sFolder = sFolderOfPath(sFile);
    if (sFolder != m_sLastFolder) {
        const std::string sReal = m_app.svc.objFileSystem.sRealPath(sFolder);
        m_bLastBelow = sReal == m_sRealRoot || sReal.starts_with(sWithSeparator(m_sRealRoot));
        m_sLastFolder = sFolder;
    }
    return m_bLastBelow;
}

OriginalRule OriginalRules::eRuleFor(const std::string& sFile, const std::string& sTarget)
{
    if (!m_bWanted)
        return OriginalRule::MayBeDeleted;
    const auto [itFirst, itEnd] = std::equal_range(m_aTargets.begin(), m_aTargets.end(), nHash(sTarget));
    const bool bShared = itEnd - itFirst > 1;
    return bShared || !bBelowRoot(sFile) ? OriginalRule::OnlyToTrash : OriginalRule::MayBeDeleted;
}
