// The command-line host as its users have it, a program from its start to its end, beside what bounds it or what people
// would use in its place.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Slide.h"
#include "SampleDocuments/Slide.h"

#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <jpeglib.h>
#include <map>
#include <spawn.h>
#include <string>
#include <sys/wait.h>

extern char** environ;

namespace Benchmarks
{
namespace
{

constexpr int64_t SmallestSize = 64;

using namespace SampleDocuments;
using Words = std::vector<std::string>;

/// Runs a program, which has to succeed, without its output.
void RunProgram(const Words& words)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    const bool isDone = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
                        waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    posix_spawn_file_actions_destroy(&actions);
    Require(isDone, arguments[0]);
}

/// The seconds of a program that writes a file, which is not there before and goes afterwards.
double SecondsOfWriting(const std::filesystem::path& output, const Words& words)
{
    const double seconds = SecondsOf([&] { RunProgram(words); });
    Require(std::filesystem::file_size(output) > 0, "looking at what was written");
    std::filesystem::remove(output);
    return seconds;
}

/// A slide of so many JPEG tiles of 256 x 256 pixels on its finest level, each with bytes of its own.
struct CJpegSlide
{
    explicit CJpegSlide(int64_t numOfTiles, bool hasPyramid)
    {
        const std::string stem = "jpeg" + std::to_string(numOfTiles) + (hasPyramid ? "p" : "");
        Name = Folder() / (stem + ".zel");
        Store = Folder() / ("_" + stem + "_") / "stack1" / "frame_t.kor";
        CSlideOptions options;
        options.Grow = static_cast<uint32_t>(std::sqrt(static_cast<double>(numOfTiles)) / 2);
        options.HasEachTileItsOwnBytes = true;
        if (!hasPyramid)
            options.NumOfLevels = 1;
        SlideFromPicture(DrawPicture(512, 512), options).WriteTo(Name);
    }
    static const CJpegSlide& Of(int64_t numOfTiles, bool hasPyramid)
    {
        static std::map<std::pair<int64_t, bool>, std::unique_ptr<const CJpegSlide>> slides;
        auto& slide = slides[{numOfTiles, hasPyramid}];
        if (!slide)
            slide = std::make_unique<const CJpegSlide>(numOfTiles, hasPyramid);
        return *slide;
    }

    std::filesystem::path Name;
    std::filesystem::path Store;
};

std::vector<uint8_t> BytesOf(const std::filesystem::path& name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Decodes all tiles of a store, told by their markers, into one and the same place.
class CBareDecoding
{
public:
    explicit CBareDecoding(const std::filesystem::path& store) : _Bytes(BytesOf(store))
    {
        const auto isAt = [this](size_t at, uint8_t marker) { return _Bytes[at] == 0xFF && _Bytes[at + 1] == marker; };
        for (size_t at = 0; at + 2 < _Bytes.size(); ++at)
        {
            if (!isAt(at, 0xD8) || _Bytes[at + 2] != 0xFF)
                continue;
            const size_t start = at;
            while (at + 2 < _Bytes.size() && !isAt(at, 0xD9))
                ++at;
            _Tiles.emplace_back(start, at + 2 - start);
        }
    }
    size_t NumOfTiles() const { return _Tiles.size(); }
    double Seconds() const
    {
        return SecondsOf([this] { Decode(); });
    }

private:
    void Decode() const
    {
        std::vector<JSAMPLE> pixels(size_t{256} * 256 * 3);
        jpeg_decompress_struct jpeg{};
        jpeg_error_mgr errors{};
        jpeg.err = jpeg_std_error(&errors); // which ends the program
        jpeg_create_decompress(&jpeg);
        for (const auto& [start, size] : _Tiles)
        {
            jpeg_mem_src(&jpeg, _Bytes.data() + start, size);
            jpeg_read_header(&jpeg, TRUE);
            jpeg.out_color_space = JCS_RGB;
            jpeg_start_decompress(&jpeg);
            while (jpeg.output_scanline < jpeg.output_height)
            {
                JSAMPROW row = pixels.data() + size_t{jpeg.output_scanline} * 256 * 3;
                jpeg_read_scanlines(&jpeg, &row, 1);
            }
            jpeg_finish_decompress(&jpeg);
        }
        jpeg_destroy_decompress(&jpeg);
    }

    std::vector<uint8_t> _Bytes;
    std::vector<std::pair<size_t, size_t>> _Tiles;
};

/// With the few tiles of the smallest size nearly all is the start of the program: that is only shown.
double TargetOf(const benchmark::State& state, double target)
{
    return state.range(0) > SmallestSize ? target : 0;
}

/// 256 tiles are a picture of 4096 x 4096.
void ToolRegion(benchmark::State& state, const std::string& extension, double target)
{
    const CJpegSlide& slide = CJpegSlide::Of(state.range(0), false);
    const CBareDecoding bare(slide.Store);
    Require(bare.NumOfTiles() == static_cast<size_t>(state.range(0)), "finding the tiles");
    const std::filesystem::path output = Folder() / ("region" + extension);
    Compare(
        state, {"libjpeg-turbo's bare decoding of the tiles", "ms", 1e3, false, TargetOf(state, target)},
        [&] {
            return SecondsOfWriting(output, {ZEL, "region", slide.Name, "--jobs", "1", "-o", output});
        },
        [&] { return bare.Seconds(); });
}

void ToolRegionAsTiff(benchmark::State& state)
{
    ToolRegion(state, ".tif", 1.2);
}

void ToolRegionAsPng(benchmark::State& state)
{
    ToolRegion(state, ".png", 0);
}

void ToolVerify(benchmark::State& state)
{
    const CJpegSlide& slide = CJpegSlide::Of(state.range(0), true);
    const Words verify = {ZEL, "verify", slide.Name};
    const Words cat = {"cat", slide.Name, slide.Store};
    Compare(
        state, {"cat of the same files", "ms", 1e3, true, TargetOf(state, 0.8)},
        [&] { return SecondsOf([&] { RunProgram(verify); }); }, [&] { return SecondsOf([&] { RunProgram(cat); }); });
}

double SecondsOfExport(const CJpegSlide& slide)
{
    const std::filesystem::path output = Folder() / "export.ome.tif";
    return SecondsOfWriting(output, {ZEL, "export", slide.Name, "-o", output});
}

void ToolExport(benchmark::State& state)
{
    const CJpegSlide& slide = CJpegSlide::Of(state.range(0), true);
    const std::filesystem::path copy = Folder() / "copy";
    Compare(
        state, {"cp of the same bytes", "ms", 1e3, true, TargetOf(state, 0.5)}, [&] { return SecondsOfExport(slide); },
        [&] {
            return SecondsOfWriting(copy, {"cp", slide.Store, copy});
        });
}

/// It decodes the finest level and encodes it again, all of it in memory, and leaves the others out.
void ToolExportBesideTiffcp(benchmark::State& state)
{
    const CJpegSlide& slide = CJpegSlide::Of(state.range(0), true);
    const std::filesystem::path tiff = Folder() / "equal.ome.tif";
    const std::filesystem::path copy = Folder() / "copy.tif";
    RunProgram({ZEL, "export", slide.Name, "-o", tiff});
    Compare(
        state, {"tiffcp -m 0 of the equal TIFF", "ms", 1e3, true, TargetOf(state, 1)},
        [&] { return SecondsOfExport(slide); },
        [&] {
            return SecondsOfWriting(copy, {"tiffcp", "-m", "0", tiff, copy});
        });
    std::filesystem::remove(tiff);
}

BENCHMARK(ToolRegionAsTiff)->Arg(SmallestSize)->Arg(256)->UseManualTime()->Iterations(9);
BENCHMARK(ToolRegionAsPng)->Arg(256)->UseManualTime()->Iterations(5);
BENCHMARK(ToolVerify)->Arg(SmallestSize)->Arg(16384)->UseManualTime()->Iterations(5);
BENCHMARK(ToolExport)->Arg(SmallestSize)->Arg(16384)->UseManualTime()->Iterations(5);
BENCHMARK(ToolExportBesideTiffcp)->Arg(SmallestSize)->Arg(1024)->UseManualTime()->Iterations(5);

} // namespace
} // namespace Benchmarks
