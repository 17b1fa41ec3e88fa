#include "locale_language.h"

#include <QLocale>
#include <QString>

namespace velmor {

namespace {

struct LocaleRow {
    const char16_t* name;
    int localeId;
};

constexpr LocaleRow kLocales[] = {
    {u"ar_SA", 1025}, {u"bg_BG", 1026}, {u"ca_ES", 1027}, {u"zh_TW", 1028}, {u"cs_CZ", 1029},
    {u"da_DK", 1030}, {u"de_DE", 1031}, {u"el_GR", 1032}, {u"en_US", 1033}, {u"fi_FI", 1035},
    {u"fr_FR", 1036}, {u"he_IL", 1037}, {u"hu_HU", 1038}, {u"is_IS", 1039}, {u"it_IT", 1040},
    {u"ja_JP", 1041}, {u"ko_KR", 1042}, {u"nl_NL", 1043}, {u"nb_NO", 1044}, {u"pl_PL", 1045},
    {u"pt_BR", 1046}, {u"ro_RO", 1048}, {u"ru_RU", 1049}, {u"hr_HR", 1050}, {u"sk_SK", 1051},
    {u"sv_SE", 1053}, {u"th_TH", 1054}, {u"tr_TR", 1055}, {u"id_ID", 1057}, {u"uk_UA", 1058},
    {u"sl_SI", 1060}, {u"et_EE", 1061}, {u"lv_LV", 1062}, {u"lt_LT", 1063}, {u"fa_IR", 1065},
    {u"vi_VN", 1066}, {u"hi_IN", 1081}, {u"ms_MY", 1086}, {u"zh_CN", 2052}, {u"de_CH", 2055},
    {u"en_GB", 2057}, {u"es_MX", 2058}, {u"fr_BE", 2060}, {u"it_CH", 2064}, {u"nl_BE", 2067},
    {u"pt_PT", 2070}, {u"zh_HK", 3076}, {u"de_AT", 3079}, {u"en_AU", 3081}, {u"es_ES", 3082},
    {u"fr_CA", 3084}, {u"zh_SG", 4100}, {u"en_CA", 4105}, {u"fr_CH", 4108}, {u"zh_MO", 5124},
    {u"en_NZ", 5129}, {u"en_IE", 6153}, {u"en_ZA", 7177}, {u"en_IN", 16393},
    // The C and POSIX locales are American English by definition.
    {u"c", 1033},     {u"posix", 1033},
};

struct ModeRow {
    int localeId;
    int languageMode;
};

constexpr ModeRow kModes[] = {
    {2052, 1},
    {1033, 2},
    {1028, 0},
};
constexpr int kOtherLocaleMode = 1;

// "en-us.UTF-8@euro" -> "en_US": encoding and modifier dropped, the country in capitals.
QString canonicalName(QStringView localeName)
{
    qsizetype end = localeName.size();
    for (QChar stop : {u'.', u'@'}) {
        const qsizetype at = localeName.indexOf(stop);
        if (at >= 0 && at < end)
            end = at;
    }
    QString name = localeName.first(end).toString().replace(u'-', u'_');
    const qsizetype split = name.indexOf(u'_');
    if (split < 0)
        return name.toLower();
    return name.first(split).toLower() + u'_' + name.sliced(split + 1).toUpper();
}

}  // namespace

int languageModeForLocaleId(int localeId)
{
    for (const ModeRow& row : kModes) {
        if (row.localeId == localeId)
            return row.languageMode;
    }
    return kOtherLocaleMode;
}

int localeIdForName(QStringView localeName)
{
    const QString name = canonicalName(localeName);
    for (const LocaleRow& row : kLocales) {
        if (name == QStringView(row.name))
            return row.localeId;
    }
    return 0;
}

int systemLanguageMode()
{
    return languageModeForLocaleId(localeIdForName(QLocale::system().name()));
}

}  // namespace velmor
