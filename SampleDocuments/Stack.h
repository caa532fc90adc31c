#pragma once

#include "SampleDocuments/Devices.h"
#include "SampleDocuments/Display.h"
#include "SampleDocuments/LookUpTable.h"
#include "SampleDocuments/TileContents.h"
#include "SampleDocuments/TileStore.h"

#include <functional>

namespace SampleDocuments
{

/// What a dimension of a stack is, with the numbers that stand for it in a document.
struct DimensionMeaning
{
    enum E : int32_t
    {
        Dummy = 0, ///< a placeholder: a dimension node without entries
        Z = 1,
        T = 2,
        Lambda = 3,
        Channel = 4
    };
};

/// A channel: its name, its display limits if they are not those of the stack, and what else it tells:
///
///     CChannel("DAPI", 0, 4096).With(Camera(300)).With(CLookUpTable(Ramp(256, {0, 0, 255})))
struct CChannel
{
    CChannel(std::string name) : Name(std::move(name)) {}
    CChannel(const char* name) : Name(name) {}
    CChannel(std::string name, double lower, double upper) : Name(std::move(name)), Limits(std::make_pair(lower, upper))
    {
    }
    std::string Name;
    std::optional<std::pair<double, double>> Limits; ///< the second is one past the largest value
    bool IsWavelength = false;                       ///< carries the node that marks a channel among surplus ones
    std::optional<CLookUpTable> Table;
    std::optional<COpticalPath> OpticalPath; ///< an empty one is a node without devices

    CChannel& With(CLookUpTable table)
    {
        Table = std::move(table);
        return *this;
    }
    CChannel& With(CDevice device)
    {
        if (!OpticalPath)
            OpticalPath.emplace();
        OpticalPath->push_back(std::move(device));
        return *this;
    }
};

/// A dimension of a stack. What is not set is not written: `{.Meaning = DimensionMeaning::T, .NumOfPoints = 3}` is a
/// T dimension that leaves it to the frames to tell their times.
struct CStackDimension
{
    DimensionMeaning::E Meaning = DimensionMeaning::Dummy;
    uint32_t NumOfPoints = 1;
    std::optional<double> Start = {};
    std::optional<double> Step = {};
    std::string StartUnit = {};
    std::string StepUnit = {};
    bool IsMeaningWritten = true;        ///< false: readers have to tell it from a name alone
    bool IsCounted = true;               ///< false, for a dummy: it has no element among the counts
    std::vector<CChannel> Channels = {}; ///< of a channel dimension only
};

/// Inclusive range of tile columns; numbers below 0 are good.
struct Columns
{
    Columns(int32_t first, int32_t last) : First(first), Last(last) {}
    int32_t First;
    int32_t Last;
};

/// Inclusive range of tile rows.
struct Rows
{
    Rows(int32_t first, int32_t last) : First(first), Last(last) {}
    int32_t First;
    int32_t Last;
};

/// The tiles of one pyramid level.
struct CLevelGrid
{
    uint32_t Level = 0;
    Columns ColumnRange{0, 0};
    Rows RowRange{0, 0};
};

/// The pixels that a tile or strip stands for, in a level. Edge tiles reach beyond the picture, strips do not.
struct CTileRegion
{
    int64_t X = 0;
    int64_t Y = 0;
    uint32_t Width = 0;
    uint32_t Height = 0;
};

/// Where a stack keeps its pixels.
struct StackStorage
{
    enum E
    {
        BinaryStore,   ///< frame_t.kor in the side folder
        TiffStore,     ///< frame_t.tif in the side folder
        InDocument,    ///< TIFF directories of the document itself
        VectorGraphics ///< none: a layer that readers pass over
    };
};

/// The coordinates that frames tell about themselves along one dimension, by index of the point.
struct CFrameCoordinates
{
    std::vector<double> Values;
    std::string Unit;
};

/// The stage and the words that go with a picture. What is not set is not written.
struct CAcquisition
{
    std::optional<CMeasured> StageX = {};
    std::optional<CMeasured> StageY = {};
    std::optional<std::string> ExperimentName = {};
    std::optional<std::string> SampleName = {};
    std::optional<std::string> SampleDescription = {};
};

/// What a single frame has beyond the others.
struct CFrameExtras
{
    std::optional<COpticalPath> OpticalPath = {};
    std::vector<CNode> Blobs = {};
};

/// Everything that is known of a stack, as plain data with the defaults of a one-tile stack of 8-bit grey pixels.
struct CStackPlan
{
    uint32_t Id = 1;
    std::optional<std::string> Name;
    uint32_t Width = 256;
    uint32_t Height = 256;
    uint32_t TileWidth = 256;
    uint32_t TileHeight = 256;
    uint32_t NumOfLevels = 1; ///< of a whole pyramid; of no effect once Grids is not empty
    std::vector<CLevelGrid> Grids;
    std::vector<CStackDimension> Dimensions;     ///< the first one varies fastest from frame to frame
    std::optional<std::vector<uint32_t>> Counts; ///< in the place of the counts that follow from the dimensions
    bool AreFramesSharedByChannels = false;
    std::map<DimensionMeaning::E, CFrameCoordinates> Coordinates;
    bool HasFramePropertiesAlways = false; ///< the node is written in each frame, coordinates or not

    StackStorage::E Storage = StackStorage::BinaryStore;
    CStoreVolumeHeader VolumeHeader; ///< of a binary store, as the next two
    CStoreAdditionalHeader Pixels;   ///< its tile size is that of this plan
    bool ChunkListBeforeBodies = false;
    std::optional<std::string> StoreName; ///< frame_t.kor or frame_t.tif if not set
    bool IsStoreWritten = true;
    CTileContents Contents; ///< empty: raw pixels in a raw store, labels in any other
    std::function<bool(const CTilePlace&)> IsMissing;
    uint16_t TiffCompression = 1;
    ByteString JpegTables;
    uint32_t RowsPerStrip = 0; ///< of TIFF directories; 0: they are tiled
    bool IsBigTiff = false;    ///< of a TIFF store
    bool HasXml = true;        ///< of a TIFF store; without, each directory is a level

    std::optional<std::vector<int32_t>> Boundary; ///< {0, 0, Width, Height} if not set
    std::optional<std::vector<int32_t>> Shift = std::vector<int32_t>{0, 0};
    std::optional<std::vector<double>> Origin = std::vector<double>{0, 0};
    std::optional<std::vector<double>> Scale = std::vector<double>{0.5, 0.5};
    std::optional<std::string> Unit = "10^-6m^1";
    std::optional<std::string> YUnit;
    std::optional<int64_t> CreationTime = 1577836800;
    std::optional<int32_t> StackType = 0;
    std::optional<std::pair<int32_t, int32_t>> AxisMeanings;
    std::optional<std::pair<double, double>> Limits; ///< from 0 to all of a component's bits if not set
    bool HasLimits = true;
    std::optional<std::pair<double, double>> StackLimits; ///< those at the level of the stack, channels or not
    std::optional<CLookUpTable> Table;                    ///< of a stack without channels, or of all of them
    std::optional<COpticalPath> OpticalPath;
    std::optional<CAcquisition> Acquisition;
    CDisplayChannel Display; ///< the stack's channel in the display flow

    std::vector<CNode> LayerBlobs;
    std::map<uint32_t, std::vector<CNode>> ChannelBlobs; ///< by number of the channel
    std::map<size_t, CFrameExtras> FrameExtras;          ///< by number of the frame, in the order of the file
};

/// A stack of a document, described so that a test can be read:
///
///     Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1)).Z(3).Channels({"DAPI", "FITC"})
///
/// Dimensions are written in the order of the calls; the first one varies fastest. Without any, the stack has one
/// frame. Without Level or Levels it has one level. A plain value: copies are independent.
class Stack
{
public:
    explicit Stack(CStackPlan plan) : _Plan(std::move(plan)) {}
    explicit Stack(uint32_t id)
    {
        _Plan.Id = id;
        _Plan.Name = "Stack " + std::to_string(id);
    }

    // The picture and its pyramid.
    Stack& Size(uint32_t pixelWidth, uint32_t pixelHeight);
    Stack& Tiles(uint32_t pixelWidth, uint32_t pixelHeight);
    Stack& Levels(uint32_t numOfLevels);                      ///< whole levels, each half of the one below, rounded up
    Stack& Level(uint32_t level, Columns columns, Rows rows); ///< the tiles of one level; levels not named are left out
    Stack& Missing(std::function<bool(const CTilePlace&)> isMissing); ///< tiles that get no record
    Stack& MissingTile(uint32_t level, int32_t column, int32_t row);  ///< the same, for a tile in all frames

    // Dimensions, with start and step; Dimension() makes those that tell less.
    Stack& Z(uint32_t numOfPoints, double start = 0, double step = 1.5, std::string unit = "10^-6m^1");
    Stack& T(uint32_t numOfPoints, double start = 0, double step = 500, std::string unit = "10^-3s^1");
    Stack& Lambda(uint32_t numOfPoints, double start = 400, double step = 10, std::string unit = "10^-9m^1");
    Stack& Channels(std::vector<CChannel> channels);
    Stack& Channels(uint32_t numOfChannels); ///< named "Channel 0", "Channel 1", ...
    Stack& Dummy();                          ///< with an element of 1 among the counts
    Stack& DummyWithoutCount();
    Stack& Dimension(CStackDimension dimension); ///< any of them, in all detail
    Stack& Counts(std::vector<uint32_t> counts); ///< against what follows from the dimensions
    Stack& FramesSharedByChannels();             ///< one frame node for all channels
    Stack& FrameCoordinates(DimensionMeaning::E dimension, std::vector<double> values, std::string unit);
    Stack& FramePropertiesAlways();

    // Pixels.
    Stack& Raw(ComponentType::E type, uint32_t components = 1);
    Stack& Jpeg(uint32_t components = 1, uint32_t quality = 85);
    Stack& JpegLossless(uint32_t components = 1);
    Stack& J2k(uint32_t components = 1);
    Stack& Png(uint32_t components = 1);
    Stack& Bmp(uint32_t components = 1);
    Stack& Compression(uint32_t code); ///< any number
    Stack& ColorSpace(uint32_t code);
    Stack& ComponentOrder(int32_t code);
    Stack& Quality(uint32_t quality);

    // The bytes of the tiles.
    Stack& Contents(CTileContents contents);

    // Where they are kept.
    Stack& StoreName(std::string fileName); ///< "frame_t_0.kor" for example
    Stack& WithoutStore();                  ///< the document asks for a store that is not written
    Stack& ChunkListBeforeBodies();
    /// In TIFF directories of the document, one to a frame, with strips or, for 0, tiles.
    Stack& InDocument(uint32_t rowsPerStrip = 0);
    /// In a TIFF store, with a directory for each level and frame. XML in the first one tells which is which.
    Stack& InTiffStore(uint32_t rowsPerStrip = 0);
    Stack& BigTiff();
    Stack& WithoutXml();
    /// Compression of the directories: 1 raw, 7 JPEG with tables that stand apart, 34712 JPEG 2000, or any number.
    Stack& TiffCompression(uint16_t code);
    Stack& JpegTables(ByteString tables);
    static constexpr uint32_t OneStrip = 0xFFFFFFFF; ///< rows per strip of a directory that has a single one
    Stack& VectorGraphics();

    // Properties.
    Stack& Name(std::string name);
    Stack& Boundary(std::vector<int32_t> leftTopRightBottom);
    Stack& Shift(int32_t x, int32_t y);
    Stack& Origin(double x, double y);
    Stack& Scale(double x, double y);
    Stack& Unit(std::string unit);
    Stack& YUnit(std::string unit);
    Stack& CreationTime(int64_t secondsInUtc);
    Stack& StackType(int32_t type);
    Stack& DisplayLimits(double lower, double upper);
    Stack& WithoutDisplayLimits();
    Stack& StackLimits(double lower, double upper); ///< at the level of the stack even if it has channels
    Stack& AxisMeanings(int32_t axis0, int32_t axis1);
    Stack& LookUpTable(CLookUpTable table);

    // The display flow.
    Stack& Hidden(bool hidden = true); ///< writes the flag, true or false
    Stack& Operator(int32_t id);
    Stack& Transparency(double value);
    Stack& Display(CDisplayChannel channel); ///< all of it, in the place of what was said before

    // Devices. A channel has to be described before it can be given one; frames are numbered in the order of the file.
    Stack& Lens(CObjectiveLens lens); ///< a revolver
    Stack& Exposure(int64_t time);    ///< a camera
    Stack& OldExposure(int32_t time); ///< a camera of an older document
    Stack& Device(CDevice device);
    Stack& ChannelDevice(uint32_t channel, CDevice device);
    Stack& FrameDevice(size_t frame, CDevice device);

    // The stage and the words that go with a picture.
    Stack& Stage(double x, double y, std::string unit = "10^-6m^1");
    Stack& Stage(std::optional<CMeasured> x, std::optional<CMeasured> y);
    Stack& Experiment(std::string name);
    Stack& Sample(std::string name, std::string description);

    // Blobs: Regions, or Blob() for any other kind. Several are written in the order of the calls.
    Stack& LayerBlob(CNode blob);
    Stack& FrameBlob(size_t frame, CNode blob);
    Stack& ChannelBlob(uint32_t channel, CNode blob);
    /// The overview picture of the whole slide: the first blob of the first frame.
    Stack& Overview(ByteString encodedPicture);

    /// All of it, for what has no call of its own.
    CStackPlan& Plan() { return _Plan; }
    const CStackPlan& Plan() const { return _Plan; }

    // What follows from it.
    uint32_t Id() const { return _Plan.Id; }
    std::vector<CLevelGrid> Grids() const;     ///< in rising order of levels
    uint32_t LevelWidth(uint32_t level) const; ///< of the picture, not of its tiles
    uint32_t LevelHeight(uint32_t level) const;
    std::vector<CIndexes> Frames() const;            ///< all combinations of the dimensions' points
    std::vector<CIndexes> FrameNodes() const;        ///< those that have a node of their own, in file order
    std::vector<uint32_t> NumOfPointsPerDim() const; ///< the counts as they are written
    uint32_t BytesPerPixel() const;
    bool IsStriped() const;
    CLevelGrid WholeGrid(uint32_t level) const; ///< the tiles, or strips, that cover all of a level
    CTileRegion RegionOf(const CTilePlace& place) const;

    /// The exact bytes that are written for a tile position, there or missing.
    ByteString TileBytes(uint32_t level, int32_t column, int32_t row, CIndexes at = {}) const;
    ByteString TileBytes(const CTilePlace& place) const;

    /// The elements of the record of a tile: column, row, one per count, level.
    std::vector<int32_t> Elements(const CTilePlace& place) const;

    /// Visits the positions that have a tile in the order in which they are written: level by level, in a level frame
    /// by frame, in a frame row by row.
    void ForEachTile(const std::function<void(const CTilePlace&)>& visit) const;
    uint64_t NumOfTiles() const;

private:
    CStackPlan _Plan;
};

} // namespace SampleDocuments
