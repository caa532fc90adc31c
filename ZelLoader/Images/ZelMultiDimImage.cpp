#include "ZelLoader/Images/ZelMultiDimImage.h"

#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/DimensionInference.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <cerrno>

namespace Zel
{

CZelMultiDimImage::CZelMultiDimImage(CZelMetaDataForMultiDimImg& metaData, CZelImgDoc& parentImgDoc)
    : CMultiDimImage(metaData.StackID(), parentImgDoc, false), _MetaData(metaData), _ParentZelImgDoc(parentImgDoc),
      _DimensionOrder(metaData)
{
}

CZelMetaDataForMultiDimImgProps* CZelMultiDimImage::PropsOrComplain()
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    if (!props)
        ZEL_LOG("Error: mandatory tag 'MultiDimImgProps' is missing!");
    return props;
}

const wchar_t* CZelMultiDimImage::Name()
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    const CArrayStartAndSize<wchar_t>* name = props ? props->ImgStackName() : nullptr;
    if (!name)
        return L"";
    name->CheckLen();
    return name->Arr;
}

std::wstring CZelMultiDimImage::CreationTime()
{
    CZelMetaDataForMultiDimImgProps* props = PropsOrComplain();
    if (!props)
    {
        errno = ENOEXEC;
        return {};
    }
    const int64_t* time = props->ImgCreationTime();
    if (!time)
    {
        ZEL_LOG("Warning: tag 'ImgCreationTime' is missing!");
        return {};
    }
    return ToWide(ToUtcW3CTimeString(*time));
}

int32_t CZelMultiDimImage::ImageStackType()
{
    CZelMetaDataForMultiDimImgProps* props = PropsOrComplain();
    if (!props)
    {
        errno = ENOEXEC;
        return -1;
    }
    const int32_t* stackType = props->ImgStackType();
    if (!stackType)
    {
        ZEL_LOG("Warning: tag 'ImgStackType' is missing!");
        return -1;
    }
    return *stackType;
}

void CZelMultiDimImage::DbgValidateNullDeepZoomTile()
{
    const bool usesKorFile = UsesKorFile();
    ZEL_ASSERT(usesKorFile);
}

bool CZelMultiDimImage::DimensionHavingUnits_init(CDimensions& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    if (!XyDimensions_init(varToInit))
        return false;
    ZEL_ASSERT(varToInit.size() == 2);
    return CDimensionInference(*this, _DimensionOrder).AddDimensions(varToInit);
}

bool CZelMultiDimImage::XyDimensions_init(CDimensions& varToInit)
{
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    if (!props)
    {
        ZEL_LOG("Missing mandatory tag 2001\\2005 (MultiDimImgProps)!!!");
        return false;
    }
    for (const DimensionType::E type : {DimensionType::DimensionType_X, DimensionType::DimensionType_Y})
        varToInit[type] = std::make_unique<CZelDimensionWithPixels>(type, *this, *props);
    return true;
}

bool CZelMultiDimImage::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    CZelMetaDataForMultiDimImgProps* props = _MetaData.MultiDimImgProps();
    ZEL_ASSERT(props);
    double x = 0;
    double y = 0;
    if (const CArrayStartAndSize<double>* origin = props->ImgFrameOriginRWC())
    {
        ZEL_ASSERT(origin->Size == 2);
        x = origin->Arr[0];
        y = origin->Arr[1];
    }
    else
    {
        const size_t numOfImages = _ParentZelImgDoc.MultiDimImages().size();
        ZEL_LOG("Note: Missing mandatory tag 2001\\2005\\2018!!!");
        ZEL_LOG("This is acceptable if there is just one multi-dim image...");
        ZEL_LOG("No. of multidim images: %u", static_cast<unsigned>(numOfImages));
        if (numOfImages != 1)
            return false;
    }
    const auto add = [&](DimensionType::E type, double value)
    {
        const auto found = Dimensions().find(type);
        ZEL_ASSERT(found != Dimensions().end());
        varToInit[type] = MakeOwnCoord(*found->second, value);
    };
    add(DimensionType::DimensionType_X, x);
    add(DimensionType::DimensionType_Y, y);
    return true;
}

bool CZelMultiDimImage::PixelOrRealWorldWidth_init(double& varToInit)
{
    varToInit = PixelWidthOrHeight(true);
    return true;
}

bool CZelMultiDimImage::PixelOrRealWorldHeight_init(double& varToInit)
{
    varToInit = PixelWidthOrHeight(false);
    return true;
}

double CZelMultiDimImage::PixelWidthOrHeight(bool isWidth)
{
    ZEL_ASSERT(!_MetaData.ImgFrames()->empty());
    CZelMetaDataForImgFrame& firstFrame = *_MetaData.ImgFrames()->front();
    const CArrayStartAndSize<int32_t>* boundary = nullptr;
    if (UsesKorFile())
    {
        ZEL_ASSERT(firstFrame.KorFile());
        boundary = firstFrame.KorFile()->ImgBoundary();
    }
    else
    {
        if (_IsKorFileMissing)
            ThrowWithErrno(EREMOTE, "KOR file missing! TODO: try and read coarse data.");
        ZEL_ASSERT(firstFrame.PixelFrameDataProperties());
        boundary = firstFrame.PixelFrameDataProperties()->ImgBoundary();
    }
    ZEL_ASSERT(boundary && boundary->Size == 4);
    ZEL_ASSERT(boundary->Arr[0] == 0 && boundary->Arr[1] == 0);
    return boundary->Arr[isWidth ? 2 : 3];
}

uint32_t CZelMultiDimImage::PixelWidthForLevel(uint32_t levelID)
{
    uint64_t width = PixelWidth();
    for (uint32_t level = 0; level < levelID; ++level)
        width = (width + 1) / 2;
    return ToUint32WithCheck(width);
}

void CZelMultiDimImage::GetCroppedLevelImageSize(uint32_t levelIdx, std::array<int32_t, 4>& rect)
{
    const auto& levels = DeepZoomPyramidLevels();
    ZEL_ASSERT(levelIdx < levels.size() && levels[levelIdx]);
    CDeepZoomPyramidLevel& level = *levels[levelIdx];
    rect[2] = ToIntegerWithCheck<int32_t>(PixelWidth() / level.ZoomoutFactor());
    rect[3] = ToIntegerWithCheck<int32_t>(PixelHeight() / level.ZoomoutFactor());
    rect[0] = ToIntegerWithCheck<int32_t>(myRound(level.getFirstPointForCrop(true)));
    rect[1] = ToIntegerWithCheck<int32_t>(myRound(level.getFirstPointForCrop(false)));
}

bool CZelMultiDimImage::LeftCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit)
{
    return CroppingOfLevel0_init(varToInit, 0);
}

bool CZelMultiDimImage::TopCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit)
{
    return CroppingOfLevel0_init(varToInit, 1);
}

bool CZelMultiDimImage::CroppingOfLevel0_init(int32_t& varToInit, uint32_t idx)
{
    if (!UsesKorFile())
    {
        varToInit = 0;
        return true;
    }
    ZEL_ASSERT(!_MetaData.ImgFrames()->empty() && _MetaData.ImgFrames()->front()->KorFile());
    const CArrayStartAndSize<int32_t>* shift =
        _MetaData.ImgFrames()->front()->KorFile()->TileMatrixPixelOriginShiftFromCroppedImgPixelOrigin();
    if (!shift || shift->Size <= 1)
        return false;
    varToInit = shift->Arr[idx];
    return true;
}

} // namespace Zel
