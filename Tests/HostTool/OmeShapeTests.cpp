/// Regions of interest in the OME-XML of an exported file.

#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <cmath>
#include <numbers>
#include <pugixml.hpp>

namespace
{

using namespace SampleDocuments;

/// A slide with one ellipse, and how the exported file tells it.
class OmeEllipse : public ZelRun
{
protected:
    pugi::xml_node Export(const CRegion& region)
    {
        Write(Stack(1).Size(200, 200).LayerBlob(Regions({region})));
        Run("export", "slide.ome.tif");
        TIFF* tiff = TIFFOpen(Name("slide.ome.tif").c_str(), "r");
        const char* text = nullptr;
        TIFFGetField(tiff, TIFFTAG_IMAGEDESCRIPTION, &text);
        Xml.load_string(text);
        TIFFClose(tiff);
        return Xml.child("OME").child("ROI").child("Union").first_child();
    }
    /// What a place of the upright ellipse becomes.
    static std::array<double, 2> Turned(const pugi::xml_node& ellipse, double x, double y)
    {
        const pugi::xml_node turn = ellipse.child("Transform");
        const auto number = [&](const char* name, double usual) { return turn.attribute(name).as_double(usual); };
        return {number("A00", 1) * x + number("A01", 0) * y + number("A02", 0),
                number("A10", 0) * x + number("A11", 1) * y + number("A12", 0)};
    }
    static double AreaOf(const pugi::xml_node& ellipse)
    {
        const auto [x0, y0] = Turned(ellipse, 0, 0);
        const auto [x1, y1] = Turned(ellipse, 1, 0);
        const auto [x2, y2] = Turned(ellipse, 0, 1);
        const double scale = std::abs((x1 - x0) * (y2 - y0) - (x2 - x0) * (y1 - y0));
        return std::numbers::pi * ellipse.attribute("RadiusX").as_double() * ellipse.attribute("RadiusY").as_double() *
               scale;
    }

    pugi::xml_document Xml;
};

TEST_F(OmeEllipse, IsOneWithoutATurn)
{
    const pugi::xml_node ellipse = Export(TwoPointCircle("disc", {100.5, 80.5}, {130.5, 80.5}));
    EXPECT_STREQ(ellipse.name(), "Ellipse");
    EXPECT_EQ(ellipse.attribute("X").as_double(), 100);
    EXPECT_EQ(ellipse.attribute("RadiusX").as_double(), 30);
    EXPECT_FALSE(ellipse.child("Transform"));
}

TEST_F(OmeEllipse, IsOneWhenItIsTurned)
{
    // Half axes of 50 and 25 pixels, turned by the angle of a triangle of 3, 4 and 5.
    const pugi::xml_node ellipse = Export(Ellipse("turned", {100.5, 100.5}, {140.5, 130.5}, {85.5, 120.5}));
    EXPECT_STREQ(ellipse.name(), "Ellipse");
    EXPECT_NEAR(AreaOf(ellipse), std::numbers::pi * 50 * 25, 1);
    const double x = ellipse.attribute("X").as_double();
    const double y = ellipse.attribute("Y").as_double();
    EXPECT_NEAR(Turned(ellipse, x, y)[0], 100, 1e-9) << "it is turned about its centre";
    EXPECT_NEAR(Turned(ellipse, x, y)[1], 100, 1e-9);
    const double radius = ellipse.attribute("RadiusX").as_double();
    const auto [endX, endY] = Turned(ellipse, x + radius, y);
    EXPECT_NEAR(std::abs((endX - 100) * (130 - 100) - (endY - 100) * (140 - 100)), radius == 50 ? 0 : 50 * 25, 1e-6);
}

} // namespace
