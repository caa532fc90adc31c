#include "ZelLoader/ZelImgDoc.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/DisplayFlow.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <cerrno>
#include <cstring>
#include <unordered_set>

namespace Zel
{

namespace
{

/// Where the root volume stands: behind the TIFF header.
constexpr uint64_t OffsetOfRootVolume = 8;

const std::vector<std::wstring>& ExpectedExtensions()
{
    static const std::vector<std::wstring> expectedExtensions = {L"zel"};
    return expectedExtensions;
}

/// Where an image keeps its pixels. The first frame decides for all of them.
struct CImageKind
{
    explicit CImageKind(CZelMetaDataForImgFrame& firstFrame)
        : IsKorImg(firstFrame.KorFile() != nullptr), IsVgImg(firstFrame.VectorGraphicsFrame() != nullptr),
          IsTiffImg(firstFrame.FrameTiffIfd() != nullptr && !IsKorImg)
    {
    }
    bool IsExactlyOne() const { return int{IsKorImg} + int{IsVgImg} + int{IsTiffImg} == 1; }

    bool IsKorImg;
    bool IsVgImg;
    bool IsTiffImg;
};

} // namespace

CZelImgDoc::CZelImgDoc(const wchar_t* fileName, bool strictMode)
    : CImgDoc(fileName, ExpectedExtensions(), false, strictMode), _TagTree(*this, strictMode), _AsTiff(FileName())
{
    if (errno == 0)
        ContinueCtor();
}

bool CZelImgDoc::ReadFileHeader()
{
    Byte endianType[3] = {};
    ReadData(endianType, 2);
    if (std::memcmp(endianType, "II", 3) != 0)
    {
        PAL_PutLogError(PAL_LOGERROR_ERROR, L"Error: Invalid File: Unexpected value in endian type field!", __FILE__,
                        __LINE__);
        return false;
    }
    const int fixedNum = ReadShort();
    if (fixedNum != 42)
    {
        ZEL_LOG("Unexpected: fixedNum=%d instead of 42!", fixedNum);
        return false;
    }
    _TagTree.SetOffsetOfFirstIfd(static_cast<uint32_t>(ReadInt32()));
    return true;
}

bool CZelImgDoc::ReadFileMetaData()
{
    RootNode = _TagTree.ReadVolume(0, OffsetOfRootVolume, SecondTagAbsent);
    if (!RootNode)
        return false;
    _MetaData = std::make_unique<CZelImgDocMetaData>(RootNode.get());
    return true;
}

CZelImgDocMetaData& CZelImgDoc::MetaData()
{
    ZEL_ASSERT(_MetaData);
    return *_MetaData;
}

CZelMetaDataForImgColl& CZelImgDoc::ImgColl()
{
    CZelMetaDataForImgColl* imgColl = MetaData().ImgColl();
    ZEL_ASSERT(imgColl);
    return *imgColl;
}

/// Looked at before anything else of the images: two of one ID would make the display flow's own checks fail, and the
/// host is to hear of a corrupt file.
bool CZelImgDoc::AreStackIDsUnique()
{
    std::unordered_set<uint32_t> stackIDs;
    for (const auto& image : *ImgColl().MultiDimImgs())
    {
        if (!stackIDs.insert(image->StackID()).second)
        {
            ZEL_LOG("Error: Duplicate multidim image ID %u!", image->StackID());
            errno = ENOEXEC;
            return false;
        }
    }
    return true;
}

bool CZelImgDoc::MultiDimImages_init(CMultiDimImages& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    if (!AreStackIDsUnique())
        return false;
    CDisplayFlow displayFlow(ImgColl());
    bool isAKorImageHidden = false;
    for (const auto& metaData : *ImgColl().MultiDimImgs())
    {
        ZEL_ASSERT(!metaData->ImgFrames()->empty());
        const CImageKind kind(*metaData->ImgFrames()->front());
        if (displayFlow.IsHiddenZelLayer(*metaData))
        {
            isAKorImageHidden = isAKorImageHidden || kind.IsKorImg;
            continue;
        }
        ZEL_ASSERT(kind.IsExactlyOne());
        if (kind.IsVgImg) // layers of vector graphics are left out on purpose
            continue;
        auto image = std::make_unique<CZelMultiDimImage>(*metaData, *this);
        if (errno != 0)
            return false;
        const uint32_t id = image->ID();
        varToInit.emplace(id, std::move(image));
    }
    std::vector<int32_t> stackIDs;
    for (const auto& [id, image] : varToInit)
        stackIDs.push_back(static_cast<int32_t>(id));
    InitializeVisibleDiplayLayersList(stackIDs);
    if (isAKorImageHidden) // not survivable by design of the format, and told only after all images were built
        oldAbortCommonUtil();
    return true;
}

void CZelImgDoc::InitializeVisibleDiplayLayersList(const std::vector<int32_t>& vecUnOrderedLayers)
{
    vecVisibleLayers.clear();
    CZelMetaDataForDisplayProcessFlow* flow = ImgColl().DisplayProcessFlow();
    if (!flow) // a document without images needs none
        return;
    const std::unordered_set<int32_t> unOrderedLayers(vecUnOrderedLayers.begin(), vecUnOrderedLayers.end());
    for (const auto& layer : *flow->DispLayers())
        for (const auto& channel : *layer->DispChannels())
        {
            // Here the tag's presence hides a channel, whatever it holds; whether an image is built depends on its
            // value.
            if (channel->ImgDspLayerHidden())
                continue;
            const int32_t* stackID = channel->StackToBeDisplayed();
            if (stackID && unOrderedLayers.contains(*stackID))
                vecVisibleLayers.push_back(*stackID);
        }
}

} // namespace Zel

std::unique_ptr<CIA::CImgDoc> CIA::NewImgDoc(const wchar_t* fileName, bool strictMode)
{
    return std::make_unique<Zel::CZelImgDoc>(fileName, strictMode);
}
