#include "ZelLoader/Store/KorFile.h"

#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

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
/// An element of a record that has no slot: it belongs to a dummy dimension, and its value is lost.
constexpr uint32_t DropElement = 0xFFFFFFFF;
/// The only place in a record where an element may be dropped.
constexpr size_t PlaceOfDroppedElement = 2;
constexpr size_t BytesReadAtOnce = size_t{1} << 20;

size_t SizeOfRecord(uint32_t numOfEles)
{
    return 4 + size_t{4} * numOfEles + 8 + 4 + 4;
}

template <typename T>
T Take(const Byte*& bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof value);
    bytes += sizeof value;
    return value;
}

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
    CTiffStoreReader(FileName(), FileSize(), _AsTiff.SetDirectory(0)).Read(_KorTiles, _TiffPlaces);
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
        indexes.push_back(DropElement);
    for (const DimensionType::E type : dumminess)
        indexes.push_back(type == DimensionType::DimensionType_Dummy ? DropElement
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
    const size_t sizeOfRecord = SizeOfRecord(numOfEles);
    // The list's extent comes before its allocation: a count alone allocates nothing.
    ZEL_ASSERT(numOfChunks <= (FileSize() - GetCurrentOffset()) / sizeOfRecord);
    _KorTiles.reserve(numOfChunks);
    const size_t numOfRecordsAtOnce = std::max<size_t>(BytesReadAtOnce / sizeOfRecord, 1);
    std::vector<Byte> block(std::min<size_t>(numOfRecordsAtOnce, numOfChunks) * sizeOfRecord);
    while (_KorTiles.size() < numOfChunks)
    {
        const size_t numOfRecords = std::min<size_t>(numOfRecordsAtOnce, numOfChunks - _KorTiles.size());
        ZEL_ASSERT(ReadData(block.data(), ToUint32WithCheck(numOfRecords * sizeOfRecord)));
        for (size_t i = 0; i < numOfRecords; ++i)
        {
            _KorTiles.push_back(ReadUsedChunk(block.data() + i * sizeOfRecord, indexesToCopyTo));
            UpdateMaxTileDimIndexes(_KorTiles.back());
        }
    }
    return ValidateImgDimCountAgainstMaxTileIndexes();
}

CKorTile CKorFile::ReadUsedChunk(const Byte* record, const std::vector<uint32_t>& indexesToCopyTo) const
{
    ZEL_ASSERT(Take<uint32_t>(record) == indexesToCopyTo.size());
    std::array<int32_t, CDecompressedKorTileIdx::NumOfSlots> slots{};
    for (size_t i = 0; i < indexesToCopyTo.size(); ++i)
    {
        const auto element = Take<int32_t>(record);
        if (indexesToCopyTo[i] != DropElement)
            slots[indexesToCopyTo[i]] = element;
        else
            ZEL_ASSERT(i == PlaceOfDroppedElement);
    }
    CKorTile tile;
    tile.Idx = std::bit_cast<CDecompressedKorTileIdx>(slots);
    tile.BlockOffset = Take<uint64_t>(record);
    tile.BlockSize = Take<uint32_t>(record);
    return tile;
}

void CKorFile::UpdateMaxTileDimIndexes(const CKorTile& korTile)
{
    const auto raise = [](auto& max, auto idx) { max = std::max(max, idx); };
    raise(MaxKorTileDimIndexes.ColIdx, korTile.Idx.ColIdx);
    raise(MaxKorTileDimIndexes.RowIdx, korTile.Idx.RowIdx);
    raise(MaxKorTileDimIndexes.ZIdx, korTile.Idx.ZIdx);
    raise(MaxKorTileDimIndexes.TIdx, korTile.Idx.TIdx);
    raise(MaxKorTileDimIndexes.LIdx, korTile.Idx.LIdx);
    raise(MaxKorTileDimIndexes.CIdx, korTile.Idx.CIdx);
}

uint32_t CKorFile::MaxIdxOf(DimensionType::E type) const
{
    switch (type)
    {
    case DimensionType::DimensionType_Z:
        return MaxKorTileDimIndexes.ZIdx;
    case DimensionType::DimensionType_T:
        return MaxKorTileDimIndexes.TIdx;
    case DimensionType::DimensionType_C:
        return MaxKorTileDimIndexes.CIdx;
    case DimensionType::DimensionType_L:
        return MaxKorTileDimIndexes.LIdx;
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
    ZEL_LOG("MaxKorTileDimIndexes=%s", MaxKorTileDimIndexes.ToString().c_str());
    ZEL_LOG("expected: dim.NumOfPoints() == (maxIdx + 1)");
}

uint32_t CKorFile::NextTileOnDisk(uint32_t tileNumber) const
{
    if (_IsOmeTiff && _TiffPlaces[tileNumber].IsLastOfPosition)
        return static_cast<uint32_t>(_KorTiles.size());
    return tileNumber + 1;
}

uint16_t CKorFile::TiffIfdOf(uint32_t tileNumber) const
{
    return _IsOmeTiff ? _TiffPlaces[tileNumber].TiffIFD : 0;
}

TIFF* CKorFile::AssertedTiffFilePtr()
{
    TIFF* tif = TiffFilePtr();
    ZEL_ASSERT(tif);
    return tif;
}

} // namespace Zel
