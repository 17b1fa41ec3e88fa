#include "records.h"

#include <QStringList>
#include <QTest>

#include <type_traits>

namespace velmor::testkit {
namespace {

int randomInt(std::mt19937& rng, int limit) { return static_cast<int>(rng() % static_cast<unsigned>(limit)); }

template <typename T>
QString show(const T& value)
{
    if constexpr (std::is_floating_point_v<T>)
        return QString::number(static_cast<double>(value));
    else
        return QString::number(static_cast<qint64>(value));
}

template <typename T>
void compareField(QStringList& out, const QString& name, const T& actual, const T& expected)
{
    if (actual != expected)
        out << QStringLiteral("%1: actual %2, expected %3").arg(name, show(actual), show(expected));
}

template <typename T, size_t N>
void compareField(QStringList& out, const QString& name, const std::array<T, N>& actual,
                  const std::array<T, N>& expected)
{
    for (size_t i = 0; i < N; ++i)
        compareField(out, QStringLiteral("%1[%2]").arg(name).arg(i), actual[i], expected[i]);
}

#define VELMOR_FIELD(prefix, a, e, field) compareField(out, prefix + QStringLiteral(#field), a.field, e.field)

void compareChannel(QStringList& out, int c, const ChannelRecord& a, const ChannelRecord& e)
{
    const QString prefix = QStringLiteral("channels[%1].").arg(c);
    VELMOR_FIELD(prefix, a, e, channelNumber);
    VELMOR_FIELD(prefix, a, e, excitation);
    VELMOR_FIELD(prefix, a, e, balanceValue);
    VELMOR_FIELD(prefix, a, e, coupling);
    VELMOR_FIELD(prefix, a, e, gain);
    VELMOR_FIELD(prefix, a, e, cutoff);
    VELMOR_FIELD(prefix, a, e, holdExponent);
    VELMOR_FIELD(prefix, a, e, integral);
    VELMOR_FIELD(prefix, a, e, zeroAdjust);
    VELMOR_FIELD(prefix, a, e, gainAdjust);
    VELMOR_FIELD(prefix, a, e, zeroAdjustTable);
    VELMOR_FIELD(prefix, a, e, gainAdjustTable);
    VELMOR_FIELD(prefix, a, e, zeroCoef);
    VELMOR_FIELD(prefix, a, e, gainCoef);
    VELMOR_FIELD(prefix, a, e, spareBlock);
    VELMOR_FIELD(prefix, a, e, bridgeType);
    VELMOR_FIELD(prefix, a, e, referenceInt);
    VELMOR_FIELD(prefix, a, e, sensitivity);
    VELMOR_FIELD(prefix, a, e, gaugeCoef);
    VELMOR_FIELD(prefix, a, e, fullRange);
    VELMOR_FIELD(prefix, a, e, isStrain);
    VELMOR_FIELD(prefix, a, e, unitText);
    VELMOR_FIELD(prefix, a, e, channelFlags);
    VELMOR_FIELD(prefix, a, e, trailingBlock);
}

}  // namespace

ModuleRecord markedRecord()
{
    ModuleRecord m = defaultModule();
    m.portNumber = -2;
    m.busAddress = -3;
    m.channelCount = -4;
    m.moduleNumber = -5;
    for (int i = 0; i < kCapabilityCount; ++i)
        m.*kCapabilityFields[i] = static_cast<quint8>(0xC0 + i);
    for (size_t i = 0; i < m.infoTail.size(); ++i)
        m.infoTail[i] = static_cast<quint8>(0x80 + i);
    for (int c = 0; c < kChannelSlots; ++c) {
        ChannelRecord& ch = m.channels[static_cast<size_t>(c)];
        const int mark = -100 * (c + 1);
        ch.channelNumber = static_cast<qint16>(mark - 1);
        ch.excitation = static_cast<qint16>(mark - 2);
        ch.balanceValue = mark - 3;
        ch.coupling = static_cast<qint16>(mark - 4);
        ch.gain = static_cast<qint16>(mark - 5);
        ch.cutoff = mark - 6;
        ch.holdExponent = static_cast<quint16>(60000 + c);
        ch.integral = static_cast<qint16>(mark - 7);
        ch.zeroAdjust = mark - 8;
        ch.gainAdjust = mark - 9;
        ch.channelFlags = static_cast<qint16>(mark - 10);
        for (int i = 0; i < kTableEntries; ++i) {
            const auto e = static_cast<size_t>(i);
            ch.zeroAdjustTable[e] = mark - 20 - i;
            ch.gainAdjustTable[e] = mark - 40 - i;
            ch.zeroCoef[e] = mark - 60 - i;
            ch.gainCoef[e] = mark - 80 - i;
        }
    }
    return m;
}

ModuleRecord randomWireRecord(std::mt19937& rng)
{
    ModuleRecord m = markedRecord();
    m.busAddress = static_cast<qint16>(randomInt(rng, 256));
    m.moduleNumber = randomInt(rng, 65536);
    for (int i = 0; i < kCapabilityCount; ++i)
        m.*kCapabilityFields[i] = static_cast<quint8>(randomInt(rng, 256));
    for (auto& b : m.infoTail)
        b = static_cast<quint8>(randomInt(rng, 256));
    for (ChannelRecord& ch : m.channels) {
        ch.excitation = static_cast<qint16>(randomInt(rng, 256));
        ch.balanceValue = randomInt(rng, 65536);
        ch.coupling = static_cast<qint16>(randomInt(rng, 16));
        ch.integral = static_cast<qint16>(randomInt(rng, 16));
        ch.gain = static_cast<qint16>(randomInt(rng, 256));
        ch.cutoff = randomInt(rng, 65536);
        ch.holdExponent = static_cast<quint16>(randomInt(rng, 256));
        ch.zeroAdjust = randomInt(rng, 256);
        ch.gainAdjust = randomInt(rng, 65536);
        ch.channelFlags = static_cast<qint16>(randomInt(rng, 256));
        for (int i = 0; i < kTableEntries; ++i) {
            const auto e = static_cast<size_t>(i);
            ch.zeroAdjustTable[e] = randomInt(rng, 256);
            ch.gainAdjustTable[e] = randomInt(rng, 65536);
            ch.zeroCoef[e] = randomInt(rng, 65536);
            ch.gainCoef[e] = randomInt(rng, 65536);
        }
    }
    return m;
}

QString recordDifferences(const ModuleRecord& a, const ModuleRecord& e)
{
    QStringList out;
    const QString top;
    VELMOR_FIELD(top, a, e, modelName);
    VELMOR_FIELD(top, a, e, portNumber);
    VELMOR_FIELD(top, a, e, busAddress);
    VELMOR_FIELD(top, a, e, channelCount);
    VELMOR_FIELD(top, a, e, moduleNumber);
    VELMOR_FIELD(top, a, e, modelCode);
    VELMOR_FIELD(top, a, e, version);
    VELMOR_FIELD(top, a, e, excitationType);
    VELMOR_FIELD(top, a, e, balanceType);
    VELMOR_FIELD(top, a, e, acCouplingType);
    VELMOR_FIELD(top, a, e, gainType);
    VELMOR_FIELD(top, a, e, filterType);
    VELMOR_FIELD(top, a, e, holdType);
    VELMOR_FIELD(top, a, e, zeroType);
    VELMOR_FIELD(top, a, e, adjustType);
    VELMOR_FIELD(top, a, e, integralType);
    VELMOR_FIELD(top, a, e, infoTail);
    for (int c = 0; c < kChannelSlots; ++c)
        compareChannel(out, c, a.channels[static_cast<size_t>(c)], e.channels[static_cast<size_t>(c)]);
    constexpr int kShown = 12;
    if (out.size() > kShown) {
        const auto more = out.size() - kShown;
        out.resize(kShown);
        out << QStringLiteral("... and %1 more").arg(more);
    }
    return out.join(QLatin1Char('\n'));
}

bool sameRecord(const ModuleRecord& actual, const ModuleRecord& expected, const char* file, int line)
{
    if (actual == expected)
        return true;
    QString diff = recordDifferences(actual, expected);
    if (diff.isEmpty())
        diff = QStringLiteral("(records differ in a field the listing does not name)");
    QTest::qFail(qPrintable(QStringLiteral("Module records differ:\n") + diff), file, line);
    return false;
}

}  // namespace velmor::testkit
