// What the frames of an image tell about its dimensions.

#include "CommonImageAccess/BrixUnits.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/DimensionInference.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <algorithm>
#include <cerrno>
#include <optional>

namespace Zel
{

namespace
{

template <typename CoordMetaData>
std::optional<double> GetCoordValueFromFrameCoordMetaData(CoordMetaData* coord, DimensionType::E type)
{
    if (!coord)
        return {};
    return ConvertToBrixUnits(ValueOf(coord->Value()), TextOf(coord->Units()), type);
}

/// The coordinate that a frame has on a dimension, in model units; nothing when it tells none.
std::optional<double> CoordOfFrame(CZelMetaDataForFrameProperties& frameProperties, DimensionType::E type)
{
    switch (type)
    {
    case DimensionType::DimensionType_Z:
        return GetCoordValueFromFrameCoordMetaData(frameProperties.ZCoordOfFrame(), type);
    case DimensionType::DimensionType_T:
        return GetCoordValueFromFrameCoordMetaData(frameProperties.TCoordOfFrame(), type);
    case DimensionType::DimensionType_L:
        return GetCoordValueFromFrameCoordMetaData(frameProperties.LCoordOfFrame(), type);
    default:
        FailAssertion(__FILE__, __LINE__);
    }
}

} // namespace

bool CDimensionInference::GetOrValidateDimMetaDatasFromFrames()
{
    if (!_image.MetaData().NumOfPointsPerDim()) // needed by every stack, also by one without any of these dimensions
    {
        errno = ENOEXEC;
        return false;
    }
    const auto& frames = *_image.MetaData().ImgFrames();
    if (!CountFrames(frames.size()))
        return false;
    for (uint64_t i = 0; i < frames.size(); ++i)
        if (CZelMetaDataForFrameProperties* frameProperties = frames[i]->FrameProperties())
            GetOrValidateDimMetaDatasFromFrame(*frameProperties, DontAddToPointsOfTDim(i));
    return CloseGatheredDims();
}

bool CDimensionInference::CountFrames(uint64_t frameCount)
{
    MultiplyCounts(true);
    if (_productOfCounts == frameCount)
        return true;
    if (!_image.UsesKorFile() && !_image.IsKorFileMissing())
    {
        ZEL_LOG("Warning : KOR File is  missing...");
        return false;
    }
    // The frames of a store may stand for all channels at once.
    MultiplyCounts(false);
    if (_productOfCounts != frameCount)
        ZEL_LOG("Warnign! frameCount is not equal to  productOfNumOfPointsOfDimsExceptChannelDim");
    return true;
}

void CDimensionInference::MultiplyCounts(bool withChannels)
{
    _productOfCounts = 1;
    _numOfFramesAfterWhichTimeIndexIncrements = 1;
    _tDimEncountered = false;
    bool tDimHasMultiplePoints = false;
    for (const DimensionType::E type : _order.ExistenceAndIdxOfZelZtlcDims())
    {
        const uint32_t count = CountOf(type);
        if (type == DimensionType::DimensionType_T)
        {
            _tDimEncountered = true;
            tDimHasMultiplePoints = count > 1;
        }
        if (type == DimensionType::DimensionType_C && !withChannels)
            continue;
        _productOfCounts = CutProduct(_productOfCounts, count);
        if (!tDimHasMultiplePoints)
            _numOfFramesAfterWhichTimeIndexIncrements = _productOfCounts;
    }
}

/// A point of T is taken from the first frame of each of its steps only.
bool CDimensionInference::DontAddToPointsOfTDim(uint64_t frameNumber)
{
    const auto t = _dimMetaDatas.find(DimensionType::DimensionType_T);
    if (!_tDimEncountered || t == _dimMetaDatas.end())
        return true;
    if (t->second.Points.size() == CountOf(DimensionType::DimensionType_T))
        return true;
    ZEL_ASSERT(_numOfFramesAfterWhichTimeIndexIncrements != 0);
    return frameNumber % _numOfFramesAfterWhichTimeIndexIncrements != 0;
}

void CDimensionInference::GetOrValidateDimMetaDatasFromFrame(CZelMetaDataForFrameProperties& frameProperties,
                                                             bool dontAddToPointsOfTDim)
{
    for (auto& [type, dimMetaData] : _dimMetaDatas)
        GetOrValidateDimMetaDataFromFrame(dimMetaData, frameProperties, dontAddToPointsOfTDim);
}

void CDimensionInference::GetOrValidateDimMetaDataFromFrame(CGatheredDim& dimMetaData,
                                                            CZelMetaDataForFrameProperties& frameProperties,
                                                            bool dontAddToPointsOfTDim)
{
    const std::optional<double> coordValue = CoordOfFrame(frameProperties, dimMetaData._DimType);
    if (!coordValue)
    {
        CountFrameWithoutCoordinate(dimMetaData);
        return;
    }
    IfNeededUpdateGapBetweenPointsForUnevenlySpacedFrame(dimMetaData);
    ValidateFirstPointVsCoordOfThisFrame(dimMetaData, *coordValue);
    ValidateConvertedCoordValueAndIfNeededAddToPoints(dimMetaData, *coordValue, dontAddToPointsOfTDim);
}

/// Frames without coordinates on a dimension without a start give it the points 1, 2, 3 and so on.
void CDimensionInference::CountFrameWithoutCoordinate(CGatheredDim& dimMetaData)
{
    const auto& dims = _order.ExistenceAndIdxOfZelZtlcDims();
    const auto i = static_cast<size_t>(std::find(dims.begin(), dims.end(), dimMetaData._DimType) - dims.begin());
    const CArrayStartAndSize<uint32_t>& numOfPointsPerDim = _order.NumOfPointsPerDim();
    ZEL_ASSERT(i < numOfPointsPerDim.Size);
    const uint32_t n = numOfPointsPerDim.Arr[i]; // as it stands, dummies or not
    if (dimMetaData._FirstPoint == NoFirstPoint && n > dimMetaData.Points.size())
        dimMetaData.AddPoint(static_cast<double>(dimMetaData.Points.size() + 1));
}

void CDimensionInference::IfNeededUpdateGapBetweenPointsForUnevenlySpacedFrame(CGatheredDim& dimMetaData)
{
    if (dimMetaData._GapBetweenPoints == 0)
        return;
    dimMetaData._GapBetweenPoints = 0;
    ZEL_LOG("Warning! found a coordinate absolute value for %s even though this dimension was marked as evenly spaced! "
            "So now re-marking as being unevenly spaced...",
            DimensionTypeToString(dimMetaData._DimType));
}

/// Says nothing of use for nearly every file; what it says is kept because logs are compared.
void CDimensionInference::ValidateFirstPointVsCoordOfThisFrame(const CGatheredDim& dimMetaData, double coordValue)
{
    const bool isAsExpected = !dimMetaData.Points.empty() && dimMetaData._FirstPoint == NoFirstPoint &&
                              approximatelyEqual(coordValue, dimMetaData._FirstPoint);
    if (!isAsExpected)
        ZEL_LOG("Warning:The input file has invalid data Or Optional fields may be present ");
}

void CDimensionInference::ValidateConvertedCoordValueAndIfNeededAddToPoints(CGatheredDim& dimMetaData,
                                                                            double coordValue,
                                                                            bool dontAddToPointsOfTDim)
{
    if (dimMetaData._DimType == DimensionType::DimensionType_T && dontAddToPointsOfTDim)
        return;
    const std::vector<double>& points = dimMetaData.Points;
    if (dimMetaData.PointsSeen.contains(coordValue)) // frames that share a coordinate add one point
        return;
    ZEL_ASSERT(points.size() < CountOf(dimMetaData._DimType));
    if (points.size() > 2)
        ZEL_ASSERT(points[0] < points[1] ? coordValue > points.back() : coordValue < points.back());
    dimMetaData.AddPoint(coordValue);
}

bool CDimensionInference::CloseGatheredDims()
{
    for (auto& [type, dimMetaData] : _dimMetaDatas)
    {
        if (dimMetaData._GapBetweenPoints != 0)
        {
            if (!dimMetaData.Points.empty())
                ZEL_LOG("Warning dimMetaData.Points should be empty");
            dimMetaData.Points.clear();
        }
        else if (dimMetaData.Points.empty())
        {
            if (CountOf(type) == 1)
                LogThatStepIsZero();
            if (type != DimensionType::DimensionType_Z && type != DimensionType::DimensionType_T)
                return false;
            dimMetaData.AddPoint(0.0);
        }
    }
    return true;
}

} // namespace Zel
