#include "ZelLoader/Store/TiffStoreReader.h"

#include "CommonImageAccess/PropsetParams.h"
#include "CommonImageAccess/TiffDeepZoomTile.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

#include <algorithm>

namespace Zel
{

namespace
{

/// A strip or tile takes this much of its directory, for its offset and its size, however little it holds.
constexpr uint64_t SizeOfTileInDirectory = 8;
/// Records that any file may have: planes may share a directory.
constexpr uint64_t NumOfRecordsForAll = 1000000;
constexpr uint64_t MaxNumOfPositions = 0x7FFFFFFF; ///< columns and rows are numbers with a sign

xercesc::DOMElement& NeededChild(const xercesc::DOMNode& node, const char* name)
{
    xercesc::DOMElement* child = ChildXmlTag(node, name);
    ZEL_ASSERT(child);
    return *child;
}

} // namespace

CXmlParser CTiffStoreReader::XmlMetadata(TIFF* tif)
{
    const char* description = nullptr;
    if (!CIA::TIFFGetField_mayFail(tif, TIFFTAG_IMAGEDESCRIPTION, &description) || !description || !*description)
        return nullptr;
    ZEL_LOG("TODO: validate against xsd file");
    return XmlDocument(Utf8ToUtf16(description));
}

std::vector<CTiffStoreLevel> CTiffStoreReader::Read()
{
    if (_Xml)
        _ImagesOfXml = ChildXmlTags(NeededChild(*_Xml->getDocument(), "OME"), "OME:Image");
    else
        _Planes.emplace_back();
    TIFF* tif = _Directories.TiffFilePtr();
    ZEL_ASSERT(tif);
    _NumOfDirectories = CIA::TIFFNumberOfDirectories(tif);
    std::vector<CTiffStoreLevel> levels;
    uint32_t imageNumber = 0;
    for (uint64_t directory = 0; directory < _NumOfDirectories;)
    {
        if (_Xml)
            ReadPlanesOfXml(imageNumber);
        CTiffStoreLevel level = LevelOf(static_cast<uint32_t>(directory), imageNumber);
        if (!level.Planes.empty() && level.NumOfPositions() > 0)
            levels.push_back(std::move(level));
        ++imageNumber;
        directory = uint64_t{_Planes.size()} * imageNumber / _SamplesPerPixel;
    }
    return levels;
}

void CTiffStoreReader::ReadPlanesOfXml(uint32_t imageNumber)
{
    ZEL_ASSERT(imageNumber < _ImagesOfXml.size());
    const xercesc::DOMElement& pixels = NeededChild(*_ImagesOfXml[imageNumber], "OME:Pixels");
    _Planes.clear();
    for (const xercesc::DOMElement* element : ChildXmlTags(pixels, "OME:Plane"))
    {
        const auto index = [&](const char* name)
        { return static_cast<uint32_t>(IntOfText(AttributeIfExists(*element, name).c_str())); };
        CFrameIdx plane;
        plane.Z = index("TheZ");
        plane.T = index("TheT");
        plane.C = index("TheC");
        plane.L = index("TheL");
        _Planes.push_back(plane);
    }
    const std::wstring samplesPerPixel = Attribute(NeededChild(pixels, "OME:Channel"), "SamplesPerPixel");
    if (samplesPerPixel != L"1")
    {
        const int32_t number = IntOfText(samplesPerPixel.c_str());
        ZEL_ASSERT(number > 0);
        _SamplesPerPixel = static_cast<uint32_t>(number);
    }
}

const CTiffStoreReader::CTiling& CTiffStoreReader::TilingOf(uint32_t directory)
{
    const auto known = _Tilings.find(directory);
    return known != _Tilings.end() ? known->second : _Tilings.emplace(directory, ReadTilingOf(directory)).first->second;
}

CTiffStoreReader::CTiling CTiffStoreReader::ReadTilingOf(uint32_t directory)
{
    TIFF* tif = _Directories.SetDirectory(directory);
    CTiling tiling;
    tiling.Width = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGEWIDTH);
    tiling.Height = CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGELENGTH);
    tiling.IsTiled = TIFFIsTiled(tif) != 0;
    if (tiling.IsTiled)
    {
        // One that is missing stays 0, which is a fault only where tiles are wanted.
        CIA::TIFFGetField_mayFail(tif, TIFFTAG_TILEWIDTH, &tiling.TileWidth);
        CIA::TIFFGetField_mayFail(tif, TIFFTAG_TILELENGTH, &tiling.TileHeight);
    }
    else
        tiling.NumOfStrips = TIFFNumberOfStrips(tif);
    return tiling;
}

CTiffStoreLevel CTiffStoreReader::LevelOf(uint32_t directory, uint32_t imageNumber)
{
    CTiffStoreLevel level;
    level.Level = imageNumber;
    level.FirstDirectory = directory;
    const CTiling& tiling = TilingOf(directory);
    if (_Planes.empty())
        return level;
    if (tiling.IsTiled)
    {
        level.NumOfCols = NumOfTilesAcross(tiling.Width, tiling.TileWidth);
        level.NumOfRows = NumOfTilesAcross(tiling.Height, tiling.TileHeight);
    }
    else
    {
        level.NumOfCols = 1;
        level.NumOfRows = tiling.NumOfStrips;
    }
    for (size_t p = 0; p < _Planes.size(); p += _SamplesPerPixel)
        level.Planes.push_back(_Planes[p]);
    AssertRecordsFit(level);
    return level;
}

void CTiffStoreReader::AssertRecordsFit(const CTiffStoreLevel& level)
{
    uint64_t numOfPlanes = 0;
    for (size_t plane = 0; plane < level.Planes.size(); ++plane)
        numOfPlanes += level.TiffIfd(plane) < _NumOfDirectories ? 1 : 0;
    const uint64_t mostRecords = std::max(NumOfRecordsForAll, _FileSize / SizeOfTileInDirectory);
    ZEL_ASSERT(level.NumOfPositions() <= MaxNumOfPositions);
    ZEL_ASSERT(numOfPlanes == 0 || level.NumOfPositions() <= (mostRecords - _NumOfRecords) / numOfPlanes);
    _NumOfRecords += level.NumOfPositions() * numOfPlanes;
}

} // namespace Zel
