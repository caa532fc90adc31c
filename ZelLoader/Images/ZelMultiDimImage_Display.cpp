// How an image is displayed, and where its frame lies.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/ZelImgDoc.h"

namespace Zel
{

namespace
{

bool TwoDoublesOf(const CArrayStartAndSize<double>* numbers, const char* warning, std::string& value)
{
    if (!numbers)
    {
        ZEL_LOG("%s", warning);
        return false;
    }
    value = TwoDoubles(*numbers);
    return true;
}

bool Unit(const CArrayStartAndSize<wchar_t>* unit, const char* warning, std::string& value)
{
    if (!unit)
    {
        ZEL_LOG("%s", warning);
        return false;
    }
    value = A(TextOf(*unit));
    return true;
}

/// An axis that the file does not name is the one that stands there nearly always.
bool Axis(const int32_t* meaning, const char* warning, const char* usualAxis, std::string& value)
{
    if (!meaning)
        ZEL_LOG("%s", warning);
    value = meaning ? ToString(*meaning) : usualAxis;
    return true;
}

} // namespace

bool CZelMultiDimImage::ImgDispChannelProperty(const wchar_t* key, AC_VALUE_WITH_TYPE& value)
{
    return _ParentZelImgDoc.IterateDPFAndGetDisplayLayerAndChannel(StackID(), key, value);
}

bool CZelMultiDimImage::ImgPlaneProperty(const wchar_t* key, std::string& value)
{
    return _ParentZelImgDoc.IteratePlaneProperty(key, value);
}

bool CZelMultiDimImage::ImageFrameProperties(const wchar_t* key, std::string& value)
{
    CZelMetaDataForMultiDimImgProps* props = PropsOrComplain();
    if (!props)
        return false;
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameOrigin))
        return TwoDoublesOf(props->ImgFrameOriginRWC(), "Warning: tag 'ImgFrameOriginRWC' is missing!", value);
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameScale))
        return TwoDoublesOf(props->ImgFrameScaleRWC(), "Warning: tag 'ImgFrameScaleRWC' is missing!", value);
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameUnit))
        return Unit(props->ImgFrameUnitRWC(), "Warning: tag 'ImgFrameUnitRWC' is missing!", value);
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameYUnit))
        return Unit(props->ImgFrameYUnitRWC(), "Warning: tag 'ImgFrameUnitYRWC' is missing!", value);
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis0))
        return Axis(props->ImgAxis0Meaning(), "Warning: tag 'ImgAxis0Meaning' is missing so returning X!", "X", value);
    if (Equals(key, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis1))
        return Axis(props->ImgAxis1Meaning(), "Warning: tag 'ImgAxis1Meaning' is missing so returning Y!", "Y", value);
    return false;
}

/// A stack in a store, also one that is lost, never lies in a directory of the document.
bool CZelMultiDimImage::DbgDoesNotUseIFD0()
{
    if (UsesKorFile() || _IsKorFileMissing)
        return true;
    for (const auto& frame : *_MetaData.ImgFrames())
        if (CZelMetaDataForFrameTiffIfd* ifd = frame->FrameTiffIfd(); ifd && ifd->IdxOfTiffIfd() == 0)
            return false;
    return true;
}

} // namespace Zel
