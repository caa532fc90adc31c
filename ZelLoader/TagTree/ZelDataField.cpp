#include "ZelLoader/TagTree/ZelDataField.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <algorithm>

namespace Zel
{

namespace
{

// Below this a walk costs less than a table.
constexpr size_t NumOfChildrenOfBigVolume = 32;

} // namespace

void CZelDataField::DbgPrintAllPointers() const
{
    ZEL_LOG("%p: tag %u, second tag %u", static_cast<const void*>(this), _Tag, _SecondTag);
}

void CZelDataFieldForVolume::DbgPrintAllPointers() const
{
    CZelDataField::DbgPrintAllPointers();
    for (const std::unique_ptr<CZelDataField>& child : _Children)
        child->DbgPrintAllPointers();
}

uint32_t CZelDataFieldForVolume::NumOfChildren(uint32_t tag) const
{
    if (_Children.size() < NumOfChildrenOfBigVolume)
        return static_cast<uint32_t>(std::count_if(_Children.begin(), _Children.end(),
                                                   [tag](const auto& child) { return child->Tag() == tag; }));
    if (!_TagCounts)
        _TagCounts = std::make_unique<CTagCounts>();
    for (size_t& counted = _TagCounts->NumOfChildrenCounted; counted < _Children.size(); ++counted)
        ++_TagCounts->NumOfChildrenByTag[_Children[counted]->Tag()];
    const auto count = _TagCounts->NumOfChildrenByTag.find(tag);
    return count == _TagCounts->NumOfChildrenByTag.end() ? 0 : count->second;
}

CIA::CTiffIfd& CZelDataFieldForTiffIfd::TiffIfd(CBinaryFileReader& b)
{
    if (!_TiffIfd)
        _TiffIfd = std::make_unique<CIA::CTiffIfd>(_IfdOffsets.IfdOffset(OffsetOfFirstIfd, b, SecondTag()), b);
    return *_TiffIfd;
}

bool IsZelBlobIdForAnyMeasurements(uint32_t blobId)
{
    return blobId == ZelBlobIdForMeasurements || blobId == ZelBlobIdForRoiMeasurements ||
           blobId == ZelBlobIdForChannelMeasurements;
}

CZelDataFieldForBlobWithZelTags::CZelDataFieldForBlobWithZelTags(uint32_t tag, uint32_t secondTag, uint64_t offset,
                                                                 uint32_t blobId, uint32_t blobVersion,
                                                                 uint32_t dataSizeInBytes)
    : CZelDataFieldForBlob(tag, secondTag, offset, blobId, blobVersion, dataSizeInBytes)
{
}

CZelDataFieldForBlobWithZelTags::~CZelDataFieldForBlobWithZelTags() = default;

void CZelDataFieldForBlobWithZelTags::DbgPrintAllPointers() const
{
    CZelDataField::DbgPrintAllPointers();
    for (const std::unique_ptr<CZelDataFieldForVolume>& rootNode : _RootNodes)
        rootNode->DbgPrintAllPointers();
}

void CZelDataFieldForBlobWithZelTags::AddMeasObj(std::unique_ptr<CZelDataFieldForVolume> rootNode)
{
    auto measObjMetaData = std::make_unique<CZelImgDocMetaData>(rootNode.get());
    _RootNodes.push_back(std::move(rootNode));
    _MeasObjMetaDatas.push_back(std::move(measObjMetaData));
}

void CZelDataFieldForBlobWithZelTags::ForgetMeasObjs()
{
    _MeasObjMetaDatas.clear();
    _RootNodes.clear();
}

} // namespace Zel
