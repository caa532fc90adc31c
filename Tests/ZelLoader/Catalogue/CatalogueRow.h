#pragma once
#include "Tests/ZelLoader/TagTree/TreeOfTest.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <functional>
#include <type_traits>

// One row of the dictionary as a test: which accessor of which class finds which tag, and what it answers.

namespace CatalogueTest
{

using namespace TreeOfTest;
using namespace Zel;

constexpr uint32_t SecondTagOfNode = 77;

// What rows answer: a field that delivers it, and what is then expected.

template <typename T>
struct ANumber
{
    using Result = const T*;
    static void ExpectValue(Result result, uint32_t) { EXPECT_EQ(*result, T{1}); }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_EQ(accessor(), nullptr); }
};
struct AnInt32 : ANumber<int32_t>
{
    static CNode Field(uint32_t tag) { return Int32(tag, 1); }
};
struct AnInt64 : ANumber<int64_t>
{
    static CNode Field(uint32_t tag) { return Int64(tag, 1); }
};
struct ADouble : ANumber<double>
{
    static CNode Field(uint32_t tag) { return Double(tag, 1); }
};
struct AFlag : ANumber<bool>
{
    static CNode Field(uint32_t tag) { return Bool(tag, true); }
};

template <typename T>
struct AnArrayOf
{
    using Result = CArrayStartAndSize<T>*;
    static void ExpectValue(Result result, uint32_t)
    {
        EXPECT_EQ(std::vector<T>(result->Arr, result->Arr + result->Size), (std::vector<T>{65, 66, 0}));
    }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_EQ(accessor(), nullptr); }
};
struct AText : AnArrayOf<wchar_t>
{
    static CNode Field(uint32_t tag) { return Text(tag, "AB"); }
};
struct AnArrayOfDouble : AnArrayOf<double>
{
    static CNode Field(uint32_t tag) { return Doubles(tag, {65, 66, 0}); }
};
struct AnArrayOfInt32 : AnArrayOf<int32_t>
{
    static CNode Field(uint32_t tag) { return Int32s(tag, {65, 66, 0}); }
};
struct AnArrayOfUInt32 : AnArrayOf<uint32_t>
{
    static CNode Field(uint32_t tag) { return UInt32s(tag, {65, 66, 0}); }
};
struct AnArrayOfBytes : AnArrayOf<Byte>
{
    static CNode Field(uint32_t tag) { return ByteArray(tag, {65, 66, 0}); }
};
struct AListOfDoubles
{
    using Result = const std::vector<CArrayStartAndSize<double>>*;
    static CNode Field(uint32_t tag) { return Doubles(tag, {65, 66}); }
    static void ExpectValue(Result result, uint32_t)
    {
        ASSERT_EQ(result->size(), 1u);
        EXPECT_EQ(result->front().Arr[1], 66);
    }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_TRUE(accessor()->empty()); }
};

template <typename Wrapper>
struct AChild
{
    using Result = Wrapper*;
    using ClassOfChild = Wrapper;
    static CNode Field(uint32_t tag) { return Volume(tag); }
    static void ExpectValue(Result result, uint32_t tag) { EXPECT_EQ(result->DbgNode()->Tag(), tag); }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_EQ(accessor(), nullptr); }
};
template <typename Wrapper>
struct AList
{
    using Result = const std::vector<std::unique_ptr<Wrapper>>*;
    using ClassOfChild = Wrapper;
    static CNode Field(uint32_t tag) { return Volume(tag); }
    static void ExpectValue(Result result, uint32_t tag)
    {
        ASSERT_EQ(result->size(), 1u);
        EXPECT_EQ(result->front()->DbgNode()->Tag(), tag);
    }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_TRUE(accessor()->empty()); }
};

struct ASecondTag
{
    using Result = uint32_t;
    static CNode Field(uint32_t tag) { return Volume(tag); } // of no concern: the answer stands in the node itself
    static void ExpectValue(Result result, uint32_t) { EXPECT_EQ(result, SecondTagOfNode); }
    static void ExpectAbsent(const std::function<Result()>& accessor) { EXPECT_FAILED_ASSERTION(accessor()); }
};

// A row.

struct CRow
{
    const char* Class;
    const char* Accessor;
    uint32_t Tag;
    CNode Field;
    std::function<void(CZelDataField*)> ExpectValue;
    std::function<void(CZelDataField*)> ExpectAbsent;
    const CCatalogueClass& (*ClassOfChild)(); ///< null when the answer is no wrapper
    bool IsSecondTag;
};

template <typename Kind>
constexpr const CCatalogueClass& (*ClassOfChildOf())()
{
    if constexpr (requires { typename Kind::ClassOfChild; })
        return &CatalogueOf<typename Kind::ClassOfChild>;
    else
        return nullptr;
}

template <typename Kind, typename Wrapper, typename Accessor>
CRow MakeRow(const char* nameOfClass, const char* nameOfAccessor, Accessor Wrapper::*accessor, uint32_t tag)
{
    static_assert(std::is_same_v<std::invoke_result_t<Accessor&>, typename Kind::Result>);
    const auto expectValue = [=](CZelDataField* node)
    {
        Wrapper wrapper(node);
        const typename Kind::Result result = (wrapper.*accessor)();
        if constexpr (std::is_pointer_v<typename Kind::Result>)
        {
            ASSERT_NE(result, nullptr);
        }
        Kind::ExpectValue(result, tag);
    };
    const auto expectAbsent = [=](CZelDataField* node)
    {
        Wrapper wrapper(node);
        Kind::ExpectAbsent([&] { return (wrapper.*accessor)(); });
    };
    return {nameOfClass,
            nameOfAccessor,
            tag,
            Kind::Field(tag),
            expectValue,
            expectAbsent,
            ClassOfChildOf<Kind>(),
            std::is_same_v<Kind, ASecondTag>};
}

#define ROW(Class, Accessor, Tag, ...) MakeRow<__VA_ARGS__>(#Class, #Accessor, &Class::Accessor, Tag)

} // namespace CatalogueTest
