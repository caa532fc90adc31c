#pragma once
#include <cstdint>

namespace Zel
{

/// The type codes of simple fields, as they stand in the low 24 bits of a field's first word. The name tells what
/// writers mean by a code; what a reader needs to know about it stands in its CSimpleFieldType.
enum tagSIMPLE_FIELD_TYPES : int32_t
{
    NONZELSPEC_SIMPLE_FIELD_TCHAR = -3, ///< an element of a text; never in a file
    SIMPLE_FIELD_DEFAULT = -1,
    SIMPLE_FIELD_CHAR = 1,
    SIMPLE_FIELD_UCHAR = 2,
    SIMPLE_FIELD_SHORT = 3,
    SIMPLE_FIELD_USHORT = 4,
    SIMPLE_FIELD_INT = 5,
    SIMPLE_FIELD_UINT = 6,
    SIMPLE_FIELD_INT64 = 7,
    SIMPLE_FIELD_UINT64 = 8,
    SIMPLE_FIELD_FLOAT = 9,
    SIMPLE_FIELD_DOUBLE = 10,
    SIMPLE_FIELD_DOUBLE_ARR_2 = 11,
    SIMPLE_FIELD_BOOL = 12,
    SIMPLE_FIELD_TCHAR_ARR = 13,
    SIMPLE_FIELD_DWORD = 14,
    SIMPLE_FIELD_INT64_TIME_STAMP = 18,
    SIMPLE_FIELD_DOUBLE_DATETIME = 19,
    SIMPLE_FIELD_INT_ARR_2 = 256,
    SIMPLE_FIELD_INT_ARR_3 = 257,
    SIMPLE_FIELD_INT_ARR_4_VECT = 258,
    SIMPLE_FIELD_INT_ARR_4_RECT = 259,
    SIMPLE_FIELD_DOUBLE_ARR_2_VECT = 260,
    SIMPLE_FIELD_DOUBLE_ARR_3 = 261,
    SIMPLE_FIELD_DOUBLE_ARR_4_VECT = 262,
    SIMPLE_FIELD_DOUBLE_ARR_4_RECT = 263,
    SIMPLE_FIELD_DOUBLE_ARR_4_2BY2MATRIX = 264,
    SIMPLE_FIELD_DOUBLE_ARR_9 = 265,
    SIMPLE_FIELD_DOUBLE_ARR_16 = 266,
    SIMPLE_FIELD_INT_ARR_2_INTERVAL = 267,
    SIMPLE_FIELD_DOUBLE_ARR_2_INTERVAL = 268,
    SIMPLE_FIELD_BYTE_ARR_3_RGB = 269,
    SIMPLE_FIELD_BYTE_ARR_3_BGR = 270,
    SIMPLE_FIELD_INT_FIELD_TYPE = 271,
    SIMPLE_FIELD_INT_MEMORY_MODEL = 272,
    SIMPLE_FIELD_INT_COLOR_SPACE = 273,
    SIMPLE_FIELD_INT_ARR_2_NUMBERS = 274,
    SIMPLE_FIELD_INT_ARR_3_NUMBERS = 275,
    SIMPLE_FIELD_INT_ARR_4_NUMBERS = 276,
    SIMPLE_FIELD_INT_ARR_5_NUMBERS = 277,
    SIMPLE_FIELD_DOUBLE_ARR_2_NUMBERS = 279,
    SIMPLE_FIELD_DOUBLE_ARR_3_NUMBERS = 280,
    SIMPLE_FIELD_INT64_ARR_2_NUMDEN = 283,
    SIMPLE_FIELD_24_BIT_RGB_VALUE = 4104,
    SIMPLE_FIELD_TCHAR_ARR_UNICODE = 8192,
    SIMPLE_FIELD_ANSI_CHAR_ARR = 8193,
    SIMPLE_FIELD_TCHAR_UNICODE2 = 8194,
    SIMPLE_FIELD_INT_ARR_VARI = 8195,
    SIMPLE_FIELD_INT_ARR_VARI2 = 8199,
    SIMPLE_FIELD_INT_ARR_VOLUME = 8200,
    SIMPLE_FIELD_INT_VARI_PIXELINFO = 8470
};

/// What a code demands of the number of elements that are stored.
enum class CountRule
{
    Scalar,        ///< a scalar code: one element is a number, any other number of them an array
    Exactly,       ///< an array of as many elements as Count says
    MultipleOf,    ///< an array of rows of Count elements
    ExpectExactly, ///< like Exactly, but files with other numbers were seen and are read
    Colour,        ///< rows of Count elements when stored; one row when inline
    Any            ///< an array of any length
};

/// All that the reader knows about a type code.
struct CSimpleFieldType
{
    int32_t Code = 0;
    uint32_t EleSize = 0; ///< bytes of an element in the file
    int32_t EleType = 0;  ///< the scalar code under which elements are read; the code itself for a scalar code
    CountRule Rule = CountRule::Any;
    uint32_t Count = 1;
    bool MayBeInline = true; ///< of array codes; scalars fail when they are read if they do not fit
};

/// Null for a code that is none.
const CSimpleFieldType* FindSimpleFieldType(int32_t code);

/// Asserts the code's rule for a value of `numOfElesStored` elements (0 when inline), but for ExpectExactly, which
/// the caller sees to.
void AssertNumOfElements(const CSimpleFieldType& type, bool isDataInline, uint32_t numOfElesStored);

} // namespace Zel
