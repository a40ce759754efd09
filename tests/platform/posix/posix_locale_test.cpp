// Tests of the locale from the environment.
#include "src/platform/posix/posix_locale.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/platform/posix/support/host_folder.h"

static std::int32_t LcidOf(const char* value)
{
    const ScopedVariable all("LC_ALL", nullptr), messages("LC_MESSAGES", nullptr), lang("LANG", value);
    return PosixLocale().GetUserDefaultLCID();
}

static char SignOf(const char* value)
{
    const ScopedVariable all("LC_ALL", nullptr), numeric("LC_NUMERIC", nullptr), lang("LANG", value);
    return PosixLocale().cDecimalSign();
}

TEST(PosixLocale, KnowsIdentifiersOfCommonLocales)
{
    const std::vector<std::pair<const char*, std::int32_t>> locales = {
        {"en_US.UTF-8", 1033}, {"en_GB.UTF-8", 2057},    {"ja_JP.UTF-8", 1041}, {"ko_KR.UTF-8", 1042},
        {"zh_TW.UTF-8", 1028}, {"zh_CN.UTF-8", 2052},    {"zh_HK", 3076},       {"zh_SG", 4100},
        {"zh_MO", 5124},       {"de_DE@euro", 1031},     {"de_AT", 3079},       {"fr_FR", 1036},
        {"es_ES", 3082},       {"pt_BR", 1046},          {"pt_PT", 2070},       {"ru_RU.KOI8-R", 1049},
        {"sr_RS@latin", 9242}, {"sr_RS.UTF-8", 10266},   {"it_IT", 1040},       {"nb_NO", 1044},
        {"ca_ES", 1027},       {"ca_ES@valencia", 2051}, {"fil_PH", 1124}};
    for (const auto& [lang, lcid] : locales)
        EXPECT_EQ(LcidOf(lang), lcid) << lang;
}

TEST(PosixLocale, FallsBackToAmericanEnglish)
{
    for (const char* lang :
         {"C", "POSIX", "C.UTF-8", "en_AU.UTF-8", "en", "en_DK", "tlh_QX", "", "_", ".@", "nonsense"})
        EXPECT_EQ(LcidOf(lang), 1033) << lang;
    EXPECT_EQ(LcidOf(nullptr), 1033);
}

TEST(PosixLocale, FallsBackToFirstCountryOfLanguage)
{
    EXPECT_EQ(LcidOf("de_XX.UTF-8"), 1031);
    EXPECT_EQ(LcidOf("ja"), 1041);
    EXPECT_EQ(LcidOf("zh"), 2052);
}

TEST(PosixLocale, ChecksVariablesInPosixOrder)
{
    const ScopedVariable lang("LANG", "de_DE"), messages("LC_MESSAGES", "fr_FR"),
        numeric("LC_NUMERIC", "en_US");
    {
        const ScopedVariable all("LC_ALL", "ja_JP");
        EXPECT_EQ(PosixLocale().GetUserDefaultLCID(), 1041);
    }
    const ScopedVariable all("LC_ALL", "");
    EXPECT_EQ(PosixLocale().GetUserDefaultLCID(), 1036);
    EXPECT_EQ(PosixLocale().cDecimalSign(), '.');
}

TEST(PosixLocale, UsesDecimalSignOfLanguage)
{
    EXPECT_EQ(SignOf("de_DE.UTF-8"), ',');
    EXPECT_EQ(SignOf("de_CH.UTF-8"), '.');
    EXPECT_EQ(SignOf("fr_FR"), ',');
    EXPECT_EQ(SignOf("ja_JP"), '.');
    EXPECT_EQ(SignOf("es_MX"), '.');
    EXPECT_EQ(SignOf("en_US"), '.');
    EXPECT_EQ(SignOf("C"), '.');
}
