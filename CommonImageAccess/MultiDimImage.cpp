#include "CommonImageAccess/MultiDimImage.h"

#include "CommonImageAccess/ObjectiveLens.h"
#include "CommonUtil/Log.h"

#include <cerrno>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// The lazy pattern of all containers: one that is not empty is returned as it is; else `init` fills a local one, which
/// is kept only on success, so that a failure or an exception leaves nothing behind.
template <typename Container, typename Init>
const Container& GetContainer(Container& cached, Init init)
{
    if (cached.empty())
    {
        Container container;
        if (init(container))
            cached = std::move(container);
    }
    return cached;
}

} // namespace

CMultiDimImage::CMultiDimImage(uint32_t ID, CImgDoc& parentImgDoc, bool isRealWorldSizeOrPixelSizeAvailable)
    : _ParentImgDoc(parentImgDoc), _ID(ID), _IsRealWorldSizeOrPixelSizeAvailable(isRealWorldSizeOrPixelSizeAvailable)
{
    errno = 0;
}

CMultiDimImage::~CMultiDimImage() = default;

bool CMultiDimImage::ZoomoutFactor_init(double& varToInit)
{
    varToInit = 1.0;
    return true;
}

const CDimensions& CMultiDimImage::MakeDimensions()
{
    GetContainer(_Dimensions, [this](CDimensions& varToInit) { return Dimensions_init(varToInit); });
    for (const auto& [type, dimension] : _Dimensions)
    {
        _DimensionsByType[static_cast<size_t>(type)] = dimension.get();
        if (IsFrameDifferentiatorCoordDimension(type))
            _FrameDimensions.Add(type);
    }
    return _Dimensions;
}

bool CMultiDimImage::Dimensions_init(CDimensions& varToInit)
{
    if (!DimensionHavingUnits_init(varToInit))
        return false;
    // Made now, counted when asked for: building the map must build neither channels nor levels.
    varToInit[DimensionType::DimensionType_C] = std::make_unique<CChannelDimension>(*this);
    varToInit[DimensionType::DimensionType_P] = std::make_unique<CPyramidDimension>(*this);
    for (const DimensionType::E type : GetMandatoryDimensions())
    {
        if (!varToInit.contains(type))
        {
            ZEL_LOG("Missing mandatory dimension '%s'!", DimensionTypeToString(type));
            return false;
        }
    }
    return true;
}

const CDimensionRefs& CMultiDimImage::SignificantDimensions()
{
    return GetContainer(_SignificantDimensions,
                        [this](CDimensionRefs& varToInit)
                        {
                            for (const auto& [type, dimension] : Dimensions())
                                if (IsMandatoryDimension(type) || dimension->NumOfPoints() > 1)
                                    varToInit[type] = dimension.get();
                            return true;
                        });
}

const CFrames& CMultiDimImage::MakeFrames()
{
    CFrames frames;
    if (!Frames_init(frames))
        return _Frames;
    std::vector<CFrame*> frameTable;
    frameTable.reserve(frames.size());
    for (const auto& [idx, frame] : frames)
        frameTable.push_back(frame.get());
    _FrameTable = std::move(frameTable);
    _LastFrame = frames.rbegin()->first;
    _Frames = std::move(frames);
    return _Frames;
}

bool CMultiDimImage::Frames_init(CFrames& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    std::vector<CDimension*> frameIdxDimensions;
    uint64_t numOfFrames = 1;
    const CDimensions& dimensions = Dimensions(); // before the number of frames, which may ask for what they tell
    const uint64_t maxNumOfFrames = MaxNumOfFrames();
    for (const auto& [type, dimension] : dimensions)
    {
        if (!IsFrameDifferentiatorCoordDimension(type))
            continue;
        frameIdxDimensions.push_back(dimension.get());
        numOfFrames *= dimension->NumOfPoints();
        ZEL_ASSERT(numOfFrames <= maxNumOfFrames); // a file can claim more points than it could ever hold frames
    }
    std::vector<uint32_t> chosenIdxValues;
    if (!Frames_init_recursive(varToInit, chosenIdxValues, frameIdxDimensions))
        return false;
    ZEL_ASSERT(!varToInit.empty());
    return true;
}

bool CMultiDimImage::Frames_init_recursive(CFrames& varToInit, std::vector<uint32_t>& chosenIdxValues,
                                           const std::vector<CDimension*>& frameIdxDimensions)
{
    if (chosenIdxValues.size() == frameIdxDimensions.size())
    {
        CFrameIdx idx;
        for (size_t i = 0; i < chosenIdxValues.size(); ++i)
            idx.SetSubIdx(frameIdxDimensions[i]->Type(), chosenIdxValues[i]);
        std::unique_ptr<CFrame> frame = Frame_init(idx);
        if (!frame)
            return false;
        if (!varToInit.emplace(idx, std::move(frame)).second)
            oldAbortCommonUtil();
        return true;
    }
    const uint32_t numOfPoints = frameIdxDimensions[chosenIdxValues.size()]->NumOfPoints();
    chosenIdxValues.push_back(0);
    for (uint32_t idx = 0; idx < numOfPoints; ++idx)
    {
        chosenIdxValues.back() = idx;
        if (!Frames_init_recursive(varToInit, chosenIdxValues, frameIdxDimensions))
            return false;
        ZEL_ASSERT(!varToInit.empty());
    }
    chosenIdxValues.pop_back();
    return true;
}

const CChannels& CMultiDimImage::Channels()
{
    return GetContainer(_Channels, [this](CChannels& varToInit) { return Channels_init(varToInit); });
}

CPixelFrameFormat& CMultiDimImage::ChannelOf(const CFrameIdx& frameIdx)
{
    const CChannels& channels = Channels();
    const auto found = channels.find(frameIdx.C);
    ZEL_ASSERT(found != channels.end() && found->second);
    return *found->second;
}

const std::vector<CVectorGraphicsImage>& CMultiDimImage::VectorGraphicsImages()
{
    return GetContainer(_VectorGraphicsImages, [this](std::vector<CVectorGraphicsImage>& varToInit)
                        { return VectorGraphicsImages_init(varToInit); });
}

CObjectiveLens* CMultiDimImage::ObjectiveLens()
{
    if (!_ObjectiveLens)
    {
        std::unique_ptr<CObjectiveLens> lens;
        if (ObjectiveLens_init(lens))
            _ObjectiveLens = std::move(lens);
        else
            ZEL_LOG("Error, returning NULL");
    }
    return _ObjectiveLens.get();
}

const std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& CMultiDimImage::MakeDeepZoomPyramidLevels()
{
    return GetContainer(_DeepZoomPyramidLevels, [this](std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& varToInit)
                        { return DeepZoomPyramidLevels_init(varToInit); });
}

uint32_t CMultiDimImage::DeepZoomTilePixelWidth(uint32_t levelID)
{
    uint32_t width = 0xFFFFFFFF;
    return DeepZoomTilePixelWidth_init(width, levelID) ? width : 0xFFFFFFFF;
}

uint32_t CMultiDimImage::DeepZoomTilePixelHeight(uint32_t levelID)
{
    uint32_t height = 0xFFFFFFFF;
    return DeepZoomTilePixelHeight_init(height, levelID) ? height : 0xFFFFFFFF;
}

int32_t CMultiDimImage::LeftCroppingOfLevel0TileMatrixInPixels()
{
    return _LeftCroppingOfLevel0TileMatrixInPixels.Get(
        [this](int32_t& varToInit) { return LeftCroppingOfLevel0TileMatrixInPixels_init(varToInit); });
}

int32_t CMultiDimImage::TopCroppingOfLevel0TileMatrixInPixels()
{
    return _TopCroppingOfLevel0TileMatrixInPixels.Get(
        [this](int32_t& varToInit) { return TopCroppingOfLevel0TileMatrixInPixels_init(varToInit); });
}

} // namespace CIA
