#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/PlatformCalls.h"

#include <cstring>

namespace
{

/// The text of an errno value in plain English, whatever the host's language.
const char* TextOf(int error)
{
    const char* text = strerrordesc_np(error);
    return text ? text : "unknown";
}

} // namespace

void EnterCriticalSection(pthread_mutex_t* criticalSection)
{
    const int error = pthread_mutex_lock(criticalSection);
    if (error == 0) [[likely]]
        return;
    ZEL_LOG("ERROR: EnterCriticalSection Failed!!! ERRNO=%d Error=%s", error, TextOf(error));
    CommonUtil::FailAssertion(__FILE__, __LINE__);
}

void LeaveCriticalSection(pthread_mutex_t* criticalSection)
{
    const int error = pthread_mutex_unlock(criticalSection);
    if (error == 0) [[likely]]
        return;
    ZEL_LOG("ERROR: LeaveCriticalSection Failed!!! ERRNO=%d Error=%s", error, TextOf(error));
    CommonUtil::FailAssertion(__FILE__, __LINE__);
}
