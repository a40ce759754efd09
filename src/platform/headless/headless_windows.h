// The window services of a run without windows.
// Room: platform/headless.
#pragma once

#include <string>

#include "src/platform/window_services.h"

/// Boxes go to standard error, one text a line group, and the run goes on: OK is answered, and No where there
/// is a question, so that nothing is overwritten or created on an answer that nobody gave. Standard output
/// stays empty.
class HeadlessWindows : public WindowServices
{
public:
    BoxAnswer MsgBox(const std::string& sText, const std::string& sTitle, BoxIcon eIcon,
                     BoxButtons eButtons) override;
    /// Nobody picks: "".
    std::string sPickFile(const std::string& sTitle, const std::string& sFilter, std::int32_t lIndex,
                          bool bToSave) override;
    void ShowModal(Form& frm) override;
    void DoEvents() override;
    /// Says on standard error where the help stands.
    void LaunchHelp(const std::string& sHelpFile, std::int32_t lTopic) override;
    bool bHasDisplay() const override;
};
