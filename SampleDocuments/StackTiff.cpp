#include "SampleDocuments/StackTree.h"

namespace SampleDocuments
{

namespace
{

uint16_t SampleFormatOf(uint32_t componentType)
{
    switch (componentType)
    {
    case ComponentType::Int8:
    case ComponentType::Int16:
    case ComponentType::Int32:
    case ComponentType::Int64:
        return 2;
    case ComponentType::Float:
    case ComponentType::Double:
        return 3;
    default:
        return 1;
    }
}

CTiffDirectory DirectoryOf(const Stack& stack, uint32_t level, const CIndexes& at)
{
    const CStackPlan& plan = stack.Plan();
    CTiffDirectory directory(stack.LevelWidth(level), stack.LevelHeight(level));
    directory.Bits(static_cast<uint16_t>(8 * BytesOfComponent(plan.Pixels.ComponentType)))
        .Samples(static_cast<uint16_t>(plan.Pixels.ComponentCount))
        .SampleFormat(SampleFormatOf(plan.Pixels.ComponentType))
        .Compression(plan.TiffCompression);
    if (stack.IsStriped())
        directory.Strips(std::min(plan.RowsPerStrip, stack.LevelHeight(level)));
    else
        directory.Tiles(plan.TileWidth, plan.TileHeight);
    if (!plan.JpegTables.empty())
        directory.JpegTables(plan.JpegTables);
    const CLevelGrid grid = stack.WholeGrid(level);
    std::vector<ByteString> data;
    for (int32_t row = grid.RowRange.First; row <= grid.RowRange.Last; ++row)
        for (int32_t column = grid.ColumnRange.First; column <= grid.ColumnRange.Last; ++column)
            data.push_back(stack.TileBytes(level, column, row, at));
    return directory.Data(std::move(data));
}

} // namespace

void ForEachDirectory(const Stack& stack, const std::function<void(uint32_t level, const CIndexes& at)>& visit)
{
    const bool isInDocument = stack.Plan().Storage == StackStorage::InDocument;
    const std::vector<CIndexes> frames = isInDocument ? stack.FrameNodes() : stack.Frames();
    const uint32_t numOfLevels = isInDocument ? 1 : stack.Plan().NumOfLevels;
    for (uint32_t level = 0; level < numOfLevels; ++level)
        for (const CIndexes& at : frames)
            visit(level, at);
}

std::string XmlOf(const Stack& stack)
{
    const CStackPlan& plan = stack.Plan();
    const uint32_t samples = plan.Pixels.ComponentCount;
    std::string planes;
    for (const CIndexes& at : stack.Frames())
        for (uint32_t sample = 0; sample < samples; ++sample)
            planes += "<OME:Plane TheZ=\"" + std::to_string(at.Z) + "\" TheT=\"" + std::to_string(at.T) + "\" TheC=\"" +
                      std::to_string(at.C) + "\" TheL=\"" + std::to_string(at.L) + "\"/>";
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><OME xmlns:OME=\"urn:ome\">";
    for (uint32_t level = 0; level < plan.NumOfLevels; ++level)
        xml += "<OME:Image ID=\"Image:" + std::to_string(level) + "\"><OME:Pixels SizeX=\"" +
               std::to_string(stack.LevelWidth(level)) + "\" SizeY=\"" + std::to_string(stack.LevelHeight(level)) +
               "\"><OME:Channel SamplesPerPixel=\"" + std::to_string(samples) + "\"/>" + planes +
               "</OME:Pixels></OME:Image>";
    return xml + "</OME>";
}

std::vector<CTiffDirectory> DirectoriesOf(const Stack& stack)
{
    const CStackPlan& plan = stack.Plan();
    std::vector<CTiffDirectory> directories;
    if (plan.Storage != StackStorage::InDocument && plan.Storage != StackStorage::TiffStore)
        return directories;
    ForEachDirectory(stack,
                     [&](uint32_t level, const CIndexes& at) { directories.push_back(DirectoryOf(stack, level, at)); });
    if (plan.Storage == StackStorage::TiffStore && plan.HasXml)
        directories.front().Description(XmlOf(stack));
    return directories;
}

} // namespace SampleDocuments
