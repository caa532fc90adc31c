#pragma once
#include "CommonImageAccess/Handles.h"
#include "CommonUtil/Text.h"
#include "Tests/Properties/PropertySets.h"

#include <cmath>

/// Regions of interest as the model has them, with points in pixels of level 0.
namespace SlideOfTest
{

/// A point of a region with some room for what doubles lose.
inline bool AreClose(const CPoint& left, const CPoint& right)
{
    return std::fabs(left.X - right.X) < 1e-9 && std::fabs(left.Y - right.Y) < 1e-9;
}

MATCHER(IsCloseTo, "is the point of the table")
{
    return AreClose(std::get<0>(arg), std::get<1>(arg));
}

inline auto AreThePoints(const std::vector<CPoint>& points)
{
    return testing::Pointwise(IsCloseTo(), points);
}

struct CRegionOfModel
{
    std::string Name;
    std::string Type;
    std::string Shape;
    std::vector<CPoint> Points;
};

class RegionsOfModel : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
    AC_Result ResultOfList() const { return ResultOfSet(FirstArea(), L"AnalysisROIList"); }
    std::vector<std::string> Ids() const { return ToldByArea(FirstArea(), L"AnalysisROIList").at("id"); }
    Told Info(const wchar_t* id) const { return ToldByArea(FirstArea(), L"AnalysisROIInfo", {{L"roiId", id}}); }

    /// All of a group, in the order of their IDs.
    std::vector<CRegionOfModel> All(int group = 0) const
    {
        std::vector<CRegionOfModel> all;
        for (const CIA::CVectorGraphicsImage& image : CIA::Group(Group(group)).VectorGraphicsImages())
        {
            std::vector<CPoint> points;
            for (const CIA::CVectorGraphicsPoint& point : image.Points())
                points.push_back({point.X(), point.Y()});
            all.push_back({CommonUtil::A(image.Name()), CommonUtil::A(image.ShapeType()), CommonUtil::A(image.Shape()),
                           std::move(points)});
        }
        return all;
    }
    std::vector<std::string> Names(int group = 0) const
    {
        std::vector<std::string> names;
        for (const CRegionOfModel& region : All(group))
            names.push_back(region.Name);
        return names;
    }
    void Open(const Regions& regions) { Slide::Open(Stack(1).LayerBlob(regions)); }
    using Slide::Open;
};

} // namespace SlideOfTest
