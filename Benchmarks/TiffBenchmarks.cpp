// Stacks kept as TIFF, each job beside what libtiff itself takes for the same directories, strips and tiles.

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

class COpenDocument
{
public:
    explicit COpenDocument(const std::filesystem::path& path)
    {
        Require(_AC_Open(path.wstring().c_str(), AC_OM_READ, &_document) == AC_RESULT_SUCCESS, "_AC_Open");
        Require(_AC_GetGroup(_document, 0, &_group) == AC_RESULT_SUCCESS, "_AC_GetGroup");
    }
    ~COpenDocument() { _AC_Close(_document); }
    COpenDocument(const COpenDocument&) = delete;
    COpenDocument& operator=(const COpenDocument&) = delete;

    AC_HIMAGE Tile(uint32_t number) const { return Image(number, nullptr, 0); }
    AC_HIMAGE AtTime(uint32_t time) const
    {
        AC_AXIS_INFO axis{AC_AT_TIME, time};
        return Image(0, &axis, 1);
    }
    static void ReadBody(AC_HIMAGE image, std::vector<BYTE>& buffer)
    {
        CMN_RECT whole{};
        UINT64 size = 0;
        Require(_AC_GetImageBody(image, &whole, buffer.data(), buffer.size(), &size) == AC_RESULT_SUCCESS &&
                    size == buffer.size(),
                "_AC_GetImageBody");
    }

private:
    AC_HIMAGE Image(uint32_t area, AC_AXIS_INFO* axes, int numOfAxes) const
    {
        AC_HAREA hArea = nullptr;
        AC_HIMAGE image = nullptr;
        Require(_AC_GetArea(_group, 0, area, &hArea) == AC_RESULT_SUCCESS, "_AC_GetArea");
        Require(_AC_GetImage(hArea, L"0", axes, numOfAxes, &image) == AC_RESULT_SUCCESS && image, "_AC_GetImage");
        return image;
    }

    AC_HFILE _document = nullptr;
    AC_HGROUP _group = nullptr;
};

/// Times `job` and `peer` in turn. "rate" is that of the job as a share of the peer's, by medians.
void CompareWithPeer(benchmark::State& state, const std::function<void()>& job, const std::function<void()>& peer)
{
    std::vector<double> jobs;
    std::vector<double> peers;
    for (auto iteration : state)
    {
        static_cast<void>(iteration);
        jobs.push_back(SecondsOf(job));
        peers.push_back(SecondsOf(peer));
        state.SetIterationTime(jobs.back());
    }
    const auto count = static_cast<double>(state.range(0));
    state.counters["ns_per_item"] = Median(jobs) / count * 1e9;
    state.counters["peer_ns_per_item"] = Median(peers) / count * 1e9;
    state.counters["rate"] = Median(peers) / Median(jobs);
}

/// Opening a document and reading the strip of each directory once, beside a walk of the chain by libtiff.
void TiffDirectories(benchmark::State& state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const auto& path = DocumentOf(Directories, count);
    std::vector<BYTE> strip(2);
    CompareWithPeer(
        state,
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
    CompareWithPeer(
        state,
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
    CompareWithPeer(
        state,
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

BENCHMARK(TiffDirectories)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(TiffStrips)->Arg(1000)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(TiffTiles)->Arg(1000)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Benchmarks
