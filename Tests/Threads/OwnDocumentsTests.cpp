#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Fuzzing/ManyDocuments.h"
#include "Tests/Support/Log.h"
#include "Tests/Threads/OnThreads.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

/// Eight threads that open, walk and close documents of their own, good and damaged ones. They never meet: what each is
/// told, and what each leaves in the log, is what one thread alone is told.

using namespace Fuzzing;
using namespace ThreadsOfTest;

namespace
{

void WalkWhole(const std::wstring& name)
{
    WalkEverything(name);
}

class ThreadsOnTheirOwnDocuments : public testing::Test
{
protected:
    ThreadsOnTheirOwnDocuments() : _documents(WalkWhole)
    {
        for (const std::wstring& name : Names())
            _expected.push_back(WalkEverything(name));
    }

    const std::vector<std::wstring>& Names() const { return _documents.Names(); }
    size_t NumOfRefused() const
    {
        return static_cast<size_t>(std::ranges::count_if(_expected, [](const CWalkAnswers& answers)
                                                         { return answers.ResultOfOpening != AC_RESULT_SUCCESS; }));
    }
    /// Each thread begins with another document, so that at each moment different kinds are open.
    void ExpectTheSameOnThreads() const
    {
        OnThreads(
            [&](int thread)
            {
                const size_t first = static_cast<size_t>(thread) * Names().size() / NumOfThreads;
                for (size_t i = 0; i < Names().size(); ++i)
                {
                    const size_t number = (first + i) % Names().size();
                    EXPECT_EQ(WalkEverything(Names()[number]), _expected[number]) << number;
                }
            });
    }

private:
    CManyDocuments _documents;
    std::vector<CWalkAnswers> _expected;
};

TEST_F(ThreadsOnTheirOwnDocuments, AreToldWhatOneIsToldAlone)
{
    ASSERT_GT(NumOfRefused(), 9u);
    ASSERT_GT(Names().size() - NumOfRefused(), 9u);
    for (int round = 0; round < NumOfRounds(); ++round)
        ExpectTheSameOnThreads();
}

TEST_F(ThreadsOnTheirOwnDocuments, AreToldTheSameWhileTheLogIsRead)
{
    const TestSupport::LogReaderOfTest reader;
    ExpectTheSameOnThreads();
    EXPECT_FALSE(reader.Lines().empty());
}

std::vector<std::string> SortedLinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::ranges::sort(lines);
    return lines;
}

TEST(LogOfThreads, HoldsTheLinesOfEachUnbroken)
{
    const CManyDocuments documents(WalkWhole);
    const CWalkLimits limits{.Groups = 1, .Levels = 1, .AreasOfLevel = 1, .ImagesOfArea = 1};
    const auto walkAll = [&]
    {
        for (const std::wstring& name : documents.Names())
            WalkEverything(name, AC_OM_READ, limits);
    };
    std::string expected;
    const std::string ofOne = TestSupport::LogOf(walkAll);
    for (int thread = 0; thread < NumOfThreads; ++thread)
        expected += ofOne;
    EXPECT_GT(ofOne.size(), 10000u);
    EXPECT_TRUE(SortedLinesOf(TestSupport::LogOf([&] { OnThreads([&](int) { walkAll(); }); })) ==
                SortedLinesOf(expected));
}

} // namespace
