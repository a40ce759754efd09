// Turns the HTML of the help into text. Handles what our own document contains, not HTML in general.
#include "src/platform/headless/help_text.h"

#include <algorithm>
#include <array>
#include <utility>

static std::string_view From(std::string_view text, std::size_t position)
{
    return position == std::string_view::npos ? std::string_view() : text.substr(position);
}

// The part of the document that belongs to a topic: it begins with "<hN id=".
static std::string_view Section(std::string_view document, std::int32_t topic)
{
    if (topic < 0)
        return From(document, document.find("<h1"));
    const std::size_t id = document.find(" id=\"" + std::to_string(topic) + "\"");
    const std::size_t heading = id == std::string_view::npos ? id : document.rfind("<h", id);
    const std::string_view rest = From(document, heading);
    if (rest.size() < 4)
        return {};
    std::size_t end = rest.size();
    for (char level = '1'; level <= rest[2]; ++level)
        end = std::min(end, rest.find(std::string("<h") + level, 1));
    return rest.substr(0, std::min(end, rest.size()));
}

static std::string Decoded(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, char>, 5> kEntities{
        {{"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#x27;", '\''}, {"&amp;", '&'}}};
    std::string result;
    while (!text.empty()) {
        const auto entity = std::find_if(kEntities.begin(), kEntities.end(),
                                         [&](const auto& pair) { return text.starts_with(pair.first); });
        result += entity == kEntities.end() ? text.front() : entity->second;
        text.remove_prefix(entity == kEntities.end() ? 1 : entity->first.size());
    }
    return result;
}

// Joins the words of a text by single spaces.
static void AppendWords(std::string& lines, std::string_view text)
{
    for (const char letter : text) {
        if (letter != ' ' && letter != '\n')
            lines += letter;
        else if (!lines.empty() && lines.back() != ' ' && lines.back() != '\n')
            lines += ' ';
    }
}

static void EndLine(std::string& lines)
{
    while (lines.ends_with(' '))
        lines.pop_back();
    if (!lines.empty() && !lines.ends_with('\n'))
        lines += '\n';
}

// Short cells line up as columns.
static void PadCell(std::string& lines)
{
    constexpr std::size_t kWidth = 10;
    const std::size_t line = lines.rfind('\n') + 1;  // 0 for the first line
    const std::size_t length = lines.size() - line;
    lines.append(length + 2 < kWidth ? kWidth - length : 2, ' ');
}

std::string HelpTopicText(std::string_view document, std::int32_t topic)
{
    static constexpr std::array<std::string_view, 9> kLineEnds{"/h1", "/h2", "/h3", "/p",  "/tr",
                                                               "/li", "/ol", "/ul", "/pre"};
    std::string_view rest = Section(document, topic);
    std::string lines;
    bool preformatted = false;
    while (!rest.empty()) {
        const std::size_t tag = std::min(rest.find('<'), rest.size());
        if (preformatted)
            lines += Decoded(rest.substr(0, tag));
        else
            AppendWords(lines, Decoded(rest.substr(0, tag)));
        const std::size_t end = std::min(rest.find('>', tag), rest.size() - 1);
        const std::string_view name = tag < rest.size() ? rest.substr(tag + 1, end - tag - 1) : "";
        if (name == "pre" || name == "/pre")
            preformatted = name == "pre";
        if (std::find(kLineEnds.begin(), kLineEnds.end(), name) != kLineEnds.end())
            EndLine(lines);
        else if (name == "/td" || name == "/th")
            PadCell(lines);
        rest.remove_prefix(end + 1);
    }
    EndLine(lines);
    return lines;
}
