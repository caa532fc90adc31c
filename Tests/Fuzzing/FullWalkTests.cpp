#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <gmock/gmock.h>
#include <set>
#include <thread>

/// A full walk asks for everything and tells the same each time.

using namespace Fuzzing;
using testing::Each;
using testing::IsSupersetOf;

namespace
{

std::vector<size_t> NumbersOfSlides()
{
    std::vector<size_t> numbers(SampleSlides().size());
    for (size_t n = 0; n < numbers.size(); ++n)
        numbers[n] = n;
    return numbers;
}

std::string NameOfSlide(const testing::TestParamInfo<size_t>& info)
{
    std::string name = SampleSlides().at(info.param).Name;
    std::erase(name, '-');
    return name;
}

class FullWalk : public testing::TestWithParam<size_t>
{
protected:
    FullWalk() { SampleSlides().at(GetParam()).Made.WriteTo(_folder.Path() / "slide.zel"); }

    CWalkAnswers Walk(const CWalkLimits& limits = {}) const
    {
        return WalkEverything(_folder.WideName("slide.zel"), AC_OM_READ, limits);
    }

private:
    TestSupport::TemporaryFolder _folder;
};

TEST_P(FullWalk, OpensTheDocumentAndHearsManyAnswers)
{
    const CWalkAnswers answers = Walk();
    EXPECT_EQ(answers.ResultOfOpening, AC_RESULT_SUCCESS);
    EXPECT_GT(answers.NumOfAnswers, 500u);
}

TEST_P(FullWalk, TellsTheSameTwice)
{
    EXPECT_EQ(Walk(), Walk());
}

TEST_P(FullWalk, TellsTheSameBesideOthers)
{
    const CWalkAnswers alone = Walk();
    std::array<CWalkAnswers, 4> answers;
    {
        std::vector<std::jthread> threads;
        for (CWalkAnswers& answer : answers)
            threads.emplace_back([&] { answer = Walk(); });
    }
    EXPECT_THAT(answers, Each(alone));
}

TEST_P(FullWalk, MeetsPixelsPropertiesAndWhatIsNotThere)
{
    std::set<std::string> questions;
    CWalkLimits limits;
    limits.Tell = [&](const std::string& line) { questions.insert(line.substr(0, line.find(':'))); };
    Walk(limits);
    EXPECT_THAT(questions, IsSupersetOf({"area", "body", "group data", "image", "key", "next image", "value", "version",
                                         "area of a level that is not there"}));
}

TEST_P(FullWalk, EndsWhenItIsToldTo)
{
    CWalkLimits limits;
    int numOfCalls = 0;
    limits.IsOver = [&] { return ++numOfCalls >= 10; };
    EXPECT_LT(Walk(limits).NumOfAnswers, 20u);
}

INSTANTIATE_TEST_SUITE_P(OfEachKindOfDocument, FullWalk, testing::ValuesIn(NumbersOfSlides()), NameOfSlide);

} // namespace
