#include "Tests/Support/ChildProcess.h"
#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

#include <csignal>
#include <filesystem>

using namespace TreeOfTest;
using testing::ElementsAre;

namespace
{

constexpr uint32_t OffsetOfFirstChild = 24; // from the volume's start

/// A root whose only child is its own successor, in a file of `sizeOfFile` bytes.
CDocumentFile FieldThatFollowsItself(uint32_t count, size_t sizeOfFile)
{
    CDocumentFile document = DocumentOf(Volume(0, {Int32(5, 1).Next(OffsetOfFirstChild)}).Count(count));
    document.Tail.resize(sizeOfFile - document.ToBytes().size());
    return document;
}

/// So many volumes in each other, the root included.
CNode NestedVolumes(uint32_t depth)
{
    CNode node = Volume(0);
    for (uint32_t n = 1; n < depth; ++n)
        node = Volume(0, {node});
    return node;
}

TEST(HostileTree, WhoseChainPointsBackIsReadAsItStandsWithinItsCount)
{
    CTree tree(FieldThatFollowsItself(5, 1000));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 5, 5, 5, 5));
}

TEST(HostileTree, HasAsManyFieldsAsTheFileCouldHoldAndNoneMore)
{
    for (const size_t sizeOfFile : {160u, 1000u, 100000u})
    {
        const auto limit = static_cast<uint32_t>(sizeOfFile / 16);
        EXPECT_READING_WORKS(FieldThatFollowsItself(limit, sizeOfFile)) << sizeOfFile;
        EXPECT_READING_FAILS(FieldThatFollowsItself(limit + 1, sizeOfFile)) << sizeOfFile;
    }
}

TEST(HostileTree, SharesTheLimitWithAllTreesOfItsDocument)
{
    COpenDocument document(FieldThatFollowsItself(40, 1000)); // 62 fields
    EXPECT_NE(document.ReadRoot(), nullptr);
    EXPECT_FAILED_ASSERTION(document.ReadRoot());
}

TEST(HostileTree, OfTheHighestCountFailsWhenItsChainHasNoEnd)
{
    EXPECT_READING_FAILS(FieldThatFollowsItself((1u << 28) - 1, 10000));
}

TEST(HostileTree, OfTheHighestCountIsReadWhenItsChainEnds)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 2)}).Count((1u << 28) - 1));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 6));
}

TEST(HostileTree, WhichDoublesAtEachDepthFails)
{
    CNode node = Int32(5, 1);
    for (int depth = 0; depth < 60; ++depth) // 2^60 fields
        node = Volume(0, {node.Next(OffsetOfFirstChild)}).Count(2);
    EXPECT_READING_FAILS(node);
}

TEST(HostileTree, IsAtMost200VolumesDeep)
{
    EXPECT_READING_WORKS(NestedVolumes(200));
    EXPECT_READING_FAILS(NestedVolumes(201));
    EXPECT_READING_FAILS(NestedVolumes(2000));
}

TEST(HostileTree, LeavesTheReaderUsableWhenItIsTooDeep)
{
    CDocumentFile document = DocumentOf(NestedVolumes(201));
    document.Tail.resize(10000);
    COpenDocument open(document);
    EXPECT_FAILED_ASSERTION(open.ReadRoot());
    EXPECT_NE(open.Reader.ReadVolume(0, OffsetOfRoot + OffsetOfFirstChild + 16, 0), nullptr); // 200 deep from here
}

TEST(HostileTree, WhoseVolumeLeadsBackToItsParentFails)
{
    const uint64_t backToParent = uint64_t{0} - OffsetOfFirstChild - 16;
    EXPECT_READING_FAILS(Volume(0, {Volume(5, {Int32(6, 1)}).OffsetOfFirstChild(backToParent)}));
}

TEST(HostileTree, WhoseFieldsClaimTheSameBytesFails)
{
    // Each text begins behind its own header and ends with the file, so that all of them overlap.
    constexpr uint32_t NumOfFields = 1000;
    CNode root = Volume(0);
    for (uint32_t n = 0; n < NumOfFields; ++n)
        root.Add(Field(5, FieldCode::TcharArrUnicode).DataSize((NumOfFields - 1 - n) * 16));
    EXPECT_READING_FAILS(root);
}

TEST(HostileTree, IsReadWhenItsValuesFillTheFile)
{
    CNode root = Volume(0);
    for (int n = 0; n < 1000; ++n)
        root.Add(Text(5, u"some text")).Add(Volume(6));
    EXPECT_READING_WORKS(root);
}

TEST(HostileTree, FailsWhenTheFileShrinksBeforeItIsRead)
{
    CNode root = Volume(0);
    for (int n = 0; n < 3000; ++n)
        root.Add(Int32(5, n));
    COpenDocument document(DocumentOf(root));
    std::filesystem::resize_file(document.Name, 1000);
    EXPECT_FAILED_ASSERTION(document.ReadRoot());
}

/// The tree of a document in which one number was overwritten: read, or refused as the format says.
int ReadDamagedTree(ByteString bytes, size_t at, uint32_t number)
{
    Patch(bytes, at, number);
    COpenDocument document(bytes);
    const std::string failure = TestSupport::AssertionOf([&] { document.ReadRoot(); });
    return failure.empty() || failure.starts_with("Assertion failed: file ") ? 0 : 1;
}

class DamagedTree : public testing::TestWithParam<uint32_t>
{
};

TEST_P(DamagedTree, IsReadOrRefused)
{
    const CNode volume = Volume(2000, {Int32(5, 1), Text(6, u"text"), Doubles(7, {1, 2}, FieldCode::DoubleArr2)});
    const CNode root = Volume(0, {volume, TiffIfd(2016, 0), Blob(4, 3, BytesOf("payload"))});
    const ByteString bytes = DocumentOf(root).ToBytes();
    for (size_t at = OffsetOfRoot; at + sizeof(uint32_t) <= bytes.size(); ++at)
    {
        const auto end = TestSupport::RunInChild([&] { return ReadDamagedTree(bytes, at, GetParam()); });
        EXPECT_THAT(end, testing::AnyOf(TestSupport::ExitedWith(0), TestSupport::KilledBy(SIGABRT))) << "byte " << at;
    }
}

INSTANTIATE_TEST_SUITE_P(By, DamagedTree, testing::Values(0u, 255u, 0xFFFFFFFFu));

} // namespace
