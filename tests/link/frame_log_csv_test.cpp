// The frame log as CSV: quoting, the record layout under the fixed header,
// and a log file that grows across runs with one header, on real files.
#include "link/frame_log_csv.h"
#include "support/csv_reader.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace velmor;
using namespace velmor::testing;

namespace {

const QByteArray kRequest = QByteArray::fromHex("AAAA0305110016");
const QString kHeader = QString::fromLatin1(kCsvHeader);

QByteArray fullFrame()
{
    QByteArray frame(55, '\x00');
    frame[0] = frame[1] = '\xAA';
    frame[2] = 51;
    frame[15] = '\x0A';
    return frame;
}

QList<FrameRow> someRows()
{
    const qint64 t = QDateTime(QDate(2024, 5, 1), QTime(14, 3, 7, 123)).toMSecsSinceEpoch();
    return {
        {t, QStringLiteral("SIM1"), FrameDirection::Out, kRequest, FrameOutcome::Sent, 0},
        {t + 130, QStringLiteral("SIM1"), FrameDirection::In, fullFrame(), FrameOutcome::Refused, 3},
        {t + 131, QStringLiteral("a \"b\", c"), FrameDirection::In, {}, FrameOutcome::TimedOut, 0},
        {t + 140, QStringLiteral("SIM1"), FrameDirection::In, fullFrame(), FrameOutcome::SkippedLate, 0},
        {t + 150, QStringLiteral("SIM1"), FrameDirection::In, fullFrame(), FrameOutcome::Accepted, 0},
    };
}

QString fileText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void appendRun(const QString& path, const QList<FrameRow>& rows)
{
    CsvLogFile log;
    QString error;
    QVERIFY2(log.open(path, &error), qPrintable(error));
    for (const FrameRow& row : rows)
        QVERIFY2(log.append(row, &error), qPrintable(error));
}

}  // namespace

class FrameLogCsvTest : public QObject {
    Q_OBJECT
private slots:
    void fieldIsQuotedOnlyWhenItMustBe_data();
    void fieldIsQuotedOnlyWhenItMustBe();
    void timeIsIsoWithMillisecondsAndOffset();
    void recordsReadBackUnderTheHeader();
    void newFileGetsTheHeaderThenRowsAppendWithoutIt();
    void emptyFileGetsTheHeader();
    void whatTheFileHeldStaysAsItWas();
    void fileThatCannotBeOpenedIsRefusedWithTheReason();
    void exportReplacesTheFileWithHeaderAndRows();
};

void FrameLogCsvTest::fieldIsQuotedOnlyWhenItMustBe_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("field");
    QTest::newRow("plain") << "SIM1" << "SIM1";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("path") << "/dev/ttyUSB0" << "/dev/ttyUSB0";
    QTest::newRow("comma") << "a,b" << "\"a,b\"";
    QTest::newRow("quote") << "say \"hi\"" << "\"say \"\"hi\"\"\"";
    QTest::newRow("CR LF") << "AA\r\nBB" << "\"AA\r\nBB\"";
    QTest::newRow("LF") << "AA\nBB" << "\"AA\nBB\"";
    QTest::newRow("trailing blanks") << "AA  " << "\"AA  \"";
    QTest::newRow("leading blank") << " AA" << "\" AA\"";
    QTest::newRow("inner blank") << "A A" << "A A";
}

void FrameLogCsvTest::fieldIsQuotedOnlyWhenItMustBe()
{
    QFETCH(QString, text);
    QFETCH(QString, field);
    QCOMPARE(csvField(text), field);
    // Whatever the quoting, a reader gets the text back.
    QCOMPARE(readCsv(field + QStringLiteral(",x\r\n")), (QList<QStringList>{{text, QStringLiteral("x")}}));
}

void FrameLogCsvTest::timeIsIsoWithMillisecondsAndOffset()
{
    const QDateTime local(QDate(2024, 5, 1), QTime(14, 3, 7, 45));
    const QString text = csvTime(local.toMSecsSinceEpoch());
    QVERIFY2(text.startsWith(QStringLiteral("2024-05-01T14:03:07.045")), qPrintable(text));
    QVERIFY2(QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}[+-]\\d\\d:\\d\\d$"))
                 .match(text)
                 .hasMatch(),
             qPrintable(text));
    QCOMPARE(QDateTime::fromString(text, Qt::ISODateWithMs).toMSecsSinceEpoch(), local.toMSecsSinceEpoch());
}

void FrameLogCsvTest::recordsReadBackUnderTheHeader()
{
    const QList<FrameRow> rows = someRows();
    QString text = kHeader + QStringLiteral("\r\n");
    for (const FrameRow& row : rows)
        text += csvRecord(row);
    const QList<QStringList> records = readCsv(text);
    QCOMPARE(records.size(), 1 + rows.size());
    QCOMPARE(records[0], (QStringList{"time", "line", "direction", "outcome", "status", "frame"}));
    const QStringList outcomes{"sent", "refused", "timed out", "skipped as late", "accepted"};
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QStringList& record = records[i + 1];
        QCOMPARE(record.size(), 6);
        QCOMPARE(QDateTime::fromString(record[0], Qt::ISODateWithMs).toMSecsSinceEpoch(), rows[i].msecsSinceEpoch);
        QCOMPARE(record[1], rows[i].line);
        QCOMPARE(record[2], QString::fromLatin1(i == 0 ? "out" : "in"));
        QCOMPARE(record[3], outcomes[i]);
        QCOMPARE(record[4], QString::fromLatin1(i == 1 ? "3" : ""));
    }
    // The frame as the window's labels show it.
    QCOMPARE(records[1][5], QStringLiteral("AA  AA  03  05  11  00  16  "));
    QCOMPARE(records[2][5].count(QStringLiteral("\r\n")), 3);
    QVERIFY(records[2][5].startsWith(QStringLiteral("AA  AA  33  00  00  00  00  00  00  00  00  00  00  00  00  0A  \r\n")));
    QCOMPARE(records[3][5], QString());
}

void FrameLogCsvTest::newFileGetsTheHeaderThenRowsAppendWithoutIt()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("frames.csv"));
    const QList<FrameRow> rows = someRows();
    appendRun(path, rows.mid(0, 2));
    const QString first = fileText(path);
    QVERIFY(first.startsWith(kHeader + QStringLiteral("\r\n")));
    appendRun(path, rows.mid(2));
    const QString both = fileText(path);
    QVERIFY(both.startsWith(first));
    const QList<QStringList> records = readCsv(both);
    QCOMPARE(records.size(), 1 + rows.size());
    QCOMPARE(std::count(records.begin(), records.end(), records[0]), 1);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(records[i + 1][1], rows[i].line);
}

void FrameLogCsvTest::emptyFileGetsTheHeader()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("empty.csv"));
    QFile empty(path);
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    appendRun(path, someRows().mid(0, 1));
    QCOMPARE(readCsv(fileText(path)).size(), 2);
    QVERIFY(fileText(path).startsWith(kHeader + QStringLiteral("\r\n")));
}

void FrameLogCsvTest::whatTheFileHeldStaysAsItWas()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("held.csv"));
    const QByteArray held = QByteArray(kCsvHeader) + "\r\n2024-01-01T00:00:00.000+00:00,COM1,out,sent,,\"AA  \"\r\n";
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(held);
    file.close();
    appendRun(path, someRows());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray now = file.readAll();
    QVERIFY(now.startsWith(held));
    QCOMPARE(readCsv(QString::fromUtf8(now)).size(), 2 + someRows().size());
}

void FrameLogCsvTest::fileThatCannotBeOpenedIsRefusedWithTheReason()
{
    QTemporaryDir folder;
    CsvLogFile log;
    QString error;
    QVERIFY(!log.open(folder.filePath(QStringLiteral("missing/frames.csv")), &error));
    QVERIFY(!error.isEmpty());
    error.clear();
    QVERIFY(!log.open(folder.path(), &error));  // a folder
    QVERIFY(!error.isEmpty());
}

void FrameLogCsvTest::exportReplacesTheFileWithHeaderAndRows()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("export.csv"));
    const QList<FrameRow> rows = someRows();
    QString error;
    QVERIFY(writeCsv(path, rows, &error));
    QVERIFY(writeCsv(path, rows.mid(0, 2), &error));  // replaced, not appended to
    const QList<QStringList> records = readCsv(fileText(path));
    QCOMPARE(records.size(), 3);
    QCOMPARE(records[0].join(QLatin1Char(',')), kHeader);
    QVERIFY(!writeCsv(folder.filePath(QStringLiteral("missing/export.csv")), rows, &error));
    QVERIFY(!error.isEmpty());
}

QTEST_GUILESS_MAIN(FrameLogCsvTest)
#include "frame_log_csv_test.moc"
