#include "PlatformAbstractionLayer/Threads.h"

#include <future>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

/// A thread that ends when the test says so.
class WaitingThread
{
public:
    WaitingThread() : _handle(CreateThread(nullptr, 0, Run, this, 0, &_id)) {}
    ~WaitingThread()
    {
        End();
        WaitForSingleObject(_handle, INFINITE);
        CloseHandle(_handle);
    }
    WaitingThread(const WaitingThread&) = delete;
    WaitingThread& operator=(const WaitingThread&) = delete;

    void End()
    {
        if (!_isEnding)
            _end.set_value();
        _isEnding = true;
    }
    void* Handle() const { return _handle; }
    uint32_t Id() const { return _id; }
    uint32_t IdSeenInside() { return _idSeenInside.get_future().get(); }

private:
    static uint32_t Run(void* self)
    {
        auto& thread = *static_cast<WaitingThread*>(self);
        thread._idSeenInside.set_value(GetCurrentThreadId());
        thread._end.get_future().wait();
        return 0;
    }

    std::promise<void> _end;
    std::promise<uint32_t> _idSeenInside;
    bool _isEnding = false;
    uint32_t _id = 0;
    void* _handle;
};

TEST(Thread, RunsUnderItsOwnId)
{
    WaitingThread thread;
    ASSERT_TRUE(thread.Handle());
    EXPECT_EQ(thread.Id(), thread.IdSeenInside());
    EXPECT_NE(thread.Id(), GetCurrentThreadId());
    EXPECT_EQ(GetCurrentProcessId(), static_cast<uint32_t>(getpid()));
}

TEST(Thread, IsWaitedFor)
{
    WaitingThread thread;
    EXPECT_EQ(WaitForSingleObject(thread.Handle(), 0), WAIT_TIMEOUT);
    thread.End();
    EXPECT_EQ(WaitForSingleObject(thread.Handle(), INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(thread.Handle(), 0), WAIT_OBJECT_0);
}

TEST(Thread, IsWaitedForWithOthers)
{
    WaitingThread first;
    WaitingThread second;
    void* const handles[] = {first.Handle(), second.Handle()};
    EXPECT_EQ(WaitForMultipleObjects(2, handles, 0, 1), WAIT_TIMEOUT);
    second.End();
    EXPECT_EQ(WaitForMultipleObjects(2, handles, 0, INFINITE), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(WaitForMultipleObjects(2, handles, 1, 1), WAIT_TIMEOUT);
    first.End();
    EXPECT_EQ(WaitForMultipleObjects(2, handles, 1, INFINITE), WAIT_OBJECT_0);
}

TEST(Thread, NeedsAFunction)
{
    EXPECT_EQ(CreateThread(nullptr, 0, nullptr, nullptr, 0, nullptr), nullptr);
}

TEST(Thread, IsKnownByItsHandleAlone)
{
    int noThread = 0;
    EXPECT_EQ(WaitForSingleObject(&noThread, 0), WAIT_FAILED);
    EXPECT_EQ(WaitForMultipleObjects(0, nullptr, 0, 0), WAIT_FAILED);
    EXPECT_EQ(CloseHandle(&noThread), 0);
}

} // namespace
