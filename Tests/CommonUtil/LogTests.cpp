#include "Tests/Support/Log.h"

#include <gtest/gtest.h>

using namespace CommonUtil;
using TestSupport::LogOf;

TEST(Log, PrintsLineNumberFunctionAndMessage)
{
    EXPECT_EQ(LogOf([] { pw_flf(false, "Some.cpp", "ReadVolumeHeader", L"%d of %s", 98, 3, "four"); }),
              "L98:ReadVolumeHeader: 3 of four\n");
}
