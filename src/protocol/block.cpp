#include "block.h"

#include "frame.h"

namespace velmor {

int Block::selector() const
{
    switch (kind) {
    case Kind::Information: return kGroupInfo;
    case Kind::ChannelGroup: return kGroupChannelsFirst + index;
    case Kind::AdjustBlock: return kGroupAdjustFirst + index;
    case Kind::CalibrationPair: return kGroupCalibrationFirst + index;
    case Kind::Balance: return 0;
    }
    return 0;
}

Block Block::ofSelector(int selector)
{
    if (selector >= kGroupCalibrationFirst)
        return {Kind::CalibrationPair, selector - kGroupCalibrationFirst};
    if (selector >= kGroupAdjustFirst)
        return {Kind::AdjustBlock, selector - kGroupAdjustFirst};
    if (selector >= kGroupChannelsFirst)
        return {Kind::ChannelGroup, selector - kGroupChannelsFirst};
    return {Kind::Information, 0};
}

}  // namespace velmor
