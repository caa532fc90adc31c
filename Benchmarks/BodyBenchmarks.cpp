// Reading the bytes of tiles.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Sizes.h"
#include "Benchmarks/Slide.h"
#include "SampleDocuments/Document.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <sys/uio.h>

namespace Benchmarks
{
namespace
{

using namespace SampleDocuments;

constexpr uint32_t MaxNumOfBodies = 20000;

/// Whole tiles, beside pread of the same ranges.
void Bodies(benchmark::State& state, bool isRandom, double target)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const COpenDocument open(slide.FileName());
    const CFile store(slide.StoreName());
    std::vector<uint32_t> numbers(std::min(slide.NumOfTiles(), MaxNumOfBodies));
    std::iota(numbers.begin(), numbers.end(), 0);
    if (isRandom)
        std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    std::vector<AC_HIMAGE> tiles;
    for (const uint32_t number : numbers)
        tiles.push_back(open.Tile(number));
    std::vector<BYTE> body(TileSize);
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                for (AC_HIMAGE tile : tiles)
                    COpenDocument::ReadBody(tile, body);
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (const uint32_t number : numbers)
                    store.Read(body.data(), TileSize, slide.TileOffsets()[number]);
            });
    };
    job(); // the bytes are in the page cache by the time that anything is measured
    Compare(state, {"pread of the same ranges", "ns/tile", PerItem(static_cast<double>(tiles.size())), true, target},
            job, peer);
}

void BodiesInStoreOrder(benchmark::State& state)
{
    Bodies(state, false, 0.95);
}
void BodiesAtRandom(benchmark::State& state)
{
    Bodies(state, true, 0.9);
}

constexpr uint32_t EdgeOfRawTile = 512;
constexpr uint32_t SizeOfRawTile = EdgeOfRawTile * EdgeOfRawTile * 2;
constexpr uint32_t EdgeOfPart = 64;
constexpr uint32_t FirstOfPart = 100; ///< column and row

/// A slide of raw 16-bit tiles of half a MiB, without display limits, that takes no room on disk.
const std::filesystem::path& RawSlide(uint32_t numOfTiles)
{
    static std::map<uint32_t, std::filesystem::path> slides;
    std::filesystem::path& path = slides[numOfTiles];
    if (path.empty())
    {
        path = Folder() / ("raw" + std::to_string(numOfTiles) + ".zel");
        Document()
            .With(Stack(1)
                      .Size(EdgeOfRawTile * numOfTiles, EdgeOfRawTile)
                      .Tiles(EdgeOfRawTile, EdgeOfRawTile)
                      .Raw(ComponentType::Uint16)
                      .WithoutDisplayLimits()
                      .Contents(Holes(SizeOfRawTile)))
            .WriteTo(path);
    }
    return path;
}

std::filesystem::path StoreOf(const std::filesystem::path& document)
{
    return document.parent_path() / ("_" + document.stem().string() + "_") / "stack1" / "frame_t.kor";
}

/// The rows of a part by one call, which reads what lies between them into a place of its own.
class CPartReader
{
public:
    CPartReader(const CFile& store, std::vector<BYTE>& part) : _store(store), _between(SizeOfRow)
    {
        constexpr size_t SizeOfRowOfPart = EdgeOfPart * 2;
        for (size_t row = 0; row < EdgeOfPart; ++row)
        {
            _ranges.push_back({part.data() + row * SizeOfRowOfPart, SizeOfRowOfPart});
            if (row + 1 < EdgeOfPart)
                _ranges.push_back({_between.data(), SizeOfRow - SizeOfRowOfPart});
        }
    }
    void Read(uint64_t offsetOfTile) const
    {
        const auto offset = static_cast<off_t>(offsetOfTile + FirstOfPart * SizeOfRow + FirstOfPart * 2);
        Require(preadv(_store.Descriptor(), _ranges.data(), static_cast<int>(_ranges.size()), offset) > 0, "preadv");
    }

private:
    static constexpr size_t SizeOfRow = EdgeOfRawTile * 2;

    const CFile& _store;
    std::vector<BYTE> _between;
    std::vector<iovec> _ranges;
};

/// 64 x 64 pixels of each tile of 512 x 512, beside preadv of the same rows.
void PartsOfRawTiles(benchmark::State& state)
{
    const auto numOfTiles = static_cast<uint32_t>(state.range(0)) / 10; // half a MiB each
    const COpenDocument open(RawSlide(numOfTiles));
    const CFile store(StoreOf(RawSlide(numOfTiles)));
    std::vector<BYTE> part(EdgeOfPart * EdgeOfPart * 2);
    const CPartReader reader(store, part);
    const uint64_t offsetOfFirstTile = CStoreList(store).Offsets.front();
    const auto job = [&]
    {
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < numOfTiles; ++number)
                {
                    CMN_RECT rect{FirstOfPart, FirstOfPart, EdgeOfPart, EdgeOfPart};
                    UINT64 size = 0;
                    Require(_AC_GetImageBody(open.Tile(number), &rect, part.data(), part.size(), &size) ==
                                    AC_RESULT_SUCCESS &&
                                size == part.size(),
                            "_AC_GetImageBody");
                }
            });
    };
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                for (uint32_t number = 0; number < numOfTiles; ++number)
                    reader.Read(offsetOfFirstTile + uint64_t{number} * SizeOfRawTile);
            });
    };
    job();
    Compare(state, {"preadv of the same rows", "ns/part", PerItem(numOfTiles), true, 0.8}, job, peer);
}

/// Finding out how many bits the pixels use, which reads all of them, beside summing them. The size is in MiB.
void UsedBitsScan(benchmark::State& state)
{
    const auto numOfTiles = static_cast<uint32_t>(state.range(0)) * 2;
    const std::filesystem::path& slide = RawSlide(numOfTiles);
    const CFile store(StoreOf(slide));
    const uint64_t offsetOfFirstTile = CStoreList(store).Offsets.front();
    const auto job = [&]
    {
        const COpenDocument open(slide);
        AC_HAREA area = COpenDocument::Area(open.Group(), 0);
        std::array<wchar_t, 2> channel = {L'0', L'\0'};
        AC_PARAM_ELEMENT element{L"channelId", channel.data()};
        AC_PARAMS params{1, &element};
        AC_HPROPERTY set = nullptr;
        return SecondsOf(
            [&] {
                Require(_AC_GetAreaProperty(area, L"ChannelInfo", &params, &set) == AC_RESULT_SUCCESS,
                        "_AC_GetAreaProperty");
            });
    };
    std::vector<uint16_t> pixels(SizeOfRawTile / 2);
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                uint64_t sum = 0;
                for (uint32_t number = 0; number < numOfTiles; ++number)
                {
                    store.Read(pixels.data(), SizeOfRawTile, offsetOfFirstTile + uint64_t{number} * SizeOfRawTile);
                    sum = std::accumulate(pixels.begin(), pixels.end(), sum);
                }
                benchmark::DoNotOptimize(sum);
            });
    };
    job();
    Compare(state, {"pread of the same bytes, summed", "ms", 1e3, true, 0.7}, job, peer);
}

BENCHMARK(BodiesInStoreOrder)->Apply(Sizes)->Iterations(9);
BENCHMARK(BodiesAtRandom)->Apply(Sizes)->Iterations(9);
BENCHMARK(PartsOfRawTiles)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(9);
BENCHMARK(UsedBitsScan)->Arg(64)->Arg(1024)->UseManualTime()->Iterations(5);

} // namespace
} // namespace Benchmarks
