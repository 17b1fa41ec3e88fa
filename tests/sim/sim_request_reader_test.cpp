// Requests are assembled from the byte stream as a module listens to the line.

#include "sim/request_reader.h"

#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::sim;

namespace {

constexpr qint64 kMs = 1'000'000;
const QByteArray kRead = readInfoRequest(5).frame();

QList<QByteArray> framesOf(const QList<ReceivedRequest>& requests)
{
    QList<QByteArray> frames;
    for (const ReceivedRequest& r : requests)
        frames.append(r.frame);
    return frames;
}

}  // namespace

class SimRequestReaderTest : public QObject {
    Q_OBJECT

private slots:
    void wholeRequestInOneChunk();
    void requestInPiecesKeepsItsFirstByteTime();
    void noiseBeforeTheStartIsSkipped();
    void twoRequestsInOneChunk();
    void partialRequestIsDroppedAfterAQuietLine();
    void partialRequestWithinTheQuietTimeIsCompleted();
    void intactRequestsPassTheEnvelopeCheck();
};

void SimRequestReaderTest::wholeRequestInOneChunk()
{
    RequestReader reader;
    const QList<ReceivedRequest> got = reader.feed(kRead, 10 * kMs);
    QCOMPARE(framesOf(got), QList<QByteArray>{kRead});
    QCOMPARE(got[0].firstByteNs, 10 * kMs);
    QVERIFY(!reader.hasPartial());
}

void SimRequestReaderTest::requestInPiecesKeepsItsFirstByteTime()
{
    RequestReader reader;
    QVERIFY(reader.feed(kRead.first(2), 10 * kMs).isEmpty());
    QVERIFY(reader.feed(kRead.mid(2, 3), 20 * kMs).isEmpty());
    const QList<ReceivedRequest> got = reader.feed(kRead.mid(5), 30 * kMs);
    QCOMPARE(framesOf(got), QList<QByteArray>{kRead});
    QCOMPARE(got[0].firstByteNs, 10 * kMs);
}

void SimRequestReaderTest::noiseBeforeTheStartIsSkipped()
{
    RequestReader reader;
    const QByteArray noisy = QByteArray::fromHex("0055AA01") + kRead;
    QCOMPARE(framesOf(reader.feed(noisy, 0)), QList<QByteArray>{kRead});
}

void SimRequestReaderTest::twoRequestsInOneChunk()
{
    RequestReader reader;
    const QByteArray write = writeChannelGroupRequest(defaultModule(), 1).frame();
    QCOMPARE(framesOf(reader.feed(kRead + write, 0)), (QList<QByteArray>{kRead, write}));
}

void SimRequestReaderTest::partialRequestIsDroppedAfterAQuietLine()
{
    RequestReader reader;
    QVERIFY(reader.feed(kRead.first(4), 0).isEmpty());
    QVERIFY(reader.hasPartial());
    const QList<ReceivedRequest> got = reader.feed(kRead, 250 * kMs);
    QCOMPARE(framesOf(got), QList<QByteArray>{kRead});
    QCOMPARE(got[0].firstByteNs, 250 * kMs);
}

void SimRequestReaderTest::partialRequestWithinTheQuietTimeIsCompleted()
{
    RequestReader reader;
    QVERIFY(reader.feed(kRead.first(4), 0).isEmpty());
    QCOMPARE(framesOf(reader.feed(kRead.mid(4), 150 * kMs)), QList<QByteArray>{kRead});
}

void SimRequestReaderTest::intactRequestsPassTheEnvelopeCheck()
{
    QVERIFY(requestIntact(kRead));
    QVERIFY(requestIntact(balanceRequest(defaultModule(), -1).frame()));
    QByteArray bad = kRead;
    bad[6] = char(bad[6] + 1);
    QVERIFY(!requestIntact(bad));
    QVERIFY(!requestIntact(kRead.first(6)));
    QVERIFY(!requestIntact(QByteArray::fromHex("AA")));
    QVERIFY(!requestIntact(QByteArray::fromHex("AB") + kRead.mid(1)));
}

QTEST_GUILESS_MAIN(SimRequestReaderTest)
#include "sim_request_reader_test.moc"
