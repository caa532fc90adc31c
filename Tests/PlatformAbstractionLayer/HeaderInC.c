#include "Brix/PlatformAbstractionLayer.h"

/* That this compiles as C99 is the test; the value is asked for by LogHookTests.cpp. */
int TooSmallInC(void);

int TooSmallInC(void)
{
    PAL_PutLogError(PAL_LOGERROR_WARNING, L"from C", __FILE__, __LINE__);
    return PAL_CloseFile(NULL) == PAL_RESULT_FAILURE ? PAL_RESULT_TOO_SMALL : -1;
}
