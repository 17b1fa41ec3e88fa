// The frame-log pane of the main window: View > Frame log shows it, a read
// fills it while the read runs, it keeps to the newest row unless the
// operator scrolled up, exports what it shows as CSV, and clears.
#include "model/models.h"
#include "protocol/frame_text.h"
#include "support/csv_reader.h"
#include "ui/frame_log_model.h"
#include "window_rig.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDateTime>
#include <QDockWidget>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include <cmath>

using namespace velmor;
using namespace velmor::testing;

namespace {


QDockWidget* pane(frmMain& window) { return child<QDockWidget>(window, "FrameLogPane"); }
QTableView* table(frmMain& window) { return child<QTableView>(window, "FrameLogTable"); }
QString cell(frmMain& window, int row, int column)
{
    const QAbstractItemModel* model = table(window)->model();
    return model->data(model->index(row, column)).toString();
}

// View > Frame log, by its access keys, as an operator opens it.
void toggleFromTheViewMenu(frmMain& window)
{
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_V, Qt::AltModifier);
    QTRY_VERIFY(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_L);
    QTRY_VERIFY(!QApplication::activePopupWidget());
}

// A window with the pane shown, on a line with a 16-channel module at address 1.
struct LoggedWindow {
    explicit LoggedWindow(int languageMode = kEnglish, Pacing pacing = Pacing::Fast)
        : line({sim::ModuleAt{1, kTmC16}}, pacing), rig(languageMode)
    {
        chooseModule(rig.window, line, 1);
        child<QAction>(rig.window, "MnuView_FrameLog")->trigger();
    }
    // Read everything; true once the pane shows `rows` rows (new rows show
    // within half a second).
    bool readEverything(int rows)
    {
        QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
        return QTest::qWaitFor([&] { return table(window)->model()->rowCount() == rows; }, 2000);
    }

    SimLine line;
    WindowRig rig;
    frmMain& window = rig.window;
};

}  // namespace

class FrameLogPaneTest : public QObject {
    Q_OBJECT
private slots:
    void viewMenuEntryShowsAndHidesThePane_data();
    void viewMenuEntryShowsAndHidesThePane();
    void aReadFillsThePaneWhileItRuns();
    void aSearchOfAllLinesAtOnceFillsThePaneWhileItRuns();
    void aPaneScrolledUpStaysWhereTheOperatorLeftIt();
    void exportWritesWhatThePaneShows();
    void clearEmptiesThePane();
    void captionsAndRowsInBothLanguagesFitAtTheMinimumWidth_data();
    void captionsAndRowsInBothLanguagesFitAtTheMinimumWidth();
};

void FrameLogPaneTest::viewMenuEntryShowsAndHidesThePane_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("entry");
    QTest::newRow("English") << kEnglish << "&View" << "Frame &Log";
    QTest::newRow("Chinese") << kChinese << "查看(&V)" << "帧记录(&L)";
}

void FrameLogPaneTest::viewMenuEntryShowsAndHidesThePane()
{
    QFETCH(int, languageMode);
    QFETCH(QString, menu);
    QFETCH(QString, entry);
    WindowRig rig(languageMode);
    QCOMPARE(child<QMenu>(rig.window, "MnuView")->title(), menu);
    auto* action = child<QAction>(rig.window, "MnuView_FrameLog");
    QCOMPARE(action->text(), entry);
    QVERIFY(action->isCheckable());
    QVERIFY(child<QMenu>(rig.window, "MnuView")->actions().contains(action));

    QVERIFY(!pane(rig.window)->isVisible());
    QVERIFY(!action->isChecked());
    toggleFromTheViewMenu(rig.window);
    QTRY_VERIFY(pane(rig.window)->isVisible());
    QVERIFY(action->isChecked());
    toggleFromTheViewMenu(rig.window);
    QTRY_VERIFY(!pane(rig.window)->isVisible());
    QVERIFY(!action->isChecked());
}

void FrameLogPaneTest::aReadFillsThePaneWhileItRuns()
{
    // At the real 4800 baud a whole read takes over two seconds.
    LoggedWindow w(kEnglish, Pacing::Paced);
    QAbstractItemModel* model = table(w.window)->model();
    QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    auto* read = child<QPushButton>(w.window, "cmdFrame3Receive");
    int shownDuringTheRead = 0;
    int announcedDuringTheRead = 0;
    connect(model, &QAbstractItemModel::rowsInserted, this, [&](const QModelIndex&, int, int last) {
        if (!read->isEnabled()) {
            shownDuringTheRead = last + 1;
            ++announcedDuringTheRead;
        }
    });
    QVERIFY(w.readEverything(34));
    VELMOR_COMPARE_SAID(w.rig.dialogs.texts());
    // Rows came a few at a time while the read ran; at most the last half
    // second of it came after.
    QVERIFY2(announcedDuringTheRead >= 3, qPrintable(QString::number(announcedDuringTheRead)));
    QVERIFY2(shownDuringTheRead >= 24, qPrintable(QString::number(shownDuringTheRead)));

    for (int i = 0; i < 17; ++i) {
        QCOMPARE(cell(w.window, 2 * i, FrameLogModel::Direction), QStringLiteral("Out"));
        QCOMPARE(cell(w.window, 2 * i, FrameLogModel::Outcome), QStringLiteral("Sent"));
        QCOMPARE(cell(w.window, 2 * i, FrameLogModel::Frame), frameToText(w.line.requests()[i]));
        QCOMPARE(cell(w.window, 2 * i + 1, FrameLogModel::Direction), QStringLiteral("In"));
        QCOMPARE(cell(w.window, 2 * i + 1, FrameLogModel::Outcome), QStringLiteral("Accepted"));
        QCOMPARE(cell(w.window, 2 * i + 1, FrameLogModel::Frame), frameToText(w.line.replies()[i]));
        QCOMPARE(cell(w.window, 2 * i, FrameLogModel::Line), w.line.portName());
    }
    // The newest row in sight.
    QTableView* view = table(w.window);
    QTRY_VERIFY(view->verticalScrollBar()->maximum() > 0);
    QCOMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->maximum());
    const QRect newest = view->visualRect(model->index(33, FrameLogModel::Time));
    QVERIFY(view->viewport()->rect().contains(newest.topLeft()) && view->viewport()->rect().contains(newest.bottomLeft()));
}

void FrameLogPaneTest::aSearchOfAllLinesAtOnceFillsThePaneWhileItRuns()
{
    SimLine first({sim::ModuleAt{2, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({sim::ModuleAt{9, 0}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(first.isReady() && second.isReady());
    WindowRig rig;
    child<QAction>(rig.window, "MnuView_FrameLog")->trigger();
    QAbstractItemModel* model = table(rig.window)->model();
    auto* search = child<QPushButton>(rig.window, "cmdSearch");
    int shownDuringTheSearch = 0;
    connect(model, &QAbstractItemModel::rowsInserted, this, [&](const QModelIndex&, int, int last) {
        if (search->text() == QStringLiteral("&Stop"))  // the search runs
            shownDuringTheSearch = last + 1;
    });
    child<QAction>(rig.window, "MnuOperate_SearchAll")->trigger();
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("Found 2 modules."));

    // Each line's requests and what came back for them, in its own order;
    // the two lines' rows interleaved as they were asked at the same time.
    const int expected = 2 * static_cast<int>(first.requests().size() + second.requests().size());
    QTRY_VERIFY(model->rowCount() >= expected);
    QVERIFY2(shownDuringTheSearch > 0, "rows appear while the search runs");
    for (SimLine* line : {&first, &second}) {
        QStringList frames;
        for (int row = 0; row < model->rowCount(); ++row)
            if (cell(rig.window, row, FrameLogModel::Line) == line->portName()
                && cell(rig.window, row, FrameLogModel::Direction) == QLatin1String("Out"))
                frames << cell(rig.window, row, FrameLogModel::Frame);
        QStringList requests;
        for (const QByteArray& request : line->requests())
            requests << frameToText(request);
        QCOMPARE(frames, requests);
    }
}

void FrameLogPaneTest::aPaneScrolledUpStaysWhereTheOperatorLeftIt()
{
    LoggedWindow w;
    QVERIFY(w.readEverything(34));
    QTableView* view = table(w.window);
    QScrollBar* bar = view->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    bar->triggerAction(QAbstractSlider::SliderToMinimum);  // the operator drags it to the top
    QCOMPARE(bar->value(), 0);
    const int before = bar->maximum();
    QVERIFY(w.readEverything(68));
    QTRY_VERIFY(bar->maximum() > before);
    QCOMPARE(bar->value(), 0);
    // Back at the newest row, the pane follows again.
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(bar->value(), bar->maximum());
    const int end = bar->maximum();
    QVERIFY(w.readEverything(102));
    QTRY_VERIFY(bar->maximum() > end);
    QCOMPARE(bar->value(), bar->maximum());
}

void FrameLogPaneTest::exportWritesWhatThePaneShows()
{
    LoggedWindow w;
    QVERIFY(w.readEverything(34));
    auto* exportButton = child<QPushButton>(w.window, "cmdFrameLogExport");
    const QString path = w.rig.folder.filePath(QStringLiteral("frames.csv"));

    w.rig.files.saveAnswer.clear();  // Cancel
    QTest::mouseClick(exportButton, Qt::LeftButton);
    QVERIFY(!QFile::exists(path));

    w.rig.files.saveAnswer = path;
    QTest::mouseClick(exportButton, Qt::LeftButton);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QStringList> records = readCsv(QString::fromUtf8(file.readAll()));
    QCOMPARE(records.size(), 1 + 34);
    QCOMPARE(records[0].join(QLatin1Char(',')), QStringLiteral("time,line,direction,outcome,status,frame"));
    for (int row = 0; row < 34; ++row) {
        const QStringList& record = records[row + 1];
        QCOMPARE(record.size(), 6);
        const QDateTime time = QDateTime::fromString(record[0], Qt::ISODateWithMs);
        QCOMPARE(time.toLocalTime().toString(QStringLiteral("HH:mm:ss.zzz")), cell(w.window, row, FrameLogModel::Time));
        QCOMPARE(record[1], cell(w.window, row, FrameLogModel::Line));
        QCOMPARE(record[2], cell(w.window, row, FrameLogModel::Direction).toLower());
        QCOMPARE(record[3], cell(w.window, row, FrameLogModel::Outcome).toLower());
        QCOMPARE(record[4], QString());
        QCOMPARE(record[5], cell(w.window, row, FrameLogModel::Frame));
    }
    VELMOR_COMPARE_SAID(w.rig.dialogs.texts());

    const QString unwritable = w.rig.folder.filePath(QStringLiteral("missing/frames.csv"));
    w.rig.files.saveAnswer = unwritable;
    QTest::mouseClick(exportButton, Qt::LeftButton);
    QVERIFY2(w.rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(w.rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(w.rig.dialogs.messages[0].first, QStringLiteral("Module Setup"));
    QVERIFY(w.rig.dialogs.messages[0].second.startsWith(QStringLiteral("Cannot write the frame log ") + unwritable + QStringLiteral(": ")));
}

void FrameLogPaneTest::clearEmptiesThePane()
{
    LoggedWindow w;
    QAbstractItemModelTester tester(table(w.window)->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    QVERIFY(w.readEverything(34));
    QTest::mouseClick(child<QPushButton>(w.window, "cmdFrameLogClear"), Qt::LeftButton);
    QCOMPARE(table(w.window)->model()->rowCount(), 0);
    QVERIFY(w.readEverything(34));
    QCOMPARE(cell(w.window, 0, FrameLogModel::Frame), frameToText(w.line.requests()[17]));
}

void FrameLogPaneTest::captionsAndRowsInBothLanguagesFitAtTheMinimumWidth_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QStringList>("firstRows");  // direction and outcome of the first two rows
    QTest::addColumn<QString>("refused");
    QTest::newRow("English") << kEnglish << "Frame log" << QStringList{"&Export to CSV...", "&Clear"}
                             << QStringList{"Time", "Line", "Direction", "Outcome", "Frame"}
                             << QStringList{"Out", "Sent", "In", "Accepted"} << "Refused (status 3: checksum mismatch)";
    QTest::newRow("Chinese") << kChinese << "帧记录" << QStringList{"导出为 CSV...(&E)", "清除(&C)"}
                             << QStringList{"时间", "线路", "方向", "结果", "帧"}
                             << QStringList{"发出", "已发送", "收到", "已接受"} << "被拒绝（状态 3：校验和不符）";
}

void FrameLogPaneTest::captionsAndRowsInBothLanguagesFitAtTheMinimumWidth()
{
    QFETCH(int, languageMode);
    QFETCH(QString, title);
    QFETCH(QStringList, buttons);
    QFETCH(QStringList, headers);
    QFETCH(QStringList, firstRows);
    QFETCH(QString, refused);
    LoggedWindow w(languageMode);
    w.line.addFault(1, sim::FaultKind::Checksum, 2);  // the second reply is refused
    QVERIFY(w.readEverything(4));  // information read, then the refused group read
    frmMain& window = w.window;
    window.resize(100, 760);  // back to the minimum width
    QTRY_COMPARE(window.width(), int(std::lround(8000 * window.logicalDpiX() / 1440.0)));
    QApplication::processEvents();

    QCOMPARE(pane(window)->windowTitle(), title);
    QStringList problems;
    for (const auto& [name, caption] : {std::pair{"cmdFrameLogExport", buttons[0]}, std::pair{"cmdFrameLogClear", buttons[1]}}) {
        auto* button = child<QPushButton>(window, name);
        if (button->text() != caption)
            problems << QStringLiteral("%1 reads \"%2\"").arg(QLatin1String(name), button->text());
        if (button->width() < button->sizeHint().width())
            problems << QStringLiteral("clipped: %1").arg(QLatin1String(name));
    }
    QTableView* view = table(window);
    QVERIFY(!view->accessibleName().isEmpty());
    const QFontMetrics metrics(view->font());
    const auto fits = [&](int column, const QString& text) {
        for (const QString& line : text.split(QStringLiteral("\r\n")))
            if (metrics.horizontalAdvance(line) > view->columnWidth(column))
                problems << QStringLiteral("column %1 too narrow for \"%2\"").arg(column).arg(line);
    };
    for (int c = 0; c < headers.size(); ++c) {
        const QString header = view->model()->headerData(c, Qt::Horizontal).toString();
        if (header != headers[c])
            problems << QStringLiteral("header %1 reads \"%2\"").arg(c).arg(header);
        if (view->horizontalHeader()->fontMetrics().horizontalAdvance(header) > view->columnWidth(c))
            problems << QStringLiteral("header clipped: %1").arg(header);
    }
    const QStringList shown{cell(window, 0, FrameLogModel::Direction), cell(window, 0, FrameLogModel::Outcome),
                            cell(window, 1, FrameLogModel::Direction), cell(window, 1, FrameLogModel::Outcome)};
    if (shown != firstRows)
        problems << QStringLiteral("first rows read: %1").arg(shown.join(QLatin1String(" | ")));
    if (cell(window, 3, FrameLogModel::Outcome) != refused)
        problems << QStringLiteral("refused row reads \"%1\"").arg(cell(window, 3, FrameLogModel::Outcome));
    for (int row = 0; row < view->model()->rowCount(); ++row)
        for (int c = 0; c < FrameLogModel::ColumnCount; ++c)
            fits(c, cell(window, row, c));
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

QTEST_MAIN(FrameLogPaneTest)
#include "frame_log_pane_test.moc"
