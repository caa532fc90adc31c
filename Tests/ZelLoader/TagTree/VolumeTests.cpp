#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

#include <csignal>

using namespace TreeOfTest;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr auto ChainEndsEarly = "Warning: ZEL file may be corrupt, offsetOfNextChild=0 which indicates that this was "
                                "the last child of the volume.";
constexpr auto ChainGoesOn = "Warning: ZEL file may be corrupt, offsetOfNextChild!=0 which indicates that this was not "
                             "the last child of the volume.";

// The header of a volume.

TEST(VolumeHeader, IsReadFieldByField)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1)}).Version(77).OffsetOfFirstChild(24)));
    Zel::CVolumeHeader header;
    ASSERT_TRUE(document.Reader.ReadVolumeHeader(OffsetOfRoot, header));
    EXPECT_EQ(header.MyOwnSize, 24);
    EXPECT_EQ(header.FixedNum, 21073);
    EXPECT_EQ(header.Version, 77u);
    EXPECT_EQ(header.RelativeOffsetOfFirstChild, 24u);
    EXPECT_EQ(header.NumOfChildren, 1u);
}

TEST(VolumeHeader, OfAnotherSizeIsRejected)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1)}).OwnSize(25)));
    Zel::CVolumeHeader header;
    bool accepted = true;
    const std::string log =
        TestSupport::LogOf([&] { accepted = document.Reader.ReadVolumeHeader(OffsetOfRoot, header); });
    EXPECT_FALSE(accepted);
    EXPECT_EQ(header.NumOfChildren, 0u);
    EXPECT_THAT(log, HasSubstr("Error: Volume header size = 25 instead of 24!\n"));
}

TEST(VolumeHeader, OfAnotherNumberIsRejected)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1)}).FixedNum(42)));
    Zel::CVolumeHeader header;
    bool accepted = true;
    const std::string log =
        TestSupport::LogOf([&] { accepted = document.Reader.ReadVolumeHeader(OffsetOfRoot, header); });
    EXPECT_FALSE(accepted);
    EXPECT_EQ(header.NumOfChildren, 0u);
    EXPECT_THAT(log, HasSubstr("Error: fixedNum = 42 instead of 21073!\n"));
}

TEST(VolumeHeader, TellsRejectedNumbersWithoutSign)
{
    EXPECT_THAT(CTree(Volume(0).OwnSize(65535)).Log, HasSubstr("size = 65535 instead"));
    EXPECT_THAT(CTree(Volume(0).FixedNum(65535)).Log, HasSubstr("fixedNum = 65535 instead"));
}

TEST(VolumeHeader, ThatIsRejectedGivesAnEmptyVolumeAndKeepsItsSiblings)
{
    const CNode damaged = Volume(7, {Int32(5, 1)}).FixedNum(1);
    CTree tree(Volume(0, {damaged, Int32(8, 2)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(7, 8));
    EXPECT_THAT(tree.VolumeChild().Children(), IsEmpty());
    EXPECT_THAT(tree.Log, Not(HasSubstr("Warning")));
}

TEST(VolumeHeader, CountIsInTheLow28Bits)
{
    CTree tree(Volume(0, {Int32(5, 1)}).CountFlags(7u << 29));
    EXPECT_EQ(tree.NumOfChildren(), 1u);
    EXPECT_THAT(tree.Log, IsEmpty());
}

TEST(VolumeHeader, MayHaveAnyVersion)
{
    CTree tree(Volume(0, {Int32(5, 1)}).Version(0xFFFFFFFF));
    EXPECT_EQ(tree.NumOfChildren(), 1u);
}

TEST(VolumeHeader, LastFourBytesAreNotRead)
{
    ByteString bytes = DocumentOf(Volume(0)).ToBytes();
    bytes.resize(bytes.size() - 4);
    COpenDocument document(bytes);
    EXPECT_NE(document.ReadRoot(), nullptr);
}

TEST(VolumeHeaderDeathTest, WithANameEndsTheProcess)
{
    COpenDocument document(DocumentOf(Volume(0).CountFlags(1u << 28)));
    EXPECT_EXIT(
        {
            TestSupport::PrintLogOntoStandardError();
            document.ReadRoot();
        },
        testing::KilledBySignal(SIGABRT), "TODO\n.*abort\\(\\) called\\.");
}

// The chain of children.

TEST(Volume, HasTheTagsThatItsReaderGivesIt)
{
    COpenDocument document(DocumentOf(Volume(0)));
    const auto volume = document.Reader.ReadVolume(11, OffsetOfRoot, 22);
    EXPECT_EQ(volume->Tag(), 11u);
    EXPECT_EQ(volume->SecondTag(), 22u);
    EXPECT_EQ(volume->Type(), Zel::ZelDataFieldForVolume);
}

TEST(Volume, HoldsItsChildrenInTheOrderOfTheChain)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(4, 2), Int32(6, 3)}).FileOrder({2, 0, 1}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 4, 6));
    EXPECT_THAT(tree.Log, IsEmpty());
}

TEST(Volume, FindsChildrenThatDoNotFollowOneAnother)
{
    CTree tree(Volume(0, {Int32(5, 1).JunkBefore(13), Int32(4, 2).JunkBefore(100)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 4));
}

TEST(Volume, WithoutChildrenIsEmpty)
{
    CTree tree(Volume(0).Count(0).OffsetOfFirstChild(0));
    EXPECT_EQ(tree.NumOfChildren(), 0u);
    EXPECT_THAT(tree.Log, IsEmpty());
}

TEST(Volume, OfNoChildrenWithAFirstChildIsEmptyAndWarnedAbout)
{
    CTree tree(Volume(0, {Int32(5, 1)}).Count(0));
    EXPECT_EQ(tree.NumOfChildren(), 0u);
    EXPECT_THAT(tree.Log, HasSubstr(ChainGoesOn));
}

TEST(Volume, WhoseChainGoesOnIsReadUpToItsCount)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 2), Int32(7, 3)}).Count(2));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 6));
    EXPECT_THAT(MessagesOf(tree.Log),
                ElementsAre(ChainGoesOn, "However, numOfZelDataFieldsRead=2, volHdr.NumOfChildren=2",
                            "The offset of the volume that shows this issue is 8", _));
}

TEST(Volume, WhoseLastChildHasASuccessorIsWarnedAbout)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 2).Next(24)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 6));
    EXPECT_THAT(tree.Log, HasSubstr(ChainGoesOn));
}

TEST(Volume, WhoseChainEndsEarlyKeepsWhatWasRead)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 2).Next(0), Int32(7, 3)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 6));
    EXPECT_THAT(MessagesOf(tree.Log),
                ElementsAre(ChainEndsEarly, "However, numOfZelDataFieldsRead=2, volHdr.NumOfChildren=3",
                            "The offset of the volume that shows this issue is 8", _));
}

TEST(Volume, TellsWhichOneIsCorrupt)
{
    const CDocumentFile document = DocumentOf(Volume(0, {Volume(5, {Int32(6, 1)}).Count(9)}));
    CTree tree(document);
    const uint64_t offset = document.PlacementOf(document.Root.Children().front()).Value;
    EXPECT_THAT(tree.Log, HasSubstr("The offset of the volume that shows this issue is " + std::to_string(offset)));
}

TEST(Volume, ThatIsCorruptIsReadOnBehind)
{
    CTree tree(Volume(0, {Volume(5, {Int32(6, 1)}).Count(9), Int32(7, 2)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 7));
    EXPECT_EQ(tree.VolumeChild().Children().size(), 1u);
}

TEST(Volume, NestedMayHaveASecondTag)
{
    CTree tree(Volume(0, {Volume(5).SecondTag(33), Volume(6)}));
    EXPECT_TRUE(tree.VolumeChild(0).IsSecondTagPresent());
    EXPECT_EQ(tree.VolumeChild(0).SecondTag(), 33u);
    EXPECT_FALSE(tree.VolumeChild(1).IsSecondTagPresent());
}

TEST(Volume, NestedIsCodeZeroOneOrTwo)
{
    CTree tree(Volume(
        0, {Volume(5, {Int32(8, 1)}).Code(0), Volume(6, {Int32(8, 1)}).Code(1), Volume(7, {Int32(8, 1)}).Code(2)}));
    for (size_t n = 0; n < 3; ++n)
        EXPECT_THAT(TagsOf(tree.VolumeChild(n)), ElementsAre(8)) << n;
}

TEST(Volume, NestedDoesNotNeedItsSize)
{
    CTree tree(Volume(0, {Volume(5, {Int32(8, 1)}).DataSize(0xFFFFFFFF)}));
    EXPECT_THAT(TagsOf(tree.VolumeChild()), ElementsAre(8));
}

TEST(Volume, NestedMayOrMayNotBeMarkedAsNew)
{
    CTree tree(Volume(0, {Volume(5, {Int32(8, 1)}).Flags(FieldFlag::Extended),
                          Volume(6, {Int32(8, 1)}).Flags(FieldFlag::Extended | FieldFlag::NewVolume)}));
    EXPECT_THAT(TagsOf(tree.VolumeChild(0)), ElementsAre(8));
    EXPECT_THAT(TagsOf(tree.VolumeChild(1)), ElementsAre(8));
}

TEST(Volume, BeyondTheEndFails)
{
    COpenDocument document(DocumentOf(Volume(0)));
    EXPECT_FAILED_ASSERTION(document.Reader.ReadVolume(0, document.File.FileSize(), 0));
}

TEST(Volume, IsNotReadWhileAFailureIsPending)
{
    COpenDocument document(DocumentOf(Volume(0)));
    errno = ENOEXEC;
    EXPECT_FAILED_ASSERTION(document.ReadRoot());
    errno = 0;
}

TEST(Volume, CountsItsChildrenByTag)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 1), Int32(5, 2)}));
    EXPECT_EQ(tree.Root->NumOfChildren(5), 2u);
    EXPECT_EQ(tree.Root->NumOfChildren(6), 1u);
    EXPECT_EQ(tree.Root->NumOfChildren(7), 0u);
}

TEST(Volume, OfManyChildrenCountsThemAllTheTime)
{
    Zel::CZelDataFieldForVolume volume(0, 0);
    for (uint32_t n = 0; n < 1000; ++n)
    {
        ASSERT_EQ(volume.NumOfChildren(5), (n + 1) / 2);
        ASSERT_EQ(volume.NumOfChildren(6), n / 2);
        ASSERT_EQ(volume.NumOfChildren(7), 0u);
        volume.AddChild(std::make_unique<Zel::CZelDataFieldForVolume>(5 + n % 2, 0));
    }
}

TEST(Volume, PrintsItselfAndAllBelow)
{
    CTree tree(Volume(0, {Volume(5, {Int32(6, 1)}).SecondTag(33), Int32(7, 1)}));
    const std::string log = TestSupport::LogOf([&] { tree.Root->DbgPrintAllPointers(); });
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 4);
    EXPECT_THAT(log, HasSubstr("tag 5, second tag 33\n"));
    EXPECT_THAT(log, HasSubstr("tag 6, second tag 4294967295\n"));
}

} // namespace
