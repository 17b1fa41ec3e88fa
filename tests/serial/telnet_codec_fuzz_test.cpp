#include "serial/telnet_codec.h"

#include <QRandomGenerator>
#include <QTest>

using namespace velmor;

namespace {

using T = TelnetCodec;

constexpr quint32 kSeed = 0x7E1E2217;
constexpr int kRuns = 3000;
constexpr int kLongest = 600;

char byteOf(quint32 value) { return static_cast<char>(value & 0xFF); }

// A telnet command a server may send: a single-byte one, a negotiation, or a
// subnegotiation whose contents are escaped.
QByteArray randomCommand(QRandomGenerator& rng)
{
    QByteArray out(1, byteOf(T::kIac));
    switch (rng.bounded(3)) {
    case 0:
        out.append(byteOf(241 + rng.bounded(9)));  // NOP .. GA, SB left out
        break;
    case 1:
        out.append(byteOf(T::kWill + rng.bounded(4)));
        out.append(byteOf(rng.generate()));
        break;
    default:
        out.append(byteOf(T::kSb));
        out.append(byteOf(rng.generate()));
        for (quint32 n = rng.bounded(12); n > 0; --n) {
            const char c = byteOf(rng.generate());
            out.append(c);
            if (c == byteOf(T::kIac))
                out.append(c);
        }
        out.append(byteOf(T::kIac));
        out.append(byteOf(T::kSe));
        break;
    }
    return out;
}

// Feeds `stream` in random chunks.
T::Input decodeInRandomChunks(T& codec, const QByteArray& stream, QRandomGenerator& rng)
{
    T::Input all;
    qsizetype from = 0;
    while (from < stream.size()) {
        const qsizetype length = qMin<qsizetype>(1 + rng.bounded(40), stream.size() - from);
        const T::Input part = codec.decode(QByteArrayView(stream).sliced(from, length));
        all.data += part.data;
        all.answer += part.answer;
        from += length;
    }
    return all;
}

}  // namespace

class TelnetCodecFuzzTest : public QObject {
    Q_OBJECT
private slots:
    void dataAmongRandomCommandsInRandomChunksComesThroughExactly();
    void encodedDataDecodesToItself();
    void garbageNeverYieldsMoreThanItGave();
};

void TelnetCodecFuzzTest::dataAmongRandomCommandsInRandomChunksComesThroughExactly()
{
    QRandomGenerator rng(kSeed);
    for (int run = 0; run < kRuns; ++run) {
        QByteArray data;
        QByteArray stream;
        for (quint32 n = rng.bounded(kLongest); n > 0; --n) {
            if (rng.bounded(8) == 0) {
                stream += randomCommand(rng);
                continue;
            }
            const char c = byteOf(rng.bounded(6) == 0 ? T::kIac : rng.generate());
            data.append(c);
            stream += T::encodeData(QByteArrayView(&c, 1));
        }
        T codec;
        codec.start();
        const T::Input in = decodeInRandomChunks(codec, stream, rng);
        QVERIFY2(in.data == data, qPrintable(QStringLiteral("run %1: %2 data bytes, %3 came out")
                                                 .arg(run)
                                                 .arg(data.size())
                                                 .arg(in.data.size())));
    }
}

void TelnetCodecFuzzTest::encodedDataDecodesToItself()
{
    QRandomGenerator rng(kSeed + 1);
    for (int run = 0; run < kRuns; ++run) {
        QByteArray data;
        for (quint32 n = rng.bounded(kLongest); n > 0; --n)
            data.append(byteOf(rng.generate()));
        T codec;
        codec.start();
        const T::Input in = decodeInRandomChunks(codec, T::encodeData(data), rng);
        QVERIFY2(in.data == data, qPrintable(QStringLiteral("run %1").arg(run)));
        QVERIFY(in.answer.isEmpty());
    }
}

void TelnetCodecFuzzTest::garbageNeverYieldsMoreThanItGave()
{
    QRandomGenerator rng(kSeed + 2);
    for (int run = 0; run < kRuns; ++run) {
        QByteArray garbage;
        for (quint32 n = rng.bounded(kLongest); n > 0; --n)
            // Rich in command bytes, so that every state of the parser is reached.
            garbage.append(byteOf(rng.bounded(2) == 0 ? 236 + rng.bounded(20) : rng.generate()));
        T codec;
        codec.start();
        const T::Input in = decodeInRandomChunks(codec, garbage, rng);
        QVERIFY2(in.data.size() <= garbage.size(), qPrintable(QStringLiteral("run %1").arg(run)));
        // An answer is three bytes for a three-byte negotiation at most.
        QVERIFY2(in.answer.size() <= garbage.size(), qPrintable(QStringLiteral("run %1").arg(run)));
    }
}

QTEST_GUILESS_MAIN(TelnetCodecFuzzTest)
#include "telnet_codec_fuzz_test.moc"
