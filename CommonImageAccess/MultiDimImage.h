#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/DeepZoomPyramidLevel.h"
#include "CommonImageAccess/Frame.h"
#include "CommonImageAccess/ObjThatHasCoords.h"
#include "CommonImageAccess/PixelFormat.h"
#include "CommonImageAccess/VectorGraphicsImage.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace CIA
{

class CImgDoc;
class CObjectiveLens;

/// One stack of frames over up to seven dimensions: what the host calls a group. It owns its dimensions, frames,
/// channels and pyramid levels, and builds each on first use. A container that could not be built comes back empty,
/// with errno; the next call tries again.
class CMultiDimImage : public ObjThatHasCoords, public CBrixPropsetProvider
{
public:
    /// Clears errno. The flag says what the size operations of the derived class give.
    CMultiDimImage(uint32_t ID, CImgDoc& parentImgDoc, bool isRealWorldSizeOrPixelSizeAvailable);
    ~CMultiDimImage() override;

    CImgDoc& ParentImgDoc() const { return _ParentImgDoc; }
    uint32_t ID() const { return _ID; }
    /// Lives as long as the document; empty when the image has no name.
    virtual const wchar_t* Name() = 0;
    /// Always lives as long as the document, as all texts that these operations give by pointer.
    virtual const wchar_t* Description() = 0;
    /// "2015-09-13T12:26:40+00:00"; empty when it is not known.
    virtual std::wstring CreationTime() = 0;
    /// A number of single bits that tells what kind of stack this is; -1 when it is not known.
    virtual int32_t ImageStackType() = 0;
    /// Stage position: NaN with errno 0 when it is not known; the units are never null, but may be empty.
    virtual double StageXPositionValue() = 0;
    virtual const wchar_t* StageXPositionUnits() = 0;
    virtual double StageYPositionValue() = 0;
    virtual const wchar_t* StageYPositionUnits() = 0;
    // Null when they are not known.
    virtual const wchar_t* ExperimentName() = 0;
    virtual const wchar_t* SampleName() = 0;
    virtual const wchar_t* SampleDescription() = 0;
    /// The display limits of a channel as whole numbers within what `channelDepth` bytes can hold. False when there are
    /// none; the outputs then stay.
    virtual bool LUTInfoShadowHighlight(uint32_t channelId, uint32_t channelDepth, int32_t& shadow,
                                        int32_t& highlight) = 0;
    /// The exposure time of a channel as text. AC_RESULT_INVALID_PARAM for an unknown channel,
    /// AC_RESULT_PROPERTY_NOT_FOUND when the document does not tell it.
    virtual AC_Result GroupExposureTime(uint32_t channelId, std::string& value) = 0;
    /// Answers of the display flow and the image's own properties for the group custom data of that key. False when
    /// there is nothing.
    virtual bool ImgDispChannelProperty(const wchar_t* key, AC_VALUE_WITH_TYPE& value) = 0;
    virtual bool ImgPlaneProperty(const wchar_t* key, std::string& value) = 0;
    virtual bool ImageFrameProperties(const wchar_t* key, std::string& value) = 0;
    /// True when no frame of this image lies in the first TIFF directory, which is the thumbnail's.
    virtual bool DbgDoesNotUseIFD0() = 0;
    /// True when a store may lack tiles at some positions.
    virtual bool HasMissingTilesConcept() = 0;
    /// Fills left, top, width and height of the picture within a level, in pixels of that level.
    virtual void GetCroppedLevelImageSize(uint32_t levelId, std::array<int32_t, 4>& croppedRect) = 0;
    /// Asserts that this image may lack the tile that was not found.
    virtual void DbgValidateNullDeepZoomTile() = 0;

    const CDimensions& Dimensions() { return _Dimensions.empty() ? MakeDimensions() : _Dimensions; }
    /// One of the dimensions; null when the image has not got it.
    CDimension* FindDimension(DimensionType::E type)
    {
        Dimensions();
        return _DimensionsByType[static_cast<size_t>(type)];
    }
    /// One that the image must have.
    CDimension& DimensionOf(DimensionType::E type)
    {
        CDimension* dimension = FindDimension(type);
        ZEL_ASSERT(dimension);
        return *dimension;
    }
    /// The mandatory dimensions and those of more than one point.
    const CDimensionRefs& SignificantDimensions();
    /// Which of the dimensions that tell frames apart the image has.
    CDimensionTypes FrameDimensions()
    {
        Dimensions();
        return _FrameDimensions;
    }
    const CFrames& Frames() { return _Frames.empty() ? MakeFrames() : _Frames; }
    /// One of the frames, found by arithmetic; null when there is none of that key.
    CFrame* FindFrame(const CFrameIdx& idx)
    {
        if (Frames().empty() || idx.Z > _LastFrame.Z || idx.C > _LastFrame.C || idx.L > _LastFrame.L ||
            idx.T > _LastFrame.T)
            return nullptr;
        const uint64_t numOfC = uint64_t{_LastFrame.C} + 1;
        const uint64_t numOfL = uint64_t{_LastFrame.L} + 1;
        const uint64_t numOfT = uint64_t{_LastFrame.T} + 1;
        return _FrameTable[((idx.Z * numOfC + idx.C) * numOfL + idx.L) * numOfT + idx.T];
    }
    const CChannels& Channels();
    /// The channel of a frame; asserts that there is one.
    CPixelFrameFormat& ChannelOf(const CFrameIdx& frameIdx);
    /// What users have drawn on the image; an object's ID is its place.
    const std::vector<CVectorGraphicsImage>& VectorGraphicsImages();
    /// Null when the image tells of none, or (after a log line) when it could not be read.
    CObjectiveLens* ObjectiveLens();
    /// By level number; an entry is null where the store has no tile of that level.
    const std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& DeepZoomPyramidLevels()
    {
        Dimensions();
        return _DeepZoomPyramidLevels.empty() ? MakeDeepZoomPyramidLevels() : _DeepZoomPyramidLevels;
    }

    /// The size of a tile in pixels, worked out anew at every call; 0xFFFFFFFF on failure. The argument is 0, or the
    /// TIFF directory that a level told.
    uint32_t DeepZoomTilePixelWidth(uint32_t levelID);
    uint32_t DeepZoomTilePixelHeight(uint32_t levelID);
    /// The size of a tile at level 0, by which the coordinates of tiles are told: asked for anew, or as it was when it
    /// was asked for last, which leaves errno and the files alone.
    uint32_t AskTileWidthOfCoords() { return _TileWidthOfCoords = DeepZoomTilePixelWidth(0); }
    uint32_t AskTileHeightOfCoords() { return _TileHeightOfCoords = DeepZoomTilePixelHeight(0); }
    uint32_t TileWidthOfCoords() const { return _TileWidthOfCoords; }
    uint32_t TileHeightOfCoords() const { return _TileHeightOfCoords; }
    /// True when all tiles of the image have one size, whatever is asked between: their rectangles never change then.
    virtual bool HasOneTileSize() = 0;
    /// The width of the picture at a level.
    virtual uint32_t PixelWidthForLevel(uint32_t levelID) = 0;
    /// How far the picture's first pixel lies inside the tile matrix of level 0; 0x7FFFFFFF on failure.
    int32_t LeftCroppingOfLevel0TileMatrixInPixels();
    int32_t TopCroppingOfLevel0TileMatrixInPixels();

protected:
    bool ZoomoutFactor_init(double& varToInit) override;
    /// Fills X, Y, and what there is of Z, T and L.
    virtual bool DimensionHavingUnits_init(CDimensions& varToInit) = 0;
    /// The frame of that key; null on failure.
    virtual std::unique_ptr<CFrame> Frame_init(const CFrameIdx& frameIdx) = 0;
    /// More frames than this cannot be served, whatever the dimensions say.
    virtual uint64_t MaxNumOfFrames() = 0;
    virtual bool DeepZoomPyramidLevels_init(std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& varToInit) = 0;
    virtual bool DeepZoomTilePixelWidth_init(uint32_t& varToInit, uint32_t levelID) = 0;
    virtual bool DeepZoomTilePixelHeight_init(uint32_t& varToInit, uint32_t levelID) = 0;
    virtual bool LeftCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit) = 0;
    virtual bool TopCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit) = 0;
    virtual bool Channels_init(CChannels& varToInit) = 0;
    virtual bool VectorGraphicsImages_init(std::vector<CVectorGraphicsImage>& varToInit) = 0;
    virtual bool ObjectiveLens_init(std::unique_ptr<CObjectiveLens>& varToInit) = 0;
    bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) override;
    CBrixPropsets& KeptPropsets() override { return PropsetsInState(); }

private:
    struct CPropsetHandler;
    bool BrixPropset_CreationDateTime(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_UpdateDateTime(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_EnabledChannelIdList(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ImageChannelIdList(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ChannelInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_Axes(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_AxisInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ObjectiveLensInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_XYStagePosition(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_GroupName(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ImageSize(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_AnalysisROIList(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ImagingROIList(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_ImagingROIInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_WorkInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_LUTInfo(const AC_PARAMS& params, CBrixPropset& propset);

    bool IsRealWorldSizeOrPixelSizeAvailable() const override { return _IsRealWorldSizeOrPixelSizeAvailable; }
    const CDimensions& MakeDimensions();
    const CFrames& MakeFrames();
    const std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& MakeDeepZoomPyramidLevels();
    bool Dimensions_init(CDimensions& varToInit);
    bool Frames_init(CFrames& varToInit);
    bool Frames_init_recursive(CFrames& varToInit, std::vector<uint32_t>& chosenIdxValues,
                               const std::vector<CDimension*>& frameIdxDimensions);

    CImgDoc& _ParentImgDoc;
    const uint32_t _ID;
    const bool _IsRealWorldSizeOrPixelSizeAvailable;
    CommonUtil::CLazy<int32_t, 0x7FFFFFFF> _LeftCroppingOfLevel0TileMatrixInPixels;
    CommonUtil::CLazy<int32_t, 0x7FFFFFFF> _TopCroppingOfLevel0TileMatrixInPixels;
    uint32_t _TileWidthOfCoords = 0;
    uint32_t _TileHeightOfCoords = 0;
    // Freed in the reverse order: frames, levels, channels, dimensions; each refers to those freed after it.
    CDimensions _Dimensions;
    std::array<CDimension*, DimensionType::NumOfDimTypes> _DimensionsByType{};
    CDimensionTypes _FrameDimensions;
    CDimensionRefs _SignificantDimensions;
    std::unique_ptr<CObjectiveLens> _ObjectiveLens;
    std::vector<CVectorGraphicsImage> _VectorGraphicsImages;
    CChannels _Channels;
    std::vector<std::unique_ptr<CDeepZoomPyramidLevel>> _DeepZoomPyramidLevels;
    CFrames _Frames;
    std::vector<CFrame*> _FrameTable; ///< in the order of the keys: the frames fill a grid
    CFrameIdx _LastFrame;             ///< the greatest key of the grid
};

} // namespace CIA
