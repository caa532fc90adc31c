#pragma once
#include "ZelLoader/Catalogue/FieldShapes.h"

// The dictionary of the tag tree: regions of interest, which stand in the trees of measurement blobs. Points are pairs
// of numbers. Which fields an object has follows from the name of its shape.

namespace Zel
{

/// Properties of a shape.
class CZelMetaDataForShapeProperty : public CZelNodeWithTag<4096>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CTextField<512> RoiName{this, "RoiName"}; ///< name of the region of interest
};

/// The geometry of a shape.
class CZelMetaDataForShapeVolumeObject : public CZelNodeWithTag<0>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CArrayField<20993, double> RectTopLeft{this, "RectTopLeft"}; ///< rectangle
    CArrayField<20994, double> RectBottomRight{this, "RectBottomRight"};
    CArrayField<21344, double> RotRectRotationPoint{this, "RotRectRotationPoint"}; ///< rotated rectangle
    CArrayField<21345, double> RotRectFirstSide{this, "RotRectFirstSide"};
    CArrayField<21346, double> RotRectSecondSide{this, "RotRectSecondSide"};
    CArrayField<21341, double> CircleFirstPoint{this, "CircleFirstPoint"}; ///< circle through three points
    CArrayField<21342, double> CircleSecondPoint{this, "CircleSecondPoint"};
    CArrayField<21343, double> CircleThirdPoint{this, "CircleThirdPoint"};
    CArrayField<21329, double> RadiusOfCircle{this, "RadiusOfCircle"}; ///< circle with a radius
    CArrayField<21330, double> CenterOfCircle{this, "CenterOfCircle"};
    CScalarField<20737, int32_t> PolygonNumOfPts{this, "PolygonNumOfPts"}; ///< polygon
    CArrayListField<20738, double> PolygonPts{this, "PolygonPts"};         ///< one array for each point
    CArrayField<21249, double> SinglePoint{this, "SinglePoint"};           ///< point
    CArrayField<21347, double> EllipseCenter{this, "EllipseCenter"};       ///< ellipse
    CArrayField<21348, double> EllipseXCoords{this, "EllipseXCoords"};     ///< its X axis
    CArrayField<21349, double> EllipseYCoords{this, "EllipseYCoords"};     ///< its Y axis
    /// Name and other properties.
    CChildField<4096, CZelMetaDataForShapeProperty> ShapeProperty{this, "ShapeProperty"};
};

/// A region of interest.
class CZelMetaDataForShapeVolume : public CZelNodeWithTag<1073741825>
{
public:
    using CZelNodeWithTag::CZelNodeWithTag;

    CTextField<1> RoiShape{this, "RoiShape"}; ///< name of the shape
    CChildField<0, CZelMetaDataForShapeVolumeObject> ShapeVolumeObject{this, "ShapeVolumeObject"}; ///< its geometry
};

} // namespace Zel
