// The channels of a stack and their display limits.

#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelChannel.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <algorithm>

namespace Zel
{

namespace
{

/// The meaning that a channel's entry has; one with a name alone has none, and is a channel all the same.
constexpr int32_t MeansChannel = 4;

constexpr double HighestValueOf1Byte = 255;
constexpr double HighestValueOf2Bytes = 65535;

} // namespace

const std::vector<std::unique_ptr<CZelMetaDataForDimensionChannel>>*
CZelMultiDimImage::EntriesOfChannelDimension(uint32_t& itsNumber)
{
    itsNumber = 0;
    for (const auto& dimension : *_MetaData.Dimensions())
    {
        const auto* entries = dimension->DimensionChannels();
        if (entries->empty())
        {
            ZEL_LOG("Warning: found an empty Dimension metadata tag, ignoring...");
            continue;
        }
        CZelMetaDataForDimensionChannel& firstEntry = *entries->front();
        const int32_t* meaning = firstEntry.ImgDimMeaning();
        ZEL_ASSERT(meaning || firstEntry.ImgDimChannelName());
        if (!meaning || *meaning == MeansChannel)
            return entries;
        ++itsNumber;
    }
    return nullptr;
}

bool CZelMultiDimImage::Channels_init(CChannels& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    uint32_t channelDimIdx = 0;
    const auto* entries = EntriesOfChannelDimension(channelDimIdx);
    if (!entries)
    {
        varToInit.emplace(0, std::make_unique<CZelChannel>(0, nullptr, *this));
        return true;
    }
    const CArrayStartAndSize<uint32_t>& numOfPointsPerDim = _DimensionOrder.NumOfPointsPerDim();
    const auto numOfZtlcDims = static_cast<uint32_t>(_DimensionOrder.ExistenceAndIdxOfZelZtlcDims().size());
    ZEL_ASSERT(numOfPointsPerDim.Size >= numOfZtlcDims);
    const uint32_t numOfDummyEles = numOfPointsPerDim.Size - numOfZtlcDims;
    ZEL_ASSERT(numOfDummyEles <= 1);
    const uint32_t idxOfCount = channelDimIdx + numOfDummyEles; // a dummy is taken to stand before the channels
    ZEL_ASSERT(idxOfCount < numOfPointsPerDim.Size);
    AddChannels(varToInit, *entries, numOfPointsPerDim.Arr[idxOfCount]);
    ZEL_ASSERT(!varToInit.empty());
    return true;
}

void CZelMultiDimImage::AddChannels(CChannels& varToInit,
                                    const std::vector<std::unique_ptr<CZelMetaDataForDimensionChannel>>& entries,
                                    uint32_t numOfChannelsAsPerNumOfPointsPerDim)
{
    ZEL_ASSERT(entries.size() >= numOfChannelsAsPerNumOfPointsPerDim);
    const bool junkDimChannelsForChannelDimArePresent = entries.size() > numOfChannelsAsPerNumOfPointsPerDim;
    uint32_t numOfValidDimChannelsForChannelDim = 0;
    for (const auto& entry : entries)
    {
        if (junkDimChannelsForChannelDimArePresent && !entry->Wavelength())
        {
            ZEL_LOG("A channel entry without a wavelength is one too many, ignoring...");
            continue;
        }
        varToInit.emplace(numOfValidDimChannelsForChannelDim,
                          std::make_unique<CZelChannel>(numOfValidDimChannelsForChannelDim, entry.get(), *this));
        ++numOfValidDimChannelsForChannelDim;
    }
    if (numOfValidDimChannelsForChannelDim != numOfChannelsAsPerNumOfPointsPerDim)
    {
        ZEL_LOG("Even the 'wavelength' field logic has failed to select the number of dimChannels that should match "
                "numOfChannelsAsPerNumOfPointsPerDim!!!");
        oldAbortCommonUtil();
    }
}

bool CZelMultiDimImage::LUTInfoShadowHighlight(uint32_t channelId, uint32_t channelDepth, int32_t& shadow,
                                               int32_t& highlight)
{
    double dShadow = 0;
    double dHighlight = 0;
    if (!CheckLutInfo_DimensionChannel2007Node(channelId, dShadow, dHighlight) &&
        !CheckLutInfo_DimensionChannel2005Node(dShadow, dHighlight))
        return false;
    const double highestValue = channelDepth == 1 ? HighestValueOf1Byte : HighestValueOf2Bytes;
    shadow = std::max(0, ToIntegerWithCheck<int32_t>(myRound(dShadow)));
    highlight = ToIntegerWithCheck<int32_t>(std::min(myRound(dHighlight), highestValue));
    return true;
}

/// The entry is found by the second tag of its node, which need not be the channel's ID in the model.
bool CZelMultiDimImage::CheckLutInfo_DimensionChannel2007Node(uint32_t channelId, double& dShadow, double& dHighlight)
{
    for (const auto& dimension : *_MetaData.Dimensions())
        for (const auto& entry : *dimension->DimensionChannels())
        {
            const CArrayStartAndSize<double>* limits = entry->ImgDisplayLimits();
            if (!limits || entry->DbgNode()->SecondTag() != channelId)
                continue;
            ZEL_ASSERT(limits->Size >= 2);
            dShadow = limits->Arr[0];
            dHighlight = limits->Arr[1];
            return true;
        }
    return false;
}

bool CZelMultiDimImage::CheckLutInfo_DimensionChannel2005Node(double& dShadow, double& dHighlight)
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    const CArrayStartAndSize<double>* limits = props ? props->ImgDisplayLimits() : nullptr;
    if (!limits)
        return false;
    ZEL_ASSERT(limits->Size >= 2);
    dShadow = limits->Arr[0];
    dHighlight = limits->Arr[1];
    return true;
}

} // namespace Zel
