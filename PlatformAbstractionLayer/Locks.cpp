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

void FailCriticalSection(const char* call, int error)
{
    ZEL_LOG("ERROR: %s Failed!!! ERRNO=%d Error=%s", call, error, TextOf(error));
    CommonUtil::FailAssertion(__FILE__, __LINE__);
}
