#include "ZelLoader/Images/DimensionInference.h"

#include "CommonImageAccess/BrixUnits.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <cerrno>

namespace Zel
{

namespace
{

/// What an entry of a dimension means, as the file numbers it.
enum EDimMeaning : int32_t
{
    MeansZ = 1,
    MeansT = 2,
    MeansL = 3,
    MeansC = 4
};

/// A step and its unit; 0 without a unit where the file has none.
struct CStep
{
    double Value = 0;
    std::wstring Units;
};

} // namespace

bool CDimensionInference::AddDimensions(CDimensions& varToInit)
{
    return GetDimDataFromDimChannels() && GetOrValidateDimMetaDatasFromFrames() &&
           FinalizeDimCacheUsingZelFieldForNumOfPointsPerDim(varToInit);
}

bool CDimensionInference::GetDimDataFromDimChannels()
{
    _order.Clear();
    for (const auto& dimension : *_image.MetaData().Dimensions())
    {
        const auto& channels = *dimension->DimensionChannels();
        if (channels.empty())
        {
            ZEL_LOG("Warning: encountered a 2007 tag with no 2008 child tags!");
            _order.Add(DimensionType::DimensionType_Dummy);
            continue;
        }
        CZelMetaDataForDimensionChannel& firstDimChannel = *channels.front();
        const int32_t* meaning = firstDimChannel.ImgDimMeaning();
        if (!meaning && !firstDimChannel.ImgDimChannelName())
        {
            ZEL_LOG("ERROR: Could not find the 'dimension meaning' tag!");
            errno = ENOEXEC;
            return false;
        }
        for (const auto& channel : channels)
            if (const int32_t* meaningOfChannel = channel->ImgDimMeaning())
                ZEL_ASSERT(meaning && *meaningOfChannel == *meaning);
        if (!GetDimDataFromDimChannel(firstDimChannel))
            return false;
    }
    _order.SetIsKnown();
    return true;
}

bool CDimensionInference::GetDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel)
{
    const int32_t* meaning = channel.ImgDimMeaning();
    switch (meaning ? *meaning : MeansC) // an entry with a name alone is a channel
    {
    case MeansZ:
        _order.Add(DimensionType::DimensionType_Z);
        GetZDimDataFromDimChannel(channel);
        return true;
    case MeansT:
        _order.Add(DimensionType::DimensionType_T);
        GetTDimDataFromDimChannel(channel);
        return true;
    case MeansL:
        _order.Add(DimensionType::DimensionType_L);
        GetLDimDataFromDimChannel(channel);
        return true;
    case MeansC:
        _order.Add(DimensionType::DimensionType_C);
        return true;
    default:
        FailAssertion(__FILE__, __LINE__);
    }
}

void CDimensionInference::Put(DimensionType::E type, double firstPoint, double gap)
{
    CGatheredDim dim;
    dim._FirstPoint = firstPoint;
    dim._GapBetweenPoints = gap;
    dim._DimType = type;
    _dimMetaDatas[type] = std::move(dim);
}

void CDimensionInference::GetZDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel)
{
    CZelMetaDataForImgZIncrement* increment = channel.ImgZIncrement();
    if (!channel.ImgZStart())
    {
        if (increment)
            ZEL_LOG("Warning : Start and Unit's are absent for Dimensition Z but Step is Present");
        PutZ(NoFirstPoint, 0);
        return;
    }
    const std::wstring startUnits = TextOf(channel.ImgZStart()->ZUnit());
    const double start = ConvertToBrixZDimUnits(ValueOf(channel.ImgZStart()->ZStart()), startUnits);
    CStep step;
    if (increment)
        step = {ValueOf(increment->ZStep()), TextOf(increment->ZStepUnits())};
    if (step.Units != startUnits)
        ZEL_LOG("WARNING: unexpected: original z-start & z-step units differ!");
    if (step.Value == 0)
        ZEL_LOG("Warning: Tag 'imgZStep' absent or has value '0' which is illogical for evenly spaced frames! Also "
                "imgZStart is present with value=%f!",
                start);
    else
        step.Value = ConvertToBrixZDimUnits(step.Value, step.Units);
    PutZ(start, step.Value);
}

void CDimensionInference::PutZ(double firstPoint, double gap)
{
    // A second Z is told with and without a start, a second T or lambda only with one.
    if (_dimMetaDatas.contains(DimensionType::DimensionType_Z))
        ZEL_LOG("Warning Z Dimention is already present");
    Put(DimensionType::DimensionType_Z, firstPoint, gap);
}

void CDimensionInference::GetTDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel)
{
    CZelMetaDataForImgTimeIncrement* increment = channel.ImgTimeIncrement();
    CStep step;
    if (increment)
        step = {ValueOf(increment->TStep()), TextOf(increment->TStepUnits())};
    if (!channel.ImgTimeStart())
    {
        if (!increment)
        {
            Put(DimensionType::DimensionType_T, NoFirstPoint, 0);
            return;
        }
        // Unlike Z and lambda, T keeps a step that has no start.
        ZEL_LOG("Warning : Start and Unit's are absent for Dimensition T but Step is Present");
        Put(DimensionType::DimensionType_T, 0, ConvertToBrixTDimUnits(step.Value, step.Units));
        return;
    }
    const double start =
        ConvertToBrixTDimUnits(ValueOf(channel.ImgTimeStart()->TStart()), TextOf(channel.ImgTimeStart()->TUnit()));
    if (step.Value == 0)
        ZEL_LOG("WARNING: imgTStep is 0! Considering that this consciously specifies that T dimension has frames "
                "unevenly spaced in it...");
    const double gap = ConvertToBrixTDimUnits(step.Value, step.Units);
    if (_dimMetaDatas.contains(DimensionType::DimensionType_T))
        ZEL_LOG("Warning Dimention T is already Present");
    Put(DimensionType::DimensionType_T, start, gap);
}

void CDimensionInference::GetLDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel)
{
    CZelMetaDataForImgLambdaIncrement* increment = channel.ImgLambdaIncrement();
    if (!channel.ImgLambdaStart())
    {
        if (increment)
            ZEL_LOG("Warning : Start and Unit's are absent for Dimensition L but Step is Present");
        Put(DimensionType::DimensionType_L, NoFirstPoint, 0);
        return;
    }
    ZEL_ASSERT(increment);
    const double start =
        ConvertToBrixLDimUnits(ValueOf(channel.ImgLambdaStart()->LStart()), TextOf(channel.ImgLambdaStart()->LUnit()));
    const double step = ConvertToBrixLDimUnits(ValueOf(increment->LStep()), TextOf(increment->LStepUnits()));
    if (_dimMetaDatas.contains(DimensionType::DimensionType_L))
        ZEL_LOG("Warning L Dimention is already Present");
    Put(DimensionType::DimensionType_L, start, step);
}

bool CDimensionInference::FinalizeDimCacheUsingZelFieldForNumOfPointsPerDim(CDimensions& varToInit)
{
    const auto& dims = _order.ExistenceAndIdxOfZelZtlcDims();
    const size_t numOfChannelDims = _order.Has(DimensionType::DimensionType_C) ? 1 : 0;
    ZEL_ASSERT(_dimMetaDatas.size() + numOfChannelDims == dims.size());
    if (_order.NumOfPointsPerDimWithoutDummyEles().size() != dims.size())
        ZEL_LOG("size of numOfPointsPerDim should not equal to  size of ExistenceAndIdxOfZelZtlcDims");
    for (auto& [type, dimMetaData] : _dimMetaDatas)
    {
        if (!dimMetaData.Points.empty())
            LogThatStepIsZero();
        dimMetaData.NumOfPoints = CountOf(type);
        if (varToInit.contains(type))
            ZEL_LOG("Warnig : Element is already present");
        varToInit[type] = std::make_unique<CZelNonPixelDimensionWithUnits>(_image, std::move(dimMetaData));
    }
    return true;
}

uint32_t CDimensionInference::CountOf(DimensionType::E type)
{
    const CNumOfPointsPerDim& counts = _order.NumOfPointsPerDimWithoutDummyEles();
    const auto found = counts.find(type);
    ZEL_ASSERT(found != counts.end());
    return found->second;
}

void CDimensionInference::LogThatStepIsZero()
{
    ZEL_LOG("Warnign! . If the step value is zero then we need to calculate the points by reading the framesBut it is "
            "one because the number of point is may be 1 (number of point is present at tag number 2007");
}

} // namespace Zel
