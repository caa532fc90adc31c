#include "Tests/SampleDocuments/Bytes.h"

#include <gtest/gtest.h>

using namespace SampleDocuments;
using namespace BytesOfTest;

namespace
{

// Size 24, number 21073, version 1, offset of the first child, number of children, reserved.
constexpr auto EmptyVolume = "1800 5152 01000000 0000000000000000 00000000 00000000";

TEST(TreeOnDisk, BeginsWithTheHeaderOfItsRoot)
{
    EXPECT_EQ(BytesOfTree(Volume(0)), Hex(EmptyVolume));
}

TEST(TreeOnDisk, PointsAtItsFirstChildAndCountsAll)
{
    const ByteString bytes = BytesOfTree(Volume(0, {Int8(1, 1), Int8(2, 2)}));
    EXPECT_EQ(ByteString(bytes.begin(), bytes.begin() + 24),
              Hex("1800 5152 01000000 1800000000000000 02000000 00000000"));
}

TEST(TreeOnDisk, ChainsSiblingsByOffsetsFromTheVolumeHeader)
{
    const ByteString bytes = BytesOfTree(Volume(0, {Int8(1, 7), Int8(2, 8)}));
    EXPECT_EQ(ByteString(bytes.begin() + 24, bytes.end()),
              Hex("01000000 01000000 29000000 01000000 07"    // next at 24 + 17 = 0x29
                  "01000000 02000000 00000000 01000000 08")); // 0 ends the chain
}

TEST(TreeOnDisk, CountsOffsetsInANestedVolumeFromItsOwnHeader)
{
    EXPECT_EQ(BytesOfOnly(Volume(5, {Int8(1, 7), Int8(2, 8)})),
              Hex("00000090 05000000 00000000 3A000000"                   // bits 31 and 28; 24 + 17 + 17 bytes
                  "1800 5152 01000000 1800000000000000 02000000 00000000" //
                  "01000000 01000000 29000000 01000000 07"                //
                  "01000000 02000000 00000000 01000000 08"));
}

TEST(TreeOnDisk, HoldsAnInlineValueInThePlaceOfTheSize)
{
    EXPECT_EQ(BytesOfOnly(Bool(10056, true)), Hex("0C000040 48270000 00000000 01000000"));
    EXPECT_EQ(BytesOfOnly(Int32(9, -2).Inline()), Hex("05000040 09000000 00000000 FEFFFFFF"));
}

TEST(TreeOnDisk, HoldsASecondTagBehindTheSize)
{
    EXPECT_EQ(BytesOfOnly(UInt16(9, 0x1234).SecondTag(3)), Hex("04000008 09000000 00000000 02000000 03000000 3412"));
}

TEST(TreeOnDisk, HoldsTheSecondTagOfAVolumeBeforeItsHeader)
{
    EXPECT_EQ(BytesOfOnly(Volume(2001).SecondTag(1)),
              Hex(std::string("00000098 D1070000 00000000 18000000 01000000") + EmptyVolume));
}

TEST(TreeOnDisk, HoldsTextsInUtf16WithoutTerminator)
{
    EXPECT_EQ(BytesOfOnly(Text(9, "aµ")), Hex("00200020 09000000 00000000 04000000 6100 B500"));
    EXPECT_EQ(Text(9, "\xF0\x9D\x84\x9E").Value(), Hex("34D8 1EDD"));
    EXPECT_EQ(Text(9, "\xFF!").Value(), Hex("FDFF 2100")) << "a byte that is no UTF-8";
    EXPECT_EQ(Text(9, u"\xD834").Value(), Hex("34D8")) << "units are taken as they are";
}

TEST(TreeOnDisk, HoldsABlobBehindItsThreeNumbers)
{
    const ByteString payload = {1, 2, 3};
    EXPECT_EQ(BytesOfOnly(Blob(6, 4, payload)),
              Hex("02000000 E8070000 00000000 0F000000 06000000 03000000 04000000 010203"));
    EXPECT_EQ(Blob(6, 4, payload).BlobSize(99).Value(), Hex("06000000 63000000 04000000 010203"));
}

TEST(TreeOnDisk, RefersToATiffDirectoryByItsNumber)
{
    EXPECT_EQ(BytesOfOnly(TiffIfd(2016, 2)), Hex("0A000018 E0070000 00000000 00000000 02000000"));
}

TEST(TreeOnDisk, HoldsVectorGraphicsAsTheExtendedCode11)
{
    EXPECT_EQ(BytesOfOnly(VectorGraphics(7, {1})), Hex("0B000010 07000000 00000000 01000000 01"));
}

struct CField
{
    const char* Name;
    CNode Node;
    const char* Code;
    const char* Value;
};

class FieldOnDisk : public testing::TestWithParam<CField>
{
};

TEST_P(FieldOnDisk, HoldsItsCodeAndItsLittleEndianValue)
{
    const ByteString bytes = BytesOfOnly(GetParam().Node);
    EXPECT_EQ(ByteString(bytes.begin(), bytes.begin() + 4), Hex(GetParam().Code));
    EXPECT_EQ(ByteString(bytes.begin() + 16, bytes.end()), Hex(GetParam().Value));
    EXPECT_EQ(bytes[12], Hex(GetParam().Value).size()) << "the stored size";
}

INSTANTIATE_TEST_SUITE_P(
    AllMakers, FieldOnDisk,
    testing::Values(CField{"Int8", Int8(1, -2), "01000000", "FE"}, CField{"UInt8", UInt8(1, 254), "02000000", "FE"},
                    CField{"StoredBool", Bool(1, true).Inline(false), "0C000000", "01"},
                    CField{"Int16", Int16(1, -2), "03000000", "FEFF"},
                    CField{"UInt16", UInt16(1, 65534), "04000000", "FEFF"},
                    CField{"Int32", Int32(1, -2), "05000000", "FEFFFFFF"},
                    CField{"UInt32", UInt32(1, 0x12345678), "06000000", "78563412"},
                    CField{"Dword", UInt32(1, 0x12345678, FieldCode::Dword), "0E000000", "78563412"},
                    CField{"Int64", Int64(1, -2), "07000000", "FEFFFFFFFFFFFFFF"},
                    CField{"UInt64", UInt64(1, 1ull << 63), "08000000", "0000000000000080"},
                    CField{"TimeStamp", Int64(1, 3, FieldCode::Int64TimeStamp), "12000000", "0300000000000000"},
                    CField{"Float", Float(1, 1.5f), "09000000", "0000C03F"},
                    CField{"Double", Double(1, 1.5), "0A000000", "000000000000F83F"},
                    CField{"Int32s", Int32s(1, {1, -1}), "03200020", "01000000FFFFFFFF"},
                    CField{"Int64s", Int64s(1, {1, 2}, FieldCode::Int64Arr2NumDen), "1B010020",
                           "01000000000000000200000000000000"},
                    CField{"Floats", Floats(1, {1.5f, 0.f}), "09000020", "0000C03F00000000"},
                    CField{"Doubles", Doubles(1, {1.5}, FieldCode::DoubleArr3), "05010020", "000000000000F83F"},
                    CField{"ByteArray", ByteArray(1, {1, 2, 3}, FieldCode::Rgb24), "08100020", "010203"},
                    CField{"AnyCode", Field(1, 0xFFFFFF, {9}), "FFFFFF00", "09"},
                    CField{"AnyExtendedCode", ExtendedField(1, 12, {9}), "0C000010", "09"}),
    [](const testing::TestParamInfo<CField>& field) { return field.param.Name; });

TEST(DamagedTree, HoldsWhatTheHeaderOfAVolumeIsMadeToSay)
{
    const CNode root = Volume(0, {Int8(1, 1)})
                           .OwnSize(23)
                           .FixedNum(7)
                           .Version(9)
                           .OffsetOfFirstChild(0x1122334455667788)
                           .Count(5)
                           .CountFlags(1u << 28)
                           .Reserved(6);
    const ByteString bytes = BytesOfTree(root);
    EXPECT_EQ(ByteString(bytes.begin(), bytes.begin() + 24),
              Hex("1700 0700 09000000 8877665544332211 05000010 06000000"));
}

TEST(DamagedTree, HoldsWhatTheHeaderOfAFieldIsMadeToSay)
{
    EXPECT_EQ(BytesOfOnly(Int8(1, 7).Next(0x55).DataSize(0x66)), Hex("01000000 01000000 55000000 66000000 07"));
    EXPECT_EQ(BytesOfOnly(Int8(1, 7).ExtraFlags(7u << 24)), Hex("01000007 01000000 00000000 01000000 07"));
    EXPECT_EQ(BytesOfOnly(Int8(1, 7).Flags(0xAABBCCDD)), Hex("DDCCBBAA 01000000 00000000 01000000 07"));
    EXPECT_EQ(BytesOfOnly(Bool(1, true).SecondTag(2)), Hex("0C000048 01000000 00000000 01000000 02000000"))
        << "inline with a second tag, which is against the rules";
}

TEST(DamagedTree, HoldsJunkThatTheOffsetsStepOver)
{
    const ByteString bytes = BytesOfTree(Volume(0, {Int8(1, 7).JunkBefore(2), Int8(2, 8).JunkBefore(1)}));
    EXPECT_EQ(bytes, Hex("1800 5152 01000000 1A00000000000000 02000000 00000000 EEEE" //
                         "01000000 01000000 2C000000 01000000 07 EE"                  //
                         "01000000 02000000 00000000 01000000 08"));
}

TEST(TreeOnDisk, CanLieInAnotherOrderThanItsChain)
{
    const ByteString bytes = BytesOfTree(Volume(0, {Int8(1, 7), Int8(2, 8)}).FileOrder({1, 0}));
    EXPECT_EQ(bytes, Hex("1800 5152 01000000 2900000000000000 02000000 00000000"
                         "01000000 02000000 00000000 01000000 08" //
                         "01000000 01000000 18000000 01000000 07"));
    EXPECT_THROW(BytesOfTree(Volume(0, {Int8(1, 7)}).FileOrder({1})), CSampleError);
}

TEST(TreeOnDisk, TellsWhereItsNodesLie)
{
    const CNode root = Volume(0, {Volume(5, {Int8(1, 7)}).SecondTag(1)});
    ByteString bytes(8);
    Placements places;
    AppendTree(bytes, root, &places);
    EXPECT_EQ(places.at(&root).Value, 8u);
    EXPECT_EQ(places.at(&root.Children()[0]).Field, 32u);
    EXPECT_EQ(places.at(&root.Children()[0]).Value, 52u);
    EXPECT_EQ(places.at(&root.Children()[0].Children()[0]).Field, 76u);
    EXPECT_EQ(places.at(&root.Children()[0].Children()[0]).VolumeHeader, 52u);
    EXPECT_EQ(places.at(&root).End, bytes.size());
}

TEST(TreeInMemory, IsReachedByTags)
{
    CNode root = Volume(0, {Volume(5, {Int8(1, 7), Int8(1, 8)}), Volume(5, {Int8(2, 9)})});
    EXPECT_EQ(root.At({5, 1}).Value(), ByteString{7});
    EXPECT_EQ(root.At({5, Nth(1, 1)}).Value(), ByteString{8});
    EXPECT_EQ(root.At({Nth(5, 1), 2}).Value(), ByteString{9});
    EXPECT_EQ(root.NumOfChildren(5), 2u);
    EXPECT_EQ(root.FindChild(6), nullptr);
    EXPECT_THROW(root.At({5, 3}), CSampleError);
}

TEST(TreeInMemory, IsEditedByTags)
{
    CNode node = Volume(0, {Int8(1, 1), Int8(2, 2), Int8(1, 3)});
    node.Put(Int8(2, 9)).Put(Int8(4, 4)).DropNth(1, 0);
    EXPECT_EQ(node.Child(2).Value(), ByteString{9});
    EXPECT_EQ(node.Child(1).Value(), ByteString{3});
    EXPECT_EQ(node.Children().size(), 3u);
    node.Drop(1);
    EXPECT_EQ(node.Children().size(), 2u);
    EXPECT_THROW(node.Drop(1), CSampleError);
}

TEST(TreeInMemory, IsAValueOfItsOwnWhenCopied)
{
    CNode node = Volume(0, {Int8(1, 1)});
    const CNode copy = node;
    node.Child(1).Value({2});
    EXPECT_EQ(copy.Children()[0].Value(), ByteString{1});
}

} // namespace
