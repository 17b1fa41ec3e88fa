// The about box, Help > About and Help > Content, and the manual beside the
// program.
#include "texts/about.h"
#include "texts/message.h"
#include "texts/window.h"
#include "ui/frm_about.h"
#include "ui/help_manual.h"
#include "window_rig.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

// A label whose whole text fits its width.
bool fits(const QLabel* label)
{
    return label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width();
}

// A button whose caption, access-key marker aside, fits inside its frame.
bool fits(const QPushButton* button)
{
    return button->fontMetrics().horizontalAdvance(button->text().remove(QLatin1Char('&'))) < button->width();
}

// Every label and button of the box is shown whole; a control without a
// caption has an accessible name.
void checkCaptions(const QWidget& box)
{
    const QList<QLabel*> labels = box.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 2);
    for (const QLabel* label : labels) {
        QVERIFY2(fits(label), qPrintable(QStringLiteral("%1: %2 px of text in %3 px")
                                             .arg(label->objectName())
                                             .arg(label->fontMetrics().horizontalAdvance(label->text()))
                                             .arg(label->contentsRect().width())));
        QVERIFY2(!label->text().isEmpty() || !label->accessibleName().isEmpty(), qPrintable(label->objectName()));
    }
    const QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 2);
    for (const QPushButton* button : buttons) {
        QVERIFY2(fits(button), qPrintable(button->objectName()));
        QVERIFY2(!button->text().isEmpty() || !button->accessibleName().isEmpty(), qPrintable(button->objectName()));
    }
}

// The operator sees an access key as an underline, not as "&" or "(&S)".
QString shown(const Text& caption, Language language)
{
    return pick(caption, language).remove(QRegularExpression(QStringLiteral("\\(&.\\)"))).remove(QLatin1Char('&'));
}

QString suffixOf(Language language)
{
    return language == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void addLanguageRows()
{
    QTest::addColumn<int>("languageMode");
    QTest::newRow("Chinese") << kChinese;
    QTest::newRow("English") << kEnglish;
}

}  // namespace

class AboutBoxTest : public QObject {
    Q_OBJECT

private slots:
    void textsFollowTheLanguage_data();
    void textsFollowTheLanguage();
    void captionsFitAtTheSmallestSize_data();
    void captionsFitAtTheSmallestSize();
    void okClosesTheBox_data();
    void okClosesTheBox();
    void systemInformationIsUnavailableHere_data();
    void systemInformationIsUnavailableHere();
    void helpAboutOpensTheBoxModally();
    void helpContentNamesAMissingManual();
    void openManualFindsNoManualBesideTheTestProgram();
    void theManualLiesBesideTheProgramInBothLanguages_data();
    void theManualLiesBesideTheProgramInBothLanguages();
    void anInstalledProgramFindsTheManualInItsDocFolder_data();
    void anInstalledProgramFindsTheManualInItsDocFolder();
    void theManualIsSelfContainedUtf8_data();
    void theManualIsSelfContainedUtf8();
    void theManualQuotesTheProgramsTexts_data();
    void theManualQuotesTheProgramsTexts();
};

void AboutBoxTest::captionsFitAtTheSmallestSize_data()
{
    addLanguageRows();
}

void AboutBoxTest::okClosesTheBox_data()
{
    addLanguageRows();
}

void AboutBoxTest::theManualLiesBesideTheProgramInBothLanguages_data()
{
    addLanguageRows();
}

void AboutBoxTest::anInstalledProgramFindsTheManualInItsDocFolder_data()
{
    addLanguageRows();
}

void AboutBoxTest::theManualIsSelfContainedUtf8_data()
{
    addLanguageRows();
}

void AboutBoxTest::theManualQuotesTheProgramsTexts_data()
{
    addLanguageRows();
}

void AboutBoxTest::textsFollowTheLanguage_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("sysInfo");
    QTest::newRow("English") << kEnglish << "About Velmor" << "Velmor  Pelinor Co." << "Ver. " VELMOR_VERSION << "OK"
                             << "&System Info...";
    QTest::newRow("Chinese") << kChinese << "关于模块参数设置程序" << "模块参数设置程序" << "版本 " VELMOR_VERSION
                             << "确定" << "系统信息(&S)...";
}

void AboutBoxTest::textsFollowTheLanguage()
{
    QFETCH(int, languageMode);
    QFETCH(QString, caption);
    QFETCH(QString, title);
    QFETCH(QString, version);
    QFETCH(QString, ok);
    QFETCH(QString, sysInfo);
    // The build's version: major.minor.patch.
    QVERIFY(QRegularExpression(QStringLiteral("^\\d+\\.\\d+\\.\\d+$")).match(QStringLiteral(VELMOR_VERSION)).hasMatch());
    RecordingDialogs dialogs;
    frmAbout box(languageOf(languageMode), dialogs);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.objectName(), QStringLiteral("frmAbout"));
    QCOMPARE(box.windowTitle(), caption);
    QCOMPARE(child<QLabel>(box, "lblTitle")->text(), title);
    QCOMPARE(child<QLabel>(box, "lblVersion")->text(), version);
    QCOMPARE(child<QPushButton>(box, "cmdOK")->text(), ok);
    QCOMPARE(child<QPushButton>(box, "cmdSysInfo")->text(), sysInfo);
    checkCaptions(box);
    if (QTest::currentTestFailed())
        return;
    VELMOR_COMPARE_SAID(dialogs.texts());
}

void AboutBoxTest::captionsFitAtTheSmallestSize()
{
    QFETCH(int, languageMode);
    RecordingDialogs dialogs;
    frmAbout box(languageOf(languageMode), dialogs);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    // The operator can shrink the box no further than its layout allows.
    QVERIFY(!box.minimumSize().isEmpty());
    box.resize(1, 1);
    QCOMPARE(box.size(), box.minimumSize());
    box.layout()->activate();
    checkCaptions(box);
}

void AboutBoxTest::okClosesTheBox()
{
    QFETCH(int, languageMode);
    RecordingDialogs dialogs;
    frmAbout box(languageOf(languageMode), dialogs);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QTest::mouseClick(child<QPushButton>(box, "cmdOK"), Qt::LeftButton);
    QVERIFY(!box.isVisible());
    QCOMPARE(box.result(), int(QDialog::Accepted));
    VELMOR_COMPARE_SAID(dialogs.texts());
}

void AboutBoxTest::systemInformationIsUnavailableHere_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("English") << kEnglish << "Module Setup" << "System Information Is Unavailable At This Time";
    QTest::newRow("Chinese") << kChinese << "模块参数设置" << "系统信息暂时不可用";
}

void AboutBoxTest::systemInformationIsUnavailableHere()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has the system-information tool");
#endif
    QFETCH(int, languageMode);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QCOMPARE(systemInfoTool(), QString());
    RecordingDialogs dialogs;
    frmAbout box(languageOf(languageMode), dialogs);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QTest::mouseClick(child<QPushButton>(box, "cmdSysInfo"), Qt::LeftButton);
    QVERIFY2(dialogs.messages.size() == 1, qPrintable(saidAndExpected(dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(dialogs.messages.first().first, title);
    QCOMPARE(dialogs.messages.first().second, text);
    QVERIFY(dialogs.questions.isEmpty());
    // The box stays open for OK.
    QVERIFY(box.isVisible());
}

void AboutBoxTest::helpAboutOpensTheBoxModally()
{
    WindowRig rig(kChinese);
    QString seen;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        seen = modal->objectName() + QLatin1Char('|') + modal->windowTitle();
        QTest::mouseClick(child<QPushButton>(*modal, "cmdOK"), Qt::LeftButton);
    });
    child<QAction>(rig.window, "MnuHelp_About")->trigger();
    QCOMPARE(seen, QStringLiteral("frmAbout|关于模块参数设置程序"));
}

void AboutBoxTest::helpContentNamesAMissingManual()
{
    // The test program's own folder has no manual beside it.
    WindowRig rig(kEnglish);
    child<QAction>(rig.window, "MnuHelp_Content")->trigger();
    QCOMPARE(rig.dialogs.texts(), QStringList{QStringLiteral("The help file is missing: ") +
                                              manualPath(Language::English, QApplication::applicationDirPath())});
}

void AboutBoxTest::openManualFindsNoManualBesideTheTestProgram()
{
    const QString folder = QApplication::applicationDirPath();
    QCOMPARE(manualPath(Language::Chinese), folder + QStringLiteral("/manual/velmor-zh.html"));
    QCOMPARE(manualPath(Language::English), folder + QStringLiteral("/manual/velmor-en.html"));
    QVERIFY(!QFileInfo::exists(folder + QStringLiteral("/manual")));
    // Nothing to open, and nothing shown: the caller decides what to say.
    QVERIFY(!openManual(Language::Chinese));
    QVERIFY(!openManual(Language::English));
}

void AboutBoxTest::theManualLiesBesideTheProgramInBothLanguages()
{
    QFETCH(int, languageMode);
    const Language language = languageOf(languageMode);
    const QString path = manualPath(language, QStringLiteral(VELMOR_PROGRAM_DIR));
    QCOMPARE(path, QStringLiteral(VELMOR_PROGRAM_DIR "/manual/velmor-%1.html").arg(suffixOf(language)));
    QVERIFY2(QFileInfo(path).isFile(), qPrintable(path));
    // The copy is the page as written.
    const QByteArray source = contentsOf(QStringLiteral(VELMOR_MANUAL_SOURCE_DIR "/velmor-%1.html").arg(suffixOf(language)));
    QVERIFY(!source.isEmpty());
    QCOMPARE(contentsOf(path), source);

    // Every picture the page shows that the screenshot script has taken lies
    // beside it too.
    const QString html = QString::fromUtf8(source);
    const QString screenshot = QStringLiteral("images/window-%1.png").arg(suffixOf(language));
    QStringList pictures;
    QRegularExpression src(QStringLiteral("<img\\s[^>]*src=\"([^\"]+)\""));
    for (const QRegularExpressionMatch& match : src.globalMatch(html))
        pictures << match.captured(1);
    QVERIFY2(pictures.contains(screenshot), qPrintable(pictures.join(QLatin1Char(' '))));
    const QDir beside = QFileInfo(path).dir();
    const QDir written(QStringLiteral(VELMOR_MANUAL_SOURCE_DIR));
    for (const QString& picture : pictures) {
        QVERIFY2(picture.startsWith(QStringLiteral("images/")), qPrintable(picture));
        if (written.exists(picture))
            QVERIFY2(beside.exists(picture), qPrintable(beside.filePath(picture)));
    }
}

void AboutBoxTest::anInstalledProgramFindsTheManualInItsDocFolder()
{
    QFETCH(int, languageMode);
    const Language language = languageOf(languageMode);
    const QString page = QStringLiteral("velmor-%1.html").arg(suffixOf(language));
    // An unpacked package: usr/bin and usr/share/doc/velmor, as installed.
    QTemporaryDir root;
    QVERIFY(root.isValid());
    const QString bin = root.filePath(QStringLiteral("usr/bin"));
    const QString doc = root.filePath(QStringLiteral("usr/share/doc/velmor"));
    QVERIFY(QDir().mkpath(bin));
    QVERIFY(QDir().mkpath(doc));
    QFile copyright(doc + QStringLiteral("/copyright"));
    QVERIFY(copyright.open(QIODevice::WriteOnly));
    copyright.close();

    // The pages were left out (a system that drops documentation): the path
    // named is still the documentation folder's, never one beside the binary.
    QCOMPARE(manualPath(language, bin), doc + QLatin1Char('/') + page);

    QVERIFY(QFile::copy(QStringLiteral(VELMOR_MANUAL_SOURCE_DIR "/") + page, doc + QLatin1Char('/') + page));
    const QString path = manualPath(language, bin);
    QCOMPARE(path, doc + QLatin1Char('/') + page);
    QVERIFY(QFileInfo(path).isFile());
    QVERIFY(!QFileInfo::exists(bin + QStringLiteral("/manual")));
}

void AboutBoxTest::theManualIsSelfContainedUtf8()
{
    QFETCH(int, languageMode);
    const Language language = languageOf(languageMode);
    const QByteArray bytes = contentsOf(manualPath(language, QStringLiteral(VELMOR_PROGRAM_DIR)));
    QVERIFY(!bytes.isEmpty());
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString html = utf8(bytes);
    QVERIFY2(!utf8.hasError(), "not valid UTF-8");
    QVERIFY(!html.startsWith(QChar(0xFEFF)));
    QVERIFY(html.contains(QStringLiteral("<meta charset=\"utf-8\">")));
    QVERIFY(html.contains(QStringLiteral("<html lang=\"%1\">")
                              .arg(language == Language::Chinese ? QStringLiteral("zh-CN") : QStringLiteral("en"))));
    // Opened from the disk, without a network: nothing fetched from elsewhere.
    // One style sheet of its own, beside the pages; nothing else is loaded.
    QCOMPARE(html.count(QLatin1String("<link")), 1);
    QVERIFY(html.contains(QLatin1String("<link rel=\"stylesheet\" href=\"manual.css\">")));
    for (const char* outside : {"<script", "@import", "url(", "http:", "https:", "//fonts."})
        QVERIFY2(!html.contains(QLatin1String(outside), Qt::CaseInsensitive), outside);

    qsizetype hanzi = 0;
    for (const QChar c : html)
        hanzi += c.unicode() >= 0x4E00 && c.unicode() <= 0x9FFF;
    if (language == Language::Chinese)
        QVERIFY2(hanzi > 2000, qPrintable(QString::number(hanzi)));
    else  // only the captions that read Chinese in both languages
        QVERIFY2(hanzi < 100, qPrintable(QString::number(hanzi)));
}

void AboutBoxTest::theManualQuotesTheProgramsTexts()
{
    QFETCH(int, languageMode);
    const Language language = languageOf(languageMode);
    const QString html = QString::fromUtf8(contentsOf(manualPath(language, QStringLiteral(VELMOR_PROGRAM_DIR))));
    QVERIFY(!html.isEmpty());
    // Each message as the operator reads it, so that a search of the manual
    // for the words in a box finds what to do about it.
    const QStringList quoted{
        pick(texts::message::kNoComPort, language),
        pick(texts::message::kOpenComPortFail, language),
        texts::message::openPortFail(QStringLiteral("ttyUSB0"), language),
        pick(texts::message::kNoRespond, language),
        pick(texts::message::kReturnDataFail, language),
        texts::message::foundModules(3, language),
        pick(texts::message::kNoModuleFound, language),
        pick(texts::message::kModuleTableFull, language),
        pick(texts::message::kOnlyOneModule, language),
        pick(texts::message::kInputDataError, language),
        pick(texts::message::kOpenConfigFail, language),
        pick(texts::message::kTitle, language),
        pick(texts::about::kSystemInfoUnavailable, language),
        pick(texts::about::kManualMissing, language).chopped(1),
        shown(texts::window::kFrame6, language),
        shown(texts::window::kSearchButton, language),
        shown(*texts::window::kFrameTabs[0], language),
        shown(*texts::window::kFrameTabs[1], language),
        shown(*texts::window::kFrameTabs[2], language),
        shown(texts::window::kBalance, language),
        shown(texts::window::kBeckon, language),
        shown(texts::window::kMnuHelpContent, language),
        shown(texts::about::kSystemInfo, language),
        QStringLiteral("TestConfig.cfg"),
        QStringLiteral("1 TM-C16"),
        QStringLiteral("velmor-cli"),
        QStringLiteral("velmor-sim"),
    };
    for (const QString& text : quoted)
        QVERIFY2(html.contains(text.toHtmlEscaped()), qPrintable(text));
}

QTEST_MAIN(AboutBoxTest)
#include "about_box_test.moc"
