// Opening a slide, beside what people would open it with if it were a BigTIFF.

#include "Benchmarks/BigTiff.h"
#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Sizes.h"
#include "Benchmarks/Slide.h"

#include <memory>
#include <openslide.h>
#include <tiffio.h>

namespace Benchmarks
{
namespace
{

double SecondsOfOpening(const CSlide& slide, std::vector<BYTE>& body)
{
    return SecondsOf(
        [&]
        {
            const COpenDocument open(slide.FileName());
            COpenDocument::ReadBody(open.Tile(0), body);
        });
}

struct CCloseTiff
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
struct CCloseSlide
{
    void operator()(openslide_t* slide) const { openslide_close(slide); }
};

/// To the first tile's bytes.
void OpenBesideLibtiff(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const std::filesystem::path& bigTiff = BigTiffOf(state.range(0));
    std::vector<BYTE> body(TileSize);
    std::vector<BYTE> rawTile(size_t{256} * 256 * 3);
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                const std::unique_ptr<TIFF, CCloseTiff> tif(TIFFOpen(bigTiff.c_str(), "r"));
                Require(tif && TIFFReadRawTile(tif.get(), 0, rawTile.data(), static_cast<tmsize_t>(rawTile.size())) > 0,
                        "libtiff's reading of a tile");
            });
    };
    Compare(
        state, {"libtiff on an equal BigTIFF, one raw tile", "ms", 1e3, false, 0},
        [&] { return SecondsOfOpening(slide, body); }, peer);
}

void OpenBesideOpenSlide(benchmark::State& state)
{
    const CSlide& slide = CSlide::Of(state.range(0));
    const std::filesystem::path& bigTiff = BigTiffOf(state.range(0));
    std::vector<BYTE> body(TileSize);
    std::vector<uint32_t> pixels(size_t{256} * 256);
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                const std::unique_ptr<openslide_t, CCloseSlide> opened(openslide_open(bigTiff.c_str()));
                Require(opened != nullptr, "openslide_open");
                openslide_read_region(opened.get(), pixels.data(), 0, 0, 0, 256, 256);
                Require(openslide_get_error(opened.get()) == nullptr, "openslide_read_region");
            });
    };
    Compare(
        state, {"OpenSlide on an equal BigTIFF, one region", "ms", 1e3, false, 1},
        [&] { return SecondsOfOpening(slide, body); }, peer);
}

BENCHMARK(OpenBesideLibtiff)->Apply(Sizes)->Iterations(9);
BENCHMARK(OpenBesideOpenSlide)->Apply(Sizes)->Iterations(9);

} // namespace
} // namespace Benchmarks
