// Finds and replaces lines of a settings file.
#include "src/platform/posix/ini_text.h"

#include "src/base/text.h"
#include "src/base/text_encoding.h"

static constexpr std::string_view kBlanks = " \t\r";
static constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";

std::string sIniTextOf(std::string_view sBytes)
{
    if (sBytes.starts_with(kMarkUtf8))
        sBytes.remove_prefix(kMarkUtf8.size());
    return bIsUtf8(sBytes) ? std::string(sBytes) : sUtf8FromWindows1252(sBytes);
}

static std::string_view sTrimmed(std::string_view sText)
{
    const std::size_t nFirst = sText.find_first_not_of(kBlanks);
    if (nFirst == std::string_view::npos)
        return {};
    return sText.substr(nFirst, sText.find_last_not_of(kBlanks) - nFirst + 1);
}

static bool bInQuotes(std::string_view sValue)
{
    return sValue.size() >= 2 && sValue.front() == sValue.back() &&
           (sValue.front() == '"' || sValue.front() == '\'');
}

namespace
{
/// Where a key stands, or would have to be put.
struct KeyPlace {
    bool bSection = false;
    bool bKey = false;
    std::size_t nBegin = 0;     ///< of the key's line; without one, where a line for it is to be inserted
    std::size_t nEnd = 0;       ///< behind the key's line, its line end included
    std::string_view sValue{};  ///< trimmed
};
}  // namespace

static KeyPlace FindKey(std::string_view sText, std::string_view sSection, std::string_view sKey)
{
    KeyPlace objPlace;
    std::size_t nBegin = 0;
    while (nBegin < sText.size()) {
        const std::size_t nLineEnd = sText.find('\n', nBegin);
        const std::size_t nEnd = nLineEnd == std::string_view::npos ? sText.size() : nLineEnd + 1;
        const std::string_view sLine = sTrimmed(sText.substr(nBegin, nLineEnd - nBegin));
        if (sLine.starts_with('[')) {
            if (objPlace.bSection)
                return objPlace;
            objPlace.bSection = bEqualIgnoringCase(sTrimmed(sLine.substr(1, sLine.find(']') - 1)), sSection);
        } else if (objPlace.bSection && !sLine.starts_with(';')) {
            const std::size_t nSign = sLine.find('=');
            if (nSign != std::string_view::npos &&
                bEqualIgnoringCase(sTrimmed(sLine.substr(0, nSign)), sKey)) {
                objPlace.bKey = true;
                objPlace.nBegin = nBegin;
                objPlace.nEnd = nEnd;
                objPlace.sValue = sTrimmed(sLine.substr(nSign + 1));
                return objPlace;
            }
        }
        if (objPlace.bSection && !sLine.empty())
            objPlace.nBegin = objPlace.nEnd = nEnd;
        nBegin = nEnd;
    }
    if (!objPlace.bSection)
        objPlace.nBegin = objPlace.nEnd = sText.size();
    return objPlace;
}

std::optional<std::string> sIniValue(std::string_view sText, std::string_view sSection, std::string_view sKey)
{
    const KeyPlace objPlace = FindKey(sText, sSection, sKey);
    if (!objPlace.bKey)
        return std::nullopt;
    std::string_view sValue = objPlace.sValue;
    if (bInQuotes(sValue))
        sValue = sValue.substr(1, sValue.size() - 2);
    return std::string(sValue);
}

// The value as it is to stand in the file.
static std::string sStoredValue(std::string_view sValue)
{
    std::string sStored = bIsUtf8(sValue) ? std::string(sValue) : sUtf8FromWindows1252(sValue);
    for (char& c : sStored)
        if (c == '\r' || c == '\n')
            c = ' ';
    return bInQuotes(sTrimmed(sStored)) ? "\"" + sStored + "\"" : sStored;
}

std::string sIniTextWith(std::string_view sText, std::string_view sSection, std::string_view sKey,
                         std::string_view sValue)
{
    const KeyPlace objPlace = FindKey(sText, sSection, sKey);
    const std::size_t nFirstEnd = sText.find('\n');
    const bool bCrLf = nFirstEnd != std::string_view::npos && nFirstEnd > 0 && sText[nFirstEnd - 1] == '\r';
    const std::string sLineEnd = bCrLf ? "\r\n" : "\n";

    std::string sResult(sText.substr(0, objPlace.nBegin));
    if (!sResult.empty() && sResult.back() != '\n')
        sResult += sLineEnd;
    if (!objPlace.bSection)
        sResult.append("[").append(sSection).append("]").append(sLineEnd);
    sResult.append(sKey).append("=").append(sStoredValue(sValue)).append(sLineEnd);
    return sResult.append(sText.substr(objPlace.nEnd));
}
