#include "HostTool/Reader/TileIndex.h"

#include "HostTool/Text.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <tuple>

namespace HostTool
{

namespace
{

auto KeyOf(uint32_t level, const CPosition& position, int64_t row, int64_t col)
{
    return std::tuple(level, position.T, position.Lambda, position.Z, position.Channel, row, col);
}
auto KeyOf(const CTileRecord& record)
{
    return KeyOf(record.Level, record.Position, record.Row, record.Col);
}

CPosition PositionOf(const CIA::CFrameIdx& frame)
{
    return {frame.C, frame.Z, frame.T, frame.L};
}

/// Where a tile or strip of the present directory lies; both 0 if the directory doesn't have it.
void SetPlace(CTileRecord& record, TIFF* tif, uint64_t number)
{
    const uint32_t count = TIFFIsTiled(tif) ? TIFFNumberOfTiles(tif) : TIFFNumberOfStrips(tif);
    if (number >= count)
        return;
    uint32_t rowsPerStrip = 0;
    if (!TIFFIsTiled(tif) && TIFFGetField(tif, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip) == 1)
        record.FirstPixelRow = static_cast<int64_t>(number * rowsPerStrip);
    record.Offset = TIFFGetStrileOffset(tif, static_cast<uint32_t>(number));
    record.Length = TIFFGetStrileByteCount(tif, static_cast<uint32_t>(number));
}

uint32_t NumOfTilesAcross(TIFF* tif)
{
    uint32_t width = 0;
    uint32_t tileWidth = 0;
    if (!TIFFIsTiled(tif) || TIFFGetField(tif, TIFFTAG_IMAGEWIDTH, &width) != 1 ||
        TIFFGetField(tif, TIFFTAG_TILEWIDTH, &tileWidth) != 1 || tileWidth == 0)
        return 1;
    return std::max(1U, width / tileWidth + (width % tileWidth != 0 ? 1U : 0U));
}

} // namespace

bool CTileRecord::IsBefore(const CTileRecord& other) const
{
    return KeyOf(*this) < KeyOf(other);
}

CGroupIndex::CGroupIndex(const CReaderDocument& document, Zel::CZelMultiDimImage& image) : _StackID(image.StackID())
{
    document.Do("cannot list the tiles of stack " + std::to_string(_StackID),
                [&]
                {
                    if (image.IsKorFileMissing())
                        return;
                    image.Dimensions(); // the order of the indexes in records follows from them
                    if (!image.UsesKorFile())
                        ReadDirectoriesOfDocument(image);
                    else if (image.KorFile() && image.KorFile()->IsOmeType())
                        ReadTiffStore(image);
                    else if (image.KorFile())
                        ReadBinaryStore(image);
                    else
                        throw FailedCall(document.Path(), "cannot open a tile store", AC_RESULT_MISSING_FILE);
                });
    Sort();
}

void CGroupIndex::ReadBinaryStore(Zel::CZelMultiDimImage& image)
{
    const Zel::CKorFile& store = *image.KorFile();
    _File = ToUtf8(store.FileName());
    _SizeOfFile = store.FileSize();
    const uint32_t numOfTiles = store.KorTiles().Size();
    _Records.reserve(numOfTiles);
    for (uint32_t number = 0; number < numOfTiles; ++number)
    {
        const Zel::CKorTile tile = store.KorTiles()[number];
        _Records.push_back({tile.Idx.PIdx, tile.Idx.ColIdx, tile.Idx.RowIdx, PositionOf(tile.Idx.FrameIdx()),
                            tile.BlockOffset, tile.BlockSize, 0});
    }
}

void CGroupIndex::ReadTiffStore(Zel::CZelMultiDimImage& image)
{
    Zel::CKorFile& store = *image.KorFile();
    _File = ToUtf8(store.FileName());
    _SizeOfFile = store.FileSize();
    _IsTiff = true;
    // Planes whose directory isn't there have no tiles to list, however many of them the XML names.
    const uint32_t numOfDirectories = CIA::TIFFNumberOfDirectories(store.TiffFilePtr());
    for (const Zel::CTiffStoreLevel& level : store.TiffStoreLevels())
        for (size_t plane = 0; plane < level.Planes.size(); ++plane)
            if (level.TiffIfd(plane) < numOfDirectories)
                AddTilesOfPlane(store, level, plane);
}

void CGroupIndex::AddTilesOfPlane(Zel::CKorFile& store, const Zel::CTiffStoreLevel& level, size_t plane)
{
    TIFF* tif = store.TiffFilePtrSetTo(level.TiffIfd(plane));
    const uint32_t tilesAcross = NumOfTilesAcross(tif);
    for (uint32_t row = 0; row < level.NumOfRows; ++row)
        for (uint32_t col = 0; col < level.NumOfCols; ++col)
        {
            CTileRecord record{level.Level, col, row, PositionOf(level.Planes[plane]), 0, 0, level.TiffIfd(plane)};
            SetPlace(record, tif, uint64_t{row} * tilesAcross + col);
            _Records.push_back(record);
        }
}

void CGroupIndex::ReadDirectoriesOfDocument(Zel::CZelMultiDimImage& image)
{
    _File = ToUtf8(image.ParentZelImgDoc().FileName());
    _SizeOfFile = image.ParentZelImgDoc().FileSize();
    _IsTiff = true;
    for (const auto& [frameIdx, node] : image.ZelMetaDataForImgFrames())
    {
        TIFF* tif = image.TiffFilePtrSetToIfdOf(*node);
        const uint32_t count = TIFFIsTiled(tif) ? TIFFNumberOfTiles(tif) : TIFFNumberOfStrips(tif);
        const uint32_t across = NumOfTilesAcross(tif);
        for (uint32_t number = 0; number < count; ++number)
        {
            CTileRecord record{0, number % across,          number / across, PositionOf(frameIdx), 0,
                               0, TIFFCurrentDirectory(tif)};
            SetPlace(record, tif, number);
            _Records.push_back(record);
        }
    }
}

void CGroupIndex::Sort()
{
    // Of records for one position the first in the file is the one that counts.
    std::stable_sort(_Records.begin(), _Records.end(),
                     [](const CTileRecord& a, const CTileRecord& b) { return a.IsBefore(b); });
    _Records.erase(std::unique(_Records.begin(), _Records.end(),
                               [](const CTileRecord& a, const CTileRecord& b) { return KeyOf(a) == KeyOf(b); }),
                   _Records.end());
}

const CTileRecord* CGroupIndex::Find(uint32_t level, int64_t col, int64_t row, const CPosition& position) const
{
    CTileRecord wanted;
    wanted.Level = level;
    wanted.Col = col;
    wanted.Row = row;
    wanted.Position = position;
    const auto found = std::lower_bound(_Records.begin(), _Records.end(), wanted,
                                        [](const CTileRecord& a, const CTileRecord& b) { return a.IsBefore(b); });
    return found != _Records.end() && KeyOf(*found) == KeyOf(wanted) ? &*found : nullptr;
}

std::vector<CGroupIndex> TileIndexOf(const CReaderDocument& document)
{
    std::vector<CGroupIndex> groups;
    for (Zel::CZelMultiDimImage* image : document.Images())
        groups.emplace_back(document, *image);
    return groups;
}

} // namespace HostTool
