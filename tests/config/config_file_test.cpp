#include "config/config_file.h"
#include "config/config_image.h"
#include "config/config_location.h"
#include "config_testkit.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace velmor;
using velmor::test::byteAt;
using velmor::test::distinctRecord;
using velmor::test::firstDifference;

namespace {

constexpr int kSpareSlotStart = 80 + 508 * 16;

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// What a load of a saved file gives: the saved record, except for the part of
// the spare slot that the file does not hold, which keeps what was loaded into.
ModuleRecord withUnstoredTailOf(ModuleRecord saved, const ModuleRecord& loadedInto)
{
    ChannelRecord& spare = saved.channels[16];
    const ChannelRecord& kept = loadedInto.channels[16];
    for (int i = 17; i < 20; ++i)   // the file ends after 17 characters of unitText
        spare.unitText[static_cast<size_t>(i)] = kept.unitText[static_cast<size_t>(i)];
    spare.channelFlags = kept.channelFlags;
    spare.trailingBlock = kept.trailingBlock;
    return saved;
}

}  // namespace

class ConfigFileTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void saveThenLoadGivesBackEveryFieldButTheUnstoredTail();
    void savedFileIsExactly8679Bytes();
    void savedFileIsTheStartOfTheImage();
    void modelNameIsStoredAsSixCharactersAndFourteenBlanks();
    void strainUnitIsStoredAsEcE5AndEighteenBlanks();
    void spareSlotOfDefaultRecordIsAllZerosInFile();
    void saveReplacesAnOldFile();
    void shortFileReplacesOnlyTheStart_data();
    void shortFileReplacesOnlyTheStart();
    void longFileContributesOnlyItsFirst8679Bytes();
    void missingFileChangesNothing();
    void directoryInPlaceOfFileChangesNothing();
    void unwritablePathFailsAndLeavesNoFile_data();
    void unwritablePathFailsAndLeavesNoFile();
    void failedSaveLeavesOldFileWhole();
    void defaultPathIsInWritableProgramFolder();
    void defaultPathFallsBackToAppDataFolder();
    void installedProgramNeverWritesBesideItsBinary();
    void binFolderWithoutInstalledDocsKeepsProgramFolder();

private:
    QString pathOf(const QString& name) const { return dir_->filePath(name); }

    std::unique_ptr<QTemporaryDir> dir_;
};

void ConfigFileTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void ConfigFileTest::init()
{
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(dir_->isValid());
}

void ConfigFileTest::saveThenLoadGivesBackEveryFieldButTheUnstoredTail()
{
    const ModuleRecord saved = distinctRecord();
    QVERIFY(saveConfigFile(pathOf("a.cfg"), saved));
    const ModuleRecord before = defaultModule();
    ModuleRecord loaded = before;
    QVERIFY(loadConfigFile(pathOf("a.cfg"), loaded));

    const ModuleRecord expected = withUnstoredTailOf(saved, before);
    QVERIFY2(loaded == expected, qPrintable(firstDifference(configImage(expected), configImage(loaded))));
    QVERIFY(loaded.channels[16].channelFlags != saved.channels[16].channelFlags);   // the tail is real
}

void ConfigFileTest::savedFileIsExactly8679Bytes()
{
    QVERIFY(saveConfigFile(pathOf("a.cfg"), defaultModule()));
    QCOMPARE(QFileInfo(pathOf("a.cfg")).size(), 8679);
    QVERIFY(saveConfigFile(pathOf("b.cfg"), distinctRecord()));
    QCOMPARE(QFileInfo(pathOf("b.cfg")).size(), 8679);
}

void ConfigFileTest::savedFileIsTheStartOfTheImage()
{
    const ModuleRecord m = distinctRecord();
    QVERIFY(saveConfigFile(pathOf("a.cfg"), m));
    const QString difference = firstDifference(configImage(m).left(8679), contentsOf(pathOf("a.cfg")));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void ConfigFileTest::modelNameIsStoredAsSixCharactersAndFourteenBlanks()
{
    QVERIFY(saveConfigFile(pathOf("a.cfg"), defaultModule()));
    QCOMPARE(contentsOf(pathOf("a.cfg")).left(20), QByteArray("TM-C16") + QByteArray(14, ' '));
}

void ConfigFileTest::strainUnitIsStoredAsEcE5AndEighteenBlanks()
{
    QVERIFY(saveConfigFile(pathOf("a.cfg"), defaultModule()));
    const QByteArray file = contentsOf(pathOf("a.cfg"));
    for (int c = 0; c < 16; ++c)
        QCOMPARE(file.mid(80 + 508 * c + 454, 20), QByteArray("\xEC\xE5") + QByteArray(18, ' '));
}

void ConfigFileTest::spareSlotOfDefaultRecordIsAllZerosInFile()
{
    QVERIFY(saveConfigFile(pathOf("a.cfg"), defaultModule()));
    const QByteArray spare = contentsOf(pathOf("a.cfg")).mid(kSpareSlotStart);
    QCOMPARE(spare.size(), 471);
    QCOMPARE(spare, QByteArray(471, '\0'));
}

void ConfigFileTest::saveReplacesAnOldFile()
{
    QVERIFY(writeFile(pathOf("a.cfg"), QByteArray(20000, 'x')));
    QVERIFY(saveConfigFile(pathOf("a.cfg"), defaultModule()));
    QCOMPARE(contentsOf(pathOf("a.cfg")), configImage(defaultModule()).left(8679));
}

void ConfigFileTest::shortFileReplacesOnlyTheStart_data()
{
    QTest::addColumn<int>("length");
    for (int n : {0, 1, 100, 4000, 8208, 8678})
        QTest::newRow(qPrintable(QString::number(n))) << n;
}

void ConfigFileTest::shortFileReplacesOnlyTheStart()
{
    QFETCH(int, length);
    const ModuleRecord saved = distinctRecord();
    QVERIFY(writeFile(pathOf("short.cfg"), configImage(saved).left(length)));
    const ModuleRecord before = defaultModule();
    ModuleRecord loaded = before;
    QVERIFY(loadConfigFile(pathOf("short.cfg"), loaded));

    QByteArray expected = configImage(before);
    expected.replace(0, length, configImage(saved).left(length));
    const QString difference = firstDifference(expected, configImage(loaded));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void ConfigFileTest::longFileContributesOnlyItsFirst8679Bytes()
{
    const ModuleRecord saved = distinctRecord();
    QByteArray file = configImage(saved).left(8679);
    file += QByteArray(20000 - file.size(), '\x5A');
    QVERIFY(writeFile(pathOf("long.cfg"), file));
    const ModuleRecord before = defaultModule();
    ModuleRecord loaded = before;
    QVERIFY(loadConfigFile(pathOf("long.cfg"), loaded));

    const ModuleRecord expected = withUnstoredTailOf(saved, before);
    QVERIFY2(loaded == expected, qPrintable(firstDifference(configImage(expected), configImage(loaded))));
}

void ConfigFileTest::missingFileChangesNothing()
{
    const ModuleRecord before = distinctRecord();
    ModuleRecord m = before;
    QVERIFY(!loadConfigFile(pathOf("none.cfg"), m));
    QVERIFY(m == before);
}

void ConfigFileTest::directoryInPlaceOfFileChangesNothing()
{
    QVERIFY(QDir(dir_->path()).mkdir("folder.cfg"));
    const ModuleRecord before = distinctRecord();
    ModuleRecord m = before;
    QVERIFY(!loadConfigFile(pathOf("folder.cfg"), m));
    QVERIFY(m == before);
}

void ConfigFileTest::unwritablePathFailsAndLeavesNoFile_data()
{
    QTest::addColumn<QString>("relative");
    QTest::newRow("below a regular file") << QStringLiteral("plain/a.cfg");
    QTest::newRow("in a missing folder") << QStringLiteral("missing/a.cfg");
    QTest::newRow("onto a folder") << QStringLiteral("folder.cfg");
}

void ConfigFileTest::unwritablePathFailsAndLeavesNoFile()
{
    QFETCH(QString, relative);
    QVERIFY(writeFile(pathOf("plain"), "old"));
    QVERIFY(QDir(dir_->path()).mkdir("folder.cfg"));
    const QStringList entriesBefore = QDir(dir_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);

    QVERIFY(!saveConfigFile(pathOf(relative), defaultModule()));

    QCOMPARE(QDir(dir_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), entriesBefore);
    QCOMPARE(contentsOf(pathOf("plain")), QByteArray("old"));
    QVERIFY(QFileInfo(pathOf("folder.cfg")).isDir());
    QVERIFY(QDir(pathOf("folder.cfg")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void ConfigFileTest::failedSaveLeavesOldFileWhole()
{
#ifdef Q_OS_UNIX
    // The disk "fills up" half-way through the save: writes past 4096 bytes
    // fail, which no permission trick can do for a privileged test user.
    const QByteArray old = configImage(distinctRecord()).left(8679);
    QVERIFY(writeFile(pathOf("a.cfg"), old));
    rlimit saved{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = saved;
    small.rlim_cur = 4096;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool ok = saveConfigFile(pathOf("a.cfg"), defaultModule());
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    QVERIFY(!ok);
    QCOMPARE(contentsOf(pathOf("a.cfg")), old);
    QCOMPARE(QDir(dir_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"a.cfg"});
#else
    QSKIP("needs a file size limit to make a save fail half-way");
#endif
}

void ConfigFileTest::defaultPathIsInWritableProgramFolder()
{
    QCOMPARE(defaultConfigPath(dir_->path()), pathOf("TestConfig.cfg"));
    QVERIFY(QDir(dir_->path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));   // no probe left behind
}

void ConfigFileTest::defaultPathFallsBackToAppDataFolder()
{
    const QString dataDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString path = defaultConfigPath(pathOf("not-there"));
    QCOMPARE(path, QDir(dataDir).filePath("TestConfig.cfg"));
    QVERIFY(QFileInfo(dataDir).isDir());
    QVERIFY(!QFileInfo::exists(pathOf("not-there")));
    QVERIFY(saveConfigFile(path, defaultModule()));
    QVERIFY(QFile::remove(path));
}

void ConfigFileTest::installedProgramNeverWritesBesideItsBinary()
{
    // An unpacked package: usr/bin is writable here, as /usr/bin is for root.
    QVERIFY(QDir().mkpath(pathOf("usr/bin")));
    QVERIFY(QDir().mkpath(pathOf("usr/share/doc/velmor")));
    QVERIFY(writeFile(pathOf("usr/share/doc/velmor/copyright"), "Files: *\n"));
    QCOMPARE(installedDocFolder(pathOf("usr/bin")), pathOf("usr/share/doc/velmor"));

    const QString dataDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString path = defaultConfigPath(pathOf("usr/bin"));
    QCOMPARE(path, QDir(dataDir).filePath("TestConfig.cfg"));
    QVERIFY(saveConfigFile(path, defaultModule()));
    QVERIFY(QFile::remove(path));
    // Not even a probe was made beside the binary.
    QVERIFY(QDir(pathOf("usr/bin")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void ConfigFileTest::binFolderWithoutInstalledDocsKeepsProgramFolder()
{
    // A documentation folder without the package's copyright file is not an
    // install: the program folder stays the default, as in the build tree.
    QVERIFY(QDir().mkpath(pathOf("usr/bin")));
    QVERIFY(QDir().mkpath(pathOf("usr/share/doc/velmor")));
    QVERIFY(installedDocFolder(pathOf("usr/bin")).isEmpty());
    QCOMPARE(defaultConfigPath(pathOf("usr/bin")), pathOf("usr/bin/TestConfig.cfg"));
    QVERIFY(installedDocFolder(dir_->path()).isEmpty());
}

QTEST_GUILESS_MAIN(ConfigFileTest)
#include "config_file_test.moc"
