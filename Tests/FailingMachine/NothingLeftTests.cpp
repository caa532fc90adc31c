#include "Fuzzing/FailingMachine/Allocations.h"
#include "Tests/FailingMachine/SlideOnAMachine.h"
#include "Tests/Support/ChildProcess.h"

#include <cstdlib>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

/// A process that has no file handles or no memory left.

using namespace Fuzzing;
using TestSupport::ExitedWith;
using TestSupport::RunInChild;

namespace
{

class NothingLeft : public SlideOnAMachine
{
protected:
    /// Runs `body` with at most so many handles more than there are.
    template <typename Body>
    static void WithHandlesLeft(rlim_t numOfHandles, Body&& body)
    {
        rlimit former{};
        getrlimit(RLIMIT_NOFILE, &former);
        const rlimit limit{TestSupport::NumOfOpenFiles() + numOfHandles, former.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
        body();
        setrlimit(RLIMIT_NOFILE, &former);
    }
};

TEST_P(NothingLeft, OpensADocumentWithAFewHandlesOrRefusesIt)
{
    for (rlim_t numOfHandles = 0; numOfHandles < 6; ++numOfHandles)
    {
        const size_t filesBefore = TestSupport::NumOfOpenFiles();
        WithHandlesLeft(numOfHandles,
                        [&]
                        {
                            if (Open() == AC_RESULT_SUCCESS)
                                Walk();
                            Close();
                        });
        EXPECT_EQ(TestSupport::NumOfOpenFiles(), filesBefore);
    }
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    ExpectItToAnswerAsEver();
}

TEST_P(NothingLeft, OfHandlesAnOpenDocumentAnswersAsEverLater)
{
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    WithHandlesLeft(0, [&] { Walk(); });
    ExpectItToAnswerAsEver();
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

/// Lets the process have no memory but what it has, and takes most of that away, so that something is left for a while.
class CAlmostNoMemory
{
public:
    explicit CAlmostNoMemory(size_t bytesLeft)
    {
        uint64_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const rlim_t bytes = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
        const rlimit limit{bytes, RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
        for (size_t size = size_t{1} << 20; size >= 16; size /= 2)
            while (void* block = std::malloc(size))
                Keep(block, size);
        size_t freed = 0;
        for (; _blocks && freed < bytesLeft; freed += Free())
        {
        }
    }
    ~CAlmostNoMemory()
    {
        const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
        while (_blocks)
            Free();
    }
    CAlmostNoMemory(const CAlmostNoMemory&) = delete;
    CAlmostNoMemory& operator=(const CAlmostNoMemory&) = delete;

private:
    struct CBlock
    {
        CBlock* Next;
        size_t Size;
    };

    void Keep(void* memory, size_t size) { _blocks = new (memory) CBlock{_blocks, size}; }
    size_t Free()
    {
        CBlock* block = _blocks;
        _blocks = block->Next;
        const size_t size = block->Size;
        std::free(block);
        return size;
    }

    CBlock* _blocks = nullptr;
};

TEST_P(NothingLeft, OfMemoryADocumentIsRefusedAndOpenedLater)
{
    const auto openWithLittle = [this]
    {
        const std::wstring name = Document().wstring();
        for (const size_t bytesLeft : {0, 1 << 12, 1 << 14, 1 << 15, 1 << 16, 1 << 17, 1 << 18})
        {
            AC_HFILE document = nullptr;
            const CAlmostNoMemory almostNoMemory(bytesLeft);
            _AC_Open(name.c_str(), AC_OM_READ, &document);
            if (document)
                _AC_Close(document);
        }
        if (Open() != AC_RESULT_SUCCESS)
            return 1;
        ExpectItToAnswerAsEver();
        return HasFailure() ? 2 : 0;
    };
    EXPECT_EQ(RunInChild(openWithLittle), ExitedWith(0));
}

#endif

TEST_P(NothingLeft, IsNeededToCloseADocument)
{
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    Walk();
    Allocations().StartCounting();
    Allocations().EnterFunction();
    Close();
    Allocations().LeaveFunction();
    EXPECT_EQ(Allocations().NumOfCalls(), 0u);
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, NothingLeft, testing::ValuesIn(NumbersOfSlides()), NameOfSlide);

} // namespace
