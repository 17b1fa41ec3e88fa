#include "record_checks.h"

#include "model/models.h"
#include "protocol/blocks.h"

namespace velmor::testing {
namespace {

QString shown(const QString& text) { return QLatin1Char('"') + text + QLatin1Char('"'); }

template <typename T>
QString shown(T value)
{
    return QString::number(static_cast<qlonglong>(value));
}

// Collects the first difference only; later ones add nothing to a failure.
class Differences {
public:
    template <typename T>
    void check(const char* field, const T& actual, const T& expected)
    {
        if (text_.isEmpty() && actual != expected)
            text_ = QStringLiteral("%1: %2 vs %3").arg(QLatin1String(field), shown(actual), shown(expected));
    }
    template <typename T>
    void checkEntries(const char* field, const T& actual, const T& expected, int entries)
    {
        for (size_t i = 0; i < static_cast<size_t>(entries) && text_.isEmpty(); ++i)
            if (actual[i] != expected[i])
                text_ = QStringLiteral("%1[%2]: %3 vs %4").arg(QLatin1String(field), shown(i), shown(actual[i]), shown(expected[i]));
    }
    QString text() const { return text_; }

private:
    QString text_;
};

QString inChannel(int c, const QString& difference)
{
    return difference.isEmpty() ? difference : QStringLiteral("channel %1 ").arg(c) + difference;
}

}  // namespace

QString channelParameterDifference(const ChannelRecord& actual, const ChannelRecord& expected)
{
    Differences d;
    d.check("excitation", actual.excitation, expected.excitation);
    d.check("balanceValue", actual.balanceValue, expected.balanceValue);
    d.check("coupling", actual.coupling, expected.coupling);
    d.check("integral", actual.integral, expected.integral);
    d.check("gain", actual.gain, expected.gain);
    d.check("cutoff", actual.cutoff, expected.cutoff);
    d.check("holdExponent", actual.holdExponent, expected.holdExponent);
    d.check("zeroAdjust", actual.zeroAdjust, expected.zeroAdjust);
    d.check("gainAdjust", actual.gainAdjust, expected.gainAdjust);
    d.check("channelFlags", actual.channelFlags, expected.channelFlags);
    return d.text();
}

QString adjustDifference(const ChannelRecord& actual, const ChannelRecord& expected)
{
    Differences d;
    d.checkEntries("zeroAdjustTable", actual.zeroAdjustTable, expected.zeroAdjustTable, kAdjustEntries);
    d.checkEntries("gainAdjustTable", actual.gainAdjustTable, expected.gainAdjustTable, kAdjustEntries);
    return d.text();
}

QString coefficientDifference(const ChannelRecord& actual, const ChannelRecord& expected, bool wide)
{
    Differences d;
    d.checkEntries("gainCoef", actual.gainCoef, expected.gainCoef, wide ? kWideGainCoefEntries : kCoefEntries);
    if (!wide)
        d.checkEntries("zeroCoef", actual.zeroCoef, expected.zeroCoef, kCoefEntries);
    return d.text();
}

QString informationDifference(const ModuleRecord& actual, const ModuleRecord& expected)
{
    Differences d;
    d.check("busAddress", actual.busAddress, expected.busAddress);
    d.check("modelName", trimmedText(actual.modelName), trimmedText(expected.modelName));
    d.check("channelCount", actual.channelCount, expected.channelCount);
    d.check("moduleNumber", actual.moduleNumber, expected.moduleNumber);
    for (const auto field : kCapabilityFields)
        d.check("capability code", actual.*field, expected.*field);
    d.checkEntries("infoTail", actual.infoTail, expected.infoTail, layout::kInfoTailSent);
    return d.text();
}

QString wholeReadDifference(const ModuleRecord& actual, const ModuleRecord& module)
{
    QString difference = informationDifference(actual, module);
    const bool wide = hasWideCalibration(module.modelCode);
    for (int c = 0; c < module.channelCount && c < kWiredChannels && difference.isEmpty(); ++c) {
        const ChannelRecord& a = actual.channels[static_cast<size_t>(c)];
        const ChannelRecord& m = module.channels[static_cast<size_t>(c)];
        difference = inChannel(c, channelParameterDifference(a, m));
        if (difference.isEmpty())
            difference = inChannel(c, adjustDifference(a, m));
        if (difference.isEmpty())
            difference = inChannel(c, coefficientDifference(a, m, wide));
    }
    return difference;
}

}  // namespace velmor::testing
