#include "CommonImageAccess/ImgDoc.h"

#include "CommonUtil/Assertion.h"

namespace CIA
{

using namespace CommonUtil;

CImgDoc::CImgDoc(const std::wstring& fileName, const std::vector<std::wstring>& expectedExtensions,
                 bool isFileBigEndian, bool strictMode)
    : CImgDocFileUnit(fileName, 0, expectedExtensions, isFileBigEndian, strictMode, nullptr)
{
}

CImgDoc::~CImgDoc() = default;

CImgDocFileUnit& CImgDoc::AddFileUnit(std::unique_ptr<CImgDocFileUnit> fileUnit)
{
    _FileUnitFileNames.insert(fileUnit->FileName());
    const uint32_t id = fileUnit->ID();
    const auto [entry, isNew] = _FileUnits.emplace(id, std::move(fileUnit));
    ZEL_ASSERT(isNew);
    return *entry->second;
}

const CMultiDimImages& CImgDoc::MultiDimImages()
{
    if (_MultiDimImages.empty())
    {
        CMultiDimImages images;
        if (MultiDimImages_init(images))
            _MultiDimImages = std::move(images);
    }
    return _MultiDimImages;
}

const StringMap& CImgDoc::BrixCustomProperties()
{
    if (_BrixCustomProperties.empty())
    {
        StringMap properties;
        if (BrixCustomProperties_init(properties))
            _BrixCustomProperties = std::move(properties);
    }
    return _BrixCustomProperties;
}

CMultiDimImage* CImgDoc::BrixGetGroup(uint32_t groupNumber)
{
    if (BrixGroups.empty())
    {
        std::vector<CMultiDimImage*> groups;
        for (const auto& [id, image] : MultiDimImages())
            groups.push_back(image.get());
        BrixGroups = std::move(groups);
    }
    ZEL_ASSERT(!BrixGroups.empty());
    ZEL_ASSERT(groupNumber < BrixGroups.size());
    return BrixGroups[groupNumber];
}

double& CImgDoc::RealWorldCoordOfDisplayWindow(DimensionType::E xOrY)
{
    ZEL_ASSERT(IsXOrY(xOrY));
    return _RealWorldCoordOfDisplayWindow[static_cast<size_t>(xOrY)];
}

bool CImgDoc::HaveImagesEqualNativeUnits(DimensionType::E xOrY) const
{
    ZEL_ASSERT(IsXOrY(xOrY));
    return _HaveImagesEqualNativeUnits[static_cast<size_t>(xOrY)];
}

void CImgDoc::SetHaveImagesEqualNativeUnits(DimensionType::E xOrY)
{
    ZEL_ASSERT(IsXOrY(xOrY));
    _HaveImagesEqualNativeUnits[static_cast<size_t>(xOrY)] = true;
}

} // namespace CIA
