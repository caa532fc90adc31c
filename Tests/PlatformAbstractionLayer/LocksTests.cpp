#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"

#include <cerrno>

#ifdef __SANITIZE_THREAD__
/// These tests use mutexes wrongly on purpose, which the thread sanitizer would report.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options()
{
    return "report_mutex_bugs=0";
}
#endif

namespace
{

/// A mutex that reports its errors instead of waiting for ever.
class CheckedMutex
{
public:
    CheckedMutex()
    {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
        pthread_mutex_init(&_mutex, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    ~CheckedMutex() { pthread_mutex_destroy(&_mutex); }
    CheckedMutex(const CheckedMutex&) = delete;
    CheckedMutex& operator=(const CheckedMutex&) = delete;

    operator pthread_mutex_t*() { return &_mutex; }

private:
    pthread_mutex_t _mutex;
};

TEST(CriticalSection, IsEnteredAndLeft)
{
    CheckedMutex mutex;
    EnterCriticalSection(mutex);
    EXPECT_EQ(pthread_mutex_trylock(mutex), EBUSY);
    LeaveCriticalSection(mutex);
    EXPECT_EQ(pthread_mutex_trylock(mutex), 0);
    LeaveCriticalSection(mutex);
}

TEST(CriticalSection, LogsAndFailsWhenItCannotBeEntered)
{
    CheckedMutex mutex;
    EnterCriticalSection(mutex);
    const std::string log = TestSupport::LogOf([&] { EXPECT_FAILED_ASSERTION(EnterCriticalSection(mutex)); });
    EXPECT_NE(log.find("ERROR: EnterCriticalSection Failed!!! ERRNO=35 Error=Resource deadlock avoided\n"),
              std::string::npos)
        << log;
    LeaveCriticalSection(mutex);
}

TEST(CriticalSection, LogsAndFailsWhenItCannotBeLeft)
{
    CheckedMutex mutex;
    const std::string log = TestSupport::LogOf([&] { EXPECT_FAILED_ASSERTION(LeaveCriticalSection(mutex)); });
    EXPECT_NE(log.find("ERROR: LeaveCriticalSection Failed!!! ERRNO=1 Error=Operation not permitted\n"),
              std::string::npos)
        << log;
}

} // namespace
