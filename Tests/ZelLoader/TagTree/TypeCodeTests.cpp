#include "Tests/ZelLoader/TagTree/TreeOfTest.h"

#include <set>

using namespace TreeOfTest;

namespace
{

enum class Inline
{
    Allowed,
    Refused
};

/// What the format says about one type code.
struct CTypeCode
{
    const char* Name;
    int32_t Code;
    uint32_t EleSize;
    int32_t EleType;
    bool IsArray;
    Inline WhenInline;
    std::vector<uint32_t> GoodCounts;
    std::vector<uint32_t> BadCounts;
};

void PrintTo(const CTypeCode& code, std::ostream* stream)
{
    *stream << code.Name << " (" << code.Code << ")";
}

CTypeCode Scalar(const char* name, int32_t code, uint32_t eleSize)
{
    return {name, code, eleSize, code, false, Inline::Allowed, {0, 1, 2, 7}, {}};
}
CTypeCode Exactly(uint32_t count, const char* name, int32_t code, uint32_t eleSize, int32_t eleType)
{
    return {name, code, eleSize, eleType, true, Inline::Refused, {count}, {0, count - 1, count + 1, 2 * count}};
}
CTypeCode MultipleOf(uint32_t count, const char* name, int32_t code, uint32_t eleSize, int32_t eleType)
{
    return {name, code, eleSize, eleType, true, Inline::Refused, {0, count, 3 * count}, {count - 1, count + 1}};
}
CTypeCode Any(const char* name, int32_t code, uint32_t eleSize, int32_t eleType, Inline whenInline = Inline::Refused)
{
    return {name, code, eleSize, eleType, true, whenInline, {0, 1, 2, 3, 100}, {}};
}
CTypeCode Colour(const char* name, int32_t code)
{
    return {name, code, 1, 2, true, Inline::Allowed, {0, 3, 6}, {1, 2, 4}};
}

const CTypeCode TypeCodes[] = {
    Scalar("TextElement", -3, 2),
    Scalar("Char", 1, 1),
    Scalar("UChar", 2, 1),
    Scalar("Short", 3, 2),
    Scalar("UShort", 4, 2),
    Scalar("Int", 5, 4),
    Scalar("UInt", 6, 4),
    Scalar("Int64", 7, 8),
    Scalar("UInt64", 8, 8),
    Scalar("Float", 9, 4),
    Scalar("Double", 10, 8),
    Exactly(2, "DoubleArr2", 11, 8, 10),
    Scalar("Bool", 12, 1),
    Any("TcharArr", 13, 2, -3, Inline::Allowed),
    Scalar("Dword", 14, 4),
    Scalar("Int64TimeStamp", 18, 8),
    Scalar("DoubleDateTime", 19, 8),
    Exactly(2, "IntArr2", 256, 4, 5),
    Exactly(3, "IntArr3", 257, 4, 5),
    MultipleOf(4, "IntArr4Vect", 258, 4, 5),
    Exactly(4, "IntArr4Rect", 259, 4, 5),
    MultipleOf(2, "DoubleArr2Vect", 260, 8, 10),
    Exactly(3, "DoubleArr3", 261, 8, 10),
    MultipleOf(4, "DoubleArr4Vect", 262, 8, 10),
    Exactly(4, "DoubleArr4Rect", 263, 8, 10),
    Exactly(4, "DoubleArr4Matrix2By2", 264, 8, 10),
    Exactly(9, "DoubleArr9", 265, 8, 10),
    Exactly(16, "DoubleArr16", 266, 8, 10),
    Exactly(2, "IntArr2Interval", 267, 4, 5),
    Any("DoubleArr2Interval", 268, 8, 10),
    Colour("ByteArr3Rgb", 269),
    Colour("ByteArr3Bgr", 270),
    Scalar("IntFieldType", 271, 4),
    Scalar("IntMemoryModel", 272, 4),
    Scalar("IntColorSpace", 273, 4),
    Exactly(2, "IntArr2Numbers", 274, 4, 5),
    Exactly(3, "IntArr3Numbers", 275, 4, 5),
    Exactly(4, "IntArr4Numbers", 276, 4, 5),
    Exactly(5, "IntArr5Numbers", 277, 4, 5),
    Exactly(2, "DoubleArr2Numbers", 279, 8, 10),
    Exactly(3, "DoubleArr3Numbers", 280, 8, 10),
    Exactly(2, "Int64Arr2NumDen", 283, 8, 7),
    Colour("Rgb24", 4104),
    Any("TcharArrUnicode", 8192, 2, -3),
    Any("AnsiCharArr", 8193, 1, 8193),
    Any("TcharUnicode2", 8194, 2, -3),
    Any("IntArrVari", 8195, 4, 5),
    Any("IntArrVari2", 8199, 4, 5),
    Any("IntArrVolume", 8200, 4, 5),
    Any("IntVariPixelInfo", 8470, 4, 5),
};

/// Looks codes up; a fixture of tests that need no table too.
class CodeLookUp : public testing::Test
{
protected:
    struct CParsed
    {
        bool IsKnown = false;
        bool IsArray = false;
        uint32_t NumOfEles = 0;
        int32_t EleType = 0;
        uint32_t EleSize = 0;
    };

    CParsed Parse(int32_t code, bool isInline, uint32_t sizeInBytes)
    {
        CParsed parsed;
        parsed.IsKnown = _document.Reader.ParseDataSizeInBytesAndFieldType(
            code, isInline, sizeInBytes, parsed.IsArray, parsed.NumOfEles, parsed.EleType, parsed.EleSize);
        return parsed;
    }

private:
    COpenDocument _document{DocumentOf(Volume(0))};
};

class TypeCode : public CodeLookUp, public testing::WithParamInterface<CTypeCode>
{
};

TEST_P(TypeCode, TellsTheElements)
{
    const CTypeCode& code = GetParam();
    for (const uint32_t count : code.GoodCounts)
    {
        const CParsed parsed = Parse(code.Code, false, count * code.EleSize);
        EXPECT_TRUE(parsed.IsKnown);
        EXPECT_EQ(parsed.IsArray, code.IsArray);
        EXPECT_EQ(parsed.NumOfEles, count);
        EXPECT_EQ(parsed.EleType, code.EleType);
        EXPECT_EQ(parsed.EleSize, code.EleSize);
    }
}

TEST_P(TypeCode, RefusesAnotherNumberOfElements)
{
    for (const uint32_t count : GetParam().BadCounts)
        EXPECT_FAILED_ASSERTION(Parse(GetParam().Code, false, count * GetParam().EleSize)) << count;
}

TEST_P(TypeCode, RefusesASizeThatIsNoMultipleOfTheElementSize)
{
    if (GetParam().EleSize > 1)
    {
        EXPECT_FAILED_ASSERTION(Parse(GetParam().Code, false, GetParam().GoodCounts.back() * GetParam().EleSize + 1));
    }
}

TEST_P(TypeCode, RefusesToBeInlineUnlessItMay)
{
    if (GetParam().WhenInline == Inline::Refused)
    {
        EXPECT_FAILED_ASSERTION(Parse(GetParam().Code, true, 0));
    }
    else
    {
        EXPECT_TRUE(Parse(GetParam().Code, true, 0).IsKnown);
    }
}

TEST_P(TypeCode, HasNoStoredSizeWhenInline)
{
    EXPECT_FAILED_ASSERTION(Parse(GetParam().Code, true, 12));
}

INSTANTIATE_TEST_SUITE_P(All, TypeCode, testing::ValuesIn(TypeCodes), [](const auto& test) { return test.param.Name; });

using TypeCodeOfColour = CodeLookUp;
using UnknownTypeCode = CodeLookUp;

TEST_F(TypeCodeOfColour, IsThreeElementsWhenInline)
{
    for (const int32_t code : {269, 270, 4104})
        EXPECT_EQ(Parse(code, true, 0).NumOfEles, 3u) << code;
}

TEST_F(UnknownTypeCode, IsEveryOther)
{
    std::set<int32_t> known;
    for (const CTypeCode& code : TypeCodes)
        known.insert(code.Code);
    for (int32_t code = -10; code < 10000; ++code)
        if (!known.contains(code))
        {
            ASSERT_FALSE(Parse(code, false, 8).IsKnown) << code;
        }
    EXPECT_FALSE(Parse(0xFFFFFF, false, 8).IsKnown);
}

} // namespace
