#include "ZelLoader/Store/TiffStoreReader.h"

#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

namespace Zel
{

namespace
{

constexpr uint64_t LeastSizeOfTileInDirectory = 4; ///< two numbers of 16 bits

/// At most 32 bits, so that a product of two is no more than 64.
uint64_t NumOfSteps(uint64_t size, uint64_t step)
{
    return (size + step - 1) / step;
}

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

void CTiffStoreReader::Read(CKorTiles& korTiles, std::vector<CTiffPlace>& tiffPlaces)
{
    _KorTiles = &korTiles;
    _TiffPlaces = &tiffPlaces;
    if (_Xml)
        _ImagesOfXml = ChildXmlTags(NeededChild(*_Xml->getDocument(), "OME"), "OME:Image");
    else
        _Planes.emplace_back();
    TIFF* tif = _Directories.TiffFilePtr();
    ZEL_ASSERT(tif);
    const uint32_t numOfDirectories = CIA::TIFFNumberOfDirectories(tif);
    uint32_t imageNumber = 0;
    for (uint64_t directory = 0; directory < numOfDirectories;)
    {
        if (_Xml)
            ReadPlanesOfXml(imageNumber);
        AddTilesOfDirectory(static_cast<uint32_t>(directory), imageNumber);
        ++imageNumber;
        directory = uint64_t{_Planes.size()} * imageNumber / _SamplesPerPixel;
    }
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
        CPlane plane;
        plane.ZIdx = index("TheZ");
        plane.TIdx = index("TheT");
        plane.CIdx = index("TheC");
        plane.LIdx = index("TheL");
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

void CTiffStoreReader::AddTilesOfDirectory(uint32_t directory, uint32_t imageNumber)
{
    const CTiling& tiling = TilingOf(directory);
    if (_Planes.empty()) // an image without planes has no records, however many tiles its directory has
        return;
    if (!tiling.IsTiled)
    {
        AssertRecordsFit(tiling.NumOfStrips);
        for (uint32_t strip = 0; strip < tiling.NumOfStrips; ++strip)
            AddPlanes(directory, 0, static_cast<int32_t>(strip), imageNumber);
        return;
    }
    const uint32_t tileWidth = tiling.TileWidth;
    const uint32_t tileHeight = tiling.TileHeight;
    ZEL_ASSERT(tileWidth != 0 && tileHeight != 0);
    AssertRecordsFit(NumOfSteps(tiling.Width, tileWidth) * NumOfSteps(tiling.Height, tileHeight));
    for (uint64_t y = 0; y < tiling.Height; y += tileHeight)
        for (uint64_t x = 0; x < tiling.Width; x += tileWidth)
            AddPlanes(directory, static_cast<int32_t>(x / tileWidth), static_cast<int32_t>(y / tileHeight),
                      imageNumber);
}

/// A strip or tile takes some bytes of its directory at least, for its offset and its size, however little it holds.
void CTiffStoreReader::AssertRecordsFit(uint64_t numOfTiles) const
{
    const uint64_t numOfPlanes = _Planes.size() / _SamplesPerPixel + 1;
    const uint64_t mostRecords = _FileSize / LeastSizeOfTileInDirectory;
    ZEL_ASSERT(_KorTiles->Size() <= mostRecords && numOfTiles <= (mostRecords - _KorTiles->Size()) / numOfPlanes);
}

void CTiffStoreReader::AddPlanes(uint32_t directory, int32_t col, int32_t row, uint32_t imageNumber)
{
    uint32_t k = 0;
    for (size_t p = 0; p < _Planes.size(); p += _SamplesPerPixel)
    {
        CDecompressedKorTileIdx idx = _Planes[p];
        idx.ColIdx = col;
        idx.RowIdx = row;
        idx.PIdx = imageNumber;
        _KorTiles->AddRun(idx, 1);
        _TiffPlaces->push_back({static_cast<uint16_t>(directory + k), p + _SamplesPerPixel >= _Planes.size()});
        ++k;
    }
}

} // namespace Zel
