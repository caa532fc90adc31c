#include "CommonImageAccess/XmlFunctions.h"
#include "Fuzzing/FailingMachine/Allocations.h"

#include <gtest/gtest.h>

/// The parser of XML is let down by each allocation in turn.

using namespace Fuzzing;

namespace
{

/// False when memory ran out on the way, which the parser tells in more than one way.
bool IsParsed(const wchar_t* text)
{
    try
    {
        return CIA::XmlDocument(text) != nullptr;
    }
    catch (...)
    {
        return false;
    }
}

TEST(FailingXml, LeavesNothingBehindWhereverMemoryRunsOut)
{
    const wchar_t* const text = L"<store><plane z=\"1\"/></store>";
    ASSERT_TRUE(IsParsed(text)); // what the libraries keep on purpose they have from here on
    uint64_t number = 0;
    do
    {
        const int64_t blocksBefore = NumOfLiveBlocks();
        Allocations().LetFail(++number);
        Allocations().EnterFunction();
        const bool isParsed = IsParsed(text);
        Allocations().LeaveFunction();
        EXPECT_NE(isParsed, Allocations().HasFailed()) << "allocation " << number;
        EXPECT_EQ(NumOfLiveBlocks(), blocksBefore) << "allocation " << number;
    } while (Allocations().HasFailed());
    EXPECT_GT(number, 100u);
}

} // namespace
