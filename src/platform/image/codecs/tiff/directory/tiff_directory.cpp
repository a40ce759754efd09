// Walks TIFF directories in both byte orders and both sizes. Every number comes from the file and may be
// anything.
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/metadata/metadata_edit.h"

static constexpr std::size_t kMaxPages = 65535;
static constexpr std::uint64_t kMaxEntries = 65535;
static constexpr std::uint64_t kMaxCopied = 64 * 1024 * 1024;  // bytes of values, all in all
static constexpr int kMaxDepth = 3;                            // page, EXIF, interoperability

std::uint32_t nTiffTypeSize(std::uint16_t nType)
{
    static constexpr std::array<std::uint8_t, 19> kSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4,
                                                            8, 4, 8, 4, 0, 0, 8, 8, 8};
    return nType < kSizes.size() ? kSizes[nType] : 0;
}

static std::uint64_t nNumberAt(const std::uint8_t* pBytes, std::uint32_t nSize, bool bBigEndian)
{
    std::uint64_t nValue = 0;
    for (std::uint32_t i = 0; i < nSize; ++i)
        nValue = nValue << 8 | pBytes[bBigEndian ? i : nSize - 1 - i];
    return nValue;
}

// A number of 2, 4 or 8 bytes at an offset; nothing beyond the end.
static std::optional<std::uint64_t> nReadAt(InputFile& objFile, const TiffHeader& objHeader,
                                            std::uint64_t nOffset, std::uint32_t nSize)
{
    std::array<std::uint8_t, 8> aBytes{};
    if (objFile.ReadAt(nOffset, std::span(aBytes).first(nSize)) != nSize)
        return std::nullopt;
    return nNumberAt(aBytes.data(), nSize, objHeader.bBigEndian);
}

std::optional<TiffHeader> objReadTiffHeader(InputFile& objFile)
{
    const Bytes aHead = objFile.Head();
    if (aHead.size() < 8 || aHead[0] != aHead[1] || (aHead[0] != 'I' && aHead[0] != 'M'))
        return std::nullopt;
    TiffHeader objHeader;
    objHeader.bBigEndian = aHead[0] == 'M';
    const std::uint64_t nVersion = nNumberAt(aHead.data() + 2, 2, objHeader.bBigEndian);
    if (nVersion == 42) {
        objHeader.nFirstDirectory = nNumberAt(aHead.data() + 4, 4, objHeader.bBigEndian);
        return objHeader;
    }
    if (nVersion != 43 || aHead.size() < 16 || nNumberAt(aHead.data() + 4, 2, objHeader.bBigEndian) != 8)
        return std::nullopt;
    objHeader.bBigTiff = true;
    objHeader.nFirstDirectory = nNumberAt(aHead.data() + 8, 8, objHeader.bBigEndian);
    return objHeader;
}

// How many entries the directory has; 0 unless all of them lie inside the file.
static std::uint64_t nEntryCount(InputFile& objFile, const TiffHeader& objHeader, std::uint64_t nDirectory)
{
    const std::uint64_t nCountSize = objHeader.bBigTiff ? 8 : 2;
    const std::uint64_t nEntrySize = objHeader.bBigTiff ? 20 : 12;
    if (nDirectory < 8 || objFile.Size() < nCountSize || nDirectory > objFile.Size() - nCountSize)
        return 0;
    const std::uint64_t nFirst = nDirectory + nCountSize;
    const std::uint64_t nCount =
        nReadAt(objFile, objHeader, nDirectory, static_cast<std::uint32_t>(nCountSize)).value_or(0);
    if (nCount > kMaxEntries)
        return 0;
    return nCount * nEntrySize <= objFile.Size() - nFirst ? nCount : 0;
}

std::vector<std::uint64_t> aPageDirectories(InputFile& objFile, const TiffHeader& objHeader)
{
    std::vector<std::uint64_t> aFound;
    std::unordered_set<std::uint64_t> aSeen;
    std::uint64_t nDirectory = objHeader.nFirstDirectory;
    while (nDirectory != 0 && aFound.size() < kMaxPages && aSeen.insert(nDirectory).second) {
        const std::uint64_t nCount = nEntryCount(objFile, objHeader, nDirectory);
        if (nCount == 0)
            break;
        aFound.push_back(nDirectory);
        const std::uint64_t nNextPointer =
            nDirectory + (objHeader.bBigTiff ? 8 + nCount * 20 : 2 + nCount * 12);
        nDirectory = nReadAt(objFile, objHeader, nNextPointer, objHeader.bBigTiff ? 8 : 4).value_or(0);
    }
    return aFound;
}

std::vector<TiffEntry> aReadEntries(InputFile& objFile, const TiffHeader& objHeader, std::uint64_t nDirectory)
{
    const std::uint64_t nCount = nEntryCount(objFile, objHeader, nDirectory);
    const std::uint32_t nCountSize = objHeader.bBigTiff ? 8 : 4;  // also the size of an offset
    const std::uint32_t nEntrySize = 4 + 2 * nCountSize;
    const std::uint64_t nFirst = nDirectory + (objHeader.bBigTiff ? 8 : 2);
    std::vector<std::uint8_t> aBytes(nCount * nEntrySize);
    if (objFile.ReadAt(nFirst, aBytes) != aBytes.size())
        return {};
    std::vector<TiffEntry> aFound;
    aFound.reserve(nCount);
    for (std::uint64_t i = 0; i < nCount; ++i) {
        const std::uint8_t* pEntry = aBytes.data() + i * nEntrySize;
        TiffEntry objEntry;
        objEntry.nTag = static_cast<std::uint16_t>(nNumberAt(pEntry, 2, objHeader.bBigEndian));
        objEntry.nType = static_cast<std::uint16_t>(nNumberAt(pEntry + 2, 2, objHeader.bBigEndian));
        objEntry.nCount = nNumberAt(pEntry + 4, nCountSize, objHeader.bBigEndian);
        const std::uint64_t nSize = nTiffTypeSize(objEntry.nType);
        if (nSize == 0 || objEntry.nCount == 0 || objEntry.nCount > objFile.Size() / nSize)
            continue;
        objEntry.nValueOffset = objEntry.nCount * nSize <= nCountSize
                                    ? nFirst + i * nEntrySize + 4 + nCountSize
                                    : nNumberAt(pEntry + 4 + nCountSize, nCountSize, objHeader.bBigEndian);
        if (objEntry.nValueOffset <= objFile.Size() - objEntry.nCount * nSize)
            aFound.push_back(objEntry);
    }
    return aFound;
}

const TiffEntry* pEntryOf(std::span<const TiffEntry> aEntries, std::uint16_t nTag)
{
    const auto itFound = std::find_if(aEntries.begin(), aEntries.end(),
                                      [nTag](const TiffEntry& objEntry) { return objEntry.nTag == nTag; });
    return itFound == aEntries.end() ? nullptr : &*itFound;
}

// Bytes of one number of the type: a rational is two numbers.
static std::uint32_t nNumberSize(std::uint16_t nType)
{
    return nType == 5 || nType == 10 ? 4 : nTiffTypeSize(nType);
}

std::vector<std::uint8_t> aReadValue(InputFile& objFile, const TiffHeader& objHeader,
                                     const TiffEntry& objEntry, std::uint64_t nLimit, bool bAsStored)
{
    const std::uint64_t nSize = objEntry.nCount * nTiffTypeSize(objEntry.nType);
    if (nSize > nLimit)
        return {};
    std::vector<std::uint8_t> aValue(nSize);
    if (objFile.ReadAt(objEntry.nValueOffset, aValue) != nSize)
        return {};
    const std::uint32_t nNumber = nNumberSize(objEntry.nType);
    if (objHeader.bBigEndian && !bAsStored && nNumber > 1)
        for (std::uint8_t* p = aValue.data(); p != aValue.data() + nSize; p += nNumber)
            std::reverse(p, p + nNumber);
    return aValue;
}

std::optional<std::uint64_t> nReadNumber(InputFile& objFile, const TiffHeader& objHeader,
                                         const TiffEntry& objEntry)
{
    static constexpr std::array<std::uint16_t, 7> kWhole = {1, 3, 4, 13, 16, 18, 7};
    if (std::find(kWhole.begin(), kWhole.end(), objEntry.nType) == kWhole.end())
        return std::nullopt;
    return nReadAt(objFile, objHeader, objEntry.nValueOffset, nTiffTypeSize(objEntry.nType));
}

bool bPointsToTiffDirectory(std::uint16_t nTag)
{
    return nTag == kTagExifDirectory || nTag == kTagGpsDirectory || nTag == kTagInteroperability;
}

static std::vector<TiffTag> aReadTagsAt(InputFile& objFile, const TiffHeader& objHeader,
                                        std::span<const TiffEntry> aEntries,
                                        const std::span<const std::uint16_t>* pWanted, int nDepth,
                                        std::uint64_t& nBudget)
{
    std::vector<TiffTag> aTags;
    for (const TiffEntry& objEntry : aEntries) {
        if (pWanted && !std::binary_search(pWanted->begin(), pWanted->end(), objEntry.nTag))
            continue;
        TiffTag objTag{objEntry.nTag, objEntry.nType, objEntry.nCount, {}, {}};
        if (bPointsToTiffDirectory(objEntry.nTag)) {
            const std::uint64_t nDirectory = nReadNumber(objFile, objHeader, objEntry).value_or(0);
            if (nDepth + 1 < kMaxDepth)
                objTag.aDirectory =
                    aReadTagsAt(objFile, objHeader, aReadEntries(objFile, objHeader, nDirectory), nullptr,
                                nDepth + 1, nBudget);
            if (objTag.aDirectory.empty())
                continue;
        } else {
            objTag.aValue = aReadValue(objFile, objHeader, objEntry, nBudget);
            if (objTag.aValue.empty())
                continue;
            nBudget -= objTag.aValue.size();
        }
        aTags.push_back(std::move(objTag));
    }
    // A directory has its tags in ascending order and each once; what breaks the rule is brought to it.
    std::stable_sort(aTags.begin(), aTags.end(), [](const TiffTag& objLeft, const TiffTag& objRight) {
        return objLeft.nTag < objRight.nTag;
    });
    aTags.erase(std::unique(aTags.begin(), aTags.end(),
                            [](const TiffTag& objLeft, const TiffTag& objRight) {
                                return objLeft.nTag == objRight.nTag;
                            }),
                aTags.end());
    return aTags;
}

std::vector<TiffTag> aReadTags(InputFile& objFile, const TiffHeader& objHeader,
                               std::span<const TiffEntry> aEntries, std::span<const std::uint16_t> aWanted)
{
    // Values that don't overlap are no more than the file: entries that all claim the same block come to an
    // end.
    std::uint64_t nBudget = std::min(objFile.Size(), kMaxCopied);
    return aReadTagsAt(objFile, objHeader, aEntries, &aWanted, 0, nBudget);
}
