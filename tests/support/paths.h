// Locates the sources, the program under test and ImageMagick.
// Room: tests/support. Uses the standard library.
#pragma once

#include <string>

/// Absolute path of the source tree, without a trailing slash.
std::string SourceFolder();
/// Absolute path of the program built together with the tests.
std::string ProgramPath();
/// The command for an ImageMagick tool such as "convert" or "identify". Debian adds the version to it:
/// "convert-im6.q16" on Debian 12, "convert-im7.q16" on 13.
std::string ImageMagick(const std::string& tool);
