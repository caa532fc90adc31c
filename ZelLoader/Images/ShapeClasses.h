#pragma once
#include <cstddef>
#include <string>

namespace Zel
{

/// What becomes of the points that a shape was drawn with.
enum class EShapeRework
{
    None,
    Rectangle,
    RotatedRectangle,
    RotatedEllipse,
    CircleOf2Points,
    CircleOf3Points,
    CentresOf2Circles
};

/// Where the points of a shape stand when it is stored as tags.
enum class EPointsInTags
{
    Rectangle,
    Circle,
    Multiple,
    Ellipse,
    Single,
    Unknown,       ///< nobody knows: the shape goes without points
    EndsTheProcess ///< nobody knows, and no document with one was ever seen
};

/// What is known of a class of shapes that users can draw.
struct CShapeClass
{
    const char* Name; ///< as documents name it
    const wchar_t* Type;
    const wchar_t* Shape;
    size_t MinNumOfPoints; ///< of the points it was drawn with
    size_t MaxNumOfPoints;
    EShapeRework Rework;
    EPointsInTags PointsInTags;
    const char* NoteBeforeTheEnd; ///< logged last where the process ends; else null
};

/// Null for a class that is not known.
const CShapeClass* FindShapeClass(const std::string& name);

/// Measurements that are no regions for a host: they are left out on purpose.
bool IsIgnoredShapeClass(const std::string& name);

} // namespace Zel
