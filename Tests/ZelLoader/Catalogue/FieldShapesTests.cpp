#include "Tests/ZelLoader/TagTree/TreeOfTest.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <typeinfo>

using namespace TreeOfTest;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace Zel;

namespace
{

/// A wrapper over a tree whose root has the wrapper's tag.
template <typename Wrapper>
class CTreeUnder
{
public:
    explicit CTreeUnder(CNode root)
        : _document(DocumentOf(root)), _root(_document.Reader.ReadVolume(root.Tag(), OffsetOfRoot, SecondTagAbsent)),
          View(_root.get())
    {
    }

    const CZelDataField* Node(size_t n) const { return _root->Children().at(n).get(); }

private:
    COpenDocument _document;
    std::unique_ptr<CZelDataFieldForVolume> _root;

public:
    Wrapper View;
};

using CDispChannel = CTreeUnder<CZelMetaDataForDispChannel>;
using CDispLayer = CTreeUnder<CZelMetaDataForDispLayer>;
using CDimensionChannel = CTreeUnder<CZelMetaDataForDimensionChannel>;
using COpticalPath = CTreeUnder<CZelMetaDataForStackLevelImgOpticalPath>;
using CShapeObject = CTreeUnder<CZelMetaDataForShapeVolumeObject>;
using CImgDocPropSet = CTreeUnder<CZelMetaDataForImgDocPropSet>;

CDispChannel DispChannel(std::vector<CNode> fields)
{
    return CDispChannel(Volume(2013, std::move(fields)));
}
CDimensionChannel DimensionChannel(std::vector<CNode> fields)
{
    return CDimensionChannel(Volume(2008, std::move(fields)));
}
CShapeObject ShapeObject(std::vector<CNode> fields)
{
    return CShapeObject(Volume(0, std::move(fields)));
}

// Wrappers.

TEST(Wrapper, GivesItsNode)
{
    CZelDataFieldForVolume node(2013, SecondTagAbsent);
    EXPECT_EQ(CZelMetaDataForDispChannel(&node).DbgNode(), &node);
}

TEST(Wrapper, OfANodeWithAnotherTagFails)
{
    CZelDataFieldForVolume node(2014, SecondTagAbsent);
    EXPECT_FAILED_ASSERTION(CZelMetaDataForDispChannel{&node});
}

TEST(Wrapper, OfNoNodeFails)
{
    EXPECT_FAILED_ASSERTION(CZelMetaDataForDispChannel{static_cast<CZelDataField*>(nullptr)});
}

TEST(Wrapper, OfANodeThatIsNoVolumeHasNoChildren)
{
    CZelDataFieldForSimpleTypes node(5, 2013, CDataWithType(int32_t{1}), SecondTagAbsent);
    CZelMetaDataForDispChannel channel(&node);
    EXPECT_FAILED_ASSERTION(channel.StackToBeDisplayed());
    EXPECT_FAILED_ASSERTION(channel.ImgPlaneUnit());
    CZelDataFieldForSimpleTypes layerNode(5, 2012, CDataWithType(int32_t{1}), SecondTagAbsent);
    EXPECT_FAILED_ASSERTION(CZelMetaDataForDispLayer(&layerNode).DispChannels());
}

// Numbers.

TEST(ScalarAccessor, GivesTheSameNumberEachTime)
{
    CDispChannel channel = DispChannel({Int32(10005, 7)});
    const int32_t* value = channel.View.StackToBeDisplayed();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, 7);
    EXPECT_EQ(channel.View.StackToBeDisplayed(), value);
}

TEST(ScalarAccessor, IsNullEachTimeWhenAbsent)
{
    CDispChannel channel = DispChannel({});
    EXPECT_EQ(channel.View.StackToBeDisplayed(), nullptr);
    EXPECT_EQ(channel.View.StackToBeDisplayed(), nullptr);
}

TEST(ScalarAccessor, LooksAgainForWhatWasAbsent)
{
    CZelDataFieldForVolume node(2013, SecondTagAbsent);
    CZelMetaDataForDispChannel channel(&node);
    EXPECT_EQ(channel.StackToBeDisplayed(), nullptr);
    node.AddChild(std::make_unique<CZelDataFieldForSimpleTypes>(5, 10005, CDataWithType(int32_t{7}), SecondTagAbsent));
    ASSERT_NE(channel.StackToBeDisplayed(), nullptr);
    EXPECT_EQ(*channel.StackToBeDisplayed(), 7);
}

TEST(ScalarAccessor, TakesARepeatedValue)
{
    CDimensionChannel channel = DimensionChannel({Int32(2023, 3), Int32(5, 1), Int32(2023, 3), Int32(2023, 3)});
    ASSERT_NE(channel.View.ImgDimMeaning(), nullptr);
    EXPECT_EQ(*channel.View.ImgDimMeaning(), 3);
}

TEST(ScalarAccessor, RefusesTwoValues)
{
    EXPECT_FAILED_ASSERTION(DimensionChannel({Int32(2023, 3), Int32(2023, 4)}).View.ImgDimMeaning());
    EXPECT_FAILED_ASSERTION(DimensionChannel({Int32(2023, 3), Int32(2023, 3), Int32(2023, 4)}).View.ImgDimMeaning());
    EXPECT_FAILED_ASSERTION(
        CImgDocPropSet(Volume(2109, {Int64(14, 1), Int64(14, 1 + (int64_t{1} << 40))})).View.docTime());
}

TEST(ScalarAccessor, ComparesRepeatedValuesByteForByte)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(DispChannel({Double(10009, nan), Double(10009, nan)}).View.ImgDspTranspNumber(), nullptr);
    EXPECT_FAILED_ASSERTION(DispChannel({Double(10009, 0.0), Double(10009, -0.0)}).View.ImgDspTranspNumber());
}

TEST(ScalarAccessor, RefusesAnotherType)
{
    EXPECT_FAILED_ASSERTION(DispChannel({Double(10005, 7)}).View.StackToBeDisplayed());
    EXPECT_FAILED_ASSERTION(DispChannel({Int64(10005, 7)}).View.StackToBeDisplayed());
    EXPECT_FAILED_ASSERTION(DispChannel({UInt32(10005, 7, FieldCode::Dword)}).View.StackToBeDisplayed());
    EXPECT_FAILED_ASSERTION(DispChannel({Int32s(10005, {7})}).View.StackToBeDisplayed());
    EXPECT_FAILED_ASSERTION(DispChannel({Int32(10009, 7)}).View.ImgDspTranspNumber());
    EXPECT_FAILED_ASSERTION(DispChannel({Int32(10056, 1)}).View.ImgDspLayerHidden());
}

TEST(ScalarAccessor, OfAChildThatIsNoSimpleFieldRaisesBadCast)
{
    CDispChannel channel = DispChannel({Volume(10005)});
    EXPECT_THROW(channel.View.StackToBeDisplayed(), std::bad_cast);
}

TEST(FlagAccessor, IsTrueForAnythingButZero)
{
    EXPECT_FALSE(*DispChannel({Bool(10056, false)}).View.ImgDspLayerHidden());
    EXPECT_TRUE(*DispChannel({Bool(10056, true)}).View.ImgDspLayerHidden());
    EXPECT_TRUE(*DispChannel({UInt8(10056, 128)}).View.ImgDspLayerHidden());
    EXPECT_FAILED_ASSERTION(DispChannel({UInt8(10056, 1), UInt8(10056, 2)}).View.ImgDspLayerHidden());
}

// Arrays.

TEST(ArrayAccessor, GivesAViewOfTheNodesElements)
{
    CDispChannel channel = DispChannel({Doubles(20006, {1.5, 2.5})});
    CArrayStartAndSize<double>* origin = channel.View.ImgPlaneOriginRWC();
    ASSERT_NE(origin, nullptr);
    EXPECT_EQ(origin->Size, 2u);
    EXPECT_EQ(origin->Arr[1], 2.5);
    EXPECT_EQ(channel.View.ImgPlaneOriginRWC(), origin);
}

TEST(ArrayAccessor, IsNullWhenAbsent)
{
    CDispChannel channel = DispChannel({Int32(5, 1)});
    EXPECT_EQ(channel.View.ImgPlaneOriginRWC(), nullptr);
    EXPECT_EQ(channel.View.ImgPlaneUnit(), nullptr);
}

TEST(ArrayAccessor, TakesAnyElementsOfTheRightSize)
{
    EXPECT_NE(DispChannel({Int64s(20006, {1, 2})}).View.ImgPlaneOriginRWC(), nullptr);
    EXPECT_NE(DispChannel({Floats(20008, {1, 2, 3, 4})}).View.ImgPlaneRectPxc(), nullptr);
}

TEST(ArrayAccessor, SeesTheFirstBytesOfLargerElements)
{
    CDispChannel channel = DispChannel({Int64s(20008, {5, 7})});
    const auto* rect = channel.View.ImgPlaneRectPxc();
    ASSERT_TRUE(rect && rect->Size == 2);
    EXPECT_EQ(rect->Arr[0], 5);
    EXPECT_EQ(rect->Arr[1], 0);
}

TEST(ArrayAccessor, RefusesSmallerElementsThanItsOwn)
{
    EXPECT_FAILED_ASSERTION(DispChannel({Int32s(20006, {1, 2})}).View.ImgPlaneOriginRWC());
    EXPECT_FAILED_ASSERTION(DispChannel({ByteArray(2011, BytesOf("10^-6m^1"))}).View.ImgPlaneUnit());
}

TEST(ArrayAccessor, TakesAnEmptyArrayOfAnyType)
{
    CDispChannel channel = DispChannel({Int32s(20006, {})});
    ASSERT_NE(channel.View.ImgPlaneOriginRWC(), nullptr);
    EXPECT_EQ(channel.View.ImgPlaneOriginRWC()->Size, 0u);
}

TEST(ArrayAccessor, RefusesANumber)
{
    EXPECT_FAILED_ASSERTION(DispChannel({Double(20006, 1)}).View.ImgPlaneOriginRWC());
}

TEST(ArrayAccessor, TakesARepeatedArray)
{
    CDispChannel channel = DispChannel({Text(2011, "m"), Text(2011, "m"), Text(2011, "m")});
    ASSERT_NE(channel.View.ImgPlaneUnit(), nullptr);
    EXPECT_STREQ(channel.View.ImgPlaneUnit()->Arr, L"m");
}

TEST(ArrayAccessor, RefusesTwoTextsOfDifferentLength)
{
    EXPECT_FAILED_ASSERTION(DispChannel({Text(2011, "m"), Text(2011, "mm")}).View.ImgPlaneUnit());
}

TEST(ArrayAccessor, RefusesTwoTextsOfOneLength)
{
    EXPECT_FAILED_ASSERTION(DispChannel({Text(2011, "m"), Text(2011, "s")}).View.ImgPlaneUnit());
    EXPECT_FAILED_ASSERTION(DispChannel({Text(2011, "m"), Text(2011, "m"), Text(2011, "s")}).View.ImgPlaneUnit());
}

TEST(ArrayAccessor, OfAChildThatIsNoSimpleFieldRaisesBadCast)
{
    CDispChannel channel = DispChannel({Volume(2011)});
    EXPECT_THROW(channel.View.ImgPlaneUnit(), std::bad_cast);
}

TEST(TextAccessor, OfAnEmptyTextHoldsTheTerminator)
{
    CDispChannel channel = DispChannel({Text(2011, "")});
    ASSERT_NE(channel.View.ImgPlaneUnit(), nullptr);
    EXPECT_EQ(channel.View.ImgPlaneUnit()->Size, 1u);
    EXPECT_EQ(channel.View.ImgPlaneUnit()->Arr[0], L'\0');
    EXPECT_NO_THROW(channel.View.ImgPlaneUnit()->CheckLen());
}

TEST(TextAccessor, OfNumbersHasNoTerminatorAndIsNoText)
{
    CDispChannel channel = DispChannel({Int32s(2011, {65, 66})});
    ASSERT_NE(channel.View.ImgPlaneUnit(), nullptr);
    EXPECT_FAILED_ASSERTION(channel.View.ImgPlaneUnit()->CheckLen());
}

TEST(TextAccessor, TakesEachOfTheCodesOfTexts)
{
    for (const uint32_t code : {FieldCode::TcharArr, FieldCode::TcharArrUnicode, FieldCode::TcharUnicode2})
        EXPECT_STREQ(DispChannel({Text(2011, "10^-6m^1", code)}).View.ImgPlaneUnit()->Arr, L"10^-6m^1");
}

// Lists of arrays.

TEST(ArrayListAccessor, GivesEveryArrayInFileOrder)
{
    CShapeObject object = ShapeObject({Doubles(20738, {1, 2}), Int32(5, 1),
                                       Doubles(20738, {3}, FieldCode::DoubleArr2Interval), Doubles(20738, {1, 2})});
    const auto* points = object.View.PolygonPts();
    ASSERT_EQ(points->size(), 3u);
    EXPECT_EQ((*points)[0].Arr[1], 2);
    EXPECT_EQ((*points)[1].Size, 1u);
    EXPECT_EQ((*points)[2].Size, 2u);
    EXPECT_EQ(object.View.PolygonPts(), points);
}

TEST(ArrayListAccessor, IsEmptyWhenAbsent)
{
    CShapeObject object = ShapeObject({});
    ASSERT_NE(object.View.PolygonPts(), nullptr);
    EXPECT_THAT(*object.View.PolygonPts(), IsEmpty());
}

TEST(ArrayListAccessor, RefusesAnotherTypeOrSize)
{
    EXPECT_FAILED_ASSERTION(ShapeObject({Doubles(20738, {1, 2}), Double(20738, 1)}).View.PolygonPts());
    EXPECT_FAILED_ASSERTION(ShapeObject({Int32s(20738, {1, 2})}).View.PolygonPts());
}

// Children.

TEST(ChildAccessor, GivesTheSameChildEachTime)
{
    CDimensionChannel channel = DimensionChannel({Volume(2013)});
    CZelMetaDataForImgZIncrement* child = channel.View.ImgZIncrement();
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->DbgNode(), channel.Node(0));
    EXPECT_EQ(channel.View.ImgZIncrement(), child);
}

TEST(ChildAccessor, IsNullWhenAbsent)
{
    CDimensionChannel channel = DimensionChannel({Volume(5)});
    EXPECT_EQ(channel.View.ImgZIncrement(), nullptr);
    EXPECT_EQ(channel.View.ImgZIncrement(), nullptr);
}

TEST(ChildAccessor, RefusesASecondChild)
{
    CDimensionChannel channel = DimensionChannel({Volume(2013), Volume(2013)});
    EXPECT_FAILED_ASSERTION(channel.View.ImgZIncrement());
}

TEST(ChildListAccessor, GivesEveryChildInFileOrder)
{
    CDispLayer layer(Volume(2012, {Volume(2013), Volume(5), Volume(2013)}));
    const auto* channels = layer.View.DispChannels();
    ASSERT_EQ(channels->size(), 2u);
    EXPECT_EQ((*channels)[0]->DbgNode(), layer.Node(0));
    EXPECT_EQ((*channels)[1]->DbgNode(), layer.Node(2));
    EXPECT_EQ(layer.View.DispChannels(), channels);
}

TEST(ChildListAccessor, IsEmptyWhenAbsentAndStaysSo)
{
    CZelDataFieldForVolume node(2012, SecondTagAbsent);
    CZelMetaDataForDispLayer layer(&node);
    ASSERT_NE(layer.DispChannels(), nullptr);
    EXPECT_THAT(*layer.DispChannels(), IsEmpty());
    node.AddChild(std::make_unique<CZelDataFieldForVolume>(2013, SecondTagAbsent));
    EXPECT_THAT(*layer.DispChannels(), IsEmpty());
}

TEST(DeviceListAccessor, GivesEveryChildWhoseTagIsADevice)
{
    COpticalPath path(Volume(2043, {Volume(7), Volume(0), Volume(99), Volume(101), Volume(2043)}));
    std::vector<uint32_t> devices;
    for (const auto& device : *path.View.StackLevelDeviceIDs())
        devices.push_back(device->DbgNode()->Tag());
    EXPECT_THAT(devices, ElementsAre(7, 0, 99));
}

TEST(DeviceListAccessor, RefusesTag100)
{
    EXPECT_FAILED_ASSERTION(COpticalPath(Volume(2043, {Volume(100)})).View.StackLevelDeviceIDs());
    EXPECT_THAT(*COpticalPath(Volume(2043, {Volume(101)})).View.StackLevelDeviceIDs(), IsEmpty());
}

// Second tags.

TEST(SecondTagAccessor, GivesTheNodesSecondTag)
{
    CZelDataFieldForVolume node(2012, 42);
    EXPECT_EQ(CZelMetaDataForDispLayer(&node).StackIdx(), 42u);
}

TEST(SecondTagAccessor, OfANodeWithoutOneFails)
{
    CZelDataFieldForVolume node(2012, SecondTagAbsent);
    EXPECT_FAILED_ASSERTION(CZelMetaDataForDispLayer(&node).StackIdx());
}

// What is known about tags.

TEST(Catalogue, KnowsAChildByItsParent)
{
    const CCatalogueClass& root = CatalogueOf<CZelImgDocMetaData>();
    ASSERT_NE(root.Row(2000), nullptr);
    EXPECT_STREQ(root.Row(2000)->Accessor, "ImgColl");
    const CCatalogueClass& imgColl = root.Row(2000)->ClassOfChild();
    EXPECT_STREQ(imgColl.Row(2004)->Accessor, "ImgCollProps");
    EXPECT_STREQ(imgColl.Row(2011)->Accessor, "DisplayProcessFlow");
    EXPECT_EQ(imgColl.Row(2002), nullptr);
}

TEST(Catalogue, TellsOneTagApartUnderTwoParents)
{
    EXPECT_STREQ(CatalogueOf<CZelMetaDataForDispLayer>().Row(2013)->Accessor, "DispChannels");
    EXPECT_STREQ(CatalogueOf<CZelMetaDataForDimensionChannel>().Row(2013)->Accessor, "ImgZIncrement");
}

TEST(Catalogue, HasNothingBelowALeaf)
{
    EXPECT_EQ(CatalogueOf<CZelMetaDataForDispChannel>().Row(10005)->ClassOfChild, nullptr);
}

TEST(Catalogue, KnowsDevicesByTheirRange)
{
    const CCatalogueClass& path = CatalogueOf<CZelMetaDataForFrameLevelImgOpticalPath>();
    EXPECT_STREQ(path.Row(0)->Accessor, "FrameLevelDeviceIDs");
    EXPECT_STREQ(path.Row(99)->Accessor, "FrameLevelDeviceIDs");
    EXPECT_EQ(path.Row(101), nullptr);
}

TEST(Catalogue, KnowsWhatASecondTagMeans)
{
    EXPECT_STREQ(CatalogueOf<CZelMetaDataForMultiDimImg>().NameOfSecondTag, "StackID");
    EXPECT_EQ(CatalogueOf<CZelMetaDataForImgFrame>().NameOfSecondTag, nullptr);
}

} // namespace
