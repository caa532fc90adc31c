#pragma once
#include <cstddef>
#include <cstdint>

// The clock and thread calls in Win32 shape. The plug-in itself starts no thread: they are here for code that is
// written against the layer. QueryPerformanceCounter is declared in CommonUtil/PlatformCalls.h.

/// Milliseconds of a clock that is never set back; they start again at 0 after 49 days.
uint32_t GetTickCount();
void Sleep(uint32_t milliseconds);

uint32_t GetCurrentProcessId();
/// A number that no other running thread of the system has.
uint32_t GetCurrentThreadId();

using ThreadFunction = uint32_t (*)(void* parameter);

/// Starts a thread at once and answers its handle, which is to be closed by CloseHandle; null when it cannot be
/// started, or without a function. `threadId` may be null. Attributes, stack size and flags have no effect. An
/// exception must not leave the function.
void* CreateThread(const void* attributes, size_t stackSize, ThreadFunction function, void* parameter, uint32_t flags,
                   uint32_t* threadId);
/// Forgets a thread, which runs on if it has not ended: 1; 0 for a handle that is none.
int CloseHandle(void* thread);

constexpr uint32_t INFINITE = 0xFFFFFFFF;
constexpr uint32_t WAIT_OBJECT_0 = 0;
constexpr uint32_t WAIT_TIMEOUT = 258;
constexpr uint32_t WAIT_FAILED = 0xFFFFFFFF;

/// Waits until a thread has ended: WAIT_OBJECT_0, WAIT_TIMEOUT, or WAIT_FAILED for a handle that is none.
uint32_t WaitForSingleObject(void* thread, uint32_t milliseconds);
/// Waits until all threads have ended, or the first of them: WAIT_OBJECT_0 plus the index of that one.
uint32_t WaitForMultipleObjects(uint32_t count, void* const* threads, int waitAll, uint32_t milliseconds);
