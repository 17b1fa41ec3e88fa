// Which editor a click on the channel grid gets, with its items and captions.
#include "channel_rules.h"

#include "edit/grid_cells.h"

#include "model/gain_steps.h"
#include "model/models.h"
#include "model/reference.h"
#include "texts/editor.h"
#include "texts/option.h"
#include "texts/parameter.h"
#include "texts/reference_columns.h"

#include <span>
#include <utility>

namespace velmor {

namespace {

constexpr int kFirstColumn = 1;
constexpr int kLastColumn = kTypeColumn;
// "TM-B8" edits its reference columns; "TM-B16" only shows them.
constexpr int kEditableReferenceModel = kTmB8;
constexpr int kHighestHoldChoice = 7;       // the list offers 2^0 .. 2^7

// The capability code that lets a column be edited at all. Column 10 is not
// refused without integration, as the grid always did.
struct GoverningCode {
    int column;
    quint8 ModuleRecord::*code;
};

constexpr GoverningCode kGoverningCodes[] = {
    {1, &ModuleRecord::excitationType}, {2, &ModuleRecord::balanceType}, {4, &ModuleRecord::acCouplingType},
    {5, &ModuleRecord::gainType},       {6, &ModuleRecord::filterType},  {7, &ModuleRecord::holdType},
    {8, &ModuleRecord::zeroType},       {9, &ModuleRecord::adjustType},
};

constexpr Text kExcitationType1[] = {texts::parameter::kExcitationOpen, texts::option::kExcitationCurrent};
constexpr Text kExcitationType2[] = {texts::parameter::kExcitation10V, texts::parameter::kExcitation5V, texts::parameter::kExcitation2V5,
                                     texts::parameter::kExcitation1V25};
constexpr Text kExcitationType3[] = {texts::parameter::kExcitation4mA,  texts::parameter::kExcitation100uA, texts::parameter::kExcitation10V,
                                     texts::parameter::kExcitation5V,   texts::parameter::kExcitation2V5,   texts::parameter::kExcitation1V25,
                                     texts::parameter::kExcitationOpenAll};
constexpr Text kCouplings[] = {texts::parameter::kDcCoupling, texts::parameter::kAcCoupling};
constexpr Text kCutoffSteps[] = {texts::parameter::kCutoffBypass, texts::parameter::kCutoff10Hz, texts::parameter::kCutoff1KHz};
constexpr Text kIntegrals[] = {texts::option::kNo, texts::editor::kIntegralItemOne, texts::editor::kIntegralItemTwo};
constexpr Text kBridges[] = {texts::reference::kBridgeFull, texts::reference::kBridgeHalf, texts::reference::kBridgeQuarter};
constexpr Text kObjectTypes[] = {texts::reference::kTypeStrain, texts::reference::kTypePressure};

QStringList picked(std::span<const Text> items, Language language)
{
    QStringList out;
    for (const Text& item : items)
        out << pick(item, language);
    return out;
}

std::span<const Text> excitationItems(int excitationType)
{
    switch (excitationType) {
    case 1: return kExcitationType1;
    case 2: return kExcitationType2;
    case 3: return kExcitationType3;
    default: return {};
    }
}

QStringList numbers(std::span<const int> values)
{
    QStringList out;
    for (int value : values)
        out << QString::number(value);
    return out;
}

QStringList holdItems()
{
    QStringList out;
    for (int exponent = 0; exponent <= kHighestHoldChoice; ++exponent)
        out << QString::number(1 << exponent);
    return out;
}

ChannelEditor refused(Refusal why)
{
    ChannelEditor result;
    result.refusal = why;
    return result;
}

ChannelEditor list(const Text& caption, QStringList items, Language language)
{
    if (items.isEmpty())
        return refused(Refusal::UnknownCapability);
    ChannelEditor result;
    result.kind = EditorKind::List;
    result.caption = pick(caption, language);
    result.items = std::move(items);
    return result;
}

ChannelEditor prompt(EditorKind kind, Language language)
{
    ChannelEditor result;
    result.kind = kind;
    result.promptTitle = pick(texts::editor::kPromptTitle, language);
    result.promptText = pick(texts::editor::kPromptText, language);
    return result;
}

ChannelEditor cutoffEditor(const ModuleRecord& module, Language language)
{
    switch (module.filterType) {
    case 2:
        return list(texts::editor::kCutoffCaption, picked(kCutoffSteps, language), language);
    case 1:
    case 3:
    case 4: {
        ChannelEditor result;
        result.kind = EditorKind::FrequencyDialog;
        result.caption = pick(texts::editor::kFrequencyCaption, language);
        return result;
    }
    default:
        return refused(Refusal::UnknownCapability);
    }
}

}  // namespace

ChannelEditor channelEditor(const ModuleRecord& module, int column, Language language)
{
    if (column < kFirstColumn || column > kLastColumn)
        return refused(Refusal::NoSuchColumn);
    for (const GoverningCode& governing : kGoverningCodes) {
        if (governing.column == column && module.*governing.code == 0)
            return refused(Refusal::NoCapability);
    }
    if (column >= kFirstReferenceColumn) {
        if (!hasReferenceColumns(module.modelCode))
            return refused(Refusal::NoSuchColumn);
        if (module.modelCode != kEditableReferenceModel)
            return refused(Refusal::ReferenceReadOnly);
    }
    switch (column) {
    case 1: return list(texts::editor::kExcitationCaption, picked(excitationItems(module.excitationType), language), language);
    case 2:
    case 8:
    case 9: return prompt(EditorKind::WholeNumberPrompt, language);
    case 3: {
        ChannelEditor toggle;
        toggle.kind = EditorKind::Toggle;
        return toggle;
    }
    case 4: return list(texts::editor::kCouplingCaption, picked(kCouplings, language), language);
    case 5: return list(texts::editor::kGainCaption, numbers(gainSteps(module.gainType)), language);
    case 6: return cutoffEditor(module, language);
    case 7: return list(texts::editor::kHoldCaption, module.holdType == 1 ? holdItems() : QStringList(), language);
    case 10: return list(texts::editor::kIntegralCaption, picked(kIntegrals, language), language);
    case 11: return list(texts::editor::kBridgeCaption, picked(kBridges, language), language);
    case 12:
    case 13:
    case 14: return prompt(EditorKind::NumberPrompt, language);
    case kUnitColumn: return refused(Refusal::NoEditor);
    case 16: return list(texts::editor::kObjectTypeCaption, picked(kObjectTypes, language), language);
    }
    return refused(Refusal::NoSuchColumn);
}

void openingList(ModuleRecord& module, int column, int row)
{
    if (column != kHoldColumn || channelEditor(module, column, Language::English).kind != EditorKind::List)
        return;
    const RowSpan rows = gridRows(module, {row, row});
    if (rows.first > rows.last)
        return;
    ChannelRecord& channel = module.channels[static_cast<size_t>(row - 1)];
    if (channel.holdExponent > kHighestHoldChoice)
        channel.holdExponent = kHighestHoldChoice;
}

}  // namespace velmor
