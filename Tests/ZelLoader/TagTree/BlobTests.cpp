#include "Tests/ZelLoader/TagTree/TreeOfTest.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

using namespace TreeOfTest;
using testing::ElementsAre;
using testing::IsEmpty;
using Zel::CZelDataFieldForBlob;
using Zel::CZelDataFieldForBlobWithZelTags;

namespace
{

constexpr uint32_t RoiMeasurements = 4;

/// One object of a measurement blob.
struct CMeasObj
{
    CNode Root = Volume(0);
    std::string Xml = "<x/>";
    std::optional<uint32_t> XmlSize = {}; ///< worked out if not set
};

/// The payload of a measurement blob.
struct CMeasurements
{
    std::vector<CMeasObj> Objects;
    uint32_t Version = 3;
    uint32_t Type = 0;
    std::optional<uint32_t> Count = {}; ///< worked out if not set

    ByteString ToBytes() const
    {
        ByteString bytes;
        Append(bytes, Version);
        Append(bytes, Type);
        Append(bytes, Count.value_or(static_cast<uint32_t>(Objects.size())));
        for (const CMeasObj& object : Objects)
        {
            Append(bytes, object.XmlSize.value_or(static_cast<uint32_t>(object.Xml.size() + 2)));
            Append(bytes, uint16_t{0xAAAA});
            Append(bytes, std::string_view(object.Xml));
            Append(bytes, uint32_t{0xBBBBBBBB});
            AppendTree(bytes, object.Root);
        }
        return bytes;
    }
};

/// A tree with a measurement blob, whose objects are still to be fetched.
class CTreeWithMeasurements : public CTree
{
public:
    explicit CTreeWithMeasurements(const CMeasurements& measurements, Mode mode = Mode::Lax)
        : CTree(Volume(0, {Blob(RoiMeasurements, 3, measurements.ToBytes())}), mode)
    {
    }
    explicit CTreeWithMeasurements(const std::vector<CMeasObj>& objects, Mode mode = Mode::Lax)
        : CTreeWithMeasurements(CMeasurements{objects}, mode)
    {
    }

    CZelDataFieldForBlobWithZelTags& Measurements() { return Child<CZelDataFieldForBlobWithZelTags>(); }
    bool Fetch() { return Reader.ReadMeasureBlobWithZelTags(Measurements()); }
    Zel::CZelDataFieldForVolume& RootOfObject(size_t n)
    {
        return dynamic_cast<Zel::CZelDataFieldForVolume&>(*Measurements().MeasObjMetaDatas().at(n)->DbgNode());
    }
};

// Blobs.

TEST(BlobField, TellsWhereItsPayloadLies)
{
    const ByteString payload = BytesOf("payload");
    const CDocumentFile document = DocumentOf(Volume(0, {Blob(6, 9, payload).SecondTag(5)}));
    CTree tree(document);
    auto& blob = tree.Child<CZelDataFieldForBlob>();
    EXPECT_EQ(blob.Tag(), 2024u);
    EXPECT_EQ(blob.SecondTag(), 5u);
    EXPECT_EQ(blob.Type(), Zel::ZelDataFieldForBlob);
    EXPECT_EQ(blob.BlobId(), Zel::ZelBlobIdForMacroSlideImage);
    EXPECT_EQ(blob.BlobVersion(), 9u);
    EXPECT_EQ(blob.DataSizeInBytes(), payload.size());
    EXPECT_EQ(blob.Offset(), document.PlacementOf(document.Root.Children().front()).Value + 12);
    EXPECT_THAT(tree.Log, IsEmpty());
}

TEST(BlobField, IsABlobWhateverItsTypeCode)
{
    for (const uint32_t code : {0u, 5u, 13u, 15u, 0xFFFFFFu})
        EXPECT_NO_THROW(CTree(Volume(0, {Blob(6, 1, {}).Code(code)})).Child<CZelDataFieldForBlob>()) << code;
}

TEST(BlobField, CannotBeInline)
{
    EXPECT_READING_FAILS(Volume(0, {Blob(6, 1, BytesOf("payload")).Inline()}));
}

TEST(BlobField, WhosePayloadIsLargerThanTheFieldIsWarnedAboutAndTaken)
{
    CTree tree(Volume(0, {Blob(6, 1, BytesOf("payload")).DataSize(5), Int32(7, 1)}));
    EXPECT_EQ(tree.Child<CZelDataFieldForBlob>().DataSizeInBytes(), 7u);
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre("WARNING: Unexpected possibly fatal file format error: sizeOfBlob > "
                                                  "dataSizeInBytes..trying with sizeOfBlob..."));
}

TEST(BlobField, MayClaimAPayloadThatIsNotThere)
{
    CTree tree(Volume(0, {Blob(6, 1, {}).BlobSize(0xFFFFFFFF).DataSize(0xFFFFFFFF), Int32(7, 1)}));
    EXPECT_EQ(tree.Child<CZelDataFieldForBlob>().DataSizeInBytes(), 0xFFFFFFFF);
    EXPECT_EQ(tree.NumOfChildren(), 2u);
}

TEST(BlobField, WhoseHeaderIsCutOffFails)
{
    EXPECT_READING_FAILS(Volume(0, {Field(2024, 0, ByteString(11))}));
}

TEST(BlobField, HoldsTagsWhenItIsAMeasurementOfVersion3)
{
    for (uint32_t id = 0; id <= 12; ++id)
    {
        for (const uint32_t version : {2u, 3u, 4u})
        {
            CTree tree(Volume(0, {Blob(id, version, {})}));
            const bool hasTags =
                dynamic_cast<CZelDataFieldForBlobWithZelTags*>(&tree.Child<CZelDataFieldForBlob>()) != nullptr;
            EXPECT_EQ(hasTags, id >= 3 && id <= 5 && version == 3) << "ID " << id << ", version " << version;
        }
    }
}

TEST(BlobField, KnowsTheKindsOfMeasurements)
{
    EXPECT_TRUE(Zel::IsZelBlobIdForAnyMeasurements(Zel::ZelBlobIdForMeasurements));
    EXPECT_TRUE(Zel::IsZelBlobIdForAnyMeasurements(Zel::ZelBlobIdForRoiMeasurements));
    EXPECT_TRUE(Zel::IsZelBlobIdForAnyMeasurements(Zel::ZelBlobIdForChannelMeasurements));
    EXPECT_FALSE(Zel::IsZelBlobIdForAnyMeasurements(Zel::ZelBlobIdForParticle));
    EXPECT_FALSE(Zel::IsZelBlobIdForAnyMeasurements(Zel::ZelBlobIdForMacroSlideImage));
}

TEST(BlobHeader, IsIdThenSizeThenVersion)
{
    ByteString bytes(OffsetOfRoot);
    for (const uint32_t value : {1u, 2u, 3u})
        Append(bytes, value);
    COpenDocument document(bytes);
    document.File.Seek(OffsetOfRoot, CommonUtil::BfrSeekDirection::BEGIN);
    uint32_t size = 0;
    uint32_t id = 0;
    uint32_t version = 0;
    EXPECT_TRUE(document.Reader.ReadBlobHeader(size, id, version));
    EXPECT_EQ(id, 1u);
    EXPECT_EQ(size, 2u);
    EXPECT_EQ(version, 3u);
}

// Measurement blobs.

TEST(MeasurementBlob, IsNotFetchedWithTheTree)
{
    CTreeWithMeasurements tree({CMeasObj{}});
    EXPECT_THAT(tree.Measurements().MeasObjMetaDatas(), IsEmpty());
}

TEST(MeasurementBlob, HoldsATreeForEachObject)
{
    CTreeWithMeasurements tree({CMeasObj{Volume(0, {Int32(5, 1)})}, CMeasObj{Volume(0, {Int32(6, 2), Int32(7, 3)})}});
    ASSERT_TRUE(tree.Fetch());
    ASSERT_EQ(tree.Measurements().MeasObjMetaDatas().size(), 2u);
    EXPECT_THAT(TagsOf(tree.RootOfObject(0)), ElementsAre(5));
    EXPECT_THAT(TagsOf(tree.RootOfObject(1)), ElementsAre(6, 7));
}

TEST(MeasurementBlob, GivesRootsWithTagAndSecondTagZero)
{
    CTreeWithMeasurements tree({CMeasObj{}});
    ASSERT_TRUE(tree.Fetch());
    EXPECT_EQ(tree.RootOfObject(0).Tag(), 0u);
    EXPECT_EQ(tree.RootOfObject(0).SecondTag(), 0u);
    EXPECT_TRUE(tree.RootOfObject(0).IsSecondTagPresent());
}

TEST(MeasurementBlob, GivesShapes)
{
    CTreeWithMeasurements tree({CMeasObj{Volume(0, {Volume(1073741825, {Text(1, "Circle")})})}});
    ASSERT_TRUE(tree.Fetch());
    Zel::CZelMetaDataForShapeVolume* shape = tree.Measurements().MeasObjMetaDatas().front()->ShapeVolume();
    ASSERT_NE(shape, nullptr);
    EXPECT_STREQ(shape->RoiShape()->Arr, L"Circle");
}

TEST(MeasurementBlob, PassesOverTextOfAnyLength)
{
    CTreeWithMeasurements tree({CMeasObj{.Root = Volume(0, {Int32(5, 1)}), .Xml = ""},
                                CMeasObj{.Root = Volume(0, {Int32(6, 1)}), .Xml = std::string(100000, 'x')}});
    const std::string log = TestSupport::LogOf([&] { ASSERT_TRUE(tree.Fetch()); });
    EXPECT_THAT(TagsOf(tree.RootOfObject(0)), ElementsAre(5));
    EXPECT_THAT(TagsOf(tree.RootOfObject(1)), ElementsAre(6));
    constexpr auto Deleting = "Deleting xml as it is of no use for now...TODO: confirm!";
    EXPECT_THAT(MessagesOf(log), ElementsAre(Deleting, Deleting));
}

TEST(MeasurementBlob, GoesOnBehindWhatWasReadOfATree)
{
    // Of an empty tree these are the first 20 bytes of its header.
    const ByteString second = CMeasurements{{CMeasObj{Volume(0, {Int32(6, 1)})}}}.ToBytes();
    CMeasurements measurements{.Objects = {CMeasObj{}}, .Count = 2};
    ByteString payload = measurements.ToBytes();
    payload.erase(payload.end() - 4, payload.end());
    payload.insert(payload.end(), second.begin() + 12, second.end());
    CTree tree(Volume(0, {Blob(RoiMeasurements, 3, payload)}));
    auto& blob = tree.Child<CZelDataFieldForBlobWithZelTags>();
    ASSERT_TRUE(tree.Reader.ReadMeasureBlobWithZelTags(blob));
    ASSERT_EQ(blob.MeasObjMetaDatas().size(), 2u);
    EXPECT_THAT(TagsOf(dynamic_cast<Zel::CZelDataFieldForVolume&>(*blob.MeasObjMetaDatas()[1]->DbgNode())),
                ElementsAre(6));
}

TEST(MeasurementBlob, WithoutObjectsIsEmpty)
{
    CTreeWithMeasurements tree(std::vector<CMeasObj>{});
    EXPECT_TRUE(tree.Fetch());
    EXPECT_THAT(tree.Measurements().MeasObjMetaDatas(), IsEmpty());
}

TEST(MeasurementBlob, OfAnyKnownTypeIsRead)
{
    for (const uint32_t type : {0u, 1u, 2u})
        EXPECT_TRUE(CTreeWithMeasurements(CMeasurements{.Objects = {CMeasObj{}}, .Type = type}).Fetch()) << type;
}

TEST(MeasurementBlob, OfAnotherVersionInsideFails)
{
    for (const uint32_t version : {2u, 4u})
    {
        CTreeWithMeasurements tree(CMeasurements{.Objects = {CMeasObj{}}, .Version = version});
        EXPECT_FAILED_ASSERTION(tree.Fetch()) << version;
    }
}

TEST(MeasurementBlob, OfAnUnknownTypeFails)
{
    CTreeWithMeasurements tree(CMeasurements{.Objects = {CMeasObj{}}, .Type = 3});
    EXPECT_FAILED_ASSERTION(tree.Fetch());
}

TEST(MeasurementBlob, WithABadTreeKeepsTheObjectsBefore)
{
    const CNode badTree = Volume(0, {Field(5, 15, BytesOf("abcd"))});
    const CNode goodTree = Volume(0, {Int32(5, 1)});
    CTreeWithMeasurements tree({CMeasObj{goodTree}, CMeasObj{badTree}, CMeasObj{goodTree}}, Mode::Strict);
    EXPECT_FALSE(tree.Fetch());
    EXPECT_EQ(tree.Measurements().MeasObjMetaDatas().size(), 1u);
}

TEST(MeasurementBlob, ThatCannotBeReadUsesNothingUpHoweverOftenItIsAsked)
{
    const CNode badTree = Volume(0, {Field(5, 15, BytesOf("abcd"))});
    CTreeWithMeasurements tree({CMeasObj{badTree}}, Mode::Strict);
    for (int i = 0; i < 1000; ++i)
        EXPECT_FALSE(tree.Fetch()); // and is no failed assertion for want of budget
}

TEST(MeasurementBlob, OfMoreObjectsThanTheFileHoldsFailsAndKeepsThoseThatAreThere)
{
    const CMeasObj object{Volume(0, {Int32(5, 1)})};
    for (const uint32_t count : {3u, 1000u, 0xFFFFFFFFu})
    {
        CTreeWithMeasurements tree(CMeasurements{.Objects = {object, object}, .Count = count});
        EXPECT_FAILED_ASSERTION(tree.Fetch()) << count;
        EXPECT_EQ(tree.Measurements().MeasObjMetaDatas().size(), 2u) << count;
    }
}

TEST(MeasurementBlob, GoesOnBehindARejectedHeader)
{
    // Of a header of another size the size is all that is read.
    ByteString payload = CMeasurements{.Objects = {CMeasObj{.Xml = ""}}}.ToBytes();
    payload.erase(payload.end() - 24, payload.end());
    Append(payload, uint16_t{23});
    CTree tree(Volume(0, {Blob(RoiMeasurements, 3, payload)}));
    auto& blob = tree.Child<CZelDataFieldForBlobWithZelTags>();
    ASSERT_TRUE(tree.Reader.ReadMeasureBlobWithZelTags(blob));
    EXPECT_EQ(blob.MeasObjMetaDatas().size(), 1u);
}

TEST(MeasurementBlob, WhoseTextIsLongerThanTheFileFails)
{
    for (const uint32_t size : {1000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
    {
        CTreeWithMeasurements tree({CMeasObj{.XmlSize = size}});
        EXPECT_FAILED_ASSERTION(tree.Fetch()) << size;
    }
}

TEST(MeasurementBlob, WhoseTextIsSmallerThanNothingFails)
{
    for (const uint32_t size : {0u, 1u})
    {
        CTreeWithMeasurements tree({CMeasObj{.XmlSize = size}});
        EXPECT_FAILED_ASSERTION(tree.Fetch()) << size;
    }
}

TEST(MeasurementBlob, WhosePayloadIsNotThereFails)
{
    CTree tree(Volume(0, {Blob(RoiMeasurements, 3, {})}));
    EXPECT_FAILED_ASSERTION(tree.Reader.ReadMeasureBlobWithZelTags(tree.Child<CZelDataFieldForBlobWithZelTags>()));
}

TEST(MeasurementBlob, PrintsItsTreesToo)
{
    CTreeWithMeasurements tree({CMeasObj{Volume(0, {Int32(5, 1)})}});
    ASSERT_TRUE(tree.Fetch());
    const std::string log = TestSupport::LogOf([&] { tree.Root->DbgPrintAllPointers(); });
    EXPECT_EQ(MessagesOf(log).size(), 4u); // the document's root, the blob, the object's root and its field
    EXPECT_THAT(log, HasSubstr("tag 2024, second tag"));
    EXPECT_THAT(log, HasSubstr("tag 5, second tag"));
}

} // namespace
