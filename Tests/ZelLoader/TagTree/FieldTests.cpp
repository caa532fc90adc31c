#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

#include <csignal>

using namespace TreeOfTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr auto PastTheEnd = "isUsingExtendedFieldTypes=false: INVALID dataSizeInBytes - will go past EOF!!! Skipping "
                            "EVEN FOR STRICT MODE...TODO: Get clarification";
constexpr auto AllowanceForBlobs = "However making an allowance for 2024 tag as in the images tested with, making the "
                                   "allowance allows ROIs to be read without any side-effects.";
constexpr auto CouldNotRead = "could not read value of the ZEL Data Field!";
constexpr auto VectorGraphicsAreSkipped =
    "Not creating any extended ZEL Data Field for Vector Graphics Data (field type 11) as we understand that \"ZEL "
    "Layer Vector graphics'feature is incomplete. Please skip these layers for now.\"";

constexpr uint32_t BehindTheFile = 0x7FFFFFFF;
constexpr uint32_t UnknownCode = 15;

CNode FieldOfUnknownCode(uint32_t tag)
{
    return Field(tag, UnknownCode, BytesOf("abcd"));
}

// What a header tells.

TEST(Field, HasItsTagAndNoSecondTagUnlessItIsStored)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(6, 2).SecondTag(0)}));
    EXPECT_EQ(tree.Root->Children()[0]->Tag(), 5u);
    EXPECT_FALSE(tree.Root->Children()[0]->IsSecondTagPresent());
    EXPECT_EQ(tree.Root->Children()[0]->SecondTag(), 4294967295u);
    EXPECT_EQ(tree.Root->Children()[1]->Tag(), 6u);
    EXPECT_TRUE(tree.Root->Children()[1]->IsSecondTagPresent());
    EXPECT_EQ(tree.Root->Children()[1]->SecondTag(), 0u);
}

TEST(Field, WhoseSecondTagIsAllOnesHasNone)
{
    CTree tree(Volume(0, {Int32(5, 1).SecondTag(0xFFFFFFFF)}));
    EXPECT_FALSE(tree.Root->Children()[0]->IsSecondTagPresent());
}

TEST(Field, HasItsValueRightBehindTheHeader)
{
    CTree tree(Volume(0, {Int32(5, 11), Int32(6, 22).SecondTag(7), Int32(8, 33).Inline()}));
    EXPECT_EQ(*static_cast<int32_t*>(tree.ValueOfChild(0).GetData()), 11); // at byte 16
    EXPECT_EQ(*static_cast<int32_t*>(tree.ValueOfChild(1).GetData()), 22); // at byte 20
    EXPECT_EQ(*static_cast<int32_t*>(tree.ValueOfChild(2).GetData()), 33); // at byte 12
}

TEST(Field, IgnoresBits24To26)
{
    CTree tree(Volume(0, {Int32(5, 11).ExtraFlags(7u << 24), Volume(6, {Int32(7, 1)}).ExtraFlags(7u << 24)}));
    EXPECT_EQ(*static_cast<int32_t*>(tree.ValueOfChild(0).GetData()), 11);
    EXPECT_THAT(TagsOf(tree.VolumeChild(1)), ElementsAre(7));
}

TEST(Field, TakesTheArrayFlagAsAHintOnly)
{
    CTree tree(Volume(0, {Int32(5, 11).MarkedAsArray(), Int32s(6, {1, 2}).MarkedAsArray(false)}));
    EXPECT_EQ(tree.ValueOfChild(0).GetType(), CommonUtil::DWT_TYPE::DWT_INT);
    EXPECT_EQ(tree.ValueOfChild(1).GetType(), CommonUtil::DWT_TYPE::DWT_BASEARRAY);
}

TEST(Field, TakesNoArrayFlagWhenItIsInlineOrExtended)
{
    CTree tree(Volume(0, {Int32(5, 11).Inline().ExtraFlags(FieldFlag::Array),
                          Volume(6, {Int32(7, 1)}).ExtraFlags(FieldFlag::Array)}));
    EXPECT_EQ(*static_cast<int32_t*>(tree.ValueOfChild(0).GetData()), 11);
    EXPECT_THAT(TagsOf(tree.VolumeChild(1)), ElementsAre(7));
}

TEST(Field, LeavesTheOffsetOfItsSuccessorToTheCaller)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1).Next(1234)})));
    Zel::CZelDataFieldForVolume volume(0, 0);
    uint64_t offset = OffsetOfRoot + 24;
    EXPECT_TRUE(document.Reader.ReadZelDataField(offset, &volume));
    EXPECT_EQ(offset, 1234u);
    EXPECT_THAT(TagsOf(volume), ElementsAre(5));
}

TEST(Field, NeedsAVolume)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1)})));
    uint64_t offset = OffsetOfRoot + 24;
    EXPECT_FAILED_ASSERTION(document.Reader.ReadZelDataField(offset, nullptr));
}

TEST(Field, IsNotReadWhileAFailureIsPending)
{
    COpenDocument document(DocumentOf(Volume(0, {Int32(5, 1)})));
    Zel::CZelDataFieldForVolume volume(0, 0);
    uint64_t offset = OffsetOfRoot + 24;
    errno = EINVAL;
    EXPECT_FAILED_ASSERTION(document.Reader.ReadZelDataField(offset, &volume));
    errno = 0;
}

struct CForbiddenFlags
{
    const char* Name;
    uint32_t Flags;
};

class FieldWithForbiddenFlags : public testing::TestWithParam<CForbiddenFlags>
{
};

TEST_P(FieldWithForbiddenFlags, Fails)
{
    EXPECT_READING_FAILS(Volume(0, {Int32(5, 1).ExtraFlags(GetParam().Flags)}));
}

INSTANTIATE_TEST_SUITE_P(
    AllCombinations, FieldWithForbiddenFlags,
    testing::Values(CForbiddenFlags{"InlineAndExtended", FieldFlag::Inline | FieldFlag::Extended},
                    CForbiddenFlags{"InlineWithSecondTag", FieldFlag::Inline | FieldFlag::ExtraTag},
                    CForbiddenFlags{"NewVolumeNotExtended", FieldFlag::NewVolume},
                    CForbiddenFlags{"NewVolumeNotExtendedButInline", FieldFlag::NewVolume | FieldFlag::Inline}),
    [](const auto& test) { return test.param.Name; });

class FieldOutsideTheFile : public testing::TestWithParam<uint64_t>
{
};

TEST_P(FieldOutsideTheFile, Fails)
{
    EXPECT_READING_FAILS(Volume(0, {Int32(5, 1)}).OffsetOfFirstChild(GetParam()));
}

constexpr uint64_t SizeOfThatFile = 8 + 24 + 16 + 4;
INSTANTIATE_TEST_SUITE_P(AllOffsets, FieldOutsideTheFile,
                         testing::Values(SizeOfThatFile - OffsetOfRoot, SizeOfThatFile - OffsetOfRoot - 1,
                                         uint64_t{1} << 40, uint64_t{0} - 1, uint64_t{0} - OffsetOfRoot));

// Extended fields.

TEST(ExtendedField, OfCode10RefersToADirectory)
{
    CTree tree(Volume(0, {TiffIfd(2016, 3)}));
    EXPECT_EQ(tree.Child<Zel::CZelDataFieldForTiffIfd>().SecondTag(), 3u);
    EXPECT_EQ(tree.Root->Children()[0]->Type(), Zel::ZelDataFieldForTiffIfd);
}

TEST(ExtendedField, OfCode11IsPassedOverAndCounts)
{
    CTree tree(Volume(0, {VectorGraphics(2017, BytesOf("abc")), Int32(5, 1)}), Mode::Strict);
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5));
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre(VectorGraphicsAreSkipped));
}

TEST(ExtendedField, WhoseTagIsThatOfBlobsIsNoBlob)
{
    CTree tree(Volume(0, {Volume(2024, {Int32(5, 1)})}));
    EXPECT_THAT(TagsOf(tree.VolumeChild()), ElementsAre(5));
}

TEST(ExtendedField, IsNotHeldAgainstTheEndOfTheFile)
{
    CTree tree(Volume(0, {TiffIfd(2016, 0).DataSize(BehindTheFile)}));
    EXPECT_EQ(tree.NumOfChildren(), 1u);
    EXPECT_THAT(tree.Log, IsEmpty());
}

class ExtendedFieldDeathTest : public testing::TestWithParam<uint32_t>
{
};

TEST_P(ExtendedFieldDeathTest, OfAnotherCodeEndsTheProcess)
{
    COpenDocument document(DocumentOf(Volume(0, {ExtendedField(5, GetParam())})));
    EXPECT_EXIT(
        {
            TestSupport::PrintLogOntoStandardError();
            document.ReadRoot();
        },
        testing::KilledBySignal(SIGABRT),
        "Unexpected extended fieldType " + std::to_string(GetParam()) + "\n.*abort\\(\\) called\\.");
}

INSTANTIATE_TEST_SUITE_P(Codes, ExtendedFieldDeathTest, testing::Values(3, 9, 12, 0xFFFFFF));

// Values that go past the end of the file.

class FieldPastTheEnd : public testing::TestWithParam<Mode>
{
};

TEST_P(FieldPastTheEnd, IsSkippedAndCountsAndItsSiblingsAreRead)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32s(6, {1, 2}).DataSize(BehindTheFile), Int32(7, 3)}), GetParam());
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 7));
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre("\\6: " + std::string(PastTheEnd)));
    EXPECT_THAT(tree.Reader.DbgTagPath(), IsEmpty());
}

TEST_P(FieldPastTheEnd, IsReadAllTheSameWhenItIsABlob)
{
    const ByteString payload = BytesOf("payload");
    CTree tree(Volume(0, {Blob(6, 1, payload).DataSize(BehindTheFile), Int32(7, 3)}), GetParam());
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(2024, 7));
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre("\\2024: " + std::string(PastTheEnd), AllowanceForBlobs));
}

INSTANTIATE_TEST_SUITE_P(InEachMode, FieldPastTheEnd, testing::Values(Mode::Lax, Mode::Strict));

TEST(FieldAtTheEnd, MayTakeTheLastByteAndNoneBehindIt)
{
    EXPECT_EQ(CTree(Volume(0, {Int32s(5, {1, 2})})).NumOfChildren(), 1u);
    EXPECT_EQ(CTree(Volume(0, {Int32s(5, {1, 2}).DataSize(12)})).NumOfChildren(), 0u);
}

TEST(FieldAtTheEnd, ThatIsPassedIsNamedByItsPath)
{
    CTree tree(Volume(0, {Volume(2000, {Volume(2001, {Int32(2002, 1).DataSize(BehindTheFile)})})}));
    EXPECT_THAT(tree.Log, HasSubstr(": \\2000\\2001\\2002: isUsing"));
}

// Values that cannot be read.

TEST(UnreadableField, IsLeftOut)
{
    CTree tree(Volume(0, {Int32(5, 1), FieldOfUnknownCode(6), Int32(7, 3)}));
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 7));
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre(CouldNotRead));
    EXPECT_THAT(tree.Reader.DbgTagPath(), IsEmpty());
    EXPECT_THAT(tree.Reader.DbgTagPathWithIndex(), IsEmpty());
}

TEST(UnreadableField, GivesUpItsVolumeInStrictMode)
{
    CTree tree(Volume(0, {Int32(5, 1), Volume(6, {Int32(7, 2), FieldOfUnknownCode(8)}), Int32(9, 3)}), Mode::Strict);
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 9)); // the volume is gone, its parent goes on
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre(CouldNotRead));
}

TEST(UnreadableField, UnderTheRootGivesUpTheTreeInStrictMode)
{
    CTree tree(Volume(0, {Int32(5, 1), FieldOfUnknownCode(6)}), Mode::Strict);
    EXPECT_EQ(tree.Root, nullptr);
    EXPECT_EQ(errno, 0);
}

// The path to the field that is being read.

TEST(TagPath, IsEmptyBehindATree)
{
    CTree tree(Volume(0, {Volume(5, {Int32(6, 1)}), Volume(7)}));
    EXPECT_THAT(tree.Reader.DbgTagPath(), IsEmpty());
    EXPECT_THAT(tree.Reader.DbgTagPathWithIndex(), IsEmpty());
    EXPECT_EQ(tree.Reader.DbgTagPathToString(), "");
}

TEST(TagPath, TellsWhereATreeWasGivenUp)
{
    CTree tree(Volume(0, {Int32(5, 1), Int32(5, 2), FieldOfUnknownCode(5)}), Mode::Strict);
    EXPECT_THAT(tree.Reader.DbgTagPath(), ElementsAre(5));
    EXPECT_THAT(tree.Reader.DbgTagPathWithIndex(), ElementsAre(5, 2)); // two siblings before it
    EXPECT_EQ(tree.Reader.DbgTagPathToString(), "\\5");
}

TEST(TagPath, KeepsAbandonedFieldsOnTheWay)
{
    CTree tree(Volume(0, {Volume(5), Volume(5, {FieldOfUnknownCode(6)}), Int32(7, 1)}), Mode::Strict);
    EXPECT_THAT(TagsOf(*tree.Root), ElementsAre(5, 7));
    EXPECT_THAT(tree.Reader.DbgTagPathWithIndex(), ElementsAre(5, 1)); // one of the two entries was taken off
}

TEST(TagPath, CountsSiblingsInBigVolumesToo)
{
    CNode root = Volume(0);
    for (int32_t n = 0; n < 300; ++n)
        root.Add(Int32(5, n)).Add(Int32(6, n));
    root.Add(FieldOfUnknownCode(6));
    CTree tree(root, Mode::Strict);
    EXPECT_THAT(tree.Reader.DbgTagPathWithIndex(), ElementsAre(6, 300));
}

TEST(TagPath, BeginsAnewWithTheNextTree)
{
    CTree tree(Volume(0, {FieldOfUnknownCode(6)}), Mode::Strict);
    tree.ReadRoot();
    EXPECT_THAT(tree.Reader.DbgTagPath(), ElementsAre(6));
}

} // namespace
