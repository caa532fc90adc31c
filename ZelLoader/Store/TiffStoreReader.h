#pragma once
#include "CommonImageAccess/TiffAccess.h"
#include "CommonImageAccess/XmlFunctions.h"
#include "ZelLoader/Store/KorTiles.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zel
{

/// Where a record of a TIFF store has its pixels.
struct CTiffPlace
{
    uint16_t TiffIFD = 0;          ///< number of the directory
    bool IsLastOfPosition = false; ///< the walk over the file ends behind it: it goes over the planes of one position
};

/// Makes the tile records of a TIFF store out of its directories, and out of the OME XML that describes their planes
/// where the file has it. Each image of the XML, or each directory without it, is a pyramid level.
class CTiffStoreReader
{
public:
    /// `tif` stands on the first directory of the file and is left there.
    CTiffStoreReader(const std::wstring& fileName, uint64_t fileSize, TIFF* tif)
        : _Directories(fileName), _FileSize(fileSize), _Xml(XmlMetadata(tif))
    {
    }

    /// Fills both lists, an element for each strip or tile of each plane. A directory without a needed tag, XML that
    /// cannot be read or describes fewer images than there are directories, and more records than the file could hold
    /// strips and tiles are failed assertions.
    void Read(CKorTiles& korTiles, std::vector<CTiffPlace>& tiffPlaces);

private:
    /// A plane of an image: the position that its records have beside column, row and level.
    using CPlane = CDecompressedKorTileIdx;

    /// What a directory tells of its tiles or strips.
    struct CTiling
    {
        bool IsTiled = false;
        uint32_t NumOfStrips = 0;
        uint32_t Width = 0;
        uint32_t Height = 0;
        uint32_t TileWidth = 0;
        uint32_t TileHeight = 0;
    };

    static CXmlParser XmlMetadata(TIFF* tif);
    /// Reads a directory once, however often the XML leads back to it.
    const CTiling& TilingOf(uint32_t directory);
    CTiling ReadTilingOf(uint32_t directory);
    void ReadPlanesOfXml(uint32_t imageNumber);
    void AddTilesOfDirectory(uint32_t directory, uint32_t imageNumber);
    void AddPlanes(uint32_t directory, int32_t col, int32_t row, uint32_t imageNumber);
    void AssertRecordsFit(uint64_t numOfTiles) const;

    CIA::CTiffImageDoc _Directories; ///< a handle of its own: the store's other readers keep their directory
    const uint64_t _FileSize;
    CXmlParser _Xml; ///< null without XML
    std::vector<xercesc::DOMElement*> _ImagesOfXml;
    std::vector<CPlane> _Planes;                    ///< of the image that is being read
    std::unordered_map<uint32_t, CTiling> _Tilings; ///< by directory
    /// A value above 1 carries over to later images that say 1: files rely on it.
    uint32_t _SamplesPerPixel = 1;
    CKorTiles* _KorTiles = nullptr;
    std::vector<CTiffPlace>* _TiffPlaces = nullptr;
};

} // namespace Zel
