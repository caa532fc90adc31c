#pragma once
#include "CommonImageAccess/MultiDimImage.h"

#include <cstdint>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

/// Numbers the frames of an image from 0. Neighbours on a dimension are one stride of it apart.
class CFrameNumbers
{
public:
    /// Asserts that the dimensions make at most so many frames.
    CFrameNumbers(const CDimensions& dimensions, uint64_t maxNumOfFrames);

    uint64_t NumOfFrames() const { return _NumOfFrames; }
    /// Of the frame that a tile record belongs to. What the record says of a dimension that the image has not makes no
    /// difference.
    uint64_t NumberOf(const CFrameIdx& idx) const
    {
        return uint64_t{idx.Z} * _Strides.Z + uint64_t{idx.C} * _Strides.C + uint64_t{idx.L} * _Strides.L +
               uint64_t{idx.T} * _Strides.T;
    }

private:
    CFrameIdx _Strides; ///< 0 on a dimension that the image has not
    uint64_t _NumOfFrames = 1;
};

/// The frame that a tile record belongs to; asserts that the image has it.
CFrame& FrameOfRecord(const CFrameIdx& idx, CMultiDimImage& image);

} // namespace Zel
