#include "ZelLoader/Images/ShapeGeometry.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ShapeClasses.h"

#include <cmath>

namespace Zel
{

namespace
{

double Slope(const CVectorGraphicsPoint& from, const CVectorGraphicsPoint& to)
{
    return (to.Y() - from.Y()) / (to.X() - from.X()); // infinite for an upright line, NaN for a point
}

} // namespace

CVectorGraphicsPoint Calc4thCoordOf3PtRect(const CVectorGraphicsPoint& p1, const CVectorGraphicsPoint& p2,
                                           const CVectorGraphicsPoint& p3)
{
    const double m1 = Slope(p1, p2);
    const double m2 = Slope(p2, p3);
    if (!std::isfinite(m2) && m1 == 0)
        return {p1.X(), p3.Y()};
    if (!std::isfinite(m1) && m2 == 0)
        return {p3.X(), p1.Y()};
    const double x = (p1.X() * m2 + (p3.Y() - p1.Y()) - p3.X() * m1) / (m2 - m1);
    return {x, p1.Y() + (x - p1.X()) * m2};
}

CVectorGraphicsPoint CalcP2FromP1AndMidpoint(const CVectorGraphicsPoint& p1, const CVectorGraphicsPoint& midPoint)
{
    return {midPoint.X() + midPoint.X() - p1.X(), midPoint.Y() + midPoint.Y() - p1.Y()};
}

CVectorGraphicsPoint GetCenterOfCircleFor3ptCircle(const CVectorGraphicsPoint& circlePt1,
                                                   const CVectorGraphicsPoint& circlePt2,
                                                   const CVectorGraphicsPoint& circlePt3)
{
    const CVectorGraphicsPoint& a = circlePt1;
    const CVectorGraphicsPoint& b = circlePt2;
    const CVectorGraphicsPoint& c = circlePt3;
    const double m1 = Slope(a, b);
    const double m2 = Slope(b, c);
    if (std::isfinite(m2) && !std::isfinite(m1))
        return {(b.X() - c.X() + (c.Y() - a.Y()) * m2) / 2, // a difference, which hosts have always been given
                (a.Y() + b.Y()) / 2};
    const double cx = !std::isfinite(m2)
                          ? ((a.X() + b.X()) - (c.Y() - a.Y()) * m1) / 2
                          : ((b.X() + c.X()) * m1 + (c.Y() - a.Y()) * m1 * m2 - (a.X() + b.X()) * m2) / (2 * (m1 - m2));
    const double cy = ((a.X() + b.X()) - 2 * cx + (a.Y() + b.Y()) * m1) / (2 * m1);
    return {cx, cy};
}

CShapePoints GetEnclosingRectCoordsFor2ptCircle(const CVectorGraphicsPoint& centerOfCircle,
                                                const CVectorGraphicsPoint& pointOnCircle)
{
    const CVectorGraphicsPoint& c = centerOfCircle;
    const double dx = pointOnCircle.X() - c.X();
    const double dy = pointOnCircle.Y() - c.Y();
    const double r = std::sqrt(dx * dx + dy * dy);
    return {{c.X() - r, c.Y() + r}, {c.X() + r, c.Y() + r}, {c.X() + r, c.Y() - r}, {c.X() - r, c.Y() - r}};
}

CShapePoints GetEnclosingRectCoordsFor3ptCircle(const CVectorGraphicsPoint& circlePt1,
                                                const CVectorGraphicsPoint& circlePt2,
                                                const CVectorGraphicsPoint& circlePt3)
{
    return GetEnclosingRectCoordsFor2ptCircle(GetCenterOfCircleFor3ptCircle(circlePt1, circlePt2, circlePt3),
                                              circlePt1);
}

CShapePoints GetEnclosingRectCoordsOfEllipse(const CVectorGraphicsPoint& center, const CVectorGraphicsPoint& endOfX,
                                             const CVectorGraphicsPoint& endOfY)
{
    // The ends of the axes are the middles of the rectangle's sides.
    const CVectorGraphicsPoint q = Calc4thCoordOf3PtRect(endOfX, center, endOfY);
    const CVectorGraphicsPoint a = CalcP2FromP1AndMidpoint(q, endOfY);
    const CVectorGraphicsPoint b = CalcP2FromP1AndMidpoint(q, endOfX);
    const CVectorGraphicsPoint c = Calc4thCoordOf3PtRect(a, q, b);
    return {a, q, b, c};
}

CShapePoints ReducedByPoint5(const CShapePoints& shapePoints)
{
    CShapePoints reduced;
    reduced.reserve(shapePoints.size());
    for (const CVectorGraphicsPoint& point : shapePoints)
        reduced.emplace_back(point.X() - 0.5, point.Y() - 0.5);
    return reduced;
}

void ModifyShapePointsAsPerBrixRequirements(CShapePoints& shapePoints, const std::string& shapeClass)
{
    CShapePoints& p = shapePoints;
    ZEL_ASSERT(!p.empty());
    if (IsIgnoredShapeClass(shapeClass))
        return;
    const CShapeClass* knownClass = FindShapeClass(shapeClass);
    if (!knownClass)
    {
        ZEL_LOG("Unhandled shapeClass '%s'!", shapeClass.c_str());
        CommonUtil::oldAbortCommonUtil();
    }
    ZEL_ASSERT(p.size() >= knownClass->MinNumOfPoints && p.size() <= knownClass->MaxNumOfPoints);
    switch (knownClass->Rework)
    {
    case EShapeRework::None:
        break;
    case EShapeRework::Rectangle:
        p = {p[0], {p[1].X(), p[0].Y()}, p[1], {p[0].X(), p[1].Y()}};
        break;
    case EShapeRework::RotatedRectangle:
        p = {p[0], p[1], Calc4thCoordOf3PtRect(p[1], p[0], p[2]), p[2]};
        break;
    case EShapeRework::RotatedEllipse:
        p = GetEnclosingRectCoordsOfEllipse(p[0], p[1], p[2]);
        break;
    case EShapeRework::CircleOf2Points:
        p = GetEnclosingRectCoordsFor2ptCircle(p[0], p[1]);
        break;
    case EShapeRework::CircleOf3Points:
        p = GetEnclosingRectCoordsFor3ptCircle(p[0], p[1], p[2]);
        break;
    case EShapeRework::CentresOf2Circles:
        p = {GetCenterOfCircleFor3ptCircle(p[0], p[1], p[2]), GetCenterOfCircleFor3ptCircle(p[3], p[4], p[5])};
        break;
    }
}

} // namespace Zel
