#include "setup_differences.h"

#include "texts/history.h"

#include <algorithm>

namespace velmor {
namespace {

QString cellOf(const GridCells& cells, int row, int column)
{
    if (row < 0 || row >= cells.rows.size() || column >= cells.rows[row].size())
        return {};
    return cells.rows[row][column];
}

// A heading may break over two lines in the grid; a name reads on one.
QString oneLine(QString text) { return text.replace(QLatin1Char('\n'), QLatin1Char(' ')); }

void compareGrids(SetupPart part, const GridCells& from, const GridCells& to, QList<CellDifference>& out)
{
    for (int row = 0; row < to.rows.size(); ++row) {
        for (int column = 1; column < to.rows[row].size(); ++column) {
            const QString before = cellOf(from, row, column);
            const QString& after = to.rows[row][column];
            if (before == after)
                continue;
            const QString name = to.rows[row][kChannelNameColumn] + QLatin1Char(' ') + oneLine(to.headings.value(column));
            out.append({part, row + 1, column, name, before, after, to.greyColumns.contains(column)});
        }
    }
}

}  // namespace

QList<CellDifference> setupDifferences(const ModuleRecord& from, const ModuleRecord& to, qint32 balanceMask,
                                       Language language)
{
    QList<CellDifference> out;
    const QList<InfoCell> infoFrom = moduleInfoCells(from, QString(), language);
    const QList<InfoCell> infoTo = moduleInfoCells(to, QString(), language);
    for (int row = 0; row < infoTo.size(); ++row) {
        if (infoFrom[row].value != infoTo[row].value)
            out.append({SetupPart::Information, row, 0, infoTo[row].label, infoFrom[row].value, infoTo[row].value});
    }
    compareGrids(SetupPart::Channels, channelGridCells(from, language, balanceMask),
                 channelGridCells(to, language, balanceMask), out);
    compareGrids(SetupPart::Adjust, adjustGridCells(from, language), adjustGridCells(to, language), out);
    compareGrids(SetupPart::Calibration, calibrationGridCells(from, language), calibrationGridCells(to, language), out);
    return out;
}

QList<CellDifference> sentDifferences(const ModuleRecord& from, const ModuleRecord& to, qint32 balanceMask,
                                      Language language)
{
    QList<CellDifference> out = setupDifferences(from, to, balanceMask, language);
    out.removeIf([](const CellDifference& d) { return d.reference; });
    return out;
}

QString setupPartName(SetupPart part, Language language)
{
    using namespace texts::history;
    switch (part) {
    case SetupPart::Information: return pick(kPartInformation, language);
    case SetupPart::Channels: return pick(kPartChannels, language);
    case SetupPart::Adjust: return pick(kPartAdjust, language);
    case SetupPart::Calibration: return pick(kPartCalibration, language);
    }
    return QString();
}

QString writeGroupName(const WriteGroup& group, Language language)
{
    using namespace texts::history;
    switch (group.part) {
    case SetupPart::Information: return pick(kPartInformation, language);
    case SetupPart::Channels: return pick(kGroupChannels, language).arg(group.index + 1);
    case SetupPart::Adjust: return pick(kGroupAdjust, language).arg(group.index + 1);
    case SetupPart::Calibration: return pick(kGroupCalibration, language).arg(group.index + 1);
    }
    return QString();
}

QList<WriteGroup> groupsToSend(const QList<CellDifference>& differences)
{
    QList<WriteGroup> groups;
    for (const CellDifference& d : differences) {
        if (d.reference)
            continue;
        const int channel = d.row - 1;
        WriteGroup group{d.part, 0};
        if (d.part == SetupPart::Channels || d.part == SetupPart::Adjust)
            group.index = channel / 4;
        else if (d.part == SetupPart::Calibration)
            group.index = channel / 2;
        if (!groups.contains(group))
            groups.append(group);
    }
    return groups;
}

QString cellChangeText(const CellDifference& difference)
{
    return QStringLiteral("%1 %2 → %3").arg(difference.name, difference.before, difference.after);
}

}  // namespace velmor
