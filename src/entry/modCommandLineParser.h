// Turns the command text into a run request.
// Room: entry.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

/// True when the request is valid and may run. The text is cut at every "/", and a switch is the one letter
/// after it, case-sensitive; so a path with blanks needs no quotes. An assignment that fails is skipped and
/// the parse goes on. A text that is rejected has had its reasons reported. An empty text is False, silently.
bool bParseCommandLine(Application& app, const std::string& sCommandLine, clsConversionOptions& objOptions);

/// 1 plus the number of delimiters.
std::int32_t iCountFields(const std::string& sText, char cDelimiter);

/// Field n of the text, from 1, without its first character, trimmed; sFirstChar gets that character, "" if
/// it is a blank.
std::string sGetField(std::int32_t n, const std::string& sText, char cDelimiter, std::string& sFirstChar);
