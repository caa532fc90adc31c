#pragma once
#include "ZelLoader/Catalogue/FieldShapes.h"
#include "ZelLoader/Catalogue/ZELFormatDevices.h"
#include "ZelLoader/Catalogue/ZELFormatFrame.h"

// The dictionary of the tag tree: an image (stack), its properties, dimensions and channels.

namespace Zel
{

/// The X position of the stage.
class CZelMetaDataForimgStagePosX : public CZelNodeWithTag<21007>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> XAbsolute{this, "XAbsolute"}; ///< position
    CTextField<TagOfUnit> XUnit{this, "XUnit"};                    ///< its unit
};

/// The Y position of the stage.
class CZelMetaDataForimgStagePosY : public CZelNodeWithTag<21008>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> YAbsolute{this, "YAbsolute"}; ///< position
    CTextField<TagOfUnit> YUnit{this, "YUnit"};                    ///< its unit
};

/// The devices with which an image was taken, and what was on the stage.
class CZelMetaDataForimgDevPropSet : public CZelNodeWithTag<21000>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildField<21007, CZelMetaDataForimgStagePosX> imgStagePosX{this, "imgStagePosX"}; ///< stage position in X
    CChildField<21008, CZelMetaDataForimgStagePosY> imgStagePosY{this, "imgStagePosY"}; ///< stage position in Y
    CTextField<175266> GetExperimentName{this, "GetExperimentName"};                    ///< name of the experiment
    CTextField<21104> GetSampleName{this, "GetSampleName"};                             ///< name of the sample
    CTextField<21105> GetSampleDescription{this, "GetSampleDescription"};               ///< description of the sample
};

/// The look-up table of an image of one channel.
class CZelMetaDataForImgDisplayLutForSingleChannel : public CZelNodeWithTag<2004>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<TagOfValue, Byte> LUTAbsolute{this, "LUTAbsolute"}; ///< the table
};

/// The properties of an image. RWC: real-world coordinates.
class CZelMetaDataForMultiDimImgProps : public CZelNodeWithTag<2005>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildField<21000, CZelMetaDataForimgDevPropSet> imgDevPropSet{this, "imgDevPropSet"}; ///< devices and stage
    CTextField<2064> ImgFrameYUnitRWC{this, "ImgFrameYUnitRWC"};                           ///< unit of the Y axis
    CArrayField<2003, double> ImgDisplayLimits{this, "ImgDisplayLimits"};                  ///< display limits
    /// Look-up table.
    CChildField<2004, CZelMetaDataForImgDisplayLutForSingleChannel> ImgDisplayLutForSingleChannel{
        this, "ImgDisplayLutForSingleChannel"};
    CArrayField<2018, double> ImgFrameOriginRWC{this, "ImgFrameOriginRWC"}; ///< origin of the frame
    CArrayField<2019, double> ImgFrameScaleRWC{this, "ImgFrameScaleRWC"};   ///< size of a pixel
    CTextField<2020> ImgFrameUnitRWC{this, "ImgFrameUnitRWC"};              ///< unit of the frame
    CTextField<2030> ImgStackName{this, "ImgStackName"};                    ///< name of the image
    CScalarField<2451, int32_t> ImgAxis0Meaning{this, "ImgAxis0Meaning"};   ///< what axis 0 of the frame means
    CScalarField<2452, int32_t> ImgAxis1Meaning{this, "ImgAxis1Meaning"};   ///< what axis 1 of the frame means
    /// Devices on the optical path.
    CChildField<2043, CZelMetaDataForStackLevelImgOpticalPath> StackLevelImgOpticalPath{this,
                                                                                        "StackLevelImgOpticalPath"};
    CScalarField<2015, int64_t> ImgCreationTime{this, "ImgCreationTime"}; ///< creation time of the image
    CScalarField<2074, int32_t> ImgStackType{this, "ImgStackType"};       ///< kind of the stack
};

/// The look-up table of one channel.
class CZelMetaDataForImgDisplayLutForMultiChannel : public CZelNodeWithTag<2004>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<TagOfValue, Byte> LUTAbsolute{this, "LUTAbsolute"}; ///< the table
};

/// Where Z starts.
class CZelMetaDataForImgZStart : public CZelNodeWithTag<2012>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> ZStart{this, "ZStart"}; ///< the value
    CTextField<TagOfUnit> ZUnit{this, "ZUnit"};              ///< its unit
};

/// The step of Z.
class CZelMetaDataForImgZIncrement : public CZelNodeWithTag<2013>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> ZStep{this, "ZStep"}; ///< the value
    CTextField<TagOfUnit> ZStepUnits{this, "ZStepUnits"};  ///< its unit
};

/// Where T starts.
class CZelMetaDataForImgTimeStart : public CZelNodeWithTag<2100>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> TStart{this, "TStart"}; ///< the value
    CTextField<TagOfUnit> TUnit{this, "TUnit"};              ///< its unit
};

/// The step of T.
class CZelMetaDataForImgTimeIncrement : public CZelNodeWithTag<2016>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> TStep{this, "TStep"}; ///< the value
    CTextField<TagOfUnit> TStepUnits{this, "TStepUnits"};  ///< its unit
};

/// Where lambda starts.
class CZelMetaDataForImgLambdaStart : public CZelNodeWithTag<2039>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> LStart{this, "LStart"}; ///< the value
    CTextField<TagOfUnit> LUnit{this, "LUnit"};              ///< its unit
};

/// The step of lambda.
class CZelMetaDataForImgLambdaIncrement : public CZelNodeWithTag<2040>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CScalarField<TagOfValue, double> LStep{this, "LStep"}; ///< the value
    CTextField<TagOfUnit> LStepUnits{this, "LStepUnits"};  ///< its unit
};

/// Marks a wavelength channel; that it is there is all that counts.
class CZelMetaDataForWavelength : public CZelNodeWithTag<2417>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// One entry of a dimension: a channel, or a point of Z, T or lambda.
class CZelMetaDataForDimensionChannel : public CZelNodeWithTag<2008>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// Devices on the optical path.
    CChildField<2043, CZelMetaDataForChannelLevelImgOpticalPath> ChannelLevelImgOpticalPath{
        this, "ChannelLevelImgOpticalPath"};
    CArrayField<2003, double> ImgDisplayLimits{this, "ImgDisplayLimits"}; ///< display limits
    /// Look-up table.
    CChildField<2004, CZelMetaDataForImgDisplayLutForMultiChannel> ImgDisplayLutForMultiChannel{
        this, "ImgDisplayLutForMultiChannel"};
    CChildField<2012, CZelMetaDataForImgZStart> ImgZStart{this, "ImgZStart"};                      ///< where Z starts
    CChildField<2013, CZelMetaDataForImgZIncrement> ImgZIncrement{this, "ImgZIncrement"};          ///< step of Z
    CChildField<2100, CZelMetaDataForImgTimeStart> ImgTimeStart{this, "ImgTimeStart"};             ///< where T starts
    CChildField<2016, CZelMetaDataForImgTimeIncrement> ImgTimeIncrement{this, "ImgTimeIncrement"}; ///< step of T
    CChildField<2039, CZelMetaDataForImgLambdaStart> ImgLambdaStart{this, "ImgLambdaStart"}; ///< where lambda starts
    /// Step of lambda.
    CChildField<2040, CZelMetaDataForImgLambdaIncrement> ImgLambdaIncrement{this, "ImgLambdaIncrement"};
    CTextField<2021> ImgDimChannelName{this, "ImgDimChannelName"};    ///< name of the channel
    CScalarField<2023, int32_t> ImgDimMeaning{this, "ImgDimMeaning"}; ///< which dimension the entry belongs to
    CChildField<2417, CZelMetaDataForWavelength> Wavelength{this, "Wavelength"}; ///< present for a wavelength channel
};

/// One dimension of an image.
class CZelMetaDataForDimension : public CZelNodeWithTag<2007>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    /// Its entries.
    CChildListField<2008, CZelMetaDataForDimensionChannel> DimensionChannels{this, "DimensionChannels"};
};

/// A blob of a channel; DbgNode() is the blob.
class CZelMetaDataForChannelBlob : public CZelNodeWithTag<2024>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// Properties of a channel.
class CZelMetaDataForChannelProp : public CZelNodeWithTag<2036>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CChildListField<2024, CZelMetaDataForChannelBlob> ChannelBlobs{this, "ChannelBlobs"}; ///< its blobs
};

/// A blob of a layer; DbgNode() is the blob.
class CZelMetaDataForZelLayerBlob : public CZelNodeWithTag<2024>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;
};

/// One image (stack).
class CZelMetaDataForMultiDimImg : public CZelNodeWithTag<2001>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CSecondTagField StackID{this, "StackID"}; ///< the image's ID; every image has one
    /// Its frames; every image has at least one.
    CChildListField<2002, CZelMetaDataForImgFrame> ImgFrames{this, "ImgFrames"};
    /// Its properties; every image has them.
    CChildField<2005, CZelMetaDataForMultiDimImgProps> MultiDimImgProps{this, "MultiDimImgProps"};
    CChildListField<2007, CZelMetaDataForDimension> Dimensions{this, "Dimensions"};          ///< its dimensions
    CChildListField<2024, CZelMetaDataForZelLayerBlob> ZelLayerBlobs{this, "ZelLayerBlobs"}; ///< its blobs
    CArrayField<2003, uint32_t> NumOfPointsPerDim{this, "NumOfPointsPerDim"}; ///< number of points of each dimension
    /// Properties of its channels.
    CChildListField<2036, CZelMetaDataForChannelProp> ChannelProps{this, "ChannelProps"};
};

} // namespace Zel
