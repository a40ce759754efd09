// The window services of a run without windows.
// Room: platform/headless.
#pragma once

#include <string>

#include "src/platform/window_services.h"

/// Boxes go to standard error and the run continues. The answer is OK, or No to a question, so that nothing
/// is overwritten or created without consent. Standard output stays empty.
class HeadlessWindows : public WindowServices
{
public:
    BoxAnswer MsgBox(const std::string& text, const std::string& title, BoxIcon icon,
                     BoxButtons buttons) override;
    /// Always "", as if cancelled.
    std::string sPickFile(const std::string& title, const std::string& filter, std::int32_t index,
                          bool to_save) override;
    void ShowModal(Form& frm) override;
    void DoEvents() override;
    /// Prints on standard error where the help is.
    void LaunchHelp(const std::string& help_file, std::int32_t topic) override;
    bool bHasDisplay() const override;
};
