#pragma once
#include "ZelLoader/Catalogue/FieldShapes.h"
#include "ZelLoader/Catalogue/ZELFormatDevices.h"

// The dictionary of the tag tree: a frame of an image, where it stands and where its pixels are kept.

namespace Zel
{

/// The Z coordinate of a frame.
class CZelMetaDataForZCoordOfFrame : public CZelNodeWithTag<2014>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> Value{this, "Value"}; ///< the coordinate
    CTextField<TagOfUnit> Units{this, "Units"};            ///< its unit
};

/// The T coordinate of a frame.
class CZelMetaDataForTCoordOfFrame : public CZelNodeWithTag<2017>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> Value{this, "Value"}; ///< the coordinate
    CTextField<TagOfUnit> Units{this, "Units"};            ///< its unit
};

/// The lambda coordinate of a frame.
class CZelMetaDataForLCoordOfFrame : public CZelNodeWithTag<2041>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> Value{this, "Value"}; ///< the coordinate
    CTextField<TagOfUnit> Units{this, "Units"};            ///< its unit
};

/// Properties of a frame.
class CZelMetaDataForFrameProperties : public CZelNodeWithTag<2006>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildField<2014, CZelMetaDataForZCoordOfFrame> ZCoordOfFrame{this, "ZCoordOfFrame"}; ///< its Z coordinate
    CChildField<2017, CZelMetaDataForTCoordOfFrame> TCoordOfFrame{this, "TCoordOfFrame"}; ///< its T coordinate
    CChildField<2041, CZelMetaDataForLCoordOfFrame> LCoordOfFrame{this, "LCoordOfFrame"}; ///< its lambda coordinate
    /// Devices on the optical path.
    CChildField<2043, CZelMetaDataForFrameLevelImgOpticalPath> imgOpticalPath{this, "imgOpticalPath"};
};

/// A frame whose pixels lie in a TIFF directory of this file; DbgNode() is the reference to it.
class CZelMetaDataForFrameTiffIfd : public CZelNodeWithTag<2016>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CSecondTagField IdxOfTiffIfd{this, "IdxOfTiffIfd"}; ///< number of the directory in the chain
};

/// Marks a frame of vector graphics; that it is there is all that counts.
class CZelMetaDataForVectorGraphicsFrame : public CZelNodeWithTag<2017>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// A blob of a frame; DbgNode() is the blob.
class CZelMetaDataForFrameBlob : public CZelNodeWithTag<2024>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// A frame whose pixels lie in the tile store of the stack.
class CZelMetaDataForKorFile : public CZelNodeWithTag<2018>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<2053, int32_t> ImgBoundary{this, "ImgBoundary"}; ///< boundary of the image in pixels
    /// Shift of the tile matrix from the origin of the cropped image.
    CArrayField<2410, int32_t> TileMatrixPixelOriginShiftFromCroppedImgPixelOrigin{
        this, "TileMatrixPixelOriginShiftFromCroppedImgPixelOrigin"};
};

/// Pixel data properties of a frame.
class CZelMetaDataForPixelFrameDataProperties : public CZelNodeWithTag<2037>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<2053, int32_t> ImgBoundary{this, "ImgBoundary"}; ///< boundary of the image in pixels
};

/// One frame of an image. Which of directory, vector graphics and tile store the first frame has decides what kind of
/// image it is.
class CZelMetaDataForImgFrame : public CZelNodeWithTag<2002>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// Coordinates and optical path.
    CChildField<2006, CZelMetaDataForFrameProperties> FrameProperties{this, "FrameProperties"};
    /// The frame lies in a TIFF directory of this file.
    CChildField<2016, CZelMetaDataForFrameTiffIfd> FrameTiffIfd{this, "FrameTiffIfd"};
    /// The frame is vector graphics.
    CChildField<2017, CZelMetaDataForVectorGraphicsFrame> VectorGraphicsFrame{this, "VectorGraphicsFrame"};
    CChildListField<2024, CZelMetaDataForFrameBlob> FrameBlobs{this, "FrameBlobs"}; ///< its blobs
    CChildField<2018, CZelMetaDataForKorFile> KorFile{this, "KorFile"}; ///< the frame lies in the tile store
    /// Pixel data properties.
    CChildField<2037, CZelMetaDataForPixelFrameDataProperties> PixelFrameDataProperties{this,
                                                                                        "PixelFrameDataProperties"};
};

} // namespace Zel
