// The JSON form of a module record: exact key names, a lossless round trip,
// tolerance of missing keys, clear refusal of wrong types, no crash on any input.

#include "records.h"

#include "model/record_json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTest>

using namespace velmor;

class RecordJsonTest : public QObject {
    Q_OBJECT

private slots:
    void keysAreTheRecordFieldNames();
    void textsLoseTrailingBlanks();
    void roundTripKeepsEveryField();
    void missingKeysKeepTheRecordsValues();
    void wrongTypesAreRefusedWithTheKey_data();
    void wrongTypesAreRefusedWithTheKey();
    void anyJsonIsSurvived();
};

void RecordJsonTest::keysAreTheRecordFieldNames()
{
    const QJsonObject json = recordToJson(defaultModule());
    QStringList moduleKeys{"modelName",  "portNumber", "busAddress",     "channelCount", "moduleNumber",
                           "modelCode",  "version",    "excitationType", "balanceType",  "acCouplingType",
                           "gainType",   "filterType", "holdType",       "zeroType",     "adjustType",
                           "integralType", "infoTail", "channels"};
    moduleKeys.sort();
    QCOMPARE(json.keys(), moduleKeys);
    QCOMPARE(json["infoTail"].toArray().size(), 36);
    QCOMPARE(json["channels"].toArray().size(), 17);

    QStringList channelKeys{"channelNumber", "excitation",      "balanceValue",    "coupling",   "gain",
                            "cutoff",        "holdExponent",    "integral",        "zeroAdjust", "gainAdjust",
                            "zeroAdjustTable", "gainAdjustTable", "zeroCoef",      "gainCoef",   "bridgeType",
                            "referenceInt",  "sensitivity",     "gaugeCoef",       "fullRange",  "isStrain",
                            "unitText",      "channelFlags"};
    channelKeys.sort();
    const QJsonObject channel = json["channels"].toArray()[0].toObject();
    QCOMPARE(channel.keys(), channelKeys);
    QCOMPARE(channel["gainCoef"].toArray().size(), 17);
    QVERIFY(channel["isStrain"].isBool());
}

void RecordJsonTest::textsLoseTrailingBlanks()
{
    const QJsonObject json = recordToJson(defaultModule());
    QCOMPARE(json["modelName"].toString(), QStringLiteral("TM-C16"));
    QCOMPARE(json["channels"].toArray()[0].toObject()["unitText"].toString(), QString::fromUtf16(u"\u03BC\u03B5"));
}

void RecordJsonTest::roundTripKeepsEveryField()
{
    std::mt19937 rng(99);
    ModuleRecord original = testkit::randomWireRecord(rng);
    original.portNumber = -3;
    original.infoTail[35] = 200;
    original.channels[2].sensitivity = 1.2345f;
    original.channels[2].isStrain = false;
    original.channels[16].gainCoef[16] = -7;
    const QJsonObject json =
        QJsonDocument::fromJson(QJsonDocument(recordToJson(original)).toJson()).object();
    ModuleRecord back;
    QString error;
    QVERIFY2(recordFromJson(json, back, &error), qPrintable(error));
    QCOMPARE(back, original);
}

void RecordJsonTest::missingKeysKeepTheRecordsValues()
{
    std::mt19937 rng(1);
    ModuleRecord record = testkit::randomWireRecord(rng);
    const ModuleRecord before = record;
    QJsonObject json{{"moduleNumber", 4242}, {"channels", QJsonArray{QJsonObject{{"gain", 3}}}}};
    QVERIFY(recordFromJson(json, record, nullptr));
    QCOMPARE(record.moduleNumber, 4242);
    QCOMPARE(record.channels[0].gain, qint16(3));
    record.moduleNumber = before.moduleNumber;
    record.channels[0].gain = before.channels[0].gain;
    QCOMPARE(record, before);
    QVERIFY(recordFromJson(QJsonObject(), record, nullptr));
}

void RecordJsonTest::wrongTypesAreRefusedWithTheKey_data()
{
    QTest::addColumn<QJsonObject>("json");
    QTest::addColumn<QString>("named");
    QTest::newRow("string for a number") << QJsonObject{{"busAddress", "5"}} << "busAddress";
    QTest::newRow("fraction") << QJsonObject{{"moduleNumber", 1.5}} << "moduleNumber";
    QTest::newRow("out of the byte") << QJsonObject{{"gainType", 256}} << "gainType";
    QTest::newRow("negative code") << QJsonObject{{"modelCode", -1}} << "modelCode";
    QTest::newRow("number for text") << QJsonObject{{"modelName", 3}} << "modelName";
    QTest::newRow("tail not an array") << QJsonObject{{"infoTail", 1}} << "infoTail";
    QTest::newRow("tail too long") << QJsonObject{{"infoTail", QJsonArray::fromVariantList(QVariantList(37, 0))}}
                                   << "infoTail";
    QTest::newRow("tail entry text") << QJsonObject{{"infoTail", QJsonArray{1, "x"}}} << "infoTail";
    QTest::newRow("channels not an array") << QJsonObject{{"channels", QJsonObject()}} << "channels";
    QTest::newRow("too many channels")
        << QJsonObject{{"channels", QJsonArray::fromVariantList(QVariantList(18, QVariantMap()))}} << "channels";
    QTest::newRow("channel not an object") << QJsonObject{{"channels", QJsonArray{1}}} << "channels[0]";
    QTest::newRow("channel bool as number")
        << QJsonObject{{"channels", QJsonArray{QJsonObject(), QJsonObject{{"isStrain", 1}}}}}
        << "channels[1].isStrain";
    QTest::newRow("channel float as text")
        << QJsonObject{{"channels", QJsonArray{QJsonObject{{"gaugeCoef", "2"}}}}} << "channels[0].gaugeCoef";
    QTest::newRow("coefficient table too long")
        << QJsonObject{{"channels", QJsonArray{QJsonObject{{"gainCoef", QJsonArray::fromVariantList(
                                                                            QVariantList(18, 1))}}}}}
        << "channels[0].gainCoef";
}

void RecordJsonTest::wrongTypesAreRefusedWithTheKey()
{
    QFETCH(QJsonObject, json);
    QFETCH(QString, named);
    ModuleRecord record = defaultModule();
    QString error;
    QVERIFY(!recordFromJson(json, record, &error));
    QVERIFY2(error.startsWith(named + QLatin1Char(':')), qPrintable(error));
    QVERIFY(!recordFromJson(json, record, nullptr));
}

void RecordJsonTest::anyJsonIsSurvived()
{
    // Every key of a real record given random values of every JSON type.
    const QJsonObject sample = recordToJson(defaultModule());
    const QJsonObject sampleChannel = sample["channels"].toArray()[0].toObject();
    QRandomGenerator random(4711);
    auto anyValue = [&](int depth) -> QJsonValue {
        switch (random.bounded(depth > 0 ? 7 : 5)) {
        case 0: return QJsonValue();
        case 1: return random.bounded(2) == 1;
        case 2: return random.bounded(2e6) - 1e6;
        case 3: return static_cast<qint64>(random.generate());
        case 4: return QStringLiteral("x");
        case 5: return QJsonArray{random.bounded(300), QJsonObject()};
        default: return QJsonObject{{"a", 1}};
        }
    };
    for (int round = 0; round < 500; ++round) {
        QJsonObject json;
        for (const QString& key : sample.keys())
            if (random.bounded(3) == 0)
                json[key] = anyValue(1);
        if (random.bounded(2) == 0) {
            QJsonArray channels;
            for (int c = 0, n = random.bounded(19); c < n; ++c) {
                QJsonObject channel;
                for (const QString& key : sampleChannel.keys())
                    if (random.bounded(4) == 0)
                        channel[key] = anyValue(1);
                channels.append(random.bounded(10) == 0 ? anyValue(0) : QJsonValue(channel));
            }
            json["channels"] = channels;
        }
        ModuleRecord record = defaultModule();
        QString error;
        if (!recordFromJson(json, record, &error))
            QVERIFY(!error.isEmpty());
    }
}

QTEST_GUILESS_MAIN(RecordJsonTest)
#include "record_json_test.moc"
