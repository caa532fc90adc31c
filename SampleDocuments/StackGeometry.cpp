#include "SampleDocuments/Stack.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

constexpr uint16_t TiffCompressionNone = 1;

uint32_t HalvedUp(uint32_t length, uint32_t times)
{
    for (; times > 0 && length > 1; --times)
        length = (length + 1) / 2;
    return length;
}

int32_t LastTile(uint32_t length, uint32_t tileLength)
{
    return length == 0 || tileLength == 0 ? 0 : static_cast<int32_t>((length - 1) / tileLength);
}

uint32_t* IndexIn(CIndexes& indexes, DimensionMeaning::E meaning)
{
    switch (meaning)
    {
    case DimensionMeaning::Z:
        return &indexes.Z;
    case DimensionMeaning::T:
        return &indexes.T;
    case DimensionMeaning::Lambda:
        return &indexes.L;
    case DimensionMeaning::Channel:
        return &indexes.C;
    default:
        return nullptr;
    }
}

/// All combinations of the points of the dimensions; the first dimension varies fastest.
std::vector<CIndexes> Combinations(const std::vector<CStackDimension>& dimensions, bool areChannelsLeftOut)
{
    std::vector<CIndexes> all(1);
    for (const CStackDimension& dimension : dimensions)
    {
        CIndexes probe;
        if (!IndexIn(probe, dimension.Meaning) ||
            (areChannelsLeftOut && dimension.Meaning == DimensionMeaning::Channel))
            continue;
        std::vector<CIndexes> more;
        more.reserve(all.size() * dimension.NumOfPoints);
        for (uint32_t i = 0; i < dimension.NumOfPoints; ++i)
            for (CIndexes indexes : all)
            {
                *IndexIn(indexes, dimension.Meaning) = i;
                more.push_back(indexes);
            }
        all = std::move(more);
    }
    return all;
}

} // namespace

uint32_t Stack::LevelWidth(uint32_t level) const
{
    return HalvedUp(_Plan.Width, level);
}

uint32_t Stack::LevelHeight(uint32_t level) const
{
    return HalvedUp(_Plan.Height, level);
}

CLevelGrid Stack::WholeGrid(uint32_t level) const
{
    const int32_t lastColumn = IsStriped() ? 0 : LastTile(LevelWidth(level), _Plan.TileWidth);
    const uint32_t rowHeight = IsStriped() ? _Plan.RowsPerStrip : _Plan.TileHeight;
    return {level, Columns(0, lastColumn), Rows(0, LastTile(LevelHeight(level), rowHeight))};
}

std::vector<CLevelGrid> Stack::Grids() const
{
    std::vector<CLevelGrid> grids = _Plan.Grids;
    if (grids.empty())
        for (uint32_t level = 0; level < _Plan.NumOfLevels; ++level)
            grids.push_back(WholeGrid(level));
    std::stable_sort(grids.begin(), grids.end(),
                     [](const CLevelGrid& a, const CLevelGrid& b) { return a.Level < b.Level; });
    return grids;
}

std::vector<CIndexes> Stack::Frames() const
{
    return Combinations(_Plan.Dimensions, false);
}

std::vector<CIndexes> Stack::FrameNodes() const
{
    return Combinations(_Plan.Dimensions, _Plan.AreFramesSharedByChannels);
}

std::vector<uint32_t> Stack::NumOfPointsPerDim() const
{
    if (_Plan.Counts)
        return *_Plan.Counts;
    std::vector<uint32_t> counts;
    for (const CStackDimension& dimension : _Plan.Dimensions)
        if (dimension.IsCounted)
            counts.push_back(dimension.NumOfPoints);
    return counts.empty() ? std::vector<uint32_t>{1} : counts;
}

uint32_t Stack::BytesPerPixel() const
{
    return _Plan.Pixels.ComponentCount * BytesOfComponent(_Plan.Pixels.ComponentType);
}

bool Stack::IsStriped() const
{
    return _Plan.RowsPerStrip != 0 &&
           (_Plan.Storage == StackStorage::InDocument || _Plan.Storage == StackStorage::TiffStore);
}

CTileRegion Stack::RegionOf(const CTilePlace& place) const
{
    if (!IsStriped())
        return {int64_t{place.Column} * _Plan.TileWidth, int64_t{place.Row} * _Plan.TileHeight, _Plan.TileWidth,
                _Plan.TileHeight};
    const uint32_t height = LevelHeight(place.Level);
    const int64_t above = std::min<int64_t>(int64_t{place.Row} * _Plan.RowsPerStrip, height);
    return {0, above, LevelWidth(place.Level), std::min(_Plan.RowsPerStrip, static_cast<uint32_t>(height - above))};
}

ByteString Stack::TileBytes(uint32_t level, int32_t column, int32_t row, CIndexes at) const
{
    return TileBytes({level, column, row, at});
}

ByteString Stack::TileBytes(const CTilePlace& place) const
{
    if (_Plan.Contents.Bytes)
        return _Plan.Contents.Bytes(place);
    const bool isRaw = _Plan.Storage == StackStorage::BinaryStore
                           ? _Plan.Pixels.CompressionFormat == StoreCompression::Raw
                           : _Plan.TiffCompression == TiffCompressionNone;
    return (isRaw ? PixelsOf(_Plan) : Labels(_Plan.Id)).Bytes(place);
}

std::vector<int32_t> Stack::Elements(const CTilePlace& place) const
{
    std::vector<int32_t> elements = {place.Column, place.Row};
    CIndexes at = place.At;
    for (const CStackDimension& dimension : _Plan.Dimensions)
    {
        if (!dimension.IsCounted)
            continue;
        const uint32_t* index = IndexIn(at, dimension.Meaning);
        elements.push_back(index ? static_cast<int32_t>(*index) : 0);
    }
    // Without counts there is still one element between row and level.
    elements.resize(2 + std::max<size_t>(1, NumOfPointsPerDim().size()));
    elements.push_back(static_cast<int32_t>(place.Level));
    return elements;
}

void Stack::ForEachTile(const std::function<void(const CTilePlace&)>& visit) const
{
    const std::vector<CIndexes> frames = Frames();
    for (const CLevelGrid& grid : Grids())
        for (const CIndexes& at : frames)
            for (int32_t row = grid.RowRange.First; row <= grid.RowRange.Last; ++row)
                for (int32_t column = grid.ColumnRange.First; column <= grid.ColumnRange.Last; ++column)
                {
                    const CTilePlace place = {grid.Level, column, row, at};
                    if (!_Plan.IsMissing || !_Plan.IsMissing(place))
                        visit(place);
                }
}

uint64_t Stack::NumOfTiles() const
{
    uint64_t count = 0;
    ForEachTile([&count](const CTilePlace&) { ++count; });
    return count;
}

} // namespace SampleDocuments
