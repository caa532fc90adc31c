// Whatever a TIFF store holds, beside a good document: each answer is a result; no crash, no hang, no memory beyond
// measure, and the same answers each time.

#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/SlideOnDisk.h"

using namespace Fuzzing;

namespace
{

const CSlideOnDisk slide(SlideOfTiffStore());

void RunTiffStore(CInput input)
{
    WriteFile(slide.StoreFile(1), input);
    slide.Walk(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunTiffStore, data, size);
}
