#include "Fuzzing/Mutators/Mutate.h"
#include "Fuzzing/Mutators/TagTrees.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/GuardedChild.h"
#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

/// Documents that come and go leave nothing behind: no open file, and no memory, however many of them were broken.

using namespace Fuzzing;

namespace
{

constexpr int NumOfOpens = 10000;
constexpr int NumOfOpensToWarmUp = 1000;

uint64_t BytesInMemory()
{
    uint64_t sizeInPages = 0;
    uint64_t residentPages = 0;
    std::ifstream("/proc/self/statm") >> sizeInPages >> residentPages;
    return residentPages * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

/// Asks for the first of everything.
void OpenAndClose(const std::wstring& name)
{
    const CWalkLimits limits{.Groups = 1, .Levels = 1, .AreasOfLevel = 1, .ImagesOfArea = 1, .Channels = 1};
    WalkEverything(name, AC_OM_READ, limits);
}

/// Good documents of each kind, and damaged ones that do not end the process.
class ManyDocuments
{
public:
    ManyDocuments()
    {
        for (CSampleSlide& slide : SampleSlides())
        {
            Keep(slide.Made.WriteTo(_folder.Path() / (slide.Name + ".zel")));
            for (unsigned seed = 0; seed < 5; ++seed)
                KeepIfItAnswers(Damaged(slide, seed));
        }
    }

    size_t Size() const { return _names.size(); }
    const std::wstring& Name(size_t number) const { return _names[number % _names.size()]; }

private:
    void Keep(const std::filesystem::path& file) { _names.push_back(file.wstring()); }
    void KeepIfItAnswers(const std::filesystem::path& file)
    {
        if (RunGuarded([&] { OpenAndClose(file.wstring()); }).How == HowItEnded::WithAnswers)
            Keep(file);
    }
    std::filesystem::path Damaged(CSampleSlide& slide, unsigned seed)
    {
        const std::filesystem::path file =
            slide.Made.WriteTo(_folder.Path() / (slide.Name + std::to_string(seed) + ".zel"));
        CBytes bytes = slide.Made.ToBytes();
        const auto leaveAsItIs = [](uint8_t*, size_t size, size_t) { return size; };
        const CFormat format{.Places = PlacesOfTagTrees, .Edit = EditTree};
        bytes.resize(Mutate(bytes.data(), bytes.size(), bytes.size(), seed, format, leaveAsItIs));
        _folder.Write(file.filename().string(), {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        return file;
    }

    TestSupport::TemporaryFolder _folder;
    std::vector<std::wstring> _names;
};

TEST(OpeningAndClosing, TenThousandGoodAndBadDocumentsLeavesNothingBehind)
{
    const ManyDocuments documents;
    ASSERT_GT(documents.Size(), 2 * SampleSlides().size());
    for (size_t n = 0; n < NumOfOpensToWarmUp; ++n)
        OpenAndClose(documents.Name(n));
    const size_t filesBefore = TestSupport::NumOfOpenFiles();
    const uint64_t bytesBefore = BytesInMemory();
    for (size_t n = 0; n < NumOfOpens; ++n)
        OpenAndClose(documents.Name(n));
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
    if (IsMemoryOfChildrenLimited()) // a sanitizer keeps back what was freed
    {
        EXPECT_LT(BytesInMemory(), bytesBefore + (1u << 20));
    }
}

} // namespace
