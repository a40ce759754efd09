// Parses page ranges.
#include "src/conversion/modPageRanges.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"

static constexpr std::int64_t kMaxEntries = 20'000'000;

// Appends the numbers of one entry. An entry with more than one hyphen is invalid and counts as page 0.
static void ExpandRange(const std::string& sEntry, std::vector<std::int32_t>& aNumbers)
{
    const auto nHyphens = std::count(sEntry.begin(), sEntry.end(), '-');
    if (nHyphens != 1) {
        aNumbers.push_back(nHyphens == 0 ? lLeadingNumber(sEntry) : 0);
        return;
    }
    const std::size_t nHyphen = sEntry.find('-');
    std::int32_t lLow = lToLong(sEntry.substr(0, nHyphen));
    std::int32_t lHigh = lToLong(sEntry.substr(nHyphen + 1));
    if (lLow > lHigh)
        std::swap(lLow, lHigh);
    if (static_cast<std::int64_t>(lHigh) - lLow + static_cast<std::int64_t>(aNumbers.size()) >= kMaxEntries)
        throw clsRaisedError(kErrOutOfMemory, "Out of memory");
    for (std::int64_t l = lLow; l <= lHigh; ++l)
        aNumbers.push_back(static_cast<std::int32_t>(l));
}

static std::string sOnlyRangeCharacters(const std::string& sRange)
{
    std::string sResult;
    std::copy_if(sRange.begin(), sRange.end(), std::back_inserter(sResult),
                 [](char c) { return bContains("0123456789,-", std::string_view(&c, 1)); });
    return sResult;
}

std::int32_t lParseRangeString(std::string& sRange)
{
    if (sRange.empty())
        return kRangeEmpty;
    const std::string sFiltered = sOnlyRangeCharacters(sRange);
    std::int32_t lStatus = sFiltered.size() < sRange.size() ? kRangeInvalidCharacter : 0;
    sRange = sFiltered;
    if (sRange.empty())
        return lStatus + kRangeEmpty;

    std::vector<std::int32_t> aNumbers;
    for (const std::string& sEntry : aSplit(sRange, ','))
        ExpandRange(sEntry, aNumbers);
    std::sort(aNumbers.begin(), aNumbers.end());
    aNumbers.erase(std::unique(aNumbers.begin(), aNumbers.end()), aNumbers.end());

    sRange.clear();
    for (const std::int32_t lNumber : aNumbers) {
        if (!sRange.empty())
            sRange += ',';
        sRange += std::to_string(lNumber);
    }
    return lStatus;
}
