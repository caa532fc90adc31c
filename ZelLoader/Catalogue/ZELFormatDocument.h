#pragma once
#include "ZelLoader/Catalogue/ZELFormatImage.h"
#include "ZelLoader/Catalogue/ZELFormatShape.h"

// The dictionary of the tag tree: the document, what it says about itself, and how its images are displayed together.

namespace Zel
{

/// The thumbnail of the newer layout.
class CZelMetaDataForNewDocThumb : public CZelNodeWithTag<38>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<TagOfValue, Byte> DocThumbArray{this, "DocThumbArray"}; ///< an encoded picture
};

/// What the document says about itself.
class CZelMetaDataForImgDocPropSet : public CZelNodeWithTag<2109>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildField<38, CZelMetaDataForNewDocThumb> NewDocThumb{this, "NewDocThumb"}; ///< thumbnail of the newer layout
    CTextField<13> docNote{this, "docNote"};                                      ///< description
    CScalarField<14, int64_t> docTime{this, "docTime"};                           ///< creation time, seconds in UTC
    CScalarField<23, int64_t> docLastSavedTime{this, "docLastSavedTime"}; ///< time of the last save, seconds in UTC
    CTextField<15> docAuthor{this, "docAuthor"};                          ///< author
    CTextField<17> docCreatorName{this, "docCreatorName"};                ///< name of the creating software
    CTextField<34> docProductName{this, "docProductName"};                ///< product name of the creating hardware
    CTextField<35> docProductVersion{this, "docProductVersion"};          ///< version of the creating hardware
    CTextField<54> docFamilyId{this, "docFamilyId"};                      ///< family ID
    /// Version of the software, major.
    CScalarField<18, int32_t> docCreatorMajorVersion{this, "docCreatorMajorVersion"};
    /// Version of the software, minor.
    CScalarField<19, int32_t> docCreatorMinorVersion{this, "docCreatorMinorVersion"};
    /// Version of the software, third part.
    CScalarField<20, int32_t> docCreatorSubVersion{this, "docCreatorSubVersion"};
    CScalarField<21, int32_t> docCreatorBuildNumber{this, "docCreatorBuildNumber"}; ///< build number of the software
};

/// Properties of the whole document.
class CZelMetaDataForImgCollProps : public CZelNodeWithTag<2004>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// What the document says about itself.
    CChildField<2109, CZelMetaDataForImgDocPropSet> ImgDocPropSet{this, "ImgDocPropSet"};
};

/// The thumbnail of the older layout.
class CZelMetaDataForDocThumb : public CZelNodeWithTag<38>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<TagOfValue, Byte> DocThumbArray{this, "DocThumbArray"}; ///< an encoded picture
};

/// Document properties of the older layout.
class CZelMetaDataForOldDocProperties : public CZelNodeWithTag<2>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CTextField<50> DocPersistentId{this, "DocPersistentId"};             ///< persistent ID of the document
    CChildField<38, CZelMetaDataForDocThumb> DocThumb{this, "DocThumb"}; ///< thumbnail of the older layout
};

/// One display channel of a layer; only a layer's first channel carries the operator, the stack and the hidden flag.
class CZelMetaDataForDispChannel : public CZelNodeWithTag<2013>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// Stack ID of the image that the channel shows.
    CScalarField<10005, int32_t> StackToBeDisplayed{this, "StackToBeDisplayed"};
    /// Operator type, -1 or 1; a channel that has one shows no stack.
    CScalarField<10000, int32_t> ImgDspOperType{this, "ImgDspOperType"};
    CScalarField<10001, int32_t> ImgDspOperId{this, "ImgDspOperId"};            ///< operator ID
    CScalarField<10009, double> ImgDspTranspNumber{this, "ImgDspTranspNumber"}; ///< transparency
    CTextField<2011> ImgPlaneUnit{this, "ImgPlaneUnit"};                        ///< unit of the plane
    CTextField<2063> ImgPlaneYUnitRWC{this, "ImgPlaneYUnitRWC"};                ///< unit of the plane in Y
    /// Origin of the plane in real-world coordinates.
    CArrayField<20006, double> ImgPlaneOriginRWC{this, "ImgPlaneOriginRWC"};
    /// Scale of the plane in real-world coordinates.
    CArrayField<20007, double> imgPlaneScaleRWC{this, "imgPlaneScaleRWC"};
    CArrayField<20008, int32_t> ImgPlaneRectPxc{this, "ImgPlaneRectPxc"};   ///< rectangle of the plane in pixels
    CScalarField<10056, bool> ImgDspLayerHidden{this, "ImgDspLayerHidden"}; ///< the layer is hidden
};

/// One display layer.
class CZelMetaDataForDispLayer : public CZelNodeWithTag<2012>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CSecondTagField StackIdx{this, "StackIdx"}; ///< index of the layer; they count from 0 without gaps
    CChildListField<2013, CZelMetaDataForDispChannel> DispChannels{this, "DispChannels"}; ///< its channels
};

/// How the images are displayed together.
class CZelMetaDataForDisplayProcessFlow : public CZelNodeWithTag<2011>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildListField<2012, CZelMetaDataForDispLayer> DispLayers{this, "DispLayers"}; ///< the display layers
};

/// A blob of the document; DbgNode() is the blob.
class CZelMetaDataForZelFileBlob : public CZelNodeWithTag<2024>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// The image collection.
class CZelMetaDataForImgColl : public CZelNodeWithTag<2000>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// The images (stacks), in file order.
    CChildListField<2001, CZelMetaDataForMultiDimImg> MultiDimImgs{this, "MultiDimImgs"};
    CChildField<2004, CZelMetaDataForImgCollProps> ImgCollProps{this, "ImgCollProps"}; ///< properties of the document
    /// How the images are displayed; every document with images has one.
    CChildField<2011, CZelMetaDataForDisplayProcessFlow> DisplayProcessFlow{this, "DisplayProcessFlow"};
    CArrayField<2035, uint32_t> ZELVersionNumber{this, "ZELVersionNumber"}; ///< version of the format, two numbers
    /// Blobs of the whole document.
    CChildListField<2024, CZelMetaDataForZelFileBlob> ZelFileBlobs{this, "ZelFileBlobs"};
};

/// The root of a tag tree: of the document, at byte 8 of the file, and of each object of a measurement blob.
class CZelImgDocMetaData : public CZelNodeWithTag<0>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// The image collection; every document has one.
    CChildField<2000, CZelMetaDataForImgColl> ImgColl{this, "ImgColl"};
    /// A region of interest, in the tree of a measured object.
    CChildField<1073741825, CZelMetaDataForShapeVolume> ShapeVolume{this, "ShapeVolume"};
    /// Document properties of the older layout.
    CChildField<2, CZelMetaDataForOldDocProperties> OldDocProperties{this, "OldDocProperties"};
};

} // namespace Zel
