// Blobs of regions that break a rule: a failed assertion or no regions, never a read outside.

#include "SampleDocuments/Tags.h"
#include "Tests/Properties/RegionsOfTest.h"

using namespace SlideOfTest;

namespace
{

struct DamageRow : Row
{
    Regions Damaged;
};

class DamagedRegions : public RegionsOfModel, public testing::WithParamInterface<DamageRow>
{
};

TEST_P(DamagedRegions, FailAnAssertion)
{
    Open(GetParam().Damaged);
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfList(); });
    EXPECT_EQ(result, AC_RESULT_FAILURE);
    EXPECT_THAT(messages, Contains(HasSubstr("Assertion failed: file ")));
}

class UnreadableRegions : public RegionsOfModel, public testing::WithParamInterface<DamageRow>
{
};

TEST_P(UnreadableRegions, AreNone)
{
    Open(GetParam().Damaged);
    EXPECT_THAT(Ids(), IsEmpty());
}

class StrangeRegions : public RegionsOfModel, public testing::WithParamInterface<DamageRow>
{
};

TEST_P(StrangeRegions, AreReadAllTheSame)
{
    Open(GetParam().Damaged);
    EXPECT_THAT(Names(), ElementsAre("spot"));
}

Regions Spot()
{
    return Regions({Dot("spot", {1, 2})});
}

// ---- The XML form ----

INSTANTIATE_TEST_SUITE_P(XmlHead, DamagedRegions,
                         testing::Values(DamageRow{{"OtherVersion"}, Spot().PayloadVersion(3)},
                                         DamageRow{{"OddNumberOfBytes"}, Spot().ByteCount(301)},
                                         DamageRow{{"NoBytes"}, Spot().ByteCount(0)},
                                         DamageRow{{"OneByte"}, Spot().ByteCount(1)},
                                         DamageRow{{"BeyondTheFile"}, Spot().ByteCount(0xFFFFFFFE)},
                                         DamageRow{{"BeyondTheFileByLittle"}, Spot().ByteCount(1u << 24)},
                                         DamageRow{{"OtherByteOrder"}, Spot().ByteOrderMark(0xFFFE)},
                                         DamageRow{{"NoMark"}, Spot().ByteOrderMark(0)}),
                         NameOfRow());

std::string Repeated(std::string_view text, size_t times)
{
    std::string all;
    for (size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::u16string LoneSurrogates()
{
    return u"<\xD800\xDC00\xDC00\xD800";
}

INSTANTIATE_TEST_SUITE_P(Xml, UnreadableRegions,
                         testing::Values(DamageRow{{"MarkAlone"}, Spot().ByteCount(2)},
                                         DamageRow{{"EmptyText"}, Regions().Xml("")},
                                         DamageRow{{"NoXml"}, Regions().Xml("regions")},
                                         DamageRow{{"CutOff"}, Spot().ByteCount(60)},
                                         DamageRow{{"OpenElement"}, Regions().Xml("<qrXML><VersionInfo/>")},
                                         DamageRow{{"TenThousandOpenElements"}, Regions().Xml(Repeated("<a>", 10000))},
                                         DamageRow{{"NoText"}, Regions().XmlUnits(LoneSurrogates())},
                                         DamageRow{{"ZerosAlone"}, Regions().XmlUnits(std::u16string(50, u'\0'))}),
                         NameOfRow());

Regions Edited(const std::string& from, const std::string& to)
{
    return Spot().EditXml(
        [from, to](std::string& xml)
        {
            const size_t at = xml.find(from);
            ASSERT_NE(at, std::string::npos);
            xml.replace(at, from.size(), to);
        });
}

/// Each property of the object that stands in the XML twice.
Regions Doubled(const std::string& key)
{
    return Spot().EditXml(
        [key](std::string& xml)
        {
            const size_t at = xml.find("<Property Key=\"measure:" + key);
            const std::string property = xml.substr(at, xml.find("</Property>", at) + 11 - at);
            xml.insert(at, property);
        });
}

INSTANTIATE_TEST_SUITE_P(
    Xml, DamagedRegions,
    testing::Values(
        DamageRow{{"NoRoot"}, Regions().Xml("<other/>")}, DamageRow{{"EmptyRoot"}, Regions().Xml("<qrXML/>")},
        DamageRow{{"NoVersionInfo"}, Edited("<VersionInfo/>", "")},
        DamageRow{{"OtherVersionInfo"}, Edited("<VersionInfo/>", "<Version/>")},
        DamageRow{{"SomethingBeforeTheHolder"}, Edited("<Holder>", "<Other/><Holder>")},
        DamageRow{{"NoPropertySet"}, Edited("<Holder><PropertySet>", "<Holder><Other/><PropertySet>")},
        DamageRow{{"NoObjectList"}, Edited("measure:ObjectList", "measure:Objects")},
        DamageRow{{"ObjectListIsNoProperty"},
                  Regions().Xml("<qrXML><VersionInfo/><Holder><PropertySet><List Key=\"measure:ObjectList\"/>"
                                "</PropertySet></Holder></qrXML>")},
        DamageRow{{"ObjectWithoutChild"}, Edited("<Object>", "<Object/><Object>")},
        DamageRow{{"ObjectOfTwoChildren"}, Edited("<Object>", "<Object><Other/>")},
        DamageRow{{"OtherComponent"}, Edited("<Component>", "<Other/><Component>")},
        DamageRow{{"NoVector"}, Edited("<CdVec2>", "<Other/><CdVec2>")},
        DamageRow{{"NoX"}, Edited("<CdVec2>", "<CdVec2><single>1</single>")},
        DamageRow{{"NoY"}, Edited("<double>2</double>", "")},
        DamageRow{{"OtherY"}, Edited("<double>2</double>", "<single>2</single>")},
        DamageRow{{"TwoNames"}, Doubled("ObjectName")}, DamageRow{{"TwoClasses"}, Doubled("ShapeClass")},
        DamageRow{{"PointsTwice"}, Doubled("ShapePoints")}, DamageRow{{"TwoObjectTypes"}, Doubled("ObjectType")}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Xml, StrangeRegions,
    testing::Values(
        DamageRow{{"UnknownKey"},
                  Edited("<Property Key=\"measure:ObjectName", "<Property Key=\"measure:Colour\"><A>1</A>"
                                                               "</Property><Property "
                                                               "Key=\"measure:ObjectName")},
        DamageRow{{"PropertyWithoutKey"}, Edited("<Object><PropertySet>", "<Object><PropertySet><Property/>")},
        DamageRow{{"NoObjectType"}, Edited("<Property Key=\"measure:ObjectType\"><Int>1</Int></Property>", "")},
        DamageRow{{"ObjectTypeIsNoNumber"}, Edited("<Int>1</Int>", "<Int>one</Int>")},
        DamageRow{{"Declaration"}, Edited("<qrXML>", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><qrXML>")},
        DamageRow{{"ObjectWithoutProperties"}, Edited("<Object>", "<Object><PropertySet/></Object><Object>")},
        DamageRow{{"NestedTenThousandDeep"},
                  Edited("<Object><PropertySet>", "<Object><PropertySet><Property Key=\"deep\">" +
                                                      Repeated("<a>", 10000) + Repeated("</a>", 10000) +
                                                      "</Property>")},
        DamageRow{{"DocumentType"}, Edited("<qrXML>", "<!DOCTYPE qrXML [<!ENTITY bomb \"boom\">]><qrXML>")},
        DamageRow{{"ExternalEntity"},
                  Edited("<qrXML>", "<!DOCTYPE qrXML [<!ENTITY file SYSTEM \"file:///etc/hostname\">]><qrXML>")}),
    NameOfRow());

TEST_F(RegionsOfModel, ReplaceNoEntityOfTheirXml)
{
    Open(Spot().EditXml(
        [](std::string& xml)
        {
            xml.replace(xml.find("spot"), 4, "&bomb;");
            xml.insert(0, "<!DOCTYPE qrXML [<!ENTITY bomb \"boom\">]>");
        }));
    EXPECT_THAT(Names(), ElementsAre("&bomb;"));
}

TEST_F(RegionsOfModel, TakeWhatIsNoNumberForZero)
{
    Open(Edited("<double>1</double><double>2</double>", "<double>x</double><double/>"));
    EXPECT_THAT(All().at(0).Points, AreThePoints({{-0.5, -0.5}}));
}

// ---- The tree form ----

Regions SpotInTags()
{
    return Spot().AsTree();
}

/// The tree of a region with something different in the object that holds its points.
Regions WithObject(CRegion region, const std::function<void(CNode& object)>& edit)
{
    region.EditTree = [edit](CNode& root) { edit(root.At({Tag::Shape, Tag::ShapeObject})); };
    return Regions({std::move(region)}).AsTree();
}
Regions WithShape(const std::function<void(CNode& shape)>& edit)
{
    CRegion region = Dot("spot", {1, 2});
    region.EditTree = [edit](CNode& root) { edit(root.At({Tag::Shape})); };
    return Regions({std::move(region)}).AsTree();
}
Regions Without(CRegion region, uint32_t tag)
{
    return WithObject(std::move(region), [tag](CNode& object) { object.Drop(tag); });
}
Regions Shortened(CRegion region, uint32_t tag)
{
    return WithObject(std::move(region), [tag](CNode& object) { object.Put(Doubles(tag, {1.0})); });
}

CRegion Square()
{
    return Rectangle("square", {1, 2}, {3, 4});
}
CRegion Turned()
{
    return RotatedRectangle("turned", {10, 10}, {30, 10}, {10, 20});
}
CRegion Circle2()
{
    return TwoPointCircle("circle", {5, 5}, {8, 9});
}
CRegion Circle3()
{
    return ThreePointCircle("circle", {-5, 0}, {0, 5}, {4, 3});
}
CRegion Oval()
{
    return Ellipse("oval", {50, 50}, {70, 50}, {50, 60});
}
CRegion Polygon3(std::optional<int32_t> count = {})
{
    CRegion region = Polygon("polygon", {{1, 2}, {3, 4}, {5, 7}});
    region.NumOfPoints = count;
    return region;
}
CRegion SpotAfterXml(uint32_t sizeOfXml)
{
    CRegion region = Dot("spot", {1, 2});
    region.SizeOfXmlBeforeTree = sizeOfXml;
    return region;
}

INSTANTIATE_TEST_SUITE_P(TreeHead, DamagedRegions,
                         testing::Values(DamageRow{{"OtherPayloadVersion"}, SpotInTags().PayloadVersion(4)},
                                         DamageRow{{"UnknownType"}, SpotInTags().PayloadType(3)},
                                         DamageRow{{"MoreObjectsThanTheFileHolds"},
                                                   SpotInTags().NumOfObjects(0xFFFFFFFF)},
                                         DamageRow{{"XmlSizeOfNothing"}, Regions({SpotAfterXml(0)}).AsTree()},
                                         DamageRow{{"XmlSizeOfOne"}, Regions({SpotAfterXml(1)}).AsTree()},
                                         DamageRow{{"XmlBeyondTheFile"}, Regions({SpotAfterXml(0xFFFFFFFF)}).AsTree()}),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(TreeHead, StrangeRegions,
                         testing::Values(DamageRow{{"TypeOfOne"}, SpotInTags().PayloadType(1)},
                                         DamageRow{{"TypeOfTwo"}, SpotInTags().PayloadType(2)}),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Tree, DamagedRegions,
    testing::Values(DamageRow{{"NoClass"}, WithShape([](CNode& shape) { shape.Drop(Tag::ShapeClass); })},
                    DamageRow{{"NoObject"}, WithShape([](CNode& shape) { shape.Drop(Tag::ShapeObject); })},
                    DamageRow{{"NoProperties"}, Without(Dot("spot", {1, 2}), Tag::ShapeProperties)},
                    DamageRow{{"NoName"},
                              WithObject(Dot("spot", {1, 2}),
                                         [](CNode& object) { object.Put(Volume(Tag::ShapeProperties)); })},
                    DamageRow{{"RectangleWithoutTopLeft"}, Without(Square(), Tag::TopLeft)},
                    DamageRow{{"RectangleWithoutBottomRight"}, Without(Square(), Tag::BottomRight)},
                    DamageRow{{"RectangleOfBothKinds"},
                              WithObject(Square(),
                                         [](CNode& object) {
                                             object.Add(Doubles(Tag::FirstSide, {1, 2}));
                                         })},
                    DamageRow{{"TurnedRectangleWithoutCorner"}, Without(Turned(), Tag::RotationPoint)},
                    DamageRow{{"TurnedRectangleWithoutFirstSide"}, Without(Turned(), Tag::FirstSide)},
                    DamageRow{{"TurnedRectangleWithoutSecondSide"}, Without(Turned(), Tag::SecondSide)},
                    DamageRow{{"CircleWithoutCentre"}, Without(Circle2(), Tag::CircleCentre)},
                    DamageRow{{"CircleWithoutRim"}, Without(Circle2(), Tag::OnRim)},
                    DamageRow{{"CircleWithoutFirstPoint"}, Without(Circle3(), Tag::FirstOnRim)},
                    DamageRow{{"CircleWithoutSecondPoint"}, Without(Circle3(), Tag::SecondOnRim)},
                    DamageRow{{"CircleWithoutThirdPoint"}, Without(Circle3(), Tag::ThirdOnRim)},
                    DamageRow{{"EllipseWithoutCentre"}, Without(Oval(), Tag::EllipseCentre)},
                    DamageRow{{"EllipseWithoutXAxis"}, Without(Oval(), Tag::EllipseXAxis)},
                    DamageRow{{"EllipseWithoutYAxis"}, Without(Oval(), Tag::EllipseYAxis)},
                    DamageRow{{"PolygonWithoutCount"}, Without(Polygon3(), Tag::NumOfPoints)},
                    DamageRow{{"OnePointTooFew"}, Regions({Polygon3(4)}).AsTree()},
                    DamageRow{{"MorePointsThanMemory"}, Regions({Polygon3(0x7FFFFFFF)}).AsTree()},
                    DamageRow{{"FewerPointsThanNone"}, Regions({Polygon3(-1)}).AsTree()},
                    DamageRow{{"DotWithoutPoint"}, Without(Dot("spot", {1, 2}), Tag::SinglePoint)}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(ShortPoints, DamagedRegions,
                         testing::Values(DamageRow{{"Dot"}, Shortened(Dot("spot", {1, 2}), Tag::SinglePoint)},
                                         DamageRow{{"TopLeft"}, Shortened(Square(), Tag::TopLeft)},
                                         DamageRow{{"BottomRight"}, Shortened(Square(), Tag::BottomRight)},
                                         DamageRow{{"RotationPoint"}, Shortened(Turned(), Tag::RotationPoint)},
                                         DamageRow{{"FirstSide"}, Shortened(Turned(), Tag::FirstSide)},
                                         DamageRow{{"SecondSide"}, Shortened(Turned(), Tag::SecondSide)},
                                         DamageRow{{"Centre"}, Shortened(Circle2(), Tag::CircleCentre)},
                                         DamageRow{{"Rim"}, Shortened(Circle2(), Tag::OnRim)},
                                         DamageRow{{"FirstOnRim"}, Shortened(Circle3(), Tag::FirstOnRim)},
                                         DamageRow{{"SecondOnRim"}, Shortened(Circle3(), Tag::SecondOnRim)},
                                         DamageRow{{"ThirdOnRim"}, Shortened(Circle3(), Tag::ThirdOnRim)},
                                         DamageRow{{"EllipseCentre"}, Shortened(Oval(), Tag::EllipseCentre)},
                                         DamageRow{{"EllipseXAxis"}, Shortened(Oval(), Tag::EllipseXAxis)},
                                         DamageRow{{"EllipseYAxis"}, Shortened(Oval(), Tag::EllipseYAxis)},
                                         DamageRow{{"OfAPolygon"}, Shortened(Polygon3(), Tag::Point)}),
                         NameOfRow());

// A failure is not kept: what was read before it does not come back twice.
TEST_F(RegionsOfModel, OfADamagedBlobAreTriedAnewEachTime)
{
    Open(Document().With(Stack(1).LayerBlob(Spot()).LayerBlob(Spot().ByteOrderMark(0))));
    EXPECT_EQ(ResultOfList(), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfList(), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfSet(FirstArea(), L"AnalysisROIInfo", {{L"roiId", L"0"}}), AC_RESULT_FAILURE);
}

TEST_F(RegionsOfModel, BeforeUnreadableXmlAreLost)
{
    Open(Document().With(Stack(1).LayerBlob(Spot()).LayerBlob(Regions().Xml("<open>"))));
    EXPECT_THAT(Ids(), IsEmpty());
}

} // namespace
