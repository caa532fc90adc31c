#pragma once
#include <gtest/gtest.h>
#include <string>

namespace TestSupport
{

/// The text that `function` throws as a failed assertion does; empty when it throws nothing.
template <typename Function>
std::string AssertionOf(Function&& function)
{
    try
    {
        function();
    }
    catch (const char* text)
    {
        return text;
    }
    return {};
}

} // namespace TestSupport

/// The statement fails an assertion of the program under test.
#define EXPECT_FAILED_ASSERTION(statement)                                                                             \
    EXPECT_EQ(TestSupport::AssertionOf([&] { statement; }).substr(0, 23), "Assertion failed: file ")
