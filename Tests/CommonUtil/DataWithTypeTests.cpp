#include "CommonUtil/DataWithType.h"

#include "CommonUtil/ArrayStartAndSize.h"
#include "Tests/Support/Assertion.h"

#include <functional>
#include <limits>

using namespace CommonUtil;

namespace
{

struct TaggedNumber
{
    const char* Name;
    DWT_TYPE::E Type;
    int Number;
    std::function<CDataWithType()> Make;
    std::string Value;
};

class EachKindOfNumber : public testing::TestWithParam<TaggedNumber>
{
};

TEST_P(EachKindOfNumber, KnowsItsType)
{
    EXPECT_EQ(GetParam().Make().GetType(), GetParam().Type);
    EXPECT_EQ(GetParam().Type, GetParam().Number);
}

TEST_P(EachKindOfNumber, IsWrittenWithTypeAndValue)
{
    EXPECT_EQ(GetParam().Make().ToString(), std::string("type=") + GetParam().Name + ", value = " + GetParam().Value);
}

template <typename T>
std::function<CDataWithType()> Make(T value)
{
    return [value] { return CDataWithType(value); };
}

INSTANTIATE_TEST_SUITE_P(
    DataWithType, EachKindOfNumber,
    testing::Values(TaggedNumber{"DWT_INT", DWT_TYPE::DWT_INT, 0, Make(int32_t{-7}), "-7"},
                    TaggedNumber{"DWT_UINT", DWT_TYPE::DWT_UINT, 1, Make(uint32_t{4294967295}), "4294967295"},
                    TaggedNumber{"DWT_SHORT", DWT_TYPE::DWT_SHORT, 2, Make(int16_t{-7}), "-7"},
                    TaggedNumber{"DWT_USHORT", DWT_TYPE::DWT_USHORT, 3, Make(uint16_t{65535}), "65535"},
                    TaggedNumber{"DWT_INT64", DWT_TYPE::DWT_INT64, 4, Make(std::numeric_limits<int64_t>::min()),
                                 "-9223372036854775808"},
                    TaggedNumber{"DWT_UINT64", DWT_TYPE::DWT_UINT64, 5, Make(std::numeric_limits<uint64_t>::max()),
                                 "18446744073709551615"},
                    TaggedNumber{"DWT_FLOAT", DWT_TYPE::DWT_FLOAT, 6, Make(1.5f), "1.5"},
                    TaggedNumber{"DWT_DWORD", DWT_TYPE::DWT_DWORD, 7, Make(12ull), "12"},
                    TaggedNumber{"DWT_DOUBLE", DWT_TYPE::DWT_DOUBLE, 8, Make(0.1), "0.1"},
                    TaggedNumber{"DWT_CHAR", DWT_TYPE::DWT_CHAR, 9, Make('A'), "65"},
                    TaggedNumber{"DWT_UCHAR", DWT_TYPE::DWT_UCHAR, 10, Make(static_cast<unsigned char>(200)), "200"},
                    TaggedNumber{"DWT_WCHAR", DWT_TYPE::DWT_WCHAR, 11, Make(L'\u00e4'), "\u00e4"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(DataWithType, GivesTheAddressOfItsNumber)
{
    CDataWithType real(0.25);
    EXPECT_EQ(*static_cast<double*>(real.GetData()), 0.25);
    CDataWithType large(std::numeric_limits<uint64_t>::max());
    EXPECT_EQ(*static_cast<uint64_t*>(large.GetData()), std::numeric_limits<uint64_t>::max());
    EXPECT_EQ(real.Array(), nullptr);
}

TEST(DataWithType, GivesItsArrayItself)
{
    auto array = std::make_unique<CBasicArray>(std::make_unique<std::byte[]>(12), 4, 3, 5);
    const CBasicArray* address = array.get();
    CDataWithType value(std::move(array));
    EXPECT_EQ(value.GetType(), 12);
    EXPECT_EQ(value.GetData(), address);
    EXPECT_EQ(value.Array(), address);
    EXPECT_EQ(value.ToString(), "type=DWT_BASEARRAY, size of each element = 4 bytes, num of eles = 3");
}

TEST(DataWithType, DescribesAnArrayThatIsNotThere)
{
    EXPECT_EQ(CDataWithType(std::unique_ptr<CBasicArray>()).ToString(),
              "type=DWT_BASEARRAY, size of each element = 0 bytes, num of eles = 0");
}

TEST(DataWithType, HasNoNameForAnUnknownType)
{
    EXPECT_EQ(DwtTypeName(static_cast<DWT_TYPE::E>(13)), nullptr);
}

TEST(BasicArray, KnowsItsSizes)
{
    const CBasicArray array(std::make_unique<std::byte[]>(24), 8, 3, 10);
    EXPECT_EQ(array.ElementSize(), 8u);
    EXPECT_EQ(array.NumOfElements(), 3u);
    EXPECT_EQ(array.TotalSize(), 24u);
    EXPECT_EQ(array.ElementType(), 10);
}

TEST(BasicArray, CountsMoreBytesThan32BitsHold)
{
    const CBasicArray array(std::make_unique<std::byte[]>(1), 8, 0xFFFFFFFF, 10);
    EXPECT_EQ(array.TotalSize(), 8 * 0xFFFFFFFFull);
}

TEST(BasicArray, HasNoBytesWithoutElements)
{
    EXPECT_EQ(CBasicArray(nullptr, 4, 0, 5).Ptr(), nullptr);
    EXPECT_FAILED_ASSERTION(CBasicArray(std::make_unique<std::byte[]>(1), 4, 0, 5));
}

TEST(ArrayStartAndSize, AcceptsATextWithItsZero)
{
    wchar_t text[] = L"text";
    CArrayStartAndSize<wchar_t>(text, 5).CheckLen();
    CArrayStartAndSize<wchar_t>(text + 4, 1).CheckLen();
}

TEST(ArrayStartAndSize, RefusesATextWithoutAZeroInItsSize)
{
    wchar_t text[] = L"text";
    EXPECT_FAILED_ASSERTION(CArrayStartAndSize<wchar_t>(text, 4).CheckLen());
    EXPECT_FAILED_ASSERTION(CArrayStartAndSize<wchar_t>(text, 0).CheckLen());
    EXPECT_FAILED_ASSERTION(CArrayStartAndSize<wchar_t>(nullptr, 4).CheckLen());
}

} // namespace
