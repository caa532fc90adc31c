// Whatever the TIFF directories of a document hold, under a tag tree that is good: each answer is a result; no crash,
// no hang, no memory beyond measure, and the same answers each time.

#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/SlideOnDisk.h"

#include <algorithm>

using namespace Fuzzing;

namespace
{

const CSlideOnDisk slide(SlideOfDirectories());

/// The bytes of the good document from its tree's start to its first directory; a first directory is written there.
std::vector<uint8_t> GoodTree()
{
    SampleDocuments::Document document = SlideOfDirectories();
    const SampleDocuments::ByteString bytes = document.ToBytes();
    const uint32_t end = document.File().OffsetsOfDirectories().front();
    return {bytes.begin() + 8, bytes.begin() + static_cast<std::ptrdiff_t>(end)};
}

void RunDirectories(CInput input)
{
    static const std::vector<uint8_t> tree = GoodTree();
    constexpr size_t SizeOfHeader = 8;
    std::vector<uint8_t> bytes(input.begin(), input.end());
    bytes.resize(std::max(bytes.size(), SizeOfHeader + tree.size()));
    std::copy(tree.begin(), tree.end(), bytes.begin() + SizeOfHeader);
    WriteFile(slide.DocumentFile(), bytes);
    slide.Walk(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunDirectories, data, size);
}
