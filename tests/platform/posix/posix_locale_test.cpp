// The locale that the environment names.
#include "src/platform/posix/posix_locale.h"

#include <utility>
#include <vector>

#include "tests/platform/posix/support/host_folder.h"

static std::int32_t lLCIDOf(const char* sLang)
{
    const ScopedVariable objAll("LC_ALL", nullptr), objMessages("LC_MESSAGES", nullptr),
        objLang("LANG", sLang);
    return PosixLocale().GetUserDefaultLCID();
}

static char cSignOf(const char* sLang)
{
    const ScopedVariable objAll("LC_ALL", nullptr), objNumeric("LC_NUMERIC", nullptr), objLang("LANG", sLang);
    return PosixLocale().cDecimalSign();
}

TEST(PosixLocale, KnowsTheIdentifiersOfTheCommonLocales)
{
    const std::vector<std::pair<const char*, std::int32_t>> aLocales = {
        {"en_US.UTF-8", 1033}, {"en_GB.UTF-8", 2057},    {"ja_JP.UTF-8", 1041}, {"ko_KR.UTF-8", 1042},
        {"zh_TW.UTF-8", 1028}, {"zh_CN.UTF-8", 2052},    {"zh_HK", 3076},       {"zh_SG", 4100},
        {"zh_MO", 5124},       {"de_DE@euro", 1031},     {"de_AT", 3079},       {"fr_FR", 1036},
        {"es_ES", 3082},       {"pt_BR", 1046},          {"pt_PT", 2070},       {"ru_RU.KOI8-R", 1049},
        {"sr_RS@latin", 9242}, {"sr_RS.UTF-8", 10266},   {"it_IT", 1040},       {"nb_NO", 1044},
        {"ca_ES", 1027},       {"ca_ES@valencia", 2051}, {"fil_PH", 1124}};
    for (const auto& [sLang, lLCID] : aLocales)
        EXPECT_EQ(lLCIDOf(sLang), lLCID) << sLang;
}

TEST(PosixLocale, IsAmericanForWhateverElse)
{
    for (const char* sLang :
         {"C", "POSIX", "C.UTF-8", "en_AU.UTF-8", "en", "en_DK", "tlh_QX", "", "_", ".@", "nonsense"})
        EXPECT_EQ(lLCIDOf(sLang), 1033) << sLang;
    EXPECT_EQ(lLCIDOf(nullptr), 1033);
}

TEST(PosixLocale, TakesALanguagesFirstCountryForAnUnknownOne)
{
    EXPECT_EQ(lLCIDOf("de_XX.UTF-8"), 1031);
    EXPECT_EQ(lLCIDOf("ja"), 1041);
    EXPECT_EQ(lLCIDOf("zh"), 2052);
}

TEST(PosixLocale, AsksTheVariablesInTheirOrder)
{
    const ScopedVariable objLang("LANG", "de_DE"), objMessages("LC_MESSAGES", "fr_FR"),
        objNumeric("LC_NUMERIC", "en_US");
    {
        const ScopedVariable objAll("LC_ALL", "ja_JP");
        EXPECT_EQ(PosixLocale().GetUserDefaultLCID(), 1041);
    }
    const ScopedVariable objAll("LC_ALL", "");
    EXPECT_EQ(PosixLocale().GetUserDefaultLCID(), 1036);
    EXPECT_EQ(PosixLocale().cDecimalSign(), '.');
}

TEST(PosixLocale, HasTheDecimalSignOfTheLanguage)
{
    EXPECT_EQ(cSignOf("de_DE.UTF-8"), ',');
    EXPECT_EQ(cSignOf("de_CH.UTF-8"), '.');
    EXPECT_EQ(cSignOf("fr_FR"), ',');
    EXPECT_EQ(cSignOf("ja_JP"), '.');
    EXPECT_EQ(cSignOf("es_MX"), '.');
    EXPECT_EQ(cSignOf("en_US"), '.');
    EXPECT_EQ(cSignOf("C"), '.');
}
