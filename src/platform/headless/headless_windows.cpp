// Prints boxes on standard error.
#include "src/platform/headless/headless_windows.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "src/platform/headless/help_text.h"

#include "src/base/text.h"

static void WriteLines(const std::string& text, const std::string& title)
{
    // The texts separate lines by carriage returns, which would make a terminal overwrite the line.
    std::string lines = sPrintable(title + ": " + text, "\r\n\t");
    std::replace(lines.begin(), lines.end(), '\r', '\n');
    std::fprintf(stderr, "%s\n", lines.c_str());
}

BoxAnswer HeadlessWindows::ShowBox(const std::string& text, const std::string& title, BoxIcon,
                                   BoxButtons buttons)
{
    WriteLines(text, title);
    switch (buttons) {
        case BoxButtons::Ok:
            return BoxAnswer::Ok;
        case BoxButtons::OkCancel:
            return BoxAnswer::Cancel;
        default:
            return BoxAnswer::No;
    }
}

std::size_t HeadlessWindows::ShowChoice(const std::string& text, const std::string& title, BoxIcon,
                                        const std::vector<ChoiceButton>& buttons)
{
    WriteLines(text, title);
    const auto reject = std::find_if(buttons.begin(), buttons.end(), [](const ChoiceButton& button) {
        return button.eRole == ButtonRole::Reject;
    });
    return static_cast<std::size_t>(reject - buttons.begin());
}

std::string HeadlessWindows::ShowFilePicker(FilePicker&)
{
    return "";
}

std::string HeadlessWindows::ShowFolderPicker(const std::string&, const std::string&)
{
    return "";
}

std::optional<std::int32_t> HeadlessWindows::ShowColourPicker(std::int32_t)
{
    return std::nullopt;
}

std::optional<std::string> HeadlessWindows::ShowFontPicker(const std::string&)
{
    return std::nullopt;
}

void HeadlessWindows::ShowForm(Form&) {}

void HeadlessWindows::HandleEvents() {}

static std::string Content(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// A program's own folder that the user chose need not have a help: then it is that of the installation.
static std::string HelpDocument(const std::string& help_file)
{
    const std::string document = Content(help_file);
    if (!document.empty())
        return document;
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return Content(program.parent_path().parent_path() / "share/varnel/Help/Varnel.html");
}

void HeadlessWindows::LaunchHelp(const std::string& help_file, std::int32_t topic)
{
    const std::string text = HelpTopicText(HelpDocument(help_file), topic);
    if (text.empty())
        std::fprintf(stderr, "Help: %s, topic %d\n", help_file.c_str(), static_cast<int>(topic));
    else
        std::fprintf(stderr, "%s", text.c_str());
}

bool HeadlessWindows::bHasDisplay() const
{
    return false;
}
