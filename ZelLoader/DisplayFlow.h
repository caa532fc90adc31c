#pragma once
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <unordered_map>

namespace Zel
{

/// What the display process flow says of the images: which are hidden. The flow is checked once for all of them, when
/// the first one is asked for.
class CDisplayFlow
{
public:
    /// `imgColl` must outlive this.
    explicit CDisplayFlow(CZelMetaDataForImgColl& imgColl) : _imgColl(imgColl) {}

    /// True when the layer that shows this image is hidden. A flow that is missing or breaks a rule is a failed
    /// assertion, whichever image was asked for: layers are numbered from 0 without gaps, each has channels of which
    /// only the first one shows a stack or is an operator, and there are as many layers that show a stack as images.
    bool IsHiddenZelLayer(CZelMetaDataForMultiDimImg& image);

private:
    enum class EVisibility
    {
        Visible,
        Hidden,
        Contradictory ///< hidden by one layer, and shown by another that says nothing of it
    };

    void Check();
    void CheckLayer(CZelMetaDataForDispLayer& layer);
    void NoteVisibility(CZelMetaDataForDispChannel& channel, CZelMetaDataForMultiDimImg* image);

    CZelMetaDataForImgColl& _imgColl;
    bool _isChecked = false;
    uint32_t _numOfZelLayersFound = 0;
    std::unordered_map<int32_t, CZelMetaDataForMultiDimImg*> _imagesByStackID;
    std::unordered_map<const CZelMetaDataForMultiDimImg*, EVisibility> _visibility;
};

} // namespace Zel
