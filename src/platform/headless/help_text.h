// Reads a topic of the help document as plain text.
// Room: platform/headless.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The topic with that number, from its heading to the next one of the same or a higher level, as lines of
/// text; cells of a table are separated by two spaces or more. "" if the document has no such topic. All of
/// the document for a number below 0.
std::string HelpTopicText(std::string_view document, std::int32_t topic);
