#include "reference.h"

#include "models.h"

#include "number_text.h"
#include "texts/reference_columns.h"

namespace velmor {

namespace {

using namespace texts::reference;

constexpr Text kHeaders[] = {kHeaderBridge, kHeaderCoef, kHeaderSensitivity,
                             kHeaderRange,  kHeaderUnit, kHeaderType};

const Text& bridgeText(qint32 bridgeType)
{
    switch (bridgeType) {
    case 1: return kBridgeHalf;
    case 2: return kBridgeQuarter;
    default: return kBridgeFull;  // also for values only a configuration file can bring
    }
}

const Text& unitOf(bool strain)
{
    return strain ? kUnitStrain : kUnitPressure;
}

}  // namespace

bool hasReferenceColumns(int modelCode)
{
    return modelCode == kTmB8 || modelCode == kTmB16;
}

QString channelFrameTitle(int modelCode, Language language)
{
    return pick(hasReferenceColumns(modelCode) ? kFrameTitleWithReference : kFrameTitle, language);
}

QString referenceHeader(ReferenceColumn column, Language language)
{
    return pick(kHeaders[static_cast<size_t>(column)], language);
}

QString referenceCell(ReferenceColumn column, const ChannelRecord& channel, Language language)
{
    switch (column) {
    case ReferenceColumn::Bridge:
        return pick(bridgeText(channel.bridgeType), language);
    case ReferenceColumn::Coef:
        return channel.isStrain ? formatNumber(channel.gaugeCoef, kCoefPicture) : QString();
    case ReferenceColumn::Sensitivity:
        return channel.isStrain ? QString() : formatNumber(channel.sensitivity, kCoefPicture);
    case ReferenceColumn::Range:
        return formatNumber(channel.fullRange, channel.isStrain ? kWholePicture : kThousandthsPicture);
    case ReferenceColumn::Unit:
        return pick(unitOf(channel.isStrain), language);
    case ReferenceColumn::Type:
        return pick(channel.isStrain ? kTypeStrain : kTypePressure, language);
    }
    return QString();
}

void setStrain(ChannelRecord& channel, bool strain)
{
    channel.isStrain = strain;
    channel.unitText = fixedText(pick(unitOf(strain), Language::English));
}

}  // namespace velmor
