// Where the points of a shape stand when it is stored as tags.

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ShapeClasses.h"
#include "ZelLoader/Images/VectorGraphicsReader.h"

namespace Zel
{

namespace
{

CVectorGraphicsPoint PointOf(const CArrayStartAndSize<double>& array)
{
    ZEL_ASSERT(array.Size >= 2);
    return {array.Arr[0], array.Arr[1]};
}

/// The point of a field that must be there.
CVectorGraphicsPoint PointOf(const CArrayStartAndSize<double>* array)
{
    ZEL_ASSERT(array);
    return PointOf(*array);
}

CShapePoints GetRectanglePoints(CZelMetaDataForShapeVolumeObject& object)
{
    const bool isStraight = object.RectTopLeft() && object.RectBottomRight();
    const bool hasStraight = object.RectTopLeft() || object.RectBottomRight();
    const bool isRotated = object.RotRectRotationPoint() && object.RotRectFirstSide() && object.RotRectSecondSide();
    const bool hasRotated = object.RotRectRotationPoint() || object.RotRectFirstSide() || object.RotRectSecondSide();
    ZEL_ASSERT((isStraight && !hasRotated) || (isRotated && !hasStraight));
    if (isStraight)
    {
        const CVectorGraphicsPoint topLeft = PointOf(object.RectTopLeft());
        const CVectorGraphicsPoint bottomRight = PointOf(object.RectBottomRight());
        return {topLeft, {bottomRight.X(), topLeft.Y()}, bottomRight, {topLeft.X(), bottomRight.Y()}};
    }
    const CVectorGraphicsPoint p = PointOf(object.RotRectRotationPoint());
    const CVectorGraphicsPoint f = PointOf(object.RotRectFirstSide());
    const CVectorGraphicsPoint s = PointOf(object.RotRectSecondSide());
    return {p, f, Calc4thCoordOf3PtRect(f, p, s), s};
}

CShapePoints GetCirclePoints(CZelMetaDataForShapeVolumeObject& object)
{
    if (object.CircleFirstPoint())
        return GetEnclosingRectCoordsFor3ptCircle(PointOf(object.CircleFirstPoint()),
                                                  PointOf(object.CircleSecondPoint()),
                                                  PointOf(object.CircleThirdPoint()));
    return GetEnclosingRectCoordsFor2ptCircle(PointOf(object.CenterOfCircle()), PointOf(object.RadiusOfCircle()));
}

CShapePoints GetMultiplePoints(CZelMetaDataForShapeVolumeObject& object)
{
    const int32_t* numOfPoints = object.PolygonNumOfPts();
    ZEL_ASSERT(numOfPoints);
    const auto& arrays = *object.PolygonPts();
    ZEL_ASSERT(*numOfPoints >= 0 && static_cast<size_t>(*numOfPoints) <= arrays.size());
    CShapePoints points;
    for (int32_t i = 0; i < *numOfPoints; ++i)
        points.push_back(PointOf(arrays[static_cast<size_t>(i)]));
    return points;
}

CShapePoints GetEllipsePoints(CZelMetaDataForShapeVolumeObject& object)
{
    return GetEnclosingRectCoordsOfEllipse(PointOf(object.EllipseCenter()), PointOf(object.EllipseXCoords()),
                                           PointOf(object.EllipseYCoords()));
}

CShapePoints GetSinglePoint(CZelMetaDataForShapeVolumeObject& object)
{
    return {PointOf(object.SinglePoint())};
}

} // namespace

CShapePoints GetShapePointsOfTags(const std::string& zelShapeClass, CZelMetaDataForShapeVolumeObject& volObject)
{
    const CShapeClass* shapeClass = FindShapeClass(zelShapeClass);
    ZEL_ASSERT(shapeClass);
    switch (shapeClass->PointsInTags)
    {
    case EPointsInTags::Rectangle:
        return GetRectanglePoints(volObject);
    case EPointsInTags::Circle:
        return GetCirclePoints(volObject);
    case EPointsInTags::Multiple:
        return GetMultiplePoints(volObject);
    case EPointsInTags::Ellipse:
        return GetEllipsePoints(volObject);
    case EPointsInTags::Single:
        return GetSinglePoint(volObject);
    case EPointsInTags::Unknown:
    case EPointsInTags::EndsTheProcess:
        break;
    }
    ZEL_LOG("Warning: Ignoring the points of the shape class '%s' as it is not clear how to get them from the tags.",
            zelShapeClass.c_str());
    if (shapeClass->PointsInTags == EPointsInTags::EndsTheProcess)
    {
        ZEL_LOG("%s", shapeClass->NoteBeforeTheEnd);
        oldAbortCommonUtil();
    }
    return {};
}

} // namespace Zel
