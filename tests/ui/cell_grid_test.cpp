// The cell model and table view behind the channel, adjust and coefficient grids.
#include "ui/cell_grid.h"

#include "model/models.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QFont>
#include <QHeaderView>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::Language)
Q_DECLARE_METATYPE(velmor::GridCells)

namespace {

constexpr qint32 kAllChosen = -1;

ModuleRecord recordOfModel(int modelCode)
{
    ModuleRecord record = defaultModule();
    recognizeModel(record, modelCode);
    record.modelCode = static_cast<quint8>(modelCode);
    return record;
}

QString cell(const QAbstractItemModel& model, int row, int column, int role = Qt::DisplayRole)
{
    return model.data(model.index(row, column), role).toString();
}

}  // namespace

class CellGridTest : public QObject {
    Q_OBJECT

private slots:
    void modelStaysConsistentAcrossShowsOfDifferentSizes();
    void horizontalHeaderGivesTheHeadings();
    void referenceColumnsHaveAGreyBackground();
    void cellsAreCentredAndReadOnly();
    void aShortRowShowsBlanks();
    void gridOwnsItsModelAndCarriesItsNames();
    void rowNumbersHiddenWhenColumnZeroNamesTheRows();
    void noHeadingOrCellIsClipped_data();
    void noHeadingOrCellIsClipped();
    void aGridOfTheSameShapeTellsOnlyTheCellsThatChanged();
    void setCellsRewritesCellsInsideTheGridOnly();
    void aRewrittenCellWidensItsColumn();
};

void CellGridTest::modelStaysConsistentAcrossShowsOfDifferentSizes()
{
    CellTextModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 0);

    model.showCells(channelGridCells(defaultModule(), Language::English, kAllChosen));
    QCOMPARE(model.rowCount(), 16);
    QCOMPARE(model.columnCount(), 11);
    QCOMPARE(cell(model, 15, 0), QStringLiteral("CH16"));
    QCOMPARE(cell(model, 0, 6), QStringLiteral("1000.00000"));

    model.showCells(channelGridCells(recordOfModel(3), Language::Chinese, kAllChosen));
    QCOMPARE(model.rowCount(), 8);
    QCOMPARE(model.columnCount(), 17);
    QCOMPARE(cell(model, 7, 16), QStringLiteral("应变"));

    model.showCells(adjustGridCells(recordOfModel(0), Language::English));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 9);
    QVERIFY(!model.index(4, 0).isValid());

    model.showCells(GridCells{});
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 0);

    ModuleRecord tmB8 = recordOfModel(3);
    tmB8.channels[0].gainCoef[10] = 12345;
    model.showCells(calibrationGridCells(tmB8, Language::English));
    QCOMPARE(model.rowCount(), 8);
    QCOMPARE(model.columnCount(), 12);
    QCOMPARE(cell(model, 0, 11), QStringLiteral("123.45"));

    QCOMPARE(resets.count(), 5);
}

void CellGridTest::horizontalHeaderGivesTheHeadings()
{
    CellTextModel model;
    model.showCells(adjustGridCells(defaultModule(), Language::Chinese));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("CH"));
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("零点调整1"));
    QCOMPARE(model.headerData(8, Qt::Horizontal).toString(), QStringLiteral("增益调整4"));
    QVERIFY(!model.headerData(9, Qt::Horizontal).isValid());
    QVERIFY(!model.headerData(-1, Qt::Horizontal).isValid());
    // Rows keep the plain numbering; the grids hide it (column 0 names the channel).
    QCOMPARE(model.headerData(0, Qt::Vertical).toInt(), 1);
}

void CellGridTest::referenceColumnsHaveAGreyBackground()
{
    CellTextModel model;
    model.showCells(channelGridCells(recordOfModel(4), Language::English, kAllChosen));
    const QColor grey(230, 230, 230);
    for (int row : {0, 15})
        for (int column = 0; column < model.columnCount(); ++column) {
            const QVariant background = model.data(model.index(row, column), Qt::BackgroundRole);
            if (column >= 11) {
                QCOMPARE(background.value<QBrush>().color(), grey);
            } else {
                QVERIFY2(!background.isValid(), qPrintable(QStringLiteral("column %1").arg(column)));
            }
        }

    model.showCells(channelGridCells(defaultModule(), Language::English, kAllChosen));
    QVERIFY(!model.data(model.index(0, 10), Qt::BackgroundRole).isValid());
}

void CellGridTest::cellsAreCentredAndReadOnly()
{
    CellTextModel model;
    model.showCells(calibrationGridCells(defaultModule(), Language::English));
    for (const QModelIndex& index : {model.index(0, 0), model.index(3, 4), model.index(15, 8)}) {
        QCOMPARE(model.data(index, Qt::TextAlignmentRole).toInt(), static_cast<int>(Qt::AlignCenter));
        QCOMPARE(model.flags(index), Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        QVERIFY(!model.setData(index, QStringLiteral("9.99")));
    }
    QCOMPARE(cell(model, 3, 4), QStringLiteral("0.00"));
    QCOMPARE(model.flags(QModelIndex()), Qt::NoItemFlags);
}

void CellGridTest::aShortRowShowsBlanks()
{
    CellTextModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    GridCells cells;
    cells.headings = QStringList{"CH", "A", "B"};
    cells.rows = {QStringList{"CH1"}};
    model.showCells(cells);
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(cell(model, 0, 0), QStringLiteral("CH1"));
    QCOMPARE(cell(model, 0, 2), QString());
}

void CellGridTest::gridOwnsItsModelAndCarriesItsNames()
{
    auto* grid = new CellGrid(QStringLiteral("MSHGridNoOperate"), QStringLiteral("Adjust values"));
    QPointer<CellTextModel> model = grid->cellModel();
    QCOMPARE(grid->objectName(), QStringLiteral("MSHGridNoOperate"));
    QCOMPARE(grid->accessibleName(), QStringLiteral("Adjust values"));
    QCOMPARE(grid->model(), model.data());
    QCOMPARE(grid->editTriggers(), QAbstractItemView::NoEditTriggers);
    grid->showCells(adjustGridCells(defaultModule(), Language::English));
    QCOMPARE(grid->model()->rowCount(), 16);
    delete grid;
    QVERIFY(model.isNull());
}

void CellGridTest::rowNumbersHiddenWhenColumnZeroNamesTheRows()
{
    CellGrid grid(QStringLiteral("MSHGridOperate"), QStringLiteral("Channel setup"));
    GridCells cells = channelGridCells(defaultModule(), Language::English, kAllChosen);
    grid.showCells(cells);
    QVERIFY(grid.verticalHeader()->isHidden());
    cells.firstColumnNamesRows = false;
    grid.showCells(cells);
    QVERIFY(!grid.verticalHeader()->isHidden());
}

void CellGridTest::noHeadingOrCellIsClipped_data()
{
    QTest::addColumn<GridCells>("first");
    QTest::addColumn<GridCells>("cells");
    ModuleRecord tmB8 = recordOfModel(3);
    tmB8.channels[2].gainCoef[0] = 99999999;
    tmB8.channels[3].fullRange = 12345678.0f;
    for (Language language : {Language::Chinese, Language::English}) {
        const char* tag = language == Language::Chinese ? "Chinese" : "English";
        // Each grid shown after another of different width, as when the module changes.
        QTest::addRow("channel TM-B8, %s", tag)
            << channelGridCells(defaultModule(), language, 0) << channelGridCells(tmB8, language, kAllChosen);
        QTest::addRow("channel TM-C16, %s", tag)
            << channelGridCells(tmB8, language, 0) << channelGridCells(defaultModule(), language, kAllChosen);
        QTest::addRow("adjust, %s", tag)
            << calibrationGridCells(tmB8, language) << adjustGridCells(defaultModule(), language);
        QTest::addRow("coefficient TM-B8, %s", tag)
            << adjustGridCells(recordOfModel(0), language) << calibrationGridCells(tmB8, language);
    }
}

void CellGridTest::noHeadingOrCellIsClipped()
{
    QFETCH(GridCells, first);
    QFETCH(GridCells, cells);
    CellGrid grid(QStringLiteral("MSHGridOperate"), QStringLiteral("Channel setup"));
    // A large font, so that the texts outgrow the default section size and the
    // check shows that the columns were really sized to their contents.
    QFont large = grid.font();
    large.setPointSize(40);
    grid.setFont(large);
    grid.resize(400, 300);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.showCells(first);
    grid.showCells(cells);

    const QHeaderView* header = grid.horizontalHeader();
    QCOMPARE(header->count(), cells.headings.size());
    for (int column = 0; column < cells.headings.size(); ++column) {
        const QString& heading = cells.headings.at(column);
        const int width = header->sectionSize(column);
        QVERIFY2(width >= header->fontMetrics().horizontalAdvance(heading),
                 qPrintable(QStringLiteral("heading \"%1\": %2 px").arg(heading).arg(width)));
        for (const QStringList& row : cells.rows)
            QVERIFY2(width >= grid.fontMetrics().horizontalAdvance(row.at(column)),
                     qPrintable(QStringLiteral("cell \"%1\": %2 px").arg(row.at(column)).arg(width)));
    }
}

void CellGridTest::aGridOfTheSameShapeTellsOnlyTheCellsThatChanged()
{
    CellTextModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ModuleRecord record = defaultModule();
    record.integralType = 1;
    model.showCells(channelGridCells(record, Language::English, kAllChosen));
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);

    record.channels[4].coupling = 0;
    record.channels[9].integral = 2;
    const QList<int> columns = model.showCells(channelGridCells(record, Language::English, kAllChosen));
    QCOMPARE(resets.count(), 0);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(changes.at(0).at(0).toModelIndex(), model.index(4, 4));
    QCOMPARE(changes.at(1).at(0).toModelIndex(), model.index(9, 10));
    QCOMPARE(columns, (QList<int>{4, 10}));
    QCOMPARE(cell(model, 4, 4), QStringLiteral("DC Coupling"));
    QCOMPARE(cell(model, 9, 10), QStringLiteral("Two Integral"));

    // The same texts again: nothing to tell.
    QVERIFY(model.showCells(channelGridCells(record, Language::English, kAllChosen)).isEmpty());
    QCOMPARE(changes.count(), 2);
    // Another language changes the headings: a reset.
    model.showCells(channelGridCells(record, Language::Chinese, kAllChosen));
    QCOMPARE(resets.count(), 1);
}

void CellGridTest::setCellsRewritesCellsInsideTheGridOnly()
{
    CellTextModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.showCells(adjustGridCells(recordOfModel(0), Language::English));  // four channels
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const QList<int> columns = model.setCells({{1, 5, QStringLiteral("1023")},
                                               {4, 1, QStringLiteral("256")},
                                               {4, 2, QStringLiteral("0")},      // already shows 0
                                               {5, 1, QStringLiteral("7")},      // no fifth channel
                                               {0, 1, QStringLiteral("7")},      // the heading row
                                               {2, 9, QStringLiteral("7")}});    // no column 9
    QCOMPARE(columns, (QList<int>{5, 1}));
    QCOMPARE(changes.count(), 2);
    QCOMPARE(cell(model, 0, 5), QStringLiteral("1023"));
    QCOMPARE(cell(model, 3, 1), QStringLiteral("256"));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Zero Adjust1"));
}

void CellGridTest::aRewrittenCellWidensItsColumn()
{
    CellGrid grid(QStringLiteral("MSHGridNoOperate"), QStringLiteral("Adjust values"));
    grid.resize(400, 300);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.showCells(adjustGridCells(defaultModule(), Language::English));
    const QString wide = QStringLiteral("123456789012345678901234567890");
    grid.setCells({{3, 2, wide}});
    QVERIFY2(grid.horizontalHeader()->sectionSize(2) >= grid.fontMetrics().horizontalAdvance(wide),
             qPrintable(QString::number(grid.horizontalHeader()->sectionSize(2))));
}

QTEST_MAIN(CellGridTest)
#include "cell_grid_test.moc"
