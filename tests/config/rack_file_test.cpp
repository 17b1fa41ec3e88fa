// A rack file: written whole, read back equal, and refused whole, with a
// clear message, when it is damaged or foreign.
#include "config/config_image.h"
#include "config/image_layout.h"
#include "config/rack_file.h"
#include "model/models.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace velmor;

namespace {

RackModule moduleOf(const QString& line, int address, int modelCode, int number)
{
    ModuleRecord record = defaultModule();
    recognizeModel(record, modelCode);
    record.modelCode = static_cast<quint8>(modelCode);
    record.moduleNumber = number;
    record.busAddress = static_cast<qint16>(address);
    return {line, address, QString::fromUtf16(kModels[modelCode].name), number, configImage(record).left(kStoredBytes)};
}

Rack sampleRack()
{
    Rack rack;
    rack.time = QDateTime::fromString(QStringLiteral("2026-11-24T10:00:00.000Z"), Qt::ISODateWithMs);
    rack.version = QStringLiteral("0.1.0");
    rack.lines = {QStringLiteral("SIM1"), QStringLiteral("tcp://10.0.0.5:4001")};
    rack.modules = {moduleOf(QStringLiteral("SIM1"), 1, kTmC16, 9319), moduleOf(QStringLiteral("SIM1"), 4, kTmB8, 17),
                    moduleOf(QStringLiteral("tcp://10.0.0.5:4001"), 2, kTmA4, 3)};
    return rack;
}

using Damage = std::function<void(QJsonObject&)>;

QJsonObject moduleAt(const QJsonObject& o, int i) { return o.value(QStringLiteral("modules")).toArray().at(i).toObject(); }

void setModule(QJsonObject& o, int i, const QJsonObject& m)
{
    QJsonArray modules = o.value(QStringLiteral("modules")).toArray();
    modules[i] = m;
    o.insert(QStringLiteral("modules"), modules);
}

Damage moduleField(int i, const char* key, const QJsonValue& value)
{
    return [=](QJsonObject& o) {
        QJsonObject m = moduleAt(o, i);
        m.insert(QLatin1String(key), value);
        setModule(o, i, m);
    };
}

}  // namespace

Q_DECLARE_METATYPE(Damage)

class RackFileTest : public QObject {
    Q_OBJECT
private slots:
    void aRackIsReadBackAsItWasWritten();
    void aDamagedOrForeignRackIsRefusedWhole_data();
    void aDamagedOrForeignRackIsRefusedWhole();
    void aTruncatedRackIsRefused();
    void theRefusalComesInChinese();
};

void RackFileTest::aRackIsReadBackAsItWasWritten()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(writeRackFile(path, sampleRack()), QString());
    QString error;
    const std::optional<Rack> back = readRackFile(path, Language::English, &error);
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(*back, sampleRack());
    const QJsonObject o = QJsonDocument::fromJson(rackJson(sampleRack())).object();
    QCOMPARE(o.value(QStringLiteral("formatVersion")).toInt(), kRackFormatVersion);
    QCOMPARE(moduleAt(o, 0).value(QStringLiteral("sha256")).toString().size(), 64);
}

void RackFileTest::aDamagedOrForeignRackIsRefusedWhole_data()
{
    QTest::addColumn<Damage>("damage");
    QTest::addColumn<QString>("said");
    QTest::newRow("another format") << Damage([](QJsonObject& o) { o.insert(QStringLiteral("format"), QStringLiteral("x")); })
                                    << "r.velrack is not a rack file.";
    QTest::newRow("an unknown format version")
        << Damage([](QJsonObject& o) { o.insert(QStringLiteral("formatVersion"), 2); })
        << "r.velrack has format version 2, which this program does not know (it knows 1).";
    QTest::newRow("no time") << Damage([](QJsonObject& o) { o.remove(QStringLiteral("time")); })
                             << "r.velrack: the field \"time\" is missing or wrong.";
    QTest::newRow("a bad checksum") << moduleField(1, "sha256", QString(64, QLatin1Char('0')))
                                    << "r.velrack: the setup of module 2 is damaged (its SHA-256 does not match).";
    QTest::newRow("a changed image") << Damage([](QJsonObject& o) {
        QJsonObject m = moduleAt(o, 2);
        QByteArray image = QByteArray::fromBase64(m.value(QStringLiteral("image")).toString().toLatin1());
        image[500] = static_cast<char>(image[500] ^ 0x10);
        m.insert(QStringLiteral("image"), QString::fromLatin1(image.toBase64()));
        setModule(o, 2, m);
    }) << "r.velrack: the setup of module 3 is damaged (its SHA-256 does not match).";
    QTest::newRow("a short image") << moduleField(0, "image", QString::fromLatin1(QByteArray(100, 'a').toBase64()))
                                   << "r.velrack: module 1 has a missing or wrong \"image\".";
    QTest::newRow("a model its image does not hold") << moduleField(0, "model", QStringLiteral("TM-B8"))
                                                     << "r.velrack: module 1 has a missing or wrong \"model\".";
    QTest::newRow("a line not given") << moduleField(1, "line", QStringLiteral("SIM7"))
                                      << "r.velrack: module 2 has a missing or wrong \"line\".";
    QTest::newRow("an address past 254") << moduleField(2, "address", 255)
                                         << "r.velrack: module 3 has a missing or wrong \"address\".";
    QTest::newRow("a place named twice") << moduleField(1, "address", 1)
                                         << "r.velrack names SIM1 at address 1 twice.";
    QTest::newRow("no modules") << Damage([](QJsonObject& o) { o.insert(QStringLiteral("modules"), 3); })
                                << "r.velrack: the field \"modules\" is missing or wrong.";
}

void RackFileTest::aDamagedOrForeignRackIsRefusedWhole()
{
    QFETCH(Damage, damage);
    QFETCH(QString, said);
    QJsonObject o = QJsonDocument::fromJson(rackJson(sampleRack())).object();
    damage(o);
    QString error;
    QVERIFY(!rackFromJson(QJsonDocument(o).toJson(), QStringLiteral("r.velrack"), Language::English, &error));
    QCOMPARE(error, said);
}

void RackFileTest::aTruncatedRackIsRefused()
{
    const QByteArray whole = rackJson(sampleRack());
    QString error;
    QVERIFY(!rackFromJson(whole.left(whole.size() / 2), QStringLiteral("r.velrack"), Language::English, &error));
    QVERIFY2(error.startsWith(QStringLiteral("r.velrack is not a rack file: it is not a JSON document (")), qPrintable(error));
    QVERIFY(!readRackFile(QStringLiteral("/nonexistent/r.velrack"), Language::English, &error));
    QVERIFY2(error.startsWith(QStringLiteral("/nonexistent/r.velrack cannot be read (")), qPrintable(error));
}

void RackFileTest::theRefusalComesInChinese()
{
    QJsonObject o = QJsonDocument::fromJson(rackJson(sampleRack())).object();
    o.insert(QStringLiteral("formatVersion"), 7);
    QString error;
    QVERIFY(!rackFromJson(QJsonDocument(o).toJson(), QStringLiteral("r.velrack"), Language::Chinese, &error));
    QCOMPARE(error, QStringLiteral("r.velrack 的格式版本 7 不可识别（本程序识别版本 1）。"));
}

QTEST_MAIN(RackFileTest)
#include "rack_file_test.moc"
