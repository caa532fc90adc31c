#include "Fuzzing/Support/GuardedChild.h"
#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Fuzzing/ManyDocuments.h"
#include "Tests/Support/ChildProcess.h"

#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

/// Documents that come and go leave nothing behind: no open file, and no memory, however many of them were broken.

using namespace Fuzzing;

namespace
{

constexpr size_t NumOfOpens = 10000;
constexpr size_t NumOfOpensToWarmUp = 1000;

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

TEST(OpeningAndClosing, TenThousandGoodAndBadDocumentsLeavesNothingBehind)
{
    const CManyDocuments documents(OpenAndClose);
    const std::vector<std::wstring>& names = documents.Names();
    ASSERT_GT(names.size(), 2 * SampleSlides().size());
    for (size_t n = 0; n < NumOfOpensToWarmUp; ++n)
        OpenAndClose(names[n % names.size()]);
    const size_t filesBefore = TestSupport::NumOfOpenFiles();
    const uint64_t bytesBefore = BytesInMemory();
    for (size_t n = 0; n < NumOfOpens; ++n)
        OpenAndClose(names[n % names.size()]);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
    if (IsMemoryOfChildrenLimited()) // a sanitizer keeps back what was freed
    {
        EXPECT_LT(BytesInMemory(), bytesBefore + (1u << 20));
    }
}

#ifdef __SANITIZE_ADDRESS__
/// Every test looks for leaks as it ends; this one holds the sanitizer to that.
TEST(Leaks, AreFound)
{
    const auto leak = []
    {
        static_cast<void>(new int(1));
        return __lsan_do_recoverable_leak_check();
    };
    EXPECT_EQ(TestSupport::RunInChild(leak), TestSupport::ExitedWith(1));
}
#endif

} // namespace
