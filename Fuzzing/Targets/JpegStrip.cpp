// Whatever a JPEG strip holds: it is merged or refused by a failed assertion; nothing is read beyond it, and the output
// grows by no more than the strip and what is put between.

#include "CommonImageAccess/JpegStrip.h"
#include "Fuzzing/Support/FuzzTarget.h"

#include <algorithm>
#include <vector>

using namespace Fuzzing;

namespace
{

void RunJpegStrip(CInput input)
{
    CInputReader reader(input);
    const uint32_t stripID = reader.Byte();
    const uint32_t height = reader.Number();
    const CInput tables = reader.Bytes(reader.Byte());
    std::vector<unsigned char> output(tables.begin(), tables.end());
    const CInput rest = reader.Rest();
    // A block of its own, so that a byte read beyond it is seen.
    const std::vector<unsigned char> strip(rest.begin(), rest.end());
    CIA::Apply_Huffman_On_JPEG(strip, output, stripID, height);
    Require(std::equal(tables.begin(), tables.end(), output.begin()), "what was in the output stays");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunJpegStrip, data, size);
}
