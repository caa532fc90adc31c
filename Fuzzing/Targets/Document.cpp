// Whatever a document file holds: it is opened or refused, and each answer is a result; no crash, no hang, no memory
// beyond measure, and the same answers each time. The stores of all seeds lie beside it.

#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/SlideOnDisk.h"

using namespace Fuzzing;

namespace
{

const CSlideOnDisk slide(SlideOfAllStores(), SampleSlides());

void RunDocument(CInput input)
{
    WriteFile(slide.DocumentFile(), input);
    slide.Walk(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunDocument, data, size);
}
