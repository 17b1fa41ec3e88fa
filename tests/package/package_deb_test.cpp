// The Debian package: made by cpack from this build tree, unpacked with
// dpkg-deb -x into a temporary root, and run from there as it would run from
// /usr: the two command-line programs print their usage, the window starts
// offscreen and keeps running, and nothing is written beside the binaries.
// Its control fields and its file list are checked too.

#include "texts/window.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run {
    int exitCode = -1;
    bool finished = false;
    QString out;
    QString err;
};

Run run(const QString& program, const QStringList& arguments, int timeoutMs = 60000,
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Run result;
    if (!process.waitForStarted(10000)) {
        result.err = process.errorString();
        return result;
    }
    result.finished = process.waitForFinished(timeoutMs);
    if (!result.finished) {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QString describe(const Run& r)
{
    return QStringLiteral("exit %1%2\nstdout:\n%3\nstderr:\n%4")
        .arg(r.exitCode)
        .arg(r.finished ? QString() : QStringLiteral(" (did not finish)"), r.out, r.err);
}

const QString kAppId = QStringLiteral("io.github.velmor.Velmor");

// A line of the unpacked simulator for the unpacked window to list: a test
// lists none of the machine's ports, and with no port at all the window would
// start with "No COM port in the computer.".
class UnpackedLine {
public:
    UnpackedLine(const QString& simulator, const QProcessEnvironment& environment)
    {
        sim_.setProcessEnvironment(environment);
        sim_.start(simulator, {QStringLiteral("--fast"), QStringLiteral("--name"), QStringLiteral("SIM1"),
                               QStringLiteral("--module"), QStringLiteral("1:TM-C16")});
        ready_ = sim_.waitForStarted(10000) && sim_.waitForReadyRead(10000);
    }
    ~UnpackedLine()
    {
        sim_.terminate();
        if (!sim_.waitForFinished(5000))
            sim_.kill();
    }
    bool ready() const { return ready_; }
    QString error() { return QString::fromUtf8(sim_.readAllStandardError()); }

private:
    QProcess sim_;
    bool ready_ = false;
};

}  // namespace

class PackageDebTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void controlFieldsNameThePackageAndItsDependencies();
    void packageHoldsEveryInstalledFile();
    void packageHoldsTheManualsPictures();
    void binariesAreStrippedAndCarryNoBuildTreePath();
    void commandLineProgramsPrintTheirUsage_data();
    void commandLineProgramsPrintTheirUsage();
    void windowStartsOffscreenFromTheUnpackedPackage_data();
    void windowStartsOffscreenFromTheUnpackedPackage();
    void windowShowsItsCaptionsInTheLocalesLanguage_data();
    void windowShowsItsCaptionsInTheLocalesLanguage();
    void windowOpensTheFileItIsGiven();

private:
    QString bin(const QString& name) const { return root_.filePath(QStringLiteral("usr/bin/") + name); }
    QProcessEnvironment cleanUserEnvironment(const QString& lang) const;

    QString deb_;
    QString readelf_;
    QStringList contents_;   // paths as dpkg-deb -c lists them, "./usr/..."
    QTemporaryDir root_;
    QTemporaryDir home_;
};

void PackageDebTest::initTestCase()
{
    const QString dpkgDeb = QStandardPaths::findExecutable(QStringLiteral("dpkg-deb"));
    if (dpkgDeb.isEmpty())
        QSKIP("dpkg-deb is not installed: the Debian package cannot be unpacked here");
    QVERIFY(root_.isValid());
    QVERIFY(home_.isValid());
    readelf_ = QStandardPaths::findExecutable(QStringLiteral("readelf"));
    QVERIFY2(!readelf_.isEmpty(), "readelf (binutils) is needed to look into the binaries");

    // A package of its own folder, so that an older one is never taken.
    QDir folder(QStringLiteral(VELMOR_PACKAGE_FOLDER));
    QVERIFY(folder.removeRecursively());
    QVERIFY(QDir().mkpath(folder.path()));
    const Run cpack = run(QStringLiteral(VELMOR_CPACK_COMMAND),
                          {QStringLiteral("-G"), QStringLiteral("DEB"), QStringLiteral("--config"),
                           QStringLiteral(VELMOR_CPACK_CONFIG), QStringLiteral("-B"), folder.path()},
                          240000);
    QVERIFY2(cpack.finished && cpack.exitCode == 0, qPrintable(describe(cpack)));
    const QStringList debs = folder.entryList({QStringLiteral("*.deb")}, QDir::Files);
    QCOMPARE(debs.size(), 1);
    deb_ = folder.filePath(debs.first());
    QVERIFY2(QRegularExpression(QStringLiteral("^velmor_" VELMOR_VERSION "_[a-z0-9]+\\.deb$")).match(debs.first()).hasMatch(),
             qPrintable(debs.first()));

    const Run unpack = run(dpkgDeb, {QStringLiteral("-x"), deb_, root_.path()});
    QVERIFY2(unpack.finished && unpack.exitCode == 0, qPrintable(describe(unpack)));

    const Run list = run(dpkgDeb, {QStringLiteral("-c"), deb_});
    QVERIFY2(list.finished && list.exitCode == 0, qPrintable(describe(list)));
    // "-rwxr-xr-x root/root  123 2026-11-23 12:00 ./usr/bin/velmor"
    for (const QString& line : list.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        contents_ << line.section(QLatin1Char(' '), -1);
    QVERIFY(!contents_.isEmpty());
}

void PackageDebTest::controlFieldsNameThePackageAndItsDependencies()
{
    const Run fields = run(QStringLiteral("dpkg-deb"),
                           {QStringLiteral("-f"), deb_, QStringLiteral("Package"), QStringLiteral("Version"),
                            QStringLiteral("Section"), QStringLiteral("Depends"), QStringLiteral("Suggests"),
                            QStringLiteral("Recommends")});
    QVERIFY2(fields.finished && fields.exitCode == 0, qPrintable(describe(fields)));
    QMap<QString, QString> field;
    for (const QString& line : fields.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        field.insert(line.section(QStringLiteral(": "), 0, 0), line.section(QStringLiteral(": "), 1));
    QCOMPARE(field.value(QStringLiteral("Package")), QStringLiteral("velmor"));
    QCOMPARE(field.value(QStringLiteral("Version")), QStringLiteral(VELMOR_VERSION));
    QCOMPARE(field.value(QStringLiteral("Section")), QStringLiteral("electronics"));
    QCOMPARE(field.value(QStringLiteral("Suggests")), QStringLiteral("ser2net"));
    QCOMPARE(field.value(QStringLiteral("Recommends")), QStringLiteral("qt6-wayland, libqt6sql6-psql"));

    // dpkg-shlibdeps named the Qt libraries the binaries link, with versions.
    const QString depends = field.value(QStringLiteral("Depends"));
    for (const char* library :
         {"libqt6core6", "libqt6gui6", "libqt6widgets6", "libqt6network6", "libqt6serialport6", "libqt6sql6"}) {
        const QRegularExpression declared(QStringLiteral("(^|, )%1 \\(>= [^)]+\\)").arg(QLatin1String(library)));
        QVERIFY2(declared.match(depends).hasMatch(), qPrintable(QStringLiteral("%1 missing from: %2").arg(library, depends)));
    }
    QVERIFY2(depends.contains(QRegularExpression(QStringLiteral("libstdc\\+\\+6 \\(>= [^)]+\\)"))), qPrintable(depends));
    // The Chinese interface needs a CJK font: either one.
    QVERIFY2(depends.split(QStringLiteral(", ")).contains(QStringLiteral("fonts-wqy-microhei | fonts-noto-cjk")),
             qPrintable(depends));
    // The history's embedded store: Qt's SQLite driver, a plugin no binary links.
    QVERIFY2(depends.split(QStringLiteral(", ")).contains(QStringLiteral("libqt6sql6-sqlite")), qPrintable(depends));
}

void PackageDebTest::packageHoldsEveryInstalledFile()
{
    QStringList expected = {
        QStringLiteral("./usr/bin/velmor"),
        QStringLiteral("./usr/bin/velmor-cli"),
        QStringLiteral("./usr/bin/velmor-sim"),
        QStringLiteral("./usr/share/applications/%1.desktop").arg(kAppId),
        QStringLiteral("./usr/share/metainfo/io.github.velmor.velmor.metainfo.xml"),
        QStringLiteral("./usr/share/icons/hicolor/scalable/apps/%1.svg").arg(kAppId),
        QStringLiteral("./usr/share/doc/velmor/velmor-en.html"),
        QStringLiteral("./usr/share/doc/velmor/velmor-zh.html"),
        QStringLiteral("./usr/share/doc/velmor/manual.css"),
        QStringLiteral("./usr/share/doc/velmor/copyright"),
        QStringLiteral("./usr/share/doc/velmor/changelog.gz"),
        QStringLiteral("./usr/share/man/man1/velmor.1.gz"),
        QStringLiteral("./usr/share/man/man1/velmor-cli.1.gz"),
        QStringLiteral("./usr/share/man/man1/velmor-sim.1.gz"),
    };
    for (int size : {16, 32, 48, 64, 128, 256})
        expected << QStringLiteral("./usr/share/icons/hicolor/%1x%1/apps/%2.png").arg(size).arg(kAppId);
    for (const QString& path : expected)
        QVERIFY2(contents_.contains(path), qPrintable(path + QStringLiteral(" is not in the package")));

    // Everything lies under /usr, and nothing of the build-tree layout (the
    // manual beside the binary) came along.
    for (const QString& path : contents_) {
        QVERIFY2(path == QLatin1String("./") || path.startsWith(QLatin1String("./usr/")), qPrintable(path));
        QVERIFY2(!path.startsWith(QLatin1String("./usr/bin/manual")), qPrintable(path));
    }
    const QStringList programs = QDir(root_.filePath(QStringLiteral("usr/bin"))).entryList(QDir::Files);
    QCOMPARE(programs, (QStringList{"velmor", "velmor-cli", "velmor-sim"}));
    for (const QString& program : programs)
        QVERIFY2(QFileInfo(bin(program)).isExecutable(), qPrintable(program));

    // The manual pages are gzip files (magic 1f 8b) that hold the troff source.
    for (const QString& page : {QStringLiteral("velmor-cli.1.gz"), QStringLiteral("velmor-sim.1.gz")}) {
        QFile file(root_.filePath(QStringLiteral("usr/share/man/man1/") + page));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(2), QByteArray("\x1f\x8b"));
    }
}

void PackageDebTest::packageHoldsTheManualsPictures()
{
    // Every picture of the written manual is installed beside its pages.
    QDirIterator pictures(QStringLiteral(VELMOR_MANUAL_SOURCE_DIR "/images"), QDir::Files);
    int count = 0;
    while (pictures.hasNext()) {
        const QString name = QFileInfo(pictures.next()).fileName();
        const QString path = QStringLiteral("./usr/share/doc/velmor/images/") + name;
        QVERIFY2(contents_.contains(path), qPrintable(path + QStringLiteral(" is not in the package")));
        ++count;
    }
    QVERIFY(count > 0);
}

void PackageDebTest::binariesAreStrippedAndCarryNoBuildTreePath()
{
    for (const QString& program : {QStringLiteral("velmor"), QStringLiteral("velmor-cli"), QStringLiteral("velmor-sim")}) {
        const Run sections = run(readelf_, {QStringLiteral("-S"), QStringLiteral("-W"), bin(program)});
        QVERIFY2(sections.finished && sections.exitCode == 0, qPrintable(describe(sections)));
        QVERIFY2(sections.out.contains(QLatin1String(".text")), qPrintable(sections.out));
        QVERIFY2(!sections.out.contains(QLatin1String(".symtab")), qPrintable(program + QStringLiteral(" is not stripped")));
        QVERIFY2(!sections.out.contains(QLatin1String(".debug_")), qPrintable(program + QStringLiteral(" carries debug information")));

        // The libraries come from the system, never through a path into the
        // build tree.
        const Run dynamic = run(readelf_, {QStringLiteral("-d"), QStringLiteral("-W"), bin(program)});
        QVERIFY2(dynamic.finished && dynamic.exitCode == 0, qPrintable(describe(dynamic)));
        QVERIFY2(dynamic.out.contains(QLatin1String("libQt6Core.so.6")), qPrintable(dynamic.out));
        QVERIFY2(!dynamic.out.contains(QLatin1String("RPATH")) && !dynamic.out.contains(QLatin1String("RUNPATH")),
                 qPrintable(dynamic.out));
    }
}

void PackageDebTest::commandLineProgramsPrintTheirUsage_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("usage");
    QTest::addColumn<QString>("alsoSays");
    QTest::newRow("velmor-cli --help") << "velmor-cli" << QStringList{"--help"}
                                       << "Usage: velmor-cli [--json] [--trace] [--log FILE] [--lang zh|en] [--history STORE|--no-history] COMMAND [options]"
                                       << "write-info";
    QTest::newRow("velmor-cli read --help") << "velmor-cli" << QStringList{"read", "--help"}
                                            << "Usage: velmor-cli read [options]" << "--address <A>";
    QTest::newRow("velmor-sim --help") << "velmor-sim" << QStringList{"--help"}
                                       << "Usage: " << "--module <ADDR:MODEL>";
}

void PackageDebTest::commandLineProgramsPrintTheirUsage()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QString, usage);
    QFETCH(QString, alsoSays);
    const Run r = run(bin(program), arguments, 30000, cleanUserEnvironment(QStringLiteral("C.UTF-8")));
    QVERIFY2(r.finished && r.exitCode == 0, qPrintable(describe(r)));
    QVERIFY2(r.out.startsWith(usage), qPrintable(r.out));
    QVERIFY2(r.out.contains(alsoSays), qPrintable(r.out));
    // velmor-sim names itself as it was started: the unpacked binary.
    if (program == QLatin1String("velmor-sim"))
        QVERIFY2(r.out.startsWith(QStringLiteral("Usage: ") + bin(program)), qPrintable(r.out));
}

void PackageDebTest::windowStartsOffscreenFromTheUnpackedPackage_data()
{
    QTest::addColumn<QString>("lang");
    QTest::newRow("English") << "en_US.UTF-8";
    QTest::newRow("Chinese") << "zh_CN.UTF-8";
}

void PackageDebTest::windowStartsOffscreenFromTheUnpackedPackage()
{
    // The window has no option to quit by itself: it is started, must still be
    // running two seconds later with nothing on standard error, and is then
    // terminated.
    QFETCH(QString, lang);
    QVERIFY(QDir(home_.filePath(QStringLiteral("data"))).removeRecursively());
    QProcess window;
    QProcessEnvironment environment = cleanUserEnvironment(lang);
    UnpackedLine line(bin(QStringLiteral("velmor-sim")), environment);
    QVERIFY2(line.ready(), qPrintable(line.error()));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    window.setProcessEnvironment(environment);
    window.start(bin(QStringLiteral("velmor")), {});
    QVERIFY2(window.waitForStarted(10000), qPrintable(window.errorString()));
    const bool ended = window.waitForFinished(2000);
    if (!ended) {
        window.terminate();
        QVERIFY(window.waitForFinished(10000));
    }
    // The offscreen platform itself says this of every top-level window; any
    // other line is the program's own complaint.
    QStringList complaints = QString::fromUtf8(window.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    complaints.removeAll(QStringLiteral("This plugin does not support propagateSizeHints()"));
    QVERIFY2(!ended, qPrintable(QStringLiteral("the window ended with exit code %1: %2")
                                    .arg(window.exitCode())
                                    .arg(complaints.join(QLatin1Char('\n')))));
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));

    // Started from a writable usr/bin (as root would find /usr/bin), the
    // program left nothing there: its configuration belongs to the user.
    QCOMPARE(QDir(root_.filePath(QStringLiteral("usr/bin"))).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{"velmor", "velmor-cli", "velmor-sim"}));
    // The user's data folder is where it went instead: the program made it
    // for its default configuration file at start.
    QVERIFY(QFileInfo(home_.filePath(QStringLiteral("data/velmor"))).isDir());
}

void PackageDebTest::windowShowsItsCaptionsInTheLocalesLanguage_data()
{
    QTest::addColumn<QString>("lang");
    QTest::addColumn<int>("language");
    QTest::newRow("English") << "en_US.UTF-8" << int(velmor::Language::English);
    QTest::newRow("Chinese") << "zh_CN.UTF-8" << int(velmor::Language::Chinese);
}

void PackageDebTest::windowShowsItsCaptionsInTheLocalesLanguage()
{
    // The packaged window with a probe plugin loaded into it (caption_probe.cpp),
    // which writes the captions it finds once the window is shown and ends it.
    QFETCH(QString, lang);
    QFETCH(int, language);
    const QString captionsFile = home_.filePath(QStringLiteral("captions.txt"));
    QFile::remove(captionsFile);
    QProcessEnvironment environment = cleanUserEnvironment(lang);
    UnpackedLine line(bin(QStringLiteral("velmor-sim")), environment);
    QVERIFY2(line.ready(), qPrintable(line.error()));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(VELMOR_PROBE_PLUGIN_PATH));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("caption_probe"));
    environment.insert(QStringLiteral("VELMOR_CAPTION_PROBE_OUT"), captionsFile);
    const Run window = run(bin(QStringLiteral("velmor")), {}, 30000, environment);
    QVERIFY2(window.finished && window.exitCode == 0, qPrintable(describe(window)));
    QFile file(captionsFile);
    QVERIFY2(file.open(QIODevice::ReadOnly), "the probe found no window shown");
    const QStringList captions = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const auto shown = velmor::Language(language);
    using namespace velmor::texts::window;
    for (const velmor::Text& text : {kWindowTitle, kMnuFile, kMnuOperate, kMnuHelp, kSearchButton, *kFrameTabs[0],
                                     *kFrameTabs[1], *kFrameTabs[2], kFrame6})
        QVERIFY2(captions.contains(velmor::pick(text, shown)), qPrintable(velmor::pick(text, shown)));
    // And none of the other language's where the two differ.
    const auto other = shown == velmor::Language::Chinese ? velmor::Language::English : velmor::Language::Chinese;
    for (const velmor::Text& text : {kMnuFile, kSearchButton, *kFrameTabs[0], kFrame6})
        QVERIFY2(!captions.contains(velmor::pick(text, other)), qPrintable(velmor::pick(text, other)));
}

void PackageDebTest::windowOpensTheFileItIsGiven()
{
    // A file saved by the packaged velmor-cli from the packaged simulator,
    // then opened by the packaged window as its argument; the probe reads the
    // window's title, which names the module and the file.
    QProcessEnvironment environment = cleanUserEnvironment(QStringLiteral("en_US.UTF-8"));
    UnpackedLine line(bin(QStringLiteral("velmor-sim")), environment);
    QVERIFY2(line.ready(), qPrintable(line.error()));
    const QString path = home_.filePath(QStringLiteral("bench.cfg"));
    QFile::remove(path);
    const Run saved = run(bin(QStringLiteral("velmor-cli")),
                          {QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("SIM1"), QStringLiteral("--address"),
                           QStringLiteral("1"), QStringLiteral("--save"), path},
                          30000, environment);
    QVERIFY2(saved.finished && saved.exitCode == 0, qPrintable(describe(saved)));
    const QString captionsFile = home_.filePath(QStringLiteral("captions.txt"));
    QFile::remove(captionsFile);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(VELMOR_PROBE_PLUGIN_PATH));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("caption_probe"));
    environment.insert(QStringLiteral("VELMOR_CAPTION_PROBE_OUT"), captionsFile);
    const Run window = run(bin(QStringLiteral("velmor")), {path}, 30000, environment);
    QVERIFY2(window.finished && window.exitCode == 0, qPrintable(describe(window)));
    QFile file(captionsFile);
    QVERIFY2(file.open(QIODevice::ReadOnly), "the probe found no window shown");
    QCOMPARE(QString::fromUtf8(file.readLine()).trimmed(), QStringLiteral("TM-C16 at address 1 — bench.cfg — Velmor"));
}

// A user of their own: home, settings, data and runtime folders in a temporary
// folder, no published virtual ports, and the given locale.
QProcessEnvironment PackageDebTest::cleanUserEnvironment(const QString& lang) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = home_.path();
    const QString runtime = home + QStringLiteral("/runtime");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QDir().mkpath(home + QStringLiteral("/ports"));
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
    environment.insert(QStringLiteral("VELMOR_PORTS_DIR"), home + QStringLiteral("/ports"));
    environment.remove(QStringLiteral("LC_ALL"));
    environment.remove(QStringLiteral("LANGUAGE"));
    environment.insert(QStringLiteral("LANG"), lang);
    return environment;
}

QTEST_GUILESS_MAIN(PackageDebTest)
#include "package_deb_test.moc"
