#pragma once
#include "CommonImageAccess/TiffAccess.h"
#include "CommonImageAccess/XmlFunctions.h"
#include "ZelLoader/Store/TiffStoreTiles.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zel
{

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

    /// The levels that have records. A directory without a needed tag, XML that cannot be read or describes fewer
    /// images than there are directories, and more records of directories that are there than the file could hold
    /// strips and tiles are failed assertions.
    std::vector<CTiffStoreLevel> Read();

private:
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
    /// The level that an image makes of its planes and a directory; without planes there are no records.
    CTiffStoreLevel LevelOf(uint32_t directory, uint32_t imageNumber);
    void AssertRecordsFit(const CTiffStoreLevel& level);

    CIA::CTiffImageDoc _Directories; ///< a handle of its own: the store's other readers keep their directory
    const uint64_t _FileSize;
    CXmlParser _Xml; ///< null without XML
    std::vector<xercesc::DOMElement*> _ImagesOfXml;
    std::vector<CFrameIdx> _Planes;                 ///< of the image that is being read
    std::unordered_map<uint32_t, CTiling> _Tilings; ///< by directory
    /// A value above 1 carries over to later images that say 1: files rely on it.
    uint32_t _SamplesPerPixel = 1;
    uint32_t _NumOfDirectories = 0;
    uint64_t _NumOfRecords = 0; ///< so far, of directories that are there
};

} // namespace Zel
