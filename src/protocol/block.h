#pragma once

namespace velmor {

// What a frame reads or writes: the module information, a channel group, an
// adjust block or a calibration pair, with its index within its kind. A
// balance names no block of the module's memory.
struct Block {
    enum class Kind { Information, ChannelGroup, AdjustBlock, CalibrationPair, Balance };
    Kind kind = Kind::Information;
    int index = 0;

    // The group selector that carries it in frame byte 5 (the balance's is 0).
    int selector() const;
    // The block that group selector `selector` (0..16) names.
    static Block ofSelector(int selector);

    friend bool operator==(const Block&, const Block&) = default;
};

}  // namespace velmor
