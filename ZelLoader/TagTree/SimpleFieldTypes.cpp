#include "ZelLoader/TagTree/SimpleFieldTypes.h"

#include "CommonUtil/Assertion.h"

#include <algorithm>
#include <iterator>

namespace Zel
{

namespace
{

constexpr CSimpleFieldType ScalarOf(int32_t code, uint32_t eleSize)
{
    return {code, eleSize, code, CountRule::Scalar};
}
constexpr CSimpleFieldType Ints(int32_t code, CountRule rule, uint32_t count = 1)
{
    return {code, 4, SIMPLE_FIELD_INT, rule, count, false};
}
constexpr CSimpleFieldType Doubles(int32_t code, CountRule rule, uint32_t count)
{
    return {code, 8, SIMPLE_FIELD_DOUBLE, rule, count, false};
}
constexpr CSimpleFieldType Text(int32_t code, bool mayBeInline)
{
    return {code, 2, NONZELSPEC_SIMPLE_FIELD_TCHAR, CountRule::Any, 1, mayBeInline};
}
constexpr CSimpleFieldType Colour(int32_t code)
{
    return {code, 1, SIMPLE_FIELD_UCHAR, CountRule::Colour, 3};
}

// In ascending order of the codes.
constexpr CSimpleFieldType SimpleFieldTypes[] = {
    ScalarOf(NONZELSPEC_SIMPLE_FIELD_TCHAR, 2),
    ScalarOf(SIMPLE_FIELD_CHAR, 1),
    ScalarOf(SIMPLE_FIELD_UCHAR, 1),
    ScalarOf(SIMPLE_FIELD_SHORT, 2),
    ScalarOf(SIMPLE_FIELD_USHORT, 2),
    ScalarOf(SIMPLE_FIELD_INT, 4),
    ScalarOf(SIMPLE_FIELD_UINT, 4),
    ScalarOf(SIMPLE_FIELD_INT64, 8),
    ScalarOf(SIMPLE_FIELD_UINT64, 8),
    ScalarOf(SIMPLE_FIELD_FLOAT, 4),
    ScalarOf(SIMPLE_FIELD_DOUBLE, 8),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_2, CountRule::Exactly, 2),
    ScalarOf(SIMPLE_FIELD_BOOL, 1),
    Text(SIMPLE_FIELD_TCHAR_ARR, true),
    ScalarOf(SIMPLE_FIELD_DWORD, 4),
    ScalarOf(SIMPLE_FIELD_INT64_TIME_STAMP, 8),
    ScalarOf(SIMPLE_FIELD_DOUBLE_DATETIME, 8),
    Ints(SIMPLE_FIELD_INT_ARR_2, CountRule::Exactly, 2),
    Ints(SIMPLE_FIELD_INT_ARR_3, CountRule::Exactly, 3),
    Ints(SIMPLE_FIELD_INT_ARR_4_VECT, CountRule::MultipleOf, 4),
    Ints(SIMPLE_FIELD_INT_ARR_4_RECT, CountRule::Exactly, 4),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_2_VECT, CountRule::MultipleOf, 2),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_3, CountRule::Exactly, 3),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_4_VECT, CountRule::MultipleOf, 4),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_4_RECT, CountRule::Exactly, 4),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_4_2BY2MATRIX, CountRule::Exactly, 4),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_9, CountRule::Exactly, 9),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_16, CountRule::Exactly, 16),
    Ints(SIMPLE_FIELD_INT_ARR_2_INTERVAL, CountRule::Exactly, 2),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_2_INTERVAL, CountRule::ExpectExactly, 2),
    Colour(SIMPLE_FIELD_BYTE_ARR_3_RGB),
    Colour(SIMPLE_FIELD_BYTE_ARR_3_BGR),
    ScalarOf(SIMPLE_FIELD_INT_FIELD_TYPE, 4),
    ScalarOf(SIMPLE_FIELD_INT_MEMORY_MODEL, 4),
    ScalarOf(SIMPLE_FIELD_INT_COLOR_SPACE, 4),
    Ints(SIMPLE_FIELD_INT_ARR_2_NUMBERS, CountRule::Exactly, 2),
    Ints(SIMPLE_FIELD_INT_ARR_3_NUMBERS, CountRule::Exactly, 3),
    Ints(SIMPLE_FIELD_INT_ARR_4_NUMBERS, CountRule::Exactly, 4),
    Ints(SIMPLE_FIELD_INT_ARR_5_NUMBERS, CountRule::Exactly, 5),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_2_NUMBERS, CountRule::Exactly, 2),
    Doubles(SIMPLE_FIELD_DOUBLE_ARR_3_NUMBERS, CountRule::Exactly, 3),
    {SIMPLE_FIELD_INT64_ARR_2_NUMDEN, 8, SIMPLE_FIELD_INT64, CountRule::Exactly, 2, false},
    Colour(SIMPLE_FIELD_24_BIT_RGB_VALUE),
    Text(SIMPLE_FIELD_TCHAR_ARR_UNICODE, false),
    // Its element type is no scalar code, so that every field of it fails: texts of 8 bits a character are not
    // supported.
    {SIMPLE_FIELD_ANSI_CHAR_ARR, 1, SIMPLE_FIELD_ANSI_CHAR_ARR, CountRule::Any, 1, false},
    Text(SIMPLE_FIELD_TCHAR_UNICODE2, false),
    Ints(SIMPLE_FIELD_INT_ARR_VARI, CountRule::Any),
    Ints(SIMPLE_FIELD_INT_ARR_VARI2, CountRule::Any),
    Ints(SIMPLE_FIELD_INT_ARR_VOLUME, CountRule::Any),
    Ints(SIMPLE_FIELD_INT_VARI_PIXELINFO, CountRule::Any),
};

constexpr bool HasLowerCode(const CSimpleFieldType& left, const CSimpleFieldType& right)
{
    return left.Code < right.Code;
}
static_assert(std::is_sorted(std::begin(SimpleFieldTypes), std::end(SimpleFieldTypes), HasLowerCode));

} // namespace

const CSimpleFieldType* FindSimpleFieldType(int32_t code)
{
    const CSimpleFieldType* type =
        std::lower_bound(std::begin(SimpleFieldTypes), std::end(SimpleFieldTypes), code,
                         [](const CSimpleFieldType& known, int32_t wanted) { return known.Code < wanted; });
    return type != std::end(SimpleFieldTypes) && type->Code == code ? type : nullptr;
}

void AssertNumOfElements(const CSimpleFieldType& type, bool isDataInline, uint32_t numOfElesStored)
{
    ZEL_ASSERT(type.MayBeInline || !isDataInline);
    if (type.Rule == CountRule::Exactly)
        ZEL_ASSERT(numOfElesStored == type.Count);
    if (type.Rule == CountRule::MultipleOf || type.Rule == CountRule::Colour)
        ZEL_ASSERT(numOfElesStored % type.Count == 0);
}

} // namespace Zel
