// Stacks kept as TIFF, each job beside what libtiff itself takes for the same directories, strips and tiles.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Slide.h"
#include "SampleDocuments/Document.h"

#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <tiffio.h>

namespace Benchmarks
{
namespace
{

using namespace SampleDocuments;

constexpr uint16_t CompressionJ2k = 34712; ///< bytes of any kind: nothing is decoded here
constexpr uint32_t EdgeOfTile = 256;
constexpr uint32_t NumOfCols = 25;

enum EKind
{
    Directories, ///< of the document, one tiny strip each
    Strips,      ///< of the document, one to a directory
    Tiles        ///< of a TIFF store, all in one directory
};

Stack StackOf(EKind kind, uint32_t count)
{
    switch (kind)
    {
    case Directories:
        return Stack(1).Size(2, 1).T(count).InDocument(1);
    case Strips:
        return Stack(1)
            .Size(EdgeOfTile, EdgeOfTile)
            .T(count)
            .InDocument(Stack::OneStrip)
            .TiffCompression(CompressionJ2k)
            .Contents(BytesOfSize(1, TileSize));
    case Tiles:
        break;
    }
    return Stack(1)
        .Size(EdgeOfTile * NumOfCols, EdgeOfTile * count / NumOfCols)
        .Tiles(EdgeOfTile, EdgeOfTile)
        .InTiffStore()
        .WithoutXml();
}

/// A document with so many directories, strips or tiles, written on first use.
const std::filesystem::path& DocumentOf(EKind kind, uint32_t count)
{
    static std::map<std::pair<EKind, uint32_t>, std::filesystem::path> documents;
    std::filesystem::path& path = documents[{kind, count}];
    if (path.empty())
    {
        path = Folder() / ("tiff" + std::to_string(kind) + "-" + std::to_string(count) + ".zel");
        Document().With(StackOf(kind, count)).WriteTo(path);
    }
    return path;
}

struct CTiffCloser
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using CTiff = std::unique_ptr<TIFF, CTiffCloser>;

/// By reads, not by a map of the file into memory: the plug-in's files may shrink under it.
CTiff OpenTiff(const std::filesystem::path& path)
{
    CTiff tif(TIFFOpen(path.c_str(), "rm"));
    Require(tif != nullptr, "TIFFOpen");
    return tif;
}

/// The share of libtiff's rate.
void CompareWithLibtiff(benchmark::State& state, const char* beside, const std::function<void()>& job,
                        const std::function<void()>& peer)
{
    job();
    Compare(
        state, {beside, "ns/item", PerItem(static_cast<double>(state.range(0))), true, 0},
        [&] { return SecondsOf(job); }, [&] { return SecondsOf(peer); });
}

/// Opening a document and reading the strip of each directory once, beside a walk of the chain by libtiff.
void TiffDirectories(benchmark::State& state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const auto& path = DocumentOf(Directories, count);
    std::vector<BYTE> strip(2);
    CompareWithLibtiff(
        state, "libtiff's walk of the chain",
        [&]
        {
            const COpenDocument document(path);
            for (uint32_t time = 0; time < count; ++time)
                COpenDocument::ReadBody(document.AtTime(time), strip);
        },
        [&]
        {
            const CTiff tif = OpenTiff(path); // on the overview, which comes first
            for (uint32_t time = 0; time < count; ++time)
                Require(TIFFReadDirectory(tif.get()) == 1 && TIFFReadRawStrip(tif.get(), 0, strip.data(), 2) == 2,
                        "reading a directory");
        });
}

/// Reading the strip of each directory of an open document, beside libtiff's raw reads on its way along the chain.
void TiffStrips(benchmark::State& state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const auto& path = DocumentOf(Strips, count);
    const COpenDocument document(path);
    std::vector<AC_HIMAGE> images;
    for (uint32_t time = 0; time < count; ++time)
        images.push_back(document.AtTime(time));
    std::vector<BYTE> strip(TileSize);
    CompareWithLibtiff(
        state, "libtiff's raw reads along the chain",
        [&]
        {
            for (AC_HIMAGE image : images)
                COpenDocument::ReadBody(image, strip);
        },
        [&]
        {
            const CTiff tif = OpenTiff(path);
            for (uint32_t time = 0; time < count; ++time)
                Require(TIFFReadDirectory(tif.get()) == 1 &&
                            TIFFReadRawStrip(tif.get(), 0, strip.data(), TileSize) == TileSize,
                        "reading a strip");
        });
}

/// Reading the tiles of a store, beside libtiff's raw reads of them.
void TiffTiles(benchmark::State& state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const auto& path = DocumentOf(Tiles, count);
    const COpenDocument document(path);
    std::vector<AC_HIMAGE> images;
    for (uint32_t number = 0; number < count; ++number)
        images.push_back(document.Tile(number));
    constexpr tmsize_t Size = EdgeOfTile * EdgeOfTile;
    std::vector<BYTE> tile(Size);
    const CTiff tif = OpenTiff(path.parent_path() / ("_" + path.stem().string() + "_") / "stack1" / "frame_t.tif");
    CompareWithLibtiff(
        state, "libtiff's raw reads",
        [&]
        {
            for (AC_HIMAGE image : images)
                COpenDocument::ReadBody(image, tile);
        },
        [&]
        {
            for (uint32_t number = 0; number < count; ++number)
                Require(TIFFReadRawTile(tif.get(), number, tile.data(), Size) == Size, "reading a tile");
        });
}

BENCHMARK(TiffDirectories)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(5);
BENCHMARK(TiffStrips)->Arg(1000)->UseManualTime()->Iterations(9);
BENCHMARK(TiffTiles)->Arg(1000)->UseManualTime()->Iterations(9);

} // namespace
} // namespace Benchmarks
