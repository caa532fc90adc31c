#include "PlatformAbstractionLayer/LogHook.h"

/// Lets a test read what the module logs; the plug-in itself keeps its hook to itself.
extern "C" __attribute__((visibility("default"))) void AttachLogReader(LogReader reader)
{
    SetLogReader(reader);
}
