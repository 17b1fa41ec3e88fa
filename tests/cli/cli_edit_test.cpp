// velmor-cli edit through the real executables: a saved configuration file
// changed as the channel grid's rules change a record, refusals that leave
// the file byte for byte as it was, and an edited file written to a simulated
// module that then holds the edited values.

#include "cli_runner.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/image_layout.h"
#include "edit/channel_rules.h"
#include "edit/frequency_dialog_rules.h"
#include "edit/grid_cells.h"
#include "model/fixed_text.h"
#include "model/gain_steps.h"
#include "model/models.h"
#include "model/number_text.h"
#include "sim/sim_values.h"
#include "support/record_checks.h"
#include "support/sim_process.h"

#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <span>

#include <sys/stat.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr quint32 kSeed = 1;
constexpr RowSpan kAllSixteen{1, 16};

QStringList words(const char* text) { return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

CliResult runEn(const QStringList& arguments) { return runCli(words("--lang en") + arguments); }

ModuleRecord recordIn(const QByteArray& bytes)
{
    ModuleRecord record = defaultModule();
    applyImage(bytes, record);
    return record;
}

QByteArray storedBytes(const ModuleRecord& record) { return configImage(record).first(kStoredBytes); }

// A file as the simulator's module at address 1 would be saved, written by the config layer.
QString writeModuleFile(const QTemporaryDir& dir, const QString& name, const ModuleRecord& record)
{
    const QString path = dir.filePath(name);
    return saveConfigFile(path, record) ? path : QString();
}

// What the command is meant to do with "cutoff=F" over `rows`: the frequency
// dialog opened and typed on F, the candidate equal to F (else the lower one)
// clicked, OK.
EditResult dialogCutoff(ModuleRecord& module, double frequency, RowSpan rows)
{
    const QString typed = formatNumber(frequency, kCutoffPicture);
    FrequencyDialogState dialog = startFrequencyDialog(module, typed);
    frequencyTextChanged(dialog, module, typed, Language::English);
    frequencyOptionClicked(dialog, dialog.captions[0] == typed ? 0 : 1);
    return acceptFrequencyDialog(dialog, module, rows);
}

// The cells a result rewrote, as the command's JSON lists them.
QJsonArray cellsJson(const EditResult& result, const ModuleRecord& module)
{
    const QStringList headings = channelGridCells(module, Language::English, 0).headings;
    QJsonArray cells;
    for (const CellUpdate& cell : result.cells)
        cells.append(QJsonObject{{QStringLiteral("channel"), cell.row},
                                 {QStringLiteral("column"), cell.column},
                                 {QStringLiteral("heading"), headings.value(cell.column)},
                                 {QStringLiteral("text"), cell.text}});
    return cells;
}

// A simulated line with one module at address 1 and a folder for files.
class Line {
public:
    bool start(const QString& module)
    {
        if (sim_.start(words("--fast --seed 1 --module") << module))
            return true;
        qWarning("%s", qPrintable(sim_.error()));
        return false;
    }
    QString port() const { return sim_.linkPath(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

    // read --save of the module at address 1.
    bool save(const QString& path) const
    {
        return runEn(words("read --address 1 --port") << port() << QStringLiteral("--save") << path).exitCode == 0;
    }

private:
    QTemporaryDir dir_;
    SimProcess sim_;
};

}  // namespace

class CliEditTest : public QObject {
    Q_OBJECT
private slots:
    void editSetsSixteenChannelsAsTheGridRulesDo();
    void chineseItemTextAndCodeBothChoose();
    void cutoffOnOneTmC16ChannelWidensToItsGroup();
    void referenceColumnsOfTmB8AreEdited();
    void adjustFieldsStoreWhereTheyAreNamed();
    void refusedFieldsLeaveTheFileAsItWas_data();
    void refusedFieldsLeaveTheFileAsItWas();
    void refusalsComeInChinese();
    void channelsPastTheFilesCountAreRefused();
    void fileThatIsNotARecordIsRefusedUnlessForced();
    void filesThatCannotBeReadExitFour();
    void helpInBothLanguages();
    void editedFileWrittenToAModuleIsWhatItHolds();
};

void CliEditTest::editSetsSixteenChannelsAsTheGridRulesDo()
{
    Line line;
    QVERIFY(line.start(QStringLiteral("1:TM-C16")));
    const QString path = line.file(QStringLiteral("c16.cfg"));
    QVERIFY(line.save(path));
    const QByteArray before = fileBytes(path);
    QCOMPARE(before.size(), kStoredBytes);

    ModuleRecord expected = recordIn(before);
    QCOMPARE(expected.modelCode, quint8(kTmC16));
    const std::span<const int> steps = gainSteps(expected.gainType);
    QVERIFY(steps.size() > 2);
    const EditResult excitation = chooseListItem(expected, kExcitationColumn, 1, kAllSixteen, Language::English);
    const EditResult gain = chooseListItem(expected, kGainColumn, 2, kAllSixteen, Language::English);
    const EditResult cutoff = dialogCutoff(expected, 1234, kAllSixteen);
    QVERIFY(excitation.stored && gain.stored && cutoff.stored);
    QCOMPARE(cutoff.cells.size(), 16);
    QCOMPARE(cutoff.cells[0].text, QStringLiteral("1219.51220"));  // 50000 / 41: the lower neighbour

    const CliResult result = runEn(QStringList{QStringLiteral("--json"), QStringLiteral("edit"), path,
                                               QStringLiteral("excitation=4mA"),
                                               QStringLiteral("gain=") + QString::number(steps[2]),
                                               QStringLiteral("cutoff=1234")});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.err.isEmpty(), result.err.constData());
    const QByteArray after = fileBytes(path);
    QVERIFY(after != before);
    QCOMPARE(after, storedBytes(expected));

    // The output lists, per assignment, the cells the rules rewrote.
    const QJsonObject json = result.json();
    QCOMPARE(json[QStringLiteral("file")].toString(), path);
    QCOMPARE(json[QStringLiteral("saved")].toBool(), true);
    const QJsonArray changes = json[QStringLiteral("changes")].toArray();
    QCOMPARE(changes.size(), 3);
    QCOMPARE(changes[0][QStringLiteral("field")].toString(), QStringLiteral("excitation"));
    QCOMPARE(changes[2][QStringLiteral("value")].toString(), QStringLiteral("1234"));
    // Each result on the record as it stood after that assignment.
    ModuleRecord step = recordIn(before);
    const QList<QPair<int, int>> choices = {{kExcitationColumn, 1}, {kGainColumn, 2}};
    for (int i = 0; i < 2; ++i) {
        const EditResult direct = chooseListItem(step, choices[i].first, choices[i].second, kAllSixteen, Language::English);
        QCOMPARE(changes[i][QStringLiteral("cells")].toArray(), cellsJson(direct, step));
    }
    QCOMPARE(changes[2][QStringLiteral("cells")].toArray(), cellsJson(dialogCutoff(step, 1234, kAllSixteen), step));

    // The text output shows the same cells, a line per channel.
    {
        QFile original(path);
        QVERIFY(original.open(QIODevice::WriteOnly) && original.write(before) == before.size());
    }
    const CliResult text = runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("cutoff=1234")});
    QCOMPARE(text.exitCode, 0);
    const QList<QByteArray> lines = text.out.trimmed().split('\n');
    QCOMPARE(lines.size(), 2 + 16);
    QCOMPARE(lines[0], QByteArray("cutoff=1234"));
    QCOMPARE(lines[1], QByteArray("CH\tCut off"));
    QCOMPARE(lines[16 + 1], QByteArray("CH16\t1219.51220"));
}

void CliEditTest::chineseItemTextAndCodeBothChoose()
{
    QTemporaryDir dir;
    const ModuleRecord module = sim::simulatedModule(1, kTmC16, kSeed);
    const QString path = writeModuleFile(dir, QStringLiteral("c16.cfg"), module);
    QVERIFY(!path.isEmpty());
    QCOMPARE(module.excitationType, quint8(1));

    // "4mA恒流源" is the Chinese item of code 1; the rules then couple AC.
    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("excitation=4mA恒流源")}).exitCode, 0);
    ModuleRecord expected = module;
    chooseListItem(expected, kExcitationColumn, 1, kAllSixteen, Language::English);
    QCOMPARE(fileBytes(path), storedBytes(expected));
    const ModuleRecord current = recordIn(fileBytes(path));
    for (int c = 0; c < 16; ++c)
        QVERIFY(current.channels[static_cast<size_t>(c)].excitation == 1 && current.channels[static_cast<size_t>(c)].coupling == 1);

    // Code 0 is "断开" / "Open", and "dc coupling" matches without regard to case.
    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("excitation=0"),
                               QStringLiteral("coupling=dc coupling")})
                 .exitCode,
             0);
    chooseListItem(expected, kExcitationColumn, 0, kAllSixteen, Language::English);
    chooseListItem(expected, kCouplingColumn, 0, kAllSixteen, Language::English);
    QCOMPARE(fileBytes(path), storedBytes(expected));
    const ModuleRecord saved = recordIn(fileBytes(path));
    for (int c = 0; c < 16; ++c)
        QVERIFY(saved.channels[static_cast<size_t>(c)].excitation == 0 && saved.channels[static_cast<size_t>(c)].coupling == 0);

    // A Chinese item under --lang en, and the shown text in Chinese under --lang zh.
    const CliResult zh = runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("edit"),
                                            QStringLiteral("--channels"), QStringLiteral("3"), path,
                                            QStringLiteral("coupling=AC Coupling")});
    QCOMPARE(zh.exitCode, 0);
    QCOMPARE(QString::fromUtf8(zh.out), QStringLiteral("coupling=AC Coupling\nCH\tAC耦合\nCH3\tAC耦合\n"));
    QCOMPARE(recordIn(fileBytes(path)).channels[2].coupling, qint16(1));
    QCOMPARE(recordIn(fileBytes(path)).channels[3].coupling, qint16(0));
}

void CliEditTest::cutoffOnOneTmC16ChannelWidensToItsGroup()
{
    QTemporaryDir dir;
    ModuleRecord module = sim::simulatedModule(1, kTmC16, kSeed);
    for (ChannelRecord& channel : module.channels)
        channel.cutoff = 40;  // 2500 Hz everywhere, so that a change shows
    const QString path = writeModuleFile(dir, QStringLiteral("c16.cfg"), module);
    QVERIFY(!path.isEmpty());

    const CliResult result = runEn(QStringList{QStringLiteral("--json"), QStringLiteral("edit"), QStringLiteral("--channels"),
                                               QStringLiteral("2"), path, QStringLiteral("cutoff=1000")});
    QCOMPARE(result.exitCode, 0);
    const ModuleRecord saved = recordIn(fileBytes(path));
    for (int c = 0; c < 16; ++c)
        QCOMPARE(saved.channels[static_cast<size_t>(c)].cutoff, c < 3 ? 100 : 40);
    const QJsonArray cells = result.json()[QStringLiteral("changes")][0][QStringLiteral("cells")].toArray();
    QCOMPARE(cells.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(cells[i][QStringLiteral("channel")].toInt(), i + 1);
        QCOMPARE(cells[i][QStringLiteral("text")].toString(), QStringLiteral("1000.00000"));
    }
}

void CliEditTest::referenceColumnsOfTmB8AreEdited()
{
    Line line;
    QVERIFY(line.start(QStringLiteral("1:TM-B8")));
    const QString path = line.file(QStringLiteral("b8.cfg"));
    QVERIFY(line.save(path));
    const QByteArray before = fileBytes(path);
    ModuleRecord expected = recordIn(before);
    QCOMPARE(expected.modelCode, quint8(kTmB8));
    const RowSpan all{1, 8};
    const RowSpan upper{5, 8};
    chooseListItem(expected, kTypeColumn, 0, all, Language::English);
    answerPrompt(expected, kCoefColumn, QStringLiteral("2.5"), all, Language::English);
    chooseListItem(expected, kBridgeColumn, 2, all, Language::English);
    answerPrompt(expected, kBalanceColumn, QStringLiteral("5000"), all, Language::English);
    chooseListItem(expected, kTypeColumn, 1, upper, Language::English);
    answerPrompt(expected, kRangeColumn, QStringLiteral("1500"), upper, Language::English);

    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("type=应变"), QStringLiteral("coef=2.5"),
                               QStringLiteral("bridge=1/4"), QStringLiteral("balance=5000")})
                 .exitCode,
             0);
    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("5-8"), path,
                               QStringLiteral("type=1"), QStringLiteral("range=1500")})
                 .exitCode,
             0);
    const QByteArray after = fileBytes(path);
    QCOMPARE(after, storedBytes(expected));
    const ModuleRecord saved = recordIn(after);
    QVERIFY(saved.channels[0].isStrain && !saved.channels[7].isStrain);
    QCOMPARE(trimmedText(saved.channels[7].unitText), QStringLiteral("V"));
    QCOMPARE(saved.channels[0].gaugeCoef, 2.5f);
    QCOMPARE(saved.channels[0].balanceValue, balanceCap(saved));
}

void CliEditTest::adjustFieldsStoreWhereTheyAreNamed()
{
    QTemporaryDir dir;
    const ModuleRecord module = sim::simulatedModule(1, kTmB8, kSeed);
    QVERIFY(module.zeroType != 0 && module.adjustType != 0);
    const QString path = writeModuleFile(dir, QStringLiteral("b8.cfg"), module);
    QVERIFY(!path.isEmpty());
    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("2,4"), path,
                               QStringLiteral("zero-adjust=120"), QStringLiteral("gain-adjust=700")})
                 .exitCode,
             0);
    ModuleRecord expected = module;
    for (int row : {2, 4}) {
        for (const auto& [column, text] : {std::pair{kZeroAdjustColumn, "120"}, std::pair{kGainAdjustColumn, "700"}}) {
            const QString shown = channelCellText(expected, row - 1, column, 0, Language::English);
            if (shown != QLatin1String(text))
                QVERIFY(typeIntoCell(expected, row, column, shown, QString::fromLatin1(text), Language::English).stored);
        }
    }
    const QByteArray after = fileBytes(path);
    QCOMPARE(after, storedBytes(expected));
    const ModuleRecord saved = recordIn(after);
    QCOMPARE(saved.channels[1].zeroAdjust, 120);
    QCOMPARE(saved.channels[3].gainAdjust, 700);
    QCOMPARE(saved.channels[2].zeroAdjust, module.channels[2].zeroAdjust);

    // Past what the cell takes: refused, and the file stays.
    const CliResult refused = runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("zero-adjust=256")});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("zero-adjust=256: zero-adjust takes a whole number from 0 to 255. Nothing was written."));
    QCOMPARE(fileBytes(path), after);
}

void CliEditTest::refusedFieldsLeaveTheFileAsItWas_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<QStringList>("assignments");
    QTest::addColumn<QString>("message");
    QTest::newRow("gain without gainType") << -1 << QStringList{QStringLiteral("gain=1")}
                                           << "gain=1: The TM-C16 has no gain setting (its capability code is 0). Nothing was written.";
    QTest::newRow("coef on TM-B16") << int(kTmB16) << QStringList{QStringLiteral("coef=2")}
                                    << "coef=2: The reference values of a TM-B16 are shown, not edited. Nothing was written.";
    QTest::newRow("type on TM-C16") << int(kTmC16) << QStringList{QStringLiteral("type=Strain")}
                                    << "type=Strain: The channel grid of a TM-C16 has no type column. Nothing was written.";
    QTest::newRow("balance on TM-C16") << int(kTmC16) << QStringList{QStringLiteral("balance=10")}
                                       << "balance=10: The TM-C16 has no balance setting (its capability code is 0). Nothing was written.";
    QTest::newRow("not a number") << int(kTmC16) << QStringList{QStringLiteral("cutoff=12abc")}
                                  << "cutoff=12abc: Input data error. Nothing was written.";
    QTest::newRow("coef not a number") << int(kTmB8) << QStringList{QStringLiteral("coef=two")}
                                       << "coef=two: Input data error. Nothing was written.";
    QTest::newRow("empty number") << int(kTmB8) << QStringList{QStringLiteral("balance=")}
                                  << "balance=: Input data error. Nothing was written.";
    QTest::newRow("negative") << int(kTmB8) << QStringList{QStringLiteral("sensitivity=-1")}
                              << "sensitivity=-1: sensitivity takes a number of 0 or more. Nothing was written.";
    QTest::newRow("cut-off too high") << int(kTmC16) << QStringList{QStringLiteral("cutoff=20000")}
                                      << "cutoff=20000: Overflow: the cut-off of a TM-C16 takes 1.52593 to 10000 Hz. Nothing was written.";
    QTest::newRow("unknown item") << int(kTmC16) << QStringList{QStringLiteral("coupling=AC")}
                                  << "coupling=AC: AC is not an item of coupling. The items are: DC Coupling, AC Coupling. Nothing was written.";
    QTest::newRow("gain is never a position") << int(kTmC16) << QStringList{QStringLiteral("gain=3")}
                                              << "gain=3: 3 is not an item of gain. The items are: 1, 2, 5, 10. Nothing was written.";
    QTest::newRow("unit") << int(kTmB8) << QStringList{QStringLiteral("unit=V")}
                          << "unit=V: The unit follows the type and is not set on its own. Nothing was written.";
    QTest::newRow("unknown field") << int(kTmC16) << QStringList{QStringLiteral("auto=1")}
                                   << "auto=1: There is no field auto. The fields are: excitation, balance, coupling, gain, "
                                      "cutoff, division, zero-adjust, gain-adjust, integral, bridge, coef, sensitivity, range, "
                                      "type. Nothing was written.";
    // A refusal after assignments that were taken: none of them is written.
    QTest::newRow("refused after taken ones")
        << int(kTmC16) << QStringList{QStringLiteral("excitation=4mA"), QStringLiteral("cutoff=1000"), QStringLiteral("coef=2")}
        << "coef=2: The channel grid of a TM-C16 has no coef column. Nothing was written.";
    QTest::newRow("no equals sign") << int(kTmC16) << QStringList{QStringLiteral("gain")} << "gain is not FIELD=VALUE.";
}

void CliEditTest::refusedFieldsLeaveTheFileAsItWas()
{
    QFETCH(int, modelCode);
    QFETCH(QStringList, assignments);
    QFETCH(QString, message);
    ModuleRecord module = sim::simulatedModule(1, modelCode < 0 ? kTmC16 : modelCode, kSeed);
    if (modelCode < 0)
        module.gainType = 0;
    QTemporaryDir dir;
    const QString path = writeModuleFile(dir, QStringLiteral("module.cfg"), module);
    QVERIFY(!path.isEmpty());
    const QByteArray before = fileBytes(path);

    const CliResult result = runEn(QStringList{QStringLiteral("edit"), path} + assignments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errText(), message);
    QVERIFY(result.out.isEmpty());
    QCOMPARE(fileBytes(path), before);
}

void CliEditTest::refusalsComeInChinese()
{
    QTemporaryDir dir;
    const QString path = writeModuleFile(dir, QStringLiteral("b16.cfg"), sim::simulatedModule(1, kTmB16, kSeed));
    QVERIFY(!path.isEmpty());
    const QByteArray before = fileBytes(path);
    const QList<QPair<QString, QString>> refusals = {
        {QStringLiteral("coef=2"), QStringLiteral("coef=2：TM-B16 的参考值只显示，不能修改。什么也没有写入。")},
        {QStringLiteral("balance=x"), QStringLiteral("balance=x：输入数据错误。什么也没有写入。")},
    };
    for (const auto& [assignment, message] : refusals) {
        const CliResult zh = runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("edit"), path, assignment});
        QCOMPARE(zh.exitCode, 2);
        QCOMPARE(zh.errText(), message);
    }
    const CliResult usage = runCli(words("--lang zh edit") << path);
    QCOMPARE(usage.exitCode, 2);
    QCOMPARE(usage.errText(), QStringLiteral("edit 取一个配置文件和至少一个 FIELD=VALUE。"));
    QCOMPARE(fileBytes(path), before);
}

void CliEditTest::channelsPastTheFilesCountAreRefused()
{
    QTemporaryDir dir;
    const QString path = writeModuleFile(dir, QStringLiteral("b8.cfg"), sim::simulatedModule(1, kTmB8, kSeed));
    QVERIFY(!path.isEmpty());
    const QByteArray before = fileBytes(path);
    const CliResult past = runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("1,7-9"), path,
                                             QStringLiteral("coupling=1")});
    QCOMPARE(past.exitCode, 2);
    QCOMPARE(past.errText(), QStringLiteral("--channels names channel 9, but the file's TM-B8 has 8 channels; nothing was written."));
    const CliResult bad = runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("0-3"), path,
                                            QStringLiteral("coupling=1")});
    QCOMPARE(bad.exitCode, 2);
    QCOMPARE(bad.errText(), QStringLiteral("--channels takes channel numbers 1 to 16, e.g. 1,2,5-8."));
    QCOMPARE(fileBytes(path), before);
    // Within the count, only the runs named change.
    QCOMPARE(runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("1,7-8"), path,
                               QStringLiteral("integral=two integral")})
                 .exitCode,
             0);
    const ModuleRecord saved = recordIn(fileBytes(path));
    const ModuleRecord old = recordIn(before);
    for (int c = 0; c < 8; ++c) {
        const bool chosen = c == 0 || c >= 6;
        QCOMPARE(saved.channels[static_cast<size_t>(c)].integral, chosen ? qint16(2) : old.channels[static_cast<size_t>(c)].integral);
    }
}

void CliEditTest::fileThatIsNotARecordIsRefusedUnlessForced()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("short.cfg"));
    const QByteArray shortImage = storedBytes(sim::simulatedModule(1, kTmB8, kSeed)).first(100);
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(shortImage) == shortImage.size());
    }
    const CliResult refused = runEn(QStringList{QStringLiteral("edit"), path, QStringLiteral("coupling=1")});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), path + QStringLiteral(" is not a module's configuration file: it has 100 bytes, not 8679. "
                                                      "Nothing was written; give --force to edit it anyway."));
    QCOMPARE(fileBytes(path), shortImage);

    const CliResult forced = runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--force"), path, QStringLiteral("coupling=1")});
    QCOMPARE(forced.exitCode, 0);
    const QByteArray after = fileBytes(path);
    QCOMPARE(after.size(), kStoredBytes);
    QCOMPARE(after.first(moduleImage::kChannels), shortImage.first(moduleImage::kChannels));
    QCOMPARE(recordIn(after).channels[0].coupling, qint16(1));
}

void CliEditTest::filesThatCannotBeReadExitFour()
{
    QTemporaryDir dir;
    const QString fifo = dir.filePath(QStringLiteral("setup.fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const CliResult onFifo = runEn(QStringList{QStringLiteral("edit"), fifo, QStringLiteral("gain=1")});
    QCOMPARE(onFifo.exitCode, 4);
    QCOMPARE(onFifo.errText(), QStringLiteral("Open configure file fail!\n%1 is not a regular file.").arg(fifo));
    const CliResult onDevice = runEn(words("edit /dev/null gain=1"));
    QCOMPARE(onDevice.exitCode, 4);
    const CliResult missing = runEn(QStringList{QStringLiteral("edit"), dir.filePath(QStringLiteral("none.cfg")), QStringLiteral("gain=1")});
    QCOMPARE(missing.exitCode, 4);
    QCOMPARE(missing.errText(), QStringLiteral("Open configure file fail!\n%1: No such file or directory").arg(dir.filePath(QStringLiteral("none.cfg"))));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("none.cfg"))));
}

void CliEditTest::helpInBothLanguages()
{
    const CliResult general = runEn(words("--help"));
    QVERIFY(general.out.contains("\n  edit "));
    const CliResult en = runEn(words("edit --help"));
    QCOMPARE(en.exitCode, 0);
    QVERIFY(en.out.startsWith("Usage: velmor-cli edit [options] FILE FIELD=VALUE..."));
    for (const char* word : {"--channels", "--force", "excitation", "zero-adjust", "sensitivity", "type", "frequency"})
        QVERIFY2(en.out.contains(word), word);
    QVERIFY(!QString::fromUtf8(en.out).contains(QRegularExpression(QStringLiteral("\\p{Han}"))));

    const CliResult zh = runCli(words("--lang zh edit --help"));
    QCOMPARE(zh.exitCode, 0);
    QVERIFY(zh.out.startsWith("用法：velmor-cli edit [选项] FILE FIELD=VALUE..."));
    QVERIFY(zh.out.contains("选项："));
    int optionRows = 0;
    for (const QByteArray& row : zh.out.split('\n'))
        if (row.startsWith("  -")) {
            ++optionRows;
            QVERIFY2(QString::fromUtf8(row).contains(QRegularExpression(QStringLiteral("\\p{Han}"))), row.constData());
        }
    QCOMPARE(optionRows, 3);  // help, channels, force
    // Field names are words of the command line, whole in either language.
    for (const char* field : {"excitation", "balance", "coupling", "gain", "cutoff", "division", "zero-adjust",
                              "gain-adjust", "integral", "bridge", "coef", "sensitivity", "range", "type"}) {
        QVERIFY2(zh.out.contains(field), field);
        QVERIFY2(en.out.contains(field), field);
    }
}

void CliEditTest::editedFileWrittenToAModuleIsWhatItHolds()
{
    Line line;
    QVERIFY(line.start(QStringLiteral("1:TM-C16")));
    const QString path = line.file(QStringLiteral("lab.cfg"));
    QVERIFY(line.save(path));
    const ModuleRecord before = recordIn(fileBytes(path));

    const CliResult edit = runEn(QStringList{QStringLiteral("edit"), QStringLiteral("--channels"), QStringLiteral("1-4,9"), path,
                                             QStringLiteral("excitation=Open"), QStringLiteral("coupling=AC Coupling"),
                                             QStringLiteral("gain=10"), QStringLiteral("division=32"),
                                             QStringLiteral("cutoff=2000")});
    QCOMPARE(edit.exitCode, 0);
    const ModuleRecord edited = recordIn(fileBytes(path));
    QCOMPARE(edited.channels[0].gain, qint16(3));
    QCOMPARE(edited.channels[8].holdExponent, quint16(5));
    QCOMPARE(edited.channels[10].cutoff, 50);  // group 9-11 follows channel 9
    QVERIFY(edited.channels[4].gain == before.channels[4].gain);

    QCOMPARE(runEn(words("write --address 1 --port") << line.port() << QStringLiteral("--config") << path).exitCode, 0);
    const QString back = line.file(QStringLiteral("back.cfg"));
    QVERIFY(line.save(back));
    const ModuleRecord held = recordIn(fileBytes(back));
    for (int c = 0; c < 16; ++c) {
        const ChannelRecord& expected = edited.channels[static_cast<size_t>(c)];
        const ChannelRecord& actual = held.channels[static_cast<size_t>(c)];
        VELMOR_VERIFY_SAME(channelParameterDifference(actual, expected));
        VELMOR_VERIFY_SAME(adjustDifference(actual, expected));
    }
    QCOMPARE(held.channels[1].excitation, qint16(0));
    QCOMPARE(held.channels[2].cutoff, 50);
}

QTEST_GUILESS_MAIN(CliEditTest)
#include "cli_edit_test.moc"
