#include "config/config_file.h"
#include "config/config_image.h"
#include "config_testkit.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <vector>

using namespace velmor;
using velmor::test::byteAt;
using velmor::test::distinctRecord;

namespace {

constexpr quint32 kSeed = 0x5EED1234;
constexpr int kRuns = 10000;
constexpr int kLongest = 10000;

QByteArray randomBytes(QRandomGenerator& rng, int length)
{
    std::vector<quint32> words(static_cast<size_t>(length + 3) / 4);
    rng.fillRange(words.data(), static_cast<qsizetype>(words.size()));
    QByteArray bytes(length, Qt::Uninitialized);
    if (length > 0)
        std::memcpy(bytes.data(), words.data(), static_cast<size_t>(length));
    return bytes;
}

// A strain flag whose low byte was read and whose high byte was not comes back
// as 0 or 0xFFFF as a whole, so its high byte may change; every other byte of
// the image from `covered` on must stay as it was.
bool isCutStrainHighByte(int offset, int covered)
{
    if (offset != covered || offset < 80)
        return false;
    return (offset - 80) % 508 == 452 + 1;
}

// "" when every field beyond the covered bytes kept its value.
QString changeBeyond(const ModuleRecord& before, const ModuleRecord& after, int covered)
{
    const QByteArray was = configImage(before);
    const QByteArray is = configImage(after);
    for (int i = covered; i < kImageBytes; ++i) {
        if (was.at(i) != is.at(i) && !isCutStrainHighByte(i, covered))
            return QStringLiteral("%1 bytes read, image byte %2 changed from %3 to %4")
                .arg(covered)
                .arg(i)
                .arg(byteAt(was, i), 2, 16, QLatin1Char('0'))
                .arg(byteAt(is, i), 2, 16, QLatin1Char('0'));
    }
    return {};
}

}  // namespace

class ConfigFuzzTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void lengthsAtTheEdges_data();
    void lengthsAtTheEdges();
    void randomBytesNeverCrashAndLeaveUncoveredFieldsAlone();

private:
    // Reads bytes as an image and as a file over copies of one record.
    void readBoth(const QByteArray& bytes);

    const ModuleRecord base_ = distinctRecord();
    std::unique_ptr<QTemporaryDir> dir_;
};

void ConfigFuzzTest::init()
{
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(dir_->isValid());
}

void ConfigFuzzTest::readBoth(const QByteArray& bytes)
{
    const int length = static_cast<int>(bytes.size());

    ModuleRecord viaImage = base_;
    applyImage(bytes, viaImage);
    const QString imageChange = changeBeyond(base_, viaImage, std::min(length, kImageBytes));
    QVERIFY2(imageChange.isEmpty(), qPrintable(imageChange));

    // A fresh file each time: truncating one in place makes ext4 flush it on close.
    QFile file(dir_->filePath("fuzz.cfg"));
    QVERIFY(file.open(QIODevice::NewOnly));
    QCOMPARE(file.write(bytes), bytes.size());
    file.close();
    ModuleRecord viaFile = base_;
    const bool loaded = loadConfigFile(file.fileName(), viaFile);
    QVERIFY(file.remove());
    QVERIFY(loaded);
    const QString fileChange = changeBeyond(base_, viaFile, std::min(length, kStoredBytes));
    QVERIFY2(fileChange.isEmpty(), qPrintable(fileChange));
    if (length == 0)
        QVERIFY(viaFile == base_ && viaImage == base_);
}

void ConfigFuzzTest::lengthsAtTheEdges_data()
{
    QTest::addColumn<int>("length");
    const int spareIsStrain = 80 + 508 * 16 + 452;
    for (int n : {0, 1, 19, 20, 21, 79, 80, 81, 533, 587, 8207, 8208, spareIsStrain, spareIsStrain + 1,
                  spareIsStrain + 2, 8678, 8679, 8680, 8715, 8716, 8717})
        QTest::newRow(qPrintable(QString::number(n))) << n;
}

void ConfigFuzzTest::lengthsAtTheEdges()
{
    QFETCH(int, length);
    QRandomGenerator rng(kSeed + static_cast<quint32>(length));
    for (int run = 0; run < 20; ++run) {
        readBoth(randomBytes(rng, length));
        if (QTest::currentTestFailed())
            return;
    }
}

void ConfigFuzzTest::randomBytesNeverCrashAndLeaveUncoveredFieldsAlone()
{
    QRandomGenerator rng(kSeed);
    for (int run = 0; run < kRuns; ++run) {
        readBoth(randomBytes(rng, static_cast<int>(rng.bounded(kLongest + 1))));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("run %1 of seed %2").arg(run).arg(kSeed)));
    }
}

QTEST_GUILESS_MAIN(ConfigFuzzTest)
#include "config_fuzz_test.moc"
