// The levels of a stack and the size of its tiles.

#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Images/ZelTiffDeepZoomPyramidLevel.h"
#include "ZelLoader/Store/KorDeepZoomPyramidLevel.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <algorithm>
#include <cerrno>

namespace Zel
{

namespace
{

constexpr const char* KorFileIsMissing = "KOR file missing! TODO: try and read coarse data.";

uint32_t TileWidth(TIFF* tif)
{
    const auto width = CIA::TIFFGetField<uint32_t>(tif, TIFFIsTiled(tif) ? TIFFTAG_TILEWIDTH : TIFFTAG_IMAGEWIDTH);
    ZEL_ASSERT(width != 0);
    return width;
}

/// Of a directory of the document: a strip is as high as RowsPerStrip says, but no higher than the picture.
uint32_t StripHeightInDocument(TIFF* tif)
{
    return std::min(CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_ROWSPERSTRIP),
                    CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGELENGTH));
}

/// Of a directory of a TIFF store: the height of the picture shared out among its strips. Hosts know it so.
uint32_t StripHeightInStore(TIFF* tif)
{
    const uint64_t length = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGELENGTH);
    const uint64_t numOfStrips = TIFFNumberOfStrips(tif);
    ZEL_ASSERT(numOfStrips != 0);
    return static_cast<uint32_t>(std::min((length + numOfStrips - 1) / numOfStrips, length));
}

uint32_t TileHeight(TIFF* tif, uint32_t (*stripHeight)(TIFF*))
{
    const uint32_t height = TIFFIsTiled(tif) ? CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_TILELENGTH) : stripHeight(tif);
    ZEL_ASSERT(height != 0);
    return height;
}

/// The size that was found for a directory, which is kept: finding it out moves the file to another directory and back,
/// for each tile that is read.
template <typename Find>
uint32_t KeptFor(std::map<uint32_t, uint32_t>& sizes, uint32_t directory, Find find)
{
    const auto known = sizes.find(directory);
    return known != sizes.end() ? known->second : sizes.emplace(directory, find()).first->second;
}

} // namespace

bool CZelMultiDimImage::DeepZoomPyramidLevels_init(std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    if (!UsesKorFile())
    {
        if (_IsKorFileMissing)
            ThrowWithErrno(EREMOTE, KorFileIsMissing);
        varToInit.push_back(std::make_unique<CZelTiffDeepZoomPyramidLevel>(*this));
        return true;
    }
    CKorFile* korFile = KorFile();
    if (!korFile)
        ThrowWithErrno(EACCES, "KOR File is open in some other process in write mode.");
    const std::vector<CLevelOfStore> levels = korFile->LevelsOfStore();
    ZEL_ASSERT(!levels.empty());
    for (size_t i = 0; i < levels.size(); ++i)
    {
        const bool isLast = i + 1 == levels.size();
        ZEL_ASSERT(isLast || levels[i + 1].Level > levels[i].Level);
        varToInit.push_back(std::make_unique<CKorDeepZoomPyramidLevel>(*this, levels[i]));
        if (isLast)
            break;
        // Tested before the gap is filled up to it.
        ZEL_ASSERT(levels[i + 1].Level <= CDeepZoomPyramidLevel::MaxLevelID);
        for (uint32_t missing = levels[i].Level + 1; missing < levels[i + 1].Level; ++missing)
            varToInit.push_back(nullptr);
    }
    ZEL_ASSERT(varToInit.size() == uint64_t{levels.back().Level} + 1);
    return true;
}

bool CZelMultiDimImage::DeepZoomTilePixelWidth_init(uint32_t& varToInit, uint32_t levelID)
{
    ZEL_ASSERT(varToInit == 0xFFFFFFFF);
    if (!UsesKorFile())
    {
        varToInit = TileWidthInDocument();
        return true;
    }
    CKorFile* korFile = KorFile();
    if (!korFile)
        return false;
    varToInit = korFile->IsOmeType() ? TileWidthInTiffStore(*korFile, levelID) : korFile->TilePixelWidth();
    return true;
}

bool CZelMultiDimImage::DeepZoomTilePixelHeight_init(uint32_t& varToInit, uint32_t levelID)
{
    ZEL_ASSERT(varToInit == 0xFFFFFFFF);
    if (!UsesKorFile())
    {
        varToInit = TileHeightInDocument();
        return true;
    }
    CKorFile* korFile = KorFile();
    if (!korFile)
        return false;
    varToInit = korFile->IsOmeType() ? TileHeightInTiffStore(*korFile, levelID) : korFile->TilePixelHeight();
    return true;
}

uint32_t CZelMultiDimImage::TileWidthInDocument()
{
    if (_IsKorFileMissing)
        ThrowWithErrno(EREMOTE, KorFileIsMissing);
    return KeptFor(_TileWidthsByDirectory, 0, [&] { return TileWidth(TiffFilePtrSetToIfdOf1stFrame()); });
}

uint32_t CZelMultiDimImage::TileHeightInDocument()
{
    if (_IsKorFileMissing)
        ThrowWithErrno(EREMOTE, KorFileIsMissing);
    return KeptFor(_TileHeightsByDirectory, 0,
                   [&] { return TileHeight(TiffFilePtrSetToIfdOf1stFrame(), StripHeightInDocument); });
}

uint32_t CZelMultiDimImage::TileWidthInTiffStore(CKorFile& korFile, uint32_t directory)
{
    const uint32_t width =
        KeptFor(_TileWidthsByDirectory, directory, [&] { return TileWidth(korFile.TiffFilePtrSetTo(directory)); });
    korFile.GoToTiffDirectory(directory);
    return width;
}

uint32_t CZelMultiDimImage::TileHeightInTiffStore(CKorFile& korFile, uint32_t directory)
{
    const uint32_t height =
        KeptFor(_TileHeightsByDirectory, directory,
                [&] { return TileHeight(korFile.TiffFilePtrSetTo(directory), StripHeightInStore); });
    korFile.GoToTiffDirectory(directory);
    return height;
}

TIFF* CZelMultiDimImage::TiffFilePtrSetToIfdOf1stFrame()
{
    const bool usesKorFile = UsesKorFile();
    ZEL_ASSERT(!usesKorFile && !_IsKorFileMissing);
    ZEL_ASSERT(!_MetaData.ImgFrames()->empty());
    CZelMetaDataForImgFrame& firstFrame = *_MetaData.ImgFrames()->front();
    if (!firstFrame.FrameTiffIfd())
        ThrowWithErrno(ENOEXEC, "TIFF IFD tag is missing!!!");
    return TiffFilePtrSetToIfdOf(firstFrame);
}

TIFF* CZelMultiDimImage::TiffFilePtrSetToIfdOf(CZelMetaDataForImgFrame& frame)
{
    ZEL_ASSERT(frame.FrameTiffIfd());
    const uint32_t idxOfIfd = frame.FrameTiffIfd()->IdxOfTiffIfd();
    ZEL_LOG("idxOfIfd=%u", idxOfIfd);
    return _ParentZelImgDoc.AsTiffFilePtrSetTo(idxOfIfd);
}

} // namespace Zel
