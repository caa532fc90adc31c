#include "SampleDocuments/Document.h"
#include "SampleDocuments/Tags.h"

#include "Tests/SampleDocuments/Bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace SampleDocuments;
using namespace BytesOfTest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

std::vector<uint32_t> TagsOf(const CNode& node)
{
    std::vector<uint32_t> tags;
    for (const CNode& child : node.Children())
        tags.push_back(child.Tag());
    return tags;
}

/// The tags of the points of a region in the tree form, without those that are there for every class.
std::vector<uint32_t> TagsOfPoints(const CRegion& region)
{
    std::vector<uint32_t> tags = TagsOf(TreeOf(region).At({Tag::Shape, Tag::ShapeObject}));
    EXPECT_EQ(tags.back(), Tag::ShapeProperties);
    tags.pop_back();
    return tags;
}

ByteString ValueOf(CNode node, const Path& path)
{
    return node.At(path).Value();
}

// The XML form.

TEST(RegionsAsXml, AreAnElementForEachInsideTheFrameOfTheText)
{
    EXPECT_EQ(Regions({Dot("a", {1, 2}), Line("b", {0.5, -3}, {1e300, 4})}).ToXml(),
              "<qrXML><VersionInfo/><Holder><PropertySet><Property Key=\"measure:ObjectList\">"
              "<Object><PropertySet>"
              "<Property Key=\"measure:ObjectName\"><String>a</String></Property>"
              "<Property Key=\"measure:ShapeClass\"><String>xv.dot.meas</String></Property>"
              "<Property Key=\"measure:ShapePoints\">"
              "<Component><CdVec2><double>1</double><double>2</double></CdVec2></Component></Property>"
              "<Property Key=\"measure:ObjectType\"><Int>1</Int></Property>"
              "</PropertySet></Object>"
              "<Object><PropertySet>"
              "<Property Key=\"measure:ObjectName\"><String>b</String></Property>"
              "<Property Key=\"measure:ShapeClass\"><String>xv.line.meas</String></Property>"
              "<Property Key=\"measure:ShapePoints\">"
              "<Component><CdVec2><double>0.5</double><double>-3</double></CdVec2></Component>"
              "<Component><CdVec2><double>1e+300</double><double>4</double></CdVec2></Component></Property>"
              "<Property Key=\"measure:ObjectType\"><Int>1</Int></Property>"
              "</PropertySet></Object>"
              "</Property></PropertySet></Holder></qrXML>");
}

TEST(RegionsAsXml, LieInABlobOfVersion4BehindAHeadOf10Bytes)
{
    EXPECT_EQ(BytesOfOnly(Regions().Xml("<a/>")),
              Hex("02000000 E8070000 00000000 1E000000" // 2024
                  "04000000 12000000 04000000"          // regions of interest, 18 bytes, version 4
                  "04000000 0A000000 FFFE"              // version 4, 10 bytes with the mark, the mark
                  "3C00 6100 2F00 3E00"));
}

TEST(RegionsAsXml, EscapeWhatWouldBeMarkup)
{
    EXPECT_THAT(XmlOf(Dot("a<b>&c", {})), HasSubstr("<String>a&lt;b&gt;&amp;c</String>"));
}

TEST(RegionsAsXml, LeaveOutWhatIsNotSet)
{
    CRegion region;
    region.HasPoints = false;
    region.ObjectType.reset();
    EXPECT_EQ(XmlOf(region), "<Object><PropertySet></PropertySet></Object>");
}

TEST(RegionsAsXml, CanBeEditedOneByOneAndAsAWhole)
{
    CRegion region = Dot("a", {});
    region.EditXml = [](std::string& xml) { xml = "<Object/>"; };
    Regions regions({region});
    EXPECT_THAT(regions.ToXml(), HasSubstr("\"measure:ObjectList\"><Object/></Property>"));
    regions.EditXml([](std::string& xml) { xml.resize(6); });
    EXPECT_EQ(regions.Payload(), Joined({Hex("04000000 0E000000 FFFE"), Utf16("<qrXML")}));
}

TEST(RegionsAsXml, CanTellNumbersThatAreNotSo)
{
    EXPECT_EQ(Regions().Xml("").PayloadVersion(6).ByteCount(7).ByteOrderMark(0xFFFE).Payload(),
              Hex("06000000 07000000 FEFF"));
    EXPECT_EQ(Regions().Xml("").Id(3).BlobVersion(5).ToBlob().Value(),
              Hex("03000000 0A000000 05000000 04000000 02000000 FFFE"));
    EXPECT_EQ(Regions().XmlUnits(u"\xD800").Payload(), Hex("04000000 04000000 FFFE 00D8")) << "half a pair";
}

// The tree form.

TEST(RegionsAsTree, LieInABlobOfVersion3AsTextsAndTrees)
{
    CRegion region = Dot("n", {1, 2});
    region.XmlBeforeTree = "<x/>";
    EXPECT_EQ(BytesOfOnly(Regions({region}).AsTree()),
              Hex("02000000 E8070000 00000000 0E010000"                    // 2024
                  "04000000 02010000 03000000"                             // regions of interest, 258 bytes, version 3
                  "03000000 00000000 01000000"                             // version 3, type 0, one object
                  "06000000 0000 3C782F3E 00000000"                        // a text of 2 and 4 bytes, 4 bytes behind it
                  "1800 5152 01000000 1800000000000000 01000000 00000000"  // the root of the object
                  "00000090 01000040 00000000 C0000000"                    // 1073741825, a volume
                  "1800 5152 01000000 1800000000000000 02000000 00000000"  //
                  "00200020 01000000 3E000000 16000000"                    // 1: the class
                  "7800 7600 2E00 6400 6F00 7400 2E00 6D00 6500 6100 7300" //
                  "00000090 00000000 00000000 72000000"                    // 0, a volume
                  "1800 5152 01000000 1800000000000000 02000000 00000000"  //
                  "0B000020 01530000 38000000 10000000"                    // 21249: the point
                  "000000000000F03F 0000000000000040"                      //
                  "00000090 00100000 00000000 2A000000"                    // 4096, a volume
                  "1800 5152 01000000 1800000000000000 01000000 00000000"  //
                  "00200020 00020000 00000000 02000000 6E00"));            // 512: the name
}

TEST(RegionsAsTree, AreLaidOneBehindTheOther)
{
    const ByteString one = Regions({Dot("a", {})}).AsTree().Payload();
    const ByteString two = Regions({Dot("a", {}), Dot("a", {})}).AsTree().Payload();
    EXPECT_EQ(two.size() - one.size(), one.size() - 12);
    EXPECT_EQ(ByteString(two.begin() + static_cast<ptrdiff_t>(one.size()), two.end()),
              ByteString(one.begin() + 12, one.end()));
}

struct CClass
{
    const char* TestName;
    CRegion Region;
    std::vector<uint32_t> Tags;
};

class TagsOfAShape : public testing::TestWithParam<CClass>
{
};

TEST_P(TagsOfAShape, ComeInTheOrderOfItsPoints)
{
    const CClass& shape = GetParam();
    EXPECT_EQ(TagsOfPoints(shape.Region), shape.Tags);
    CNode object = TreeOf(shape.Region).At({Tag::Shape, Tag::ShapeObject});
    std::erase_if(object.Children(), [](const CNode& node) { return node.Tag() == Tag::NumOfPoints; });
    for (size_t i = 0; i < shape.Region.Points.size(); ++i)
        EXPECT_EQ(object.Children()[i].Value(),
                  Doubles(0, {shape.Region.Points[i].X, shape.Region.Points[i].Y}).Value());
}

const CPoint A = {1, 2}, B = {3, 4}, C = {5, 6};

INSTANTIATE_TEST_SUITE_P(
    Classes, TagsOfAShape,
    testing::Values(CClass{"Rectangle", Rectangle("", A, B), {20993, 20994}},
                    CClass{"RotatedRectangle", RotatedRectangle("", A, B, C), {21344, 21345, 21346}},
                    CClass{"TwoPointCircle", TwoPointCircle("", A, B), {21330, 21329}},
                    CClass{"ThreePointCircle", ThreePointCircle("", A, B, C), {21341, 21342, 21343}},
                    CClass{"Ellipse", Ellipse("", A, B, C), {21347, 21348, 21349}}, CClass{"Dot", Dot("", A), {21249}},
                    CClass{"Line", Line("", A, B), {20737, 20738, 20738}},
                    CClass{"Polygon", Polygon("", {A, B, C}), {20737, 20738, 20738, 20738}},
                    CClass{"Polyline", Polyline("", {A, B}), {20737, 20738, 20738}},
                    CClass{"MagicWand", CRegion(ShapeClass::MagicWand, "", {A}), {20737, 20738}},
                    CClass{"AnyOther", CRegion("any.other", "", {A}), {20737, 20738}}),
    [](const testing::TestParamInfo<CClass>& shape) { return shape.param.TestName; });

TEST(RegionsAsTree, TellNameClassAndNumberOfPoints)
{
    const CNode root = TreeOf(Polygon("cell", {A, B, C}));
    EXPECT_EQ(ValueOf(root, {Tag::Shape, Tag::ShapeClass}), Utf16("xv.polygon.meas"));
    EXPECT_EQ(ValueOf(root, {Tag::Shape, Tag::ShapeObject, Tag::NumOfPoints}), Hex("03000000"));
    EXPECT_EQ(ValueOf(root, {Tag::Shape, Tag::ShapeObject, Tag::ShapeProperties, Tag::RegionName}), Utf16("cell"));
}

TEST(RegionsAsTree, CanTakeTheTagsOfAnotherClass)
{
    CRegion region = Rectangle("", A, B);
    region.Geometry = RegionGeometry::RotatedRectangle;
    EXPECT_THAT(TagsOfPoints(region), ElementsAre(21344, 21345));
}

TEST(RegionsAsTree, CanTellNumbersThatAreNotSo)
{
    CRegion region = Polygon("", {A});
    region.NumOfPoints = -5;
    region.SizeOfXmlBeforeTree = 1;
    region.XmlBeforeTree = "";
    EXPECT_EQ(ValueOf(TreeOf(region), {Tag::Shape, Tag::ShapeObject, Tag::NumOfPoints}), Hex("FBFFFFFF"));
    const ByteString payload =
        Regions({region}).AsTree().PayloadVersion(9).PayloadType(3).NumOfObjects(0xFFFFFFFF).Payload();
    EXPECT_EQ(ByteString(payload.begin(), payload.begin() + 22),
              Hex("09000000 03000000 FFFFFFFF 01000000 0000 00000000"));
}

TEST(RegionsAsTree, CanLackWhatReadersRequire)
{
    CRegion region = Polygon("", {A});
    region.HasPoints = false;
    region.ShapeClass.reset();
    region.EditTree = [](CNode& root) { root.At({Tag::Shape, Tag::ShapeObject}).Drop(Tag::ShapeProperties); };
    EXPECT_EQ(BytesOfTree(TreeOf(region)).size(), 24u + 16u + 24u + 16u + 24u);
}

// Many of them.

TEST(ManyRegionsOfInterest, DifferAndLieInThePicture)
{
    const std::vector<CRegion> regions = ManyRegions(1000, 500, 100);
    ASSERT_EQ(regions.size(), 1000u);
    EXPECT_EQ(regions[999].Name, "Region 999");
    std::set<std::pair<double, double>> places;
    for (const CRegion& region : regions)
    {
        const CPoint& at = region.Points[0];
        EXPECT_TRUE(at.X >= 0 && at.X < 500 && at.Y >= 0 && at.Y < 100);
        places.insert({at.X, at.Y});
    }
    EXPECT_EQ(places.size(), 1000u);
}

TEST(ManyRegionsOfInterest, AreWrittenInBothForms)
{
    const std::vector<CRegion> regions = ManyRegions(100000, 50000, 50000);
    const ByteString tree = Regions(regions).AsTree().Payload();
    EXPECT_EQ(ByteString(tree.begin() + 8, tree.begin() + 12), Hex("A0860100"));
    const ByteString xml = Regions(regions).Payload();
    EXPECT_EQ(ByteString(xml.end() - 16, xml.end()), Utf16("</qrXML>"));
}

TEST(RegionOfEachClass, HasItsNameAndThePointsThatItsTagsTake)
{
    for (const CRegion& region : RegionOfEachClass())
    {
        EXPECT_EQ(region.Name, region.ShapeClass);
        EXPECT_GE(TagsOfPoints(region).size(), region.Points.size()) << *region.Name;
    }
}

} // namespace
