#pragma once
#include "CommonUtil/PlatformCalls.h"

namespace CommonUtil
{

/// A recursive mutex: the thread that holds it may enter again. Every error of the mutex is a failed assertion.
class CMyMutex
{
public:
    CMyMutex();
    ~CMyMutex();
    CMyMutex(const CMyMutex&) = delete;
    CMyMutex& operator=(const CMyMutex&) = delete;

    void Acquire() { EnterCriticalSection(&_critSection); }
    void Release() { LeaveCriticalSection(&_critSection); }

private:
    pthread_mutex_t _critSection;
};

/// Holds a mutex for a scope.
class CLock
{
public:
    explicit CLock(CMyMutex& mutex) : _mutex(mutex) { _mutex.Acquire(); }
    ~CLock() { _mutex.Release(); }
    CLock(const CLock&) = delete;
    CLock& operator=(const CLock&) = delete;

private:
    CMyMutex& _mutex;
};

} // namespace CommonUtil
