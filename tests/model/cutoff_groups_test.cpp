#include "model/cutoff_groups.h"

#include <QTest>

using namespace velmor;

namespace velmor {

// Failure messages print the span.
char* toString(const RowSpan& span)
{
    return QTest::toString(QStringLiteral("%1-%2").arg(span.first).arg(span.last));
}

}  // namespace velmor

class CutoffGroupsTest : public QObject {
    Q_OBJECT

private slots:
    void tmC16WidensToUnevenGroups_data();
    void tmC16WidensToUnevenGroups();
    void otherModelsKeepTheSelection_data();
    void otherModelsKeepTheSelection();
    void groupOfEveryRow_data();
    void groupOfEveryRow();
    void rowsOutsideOneToSixteenStay();
};

void CutoffGroupsTest::tmC16WidensToUnevenGroups_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("widenedFirst");
    QTest::addColumn<int>("widenedLast");
    QTest::newRow("row 2") << 2 << 2 << 1 << 3;
    QTest::newRow("rows 5-7") << 5 << 7 << 4 << 8;
    QTest::newRow("row 8 in the short group") << 8 << 8 << 7 << 8;
    QTest::newRow("row 9") << 9 << 9 << 9 << 11;
    QTest::newRow("rows 13-15") << 13 << 15 << 12 << 16;
    QTest::newRow("whole groups stay") << 4 << 6 << 4 << 6;
    QTest::newRow("upside down selection") << 10 << 3 << 1 << 11;
    QTest::newRow("all rows") << 1 << 16 << 1 << 16;
}

void CutoffGroupsTest::tmC16WidensToUnevenGroups()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, widenedFirst);
    QFETCH(int, widenedLast);
    QCOMPARE(cutoffRows(2, RowSpan{first, last}), (RowSpan{widenedFirst, widenedLast}));
}

void CutoffGroupsTest::otherModelsKeepTheSelection_data()
{
    QTest::addColumn<int>("modelCode");
    for (int code : {0, 1, 3, 4, 5, 6, 7, 8, 9})
        QTest::addRow("model %d", code) << code;
}

void CutoffGroupsTest::otherModelsKeepTheSelection()
{
    QFETCH(int, modelCode);
    QCOMPARE(cutoffRows(modelCode, RowSpan{2, 5}), (RowSpan{2, 5}));
    QCOMPARE(cutoffRows(modelCode, RowSpan{5, 2}), (RowSpan{2, 5}));
}

void CutoffGroupsTest::groupOfEveryRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    const int groups[][2] = {{1, 3}, {4, 6}, {7, 8}, {9, 11}, {12, 14}, {15, 16}};
    for (const auto& group : groups) {
        for (int row = group[0]; row <= group[1]; ++row)
            QTest::addRow("row %d", row) << row << group[0] << group[1];
    }
}

void CutoffGroupsTest::groupOfEveryRow()
{
    QFETCH(int, row);
    QFETCH(int, first);
    QFETCH(int, last);
    QCOMPARE(cutoffGroupOf(row), (RowSpan{first, last}));
}

void CutoffGroupsTest::rowsOutsideOneToSixteenStay()
{
    QCOMPARE(cutoffRows(2, RowSpan{0, 2}), (RowSpan{0, 3}));
    QCOMPARE(cutoffRows(2, RowSpan{14, 17}), (RowSpan{12, 17}));
    QCOMPARE(cutoffGroupOf(0), (RowSpan{0, 0}));
    QCOMPARE(cutoffGroupOf(17), (RowSpan{17, 17}));
}

QTEST_APPLESS_MAIN(CutoffGroupsTest)
#include "cutoff_groups_test.moc"
