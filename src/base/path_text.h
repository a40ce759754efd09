// Splits and joins path strings without touching the disk.
// Room: base.
//
// Both "\" and "/" are separators. A path keeps the user's style: joining reuses the last separator in the
// path, or the host's "/" if it has none.
#pragma once

#include <string>
#include <string_view>

/// The separator to use when appending to this path.
char cSeparatorOf(std::string_view sPath);

/// Everything up to and including the last separator; "" if there is none.
std::string sFolderOfPath(std::string_view sPath);

/// The trimmed text after the last "."; "" if there is none. Searches the whole path, folders included.
std::string sExtensionOfPath(std::string_view sPath);

/// The folder that contains the last component, without a trailing separator unless it is a root ("C:\",
/// "/"). "" for a root or a bare name. Trailing separators of sPath are ignored.
std::string sGetParentFolderName(std::string_view sPath);

/// The last component without its extension, and the extension alone (no "."). Dots in folder names don't
/// count.
std::string sGetBaseName(std::string_view sPath);
std::string sGetExtensionName(std::string_view sPath);

/// The folder with exactly one trailing separator, ready for a name to be appended. A root isn't doubled:
/// ":\\" becomes ":\" and "//" becomes "/". An empty folder becomes the host's separator.
std::string sWithSeparator(std::string_view sFolder);

/// sPath without trailing separators; a root ("C:\", "/") keeps its separator.
std::string_view sWithoutTrailingSeparators(std::string_view sPath);

/// True if the last character is "\" or "/".
bool bEndsInSeparator(std::string_view sPath);
