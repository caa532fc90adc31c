#include "Tests/ZelLoader/Catalogue/CatalogueRow.h"

#include <optional>
#include <string_view>

using namespace CatalogueTest;

namespace
{

// The dictionary, once more: what a file of the format holds. 7 stands for any device.
const CRow Rows[] = {
    ROW(CZelImgDocMetaData, ImgColl, 2000, AChild<CZelMetaDataForImgColl>),
    ROW(CZelImgDocMetaData, ShapeVolume, 1073741825, AChild<CZelMetaDataForShapeVolume>),
    ROW(CZelImgDocMetaData, OldDocProperties, 2, AChild<CZelMetaDataForOldDocProperties>),
    ROW(CZelMetaDataForImgColl, MultiDimImgs, 2001, AList<CZelMetaDataForMultiDimImg>),
    ROW(CZelMetaDataForImgColl, ImgCollProps, 2004, AChild<CZelMetaDataForImgCollProps>),
    ROW(CZelMetaDataForImgColl, DisplayProcessFlow, 2011, AChild<CZelMetaDataForDisplayProcessFlow>),
    ROW(CZelMetaDataForImgColl, ZELVersionNumber, 2035, AnArrayOfUInt32),
    ROW(CZelMetaDataForImgColl, ZelFileBlobs, 2024, AList<CZelMetaDataForZelFileBlob>),
    ROW(CZelMetaDataForImgCollProps, ImgDocPropSet, 2109, AChild<CZelMetaDataForImgDocPropSet>),
    ROW(CZelMetaDataForImgDocPropSet, NewDocThumb, 38, AChild<CZelMetaDataForNewDocThumb>),
    ROW(CZelMetaDataForImgDocPropSet, docNote, 13, AText),
    ROW(CZelMetaDataForImgDocPropSet, docTime, 14, AnInt64),
    ROW(CZelMetaDataForImgDocPropSet, docLastSavedTime, 23, AnInt64),
    ROW(CZelMetaDataForImgDocPropSet, docAuthor, 15, AText),
    ROW(CZelMetaDataForImgDocPropSet, docCreatorName, 17, AText),
    ROW(CZelMetaDataForImgDocPropSet, docProductName, 34, AText),
    ROW(CZelMetaDataForImgDocPropSet, docProductVersion, 35, AText),
    ROW(CZelMetaDataForImgDocPropSet, docFamilyId, 54, AText),
    ROW(CZelMetaDataForImgDocPropSet, docCreatorMajorVersion, 18, AnInt32),
    ROW(CZelMetaDataForImgDocPropSet, docCreatorMinorVersion, 19, AnInt32),
    ROW(CZelMetaDataForImgDocPropSet, docCreatorSubVersion, 20, AnInt32),
    ROW(CZelMetaDataForImgDocPropSet, docCreatorBuildNumber, 21, AnInt32),
    ROW(CZelMetaDataForNewDocThumb, DocThumbArray, 268435458, AnArrayOfBytes),
    ROW(CZelMetaDataForOldDocProperties, DocPersistentId, 50, AText),
    ROW(CZelMetaDataForOldDocProperties, DocThumb, 38, AChild<CZelMetaDataForDocThumb>),
    ROW(CZelMetaDataForDocThumb, DocThumbArray, 268435458, AnArrayOfBytes),
    ROW(CZelMetaDataForDisplayProcessFlow, DispLayers, 2012, AList<CZelMetaDataForDispLayer>),
    ROW(CZelMetaDataForDispLayer, StackIdx, 0, ASecondTag),
    ROW(CZelMetaDataForDispLayer, DispChannels, 2013, AList<CZelMetaDataForDispChannel>),
    ROW(CZelMetaDataForDispChannel, StackToBeDisplayed, 10005, AnInt32),
    ROW(CZelMetaDataForDispChannel, ImgDspOperType, 10000, AnInt32),
    ROW(CZelMetaDataForDispChannel, ImgDspOperId, 10001, AnInt32),
    ROW(CZelMetaDataForDispChannel, ImgDspTranspNumber, 10009, ADouble),
    ROW(CZelMetaDataForDispChannel, ImgPlaneUnit, 2011, AText),
    ROW(CZelMetaDataForDispChannel, ImgPlaneYUnitRWC, 2063, AText),
    ROW(CZelMetaDataForDispChannel, ImgPlaneOriginRWC, 20006, AnArrayOfDouble),
    ROW(CZelMetaDataForDispChannel, imgPlaneScaleRWC, 20007, AnArrayOfDouble),
    ROW(CZelMetaDataForDispChannel, ImgPlaneRectPxc, 20008, AnArrayOfInt32),
    ROW(CZelMetaDataForDispChannel, ImgDspLayerHidden, 10056, AFlag),
    ROW(CZelMetaDataForMultiDimImg, StackID, 0, ASecondTag),
    ROW(CZelMetaDataForMultiDimImg, ImgFrames, 2002, AList<CZelMetaDataForImgFrame>),
    ROW(CZelMetaDataForMultiDimImg, MultiDimImgProps, 2005, AChild<CZelMetaDataForMultiDimImgProps>),
    ROW(CZelMetaDataForMultiDimImg, Dimensions, 2007, AList<CZelMetaDataForDimension>),
    ROW(CZelMetaDataForMultiDimImg, ZelLayerBlobs, 2024, AList<CZelMetaDataForZelLayerBlob>),
    ROW(CZelMetaDataForMultiDimImg, NumOfPointsPerDim, 2003, AnArrayOfUInt32),
    ROW(CZelMetaDataForMultiDimImg, ChannelProps, 2036, AList<CZelMetaDataForChannelProp>),
    ROW(CZelMetaDataForMultiDimImgProps, imgDevPropSet, 21000, AChild<CZelMetaDataForimgDevPropSet>),
    ROW(CZelMetaDataForMultiDimImgProps, ImgFrameYUnitRWC, 2064, AText),
    ROW(CZelMetaDataForMultiDimImgProps, ImgDisplayLimits, 2003, AnArrayOfDouble),
    ROW(CZelMetaDataForMultiDimImgProps, ImgDisplayLutForSingleChannel, 2004,
        AChild<CZelMetaDataForImgDisplayLutForSingleChannel>),
    ROW(CZelMetaDataForMultiDimImgProps, ImgFrameOriginRWC, 2018, AnArrayOfDouble),
    ROW(CZelMetaDataForMultiDimImgProps, ImgFrameScaleRWC, 2019, AnArrayOfDouble),
    ROW(CZelMetaDataForMultiDimImgProps, ImgFrameUnitRWC, 2020, AText),
    ROW(CZelMetaDataForMultiDimImgProps, ImgStackName, 2030, AText),
    ROW(CZelMetaDataForMultiDimImgProps, ImgAxis0Meaning, 2451, AnInt32),
    ROW(CZelMetaDataForMultiDimImgProps, ImgAxis1Meaning, 2452, AnInt32),
    ROW(CZelMetaDataForMultiDimImgProps, StackLevelImgOpticalPath, 2043,
        AChild<CZelMetaDataForStackLevelImgOpticalPath>),
    ROW(CZelMetaDataForMultiDimImgProps, ImgCreationTime, 2015, AnInt64),
    ROW(CZelMetaDataForMultiDimImgProps, ImgStackType, 2074, AnInt32),
    ROW(CZelMetaDataForimgDevPropSet, imgStagePosX, 21007, AChild<CZelMetaDataForimgStagePosX>),
    ROW(CZelMetaDataForimgDevPropSet, imgStagePosY, 21008, AChild<CZelMetaDataForimgStagePosY>),
    ROW(CZelMetaDataForimgDevPropSet, GetExperimentName, 175266, AText),
    ROW(CZelMetaDataForimgDevPropSet, GetSampleName, 21104, AText),
    ROW(CZelMetaDataForimgDevPropSet, GetSampleDescription, 21105, AText),
    ROW(CZelMetaDataForimgStagePosX, XAbsolute, 268435458, ADouble),
    ROW(CZelMetaDataForimgStagePosX, XUnit, 268435456, AText),
    ROW(CZelMetaDataForimgStagePosY, YAbsolute, 268435458, ADouble),
    ROW(CZelMetaDataForimgStagePosY, YUnit, 268435456, AText),
    ROW(CZelMetaDataForImgDisplayLutForSingleChannel, LUTAbsolute, 268435458, AnArrayOfBytes),
    ROW(CZelMetaDataForStackLevelImgOpticalPath, StackLevelDeviceIDs, 7, AList<CZelMetaDataForStackLevelDeviceID>),
    ROW(CZelMetaDataForStackLevelDeviceID, StackLevelDevicePropSet, 120114,
        AChild<CZelMetaDataForStackLevelDevicePropSet>),
    ROW(CZelMetaDataForStackLevelDeviceID, DeviceSubType, 120130, AnInt32),
    ROW(CZelMetaDataForStackLevelDevicePropSet, ObjMagnification, 120060, ADouble),
    ROW(CZelMetaDataForStackLevelDevicePropSet, ObjAperture, 120061, ADouble),
    ROW(CZelMetaDataForStackLevelDevicePropSet, Stack2005CamExposure, 100100, AnInt64),
    ROW(CZelMetaDataForStackLevelDevicePropSet, Stack2005CamExposureDeprecated, 100002, AnInt32),
    ROW(CZelMetaDataForStackLevelDevicePropSet, StackLevelObjWorkingDistance, 120062,
        AChild<CZelMetaDataForStackLevelObjWorkingDistance>),
    ROW(CZelMetaDataForStackLevelDevicePropSet, ObjName, 120063, AText),
    ROW(CZelMetaDataForStackLevelDevicePropSet, ObjType, 120064, AnInt32),
    ROW(CZelMetaDataForStackLevelDevicePropSet, ObjRefractiveIndex, 120079, ADouble),
    ROW(CZelMetaDataForStackLevelObjWorkingDistance, WdAbsolute, 268435458, ADouble),
    ROW(CZelMetaDataForStackLevelObjWorkingDistance, WdUnit, 268435456, AText),
    ROW(CZelMetaDataForDimension, DimensionChannels, 2008, AList<CZelMetaDataForDimensionChannel>),
    ROW(CZelMetaDataForDimensionChannel, ChannelLevelImgOpticalPath, 2043,
        AChild<CZelMetaDataForChannelLevelImgOpticalPath>),
    ROW(CZelMetaDataForDimensionChannel, ImgDisplayLimits, 2003, AnArrayOfDouble),
    ROW(CZelMetaDataForDimensionChannel, ImgDisplayLutForMultiChannel, 2004,
        AChild<CZelMetaDataForImgDisplayLutForMultiChannel>),
    ROW(CZelMetaDataForDimensionChannel, ImgZStart, 2012, AChild<CZelMetaDataForImgZStart>),
    ROW(CZelMetaDataForDimensionChannel, ImgZIncrement, 2013, AChild<CZelMetaDataForImgZIncrement>),
    ROW(CZelMetaDataForDimensionChannel, ImgTimeStart, 2100, AChild<CZelMetaDataForImgTimeStart>),
    ROW(CZelMetaDataForDimensionChannel, ImgTimeIncrement, 2016, AChild<CZelMetaDataForImgTimeIncrement>),
    ROW(CZelMetaDataForDimensionChannel, ImgLambdaStart, 2039, AChild<CZelMetaDataForImgLambdaStart>),
    ROW(CZelMetaDataForDimensionChannel, ImgLambdaIncrement, 2040, AChild<CZelMetaDataForImgLambdaIncrement>),
    ROW(CZelMetaDataForDimensionChannel, ImgDimChannelName, 2021, AText),
    ROW(CZelMetaDataForDimensionChannel, ImgDimMeaning, 2023, AnInt32),
    ROW(CZelMetaDataForDimensionChannel, Wavelength, 2417, AChild<CZelMetaDataForWavelength>),
    ROW(CZelMetaDataForImgDisplayLutForMultiChannel, LUTAbsolute, 268435458, AnArrayOfBytes),
    ROW(CZelMetaDataForChannelLevelImgOpticalPath, ChannelLevelDeviceIDs, 7,
        AList<CZelMetaDataForChannelLevelDeviceID>),
    ROW(CZelMetaDataForChannelLevelDeviceID, ChannelLevelDevicePropSet, 120114,
        AChild<CZelMetaDataForChannelLevelDevicePropSet>),
    ROW(CZelMetaDataForChannelLevelDeviceID, DeviceSubType, 120130, AnInt32),
    ROW(CZelMetaDataForChannelLevelDevicePropSet, ObjExposureTime, 100100, AnInt64),
    ROW(CZelMetaDataForChannelLevelDevicePropSet, ObjExposureTimeDeprecated, 100002, AnInt32),
    ROW(CZelMetaDataForChannelLevelDevicePropSet, ObjAperture, 120061, ADouble),
    ROW(CZelMetaDataForImgZStart, ZUnit, 268435456, AText),
    ROW(CZelMetaDataForImgZStart, ZStart, 268435458, ADouble),
    ROW(CZelMetaDataForImgZIncrement, ZStep, 268435458, ADouble),
    ROW(CZelMetaDataForImgZIncrement, ZStepUnits, 268435456, AText),
    ROW(CZelMetaDataForImgTimeStart, TUnit, 268435456, AText),
    ROW(CZelMetaDataForImgTimeStart, TStart, 268435458, ADouble),
    ROW(CZelMetaDataForImgTimeIncrement, TStep, 268435458, ADouble),
    ROW(CZelMetaDataForImgTimeIncrement, TStepUnits, 268435456, AText),
    ROW(CZelMetaDataForImgLambdaStart, LUnit, 268435456, AText),
    ROW(CZelMetaDataForImgLambdaStart, LStart, 268435458, ADouble),
    ROW(CZelMetaDataForImgLambdaIncrement, LStep, 268435458, ADouble),
    ROW(CZelMetaDataForImgLambdaIncrement, LStepUnits, 268435456, AText),
    ROW(CZelMetaDataForChannelProp, ChannelBlobs, 2024, AList<CZelMetaDataForChannelBlob>),
    ROW(CZelMetaDataForImgFrame, FrameProperties, 2006, AChild<CZelMetaDataForFrameProperties>),
    ROW(CZelMetaDataForImgFrame, FrameTiffIfd, 2016, AChild<CZelMetaDataForFrameTiffIfd>),
    ROW(CZelMetaDataForImgFrame, VectorGraphicsFrame, 2017, AChild<CZelMetaDataForVectorGraphicsFrame>),
    ROW(CZelMetaDataForImgFrame, FrameBlobs, 2024, AList<CZelMetaDataForFrameBlob>),
    ROW(CZelMetaDataForImgFrame, KorFile, 2018, AChild<CZelMetaDataForKorFile>),
    ROW(CZelMetaDataForImgFrame, PixelFrameDataProperties, 2037, AChild<CZelMetaDataForPixelFrameDataProperties>),
    ROW(CZelMetaDataForFrameProperties, ZCoordOfFrame, 2014, AChild<CZelMetaDataForZCoordOfFrame>),
    ROW(CZelMetaDataForFrameProperties, TCoordOfFrame, 2017, AChild<CZelMetaDataForTCoordOfFrame>),
    ROW(CZelMetaDataForFrameProperties, LCoordOfFrame, 2041, AChild<CZelMetaDataForLCoordOfFrame>),
    ROW(CZelMetaDataForFrameProperties, imgOpticalPath, 2043, AChild<CZelMetaDataForFrameLevelImgOpticalPath>),
    ROW(CZelMetaDataForZCoordOfFrame, Value, 268435458, ADouble),
    ROW(CZelMetaDataForZCoordOfFrame, Units, 268435456, AText),
    ROW(CZelMetaDataForTCoordOfFrame, Value, 268435458, ADouble),
    ROW(CZelMetaDataForTCoordOfFrame, Units, 268435456, AText),
    ROW(CZelMetaDataForLCoordOfFrame, Value, 268435458, ADouble),
    ROW(CZelMetaDataForLCoordOfFrame, Units, 268435456, AText),
    ROW(CZelMetaDataForFrameLevelImgOpticalPath, FrameLevelDeviceIDs, 7, AList<CZelMetaDataForFrameLevelDeviceID>),
    ROW(CZelMetaDataForFrameLevelDeviceID, FrameLevelDevicePropSet, 120114,
        AChild<CZelMetaDataForFrameLevelDevicePropSet>),
    ROW(CZelMetaDataForFrameLevelDeviceID, DeviceSubType, 120130, AnInt32),
    ROW(CZelMetaDataForFrameLevelDevicePropSet, ObjExposureTime, 100100, AnInt64),
    ROW(CZelMetaDataForFrameLevelDevicePropSet, ObjExposureTimeDeprecated, 100002, AnInt32),
    ROW(CZelMetaDataForFrameTiffIfd, IdxOfTiffIfd, 0, ASecondTag),
    ROW(CZelMetaDataForKorFile, ImgBoundary, 2053, AnArrayOfInt32),
    ROW(CZelMetaDataForKorFile, TileMatrixPixelOriginShiftFromCroppedImgPixelOrigin, 2410, AnArrayOfInt32),
    ROW(CZelMetaDataForPixelFrameDataProperties, ImgBoundary, 2053, AnArrayOfInt32),
    ROW(CZelMetaDataForShapeVolume, RoiShape, 1, AText),
    ROW(CZelMetaDataForShapeVolume, ShapeVolumeObject, 0, AChild<CZelMetaDataForShapeVolumeObject>),
    ROW(CZelMetaDataForShapeVolumeObject, RectTopLeft, 20993, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, RectBottomRight, 20994, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, RotRectRotationPoint, 21344, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, RotRectFirstSide, 21345, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, RotRectSecondSide, 21346, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, CircleFirstPoint, 21341, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, CircleSecondPoint, 21342, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, CircleThirdPoint, 21343, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, RadiusOfCircle, 21329, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, CenterOfCircle, 21330, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, PolygonNumOfPts, 20737, AnInt32),
    ROW(CZelMetaDataForShapeVolumeObject, SinglePoint, 21249, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, PolygonPts, 20738, AListOfDoubles),
    ROW(CZelMetaDataForShapeVolumeObject, EllipseCenter, 21347, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, EllipseXCoords, 21348, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, EllipseYCoords, 21349, AnArrayOfDouble),
    ROW(CZelMetaDataForShapeVolumeObject, ShapeProperty, 4096, AChild<CZelMetaDataForShapeProperty>),
    ROW(CZelMetaDataForShapeProperty, RoiName, 512, AText),
};

// The classes.

struct CClass
{
    const char* Name;
    uint32_t Tag;
    std::function<void(CZelDataField*)> Wrap;
    const CCatalogueClass& (*Catalogue)();
};

void PrintTo(const CClass& testedClass, std::ostream* stream)
{
    *stream << testedClass.Name;
}

#define CLASS(Name, Tag)                                                                                               \
    CClass                                                                                                             \
    {                                                                                                                  \
#Name, Tag, [](CZelDataField * node) { Name{node}; }, &CatalogueOf < Name>                                     \
    }

const CClass Classes[] = {
    CLASS(CZelImgDocMetaData, 0),
    CLASS(CZelMetaDataForImgColl, 2000),
    CLASS(CZelMetaDataForImgCollProps, 2004),
    CLASS(CZelMetaDataForImgDocPropSet, 2109),
    CLASS(CZelMetaDataForNewDocThumb, 38),
    CLASS(CZelMetaDataForOldDocProperties, 2),
    CLASS(CZelMetaDataForDocThumb, 38),
    CLASS(CZelMetaDataForDisplayProcessFlow, 2011),
    CLASS(CZelMetaDataForDispLayer, 2012),
    CLASS(CZelMetaDataForDispChannel, 2013),
    CLASS(CZelMetaDataForMultiDimImg, 2001),
    CLASS(CZelMetaDataForMultiDimImgProps, 2005),
    CLASS(CZelMetaDataForimgDevPropSet, 21000),
    CLASS(CZelMetaDataForimgStagePosX, 21007),
    CLASS(CZelMetaDataForimgStagePosY, 21008),
    CLASS(CZelMetaDataForImgDisplayLutForSingleChannel, 2004),
    CLASS(CZelMetaDataForStackLevelImgOpticalPath, 2043),
    CLASS(CZelMetaDataForStackLevelDeviceID, 7),
    CLASS(CZelMetaDataForStackLevelDevicePropSet, 120114),
    CLASS(CZelMetaDataForStackLevelObjWorkingDistance, 120062),
    CLASS(CZelMetaDataForDimension, 2007),
    CLASS(CZelMetaDataForDimensionChannel, 2008),
    CLASS(CZelMetaDataForImgDisplayLutForMultiChannel, 2004),
    CLASS(CZelMetaDataForChannelLevelImgOpticalPath, 2043),
    CLASS(CZelMetaDataForChannelLevelDeviceID, 7),
    CLASS(CZelMetaDataForChannelLevelDevicePropSet, 120114),
    CLASS(CZelMetaDataForImgZStart, 2012),
    CLASS(CZelMetaDataForImgZIncrement, 2013),
    CLASS(CZelMetaDataForImgTimeStart, 2100),
    CLASS(CZelMetaDataForImgTimeIncrement, 2016),
    CLASS(CZelMetaDataForImgLambdaStart, 2039),
    CLASS(CZelMetaDataForImgLambdaIncrement, 2040),
    CLASS(CZelMetaDataForWavelength, 2417),
    CLASS(CZelMetaDataForChannelProp, 2036),
    CLASS(CZelMetaDataForChannelBlob, 2024),
    CLASS(CZelMetaDataForZelLayerBlob, 2024),
    CLASS(CZelMetaDataForZelFileBlob, 2024),
    CLASS(CZelMetaDataForImgFrame, 2002),
    CLASS(CZelMetaDataForFrameProperties, 2006),
    CLASS(CZelMetaDataForZCoordOfFrame, 2014),
    CLASS(CZelMetaDataForTCoordOfFrame, 2017),
    CLASS(CZelMetaDataForLCoordOfFrame, 2041),
    CLASS(CZelMetaDataForFrameLevelImgOpticalPath, 2043),
    CLASS(CZelMetaDataForFrameLevelDeviceID, 7),
    CLASS(CZelMetaDataForFrameLevelDevicePropSet, 120114),
    CLASS(CZelMetaDataForFrameTiffIfd, 2016),
    CLASS(CZelMetaDataForVectorGraphicsFrame, 2017),
    CLASS(CZelMetaDataForKorFile, 2018),
    CLASS(CZelMetaDataForPixelFrameDataProperties, 2037),
    CLASS(CZelMetaDataForFrameBlob, 2024),
    CLASS(CZelMetaDataForShapeVolume, 1073741825),
    CLASS(CZelMetaDataForShapeVolumeObject, 0),
    CLASS(CZelMetaDataForShapeProperty, 4096),
};

class CatalogueClass : public testing::TestWithParam<CClass>
{
protected:
    /// Does something for each row of the class, which is named if it fails.
    void ForEachRow(const std::function<void(const CRow&)>& test)
    {
        for (const CRow& row : Rows)
        {
            if (std::string_view(row.Class) != GetParam().Name)
                continue;
            SCOPED_TRACE(row.Accessor);
            test(row);
        }
    }

    /// The node of the class, with this one child that the catalogue may know.
    std::unique_ptr<CZelDataFieldForVolume> NodeWith(const CNode& child, uint32_t secondTag)
    {
        _document.emplace(DocumentOf(Volume(0, {Int32(999998, 1), child, Int32(999999, 1)})));
        return _document->Reader.ReadVolume(GetParam().Tag, OffsetOfRoot, secondTag);
    }

private:
    std::optional<COpenDocument> _document;
};

TEST_P(CatalogueClass, WrapsANodeWithItsTagOnly)
{
    CZelDataFieldForVolume node(GetParam().Tag, SecondTagAbsent);
    EXPECT_NO_THROW(GetParam().Wrap(&node));
    CZelDataFieldForVolume other(GetParam().Tag + 1000, SecondTagAbsent);
    EXPECT_FAILED_ASSERTION(GetParam().Wrap(&other));
}

TEST_P(CatalogueClass, DeliversTheValueOfEachRow)
{
    ForEachRow([&](const CRow& row) { row.ExpectValue(NodeWith(row.Field, SecondTagOfNode).get()); });
}

TEST_P(CatalogueClass, GivesNullOrAnEmptyListWhenARowIsAbsent)
{
    ForEachRow([&](const CRow& row) { row.ExpectAbsent(NodeWith(Int32(999997, 1), SecondTagAbsent).get()); });
}

TEST_P(CatalogueClass, TellsTheNameOfEachRow)
{
    const CCatalogueClass& catalogue = GetParam().Catalogue();
    ForEachRow(
        [&](const CRow& row)
        {
            const CCatalogueRow* known = catalogue.Row(row.Tag);
            ASSERT_TRUE(row.IsSecondTag || known);
            EXPECT_STREQ(row.IsSecondTag ? catalogue.NameOfSecondTag : known->Accessor, row.Accessor);
            EXPECT_EQ(row.IsSecondTag ? nullptr : known->ClassOfChild, row.ClassOfChild);
        });
}

TEST_P(CatalogueClass, HasNoRowsButThese)
{
    size_t numOfRows = 0;
    ForEachRow([&](const CRow& row) { numOfRows += row.IsSecondTag ? 0 : 1; });
    EXPECT_EQ(GetParam().Catalogue().Rows.size(), numOfRows);
}

INSTANTIATE_TEST_SUITE_P(Of, CatalogueClass, testing::ValuesIn(Classes),
                         [](const auto& test) { return test.param.Name; });

} // namespace
