// Makes the extension area of a Targa file.
#include "src/platform/image/codecs/tga/tga_extension.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string>
#include <string_view>

#include "src/platform/image/metadata/metadata.h"

// Where the fields begin, and how long they are with the zero that ends a text.
static constexpr std::size_t kAuthor = 2;
static constexpr std::size_t kShortText = 41;
static constexpr std::size_t kComments = 43;
static constexpr std::size_t kCommentLine = 81;
static constexpr std::size_t kCommentLines = 4;
static constexpr std::size_t kDate = 367;
static constexpr std::size_t kJobName = 379;
static constexpr std::size_t kSoftware = 426;
static constexpr std::size_t kSoftwareVersion = 467;

static constexpr std::uint8_t kUsefulAlpha = 3;

static void PutU16(std::span<std::uint8_t> aPlace, std::size_t nValue)
{
    aPlace[0] = static_cast<std::uint8_t>(nValue);
    aPlace[1] = static_cast<std::uint8_t>(nValue >> 8);
}

// The most of sText that fits in nRoom bytes without cutting a character in two.
static std::string_view sFitting(std::string_view sText, std::size_t nRoom)
{
    if (sText.size() <= nRoom)
        return sText;
    while (nRoom > 0 && (static_cast<unsigned char>(sText[nRoom]) & 0xC0) == 0x80)
        --nRoom;
    return sText.substr(0, nRoom);
}

static void PutText(std::span<std::uint8_t> aField, std::string_view sText)
{
    const std::string_view sPut = sFitting(sText, aField.size() - 1);
    std::copy(sPut.begin(), sPut.end(), aField.begin());
}

// Puts sText into the lines from nLine on and moves nLine behind it; what doesn't fit is left out.
static void PutLines(std::span<std::uint8_t> aComments, std::string_view sText, std::size_t& nLine)
{
    for (; !sText.empty() && nLine < kCommentLines; ++nLine) {
        const std::size_t nBreak = std::min(sText.find('\n'), sText.size());
        const std::string_view sLine = sFitting(sText.substr(0, nBreak), kCommentLine - 1);
        PutText(aComments.subspan(nLine * kCommentLine, kCommentLine), sLine);
        sText.remove_prefix(sLine.size() == nBreak ? std::min(nBreak + 1, sText.size())
                                                   : std::max<std::size_t>(sLine.size(), 1));
    }
}

// Month, day, year, hour, minute, second.
static void PutDate(std::span<std::uint8_t> aField, const std::string& sDateTime)
{
    const std::string sDate = ExifDate(sDateTime);
    static constexpr std::string_view kForm = "dddd:dd:dd dd:dd:dd";
    const bool bDate = sDate.size() == kForm.size() &&
                       std::equal(kForm.begin(), kForm.end(), sDate.begin(), [](char cForm, char cDate) {
                           return cForm == 'd' ? cDate >= '0' && cDate <= '9' : cForm == cDate;
                       });
    if (!bDate)
        return;
    static constexpr std::array<std::size_t, 6> kFrom = {5, 8, 0, 11, 14, 17};
    for (std::size_t i = 0; i < kFrom.size(); ++i) {
        std::size_t nNumber = 0;
        std::from_chars(sDate.data() + kFrom[i], sDate.data() + kFrom[i] + (kFrom[i] == 0 ? 4 : 2), nNumber);
        PutU16(aField.subspan(i * 2, 2), nNumber);
    }
}

std::array<std::uint8_t, kTgaExtensionSize> aTgaExtension(const ImageInfoTexts& objTexts, bool bAlpha)
{
    std::array<std::uint8_t, kTgaExtensionSize> aArea{};
    const std::span<std::uint8_t> aAll(aArea);
    PutU16(aAll, kTgaExtensionSize);
    PutText(aAll.subspan(kAuthor, kShortText), objTexts.sAuthor);
    std::size_t nLine = 0;
    const auto aComments = aAll.subspan(kComments, kCommentLines * kCommentLine);
    PutLines(aComments, objTexts.sTitle, nLine);
    PutLines(aComments, objTexts.sDescription, nLine);
    PutDate(aAll.subspan(kDate, 12), objTexts.sDateTime);
    PutText(aAll.subspan(kJobName, kShortText), objTexts.sTitle);
    PutText(aAll.subspan(kSoftware, kShortText), "Varnel");
    PutU16(aAll.subspan(kSoftwareVersion, 2), 100);  // hundredths
    aArea[kSoftwareVersion + 2] = ' ';
    aArea.back() = bAlpha ? kUsefulAlpha : 0;
    return aArea;
}
