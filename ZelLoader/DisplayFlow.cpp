#include "ZelLoader/DisplayFlow.h"

#include "CommonUtil/Assertion.h"

namespace Zel
{

bool CDisplayFlow::IsHiddenZelLayer(CZelMetaDataForMultiDimImg& image)
{
    if (!_isChecked)
        Check();
    const auto found = _visibility.find(&image);
    if (found == _visibility.end())
        return false;
    ZEL_ASSERT(found->second != EVisibility::Contradictory);
    return found->second == EVisibility::Hidden;
}

void CDisplayFlow::Check()
{
    CZelMetaDataForDisplayProcessFlow* flow = _imgColl.DisplayProcessFlow();
    ZEL_ASSERT(flow);
    const auto& images = *_imgColl.MultiDimImgs();
    for (const auto& image : images)
        _imagesByStackID.emplace(static_cast<int32_t>(image->StackID()), image.get());
    uint32_t expectedSecondTagValue = 0;
    for (const auto& layer : *flow->DispLayers())
    {
        ZEL_ASSERT(layer->StackIdx() == expectedSecondTagValue);
        ++expectedSecondTagValue;
        CheckLayer(*layer);
    }
    ZEL_ASSERT(_numOfZelLayersFound == images.size());
    _isChecked = true;
}

void CDisplayFlow::CheckLayer(CZelMetaDataForDispLayer& layer)
{
    const auto& channels = *layer.DispChannels();
    ZEL_ASSERT(!channels.empty());
    for (size_t i = 1; i < channels.size(); ++i)
        ZEL_ASSERT(!channels[i]->ImgDspLayerHidden() && !channels[i]->ImgDspOperType() &&
                   !channels[i]->StackToBeDisplayed());
    CZelMetaDataForDispChannel& firstChannel = *channels.front();
    if (const int32_t* operType = firstChannel.ImgDspOperType())
    {
        ZEL_ASSERT(!firstChannel.StackToBeDisplayed());
        ZEL_ASSERT(*operType == -1 || *operType == 1);
        return;
    }
    const int32_t* stackID = firstChannel.StackToBeDisplayed();
    ZEL_ASSERT(stackID);
    const auto found = _imagesByStackID.find(*stackID);
    ZEL_ASSERT(found != _imagesByStackID.end());
    ++_numOfZelLayersFound;
    NoteVisibility(firstChannel, found->second);
}

void CDisplayFlow::NoteVisibility(CZelMetaDataForDispChannel& channel, CZelMetaDataForMultiDimImg* image)
{
    EVisibility& visibility = _visibility[image];
    if (visibility == EVisibility::Contradictory)
        return;
    if (const bool* isHidden = channel.ImgDspLayerHidden())
        visibility = *isHidden ? EVisibility::Hidden : EVisibility::Visible;
    else if (visibility == EVisibility::Hidden)
        visibility = EVisibility::Contradictory;
}

} // namespace Zel
