// The window as a desktop program: its command line (--version, a file to
// open, --lang, a wrong argument), the language chosen under View > Language
// and kept for the next start, the title, and what the status bar says after
// a file was opened or saved.

#include "config/config_file.h"
#include "model/models.h"
#include "sim/sim_values.h"
#include "texts/locale_language.h"
#include "ui/operator_settings.h"
#include "ui/window_arguments.h"
#include "window_rig.h"

#include <QActionGroup>
#include <QFile>
#include <QMenu>
#include <QProcess>
#include <QStatusBar>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

// One of our programs run to its end, with extra environment, in a desktop
// session of its own (Qt warns on standard error without a runtime folder).
Run run(const QString& program, const QStringList& arguments, const QStringList& environment = {})
{
    QTemporaryDir runtime;
    QFile::setPermissions(runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    for (const QString& pair : environment)
        env.insert(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    if (!process.waitForFinished(20000)) {
        process.kill();
        process.waitForFinished();
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

const QString kWindow = QStringLiteral(VELMOR_WINDOW_EXECUTABLE);

QAction* entry(frmMain& window, const char* name) { return child<QAction>(window, name); }

QString statusText(frmMain& window) { return window.statusBar()->currentMessage(); }

}  // namespace

class DesktopTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void everyProgramTellsItsVersion_data();
    void everyProgramTellsItsVersion();
    void theWindowsHelpNeedsNoDisplay();
    void aWrongArgumentIsAUsageErrorInTheRunsLanguage_data();
    void aWrongArgumentIsAUsageErrorInTheRunsLanguage();
    void argumentsAreRead_data();
    void argumentsAreRead();
    void aFileGivenOnTheCommandLineIsOpened();
    void theLanguageMenuKeepsTheChoiceForTheNextStart();
    void langOverridesTheChoiceForOneRun();
    void titleAndStatusBarFollowOpenAndSave();
};

void DesktopTest::init() { OperatorSettings().clear(); }

void DesktopTest::everyProgramTellsItsVersion_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("name");
    QTest::newRow("velmor") << kWindow << "velmor";
    QTest::newRow("velmor-cli") << QStringLiteral(VELMOR_CLI_EXECUTABLE) << "velmor-cli";
    QTest::newRow("velmor-sim") << QStringLiteral(VELMOR_SIM_EXECUTABLE) << "velmor-sim";
}

void DesktopTest::everyProgramTellsItsVersion()
{
    QFETCH(QString, program);
    QFETCH(QString, name);
    const Run result = run(program, {QStringLiteral("--version")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, QStringLiteral("%1 %2\n").arg(name, QStringLiteral(VELMOR_VERSION)));
}

void DesktopTest::theWindowsHelpNeedsNoDisplay()
{
    // No display at all: the xcb platform could not start, and none is tried.
    const Run result = run(kWindow, {QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("--help")},
                           {QStringLiteral("QT_QPA_PLATFORM=xcb"), QStringLiteral("DISPLAY=")});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.startsWith(QStringLiteral("Usage: velmor [--lang zh|en] [FILE]\n")), qPrintable(result.out));
}

void DesktopTest::aWrongArgumentIsAUsageErrorInTheRunsLanguage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("firstLine");
    QTest::newRow("unknown, English") << QStringList{"--bogus", "--lang", "en"} << "Unknown option --bogus.";
    QTest::newRow("unknown, Chinese") << QStringList{"--lang=zh", "--bogus"} << "未知选项 --bogus。";
    QTest::newRow("bad --lang") << QStringList{"--lang", "fr", "--lang", "en"} << "--lang takes zh or en.";
    QTest::newRow("two files") << QStringList{"--lang", "en", "a.cfg", "b.cfg"} << "Only one file can be opened: b.cfg.";
}

void DesktopTest::aWrongArgumentIsAUsageErrorInTheRunsLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, firstLine);
    const Run result = run(kWindow, arguments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err.section(QLatin1Char('\n'), 0, 0), firstLine);
    QVERIFY(result.err.contains(QStringLiteral("velmor [--lang zh|en] [FILE]")));
    QVERIFY(result.out.isEmpty());
}

void DesktopTest::argumentsAreRead_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("languageMode");  // 0: none given
    QTest::addColumn<QString>("file");
    QTest::newRow("nothing") << QStringList{} << 0 << "";
    QTest::newRow("a file") << QStringList{"bench.cfg"} << 0 << "bench.cfg";
    QTest::newRow("lang and file") << QStringList{"--lang", "zh", "x.cfg"} << 1 << "x.cfg";
    QTest::newRow("lang=en") << QStringList{"--lang=en"} << 2 << "";
    QTest::newRow("a file named like an option") << QStringList{"--", "-odd.cfg"} << 0 << "-odd.cfg";
}

void DesktopTest::argumentsAreRead()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, languageMode);
    QFETCH(QString, file);
    WindowArguments given;
    QCOMPARE(readWindowArguments(arguments, given, Language::English), QString());
    QCOMPARE(given.languageMode.value_or(0), languageMode);
    QCOMPARE(given.file, file);
}

void DesktopTest::aFileGivenOnTheCommandLineIsOpened()
{
    // The window reports its title through the probe that the package test
    // loads too, then ends. A line is listed, so that no box waits at start.
    SimLine line;
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bench.cfg"));
    QVERIFY(saveConfigFile(path, sim::simulatedModule(7, kTmB8, 3)));
    const QString probe = folder.filePath(QStringLiteral("captions.txt"));
    const Run result = run(kWindow, {QStringLiteral("--lang"), QStringLiteral("en"), path},
                           {QStringLiteral("QT_PLUGIN_PATH=" VELMOR_PROBE_PLUGIN_PATH),
                            QStringLiteral("QT_QPA_GENERIC_PLUGINS=caption_probe"),
                            QStringLiteral("VELMOR_CAPTION_PROBE_OUT=") + probe});
    QCOMPARE(result.exitCode, 0);
    QFile captions(probe);
    QVERIFY(captions.open(QIODevice::ReadOnly));
    const QString title = QString::fromUtf8(captions.readLine()).trimmed();
    QCOMPARE(title, QStringLiteral("TM-B8 at address 7 — bench.cfg — Velmor"));
}

void DesktopTest::theLanguageMenuKeepsTheChoiceForTheNextStart()
{
    WindowRig rig(kChinese);
    auto* menu = child<QMenu>(rig.window, "MnuView_Language");
    QCOMPARE(menu->title(), QStringLiteral("界面语言(&G)"));
    QVERIFY(child<QMenu>(rig.window, "MnuView")->actions().contains(menu->menuAction()));
    QCOMPARE(entry(rig.window, "MnuView_Language_Note")->text(), QStringLiteral("下次启动时生效"));
    QAction* system = entry(rig.window, "MnuView_Language_System");
    QAction* english = entry(rig.window, "MnuView_Language_English");
    QAction* chinese = entry(rig.window, "MnuView_Language_Chinese");
    QVERIFY(system->isChecked());
    QVERIFY(!english->isChecked() && !chinese->isChecked());
    QVERIFY(system->actionGroup()->isExclusive());
    QCOMPARE(startLanguageMode({}), systemLanguageMode());

    english->trigger();
    QVERIFY(english->isChecked() && !system->isChecked());
    QCOMPARE(OperatorSettings().value(QStringLiteral("language")).toString(), QStringLiteral("en"));
    QCOMPARE(statusText(rig.window), QStringLiteral("界面语言已选定：English，下次启动时生效。"));
    // The window in hand keeps its language; the next start takes the choice.
    QCOMPARE(child<QMenu>(rig.window, "MnuFile")->title(), QStringLiteral("文件(&F)"));
    QCOMPARE(startLanguageMode({}), kEnglish);
    {
        WindowRig next(startLanguageMode({}));
        QCOMPARE(child<QMenu>(next.window, "MnuFile")->title(), QStringLiteral("&File"));
        QVERIFY(entry(next.window, "MnuView_Language_English")->isChecked());
    }
    chinese->trigger();
    QCOMPARE(startLanguageMode({}), kChinese);
    system->trigger();
    QVERIFY(!OperatorSettings().contains(QStringLiteral("language")));
    QCOMPARE(startLanguageMode({}), systemLanguageMode());
}

void DesktopTest::langOverridesTheChoiceForOneRun()
{
    chooseLanguage(Language::English);
    QCOMPARE(startLanguageMode({QStringLiteral("--lang"), QStringLiteral("zh")}), kChinese);
    QCOMPARE(startLanguageMode({QStringLiteral("--lang=zh")}), kChinese);
    // A wrong --lang leaves the choice in force (and is refused as an argument).
    QCOMPARE(startLanguageMode({QStringLiteral("--lang"), QStringLiteral("de")}), kEnglish);
    // The program started without --lang speaks the language chosen.
    QCOMPARE(run(kWindow, {QStringLiteral("--bogus")}).err.section(QLatin1Char('\n'), 0, 0),
             QStringLiteral("Unknown option --bogus."));
    chooseLanguage(Language::Chinese);
    QCOMPARE(run(kWindow, {QStringLiteral("--bogus")}).err.section(QLatin1Char('\n'), 0, 0),
             QStringLiteral("未知选项 --bogus。"));
    QCOMPARE(run(kWindow, {QStringLiteral("--bogus"), QStringLiteral("--lang"), QStringLiteral("en")}).err.section(QLatin1Char('\n'), 0, 0),
             QStringLiteral("Unknown option --bogus."));
}

void DesktopTest::titleAndStatusBarFollowOpenAndSave()
{
    WindowRig rig;
    QCOMPARE(rig.window.windowTitle(), QStringLiteral("Velmor"));  // no module yet, no file
    const QString opened = rig.folder.filePath(QStringLiteral("rack 3.cfg"));
    QVERIFY(saveConfigFile(opened, sim::simulatedModule(12, kTmC8, 5)));
    rig.files.openAnswer = opened;
    entry(rig.window, "MnuFile_Open")->trigger();
    QCOMPARE(rig.window.windowTitle(), QStringLiteral("TM-C8 at address 12 — rack 3.cfg — Velmor"));
    QCOMPARE(statusText(rig.window), QStringLiteral("Opened %1").arg(opened));
    QCOMPARE(rig.window.documentPath(), opened);

    const QString saved = rig.folder.filePath(QStringLiteral("copy.cfg"));
    rig.files.saveAnswer = saved;
    entry(rig.window, "MnuFile_SaveAs")->trigger();
    QVERIFY(QFile::exists(saved));
    QCOMPARE(rig.window.windowTitle(), QStringLiteral("TM-C8 at address 12 — copy.cfg — Velmor"));
    QCOMPARE(statusText(rig.window), QStringLiteral("Saved to %1").arg(saved));

    // A file that cannot be read keeps the title as it was.
    rig.files.openAnswer = rig.folder.filePath(QStringLiteral("missing.cfg"));
    entry(rig.window, "MnuFile_Open")->trigger();
    QCOMPARE(rig.window.windowTitle(), QStringLiteral("TM-C8 at address 12 — copy.cfg — Velmor"));
}

QTEST_MAIN(DesktopTest)
#include "desktop_test.moc"
