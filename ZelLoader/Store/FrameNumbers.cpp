#include "ZelLoader/Store/FrameNumbers.h"

#include "CommonUtil/Assertion.h"

namespace Zel
{

CFrameNumbers::CFrameNumbers(const CDimensions& dimensions, uint64_t maxNumOfFrames)
{
    for (const auto& [type, dimension] : dimensions)
    {
        if (!IsFrameDifferentiatorCoordDimension(type))
            continue;
        _Strides.SetSubIdx(type, static_cast<uint32_t>(_NumOfFrames));
        _NumOfFrames *= dimension->NumOfPoints();
        ZEL_ASSERT(_NumOfFrames <= maxNumOfFrames); // also before the next product
    }
}

CFrame& FrameOfRecord(const CFrameIdx& idx, CMultiDimImage& image)
{
    CFrame* frame = image.FindFrame(idx);
    if (!frame)
    {
        CFrameIdx idxOnDimensions = idx;
        for (const DimensionType::E type : FrameDifferentiators)
            if (!image.FindDimension(type))
                idxOnDimensions.SetSubIdx(type, 0);
        frame = image.FindFrame(idxOnDimensions);
    }
    ZEL_ASSERT(frame);
    return *frame;
}

} // namespace Zel
