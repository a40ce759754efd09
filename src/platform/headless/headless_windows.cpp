// Boxes as lines on standard error.
#include "src/platform/headless/headless_windows.h"

#include <algorithm>
#include <cstdio>

BoxAnswer HeadlessWindows::MsgBox(const std::string& sText, const std::string& sTitle, BoxIcon,
                                  BoxButtons eButtons)
{
    // The texts part their pieces by carriage returns, which a terminal would take for "write over this
    // line".
    std::string sLines = sTitle + ": " + sText;
    std::replace(sLines.begin(), sLines.end(), '\r', '\n');
    std::fprintf(stderr, "%s\n", sLines.c_str());
    return eButtons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
}

std::string HeadlessWindows::sPickFile(const std::string&, const std::string&, std::int32_t, bool)
{
    return "";
}

void HeadlessWindows::ShowModal(Form&) {}

void HeadlessWindows::DoEvents() {}

void HeadlessWindows::LaunchHelp(const std::string& sHelpFile, std::int32_t lTopic)
{
    std::fprintf(stderr, "Help: %s, topic %d\n", sHelpFile.c_str(), static_cast<int>(lTopic));
}

bool HeadlessWindows::bHasDisplay() const
{
    return false;
}
