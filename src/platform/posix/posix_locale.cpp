// Known locales with their identifiers and decimal signs.
#include "src/platform/posix/posix_locale.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace
{
struct LocaleRow {
    std::string_view language;
    std::string_view country;
    std::int32_t lcid;
    char decimal_sign;
};
}  // namespace

// The first row of a language also covers its other countries, except that other English is American.
static constexpr LocaleRow kLocales[] = {
    {"ar", "SA", 1025, '.'},  {"ar", "AE", 14337, '.'}, {"ar", "BH", 15361, '.'}, {"ar", "DZ", 5121, '.'},
    {"ar", "EG", 3073, '.'},  {"ar", "IQ", 2049, '.'},  {"ar", "JO", 11265, '.'}, {"ar", "KW", 13313, '.'},
    {"ar", "LB", 12289, '.'}, {"ar", "LY", 4097, '.'},  {"ar", "MA", 6145, '.'},  {"ar", "OM", 8193, '.'},
    {"ar", "QA", 16385, '.'}, {"ar", "SY", 10241, '.'}, {"ar", "TN", 7169, '.'},  {"ar", "YE", 9217, '.'},
    {"af", "ZA", 1078, '.'},  {"am", "ET", 1118, '.'},  {"as", "IN", 1101, '.'},  {"az", "AZ", 1068, ','},
    {"be", "BY", 1059, ','},  {"bg", "BG", 1026, ','},  {"bn", "IN", 1093, '.'},  {"bn", "BD", 2117, '.'},
    {"bo", "CN", 1105, '.'},  {"br", "FR", 1150, ','},  {"bs", "BA", 5146, ','},  {"ca", "ES", 1027, ','},
    {"cs", "CZ", 1029, ','},  {"cy", "GB", 1106, '.'},  {"da", "DK", 1030, ','},  {"de", "DE", 1031, ','},
    {"de", "AT", 3079, ','},  {"de", "CH", 2055, '.'},  {"de", "LI", 5127, '.'},  {"de", "LU", 4103, ','},
    {"dv", "MV", 1125, '.'},  {"el", "GR", 1032, ','},  {"en", "US", 1033, '.'},  {"en", "GB", 2057, '.'},
    {"es", "ES", 3082, ','},  {"es", "AR", 11274, ','}, {"es", "BO", 16394, ','}, {"es", "CL", 13322, ','},
    {"es", "CO", 9226, ','},  {"es", "CR", 5130, ','},  {"es", "DO", 7178, '.'},  {"es", "EC", 12298, ','},
    {"es", "GT", 4106, '.'},  {"es", "HN", 18442, '.'}, {"es", "MX", 2058, '.'},  {"es", "NI", 19466, '.'},
    {"es", "PA", 6154, '.'},  {"es", "PE", 10250, ','}, {"es", "PR", 20490, '.'}, {"es", "PY", 15370, ','},
    {"es", "SV", 17418, '.'}, {"es", "US", 21514, '.'}, {"es", "UY", 14346, ','}, {"es", "VE", 8202, ','},
    {"et", "EE", 1061, ','},  {"eu", "ES", 1069, ','},  {"fa", "IR", 1065, '.'},  {"fi", "FI", 1035, ','},
    {"fil", "PH", 1124, '.'}, {"fo", "FO", 1080, ','},  {"fr", "FR", 1036, ','},  {"fr", "BE", 2060, ','},
    {"fr", "CA", 3084, ','},  {"fr", "CH", 4108, '.'},  {"fr", "LU", 5132, ','},  {"fr", "MC", 6156, ','},
    {"fy", "NL", 1122, ','},  {"ga", "IE", 2108, '.'},  {"gd", "GB", 1169, '.'},  {"gl", "ES", 1110, ','},
    {"gu", "IN", 1095, '.'},  {"ha", "NG", 1128, '.'},  {"he", "IL", 1037, '.'},  {"hi", "IN", 1081, '.'},
    {"hr", "HR", 1050, ','},  {"hsb", "DE", 1070, ','}, {"hu", "HU", 1038, ','},  {"hy", "AM", 1067, '.'},
    {"id", "ID", 1057, ','},  {"ig", "NG", 1136, '.'},  {"is", "IS", 1039, ','},  {"it", "IT", 1040, ','},
    {"it", "CH", 2064, '.'},  {"ja", "JP", 1041, '.'},  {"ka", "GE", 1079, ','},  {"kk", "KZ", 1087, ','},
    {"kl", "GL", 1135, ','},  {"km", "KH", 1107, '.'},  {"kn", "IN", 1099, '.'},  {"ko", "KR", 1042, '.'},
    {"kok", "IN", 1111, '.'}, {"ky", "KG", 1088, ','},  {"lb", "LU", 1134, ','},  {"lo", "LA", 1108, '.'},
    {"lt", "LT", 1063, ','},  {"lv", "LV", 1062, ','},  {"mi", "NZ", 1153, '.'},  {"mk", "MK", 1071, ','},
    {"ml", "IN", 1100, '.'},  {"mn", "MN", 1104, ','},  {"mr", "IN", 1102, '.'},  {"ms", "MY", 1086, '.'},
    {"ms", "BN", 2110, ','},  {"mt", "MT", 1082, '.'},  {"nb", "NO", 1044, ','},  {"ne", "NP", 1121, '.'},
    {"nl", "NL", 1043, ','},  {"nl", "BE", 2067, ','},  {"nn", "NO", 2068, ','},  {"no", "NO", 1044, ','},
    {"nso", "ZA", 1132, '.'}, {"oc", "FR", 1154, ','},  {"or", "IN", 1096, '.'},  {"pa", "IN", 1094, '.'},
    {"pl", "PL", 1045, ','},  {"ps", "AF", 1123, '.'},  {"pt", "PT", 2070, ','},  {"pt", "BR", 1046, ','},
    {"ro", "RO", 1048, ','},  {"ru", "RU", 1049, ','},  {"rw", "RW", 1159, ','},  {"sa", "IN", 1103, '.'},
    {"se", "NO", 1083, ','},  {"si", "LK", 1115, '.'},  {"sk", "SK", 1051, ','},  {"sl", "SI", 1060, ','},
    {"sq", "AL", 1052, ','},  {"sr", "RS", 10266, ','}, {"sr", "ME", 12314, ','}, {"sv", "SE", 1053, ','},
    {"sv", "FI", 2077, ','},  {"sw", "KE", 1089, '.'},  {"ta", "IN", 1097, '.'},  {"ta", "LK", 2121, '.'},
    {"te", "IN", 1098, '.'},  {"tg", "TJ", 1064, ','},  {"th", "TH", 1054, '.'},  {"tk", "TM", 1090, '.'},
    {"tn", "ZA", 1074, '.'},  {"tr", "TR", 1055, ','},  {"tt", "RU", 1092, ','},  {"ug", "CN", 1152, '.'},
    {"uk", "UA", 1058, ','},  {"ur", "PK", 1056, '.'},  {"ur", "IN", 2080, '.'},  {"uz", "UZ", 1091, '.'},
    {"vi", "VN", 1066, ','},  {"wo", "SN", 1160, ','},  {"xh", "ZA", 1076, '.'},  {"yo", "NG", 1130, '.'},
    {"zh", "CN", 2052, '.'},  {"zh", "HK", 3076, '.'},  {"zh", "MO", 5124, '.'},  {"zh", "SG", 4100, '.'},
    {"zh", "TW", 1028, '.'},  {"zu", "ZA", 1077, '.'}};

static constexpr LocaleRow kAmerican = {"en", "US", 1033, '.'};
static constexpr std::int32_t kSerbianLatin = 9242;
static constexpr std::int32_t kValencian = 2051;

// The locale name for a category: the first non-empty of the three variables.
static std::string LocaleName(const char* category)
{
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        const char* value = std::getenv(variable);
        if (value && *value != '\0')
            return value;
    }
    return "C";
}

// A name is "language_COUNTRY.encoding@modifier"; everything but the language is optional.
static const LocaleRow& RowOf(std::string_view name)
{
    name = name.substr(0, name.find_first_of(".@"));
    const std::size_t cut = name.find('_');
    const std::string_view language = name.substr(0, cut);
    const std::string_view country = cut == std::string_view::npos ? "" : name.substr(cut + 1);
    const LocaleRow* best = nullptr;
    for (const LocaleRow& row : kLocales) {
        if (row.language != language)
            continue;
        if (row.country == country)
            return row;
        if (!best)
            best = &row;
    }
    return best ? *best : kAmerican;
}

std::int32_t PosixLocale::GetUserDefaultLCID() const
{
    const std::string name = LocaleName("LC_MESSAGES");
    const LocaleRow& row = RowOf(name);
    if (row.language == "sr" && name.ends_with("@latin"))
        return kSerbianLatin;
    if (row.language == "ca" && name.ends_with("@valencia"))
        return kValencian;
    return row.lcid;
}

char PosixLocale::cDecimalSign() const
{
    return RowOf(LocaleName("LC_NUMERIC")).decimal_sign;
}
