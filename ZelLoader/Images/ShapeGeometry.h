#pragma once
#include "CommonImageAccess/VectorGraphicsImage.h"

#include <string>
#include <vector>

namespace Zel
{

using namespace CIA;

using CShapePoints = std::vector<CVectorGraphicsPoint>;

/// Reworks the points that a shape was drawn with into those that hosts want: rectangles, circles and ellipses become
/// four corners. An unexpected number of points is a failed assertion, a class that is not known ends the process.
void ModifyShapePointsAsPerBrixRequirements(CShapePoints& shapePoints, const std::string& shapeClass);

/// The points half a pixel to the left and up: files count from the corner of a pixel, hosts from its centre.
CShapePoints ReducedByPoint5(const CShapePoints& shapePoints);

/// The corner opposite to `p2` of a rectangle whose other corners are given, `p2` between `p1` and `p3`. Points that
/// make no rectangle give numbers that are none.
CVectorGraphicsPoint Calc4thCoordOf3PtRect(const CVectorGraphicsPoint& p1, const CVectorGraphicsPoint& p2,
                                           const CVectorGraphicsPoint& p3);

/// The point on the other side of the middle.
CVectorGraphicsPoint CalcP2FromP1AndMidpoint(const CVectorGraphicsPoint& p1, const CVectorGraphicsPoint& midPoint);

CVectorGraphicsPoint GetCenterOfCircleFor3ptCircle(const CVectorGraphicsPoint& circlePt1,
                                                   const CVectorGraphicsPoint& circlePt2,
                                                   const CVectorGraphicsPoint& circlePt3);

// The corners of the rectangle around a shape: a circle by its centre and a point on it, a circle by three points on
// it, an ellipse by its centre and the ends of two axes.
CShapePoints GetEnclosingRectCoordsFor2ptCircle(const CVectorGraphicsPoint& centerOfCircle,
                                                const CVectorGraphicsPoint& pointOnCircle);
CShapePoints GetEnclosingRectCoordsFor3ptCircle(const CVectorGraphicsPoint& circlePt1,
                                                const CVectorGraphicsPoint& circlePt2,
                                                const CVectorGraphicsPoint& circlePt3);
CShapePoints GetEnclosingRectCoordsOfEllipse(const CVectorGraphicsPoint& center, const CVectorGraphicsPoint& endOfX,
                                             const CVectorGraphicsPoint& endOfY);

} // namespace Zel
