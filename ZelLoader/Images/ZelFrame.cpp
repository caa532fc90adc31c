#include "ZelLoader/Images/ZelFrame.h"

#include "CommonUtil/Assertion.h"
#include "ZelLoader/Images/ZelTiffFrameTiles.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/KorFrameTiles.h"

#include <cerrno>

namespace Zel
{

namespace
{

/// Tables of no more bytes hold nothing but their opening and closing markers.
constexpr uint32_t MaxSizeOfEmptyTables = 4;

} // namespace

uint32_t CZelFrame::TiffDirectory() const
{
    CZelMetaDataForFrameTiffIfd* ifd = _MetaData.FrameTiffIfd();
    ZEL_ASSERT(ifd);
    return ifd->IdxOfTiffIfd();
}

TIFF* CZelFrame::TiffFilePtr()
{
    return _ParentZelImage.TiffFilePtrSetToIfdOf(_MetaData);
}

std::unique_ptr<CDeepZoomTiles> CZelFrame::DeepZoomTiles_init()
{
    if (_ParentZelImage.UsesKorFile())
    {
        CKorFile* korFile = _ParentZelImage.KorFile();
        ZEL_ASSERT(korFile);
        ZEL_ASSERT(!Coords().empty()); // a frame claims the records whose indexes are those of its coordinates
        if (korFile->IsOmeType())
            return MakeTiffStoreFrameTiles(*this);
        return MakeKorFrameTiles(*this);
    }
    if (_ParentZelImage.IsKorFileMissing())
        ThrowWithErrno(EREMOTE, "TODO: Need to read coarse data in case of missing KOR file!");
    return MakeZelTiffFrameTiles(*this);
}

std::vector<unsigned char> CZelFrame::JpegTables_init()
{
    TIFF* tif = nullptr;
    if (_ParentZelImage.UsesKorFile())
    {
        CKorFile* korFile = _ParentZelImage.KorFile();
        ZEL_ASSERT(korFile);
        tif = korFile->TiffFilePtr();
    }
    else
        tif = TiffFilePtr();
    ZEL_ASSERT(tif);
    uint32_t size = 0;
    const unsigned char* tables = nullptr;
    ZEL_ASSERT(CIA::TIFFGetField_mayFail(tif, TIFFTAG_JPEGTABLES, &size, &tables));
    ZEL_ASSERT(size > MaxSizeOfEmptyTables && tables);
    return {tables, tables + size};
}

} // namespace Zel
