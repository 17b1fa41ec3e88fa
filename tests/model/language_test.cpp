#include "texts/language.h"
#include "texts/locale_language.h"
#include "texts/message.h"

#include <QTest>

using namespace velmor;

class LanguageTest : public QObject {
    Q_OBJECT

private slots:
    void languageModeForLocaleId_data();
    void languageModeForLocaleId();
    void locale1028ShowsEnglish();
    void locale1041ShowsChinese();
    void localeIdForName_data();
    void localeIdForName();
    void cAndPosixMapToEnglish_data();
    void cAndPosixMapToEnglish();
    void messageBoxTitleByLanguageMode_data();
    void messageBoxTitleByLanguageMode();
};

void LanguageTest::languageModeForLocaleId_data()
{
    QTest::addColumn<int>("localeId");
    QTest::addColumn<int>("mode");
    QTest::newRow("2052 zh_CN") << 2052 << 1;
    QTest::newRow("1033 en_US") << 1033 << 2;
    QTest::newRow("1028 zh_TW") << 1028 << 0;
    QTest::newRow("1041 ja_JP") << 1041 << 1;
    QTest::newRow("2057 en_GB") << 2057 << 1;
    QTest::newRow("3076 zh_HK") << 3076 << 1;
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("-1") << -1 << 1;
}

void LanguageTest::languageModeForLocaleId()
{
    QFETCH(int, localeId);
    QFETCH(int, mode);
    QCOMPARE(velmor::languageModeForLocaleId(localeId), mode);
}

void LanguageTest::locale1028ShowsEnglish()
{
    QCOMPARE(languageOf(velmor::languageModeForLocaleId(1028)), Language::English);
    QCOMPARE(languageOf(velmor::languageModeForLocaleId(velmor::localeIdForName(u"zh_TW"))), Language::English);
}

void LanguageTest::locale1041ShowsChinese()
{
    QCOMPARE(languageOf(velmor::languageModeForLocaleId(1041)), Language::Chinese);
    QCOMPARE(languageOf(velmor::languageModeForLocaleId(velmor::localeIdForName(u"ja_JP"))), Language::Chinese);
}

void LanguageTest::localeIdForName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("localeId");
    QTest::newRow("zh_CN") << "zh_CN" << 2052;
    QTest::newRow("en_US") << "en_US" << 1033;
    QTest::newRow("zh_TW") << "zh_TW" << 1028;
    QTest::newRow("en_GB") << "en_GB" << 2057;
    QTest::newRow("ja_JP") << "ja_JP" << 1041;
    QTest::newRow("de_DE") << "de_DE" << 1031;
    QTest::newRow("fr_FR") << "fr_FR" << 1036;
    QTest::newRow("ko_KR") << "ko_KR" << 1042;
    QTest::newRow("zh_HK") << "zh_HK" << 3076;
    QTest::newRow("zh_SG") << "zh_SG" << 4100;
    QTest::newRow("ru_RU") << "ru_RU" << 1049;
    QTest::newRow("it_IT") << "it_IT" << 1040;
    QTest::newRow("es_ES") << "es_ES" << 3082;
    QTest::newRow("POSIX encoding") << "zh_CN.UTF-8" << 2052;
    QTest::newRow("POSIX modifier") << "de_DE@euro" << 1031;
    QTest::newRow("both") << "en_US.ISO-8859-1@x" << 1033;
    QTest::newRow("hyphen") << "en-US" << 1033;
    QTest::newRow("odd case") << "ZH_cn" << 2052;
    QTest::newRow("language only") << "en" << 0;
    QTest::newRow("unknown") << "xx_YY" << 0;
    QTest::newRow("empty") << "" << 0;
}

void LanguageTest::localeIdForName()
{
    QFETCH(QString, name);
    QFETCH(int, localeId);
    QCOMPARE(velmor::localeIdForName(name), localeId);
}

void LanguageTest::cAndPosixMapToEnglish_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("C") << "C";
    QTest::newRow("C.UTF-8") << "C.UTF-8";
    QTest::newRow("POSIX") << "POSIX";
}

void LanguageTest::cAndPosixMapToEnglish()
{
    QFETCH(QString, name);
    // American English by definition, not an unlisted locale (which reads Chinese).
    QCOMPARE(velmor::localeIdForName(name), 1033);
    QCOMPARE(velmor::languageModeForLocaleId(velmor::localeIdForName(name)), 2);
}

void LanguageTest::messageBoxTitleByLanguageMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("title");
    QTest::newRow("1") << 1 << "模块参数设置";
    QTest::newRow("2") << 2 << "Module Setup";
    QTest::newRow("0") << 0 << "Module Setup";
}

void LanguageTest::messageBoxTitleByLanguageMode()
{
    QFETCH(int, mode);
    QFETCH(QString, title);
    QCOMPARE(pick(texts::message::kTitle, languageOf(mode)), title);
}

QTEST_APPLESS_MAIN(LanguageTest)
#include "language_test.moc"
