#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Threads/OnThreads.h"
#include "Tests/Threads/Walk/DocumentCalls.h"

#include <algorithm>
#include <gtest/gtest.h>

/// Each exported function beside each other one, as the first thing that threads ask of a document that was opened just
/// now. No lock that an earlier question took puts one thread before the other, so that the thread sanitizer sees a
/// lock that is missing at whatever moments the threads run.

using namespace Fuzzing;
using namespace ThreadsOfTest;

namespace
{

class CDocument
{
public:
    explicit CDocument(const std::wstring& name)
    {
        AC_HFILE document = nullptr;
        EXPECT_EQ(_AC_Open(name.c_str(), AC_OM_READ, &document), AC_RESULT_SUCCESS);
        _handles = FirstHandlesOf(name, document);
        EXPECT_TRUE(_handles.Image && _handles.Set);
    }
    ~CDocument() { _AC_Close(_handles.Document); }
    CDocument(const CDocument&) = delete;
    CDocument& operator=(const CDocument&) = delete;
    const CHandles& Handles() const { return _handles; }

private:
    CHandles _handles;
};

class PairsOfCalls : public testing::TestWithParam<size_t>
{
protected:
    PairsOfCalls()
    {
        SampleSlides().at(GetParam()).Made.WriteTo(_folder.Path() / "slide.zel");
        for (const CDocumentCall& call : DocumentCalls())
            _expected.push_back(call.Ask(CDocument(Name()).Handles()));
    }

    std::wstring Name() const { return _folder.WideName("slide.zel"); }
    /// Even threads ask the first, odd ones the second.
    void ExpectTheSameOfBoth(size_t first, size_t second) const
    {
        const CDocument document(Name());
        OnThreads(
            [&](int thread)
            {
                const size_t number = thread % 2 == 0 ? first : second;
                const CDocumentCall& call = DocumentCalls()[number];
                const std::string told = call.Ask(document.Handles());
                if (call.IsSameForAll)
                {
                    EXPECT_EQ(told, _expected[number]) << call.Name;
                }
            });
    }

private:
    TestSupport::TemporaryFolder _folder;
    std::vector<std::string> _expected;
};

TEST(Calls, EachSucceedsOnSomeKindOfDocument)
{
    const TestSupport::TemporaryFolder folder;
    std::vector<CSampleSlide> slides = SampleSlides();
    std::vector<std::wstring> names;
    for (CSampleSlide& slide : slides)
    {
        slide.Made.WriteTo(folder.Path() / (slide.Name + ".zel"));
        names.push_back(folder.WideName(slide.Name + ".zel"));
    }
    for (const CDocumentCall& call : DocumentCalls())
        EXPECT_TRUE(std::ranges::any_of(names, [&](const std::wstring& name)
                                        { return call.Ask(CDocument(name).Handles()).starts_with("0"); }))
            << call.Name << " is only seen to fail";
}

TEST_P(PairsOfCalls, BesideEachOtherTellWhatTheyTellAlone)
{
    for (size_t first = 0; first < DocumentCalls().size(); ++first)
        for (size_t second = first; second < DocumentCalls().size(); ++second)
            ExpectTheSameOfBoth(first, second);
}

std::string NameOfSlide(const testing::TestParamInfo<size_t>& info)
{
    std::string name = SampleSlides().at(info.param).Name;
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(OfThreadsOnEachKind, PairsOfCalls, testing::Range(size_t{0}, SampleSlides().size()),
                         NameOfSlide);

} // namespace
