#include "model/parameters.h"

#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::Parameter)

namespace {

// A default module whose capability for `parameter` is `capabilityCode` and
// whose channel 0 holds `value` in the parameter's field.
ModuleRecord moduleWith(Parameter parameter, int capabilityCode, int value)
{
    ModuleRecord module = defaultModule();
    ChannelRecord& channel = module.channels[0];
    const auto code = static_cast<quint8>(capabilityCode);
    switch (parameter) {
    case Parameter::Excitation:
        module.excitationType = code;
        channel.excitation = static_cast<qint16>(value);
        break;
    case Parameter::Balance:
        module.balanceType = code;
        channel.balanceValue = value;
        break;
    case Parameter::Coupling:
        module.acCouplingType = code;
        channel.coupling = static_cast<qint16>(value);
        break;
    case Parameter::Gain:
        module.gainType = code;
        channel.gain = static_cast<qint16>(value);
        break;
    case Parameter::Cutoff:
        module.filterType = code;
        channel.cutoff = value;
        break;
    case Parameter::Hold:
        module.holdType = code;
        channel.holdExponent = static_cast<quint16>(value);
        break;
    case Parameter::Integral:
        module.integralType = code;
        channel.integral = static_cast<qint16>(value);
        break;
    case Parameter::ZeroAdjust:
        module.zeroType = code;
        channel.zeroAdjust = value;
        break;
    case Parameter::GainAdjust:
        module.adjustType = code;
        channel.gainAdjust = value;
        break;
    }
    return module;
}

QString zhText(Parameter parameter, int capabilityCode, int value)
{
    return parameterText(parameter, moduleWith(parameter, capabilityCode, value), 0, Language::Chinese);
}

QString enText(Parameter parameter, int capabilityCode, int value)
{
    return parameterText(parameter, moduleWith(parameter, capabilityCode, value), 0, Language::English);
}

}  // namespace

class ParameterTextsTest : public QObject {
    Q_OBJECT

private slots:
    void parameterText_data();
    void parameterText();
    void capabilityZeroShowsNoSetup_data();
    void capabilityZeroShowsNoSetup();
    void filterType3Cutoff2Shows50000();
    void filterType1Cutoff2ShowsUnknown();
    void filterType4Cutoff10Shows15000();
    void adjustType3ShowsUnknownForEveryGainAdjust();
    void balanceType0ShowsUnknownInEnglishAndNoSetupInChinese();
    void excitationType3OpenReadsDuanKaiInEnglish();
    void cutoffTextHasNoThousandsSeparator();
    void textComesFromTheRequestedChannel();
};

void ParameterTextsTest::parameterText_data()
{
    QTest::addColumn<Parameter>("parameter");
    QTest::addColumn<int>("capabilityCode");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("zh");
    QTest::addColumn<QString>("en");

    const auto row = [](const char* name, Parameter p, int cap, int value, const char* zh, const char* en) {
        QTest::newRow(name) << p << cap << value << QString::fromUtf8(zh) << QString::fromUtf8(en);
    };
    using P = Parameter;

    row("excitation 1/0", P::Excitation, 1, 0, "断开", "Open");
    row("excitation 1/1", P::Excitation, 1, 1, "4mA恒流源", "4mA");
    row("excitation 1/2 unknown", P::Excitation, 1, 2, "未知", "Unknown");
    row("excitation 2/0", P::Excitation, 2, 0, "10.0V", "10.0V");
    row("excitation 2/1", P::Excitation, 2, 1, "5.0V", "5.0V");
    row("excitation 2/2", P::Excitation, 2, 2, "2.5V", "2.5V");
    row("excitation 2/3", P::Excitation, 2, 3, "1.25V", "1.25V");
    row("excitation 2/4 unknown", P::Excitation, 2, 4, "未知", "Unknown");
    row("excitation 3/0", P::Excitation, 3, 0, "4mA", "4mA");
    row("excitation 3/1", P::Excitation, 3, 1, "100uA", "100uA");
    row("excitation 3/2", P::Excitation, 3, 2, "10.0V", "10.0V");
    row("excitation 3/3", P::Excitation, 3, 3, "5.0V", "5.0V");
    row("excitation 3/4", P::Excitation, 3, 4, "2.5V", "2.5V");
    row("excitation 3/5", P::Excitation, 3, 5, "1.25V", "1.25V");
    row("excitation 3/6", P::Excitation, 3, 6, "断开", "断开");
    row("excitation 3/7 unknown", P::Excitation, 3, 7, "未知", "Unknown");
    row("excitation 3/-1 unknown", P::Excitation, 3, -1, "未知", "Unknown");
    row("excitation type 4 unknown", P::Excitation, 4, 0, "未知", "Unknown");

    row("coupling DC", P::Coupling, 1, 0, "DC耦合", "DC Coupling");
    row("coupling AC", P::Coupling, 1, 1, "AC耦合", "AC Coupling");
    row("coupling 2 unknown", P::Coupling, 1, 2, "未知", "Unknown");
    row("coupling type 2 unknown", P::Coupling, 2, 1, "未知", "Unknown");

    row("gain 1/0", P::Gain, 1, 0, "1", "1");
    row("gain 1/3", P::Gain, 1, 3, "8", "8");
    row("gain 1/4 unknown", P::Gain, 1, 4, "未知", "Unknown");
    row("gain 2/2", P::Gain, 2, 2, "5", "5");
    row("gain 2/3", P::Gain, 2, 3, "10", "10");
    row("gain 3/3", P::Gain, 3, 3, "1000", "1000");
    row("gain 4/10", P::Gain, 4, 10, "10000", "10000");
    row("gain 4/11 unknown", P::Gain, 4, 11, "未知", "Unknown");
    row("gain 5/0", P::Gain, 5, 0, "500", "500");
    row("gain 5/2", P::Gain, 5, 2, "2500", "2500");
    row("gain 5/4 unknown", P::Gain, 5, 4, "未知", "Unknown");
    row("gain 6/6", P::Gain, 6, 6, "100", "100");
    row("gain 6/7 unknown", P::Gain, 6, 7, "未知", "Unknown");
    row("gain 7/12", P::Gain, 7, 12, "10000", "10000");
    row("gain 7/13 unknown", P::Gain, 7, 13, "未知", "Unknown");
    row("gain -1 unknown", P::Gain, 2, -1, "未知", "Unknown");
    row("gain type 8 unknown", P::Gain, 8, 0, "未知", "Unknown");

    row("cutoff 1/10", P::Cutoff, 1, 10, "10000.00000", "10000.00000");
    row("cutoff 1/100", P::Cutoff, 1, 100, "1000.00000", "1000.00000");
    row("cutoff 1/3000", P::Cutoff, 1, 3000, "33.33333", "33.33333");
    row("cutoff 1/65535", P::Cutoff, 1, 65535, "1.52590", "1.52590");
    row("cutoff 1/65536 unknown", P::Cutoff, 1, 65536, "未知", "Unknown");
    row("cutoff 1/9 unknown", P::Cutoff, 1, 9, "未知", "Unknown");
    row("cutoff 2/0", P::Cutoff, 2, 0, "直通", "Bypass");
    row("cutoff 2/1", P::Cutoff, 2, 1, "10Hz", "10Hz");
    row("cutoff 2/2", P::Cutoff, 2, 2, "1KHz", "1KHz");
    row("cutoff 2/3 unknown", P::Cutoff, 2, 3, "未知", "Unknown");
    row("cutoff 3/3", P::Cutoff, 3, 3, "33333.33333", "33333.33333");
    row("cutoff 3/1 unknown", P::Cutoff, 3, 1, "未知", "Unknown");
    row("cutoff 4/65535", P::Cutoff, 4, 65535, "2.28885", "2.28885");
    row("cutoff 4/9 unknown", P::Cutoff, 4, 9, "未知", "Unknown");
    row("cutoff type 5 unknown", P::Cutoff, 5, 100, "未知", "Unknown");

    row("hold 2^0", P::Hold, 1, 0, "1", "1");
    row("hold 2^3", P::Hold, 1, 3, "8", "8");
    row("hold 2^7", P::Hold, 1, 7, "128", "128");
    row("hold 2^20", P::Hold, 1, 20, "1048576", "1048576");
    row("hold 2^63", P::Hold, 1, 63, "9223372036854775808", "9223372036854775808");
    row("hold 2^64 unknown", P::Hold, 1, 64, "未知", "Unknown");
    row("hold type 2 unknown", P::Hold, 2, 3, "未知", "Unknown");

    row("integral 0", P::Integral, 1, 0, "无", "No");
    row("integral 1", P::Integral, 1, 1, "一次积分", "One Integral");
    row("integral 2", P::Integral, 1, 2, "二次积分", "Two Integral");
    row("integral 3 unknown", P::Integral, 1, 3, "未知", "Unknown");
    row("integral type 2 unknown", P::Integral, 2, 1, "未知", "Unknown");

    row("balance value", P::Balance, 1, 4095, "4095", "4095");
    row("balance 65535", P::Balance, 1, 65535, "65535", "65535");
    row("balance type 2 unknown", P::Balance, 2, 5, "未知", "Unknown");

    row("zero adjust value", P::ZeroAdjust, 1, 200, "200", "200");
    row("zero type 2 unknown", P::ZeroAdjust, 2, 200, "未知", "Unknown");

    row("gain adjust 10 bit", P::GainAdjust, 1, 1023, "1023", "1023");
    row("gain adjust 12 bit", P::GainAdjust, 2, 4095, "4095", "4095");
    row("gain adjust type 4 unknown", P::GainAdjust, 4, 7, "未知", "Unknown");
}

void ParameterTextsTest::parameterText()
{
    QFETCH(Parameter, parameter);
    QFETCH(int, capabilityCode);
    QFETCH(int, value);
    QFETCH(QString, zh);
    QFETCH(QString, en);
    QCOMPARE(zhText(parameter, capabilityCode, value), zh);
    QCOMPARE(enText(parameter, capabilityCode, value), en);
}

void ParameterTextsTest::capabilityZeroShowsNoSetup_data()
{
    QTest::addColumn<Parameter>("parameter");
    QTest::newRow("excitation") << Parameter::Excitation;
    QTest::newRow("coupling") << Parameter::Coupling;
    QTest::newRow("gain") << Parameter::Gain;
    QTest::newRow("cutoff") << Parameter::Cutoff;
    QTest::newRow("hold") << Parameter::Hold;
    QTest::newRow("integral") << Parameter::Integral;
    QTest::newRow("zero adjust") << Parameter::ZeroAdjust;
    QTest::newRow("gain adjust") << Parameter::GainAdjust;
}

void ParameterTextsTest::capabilityZeroShowsNoSetup()
{
    QFETCH(Parameter, parameter);
    QCOMPARE(zhText(parameter, 0, 1), QStringLiteral("无程序设置"));
    QCOMPARE(enText(parameter, 0, 1), QStringLiteral("No Setup"));
}

void ParameterTextsTest::filterType3Cutoff2Shows50000()
{
    QCOMPARE(enText(Parameter::Cutoff, 3, 2), QStringLiteral("50000.00000"));
    QCOMPARE(zhText(Parameter::Cutoff, 3, 2), QStringLiteral("50000.00000"));
}

void ParameterTextsTest::filterType1Cutoff2ShowsUnknown()
{
    QCOMPARE(zhText(Parameter::Cutoff, 1, 2), QStringLiteral("未知"));
    QCOMPARE(enText(Parameter::Cutoff, 1, 2), QStringLiteral("Unknown"));
}

void ParameterTextsTest::filterType4Cutoff10Shows15000()
{
    QCOMPARE(enText(Parameter::Cutoff, 4, 10), QStringLiteral("15000.00000"));
}

void ParameterTextsTest::adjustType3ShowsUnknownForEveryGainAdjust()
{
    for (int value : {0, 1, 255, 1023, 65535}) {
        QCOMPARE(zhText(Parameter::GainAdjust, 3, value), QStringLiteral("未知"));
        QCOMPARE(enText(Parameter::GainAdjust, 3, value), QStringLiteral("Unknown"));
    }
}

void ParameterTextsTest::balanceType0ShowsUnknownInEnglishAndNoSetupInChinese()
{
    QCOMPARE(enText(Parameter::Balance, 0, 100), QStringLiteral("Unknown"));
    QCOMPARE(zhText(Parameter::Balance, 0, 100), QStringLiteral("无程序设置"));
}

void ParameterTextsTest::excitationType3OpenReadsDuanKaiInEnglish()
{
    QCOMPARE(enText(Parameter::Excitation, 3, 6), QStringLiteral("断开"));
    QCOMPARE(enText(Parameter::Excitation, 1, 0), QStringLiteral("Open"));
}

void ParameterTextsTest::cutoffTextHasNoThousandsSeparator()
{
    const QString text = enText(Parameter::Cutoff, 3, 4);
    QCOMPARE(text, QStringLiteral("25000.00000"));
    QVERIFY(!text.contains(u','));
}

void ParameterTextsTest::textComesFromTheRequestedChannel()
{
    ModuleRecord module = defaultModule();
    module.gainType = 3;
    module.channels[0].gain = 0;
    module.channels[9].gain = 2;
    QCOMPARE(velmor::parameterText(Parameter::Gain, module, 9, Language::English), QStringLiteral("100"));
    QCOMPARE(velmor::parameterText(Parameter::Gain, module, 0, Language::English), QStringLiteral("1"));
}

QTEST_APPLESS_MAIN(ParameterTextsTest)
#include "parameter_texts_test.moc"
