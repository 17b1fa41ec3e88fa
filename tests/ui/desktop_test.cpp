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
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

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
    void recentFilesListWhatWasOpenedAndSavedLatestFirst();
    void aRecentFileThatIsGoneIsTakenOffWithAMessage();
    void recentFilesWaitWhileAnOperationRuns();
    void aFileDroppedOnTheWindowOpens();
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
    QVERIFY2(result.out.startsWith(QStringLiteral("Usage: velmor [--lang zh|en] [--history STORE|--no-history] [FILE]\n")), qPrintable(result.out));
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
    QVERIFY(result.err.contains(QStringLiteral("velmor [--lang zh|en] [--history STORE|--no-history] [FILE]")));
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

void DesktopTest::recentFilesListWhatWasOpenedAndSavedLatestFirst()
{
    WindowRig rig;
    auto* recent = child<QMenu>(rig.window, "MnuFile_Recent");
    QVERIFY(!recent->menuAction()->isEnabled());  // nothing yet
    QVERIFY(child<QMenu>(rig.window, "MnuFile")->actions().contains(recent->menuAction()));
    const QString first = rig.folder.filePath(QStringLiteral("first.cfg"));
    QVERIFY(saveConfigFile(first, sim::simulatedModule(4, kTmA4, 1)));
    rig.files.openAnswer = first;
    entry(rig.window, "MnuFile_Open")->trigger();
    const QString second = rig.folder.filePath(QStringLiteral("second.cfg"));
    rig.files.saveAnswer = second;
    entry(rig.window, "MnuFile_SaveAs")->trigger();
    QVERIFY(recent->menuAction()->isEnabled());
    QCOMPARE(entry(rig.window, "MnuFile_Recent_1")->text(), QStringLiteral("&1 second.cfg"));
    QCOMPARE(entry(rig.window, "MnuFile_Recent_1")->toolTip(), second);
    QCOMPARE(entry(rig.window, "MnuFile_Recent_2")->text(), QStringLiteral("&2 first.cfg"));
    QCOMPARE(recentFiles(), (QStringList{second, first}));

    // Chosen, an entry opens its file and comes first.
    rig.window.state().current().busAddress = 33;
    entry(rig.window, "MnuFile_Recent_2")->trigger();
    QCOMPARE(rig.window.documentPath(), first);
    QCOMPARE(rig.window.state().current().busAddress, 4);
    QCOMPARE(entry(rig.window, "MnuFile_Recent_1")->text(), QStringLiteral("&1 first.cfg"));

    // At most eight are kept, the latest first.
    for (int i = 0; i < 10; ++i)
        rememberFile(rig.folder.filePath(QStringLiteral("f%1.cfg").arg(i)));
    QCOMPARE(recentFiles().size(), kRecentFiles);
    QCOMPARE(recentFiles().first(), rig.folder.filePath(QStringLiteral("f9.cfg")));
}

void DesktopTest::aRecentFileThatIsGoneIsTakenOffWithAMessage()
{
    QTemporaryDir folder;
    const QString gone = folder.filePath(QStringLiteral("gone.cfg"));
    const QString kept = folder.filePath(QStringLiteral("kept.cfg"));
    QVERIFY(saveConfigFile(kept, sim::simulatedModule(6, kTmA4, 1)));
    rememberFile(gone);
    rememberFile(kept);
    WindowRig rig;
    QCOMPARE(entry(rig.window, "MnuFile_Recent_2")->text(), QStringLiteral("&2 gone.cfg"));
    const ModuleRecord before = rig.window.state().current();
    entry(rig.window, "MnuFile_Recent_2")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("The file %1 is gone; it was taken off the recent files.").arg(gone)});
    QCOMPARE(recentFiles(), QStringList{kept});
    QVERIFY(rig.window.findChild<QAction*>(QStringLiteral("MnuFile_Recent_2")) == nullptr);
    QCOMPARE(rig.window.state().current(), before);  // nothing was opened
}

void DesktopTest::recentFilesWaitWhileAnOperationRuns()
{
    SimLine line({{5, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    QTemporaryDir folder;
    rememberFile(folder.filePath(QStringLiteral("any.cfg")));
    WindowRig rig;
    chooseModule(rig.window, line, 5);
    QAction* recent = child<QMenu>(rig.window, "MnuFile_Recent")->menuAction();
    QList<bool> seen;
    QTimer probe;
    connect(&probe, &QTimer::timeout, [&] { seen << recent->isEnabled(); });
    probe.start(20);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    probe.stop();
    QVERIFY(!seen.isEmpty());
    QVERIFY(!seen.contains(true));
    QVERIFY(recent->isEnabled());
}

void DesktopTest::aFileDroppedOnTheWindowOpens()
{
    WindowRig rig;
    const QString path = rig.folder.filePath(QStringLiteral("dropped.cfg"));
    QVERIFY(saveConfigFile(path, sim::simulatedModule(21, kTmC8, 7)));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const QPoint centre = rig.window.rect().center();
    QDragEnterEvent enter(centre, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&rig.window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(centre, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&rig.window, &drop);
    QCOMPARE(rig.window.documentPath(), path);
    QCOMPARE(rig.window.windowTitle(), QStringLiteral("TM-C8 at address 21 — dropped.cfg — Velmor"));
    QCOMPARE(recentFiles().first(), path);

    // Two files at once, or something that is no file, are not taken.
    QMimeData two;
    two.setUrls({QUrl::fromLocalFile(path), QUrl::fromLocalFile(path)});
    QDragEnterEvent twoFiles(centre, Qt::CopyAction, &two, Qt::LeftButton, Qt::NoModifier);
    twoFiles.setAccepted(false);
    QApplication::sendEvent(&rig.window, &twoFiles);
    QVERIFY(!twoFiles.isAccepted());
    QMimeData words;
    words.setText(QStringLiteral("hello"));
    QDragEnterEvent text(centre, Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
    text.setAccepted(false);
    QApplication::sendEvent(&rig.window, &text);
    QVERIFY(!text.isAccepted());
}

QTEST_MAIN(DesktopTest)
#include "desktop_test.moc"
