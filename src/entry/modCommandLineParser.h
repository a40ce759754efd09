// Parses the command text into a run request.
// Room: entry.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

/// True if the request is valid and may run. The text is split at every "/"; a switch is the single,
/// case-sensitive letter after it, so paths with spaces need no quotes. Malformed arguments are skipped.
/// Reports why a request is rejected. An empty text is rejected silently.
bool bParseCommandLine(Application& app, const std::string& sCommandLine, clsConversionOptions& objOptions);

/// The number of delimiters plus 1.
std::int32_t iCountFields(const std::string& sText, char cDelimiter);

/// Field n (from 1) without its first character, trimmed. sFirstChar receives that character, or "" if it is
/// a space.
std::string sGetField(std::int32_t n, const std::string& sText, char cDelimiter, std::string& sFirstChar);
