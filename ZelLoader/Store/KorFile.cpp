#include "ZelLoader/Store/KorFile.h"

#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorRecordLayout.h"
#include "ZelLoader/Store/TiffStoreReader.h"
#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <cerrno>

namespace Zel
{

namespace
{

const std::vector<std::wstring>& ExpectedExtensions()
{
    static const std::vector<std::wstring> expectedExtensions = {L"kor", L"tif", L"tiff"};
    return expectedExtensions;
}

/// Column, row and pyramid level: what every record tells beside the dimensions of its stack.
constexpr uint32_t NumOfElesBesideDims = 3;
constexpr size_t BytesReadAtOnce = size_t{1} << 17; ///< they stay in the cache nearest to the processor but one

} // namespace

CKorFile::CKorFile(const std::wstring& fileName, bool strictMode, CZelMultiDimImage& image, bool isOmeTiff)
    : CImgDocFileUnit(fileName, image.StackID(), ExpectedExtensions(), false, strictMode, &image.ParentImgDoc()),
      _IsOmeTiff(isOmeTiff), MultiDimImg(image), _AsTiff(FileName())
{
    if (errno == 0)
        ContinueCtor();
}

bool CKorFile::ReadFileHeader()
{
    if (!_IsOmeTiff)
        KorVolumeHeader.Read(*this);
    return true;
}

bool CKorFile::ReadFileMetaData()
{
    return _IsOmeTiff ? ReadTiffStore() : ReadAdditionalHeader() && ReadUsedChunks();
}

bool CKorFile::ReadTiffStore()
{
    _TiffStoreLevels = CTiffStoreReader(FileName(), FileSize(), _AsTiff.SetDirectory(0)).Read();
    errno = 0;
    return true;
}

bool CKorFile::ReadAdditionalHeader()
{
    if (KorVolumeHeader.AdditionalHeaderOffset == 0)
    {
        ZEL_LOG("Unexpected value 0 for additional header offset!");
        return false;
    }
    Seek(KorVolumeHeader.AdditionalHeaderOffset, BfrSeekDirection::BEGIN);
    KorAdditionalHeader.Read(*this);
    return true;
}

uint32_t CKorFile::ExpectedNumOfElesInKorTileIdx()
{
    const uint32_t numOfCounts = MultiDimImg.DimensionOrder().NumOfPointsPerDim().Size;
    ZEL_ASSERT(numOfCounts <= FileSize()); // more would not fit into a single record
    return std::max(numOfCounts, 1u) + NumOfElesBesideDims;
}

/// The slot to which each element of a record goes.
std::vector<uint32_t> CKorFile::IndexesInDecompressedKorTileIdxToCopyTo()
{
    CZelDimensionOrder& order = MultiDimImg.DimensionOrder();
    std::vector<uint32_t> indexes = {CDecompressedKorTileIdx::Idx(DimensionType::DimensionType_X),
                                     CDecompressedKorTileIdx::Idx(DimensionType::DimensionType_Y)};
    const std::vector<DimensionType::E>& dumminess = order.DumminessOfNumOfPointsPerDim();
    if (order.ExistenceAndIdxOfZelZtlcDims().empty() && dumminess.empty())
        indexes.push_back(CKorRecordLayout::DropElement);
    for (const DimensionType::E type : dumminess)
        indexes.push_back(type == DimensionType::DimensionType_Dummy ? CKorRecordLayout::DropElement
                                                                     : CDecompressedKorTileIdx::Idx(type));
    ZEL_ASSERT(MultiDimImg.Dimensions().contains(DimensionType::DimensionType_P));
    indexes.push_back(CDecompressedKorTileIdx::Idx(DimensionType::DimensionType_P));
    return indexes;
}

bool CKorFile::ReadUsedChunks()
{
    const uint32_t numOfChunks = KorVolumeHeader.NumberOfUsedChunks;
    Seek(static_cast<uint64_t>(KorVolumeHeader.FilePositionOfUsedChunks), BfrSeekDirection::BEGIN);
    const uint32_t numOfEles = ExpectedNumOfElesInKorTileIdx();
    const std::vector<uint32_t> indexesToCopyTo = IndexesInDecompressedKorTileIdxToCopyTo();
    ZEL_ASSERT(indexesToCopyTo.size() == numOfEles);
    ZEL_ASSERT(numOfChunks != 0);
    const CKorRecordLayout layout(indexesToCopyTo);
    // The list's extent comes before its allocation: a count alone allocates nothing.
    ZEL_ASSERT(numOfChunks <= (FileSize() - GetCurrentOffset()) / layout.SizeOfRecord());
    _KorTiles.ReserveBlocks(numOfChunks);
    const auto numOfRecordsAtOnce =
        std::min(numOfChunks, static_cast<uint32_t>(std::max<size_t>(BytesReadAtOnce / layout.SizeOfRecord(), 1)));
    std::vector<Byte> block(numOfRecordsAtOnce * layout.SizeOfRecord());
    while (_KorTiles.Size() < numOfChunks)
    {
        const uint32_t numOfRecords = std::min(numOfRecordsAtOnce, numOfChunks - _KorTiles.Size());
        ZEL_ASSERT(ReadData(block.data(), ToUint32WithCheck(numOfRecords * layout.SizeOfRecord())));
        TakeRecords(layout, block.data(), numOfRecords);
    }
    return ValidateImgDimCountAgainstMaxTileIndexes();
}

void CKorFile::TakeRecords(const CKorRecordLayout& layout, const Byte* records, uint32_t numOfRecords)
{
    while (numOfRecords > 0)
    {
        ZEL_ASSERT(layout.HasAllElements(records));
        ZEL_ASSERT(!layout.DropsWhatItMustNot());
        const CDecompressedKorTileIdx first = layout.IdxOf(records);
        const uint32_t length = layout.LengthOfRun(records, numOfRecords);
        _KorTiles.AddRun(first, length, records + layout.OffsetOfBlock(), layout.SizeOfRecord());
        _KorTileLevels.AddRun(first, length);
        records += length * layout.SizeOfRecord();
        numOfRecords -= length;
    }
}

uint32_t CKorFile::MaxIdxOf(DimensionType::E type) const
{
    switch (type)
    {
    case DimensionType::DimensionType_Z:
        return _KorTileLevels.GreatestIdx().ZIdx;
    case DimensionType::DimensionType_T:
        return _KorTileLevels.GreatestIdx().TIdx;
    case DimensionType::DimensionType_C:
        return _KorTileLevels.GreatestIdx().CIdx;
    case DimensionType::DimensionType_L:
        return _KorTileLevels.GreatestIdx().LIdx;
    default:
        oldAbortCommonUtil();
    }
}

bool CKorFile::ValidateImgDimCountAgainstMaxTileIndexes()
{
    for (const auto& [type, dimension] : MultiDimImg.Dimensions())
    {
        if (!IsFrameDifferentiatorCoordDimension(type))
            continue;
        const uint32_t maxIdx = MaxIdxOf(type);
        const uint32_t numOfPoints = dimension->NumOfPoints();
        if (numOfPoints != uint64_t{maxIdx} + 1)
        {
            LogDimCountThatDoesNotFit(type, numOfPoints, maxIdx);
            return false;
        }
    }
    return true;
}

void CKorFile::LogDimCountThatDoesNotFit(DimensionType::E type, uint32_t numOfPoints, uint32_t maxIdx)
{
    ZEL_LOG("Probable issue with 2001\\2003 or KOR Tile index logic!");
    ZEL_WLOG(L"ZEL Layer name: '%s'", MultiDimImg.Name());
    ZEL_LOG("dimension type = %s", DimensionTypeToString(type));
    ZEL_LOG("dim.NumOfPoints() = %u", numOfPoints);
    ZEL_LOG("KOR maxDimIdx for this dimension = %u", maxIdx);
    ZEL_LOG("MaxKorTileDimIndexes=%s", _KorTileLevels.GreatestIdx().ToString().c_str());
    ZEL_LOG("expected: dim.NumOfPoints() == (maxIdx + 1)");
}

std::vector<CLevelOfStore> CKorFile::LevelsOfStore() const
{
    std::vector<CLevelOfStore> levels;
    for (const CKorTileLevel& level : _KorTileLevels.Levels())
        levels.push_back({level.Level, level.Extent, level.GreatestFrameIdx, 0});
    for (const CTiffStoreLevel& level : _TiffStoreLevels)
    {
        CTileExtent extent({.ColIdx = 0, .RowIdx = 0});
        extent.GreatestCol = static_cast<int32_t>(level.NumOfCols - 1);
        extent.GreatestRow = static_cast<int32_t>(level.NumOfRows - 1);
        CFrameIdx greatest;
        for (const CFrameIdx& plane : level.Planes)
            greatest = GreatestOnEach(greatest, plane);
        levels.push_back({level.Level, extent, greatest, level.TiffIfd(0)});
    }
    return levels;
}

uint64_t CKorFile::MaxNumOfFramesWithTiles() const
{
    uint64_t numOfPlanes = 0;
    for (const CTiffStoreLevel& level : _TiffStoreLevels)
        numOfPlanes += level.Planes.size();
    return _KorTiles.Size() + numOfPlanes;
}

TIFF* CKorFile::TiffFilePtrSetTo(uint32_t directory)
{
    TIFF* tif = _AsTiff.SetDirectory(directory);
    _TiffDirectory = directory;
    return tif;
}

} // namespace Zel
