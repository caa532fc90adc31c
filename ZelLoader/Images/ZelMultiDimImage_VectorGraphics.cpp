// What users have drawn on a stack.

#include "CommonUtil/Assertion.h"
#include "ZelLoader/Images/VectorGraphicsReader.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/ZelImgDoc.h"

namespace Zel
{

bool CZelMultiDimImage::VectorGraphicsImages_init(std::vector<CVectorGraphicsImage>& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    CVectorGraphicsReader reader(_ParentZelImgDoc, _ParentZelImgDoc.TagTree(), varToInit);
    const auto readAll = [&reader](const auto& blobs)
    {
        for (const auto& blob : blobs)
            if (!reader.VectorGraphicsImages_initFromBlob(*blob->DbgNode()))
                return false;
        return true;
    };
    if (!readAll(*_MetaData.ZelLayerBlobs()))
        return false;
    for (const auto& frame : *_MetaData.ImgFrames())
        if (!readAll(*frame->FrameBlobs()))
            return false;
    for (const auto& channelProp : *_MetaData.ChannelProps())
        if (!readAll(*channelProp->ChannelBlobs()))
            return false;
    return readAll(*_ParentZelImgDoc.ImgColl().ZelFileBlobs());
}

} // namespace Zel
