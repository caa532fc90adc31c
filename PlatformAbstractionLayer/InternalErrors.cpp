#include "PlatformAbstractionLayer/InternalErrors.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

void IfNeededHaltOnInternalError()
{
    const char* home = std::getenv("HOME");
    if (!home)
        return;
    const CommonUtil::CErrnoKeeper errnoKeeper;
    if (access((std::string(home) + "/HaltOnInternalErrors").c_str(), F_OK) != 0)
        return;
    ZEL_LOG("Internal error, halting as '~/HaltOnInternalErrors...' is present.");
    CommonUtil::FailAssertion(__FILE__, __LINE__);
}

void LogInternalError()
{
    ZEL_LOG("Internal error");
    IfNeededHaltOnInternalError();
}
