#include "CommonImageAccess/Frame.h"

#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonImageAccess/PixelFormat.h"
#include "CommonUtil/Log.h"

#include <algorithm>
#include <cerrno>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// What a frame answers whose tiles could not be listed.
class CNoDeepZoomTiles : public CDeepZoomTiles
{
public:
    uint64_t Size() const override { return 0; }
    CDeepZoomTile* Find(const CDeepZoomTileIdx&) override { return nullptr; }
    std::optional<CTileCorner> SmallestColAndRow(uint32_t) const override { return {}; }
    bool ForEachOfLevel(uint32_t, const std::function<bool(CDeepZoomTile&)>&) override { return true; }
};

CDeepZoomTiles& NoDeepZoomTiles()
{
    static CNoDeepZoomTiles noTiles;
    return noTiles;
}

} // namespace

CFrame::CFrame(CMultiDimImage& image, const CFrameIdx& idx) : _ParentMultiDimImg(image), Idx(idx)
{
    DbgValidateIdx();
}

CFrame::~CFrame() = default;

void CFrame::DbgValidateIdx()
{
    const CDimensions& dimensions = _ParentMultiDimImg.Dimensions();
    for (const DimensionType::E type : FrameDifferentiators)
        ZEL_ASSERT(dimensions.contains(type) || Idx.SubIdx(type) == 0);
}

bool CFrame::Coords_init(CCoords& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    const CDimensions& dimensions = _ParentMultiDimImg.Dimensions();
    for (const DimensionType::E type : FrameDifferentiators)
    {
        const auto found = dimensions.find(type);
        if (found == dimensions.end())
            ZEL_ASSERT(Idx.SubIdx(type) == 0);
        else
            varToInit[type] = MakeOwnCoord(Idx.SubIdx(type), *found->second);
    }
    const CCoords& imageCoords = _ParentMultiDimImg.Coords();
    for (const DimensionType::E type : {DimensionType::DimensionType_X, DimensionType::DimensionType_Y})
    {
        const auto found = imageCoords.find(type);
        ZEL_ASSERT(found != imageCoords.end());
        varToInit.insert(*found);
    }
    return true;
}

bool CFrame::PixelOrRealWorldWidth_init(double& varToInit)
{
    const uint32_t width = _ParentMultiDimImg.PixelWidth();
    varToInit = width;
    return width != 0xFFFFFFFF;
}

bool CFrame::PixelOrRealWorldHeight_init(double& varToInit)
{
    const uint32_t height = _ParentMultiDimImg.PixelHeight();
    varToInit = height;
    return height != 0xFFFFFFFF;
}

bool CFrame::ZoomoutFactor_init(double& varToInit)
{
    varToInit = 1.0;
    return true;
}

bool CFrame::First_init(uint32_t& varToInit, DimensionType::E type)
{
    const auto found = Coords().find(type);
    ZEL_ASSERT(found != Coords().end());
    varToInit = found->second->Index();
    ZEL_ASSERT(varToInit < found->second->Dimension().NumOfPoints());
    return true;
}

CPixelFrameFormat& CFrame::Channel()
{
    ZEL_ASSERT(Coords().contains(DimensionType::DimensionType_C));
    return _ParentMultiDimImg.ChannelOf(Idx);
}

CDeepZoomTiles& CFrame::ListDeepZoomTiles()
{
    DbgValidateIdx();
    std::unique_ptr<CDeepZoomTiles> tiles = DeepZoomTiles_init();
    if (!tiles)
        return NoDeepZoomTiles();
    DbgValidateDeepZoomTiles(*tiles);
    _DeepZoomTiles = std::move(tiles);
    return *_DeepZoomTiles;
}

void CFrame::DbgValidateDeepZoomTiles(const CDeepZoomTiles& tiles)
{
    const auto& levels = _ParentMultiDimImg.DeepZoomPyramidLevels();
    // At most 100 levels, each a product of two 32-bit numbers cut to 57 bits: the sum cannot wrap.
    constexpr uint64_t ManyTiles = uint64_t{1} << 57;
    uint64_t expectedNumOfTiles = 0;
    for (const auto& level : levels)
        if (level)
            expectedNumOfTiles += std::min(uint64_t{level->NumOfCols()} * level->NumOfRows(), ManyTiles);
    if (!_ParentMultiDimImg.HasMissingTilesConcept())
        ZEL_ASSERT(tiles.Size() == expectedNumOfTiles);
    else
        ZEL_ASSERT(expectedNumOfTiles >= levels.size() && tiles.Size() >= levels.size());
}

CArrayStartAndSize<const unsigned char> CFrame::JpegTables()
{
    if (Channel().CompressionType() != PixelFrameCompressionType::Jpeg7)
    {
        ZEL_LOG("Call to 'JpegTables' is only valid in case the frame compression type is Jpeg7!!!");
        errno = EBADFD;
        return {};
    }
    if (_JpegTables.empty())
    {
        std::vector<unsigned char> tables = JpegTables_init();
        ZEL_ASSERT(!tables.empty() || errno != 0);
        _JpegTables = std::move(tables);
    }
    return {_JpegTables.data(), static_cast<uint32_t>(_JpegTables.size())};
}

} // namespace CIA
