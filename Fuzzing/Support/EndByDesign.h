#pragma once

namespace Fuzzing
{

/// What an end of the process by design is under libFuzzer, where the process has to go on.
struct CEndByDesign
{
};

void ForgetEndByDesign();

} // namespace Fuzzing
