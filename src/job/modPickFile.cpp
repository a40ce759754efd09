// Shows a file dialog for opening or saving, depending on its title.
#include "src/job/modPickFile.h"

#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

std::string sPickFile(Application& app, const std::string& sTitle, const std::string& sFilter,
                      std::int32_t lFilterIndex)
{
    return app.svc.objWindows.sPickFile(sTitle, sFilter, lFilterIndex, bTitleSaves(app, sTitle));
}

bool bTitleSaves(Application& app, const std::string& sTitle)
{
    return bContainsIgnoringCase(sTitle, sTranslate(app, "save"));
}
