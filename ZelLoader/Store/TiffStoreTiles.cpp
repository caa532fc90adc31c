#include "ZelLoader/Store/TiffStoreTiles.h"

#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Store/ZelTiffStoreTile.h"

#include <algorithm>
#include <map>

namespace Zel
{

namespace
{

/// A plane of a frame.
struct CPlaneOfFrame
{
    const CTiffStoreLevel* Level;
    uint32_t Number;
};

class CTilesOfPlanes : public CTiffStoreFrameTiles
{
public:
    CTilesOfPlanes(CZelFrame& frame, const CTiffPlanesByFrame& planesByFrame) : _Frame(frame)
    {
        for (const CTiffPlanesByFrame::CPlane& plane : planesByFrame.PlanesOf(frame.FrameIdx()))
        {
            if (_FirstOfLevels.empty() || _Planes.back().Level != plane.Level)
                _FirstOfLevels.push_back(_Planes.size());
            _Planes.push_back({plane.Level, plane.Number});
        }
    }

    uint64_t Size() const override
    {
        uint64_t size = 0;
        for (const size_t first : _FirstOfLevels)
            size += _Planes[first].Level->NumOfPositions();
        return size;
    }
    CDeepZoomTile* Find(const CDeepZoomTileIdx& idx) override;
    std::optional<CTileCorner> SmallestColAndRow(uint32_t level) const override;
    bool ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit) override;
    CZelTiffStoreTile& TileOfPlane(const CTiffStoreLevel& level, uint32_t plane, int32_t col, int32_t row) override;
    bool LieInTheirMatrixes() const;

private:
    /// The place of the first plane of a level; nothing when the frame has none there.
    std::optional<size_t> FindLevel(uint32_t level) const;
    CZelTiffStoreTile& TileAt(size_t place, uint32_t col, uint32_t row);

    CZelFrame& _Frame;
    std::vector<CPlaneOfFrame> _Planes; ///< by level, then in the order of the file
    std::vector<size_t> _FirstOfLevels; ///< where the planes of each level begin
    /// Those that were asked for, by place among the planes and position. One by one: the walk over the file goes from
    /// plane to plane at one position, and a file can name many planes of many positions.
    std::map<std::pair<size_t, uint32_t>, CZelTiffStoreTile> _Tiles;
};

std::optional<size_t> CTilesOfPlanes::FindLevel(uint32_t level) const
{
    const auto levelOf = [this](size_t first) { return _Planes[first].Level->Level; };
    const auto found = std::ranges::lower_bound(_FirstOfLevels, level, {}, levelOf);
    return found != _FirstOfLevels.end() && levelOf(*found) == level ? std::optional(*found) : std::nullopt;
}

CDeepZoomTile* CTilesOfPlanes::Find(const CDeepZoomTileIdx& idx)
{
    const std::optional<size_t> place = FindLevel(idx._PyramidLevelIdx);
    if (!place || idx._TileColIdx < 0 || idx._TileRowIdx < 0)
        return nullptr;
    const auto col = static_cast<uint32_t>(idx._TileColIdx);
    const auto row = static_cast<uint32_t>(idx._TileRowIdx);
    const CTiffStoreLevel& level = *_Planes[*place].Level;
    return col < level.NumOfCols && row < level.NumOfRows ? &TileAt(*place, col, row) : nullptr;
}

std::optional<CTileCorner> CTilesOfPlanes::SmallestColAndRow(uint32_t level) const
{
    return FindLevel(level) ? std::optional(CTileCorner{0, 0}) : std::nullopt;
}

bool CTilesOfPlanes::ForEachOfLevel(uint32_t level, const std::function<bool(CDeepZoomTile&)>& visit)
{
    const std::optional<size_t> place = FindLevel(level);
    if (!place)
        return true;
    const CTiffStoreLevel& levelOfStore = *_Planes[*place].Level;
    for (uint32_t row = 0; row < levelOfStore.NumOfRows; ++row)
        for (uint32_t col = 0; col < levelOfStore.NumOfCols; ++col)
            if (!visit(TileAt(*place, col, row)))
                return false;
    return true;
}

CZelTiffStoreTile& CTilesOfPlanes::TileOfPlane(const CTiffStoreLevel& level, uint32_t plane, int32_t col, int32_t row)
{
    const auto keyOf = [](const CPlaneOfFrame& p) { return std::pair(p.Level->Level, p.Number); };
    const auto found = std::ranges::lower_bound(_Planes, std::pair(level.Level, plane), {}, keyOf);
    ZEL_ASSERT(found != _Planes.end() && found->Level == &level && found->Number == plane);
    return TileAt(static_cast<size_t>(found - _Planes.begin()), static_cast<uint32_t>(col), static_cast<uint32_t>(row));
}

CZelTiffStoreTile& CTilesOfPlanes::TileAt(size_t place, uint32_t col, uint32_t row)
{
    const CPlaneOfFrame& plane = _Planes[place];
    const std::pair key(place, plane.Level->PositionOf(col, row));
    if (const auto known = _Tiles.find(key); known != _Tiles.end())
        return known->second;
    const bool isFirstOfLevel = place == 0 || _Planes[place - 1].Level != plane.Level;
    const CTileCorner position{static_cast<int32_t>(col), static_cast<int32_t>(row)};
    CDeepZoomPyramidLevel& level = *_Frame.ParentMultiDimImg().DeepZoomPyramidLevels()[plane.Level->Level];
    return _Tiles.try_emplace(key, *plane.Level, plane.Number, position, _Frame, level, !isFirstOfLevel).first->second;
}

bool CTilesOfPlanes::LieInTheirMatrixes() const
{
    const auto& levels = _Frame.ParentMultiDimImg().DeepZoomPyramidLevels();
    for (const size_t first : _FirstOfLevels)
    {
        const CTiffStoreLevel& levelOfStore = *_Planes[first].Level;
        ZEL_ASSERT(levelOfStore.Level < levels.size() && levels[levelOfStore.Level]);
        CDeepZoomPyramidLevel& level = *levels[levelOfStore.Level];
        if (levelOfStore.NumOfCols > level.NumOfCols() || levelOfStore.NumOfRows > level.NumOfRows())
            return false;
    }
    return true;
}

} // namespace

CTiffPlanesByFrame::CTiffPlanesByFrame(const std::vector<CTiffStoreLevel>& levels, const CDimensions& dimensions,
                                       uint64_t maxNumOfFrames)
    : _FrameNumbers(dimensions, maxNumOfFrames)
{
    for (const CTiffStoreLevel& level : levels)
        for (size_t plane = 0; plane < level.Planes.size(); ++plane)
            _Planes.push_back({_FrameNumbers.NumberOf(level.Planes[plane]), &level, static_cast<uint32_t>(plane)});
    std::ranges::stable_sort(_Planes, {}, &CPlane::FrameNumber);
}

std::span<const CTiffPlanesByFrame::CPlane> CTiffPlanesByFrame::PlanesOf(const CFrameIdx& idx) const
{
    const uint64_t number = _FrameNumbers.NumberOf(idx);
    return {std::ranges::lower_bound(_Planes, number, {}, &CPlane::FrameNumber),
            std::ranges::upper_bound(_Planes, number, {}, &CPlane::FrameNumber)};
}

std::unique_ptr<CTiffStoreFrameTiles> MakeTiffStoreFrameTiles(CZelFrame& frame)
{
    auto tiles = std::make_unique<CTilesOfPlanes>(frame, frame.ParentZelImage().TiffPlanesByFrame());
    return tiles->LieInTheirMatrixes() ? std::move(tiles) : nullptr;
}

} // namespace Zel
