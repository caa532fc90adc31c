#pragma once
#include "CommonImageAccess/ImgDocFileUnit.h"
#include "CommonImageAccess/TiffAccess.h"
#include "ZelLoader/Store/KorHeaders.h"
#include "ZelLoader/Store/KorTileLevels.h"
#include "ZelLoader/Store/KorTiles.h"
#include "ZelLoader/Store/TiffStoreTiles.h"

#include <vector>

namespace Zel
{

class CKorRecordLayout;
class CZelMultiDimImage;

/// The records of one level of a store.
struct CLevelOfStore
{
    uint32_t Level = 0;
    CTileExtent Extent{CDecompressedKorTileIdx()};
    CFrameIdx GreatestFrameIdx; ///< on each dimension by itself
    uint16_t TiffIfd = 0;       ///< the directory of the first record; 0 in a binary store
};

/// The tile store of one stack: the file beside the document that holds all its pixels. Opening it brings in everything
/// but the pixels. There are two kinds, a binary file and a TIFF; above this class they look the same.
class CKorFile : public CImgDocFileUnit
{
public:
    /// Usable only when errno is 0 afterwards; a store that breaks a rule ends in an exception.
    CKorFile(const std::wstring& fileName, bool strictMode, CZelMultiDimImage& image, bool isOmeTiff);

    /// True for a TIFF store.
    bool IsOmeType() const { return _IsOmeTiff; }
    /// Of a binary store.
    const CKorAdditionalHeader& AdditionalHeader() const { return KorAdditionalHeader; }
    uint32_t TilePixelWidth() const { return KorAdditionalHeader.TilePixelWidth(); }
    uint32_t TilePixelHeight() const { return KorAdditionalHeader.TilePixelHeight(); }
    /// Every tile record of a binary store, in file order.
    const CKorTiles& KorTiles() const { return _KorTiles; }
    /// What they say together.
    const CKorTileLevels& KorTileLevels() const { return _KorTileLevels; }
    /// The tile records of a TIFF store, by level; a level without any is not among them.
    const std::vector<CTiffStoreLevel>& TiffStoreLevels() const { return _TiffStoreLevels; }
    /// The levels of either kind in the order of the file.
    std::vector<CLevelOfStore> LevelsOfStore() const;
    /// More frames than this cannot have a tile of their own.
    uint64_t MaxNumOfFramesWithTiles() const;

    /// A TIFF store as libtiff reads it, standing on the directory that was gone to last; at first on directory 0.
    TIFF* TiffFilePtr() { return _AsTiff.SetDirectory(_TiffDirectory); }
    /// The same, standing on another directory. Where that is not there, it stays on the one before.
    TIFF* TiffFilePtrSetTo(uint32_t directory);
    /// Goes to a directory that is there, when the handle is asked for next: what was read from it before is kept, but
    /// tables and formats are those of the directory that was gone to last.
    void GoToTiffDirectory(uint32_t directory) { _TiffDirectory = directory; }

protected:
    bool ReadFileHeader() override;
    bool ReadFileMetaData() override;

private:
    bool ReadTiffStore();
    bool ReadAdditionalHeader();
    uint32_t ExpectedNumOfElesInKorTileIdx();
    std::vector<uint32_t> IndexesInDecompressedKorTileIdxToCopyTo();
    bool ReadUsedChunks();
    void TakeRecords(const CKorRecordLayout& layout, const Byte* records, uint32_t numOfRecords);
    bool ValidateImgDimCountAgainstMaxTileIndexes();
    uint32_t MaxIdxOf(DimensionType::E type) const;
    void LogDimCountThatDoesNotFit(DimensionType::E type, uint32_t numOfPoints, uint32_t maxIdx);

    const bool _IsOmeTiff;
    CZelMultiDimImage& MultiDimImg;
    CKorVolumeHeader KorVolumeHeader;
    CKorAdditionalHeader KorAdditionalHeader;
    CKorTiles _KorTiles;
    CKorTileLevels _KorTileLevels;
    std::vector<CTiffStoreLevel> _TiffStoreLevels;
    CTiffImageDoc _AsTiff;
    uint32_t _TiffDirectory = 0;
};

} // namespace Zel
