#include "Tests/Support/ChildProcess.h"
#include "Tests/ZelLoader/TagTree/TreeOfTest.h"
#include "ZelLoader/TagTree/SimpleFieldTypes.h"

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

/// Texts each of which begins after its own header and ends with the file, so that all of them overlap.
CNode TextsThatShareBytes(uint32_t numOfTexts)
{
    CNode root = Volume(0);
    for (uint32_t n = 0; n < numOfTexts; ++n)
        root.Add(Field(5, FieldCode::TcharArrUnicode).DataSize((numOfTexts - 1 - n) * 16));
    return root;
}

TEST(HostileTree, WhoseFieldsClaimTheSameBytesHas64MegabytesOfThemAndNoMore)
{
    EXPECT_READING_WORKS(TextsThatShareBytes(2000)); // 2000 * 1999 / 2 * 16 bytes as 16-bit text: 64.0 * 10^6 bytes
    EXPECT_READING_FAILS(TextsThatShareBytes(2050)); // 67.2 * 10^6 bytes, and 64 MB are 67.1 * 10^6
}

struct LimitOfArrays
{
    size_t SizeOfFile;
    uint64_t Limit;
};

class ArraysOfAFile : public testing::TestWithParam<LimitOfArrays>
{
};

TEST_P(ArraysOfAFile, HaveALimitOverAllTrees)
{
    CDocumentFile file = DocumentOf(Volume(0));
    file.Tail.resize(GetParam().SizeOfFile - file.ToBytes().size());
    COpenDocument document(file);
    const auto readBytes = [&](uint64_t size)
    {
        document.File.Seek(0, CommonUtil::BfrSeekDirection::BEGIN);
        document.Reader.ReadDataArray(1, static_cast<uint32_t>(size), FieldCode::UChar);
    };
    constexpr uint64_t Megabyte = 1U << 20;
    for (uint64_t taken = 0; taken < GetParam().Limit; taken += Megabyte)
        readBytes(std::min(Megabyte, GetParam().Limit - taken));
    EXPECT_FAILED_ASSERTION(readBytes(1));
}

INSTANTIATE_TEST_SUITE_P(Of, ArraysOfAFile,
                         testing::Values(LimitOfArrays{1U << 20, 64U << 20}, LimitOfArrays{16U << 20, 64U << 20},
                                         LimitOfArrays{(16U << 20) + 1, (64U << 20) + 4}));

TEST(HostileTree, CountsTextsAsTheyLieInMemory)
{
    CDocumentFile file = DocumentOf(Volume(0));
    file.Tail.resize(1U << 20);
    COpenDocument document(file);
    const auto readText = [&](uint32_t numOfUnits)
    {
        document.File.Seek(0, CommonUtil::BfrSeekDirection::BEGIN);
        document.Reader.ReadDataArray(2, numOfUnits * 2, Zel::NONZELSPEC_SIMPLE_FIELD_TCHAR);
    };
    for (int i = 0; i < 64; ++i)
        readText((1U << 18) - 1); // and the zero: 1 MB
    EXPECT_FAILED_ASSERTION(readText(0));
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
