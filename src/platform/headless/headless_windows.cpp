// Prints boxes on standard error.
#include "src/platform/headless/headless_windows.h"

#include <algorithm>
#include <cstdio>

BoxAnswer HeadlessWindows::MsgBox(const std::string& text, const std::string& title, BoxIcon,
                                  BoxButtons buttons)
{
    // The texts separate lines by carriage returns, which would make a terminal overwrite the line.
    std::string lines = title + ": " + text;
    std::replace(lines.begin(), lines.end(), '\r', '\n');
    std::fprintf(stderr, "%s\n", lines.c_str());
    return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
}

std::string HeadlessWindows::sPickFile(const std::string&, const std::string&, std::int32_t, bool)
{
    return "";
}

void HeadlessWindows::ShowModal(Form&) {}

void HeadlessWindows::DoEvents() {}

void HeadlessWindows::LaunchHelp(const std::string& help_file, std::int32_t topic)
{
    std::fprintf(stderr, "Help: %s, topic %d\n", help_file.c_str(), static_cast<int>(topic));
}

bool HeadlessWindows::bHasDisplay() const
{
    return false;
}
