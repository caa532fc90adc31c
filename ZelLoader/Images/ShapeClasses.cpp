#include "ZelLoader/Images/ShapeClasses.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Zel
{

namespace
{

constexpr size_t Any = std::numeric_limits<size_t>::max();

constexpr std::array<CShapeClass, 16> ShapeClasses = {{
    {"xv.twopoint.rectangle", L"CLIP", L"POLYGON", 2, 2, EShapeRework::Rectangle, EPointsInTags::Rectangle, nullptr},
    {"xv.circle.twopoint.meas", L"CLIP", L"ELLIPSE", 2, 2, EShapeRework::CircleOf2Points, EPointsInTags::Circle,
     nullptr},
    {"xv.circle.threepoint", L"CLIP", L"ELLIPSE", 3, 3, EShapeRework::CircleOf3Points, EPointsInTags::Circle, nullptr},
    {"xv.polygon.meas", L"CLIP", L"POLYGON", 3, Any, EShapeRework::None, EPointsInTags::Multiple, nullptr},
    {"xv.line.meas", L"LINE", L"LINE", 2, 2, EShapeRework::None, EPointsInTags::Multiple, nullptr},
    {"xv.rotrectangle", L"CLIP", L"POLYGON", 3, 3, EShapeRework::RotatedRectangle, EPointsInTags::Rectangle, nullptr},
    {"xv.rotellipses", L"CLIP", L"ELLIPSE", 3, 3, EShapeRework::RotatedEllipse, EPointsInTags::Ellipse, nullptr},
    {"xv.dot.meas", L"POINT", L"POINT", 1, 1, EShapeRework::None, EPointsInTags::Single, nullptr},
    {"xv.polyline.meas", L"LINE", L"LINE", 2, Any, EShapeRework::None, EPointsInTags::Multiple, nullptr},
    {"xv.freeline.meas", L"LINE", L"LINE", 1, Any, EShapeRework::None, EPointsInTags::Multiple, nullptr},
    {"xv.freepoly.meas", L"CLIP", L"POLYGON", 3, Any, EShapeRework::None, EPointsInTags::Multiple, nullptr},
    {"xv.interpoly.meas", L"CLIP", L"POLYGON", 3, Any, EShapeRework::None, EPointsInTags::Unknown, nullptr},
    {"xv.magicwand.meas", L"CLIP", L"POLYGON", 3, Any, EShapeRework::None, EPointsInTags::Unknown, nullptr},
    {"xv.origin", L"POINT", L"POINT", 1, 1, EShapeRework::None, EPointsInTags::EndsTheProcess,
     "TODO: Update XLS with this image name!!"},
    {"xv.perpdist", L"LINE", L"LINE", 3, 3, EShapeRework::None, EPointsInTags::EndsTheProcess, "TODO: NOTE THIS DOWN!"},
    {"xv.circle.threepoint.two", L"LINE", L"LINE", 6, 6, EShapeRework::CentresOf2Circles, EPointsInTags::EndsTheProcess,
     "TODO: update xls for this"},
}};

constexpr std::array IgnoredShapeClasses = {
    "xv.angle.threepoint.meas", "xv.angle.fourpoint.meas", "xv.angle.ruler.meas", "xv.throatthickness",
    "xv.multipointsonline",     "xv.multicircle2p",        "xv.multicircle3p",    "xv.3dline.meas",
    "xv.righttriangle.meas",    "xv.multiperpdist",        "xv.asymmetrydist"};

} // namespace

const CShapeClass* FindShapeClass(const std::string& name)
{
    const auto found = std::find_if(ShapeClasses.begin(), ShapeClasses.end(),
                                    [&](const CShapeClass& shapeClass) { return name == shapeClass.Name; });
    return found == ShapeClasses.end() ? nullptr : &*found;
}

bool IsIgnoredShapeClass(const std::string& name)
{
    return std::find(IgnoredShapeClasses.begin(), IgnoredShapeClasses.end(), name) != IgnoredShapeClasses.end();
}

} // namespace Zel
