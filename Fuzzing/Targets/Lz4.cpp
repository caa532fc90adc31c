// Whatever is to be decoded as LZ4: no byte is read or written beyond the buffers; what was encoded comes back.

#include "Brix/PlatformAbstractionLayer.h"
#include "Fuzzing/Support/FuzzTarget.h"

#include <vector>

using namespace Fuzzing;

namespace
{

constexpr const wchar_t* Codec = L"LZ4";

void Decode(const std::vector<char>& source, size_t room)
{
    std::vector<char> target(room);
    int written = 0;
    const int result = PAL_Decode(Codec, source.data(), static_cast<int>(source.size()), target.data(),
                                  static_cast<int>(target.size()), &written);
    if (result == PAL_RESULT_SUCCESS)
        Require(written > 0 && static_cast<size_t>(written) <= room, "no more is written than there is room for");
}

void EncodeAndDecode(const std::vector<char>& source)
{
    long bound = 0;
    Require(PAL_GetEncodeBound(Codec, static_cast<long>(source.size()), &bound) == PAL_RESULT_SUCCESS, "a bound");
    std::vector<char> encoded(static_cast<size_t>(bound));
    int written = 0;
    Require(PAL_Encode(Codec, source.data(), static_cast<int>(source.size()), encoded.data(), static_cast<int>(bound),
                       &written) == PAL_RESULT_SUCCESS,
            "the bound is room enough");
    std::vector<char> decoded(source.size());
    int size = 0;
    Require(PAL_Decode(Codec, encoded.data(), written, decoded.data(), static_cast<int>(decoded.size()), &size) ==
                PAL_RESULT_SUCCESS,
            "what was encoded can be decoded");
    Require(decoded == source && static_cast<size_t>(size) == source.size(), "what was encoded comes back");
}

void RunLz4(CInput input)
{
    CInputReader reader(input);
    const size_t room = reader.Number() % 65536;
    const CInput rest = reader.Rest();
    const std::vector<char> source(rest.begin(), rest.end());
    if (source.empty())
        return;
    Decode(source, room + 1);
    EncodeAndDecode(source);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunLz4, data, size);
}
