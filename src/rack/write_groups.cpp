#include "write_groups.h"

namespace velmor {

bool sendWriteGroup(Operations& operations, const WriteGroup& group)
{
    switch (group.part) {
    case SetupPart::Information: return operations.writeModuleInfo();
    case SetupPart::Channels: return operations.writeChannelGroup(group.index);
    case SetupPart::Adjust: return operations.writeAdjustBlock(group.index);
    case SetupPart::Calibration: return operations.writeCalibrationPair(group.index);
    }
    return false;
}

QList<WriteGroup> everyWriteGroup(const ModuleRecord& record)
{
    QList<WriteGroup> groups{{SetupPart::Information, 0}};
    for (int g = 0; g < Operations::groupCount(record.channelCount); ++g)
        groups.append({SetupPart::Channels, g});
    for (int g = 0; g < Operations::groupCount(record.channelCount); ++g)
        groups.append({SetupPart::Adjust, g});
    for (int k = 0; k < Operations::pairCount(record.channelCount); ++k)
        groups.append({SetupPart::Calibration, k});
    return groups;
}

}  // namespace velmor
