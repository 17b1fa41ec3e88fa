#include "protocol/block.h"
#include "protocol/frame.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;

// Each block has one group selector and each selector names one block; the
// requests carry the block their selector names.
class BlockTest : public QObject {
    Q_OBJECT
private slots:
    void everySelectorNamesOneBlockAndBack();
    void requestsCarryTheBlockOfTheirSelector();
};

void BlockTest::everySelectorNamesOneBlockAndBack()
{
    const int last = kGroupCalibrationFirst + kCalibrationPairs - 1;
    QList<Block> seen;
    for (int selector = 0; selector <= last; ++selector) {
        const Block block = Block::ofSelector(selector);
        QCOMPARE(block.selector(), selector);
        QVERIFY(!seen.contains(block));
        seen << block;
    }
    QCOMPARE(Block::ofSelector(kGroupInfo), (Block{Block::Kind::Information, 0}));
    QCOMPARE(Block::ofSelector(4), (Block{Block::Kind::ChannelGroup, 3}));
    QCOMPARE(Block::ofSelector(5), (Block{Block::Kind::AdjustBlock, 0}));
    QCOMPARE(Block::ofSelector(16), (Block{Block::Kind::CalibrationPair, 7}));
}

void BlockTest::requestsCarryTheBlockOfTheirSelector()
{
    ModuleRecord record;
    record.busAddress = 3;
    const QList<Request> requests{beckonRequest(),
                                  readInfoRequest(3),
                                  writeInfoRequest(record),
                                  readChannelGroupRequest(record, 2),
                                  writeChannelGroupRequest(record, 3),
                                  readAdjustBlockRequest(record, 1),
                                  writeAdjustBlockRequest(record, 0),
                                  readCalibrationRequest(record, 6),
                                  writeCalibrationRequest(record, 7)};
    for (const Request& request : requests)
        QCOMPARE(request.block, Block::ofSelector(request.bytes[kGroupOffset]));
    QCOMPARE(readAdjustBlockRequest(record, 1).block, (Block{Block::Kind::AdjustBlock, 1}));
    QCOMPARE(balanceRequest(record, -1).block.kind, Block::Kind::Balance);
}

QTEST_GUILESS_MAIN(BlockTest)
#include "block_test.moc"
