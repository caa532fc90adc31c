#include "CommonUtil/Lazy.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

using namespace CommonUtil;

namespace
{

using LazyNumber = CLazy<uint32_t, 0xFFFFFFFFu>;

TEST(Lazy, WorksItsValueOutOnce)
{
    LazyNumber lazy;
    int numOfCalls = 0;
    const auto init = [&](uint32_t& value)
    {
        value = 7;
        ++numOfCalls;
        return true;
    };
    EXPECT_EQ(lazy.Get(init), 7u);
    EXPECT_EQ(lazy.Get(init), 7u);
    EXPECT_EQ(numOfCalls, 1);
    EXPECT_TRUE(lazy.IsKnown());
}

TEST(Lazy, RestoresTheStartValueAfterAFailureAndTriesAgain)
{
    LazyNumber lazy;
    const auto fail = [](uint32_t& value)
    {
        value = 7;
        return false;
    };
    EXPECT_EQ(lazy.Get(fail), 0xFFFFFFFFu);
    EXPECT_FALSE(lazy.IsKnown());
    EXPECT_EQ(lazy.Get([](uint32_t& value) { return value = 8, true; }), 8u);
}

TEST(Lazy, StaysUnknownWhenItsInitThrows)
{
    LazyNumber lazy;
    EXPECT_THROW(lazy.Get([](uint32_t& value) -> bool { throw std::runtime_error(std::to_string(value = 7)); }),
                 std::runtime_error);
    EXPECT_FALSE(lazy.IsKnown());
}

TEST(Lazy, CanBeForgotten)
{
    LazyNumber lazy;
    lazy.Get([](uint32_t& value) { return value = 8, true; });
    lazy.Reset();
    EXPECT_FALSE(lazy.IsKnown());
}

TEST(Lazy, RecognisesAStartValueOfNaN)
{
    CLazy<double, std::numeric_limits<double>::quiet_NaN()> lazy;
    EXPECT_TRUE(std::isnan(lazy.Get([](double&) { return false; })));
    EXPECT_EQ(lazy.Get([](double& value) { return value = 0.5, true; }), 0.5);
    EXPECT_EQ(lazy.Get([](double& value) { return value = 9, true; }), 0.5);
    EXPECT_TRUE(lazy.IsKnown());
}

} // namespace
