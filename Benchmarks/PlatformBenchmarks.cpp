// Codecs and profiles of the platform layer.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Slide.h"
#include "Brix/PlatformAbstractionLayer.h"

#include <fstream>
#include <lz4.h>
#include <random>

namespace Benchmarks
{
namespace
{

constexpr int SizeOfBlock = 1 << 20;
constexpr int NumOfBlocks = 50;
constexpr int Acceleration = 17; ///< as the registry asks for it

/// Text-like bytes: they shrink to about a half.
std::vector<char> Block()
{
    std::mt19937 random(1);
    std::vector<char> block(SizeOfBlock);
    for (char& byte : block)
        byte = static_cast<char>('a' + random() % 4 * (random() % 5));
    return block;
}

/// Encoding and decoding blocks through the registry, beside the library called directly.
void Lz4ThroughTheRegistry(benchmark::State& state)
{
    const std::vector<char> block = Block();
    const int sizeOfTarget = LZ4_compressBound(SizeOfBlock);
    std::vector<char> encoded(static_cast<size_t>(sizeOfTarget));
    std::vector<char> decoded(block.size());
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                for (int i = 0; i < NumOfBlocks; ++i)
                {
                    int size = 0;
                    int sizeDecoded = 0;
                    PAL_Encode(L"LZ4", block.data(), SizeOfBlock, encoded.data(), sizeOfTarget, &size);
                    PAL_Decode(L"LZ4", encoded.data(), size, decoded.data(), SizeOfBlock, &sizeDecoded);
                    Require(sizeDecoded == SizeOfBlock, "decoding a block");
                }
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (int i = 0; i < NumOfBlocks; ++i)
                {
                    const int size =
                        LZ4_compress_fast(block.data(), encoded.data(), SizeOfBlock, sizeOfTarget, Acceleration);
                    Require(LZ4_decompress_safe(encoded.data(), decoded.data(), size, SizeOfBlock) == SizeOfBlock,
                            "decoding a block");
                }
            });
    };
    job();
    Require(decoded == block, "getting a block back");
    Compare(state, {"the library called directly", "us/block", 1e6 / NumOfBlocks, true, 0.98}, job, peer);
}

std::filesystem::path ProfileOf(int64_t numOfLines)
{
    std::filesystem::path path = Folder() / ("profile" + std::to_string(numOfLines) + ".ini");
    if (!std::filesystem::exists(path))
    {
        std::u16string text = u"\uFEFF[Lines]\n";
        for (int64_t i = 1; i < numOfLines - 1; ++i)
        {
            const std::string line = "Key" + std::to_string(i) + "=value\n";
            text.append(line.begin(), line.end());
        }
        text += u"Last=found\n";
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(text.data()), static_cast<std::streamsize>(text.size() * 2));
    }
    return path;
}

double SecondsOfLine(int64_t numOfLines)
{
    const std::wstring name = ProfileOf(numOfLines).wstring();
    std::array<wchar_t, 16> value{};
    uint32_t size = 0;
    const double seconds = SecondsOf(
        [&]
        {
            PAL_GetPrivateProfileString(L"Lines", L"Last", L"", value.data(), static_cast<uint32_t>(value.size()),
                                        name.c_str(), &size);
        });
    Require(std::wstring(value.data()) == L"found", "reading a profile");
    return seconds / static_cast<double>(numOfLines);
}

/// The last key of a profile, beside one of a hundredth of its lines.
void LastKeyOfAProfile(benchmark::State& state)
{
    const int64_t count = state.range(0);
    Compare(
        state, {"itself at a hundredth of the lines", "ns/line", 1e9, false, 1.3}, [&] { return SecondsOfLine(count); },
        [&] { return SecondsOfLine(count / 100); });
}

BENCHMARK(Lz4ThroughTheRegistry)->Arg(1000)->UseManualTime()->Iterations(9);
BENCHMARK(LastKeyOfAProfile)->Arg(100000)->UseManualTime()->Iterations(9);

} // namespace
} // namespace Benchmarks
