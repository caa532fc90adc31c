#include "CommonUtil/Mutex.h"

#include "CommonUtil/Assertion.h"

namespace CommonUtil
{

CMyMutex::CMyMutex() : _critSection()
{
    pthread_mutexattr_t attributes;
    ZEL_ASSERT(pthread_mutexattr_init(&attributes) == 0);
    const bool isMade = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
                        pthread_mutex_init(&_critSection, &attributes) == 0;
    pthread_mutexattr_destroy(&attributes);
    ZEL_ASSERT(isMade);
}

CMyMutex::~CMyMutex()
{
    pthread_mutex_destroy(&_critSection);
}

} // namespace CommonUtil
