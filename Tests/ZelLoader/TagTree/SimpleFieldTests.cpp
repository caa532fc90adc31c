#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

using namespace TreeOfTest;
using CommonUtil::CBasicArray;
using CommonUtil::CDataWithType;
using CommonUtil::DWT_TYPE;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// A tree of one field, which was read without complaint.
class CTreeOfOneField : public CTree
{
public:
    explicit CTreeOfOneField(CNode field) : CTree(Volume(0, {std::move(field)})) { EXPECT_EQ(NumOfChildren(), 1u); }

    CDataWithType& Value() { return ValueOfChild(0); }
    template <typename T>
    T Number()
    {
        return *static_cast<T*>(Value().GetData());
    }
    const CBasicArray& Array()
    {
        EXPECT_EQ(Value().GetType(), DWT_TYPE::DWT_BASEARRAY);
        return *Value().Array();
    }
    template <typename T>
    std::vector<T> Elements()
    {
        EXPECT_EQ(Array().ElementSize(), sizeof(T));
        const T* first = reinterpret_cast<const T*>(Array().Ptr());
        return std::vector<T>(first, first + Array().NumOfElements());
    }
};

// Numbers.

struct CNumber
{
    const char* Name;
    CNode Field;
    DWT_TYPE::E Type;
    const char* Text; ///< of the value
};

void PrintTo(const CNumber& number, std::ostream* stream)
{
    *stream << number.Name;
}

class Number : public testing::TestWithParam<CNumber>
{
};

TEST_P(Number, IsStoredUnderTheTypeOfItsCode)
{
    CTreeOfOneField tree(GetParam().Field);
    EXPECT_EQ(tree.Value().GetType(), GetParam().Type);
    EXPECT_THAT(tree.Value().ToString(), testing::EndsWith(", value = " + std::string(GetParam().Text)));
}

INSTANTIATE_TEST_SUITE_P(Stored, Number,
                         testing::Values(CNumber{"Char", Int8(5, -1, 1), DWT_TYPE::DWT_CHAR, "-1"},
                                         CNumber{"UChar", UInt8(5, 255, 2), DWT_TYPE::DWT_CHAR, "-1"},
                                         CNumber{"Short", Int16(5, -2, 3), DWT_TYPE::DWT_SHORT, "-2"},
                                         CNumber{"UShort", UInt16(5, 65534, 4), DWT_TYPE::DWT_SHORT, "-2"},
                                         CNumber{"Int", Int32(5, -3, 5), DWT_TYPE::DWT_INT, "-3"},
                                         CNumber{"UInt", UInt32(5, 4294967293, 6), DWT_TYPE::DWT_INT, "-3"},
                                         CNumber{"Int64", Int64(5, -4000000000, 7), DWT_TYPE::DWT_INT64, "-4000000000"},
                                         CNumber{"UInt64", UInt64(5, ~uint64_t{0}, 8), DWT_TYPE::DWT_INT64, "-1"},
                                         CNumber{"Float", Float(5, 1.5f, 9), DWT_TYPE::DWT_FLOAT, "1.5"},
                                         CNumber{"Double", Double(5, 2.25, 10), DWT_TYPE::DWT_DOUBLE, "2.25"},
                                         CNumber{"Bool", Int8(5, 1, 12), DWT_TYPE::DWT_CHAR, "1"},
                                         CNumber{"Dword", UInt32(5, 4294967293, 14), DWT_TYPE::DWT_UINT, "4294967293"},
                                         CNumber{"Int64TimeStamp", Int64(5, 1700000000, 18), DWT_TYPE::DWT_INT64,
                                                 "1700000000"},
                                         CNumber{"DoubleDateTime", Double(5, 0.5, 19), DWT_TYPE::DWT_DOUBLE, "0.5"},
                                         CNumber{"IntFieldType", Int32(5, 7, 271), DWT_TYPE::DWT_INT, "7"},
                                         CNumber{"IntMemoryModel", Int32(5, 8, 272), DWT_TYPE::DWT_INT, "8"},
                                         CNumber{"IntColorSpace", Int32(5, 9, 273), DWT_TYPE::DWT_INT, "9"}),
                         [](const auto& test) { return test.param.Name; });

INSTANTIATE_TEST_SUITE_P(Inline, Number,
                         testing::Values(CNumber{"Char", Int8(5, -1, 1).Inline(), DWT_TYPE::DWT_CHAR, "-1"},
                                         CNumber{"Bool", Bool(5, true), DWT_TYPE::DWT_CHAR, "1"},
                                         CNumber{"UShort", UInt16(5, 7, 4).Inline(), DWT_TYPE::DWT_SHORT, "7"},
                                         CNumber{"Int", Int32(5, -3, 5).Inline(), DWT_TYPE::DWT_INT, "-3"},
                                         CNumber{"Float", Float(5, 1.5f, 9).Inline(), DWT_TYPE::DWT_FLOAT, "1.5"},
                                         CNumber{"Dword", UInt32(5, 4294967293, 14).Inline(), DWT_TYPE::DWT_UINT,
                                                 "4294967293"}),
                         [](const auto& test) { return test.param.Name; });

TEST(SimpleField, KeepsItsCodeTagAndSecondTag)
{
    CTreeOfOneField tree(Int32(5, 11, FieldCode::IntColorSpace).SecondTag(6));
    const auto& field = tree.Child<Zel::CZelDataFieldForSimpleTypes>();
    EXPECT_EQ(field.OrigFieldType(), 273);
    EXPECT_EQ(field.Tag(), 5u);
    EXPECT_EQ(field.SecondTag(), 6u);
    EXPECT_EQ(field.Type(), Zel::ZelDataFieldForSimpleTypes);
}

class NumberOf8Bytes : public testing::TestWithParam<uint32_t>
{
};

TEST_P(NumberOf8Bytes, CannotBeInline)
{
    EXPECT_READING_FAILS(Volume(0, {Int64(5, 1, GetParam()).Inline(), Int64(6, 1)}));
}

INSTANTIATE_TEST_SUITE_P(Codes, NumberOf8Bytes, testing::Values(7, 8, 10, 18, 19));

TEST(SimpleField, CannotBeInlineAndAnArray)
{
    COpenDocument document(DocumentOf(Volume(0)));
    EXPECT_FAILED_ASSERTION(
        document.Reader.FinishReadingZelDataFieldForSimpleTypes(5, FieldCode::Int, 0, 0, true, true));
}

TEST(SimpleField, OfATextElementIsNotRead)
{
    COpenDocument document(DocumentOf(Volume(0)));
    std::unique_ptr<Zel::CZelDataFieldForSimpleTypes> field;
    const std::string log = TestSupport::LogOf(
        [&] { field = document.Reader.FinishReadingZelDataFieldForSimpleTypes(5, -3, 2, 0, false, false); });
    EXPECT_EQ(field, nullptr);
    EXPECT_THAT(MessagesOf(log), ElementsAre("NOT READING ZEL DATA FIELD HAVING SIMPLE TYPE -3"));
}

// Arrays.

TEST(ScalarCode, WithOneElementIsANumberAndElseAnArray)
{
    EXPECT_EQ(CTreeOfOneField(Int32s(5, {1}, FieldCode::Int)).Value().GetType(), DWT_TYPE::DWT_INT);
    EXPECT_THAT(CTreeOfOneField(Int32s(5, {1, 2}, FieldCode::Int)).Elements<int32_t>(), ElementsAre(1, 2));
    EXPECT_THAT(CTreeOfOneField(Floats(5, {1, 2, 3})).Elements<float>(), ElementsAre(1, 2, 3));
}

TEST(ScalarCode, WithoutElementsIsAnArrayWithoutMemory)
{
    CTreeOfOneField tree(Int32s(5, {}, FieldCode::Int));
    EXPECT_EQ(tree.Array().NumOfElements(), 0u);
    EXPECT_EQ(tree.Array().ElementSize(), 4u);
    EXPECT_EQ(tree.Array().Ptr(), nullptr);
}

TEST(Array, KeepsTheTypeOfItsElementsAndTheCodeOfTheField)
{
    CTreeOfOneField tree(Int32s(5, {1, 2, 3, 4}, FieldCode::IntArr4Rect));
    EXPECT_EQ(tree.Array().ElementType(), FieldCode::Int);
    EXPECT_EQ(tree.Child<Zel::CZelDataFieldForSimpleTypes>().OrigFieldType(), 259);
    EXPECT_EQ(CTreeOfOneField(Floats(5, {1, 2})).Array().ElementType(), FieldCode::Float);
}

TEST(Array, OfOneElementIsAnArrayWhenItsCodeIsOneForArrays)
{
    EXPECT_THAT(CTreeOfOneField(Int32s(5, {7})).Elements<int32_t>(), ElementsAre(7));
}

TEST(Array, HoldsItsElements)
{
    EXPECT_THAT(CTreeOfOneField(Doubles(5, {1.5, -2}, FieldCode::DoubleArr2)).Elements<double>(), ElementsAre(1.5, -2));
    EXPECT_THAT(CTreeOfOneField(Int64s(5, {1, -2}, FieldCode::Int64Arr2NumDen)).Elements<int64_t>(),
                ElementsAre(1, -2));
    EXPECT_THAT(CTreeOfOneField(ByteArray(5, {1, 2, 3}, FieldCode::ByteArr3Rgb)).Elements<uint8_t>(),
                ElementsAre(1, 2, 3));
    EXPECT_EQ(CTreeOfOneField(Int32s(5, {1, 2, 3, 4, 5, 6, 7, 8}, FieldCode::IntArr4Vect)).Array().NumOfElements(), 8u);
}

TEST(Array, OfAWrongSizeFails)
{
    EXPECT_READING_FAILS(Volume(0, {Int32s(5, {1, 2}, FieldCode::IntArr4Vect)}));
    EXPECT_READING_FAILS(Volume(0, {Field(5, FieldCode::IntArr4Rect, ByteString(17))})); // 17 / 4 is 4, and 1 remains
    EXPECT_READING_FAILS(Volume(0, {Field(5, FieldCode::Int, ByteString(5))}));
}

TEST(Array, OfAnIntervalIsKeptWithAnyNumberOfElements)
{
    CTree tree(Volume(0, {Volume(2000, {Doubles(5, {1, 2, 3}, FieldCode::DoubleArr2Interval)})}));
    EXPECT_THAT(MessagesOf(tree.Log), ElementsAre("PLEASE CLARIFY: rather than 2 elements as per spec, fieldType 268 "
                                                  "has 3 elements! Tag path: \\2000\\5"));
    auto& field = dynamic_cast<Zel::CZelDataFieldForSimpleTypes&>(*tree.VolumeChild().Children().at(0));
    EXPECT_EQ(field.DataWithType().Array()->NumOfElements(), 3u);
}

TEST(Array, OfAnIntervalWithTwoElementsIsNotWorthALine)
{
    EXPECT_THAT(CTreeOfOneField(Doubles(5, {1, 2}, FieldCode::DoubleArr2Interval)).Log, IsEmpty());
}

TEST(Array, OfAColourIsEmptyWhenInline)
{
    for (const uint32_t code : {FieldCode::ByteArr3Rgb, FieldCode::ByteArr3Bgr, FieldCode::Rgb24})
    {
        CTreeOfOneField tree(ByteArray(5, {1, 2, 3}, code).Inline());
        EXPECT_EQ(tree.Array().NumOfElements(), 0u) << code;
        EXPECT_EQ(tree.Array().Ptr(), nullptr) << code;
    }
}

TEST(Array, OfNarrowCharactersFails)
{
    EXPECT_READING_FAILS(Volume(0, {ByteArray(5, BytesOf("abc"), FieldCode::AnsiCharArr)}));
    EXPECT_READING_FAILS(Volume(0, {ByteArray(5, BytesOf("a"), FieldCode::AnsiCharArr)}));
    EXPECT_READING_FAILS(Volume(0, {ByteArray(5, {}, FieldCode::AnsiCharArr)}));
}

// Texts.

class TextCode : public testing::TestWithParam<uint32_t>
{
};

TEST_P(TextCode, IsWidenedAndTerminated)
{
    CTreeOfOneField tree(Text(5, u"ab\u20AC", GetParam()));
    EXPECT_THAT(tree.Elements<wchar_t>(), ElementsAre(L'a', L'b', L'\u20AC', L'\0'));
    EXPECT_EQ(tree.Array().ElementType(), -3);
    EXPECT_EQ(tree.Array().TotalSize(), 16u);
}

TEST_P(TextCode, WithoutCharactersIsTheTerminator)
{
    EXPECT_THAT(CTreeOfOneField(Text(5, u"", GetParam())).Elements<wchar_t>(), ElementsAre(L'\0'));
}

INSTANTIATE_TEST_SUITE_P(Codes, TextCode,
                         testing::Values(FieldCode::TcharArr, FieldCode::TcharArrUnicode, FieldCode::TcharUnicode2));

TEST(TextField, KeepsSurrogatesAndZerosAsTheyStand)
{
    const std::u16string units{0xD83D, 0xDE00, 0, 0xDC00};
    EXPECT_THAT(CTreeOfOneField(Text(5, units)).Elements<wchar_t>(), ElementsAre(0xD83D, 0xDE00, 0, 0xDC00, 0));
}

TEST(TextField, IsEmptyWhenInline)
{
    EXPECT_THAT(CTreeOfOneField(Text(5, u"ab", FieldCode::TcharArr).Inline()).Elements<wchar_t>(), ElementsAre(L'\0'));
}

TEST(TextField, OfAnOddSizeFails)
{
    EXPECT_READING_FAILS(Volume(0, {Field(5, FieldCode::TcharArrUnicode, BytesOf("abc"))}));
}

TEST(TextField, MayBeLong)
{
    const std::u16string units(100000, u'x');
    EXPECT_EQ(CTreeOfOneField(Text(5, units)).Elements<wchar_t>(), std::vector<wchar_t>(
                                                                       []
                                                                       {
                                                                           std::vector<wchar_t> wide(100000, L'x');
                                                                           wide.push_back(L'\0');
                                                                           return wide;
                                                                       }()));
}

// Arrays, read by themselves.

TEST(ReadDataArray, ReadsAtTheCurrentPosition)
{
    ByteString bytes(OffsetOfRoot);
    for (const int32_t value : {7, 8, 9})
        Append(bytes, value);
    COpenDocument document(bytes);
    document.File.Seek(OffsetOfRoot + 4, CommonUtil::BfrSeekDirection::BEGIN);
    const auto array = document.Reader.ReadDataArray(4, 8, FieldCode::Int);
    ASSERT_EQ(array->NumOfElements(), 2u);
    EXPECT_EQ(reinterpret_cast<const int32_t*>(array->Ptr())[0], 8);
    EXPECT_EQ(reinterpret_cast<const int32_t*>(array->Ptr())[1], 9);
    EXPECT_EQ(document.File.GetCurrentOffset(), OffsetOfRoot + 12);
}

TEST(ReadDataArray, OfMoreThanTheFileHoldsFailsBeforeItTakesMemory)
{
    COpenDocument document(DocumentOf(Volume(0)));
    for (const int32_t type : {int32_t{FieldCode::Int}, -3})
        EXPECT_FAILED_ASSERTION(document.Reader.ReadDataArray(type == -3 ? 2 : 4, 0xFFFFFFFC, type));
}

} // namespace
