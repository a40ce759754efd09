// The window services of a run without windows.
// Room: platform/headless.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "src/platform/window_services.h"

/// Boxes go to standard error and the run goes on. A question gets the answer that changes nothing, so that
/// nothing is overwritten or created unasked, and every picker is cancelled. Standard output stays empty.
class HeadlessWindows : public WindowServices
{
public:
    /// Writes the topic's text to standard error; without a help document, its name.
    void LaunchHelp(const std::string& help_file, std::int32_t topic) override;
    bool bHasDisplay() const override;

private:
    BoxAnswer ShowBox(const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons) override;
    std::size_t ShowChoice(const std::string& text, const std::string& title, BoxIcon icon,
                           const std::vector<ChoiceButton>& buttons) override;
    std::string ShowFilePicker(FilePicker& picker) override;
    std::string ShowFolderPicker(const std::string& title, const std::string& start_folder) override;
    std::optional<std::int32_t> ShowColourPicker(std::int32_t start) override;
    std::optional<std::string> ShowFontPicker(const std::string& start) override;
    void ShowForm(Form& frm) override;
    void HandleEvents() override;
};
