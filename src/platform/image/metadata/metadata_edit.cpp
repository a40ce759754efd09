// Edits EXIF blocks so that what isn't edited keeps its place.
#include "src/platform/image/metadata/metadata_edit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>

static constexpr std::size_t kEntrySize = 12;

namespace
{
struct Range {
    std::size_t nBegin;
    std::size_t nEnd;
};
struct RawEntry {
    std::uint16_t nTag;
    std::array<std::uint8_t, kEntrySize> aBytes;
};
}  // namespace

void SetExifNumber(std::vector<std::uint8_t>& aExif, const IfdEntry& objEntry, std::uint32_t nValue)
{
    const bool bBigEndian = IfdReader(aExif).bBigEndian();
    if (objEntry.nType == 3)
        PutU16(aExif, objEntry.nValueOffset, static_cast<std::uint16_t>(nValue), bBigEndian);
    else if (objEntry.nType == 4)
        PutU32(aExif, objEntry.nValueOffset, nValue, bBigEndian);
}

void SetExifRational(std::vector<std::uint8_t>& aExif, const IfdEntry& objEntry, double dValue)
{
    if (objEntry.nType != 5 || !(dValue >= 0) || dValue > 4'000'000)
        return;
    const bool bBigEndian = IfdReader(aExif).bBigEndian();
    const bool bWhole = std::abs(dValue - std::round(dValue)) < 0.0005;
    const double dDenominator = bWhole ? 1 : 1000;
    PutU32(aExif, objEntry.nValueOffset, static_cast<std::uint32_t>(std::lround(dValue * dDenominator)),
           bBigEndian);
    PutU32(aExif, objEntry.nValueOffset + 4, static_cast<std::uint32_t>(dDenominator), bBigEndian);
}

// The bytes of a directory and of its values.
static void AddRanges(const IfdReader& objReader, std::size_t nDirectory, std::size_t nBlockSize,
                      std::vector<Range>& aRanges)
{
    const std::size_t nCount = objReader.nEntryCount(nDirectory);
    if (nCount == 0)
        return;
    aRanges.push_back({nDirectory, std::min(nBlockSize, nDirectory + 2 + nCount * kEntrySize + 4)});
    for (const IfdEntry& objEntry : objReader.aEntries(nDirectory))
        aRanges.push_back({objEntry.nValueOffset, objEntry.nValueOffset + objEntry.nValueSize});
}

// The bytes of the directories that stay: the first, and those that it points to.
static std::vector<Range> aRangesThatStay(const IfdReader& objReader, std::size_t nBlockSize)
{
    std::vector<Range> aRanges = {{0, 8}};
    const auto aFirst = objReader.aEntries(objReader.nFirstDirectory());
    AddRanges(objReader, objReader.nFirstDirectory(), nBlockSize, aRanges);
    for (const std::uint16_t nTag : {kTagExifDirectory, kTagGpsDirectory}) {
        const IfdEntry* pPointer = pEntryWithTag(aFirst, nTag);
        const std::size_t nDirectory = pPointer ? objReader.nNumber(*pPointer).value_or(0) : 0;
        AddRanges(objReader, nDirectory, nBlockSize, aRanges);
        const auto aInner = objReader.aEntries(nDirectory);
        if (const IfdEntry* pInner = pEntryWithTag(aInner, kTagInteroperability))
            AddRanges(objReader, objReader.nNumber(*pInner).value_or(0), nBlockSize, aRanges);
    }
    return aRanges;
}

// The bytes of the thumbnail's directory and of the thumbnail.
static std::vector<Range> aRangesOfThumbnail(const IfdReader& objReader, std::size_t nDirectory,
                                             std::size_t nBlockSize)
{
    constexpr std::uint16_t kStripOffsets = 0x0111, kStripSizes = 0x0117, kJpegOffset = 0x0201,
                            kJpegSize = 0x0202;
    std::vector<Range> aRanges;
    AddRanges(objReader, nDirectory, nBlockSize, aRanges);
    const auto aEntries = objReader.aEntries(nDirectory);
    const auto AddData = [&](std::uint16_t nOffsetTag, std::uint16_t nSizeTag) {
        const IfdEntry* pOffset = pEntryWithTag(aEntries, nOffsetTag);
        const IfdEntry* pSize = pEntryWithTag(aEntries, nSizeTag);
        const std::size_t nParts = pOffset && pSize ? std::min(pOffset->nCount, pSize->nCount) : 0;
        for (std::size_t i = 0; i < nParts; ++i) {
            const std::size_t nBegin = objReader.nNumber(*pOffset, i).value_or(0);
            const std::size_t nSize = objReader.nNumber(*pSize, i).value_or(0);
            if (nBegin < nBlockSize)
                aRanges.push_back({nBegin, nBegin + std::min(nSize, nBlockSize - nBegin)});
        }
    };
    AddData(kJpegOffset, kJpegSize);
    AddData(kStripOffsets, kStripSizes);
    return aRanges;
}

void DropExifThumbnail(std::vector<std::uint8_t>& aExif)
{
    constexpr std::size_t kPadding = 3;  // bytes after the thumbnail that fill it up to a whole word
    const IfdReader objReader(aExif);
    const std::size_t nSecond = objReader.nNextDirectory(objReader.nFirstDirectory());
    if (nSecond == 0)
        return;
    const std::vector<Range> aStay = aRangesThatStay(objReader, aExif.size());
    std::vector<Range> aGone = aRangesOfThumbnail(objReader, nSecond, aExif.size());
    std::size_t nStayEnd = 0;
    for (const Range& objRange : aStay)
        nStayEnd = std::max(nStayEnd, objRange.nEnd);
    // A block of many thousand entries is no camera's; comparing all with all would only cost time there.
    constexpr std::size_t kManyRanges = 4096;
    if (aStay.size() > kManyRanges || aGone.size() > kManyRanges)
        aGone.clear();
    std::erase_if(aGone, [&](const Range& objGone) {
        return std::any_of(aStay.begin(), aStay.end(), [&](const Range& objStay) {
            return objGone.nBegin < objStay.nEnd && objStay.nBegin < objGone.nEnd;
        });
    });
    const std::size_t nNextOffset =
        objReader.nFirstDirectory() + 2 + objReader.nEntryCount(objReader.nFirstDirectory()) * kEntrySize;
    PutU32(aExif, nNextOffset, 0, objReader.bBigEndian());
    std::sort(aGone.begin(), aGone.end(), [](const Range& a, const Range& b) { return a.nEnd > b.nEnd; });
    std::size_t nEnd = aExif.size();
    for (const Range& objGone : aGone) {
        std::fill(aExif.begin() + static_cast<std::ptrdiff_t>(objGone.nBegin),
                  aExif.begin() + static_cast<std::ptrdiff_t>(objGone.nEnd), std::uint8_t{0});
        if (objGone.nEnd + kPadding >= nEnd)
            nEnd = std::min(nEnd, std::max(objGone.nBegin, nStayEnd));
    }
    aExif.resize(nEnd);
}

// True for a tag that says how a file stores its pixels or where, or holds a block that travels on its own.
static bool bTagOfStorage(std::uint16_t nTag)
{
    static constexpr std::array<std::uint16_t, 34> kTags = {
        0x00FE, 0x00FF, 0x0100, 0x0101, 0x0102, 0x0103, 0x0106, 0x010A, 0x0111, 0x0115, 0x0116, 0x0117,
        0x011C, 0x0120, 0x0121, 0x0124, 0x0125, 0x013D, 0x0140, 0x0142, 0x0143, 0x0144, 0x0145, 0x014A,
        0x0152, 0x0153, 0x015B, 0x0200, 0x0201, 0x0202, 0x02BC, 0x83BB, 0x8649, 0x8773};
    return std::find(kTags.begin(), kTags.end(), nTag) != kTags.end();
}

static std::size_t nAppended(std::vector<std::uint8_t>& aExif, std::size_t nSize)
{
    const std::size_t nOffset = (aExif.size() + 1) / 2 * 2;
    aExif.resize(nOffset + nSize);
    return nOffset;
}

// The directory entry for a text, whose bytes are put where the old text was if they fit there, else at the
// end.
static RawEntry objTextEntry(std::vector<std::uint8_t>& aExif, const ExifText& objText, const IfdEntry* pOld,
                             bool bBigEndian)
{
    const std::size_t nSize = objText.sText.size() + 1;
    std::vector<std::uint8_t> aEntry(kEntrySize);
    PutU16(aEntry, 0, objText.nTag, bBigEndian);
    PutU16(aEntry, 2, 2, bBigEndian);
    PutU32(aEntry, 4, static_cast<std::uint32_t>(nSize), bBigEndian);
    if (nSize <= 4) {
        std::memcpy(aEntry.data() + 8, objText.sText.c_str(), nSize);
    } else {
        const bool bFits = pOld && pOld->nType == 2 && pOld->nValueSize >= nSize;
        const std::size_t nOffset = bFits ? pOld->nValueOffset : nAppended(aExif, nSize);
        std::memcpy(aExif.data() + nOffset, objText.sText.c_str(), nSize);
        PutU32(aEntry, 8, static_cast<std::uint32_t>(nOffset), bBigEndian);
    }
    RawEntry objEntry{objText.nTag, {}};
    std::copy(aEntry.begin(), aEntry.end(), objEntry.aBytes.begin());
    return objEntry;
}

static void WriteDirectory(std::vector<std::uint8_t>& aExif, std::size_t nOffset,
                           const std::vector<RawEntry>& aRaw, bool bBigEndian)
{
    PutU16(aExif, nOffset, static_cast<std::uint16_t>(aRaw.size()), bBigEndian);
    std::size_t nAt = nOffset + 2;
    for (const RawEntry& objEntry : aRaw) {
        std::copy(objEntry.aBytes.begin(), objEntry.aBytes.end(),
                  aExif.begin() + static_cast<std::ptrdiff_t>(nAt));
        nAt += kEntrySize;
    }
    PutU32(aExif, nAt, 0, bBigEndian);
}

void RewriteExif(std::vector<std::uint8_t>& aExif, const std::vector<ExifText>& aTexts)
{
    if (IfdReader(aExif).nFirstDirectory() == 0)
        aExif = {'I', 'I', 42, 0, 0, 0, 0, 0};
    const bool bBigEndian = IfdReader(aExif).bBigEndian();
    const std::size_t nOldDirectory = IfdReader(aExif).nFirstDirectory();
    const std::size_t nOldCount = IfdReader(aExif).nEntryCount(nOldDirectory);
    const std::vector<IfdEntry> aOld = IfdReader(aExif).aEntries(nOldDirectory);

    std::vector<RawEntry> aRaw;
    for (const IfdEntry& objEntry : aOld) {
        const bool bReplaced = std::any_of(aTexts.begin(), aTexts.end(), [&](const ExifText& objText) {
            return objText.nTag == objEntry.nTag;
        });
        if (bReplaced || bTagOfStorage(objEntry.nTag))
            continue;
        aRaw.push_back({objEntry.nTag, {}});
        std::memcpy(aRaw.back().aBytes.data(), aExif.data() + objEntry.nEntryOffset, kEntrySize);
    }
    for (const ExifText& objText : aTexts)
        aRaw.push_back(objTextEntry(aExif, objText, pEntryWithTag(aOld, objText.nTag), bBigEndian));
    if (aRaw.empty() || aRaw.size() > 0xFFFF) {
        aExif.clear();
        return;
    }
    std::stable_sort(aRaw.begin(), aRaw.end(),
                     [](const RawEntry& a, const RawEntry& b) { return a.nTag < b.nTag; });

    const std::size_t nNewSize = 2 + aRaw.size() * kEntrySize + 4;
    const std::size_t nOldSize =
        nOldCount > 0 ? std::min(aExif.size() - nOldDirectory, 2 + nOldCount * kEntrySize + 4) : 0;
    std::fill_n(aExif.begin() + static_cast<std::ptrdiff_t>(nOldCount > 0 ? nOldDirectory : 0), nOldSize,
                std::uint8_t{0});
    const std::size_t nDirectory = nNewSize <= nOldSize ? nOldDirectory : nAppended(aExif, nNewSize);
    WriteDirectory(aExif, nDirectory, aRaw, bBigEndian);
    PutU32(aExif, 4, static_cast<std::uint32_t>(nDirectory), bBigEndian);
}
