#include "config_testkit.h"

namespace velmor::test {

namespace {

// Odd multipliers spread a counter over every byte of a field without repeats.
class Distinct {
public:
    qint32 next32() { return static_cast<qint32>(0x9E3779B1u * ++n_); }
    qint16 next16() { return static_cast<qint16>(0x9E37u * ++n_); }
    quint8 next8() { return static_cast<quint8>(1 + (0x9Du * ++n_) % 255); }
    float nextFloat()
    {
        ++n_;
        return (n_ % 2 ? -1.0f : 1.0f) * (static_cast<float>(n_) * 1.5f + 0.25f);
    }
    template <size_t N>
    void fill(std::array<qint32, N>& values)
    {
        for (qint32& v : values)
            v = next32();
    }
    template <size_t N>
    void fill(std::array<quint8, N>& values)
    {
        for (quint8& v : values)
            v = next8();
    }

private:
    quint32 n_ = 0;
};

}  // namespace

ModuleRecord distinctRecord()
{
    Distinct d;
    ModuleRecord m;
    m.modelName = fixedText(u"M-\u03BC\u03B5 0123456789ABCDEF");
    m.portNumber = d.next16();
    m.busAddress = d.next16();
    m.channelCount = d.next16();
    m.moduleNumber = d.next32();
    for (int i = 0; i < kCapabilityCount; ++i)
        m.*kCapabilityFields[i] = d.next8();
    d.fill(m.infoTail);
    for (int c = 0; c < kChannelSlots; ++c) {
        ChannelRecord& ch = m.channels[static_cast<size_t>(c)];
        ch.channelNumber = d.next16();
        ch.excitation = d.next16();
        ch.balanceValue = d.next32();
        ch.coupling = d.next16();
        ch.gain = d.next16();
        ch.cutoff = d.next32();
        ch.holdExponent = static_cast<quint16>(d.next16());
        ch.integral = d.next16();
        ch.zeroAdjust = d.next32();
        ch.gainAdjust = d.next32();
        d.fill(ch.zeroAdjustTable);
        d.fill(ch.gainAdjustTable);
        d.fill(ch.zeroCoef);
        d.fill(ch.gainCoef);
        d.fill(ch.spareBlock);
        ch.bridgeType = d.next32();
        ch.referenceInt = d.next32();
        ch.sensitivity = d.nextFloat();
        ch.gaugeCoef = d.nextFloat();
        ch.fullRange = d.nextFloat();
        ch.isStrain = c % 2 == 1;
        ch.unitText = fixedText(QStringLiteral("U%1 \u03BC\u03B5 abcdefghijklmno").arg(c, 2, 10, QLatin1Char('0')));
        ch.channelFlags = d.next16();
        d.fill(ch.trailingBlock);
    }
    return m;
}

QString firstDifference(const QByteArray& expected, const QByteArray& actual)
{
    const qsizetype common = std::min(expected.size(), actual.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (expected.at(i) != actual.at(i))
            return QStringLiteral("offset %1: expected %2, got %3")
                .arg(i)
                .arg(byteAt(expected, i), 2, 16, QLatin1Char('0'))
                .arg(byteAt(actual, i), 2, 16, QLatin1Char('0'));
    }
    if (expected.size() != actual.size())
        return QStringLiteral("size: expected %1, got %2").arg(expected.size()).arg(actual.size());
    return {};
}

}  // namespace velmor::test
