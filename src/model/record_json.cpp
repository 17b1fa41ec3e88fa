#include "record_json.h"

#include <QJsonArray>
#include <QJsonValue>

#include <cmath>
#include <concepts>
#include <limits>
#include <optional>

namespace velmor {
namespace {

// One list of fields for both directions, so that writing and reading cannot
// drift apart.
template <typename Channel, typename Visit>
void visitChannel(Channel& c, Visit& visit)
{
    visit("channelNumber", c.channelNumber);
    visit("excitation", c.excitation);
    visit("balanceValue", c.balanceValue);
    visit("coupling", c.coupling);
    visit("gain", c.gain);
    visit("cutoff", c.cutoff);
    visit("holdExponent", c.holdExponent);
    visit("integral", c.integral);
    visit("zeroAdjust", c.zeroAdjust);
    visit("gainAdjust", c.gainAdjust);
    visit("zeroAdjustTable", c.zeroAdjustTable);
    visit("gainAdjustTable", c.gainAdjustTable);
    visit("zeroCoef", c.zeroCoef);
    visit("gainCoef", c.gainCoef);
    visit("bridgeType", c.bridgeType);
    visit("referenceInt", c.referenceInt);
    visit("sensitivity", c.sensitivity);
    visit("gaugeCoef", c.gaugeCoef);
    visit("fullRange", c.fullRange);
    visit("isStrain", c.isStrain);
    visit("unitText", c.unitText);
    visit("channelFlags", c.channelFlags);
}

template <typename Module, typename Visit>
void visitModule(Module& m, Visit& visit)
{
    visit("modelName", m.modelName);
    visit("portNumber", m.portNumber);
    visit("busAddress", m.busAddress);
    visit("channelCount", m.channelCount);
    visit("moduleNumber", m.moduleNumber);
    visit("modelCode", m.modelCode);
    visit("version", m.version);
    visit("excitationType", m.excitationType);
    visit("balanceType", m.balanceType);
    visit("acCouplingType", m.acCouplingType);
    visit("gainType", m.gainType);
    visit("filterType", m.filterType);
    visit("holdType", m.holdType);
    visit("zeroType", m.zeroType);
    visit("adjustType", m.adjustType);
    visit("integralType", m.integralType);
    visit("infoTail", m.infoTail);
}

const QLatin1String kChannelsKey("channels");

struct Writer {
    QJsonObject& out;

    void operator()(const char* key, bool value) { out[QLatin1String(key)] = value; }
    void operator()(const char* key, float value) { out[QLatin1String(key)] = static_cast<double>(value); }
    void operator()(const char* key, const FixedText& text) { out[QLatin1String(key)] = trimmedText(text); }

    template <std::integral T>
    void operator()(const char* key, T value)
    {
        out[QLatin1String(key)] = static_cast<qint64>(value);
    }

    template <std::integral T, size_t N>
    void operator()(const char* key, const std::array<T, N>& values)
    {
        QJsonArray array;
        for (T v : values)
            array.append(static_cast<qint64>(v));
        out[QLatin1String(key)] = array;
    }
};

struct Reader {
    const QJsonObject& in;
    QString where;  // "channels[3]." inside a channel
    QString* error;
    bool ok = true;

    // The value under key; none when the key is missing or an earlier field failed.
    std::optional<QJsonValue> find(const char* key) const
    {
        if (!ok)
            return std::nullopt;
        const auto it = in.constFind(QLatin1String(key));
        if (it == in.constEnd())
            return std::nullopt;
        return *it;
    }

    void fail(const char* key, const QString& why)
    {
        ok = false;
        if (error)
            *error = QStringLiteral("%1%2: %3").arg(where, QLatin1String(key), why);
    }

    template <std::integral T>
    static bool integer(const QJsonValue& value, T& out)
    {
        if (!value.isDouble())
            return false;
        const double d = value.toDouble();
        if (std::floor(d) != d || d < static_cast<double>(std::numeric_limits<T>::min())
            || d > static_cast<double>(std::numeric_limits<T>::max()))
            return false;
        out = static_cast<T>(d);
        return true;
    }

    template <std::integral T>
    static QString integerExpected()
    {
        return QStringLiteral("expected an integer from %1 to %2")
            .arg(static_cast<qint64>(std::numeric_limits<T>::min()))
            .arg(static_cast<qint64>(std::numeric_limits<T>::max()));
    }

    void operator()(const char* key, bool& field)
    {
        if (const std::optional<QJsonValue> v = find(key)) {
            if (v->isBool())
                field = v->toBool();
            else
                fail(key, QStringLiteral("expected true or false"));
        }
    }

    void operator()(const char* key, float& field)
    {
        if (const std::optional<QJsonValue> v = find(key)) {
            if (v->isDouble())
                field = static_cast<float>(v->toDouble());
            else
                fail(key, QStringLiteral("expected a number"));
        }
    }

    void operator()(const char* key, FixedText& field)
    {
        if (const std::optional<QJsonValue> v = find(key)) {
            if (!v->isString())
                fail(key, QStringLiteral("expected a string"));
            else if (trimmedText(field) != v->toString())  // an equal text keeps its padding (blanks or NULs)
                field = fixedText(v->toString());
        }
    }

    template <std::integral T>
    void operator()(const char* key, T& field)
    {
        if (const std::optional<QJsonValue> v = find(key)) {
            if (!integer(*v, field))
                fail(key, integerExpected<T>());
        }
    }

    template <std::integral T, size_t N>
    void operator()(const char* key, std::array<T, N>& field)
    {
        const std::optional<QJsonValue> v = find(key);
        if (!v)
            return;
        if (!v->isArray() || v->toArray().size() > static_cast<qsizetype>(N)) {
            fail(key, QStringLiteral("expected an array of at most %1 integers").arg(N));
            return;
        }
        const QJsonArray array = v->toArray();
        for (qsizetype i = 0; i < array.size(); ++i) {
            if (!integer(array[i], field[static_cast<size_t>(i)])) {
                fail(key, QStringLiteral("entry %1: %2").arg(i).arg(integerExpected<T>()));
                return;
            }
        }
    }
};

}  // namespace

QJsonObject recordToJson(const ModuleRecord& record)
{
    QJsonObject json;
    Writer writeModule{json};
    visitModule(record, writeModule);
    QJsonArray channels;
    for (const ChannelRecord& c : record.channels) {
        QJsonObject channel;
        Writer writeChannel{channel};
        visitChannel(c, writeChannel);
        channels.append(channel);
    }
    json[kChannelsKey] = channels;
    return json;
}

bool recordFromJson(const QJsonObject& json, ModuleRecord& record, QString* error)
{
    Reader readModule{json, QString(), error};
    visitModule(record, readModule);
    if (!readModule.ok)
        return false;
    const auto it = json.constFind(kChannelsKey);
    if (it == json.constEnd())
        return true;
    if (!it->isArray() || it->toArray().size() > kChannelSlots) {
        if (error)
            *error = QStringLiteral("channels: expected an array of at most %1 objects").arg(kChannelSlots);
        return false;
    }
    const QJsonArray channels = it->toArray();
    for (qsizetype i = 0; i < channels.size(); ++i) {
        const QString where = QStringLiteral("channels[%1]").arg(i);
        if (!channels[i].isObject()) {
            if (error)
                *error = where + QStringLiteral(": expected an object");
            return false;
        }
        const QJsonObject channel = channels[i].toObject();
        Reader readChannel{channel, where + QLatin1Char('.'), error};
        visitChannel(record.channels[static_cast<size_t>(i)], readChannel);
        if (!readChannel.ok)
            return false;
    }
    return true;
}

}  // namespace velmor
