#include "config_image.h"

#include "single_byte_text.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <concepts>
#include <limits>

namespace velmor {
namespace {

static_assert(std::numeric_limits<float>::is_iec559, "floats are stored as IEEE-754 singles");

template <typename T>
concept Number = std::integral<T> && !std::same_as<T, bool>;

constexpr quint16 kStoredTrue = 0xFFFF;

// Bytes a field takes in the image.
template <Number T>
constexpr int widthOf(const T&) { return sizeof(T); }
constexpr int widthOf(const bool&) { return sizeof(quint16); }
constexpr int widthOf(const float&) { return sizeof(quint32); }
constexpr int widthOf(const FixedText&) { return kTextChars; }
template <typename T, size_t N>
constexpr int widthOf(const std::array<T, N>&) { return static_cast<int>(N) * widthOf(T{}); }

template <Number T>
void put(char* at, T value) { qToLittleEndian(value, at); }
template <Number T>
void get(const char* at, T& value) { value = qFromLittleEndian<T>(at); }

void put(char* at, float value) { put(at, std::bit_cast<quint32>(value)); }
void get(const char* at, float& value) { value = std::bit_cast<float>(qFromLittleEndian<quint32>(at)); }

// Stored as a 16-bit boolean; any set bit reads as true.
void put(char* at, bool value) { put(at, value ? kStoredTrue : quint16{0}); }
void get(const char* at, bool& value) { value = qFromLittleEndian<quint16>(at) != 0; }

void put(char* at, const FixedText& text)
{
    for (int i = 0; i < kTextChars; ++i)
        at[i] = static_cast<char>(toSingleByte(text[static_cast<size_t>(i)]));
}
void get(const char* at, FixedText& text)
{
    for (int i = 0; i < kTextChars; ++i)
        text[static_cast<size_t>(i)] = fromSingleByte(static_cast<quint8>(at[i]));
}

template <typename T, size_t N>
void put(char* at, const std::array<T, N>& values)
{
    for (size_t i = 0; i < N; ++i)
        put(at + widthOf(T{}) * static_cast<int>(i), values[i]);
}
template <typename T, size_t N>
void get(const char* at, std::array<T, N>& values)
{
    for (size_t i = 0; i < N; ++i)
        get(at + widthOf(T{}) * static_cast<int>(i), values[i]);
}

// Pairs every field of a channel with its offset. Channel is ChannelRecord,
// const or not, so that writing and reading share the one list.
template <typename Channel, typename Visit>
constexpr void eachChannelField(Channel& c, int start, Visit& at)
{
    using namespace channelImage;
    at(start + kChannelNumber, c.channelNumber);
    at(start + kExcitation, c.excitation);
    at(start + kBalanceValue, c.balanceValue);
    at(start + kCoupling, c.coupling);
    at(start + kGain, c.gain);
    at(start + kCutoff, c.cutoff);
    at(start + kHoldExponent, c.holdExponent);
    at(start + kIntegral, c.integral);
    at(start + kZeroAdjust, c.zeroAdjust);
    at(start + kGainAdjust, c.gainAdjust);
    at(start + kZeroAdjustTable, c.zeroAdjustTable);
    at(start + kGainAdjustTable, c.gainAdjustTable);
    at(start + kZeroCoef, c.zeroCoef);
    at(start + kGainCoef, c.gainCoef);
    at(start + kSpareBlock, c.spareBlock);
    at(start + kBridgeType, c.bridgeType);
    at(start + kReferenceInt, c.referenceInt);
    at(start + kSensitivity, c.sensitivity);
    at(start + kGaugeCoef, c.gaugeCoef);
    at(start + kFullRange, c.fullRange);
    at(start + kIsStrain, c.isStrain);
    at(start + kUnitText, c.unitText);
    at(start + kChannelFlags, c.channelFlags);
    at(start + kTrailingBlock, c.trailingBlock);
}

// Pairs every field of a module record, channels included, with its offset.
template <typename Module, typename Visit>
constexpr void eachField(Module& m, Visit at)
{
    using namespace moduleImage;
    at(kModelName, m.modelName);
    at(kPortNumber, m.portNumber);
    at(kBusAddress, m.busAddress);
    at(kChannelCount, m.channelCount);
    at(kModuleNumber, m.moduleNumber);
    for (int i = 0; i < kCapabilityCount; ++i)
        at(kCapabilities + i, m.*kCapabilityFields[i]);
    at(kInfoTail, m.infoTail);
    for (int c = 0; c < kChannelSlots; ++c)
        eachChannelField(m.channels[static_cast<size_t>(c)], channelImageStart(c), at);
}

// Guards the offset table: every byte of the image belongs to exactly one
// field, except the three padding bytes of the module part.
consteval bool everyByteOwnedOnce()
{
    std::array<int, kImageBytes> owners{};
    const ModuleRecord record{};
    eachField(record, [&owners](int offset, const auto& field) {
        for (int i = offset; i < offset + widthOf(field); ++i)
            ++owners[static_cast<size_t>(i)];
    });
    constexpr int kPadding[] = {moduleImage::kChannelCount + 2, moduleImage::kChannelCount + 3,
                                moduleImage::kChannels - 1};
    for (int i = 0; i < kImageBytes; ++i) {
        const bool padding = std::ranges::find(kPadding, i) != std::end(kPadding);
        if (owners[static_cast<size_t>(i)] != (padding ? 0 : 1))
            return false;
    }
    return true;
}
static_assert(everyByteOwnedOnce());

}  // namespace

QByteArray configImage(const ModuleRecord& record)
{
    QByteArray image(kImageBytes, '\0');
    char* const base = image.data();
    eachField(record, [base](int offset, const auto& field) { put(base + offset, field); });
    return image;
}

void applyImage(const QByteArray& image, ModuleRecord& record)
{
    // Overlay the given bytes on the record's own image, then read back every
    // field that starts inside them; the others are not touched at all.
    const qsizetype covered = std::min<qsizetype>(image.size(), kImageBytes);
    QByteArray full = configImage(record);
    std::copy_n(image.constData(), covered, full.data());
    const char* const base = full.constData();
    eachField(record, [base, covered](int offset, auto& field) {
        if (offset < covered)
            get(base + offset, field);
    });
}

ModuleRecord recordFromImage(const QByteArray& image)
{
    ModuleRecord record = defaultModule();
    applyImage(image, record);
    return record;
}

}  // namespace velmor
