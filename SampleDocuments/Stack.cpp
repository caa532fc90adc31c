#include "SampleDocuments/Stack.h"

namespace SampleDocuments
{

Stack& Stack::Size(uint32_t pixelWidth, uint32_t pixelHeight)
{
    _Plan.Width = pixelWidth;
    _Plan.Height = pixelHeight;
    return *this;
}

Stack& Stack::Tiles(uint32_t pixelWidth, uint32_t pixelHeight)
{
    _Plan.TileWidth = pixelWidth;
    _Plan.TileHeight = pixelHeight;
    return *this;
}

Stack& Stack::Levels(uint32_t numOfLevels)
{
    _Plan.NumOfLevels = numOfLevels;
    return *this;
}

Stack& Stack::Level(uint32_t level, Columns columns, Rows rows)
{
    _Plan.Grids.push_back({level, columns, rows});
    return *this;
}

Stack& Stack::Missing(std::function<bool(const CTilePlace&)> isMissing)
{
    if (_Plan.IsMissing)
        _Plan.IsMissing = [before = _Plan.IsMissing, isMissing](const CTilePlace& place)
        { return before(place) || isMissing(place); };
    else
        _Plan.IsMissing = std::move(isMissing);
    return *this;
}

Stack& Stack::MissingTile(uint32_t level, int32_t column, int32_t row)
{
    return Missing([=](const CTilePlace& place)
                   { return place.Level == level && place.Column == column && place.Row == row; });
}

namespace
{

CStackDimension DimensionOf(DimensionMeaning::E meaning, uint32_t numOfPoints, double start, double step,
                            const std::string& unit)
{
    CStackDimension dimension;
    dimension.Meaning = meaning;
    dimension.NumOfPoints = numOfPoints;
    dimension.Start = start;
    dimension.Step = step;
    dimension.StartUnit = dimension.StepUnit = unit;
    return dimension;
}

} // namespace

Stack& Stack::Dimension(CStackDimension dimension)
{
    _Plan.Dimensions.push_back(std::move(dimension));
    return *this;
}

Stack& Stack::Z(uint32_t numOfPoints, double start, double step, std::string unit)
{
    return Dimension(DimensionOf(DimensionMeaning::Z, numOfPoints, start, step, unit));
}

Stack& Stack::T(uint32_t numOfPoints, double start, double step, std::string unit)
{
    return Dimension(DimensionOf(DimensionMeaning::T, numOfPoints, start, step, unit));
}

Stack& Stack::Lambda(uint32_t numOfPoints, double start, double step, std::string unit)
{
    return Dimension(DimensionOf(DimensionMeaning::Lambda, numOfPoints, start, step, unit));
}

Stack& Stack::Channels(std::vector<CChannel> channels)
{
    CStackDimension dimension;
    dimension.Meaning = DimensionMeaning::Channel;
    dimension.NumOfPoints = static_cast<uint32_t>(channels.size());
    dimension.Channels = std::move(channels);
    return Dimension(std::move(dimension));
}

Stack& Stack::Channels(uint32_t numOfChannels)
{
    std::vector<CChannel> channels;
    for (uint32_t i = 0; i < numOfChannels; ++i)
        channels.emplace_back("Channel " + std::to_string(i));
    return Channels(std::move(channels));
}

Stack& Stack::Dummy()
{
    return Dimension(CStackDimension());
}

Stack& Stack::DummyWithoutCount()
{
    CStackDimension dimension;
    dimension.IsCounted = false;
    return Dimension(std::move(dimension));
}

Stack& Stack::Counts(std::vector<uint32_t> counts)
{
    _Plan.Counts = std::move(counts);
    return *this;
}

Stack& Stack::FramesSharedByChannels()
{
    _Plan.AreFramesSharedByChannels = true;
    return *this;
}

Stack& Stack::FrameCoordinates(DimensionMeaning::E dimension, std::vector<double> values, std::string unit)
{
    _Plan.Coordinates[dimension] = {std::move(values), std::move(unit)};
    return *this;
}

Stack& Stack::FramePropertiesAlways()
{
    _Plan.HasFramePropertiesAlways = true;
    return *this;
}

Stack& Stack::Raw(ComponentType::E type, uint32_t components)
{
    _Plan.Pixels.ComponentType = type;
    _Plan.Pixels.ComponentCount = components;
    _Plan.Pixels.CompressionFormat = StoreCompression::Raw;
    _Plan.Pixels.ColorSpace = components == 1 ? StoreColorSpace::Gray : StoreColorSpace::Rgb;
    _Plan.Pixels.ComponentOrder = components == 1 ? ComponentOrder::None : ComponentOrder::Rgb;
    return *this;
}

Stack& Stack::Jpeg(uint32_t components, uint32_t quality)
{
    return Raw(ComponentType::Uint8, components).Compression(StoreCompression::Jpeg).Quality(quality);
}

Stack& Stack::JpegLossless(uint32_t components)
{
    return Raw(ComponentType::Uint8, components).Compression(StoreCompression::JpegLossless);
}

Stack& Stack::J2k(uint32_t components)
{
    return Raw(ComponentType::Uint8, components).Compression(StoreCompression::J2k).Quality(85);
}

Stack& Stack::Png(uint32_t components)
{
    return Raw(ComponentType::Uint8, components).Compression(StoreCompression::Png);
}

Stack& Stack::Bmp(uint32_t components)
{
    return Raw(ComponentType::Uint8, components).Compression(StoreCompression::Bmp);
}

Stack& Stack::Compression(uint32_t code)
{
    _Plan.Pixels.CompressionFormat = code;
    return *this;
}

Stack& Stack::ColorSpace(uint32_t code)
{
    _Plan.Pixels.ColorSpace = code;
    return *this;
}

Stack& Stack::ComponentOrder(int32_t code)
{
    _Plan.Pixels.ComponentOrder = code;
    return *this;
}

Stack& Stack::Quality(uint32_t quality)
{
    _Plan.Pixels.CompressionQuality = quality;
    return *this;
}

Stack& Stack::Contents(CTileContents contents)
{
    _Plan.Contents = std::move(contents);
    return *this;
}

Stack& Stack::StoreName(std::string fileName)
{
    _Plan.StoreName = std::move(fileName);
    return *this;
}

Stack& Stack::WithoutStore()
{
    _Plan.IsStoreWritten = false;
    return *this;
}

Stack& Stack::ChunkListBeforeBodies()
{
    _Plan.ChunkListBeforeBodies = true;
    return *this;
}

Stack& Stack::InDocument(uint32_t rowsPerStrip)
{
    _Plan.Storage = StackStorage::InDocument;
    _Plan.RowsPerStrip = rowsPerStrip;
    return *this;
}

Stack& Stack::InTiffStore(uint32_t rowsPerStrip)
{
    _Plan.Storage = StackStorage::TiffStore;
    _Plan.RowsPerStrip = rowsPerStrip;
    return *this;
}

Stack& Stack::BigTiff()
{
    _Plan.IsBigTiff = true;
    return *this;
}

Stack& Stack::WithoutXml()
{
    _Plan.HasXml = false;
    return *this;
}

Stack& Stack::TiffCompression(uint16_t code)
{
    _Plan.TiffCompression = code;
    return *this;
}

Stack& Stack::JpegTables(ByteString tables)
{
    _Plan.JpegTables = std::move(tables);
    return *this;
}

Stack& Stack::VectorGraphics()
{
    _Plan.Storage = StackStorage::VectorGraphics;
    return *this;
}

} // namespace SampleDocuments
