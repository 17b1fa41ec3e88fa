#include "record_text.h"

#include "model/capabilities.h"
#include "model/models.h"
#include "model/parameters.h"
#include "model/reference.h"
#include "shown_text.h"
#include "texts/grid.h"
#include "texts/window.h"

#include <QList>
#include <QStringList>

#include <algorithm>

namespace velmor::cli {
namespace {

using Rows = QList<QStringList>;

// Columns padded to their widest cell, two blanks apart.
QString tableText(Rows rows)
{
    // Names and units come from a module or a file: no control characters.
    for (QStringList& row : rows)
        for (QString& cell : row)
            cell = shownText(cell);
    QList<qsizetype> widths;
    for (const QStringList& row : rows)
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (widths.size() <= i)
                widths.append(0);
            widths[i] = std::max(widths[i], row[i].size());
        }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i)
            line += row[i].leftJustified(widths[i] + 2);
        text += line.trimmed() + QLatin1Char('\n');
    }
    return text;
}

QStringList numberedHeadings(const Text& heading, int count, Language language)
{
    QStringList out;
    for (int i = 1; i <= count; ++i)
        out << pick(heading, language) + QString::number(i);
    return out;
}

QString channelName(int c, Language language)
{
    return pick(texts::grid::kChannelPrefix, language) + QString::number(c + 1);
}

int shownChannels(const ModuleRecord& record)
{
    return std::clamp<int>(record.channelCount, 0, kWiredChannels);
}

QString moduleSection(const ModuleRecord& record, const QString& portName, Language language)
{
    const auto capability = [&](Capability c) { return capabilityText(record, c, language); };
    const Rows rows = {
        {pick(texts::grid::kPortLabel, language), portName},
        {pick(texts::grid::kModuleLabel, language), QString::number(record.busAddress)},
        {pick(texts::grid::kModelLabel, language), trimmedText(record.modelName) + QStringLiteral(" (") + capability(Capability::Model) + QLatin1Char(')')},
        {pick(texts::grid::kNumberLabel, language), QString::number(record.moduleNumber)},
        {pick(texts::grid::kVersionLabel, language), QString::number(record.version)},
        {pick(texts::grid::kBalanceLabel, language), capability(Capability::Balance)},
        {pick(texts::grid::kExcitationLabel, language), capability(Capability::Excitation)},
        {pick(texts::grid::kCouplingLabel, language), capability(Capability::AcCoupling)},
        {pick(texts::grid::kFilterLabel, language), capability(Capability::Filter)},
        {pick(texts::grid::kHoldLabel, language), capability(Capability::Hold)},
        {pick(texts::grid::kZeroAdjustLabel, language), capability(Capability::Zero)},
        {pick(texts::grid::kGainAdjustLabel, language), capability(Capability::Adjust)},
        {pick(texts::grid::kGainLabel, language), capability(Capability::Gain)},
        {pick(texts::grid::kIntegralLabel, language), capability(Capability::Integral)},
    };
    return pick(texts::window::kFrame3, language) + QLatin1Char('\n') + tableText(rows);
}

QString channelSection(const ModuleRecord& record, Language language)
{
    // The grid's columns 1..10 without the automatic-balance marks, which are
    // pictures rather than text.
    static constexpr Parameter kColumns[] = {
        Parameter::Excitation, Parameter::Balance, Parameter::Coupling, Parameter::Gain,     Parameter::Cutoff,
        Parameter::Hold,       Parameter::ZeroAdjust, Parameter::GainAdjust, Parameter::Integral,
    };
    static constexpr int kHeadingOf[] = {0, 1, 3, 4, 5, 6, 7, 8, 9};
    const bool reference = hasReferenceColumns(record.modelCode);

    QStringList heading{pick(texts::grid::kChannelPrefix, language)};
    for (int h : kHeadingOf)
        heading << pick(texts::grid::kChannelHeadings[h], language);
    if (reference)
        for (ReferenceColumn column : kReferenceColumns)
            heading << referenceHeader(column, language);
    Rows rows{heading};
    for (int c = 0; c < shownChannels(record); ++c) {
        QStringList row{channelName(c, language)};
        for (Parameter p : kColumns)
            row << parameterText(p, record, c, language);
        if (reference)
            for (ReferenceColumn column : kReferenceColumns)
                row << referenceCell(column, record.channels[static_cast<size_t>(c)], language);
        rows << row;
    }
    return channelFrameTitle(record.modelCode, language) + QLatin1Char('\n') + tableText(rows);
}

QString adjustSection(const ModuleRecord& record, Language language)
{
    Rows rows{QStringList{pick(texts::grid::kChannelPrefix, language)} + numberedHeadings(texts::grid::kZeroAdjustLabel, 4, language)
              + numberedHeadings(texts::grid::kGainAdjustLabel, 4, language)};
    for (int c = 0; c < shownChannels(record); ++c) {
        const ChannelRecord& channel = record.channels[static_cast<size_t>(c)];
        QStringList row{channelName(c, language)};
        for (int i = 0; i < 4; ++i)
            row << QString::number(channel.zeroAdjustTable[static_cast<size_t>(i)]);
        for (int i = 0; i < 4; ++i)
            row << QString::number(channel.gainAdjustTable[static_cast<size_t>(i)]);
        rows << row;
    }
    return tableText(rows);
}

QString coefficientSection(const ModuleRecord& record, Language language)
{
    // Model code 3 keeps eleven gain coefficients and no zero coefficients.
    const bool wide = hasWideCalibration(record.modelCode);
    const int gains = wide ? 11 : 4;
    const int zeros = wide ? 0 : 4;
    Rows rows{QStringList{pick(texts::grid::kChannelPrefix, language)} + numberedHeadings(texts::grid::kGainCoefHeading, gains, language)
              + numberedHeadings(texts::grid::kZeroCoefHeading, zeros, language)};
    for (int c = 0; c < shownChannels(record); ++c) {
        const ChannelRecord& channel = record.channels[static_cast<size_t>(c)];
        QStringList row{channelName(c, language)};
        for (int i = 0; i < gains; ++i)
            row << QString::number(channel.gainCoef[static_cast<size_t>(i)] / 100.0, 'f', 2);
        for (int i = 0; i < zeros; ++i)
            row << QString::number(channel.zeroCoef[static_cast<size_t>(i)] / 10.0, 'f', 1);
        rows << row;
    }
    return tableText(rows);
}

}  // namespace

QString recordText(const ModuleRecord& record, const QString& portName, Language language)
{
    return moduleSection(record, portName, language) + QLatin1Char('\n') + channelSection(record, language)
         + QLatin1Char('\n') + adjustSection(record, language) + QLatin1Char('\n')
         + coefficientSection(record, language);
}

}  // namespace velmor::cli
