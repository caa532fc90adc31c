#include "SampleDocuments/Document.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

using namespace SampleDocuments;
namespace fs = std::filesystem;

namespace
{

class DocumentOfStacks : public testing::Test
{
protected:
    fs::path Write(Document& document) { return document.WriteTo(_folder.Path() / "slide.zel"); }

    TestSupport::TemporaryFolder _folder;
    const fs::path _store = _folder.Path() / "_slide_" / "stack1" / "frame_t.kor";
};

ByteString Utf16(std::string_view text)
{
    return Text(0, text).Value();
}

TEST_F(DocumentOfStacks, LiesBesideTheFolderOfItsStores)
{
    Document document = Document().With(Stack(1)).With(Stack(3).StoreName("frame_t_0.kor")).With(Stack(4).InDocument());
    Write(document);
    EXPECT_TRUE(fs::exists(_folder.Path() / "slide.zel"));
    EXPECT_TRUE(fs::exists(_store));
    EXPECT_TRUE(fs::exists(_folder.Path() / "_slide_" / "stack3" / "frame_t_0.kor"));
    EXPECT_FALSE(fs::exists(_folder.Path() / "_slide_" / "stack4"));
}

TEST_F(DocumentOfStacks, CanMissAStore)
{
    Document document = Document().With(Stack(1).WithoutStore());
    Write(document);
    EXPECT_FALSE(fs::exists(_store));
    EXPECT_NO_THROW(document.Frame(1).Child(2018));
}

TEST_F(DocumentOfStacks, WritesTheSameStoreStreamedAndFromMemory)
{
    Document document = Document().With(Stack(1).Size(600, 600).Levels(2).Z(2).Contents(TakingTurns(1, 50, 1000)));
    Write(document);
    const ByteString streamed = ReadFile(_store);
    const CTileStore& inMemory = document.Store(1);
    ASSERT_EQ(inMemory.Tiles.size(), 2u * (9u + 4u));
    Write(document);
    EXPECT_EQ(ReadFile(_store), streamed);
}

TEST_F(DocumentOfStacks, WritesAStoreAsItWasDamaged)
{
    Document document = Document().With(Stack(1).Raw(ComponentType::Uint8).Tiles(8, 8).Size(8, 8));
    document.Store(1).Header.NumberOfUsedChunks = 77;
    Write(document);
    EXPECT_EQ(ReadFile(_store)[40], 77);
}

TEST_F(DocumentOfStacks, PutsTheChunkListWhereItIsAskedFor)
{
    Document document = Document().With(Stack(1).ChunkListBeforeBodies());
    Write(document);
    EXPECT_EQ(ReadFile(_store)[32], 64 + 172);
}

TEST_F(DocumentOfStacks, GivesTheStoreTheTileSizeOfTheStack)
{
    Document document = Document().With(Stack(1).Tiles(100, 50));
    EXPECT_EQ(document.Store(1).Additional.TileX, 100u);
    EXPECT_EQ(document.Store(1).Additional.TileY, 50u);
}

TEST_F(DocumentOfStacks, KeepsFramesOfOneThatLiesInItInItsDirectories)
{
    const Stack stack = Stack(1).Size(10, 20).Raw(ComponentType::Uint16).InDocument(20).Z(2);
    Document document = Document().With(stack);
    Write(document);
    EXPECT_EQ(document.File().Directories.size(), 3u) << "the overview picture comes first";

    TIFF* tiff = TIFFOpen(_folder.Name("slide.zel").c_str(), "r");
    ASSERT_TRUE(tiff);
    TIFFSetDirectory(tiff, 2);
    ByteString bytes(10 * 20 * 2);
    TIFFReadRawStrip(tiff, 0, bytes.data(), static_cast<tmsize_t>(bytes.size()));
    TIFFClose(tiff);
    EXPECT_EQ(bytes, stack.TileBytes(0, 0, 0, {.Z = 1}));
}

TEST(TreeOfADocument, TellsAStackByItsIdAndItsCounts)
{
    Document document = Document().With(Stack(7).Z(3).Channels({"DAPI", "FITC"}));
    EXPECT_EQ(document.Volume({2000, 2001}).SecondTag(), 7u);
    EXPECT_EQ(document.Volume({2000, 2001, 2003}).Value(), UInt32s(0, {3, 2}).Value());
    EXPECT_EQ(document.StackVolume(7).NumOfChildren(2007), 2u);
    EXPECT_EQ(document.StackVolume(7).NumOfChildren(2002), 6u);
    EXPECT_EQ(document.ChannelVolume(7, 1).Child(2021).Value(), Utf16("FITC"));
    EXPECT_EQ(document.DimensionVolume(7, 0).At({2008, 2013, 268435458}).Value(), Double(0, 1.5).Value());
}

TEST(TreeOfADocument, TellsOfDummiesAndUnspokenMeanings)
{
    CStackDimension unspoken;
    unspoken.Meaning = DimensionMeaning::Channel;
    unspoken.NumOfPoints = 2;
    unspoken.IsMeaningWritten = false;
    Document document = Document().With(Stack(1).Dummy().Dimension(unspoken));
    EXPECT_TRUE(document.DimensionVolume(1, 0).Children().empty());
    EXPECT_EQ(document.ChannelVolume(1, 0).FindChild(2023), nullptr);
    EXPECT_EQ(document.ChannelVolume(1, 1).Child(2021).Value(), Utf16("Channel 1"));
}

TEST(TreeOfADocument, TellsTheCoordinatesOfFrames)
{
    Document document =
        Document().With(Stack(1).Z(2).T(2).FrameCoordinates(DimensionMeaning::T, {0.5, 2.5}, "10^0s^1"));
    EXPECT_EQ(document.Frame(1, 1).At({2006, 2017, 268435458}).Value(), Double(0, 0.5).Value());
    EXPECT_EQ(document.Frame(1, 2).At({2006, 2017, 268435458}).Value(), Double(0, 2.5).Value());
    EXPECT_EQ(document.Frame(1, 0).At({2006, 2017, 268435456}).Value(), Utf16("10^0s^1"));
}

TEST(TreeOfADocument, TellsTheLimitsOfAllBitsUnlessOthersAreGiven)
{
    Document document = Document()
                            .With(Stack(1).Raw(ComponentType::Uint16))
                            .With(Stack(2).Channels({CChannel("a", 3, 4096), "b"}))
                            .With(Stack(3).WithoutDisplayLimits());
    EXPECT_EQ(document.StackProperties(1).Child(2003).Value(), Doubles(0, {0, 65536}).Value());
    EXPECT_EQ(document.ChannelVolume(2, 0).Child(2003).Value(), Doubles(0, {3, 4096}).Value());
    EXPECT_EQ(document.ChannelVolume(2, 1).Child(2003).Value(), Doubles(0, {0, 256}).Value());
    EXPECT_EQ(document.StackProperties(3).FindChild(2003), nullptr);
}

TEST(TreeOfADocument, ShowsEachStackInALayerOfTheDisplayFlow)
{
    Document document = Document().With(Stack(1)).With(Stack(5).Hidden()).DisplayOrder({5, 1});
    EXPECT_EQ(document.DisplayLayer(0).At({2013, 10005}).Value(), Int32(0, 5).Value());
    EXPECT_EQ(document.DisplayLayer(0).At({2013, 10056}).Value(), ByteString{1});
    EXPECT_EQ(document.DisplayLayer(1).At({2013, 10005}).Value(), Int32(0, 1).Value());
    EXPECT_EQ(document.DisplayLayer(1).Child(2013).FindChild(10056), nullptr);
}

TEST(TreeOfADocument, TellsOfTheDocument)
{
    CDocumentProperties properties;
    properties.Author = "me";
    properties.Note.reset();
    Document document = Document()
                            .VersionNumber({5, 12})
                            .Properties(properties)
                            .Thumbnail({1, 2})
                            .OldThumbnail({3, 4})
                            .PersistentId("id");
    EXPECT_EQ(document.Volume({2000, 2035}).Value(), UInt32s(0, {5, 12}).Value());
    EXPECT_EQ(document.Volume({2000, 2004, 2109, 15}).Value(), Utf16("me"));
    EXPECT_EQ(document.Volume({2000, 2004, 2109}).FindChild(13), nullptr);
    EXPECT_EQ(document.Volume({2000, 2004, 2109, 38, 268435458}).Value(), (ByteString{1, 2}));
    EXPECT_EQ(document.Volume({2, 38, 268435458}).Value(), (ByteString{3, 4}));
    EXPECT_EQ(document.Volume({2, 50}).Value(), Utf16("id"));
}

TEST(TreeOfADocument, CanLackWhatItUsuallyHas)
{
    Document document = Document().With(Stack(1)).WithoutProperties().WithoutDisplayFlow().WithoutFirstDirectory();
    EXPECT_EQ(document.Volume({2000}).FindChild(2004), nullptr);
    EXPECT_EQ(document.Volume({2000}).FindChild(2011), nullptr);
    EXPECT_TRUE(document.File().Directories.empty());
}

TEST(TreeOfADocument, CanHoldTwoStacksOfOneId)
{
    Document document = Document().With(Stack(1).Name("a")).With(Stack(1).Name("b"));
    EXPECT_EQ(document.Volume({2000}).NumOfChildren(2001), 2u);
    EXPECT_EQ(document.Volume({2000, Nth(2001, 1), 2005, 2030}).Value(), Utf16("b"));
}

TEST(HandlesOfADocument, EditWhatIsWritten)
{
    Document document = Document().With(Stack(1));
    const size_t before = document.Bytes();
    document.StackProperties(1).Drop(2030);
    EXPECT_EQ(document.Bytes(), before - 16 - 14) << "the field of a name of 7 characters";
    EXPECT_EQ(document.ToBytes().size(), document.Bytes());
}

TEST(HandlesOfADocument, TellWhereThingsLie)
{
    Document document = Document().With(Stack(1));
    EXPECT_EQ(document.OffsetOf({}), 8u);
    EXPECT_EQ(document.OffsetOf({2000}), 32u);
    EXPECT_EQ(document.OffsetOfVolumeHeader({2000}), 48u);
    EXPECT_EQ(document.OffsetWithin({2000}, {2000, 2035}), 24u);
}

TEST(HandlesOfADocument, ComeAfterTheDescription)
{
    Document document = Document().With(Stack(1));
    document.Root();
    EXPECT_THROW(document.With(Stack(2)), CSampleError);
    EXPECT_THROW(document.StackVolume(2), CSampleError);
    EXPECT_THROW(document.ChannelVolume(1, 0), CSampleError);
}

} // namespace
