// Paths as texts: their parts and their joins, without asking the disk.
// Room: base.
//
// "\" and "/" separate alike. A path keeps the style in which the user gave it: a join uses the last
// separator that the text holds, and a text with none uses the host's "/".
#pragma once

#include <string>
#include <string_view>

/// The separator that a join to this text uses.
char cSeparatorOf(std::string_view sPath);

/// All up to and with the last separator; "" if there is none.
std::string sFolderOfPath(std::string_view sPath);

/// Trimmed text after the last "."; "" if there is none. The whole text is searched, folders included.
std::string sExtensionOfPath(std::string_view sPath);

/// The folder that the last component lies in, without a separator at its end, except for a root, which keeps
/// it ("C:\", "/"). "" for a root and for a lone name. Separators at the end of sPath don't count.
std::string sGetParentFolderName(std::string_view sPath);

/// The last component without its extension, and the extension alone (no "."); only the last component is
/// searched.
std::string sGetBaseName(std::string_view sPath);
std::string sGetExtensionName(std::string_view sPath);

/// The folder with one separator at its end, ready for a name to be appended. A root isn't doubled: ":\\" is
/// ":\" and "//" is "/". An empty folder gives the host's separator.
std::string sWithSeparator(std::string_view sFolder);

/// The part of sPath before the separators at its end; a root ("C:\", "/") keeps its own.
std::string_view sWithoutTrailingSeparators(std::string_view sPath);

/// True when the last character is "\" or "/".
bool bEndsInSeparator(std::string_view sPath);
