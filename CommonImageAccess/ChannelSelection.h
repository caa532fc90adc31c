#pragma once
#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace CIA
{

/// The channels that a walk over the tiles is to see. A set of numbers that takes no heap for those which occur.
class CChannelSelection
{
public:
    CChannelSelection() = default;
    CChannelSelection(std::initializer_list<uint32_t> channelIDs)
    {
        for (const uint32_t channelID : channelIDs)
            Add(channelID);
    }
    void Add(uint32_t channelID)
    {
        if (channelID < NumOfLow)
            _low |= uint64_t{1} << channelID;
        else
            _high.push_back(channelID);
    }
    bool Contains(uint32_t channelID) const
    {
        return channelID < NumOfLow ? (_low >> channelID & 1) != 0
                                    : std::find(_high.begin(), _high.end(), channelID) != _high.end();
    }
    bool IsEmpty() const { return _low == 0 && _high.empty(); }

private:
    static constexpr uint32_t NumOfLow = 64;

    uint64_t _low = 0; ///< a bit for each channel below NumOfLow
    std::vector<uint32_t> _high;
};

} // namespace CIA
