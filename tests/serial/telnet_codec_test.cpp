#include "serial/telnet_codec.h"

#include <QTest>

using namespace velmor;

namespace {

using T = TelnetCodec;

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (const int v : values)
        out.append(static_cast<char>(v));
    return out;
}

QByteArray command(quint8 verb, quint8 option) { return bytes({T::kIac, verb, option}); }

// What ser2net sends first on a telnet(rfc2217) connection, as captured:
// WILL SGA, DO SGA, WILL ECHO, DONT ECHO, DO BINARY, WILL BINARY, DO COM-PORT.
const QByteArray kSer2netGreeting = QByteArray::fromHex("fffb03fffd03fffb01fffe01fffd00fffb00fffd2c");

// A server's answer to SET-BAUDRATE 4800 and a modem-state notification.
const QByteArray kBaudAnswer = QByteArray::fromHex("fffa2c65000012c0fff0");
const QByteArray kModemState = QByteArray::fromHex("fffa2c6b00fff0");

// Decodes `stream` in the chunks given by `cuts` (offsets, ascending).
T::Input decodeInChunks(T& codec, const QByteArray& stream, const QList<qsizetype>& cuts)
{
    T::Input all;
    qsizetype from = 0;
    for (qsizetype to : cuts + QList<qsizetype>{stream.size()}) {
        const T::Input part = codec.decode(QByteArrayView(stream).sliced(from, to - from));
        all.data += part.data;
        all.answer += part.answer;
        from = to;
    }
    return all;
}

}  // namespace

class TelnetCodecTest : public QObject {
    Q_OBJECT
private slots:
    void startOffersComPortBinaryAndNoGoAhead();
    void lineSetupIsFourSettingsAndAPurge();
    void comPortValueEscapesIac();
    void dataIacIsDoubledOnTheWayOut();
    void doubledIacArrivesAsOneDataByte();
    void ser2netGreetingGetsOnlyTheEchoRefused();
    void otherRequestsAreRefused();
    void refusedOfferIsNotAnsweredAndMayBeAcceptedLater();
    void optionSwitchedOffIsAcknowledgedOnce();
    void twoEndsAgreeAndFallSilent();
    void subnegotiationsAreStripped_data();
    void subnegotiationsAreStripped();
    void commandInterruptingASubnegotiationIsTaken();
    void everySplitOfAStreamGivesTheSameData();
    void startForgetsAHalfCommand();
    void comPortIsSettledByAnAnswerOrARefusal();
};

void TelnetCodecTest::startOffersComPortBinaryAndNoGoAhead()
{
    T codec;
    QCOMPARE(codec.start().toHex(' '), (command(T::kWill, T::kComPortOption) + command(T::kWill, T::kBinary)
                                        + command(T::kWill, T::kSuppressGoAhead) + command(T::kDo, T::kBinary)
                                        + command(T::kDo, T::kSuppressGoAhead))
                                           .toHex(' '));
}

void TelnetCodecTest::lineSetupIsFourSettingsAndAPurge()
{
    // IAC SB COM-PORT-OPTION <command> <value> IAC SE, 4800 as four bytes, big-endian.
    const QByteArray expected = QByteArray::fromHex("fffa2c01000012c0fff0"
                                                    "fffa2c0208fff0"
                                                    "fffa2c0301fff0"
                                                    "fffa2c0401fff0"
                                                    "fffa2c0c03fff0");
    QCOMPARE(T::lineSetup(4800).toHex(' '), expected.toHex(' '));
}

void TelnetCodecTest::comPortValueEscapesIac()
{
    QCOMPARE(T::comPortCommand(T::kSetBaudRate, QByteArray::fromHex("000000ff")).toHex(' '),
             QByteArray::fromHex("fffa2c01000000fffffff0").toHex(' '));
}

void TelnetCodecTest::dataIacIsDoubledOnTheWayOut()
{
    QCOMPARE(T::encodeData(QByteArray::fromHex("aaffff01")).toHex(' '), QByteArray::fromHex("aaffffffff01").toHex(' '));
    QCOMPARE(T::encodeData(QByteArray::fromHex("0102")), QByteArray::fromHex("0102"));
}

void TelnetCodecTest::doubledIacArrivesAsOneDataByte()
{
    T codec;
    codec.start();
    const T::Input in = codec.decode(QByteArray::fromHex("01ffff02ffffffff"));
    QCOMPARE(in.data.toHex(' '), QByteArray::fromHex("01ff02ffff").toHex(' '));
    QVERIFY(in.answer.isEmpty());
}

void TelnetCodecTest::ser2netGreetingGetsOnlyTheEchoRefused()
{
    T codec;
    codec.start();
    const T::Input in = codec.decode(kSer2netGreeting);
    QVERIFY(in.data.isEmpty());
    // Every other command answers one of our offers; DONT ECHO asks for what is so already.
    QCOMPARE(in.answer.toHex(' '), command(T::kDont, 1).toHex(' '));
    // Said again, the offers are in force already and go unanswered; ECHO is
    // asked for anew and refused anew.
    QCOMPARE(codec.decode(kSer2netGreeting).answer.toHex(' '), command(T::kDont, 1).toHex(' '));
}

void TelnetCodecTest::otherRequestsAreRefused()
{
    T codec;
    codec.start();
    const QByteArray terminalType = command(T::kDo, 24);
    const QByteArray status = command(T::kWill, 5);
    QCOMPARE(codec.decode(terminalType + status).answer.toHex(' '),
             (command(T::kWont, 24) + command(T::kDont, 5)).toHex(' '));
}

void TelnetCodecTest::refusedOfferIsNotAnsweredAndMayBeAcceptedLater()
{
    T codec;
    codec.start();
    QVERIFY(codec.decode(command(T::kDont, T::kBinary)).answer.isEmpty());
    QCOMPARE(codec.decode(command(T::kDo, T::kBinary)).answer.toHex(' '), command(T::kWill, T::kBinary).toHex(' '));
    QVERIFY(codec.decode(command(T::kDo, T::kBinary)).answer.isEmpty());
}

void TelnetCodecTest::optionSwitchedOffIsAcknowledgedOnce()
{
    T codec;
    codec.start();
    codec.decode(command(T::kWill, T::kSuppressGoAhead));
    QCOMPARE(codec.decode(command(T::kWont, T::kSuppressGoAhead)).answer.toHex(' '),
             command(T::kDont, T::kSuppressGoAhead).toHex(' '));
    QVERIFY(codec.decode(command(T::kWont, T::kSuppressGoAhead)).answer.isEmpty());
}

void TelnetCodecTest::twoEndsAgreeAndFallSilent()
{
    // Two ends with the same wishes, each answering what the other says: the
    // talk must stop by itself.
    T a;
    T b;
    QByteArray toB = a.start();
    QByteArray toA = b.start();
    int rounds = 0;
    while ((!toA.isEmpty() || !toB.isEmpty()) && rounds < 10) {
        const QByteArray fromA = a.decode(toA).answer;
        const QByteArray fromB = b.decode(toB).answer;
        toA = fromB;
        toB = fromA;
        ++rounds;
    }
    QVERIFY2(rounds <= 2, qPrintable(QStringLiteral("still talking after %1 rounds").arg(rounds)));
}

void TelnetCodecTest::subnegotiationsAreStripped_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("answers around data") << kBaudAnswer + QByteArray("\xAA\xAA", 2) + kModemState + QByteArray("\x03", 1)
                                         << QByteArray("\xAA\xAA\x03", 3);
    QTest::newRow("escaped iac inside") << QByteArray::fromHex("fffa2c65000000fffffff041") << QByteArray("A");
    QTest::newRow("single-byte commands") << QByteArray::fromHex("41fff142fff943fff244") << QByteArray("ABCD");
    QTest::newRow("unknown option") << QByteArray::fromHex("fffa18000102fff045") << QByteArray("E");
    QTest::newRow("extended option 255") << QByteArray::fromHex("fffaff0102fff046") << QByteArray("F");
}

void TelnetCodecTest::subnegotiationsAreStripped()
{
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, data);
    T codec;
    codec.start();
    const T::Input in = codec.decode(stream);
    QCOMPARE(in.data.toHex(' '), data.toHex(' '));
    QVERIFY(in.answer.isEmpty());
}

void TelnetCodecTest::commandInterruptingASubnegotiationIsTaken()
{
    T codec;
    codec.start();
    const T::Input in = codec.decode(QByteArray::fromHex("fffa2c65") + command(T::kDo, 24) + QByteArray("Z"));
    QCOMPARE(in.answer.toHex(' '), command(T::kWont, 24).toHex(' '));
    QCOMPARE(in.data, QByteArray("Z"));
}

void TelnetCodecTest::everySplitOfAStreamGivesTheSameData()
{
    const QByteArray stream = QByteArray::fromHex("aaaa") + kBaudAnswer + QByteArray::fromHex("01ffff") + command(T::kDo, 24)
                            + kModemState + QByteArray::fromHex("ff02");
    const QByteArray data = QByteArray::fromHex("aaaa01ff");
    for (qsizetype cut = 0; cut <= stream.size(); ++cut) {
        for (qsizetype second = cut; second <= stream.size(); ++second) {
            T codec;
            codec.start();
            const T::Input in = decodeInChunks(codec, stream, {cut, second});
            QVERIFY2(in.data == data, qPrintable(QStringLiteral("cuts at %1 and %2 gave %3")
                                                     .arg(cut)
                                                     .arg(second)
                                                     .arg(QString::fromLatin1(in.data.toHex(' ')))));
            QCOMPARE(in.answer, command(T::kWont, 24));
        }
    }
}

void TelnetCodecTest::startForgetsAHalfCommand()
{
    T codec;
    codec.start();
    codec.decode(QByteArray::fromHex("fffa2c65"));  // the connection ended here
    codec.start();
    QCOMPARE(codec.decode(QByteArray("AB")).data, QByteArray("AB"));
}

void TelnetCodecTest::comPortIsSettledByAnAnswerOrARefusal()
{
    T codec;
    codec.start();
    QVERIFY(!codec.comPortSettled());
    codec.decode(kSer2netGreeting + QByteArray::fromHex("fffa2c"));
    QVERIFY(!codec.comPortSettled());  // DO COM-PORT agrees, but only an answer shows the line is there
    codec.decode(QByteArray::fromHex("6b00fff0"));
    QVERIFY(codec.comPortSettled());
    codec.start();
    QVERIFY(!codec.comPortSettled());
    codec.decode(QByteArray::fromHex("fffa2c0100fff0"));  // a client's command, not an answer
    QVERIFY(!codec.comPortSettled());
    codec.decode(command(T::kDont, T::kComPortOption));
    QVERIFY(codec.comPortSettled());
}

QTEST_GUILESS_MAIN(TelnetCodecTest)
#include "telnet_codec_test.moc"
