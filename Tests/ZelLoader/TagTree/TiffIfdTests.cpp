#include "CommonImageAccess/TiffIfd.h"

#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

using namespace TreeOfTest;
using CIA::CTiffIfd;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// The bytes of a directory with so many entries, whose tags count from 0.
ByteString Directory(uint16_t numOfEntries, uint32_t offsetOfNext)
{
    ByteString bytes;
    Append(bytes, numOfEntries);
    for (uint16_t tag = 0; tag < numOfEntries; ++tag)
    {
        Append(bytes, tag);
        Append(bytes, uint16_t{3});
        Append(bytes, uint32_t{1});
        Append(bytes, uint32_t{100u + tag});
    }
    Append(bytes, offsetOfNext);
    return bytes;
}

ByteString FileOf(const std::vector<ByteString>& pieces)
{
    ByteString bytes(OffsetOfRoot);
    for (const ByteString& piece : pieces)
        Append(bytes, std::span<const uint8_t>(piece));
    return bytes;
}

constexpr uint32_t SizeOfEmptyDirectory = 6;

/// Empty directories back to back, each followed by the next; `last` is where the last one leads.
ByteString ChainOf(uint32_t numOfDirectories, uint32_t last)
{
    ByteString bytes(OffsetOfRoot);
    for (uint32_t n = 1; n <= numOfDirectories; ++n)
    {
        const auto next = static_cast<uint32_t>(OffsetOfRoot + n * SizeOfEmptyDirectory);
        Append(bytes, std::span<const uint8_t>(Directory(0, n < numOfDirectories ? next : last)));
    }
    return bytes;
}

// A directory.

TEST(TiffIfd, HoldsItsEntries)
{
    COpenDocument document(FileOf({Directory(2, 77)}));
    const CTiffIfd ifd(OffsetOfRoot, document.File);
    ASSERT_EQ(ifd.IfdEntries.size(), 2u);
    EXPECT_EQ(ifd.IfdEntries[1].Tag, 1);
    EXPECT_EQ(ifd.IfdEntries[1].FieldType, CIA::TIFF_FIELD_SHORT);
    EXPECT_EQ(ifd.IfdEntries[1].NumOfValues, 1u);
    EXPECT_EQ(ifd.IfdEntries[1].ValueOrValOffset, 101u);
    EXPECT_EQ(ifd.OffsetOfNextIfdOr0IfNone, 77u);
}

TEST(TiffIfd, MayBeEmpty)
{
    COpenDocument document(FileOf({Directory(0, 77)}));
    const CTiffIfd ifd(OffsetOfRoot, document.File);
    EXPECT_THAT(ifd.IfdEntries, IsEmpty());
    EXPECT_EQ(ifd.OffsetOfNextIfdOr0IfNone, 77u);
}

TEST(TiffIfd, LogsItsSteps)
{
    COpenDocument document(FileOf({Directory(2, 0)}));
    const std::string log = TestSupport::LogOf([&] { const CTiffIfd ifd(OffsetOfRoot, document.File); });
    EXPECT_THAT(MessagesOf(log), ElementsAre("Going to offset 8", "numOfIfdEntries=2", "Done reading all entries"));
}

TEST(TiffIfd, BeyondTheFileFails)
{
    COpenDocument document(FileOf({Directory(0, 0)}));
    EXPECT_FAILED_ASSERTION(CTiffIfd(1000, document.File));
    EXPECT_FAILED_ASSERTION(CTiffIfd(0xFFFFFFFF, document.File));
}

TEST(TiffIfd, CutOffAnywhereFails)
{
    const ByteString whole = FileOf({Directory(2, 0)});
    for (size_t size = OffsetOfRoot + 1; size < whole.size(); ++size)
    {
        COpenDocument document(ByteString(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
        EXPECT_FAILED_ASSERTION(CTiffIfd(OffsetOfRoot, document.File)) << size;
    }
}

TEST(TiffIfd, PrintsItsEntries)
{
    COpenDocument document(FileOf({Directory(2, 77)}));
    EXPECT_EQ(CTiffIfd(OffsetOfRoot, document.File).ToString(),
              "Number of entries: 2\n"
              "Printing only the first 10 entries:\n"
              "Entry idx 0: Tag: 0, FieldType: 3 (TIFF_FIELD_SHORT), NumOfValues: 1, ValueOrValOffset: 100\n"
              "Entry idx 1: Tag: 1, FieldType: 3 (TIFF_FIELD_SHORT), NumOfValues: 1, ValueOrValOffset: 101\n"
              "OffsetOfNextIfdOr0IfNone = 77\n");
}

TEST(TiffIfd, PrintsTenEntriesAtMost)
{
    COpenDocument document(FileOf({Directory(15, 0)}));
    const std::string text = CTiffIfd(OffsetOfRoot, document.File).ToString();
    EXPECT_THAT(text, HasSubstr("Number of entries: 15\n"));
    EXPECT_THAT(text, HasSubstr("Entry idx 9"));
    EXPECT_THAT(text, Not(HasSubstr("Entry idx 10")));
}

struct CTypeName
{
    uint16_t Type;
    const char* Name;
};

class TiffFieldType : public testing::TestWithParam<CTypeName>
{
};

TEST_P(TiffFieldType, HasAName)
{
    ByteString bytes(OffsetOfRoot);
    Append(bytes, uint16_t{256});
    Append(bytes, GetParam().Type);
    Append(bytes, uint64_t{0});
    COpenDocument document(bytes);
    document.File.Seek(OffsetOfRoot, CommonUtil::BfrSeekDirection::BEGIN);
    EXPECT_THAT(CIA::CIfdEntry(document.File).ToString(),
                HasSubstr("FieldType: " + std::to_string(GetParam().Type) + " (" + GetParam().Name + ")"));
}

INSTANTIATE_TEST_SUITE_P(All, TiffFieldType,
                         testing::Values(CTypeName{1, "TIFF_FIELD_BYTE"}, CTypeName{2, "TIFF_FIELD_ASCII"},
                                         CTypeName{3, "TIFF_FIELD_SHORT"}, CTypeName{4, "TIFF_FIELD_LONG"},
                                         CTypeName{5, "TIFF_FIELD_RATIONAL"}, CTypeName{6, "TIFF_FIELD_SBYTE"},
                                         CTypeName{7, "TIFF_FIELD_UNDEFINED"}, CTypeName{8, "TIFF_FIELD_SSHORT"},
                                         CTypeName{9, "TIFF_FIELD_SLONG"}, CTypeName{10, "TIFF_FIELD_SRATIONAL"},
                                         CTypeName{11, "TIFF_FIELD_FLOAT"}, CTypeName{12, "TIFF_FIELD_DOUBLE"},
                                         CTypeName{0, "unknown TIFF field type 0"},
                                         CTypeName{13, "unknown TIFF field type 13"},
                                         CTypeName{65535, "unknown TIFF field type 65535"}));

TEST(TiffIfd, LeadsToTheNextOne)
{
    COpenDocument document(ChainOf(2, 0));
    CTiffIfd first(OffsetOfRoot, document.File);
    CTiffIfd* second = first.NextIfd(document.File);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first.NextIfd(document.File), second);
    EXPECT_EQ(second->NextIfd(document.File), nullptr);
}

TEST(TiffIfd, EndsALongChainWithoutRunningOutOfStack)
{
    COpenDocument document(ChainOf(1000000, 0));
    auto first = std::make_unique<CTiffIfd>(OffsetOfRoot, document.File);
    CTiffIfd* last = first.get();
    while (CTiffIfd* next = last->NextIfd(document.File))
        last = next;
    EXPECT_EQ(last->OffsetOfNextIfdOr0IfNone, 0u);
    first.reset();
}

// Where directories lie.

TEST(IfdOffset, OfNumberZeroIsThatOfTheFirstAndReadsNothing)
{
    COpenDocument document(ByteString(OffsetOfRoot + 1)); // no room for a directory
    EXPECT_EQ(Zel::CIfdOffsets().IfdOffset(OffsetOfRoot, document.File, 0), OffsetOfRoot);
}

TEST(IfdOffset, PassesOverTheEntriesOfThoseBefore)
{
    COpenDocument document(FileOf({Directory(3, 50), Directory(1, 68), Directory(0, 0)}));
    Zel::CIfdOffsets offsets;
    EXPECT_EQ(offsets.IfdOffset(8, document.File, 1), 50u);
    EXPECT_EQ(offsets.IfdOffset(8, document.File, 2), 68u);
    EXPECT_EQ(offsets.IfdOffset(8, document.File, 0), 8u);
}

TEST(IfdOffset, OfANumberBehindTheChainFails)
{
    COpenDocument document(ChainOf(3, 0));
    Zel::CIfdOffsets offsets;
    EXPECT_FAILED_ASSERTION(offsets.IfdOffset(8, document.File, 3));
    EXPECT_FAILED_ASSERTION(offsets.IfdOffset(8, document.File, 4294967295u));
    EXPECT_EQ(offsets.IfdOffset(8, document.File, 2), 8 + 2 * SizeOfEmptyDirectory);
}

TEST(IfdOffset, OutsideTheFileFails)
{
    COpenDocument document(ChainOf(2, 1000));
    Zel::CIfdOffsets offsets;
    EXPECT_FAILED_ASSERTION(offsets.IfdOffset(8, document.File, 2));
    EXPECT_FAILED_ASSERTION(offsets.IfdOffset(1000, document.File, 0));
}

TEST(IfdOffset, BehindEntriesThatAreNotInTheFileFails)
{
    for (const uint16_t numOfEntries : std::initializer_list<uint16_t>{1, 7, 65535})
    {
        ByteString bytes(90);
        Append(bytes, numOfEntries);
        Append(bytes, static_cast<uint32_t>(OffsetOfRoot)); // would do for the next offset
        COpenDocument document(bytes);
        EXPECT_FAILED_ASSERTION(Zel::CIfdOffsets().IfdOffset(90, document.File, 1)) << numOfEntries;
    }
}

TEST(IfdOffset, InAChainThatLeadsBackFails)
{
    for (const uint32_t back : {0u, 1u, 2u})
    {
        COpenDocument document(ChainOf(3, static_cast<uint32_t>(OffsetOfRoot) + back * SizeOfEmptyDirectory));
        EXPECT_FAILED_ASSERTION(Zel::CIfdOffsets().IfdOffset(8, document.File, 3)) << back;
        EXPECT_FAILED_ASSERTION(Zel::CIfdOffsets().IfdOffset(8, document.File, 4294967295u)) << back;
    }
}

TEST(IfdOffset, IsFoundForTenThousandDirectories)
{
    COpenDocument document(ChainOf(10000, 0));
    Zel::CIfdOffsets offsets;
    for (uint32_t n = 0; n < 10000; ++n)
        ASSERT_EQ(offsets.IfdOffset(8, document.File, n), 8 + n * SizeOfEmptyDirectory);
}

TEST(IfdOffset, ThatWasFoundNeedsNoFileAnyMore)
{
    COpenDocument document(ChainOf(100, 0));
    Zel::CIfdOffsets offsets;
    offsets.IfdOffset(8, document.File, 99);
    document.File.CloseFile();
    for (uint32_t n = 0; n < 100; ++n)
        ASSERT_EQ(offsets.IfdOffset(8, document.File, n), 8 + n * SizeOfEmptyDirectory);
}

// Fields that refer to directories.

class FieldForTiffIfd : public testing::Test
{
protected:
    static CDocumentFile DocumentWithDirectories(CNode root)
    {
        CDocumentFile document = DocumentOf(std::move(root));
        for (const uint32_t width : {10, 20, 30})
            document.Directories.emplace_back(width, 5);
        return document;
    }
    /// The width of the picture, as the directory tells it.
    static uint32_t WidthIn(const CTiffIfd& ifd)
    {
        for (const CIA::CIfdEntry& entry : ifd.IfdEntries)
            if (entry.Tag == 256)
                return entry.ValueOrValOffset;
        return 0;
    }
};

TEST_F(FieldForTiffIfd, ReadsTheDirectoryWithItsNumber)
{
    CTree tree(DocumentWithDirectories(Volume(0, {TiffIfd(2016, 0), TiffIfd(2016, 1), TiffIfd(2016, 2)})));
    EXPECT_EQ(WidthIn(tree.Child<Zel::CZelDataFieldForTiffIfd>(2).TiffIfd(tree.File)), 30u);
    EXPECT_EQ(WidthIn(tree.Child<Zel::CZelDataFieldForTiffIfd>(0).TiffIfd(tree.File)), 10u);
    EXPECT_EQ(WidthIn(tree.Child<Zel::CZelDataFieldForTiffIfd>(1).TiffIfd(tree.File)), 20u);
}

TEST_F(FieldForTiffIfd, ReadsItOnce)
{
    CTree tree(DocumentWithDirectories(Volume(0, {TiffIfd(2016, 1)})));
    auto& field = tree.Child<Zel::CZelDataFieldForTiffIfd>();
    const CTiffIfd* first = &field.TiffIfd(tree.File);
    EXPECT_EQ(&field.TiffIfd(tree.File), first);
}

TEST_F(FieldForTiffIfd, HasADirectoryOfItsOwn)
{
    CTree tree(DocumentWithDirectories(Volume(0, {TiffIfd(2016, 1), TiffIfd(2016, 1)})));
    EXPECT_NE(&tree.Child<Zel::CZelDataFieldForTiffIfd>(0).TiffIfd(tree.File),
              &tree.Child<Zel::CZelDataFieldForTiffIfd>(1).TiffIfd(tree.File));
}

TEST_F(FieldForTiffIfd, WhoseNumberIsBehindTheChainFailsEveryTime)
{
    CTree tree(DocumentWithDirectories(Volume(0, {TiffIfd(2016, 3)})));
    for (int time = 0; time < 2; ++time)
        EXPECT_FAILED_ASSERTION(tree.Child<Zel::CZelDataFieldForTiffIfd>().TiffIfd(tree.File));
}

TEST_F(FieldForTiffIfd, WithoutANumberFails)
{
    CTree tree(DocumentWithDirectories(Volume(0, {TiffIfd(2016, 0).NoSecondTag()})));
    EXPECT_FAILED_ASSERTION(tree.Child<Zel::CZelDataFieldForTiffIfd>().TiffIfd(tree.File));
}

TEST_F(FieldForTiffIfd, WhoseFirstDirectoryIsNotInTheFileFails)
{
    CDocumentFile document = DocumentWithDirectories(Volume(0, {TiffIfd(2016, 0)}));
    document.OffsetOfFirstIfd = 0x7FFFFFFF;
    CTree tree(document);
    EXPECT_FAILED_ASSERTION(tree.Child<Zel::CZelDataFieldForTiffIfd>().TiffIfd(tree.File));
}

} // namespace
