// Under libFuzzer. The linker lets every call of CommonUtil::oldAbortCommonUtil, the only way in which the plug-in ends
// a process ("abort() called."), come here instead (--wrap), so that such an input is no finding and does not stop the
// fuzzer. Any other abort stays what it is: a finding.

#include "Fuzzing/Support/EndByDesign.h"
#include "Fuzzing/Support/FuzzTarget.h"

namespace Fuzzing
{

namespace
{

bool hasEnded = false;

} // namespace

bool HasEndedByDesign()
{
    return hasEnded;
}

void ForgetEndByDesign()
{
    hasEnded = false;
}

[[noreturn]] void EndByDesign() __asm__("__wrap__ZN10CommonUtil18oldAbortCommonUtilEv");
void EndByDesign()
{
    hasEnded = true;
    throw CEndByDesign();
}

} // namespace Fuzzing
