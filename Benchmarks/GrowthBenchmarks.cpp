// What must cost the same for each item, however many there are: each job at its size, beside itself at a tenth.

#include "Benchmarks/Comparison.h"
#include "Benchmarks/Host.h"
#include "Benchmarks/Slide.h"
#include "SampleDocuments/Document.h"

#include <map>
#include <pugixml.hpp>

namespace Benchmarks
{
namespace
{

using namespace SampleDocuments;

using CMaker = std::function<Document(uint32_t)>;
using CPath = std::filesystem::path;

/// A document of a kind with so many items, written on first use.
const CPath& DocumentOf(const std::string& kind, uint32_t count, const CMaker& make)
{
    static std::map<std::string, CPath> documents;
    CPath& path = documents[kind + std::to_string(count)];
    if (path.empty())
    {
        path = Folder() / (kind + std::to_string(count) + ".zel");
        make(count).WriteTo(path);
    }
    return path;
}

/// `work` on a document of as many items as the size says, beside a tenth of them.
void CompareWithATenth(benchmark::State& state, const std::string& kind, const char* unit, double target,
                       const CMaker& make, const std::function<void(const CPath&, uint32_t)>& work)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const auto secondsOfItem = [&](uint32_t numOfItems)
    {
        const CPath& path = DocumentOf(kind, numOfItems, make);
        return SecondsOf([&] { work(path, numOfItems); }) / numOfItems;
    };
    secondsOfItem(count);
    secondsOfItem(count / 10);
    Compare(
        state, {"itself at a tenth of the size", unit, 1e9, false, target}, [&] { return secondsOfItem(count); },
        [&] { return secondsOfItem(count / 10); });
}

constexpr uint32_t TilesOfFrame = 1000;

/// A time series of 1,000 tiles a frame: opening it, and one tile of each frame.
void Frames(benchmark::State& state)
{
    CompareWithATenth(
        state, "frames", "ns/tile", 1.3,
        [](uint32_t count)
        {
            return Document().With(Stack(1)
                                       .Size(25 * 256, 40 * 256)
                                       .Tiles(256, 256)
                                       .Jpeg()
                                       .T(count / TilesOfFrame)
                                       .Contents(Holes(TileSize)));
        },
        [](const CPath& path, uint32_t count)
        {
            const COpenDocument open(path);
            for (uint32_t time = 0; time < count / TilesOfFrame; ++time)
                open.AtTime(time);
        });
}

/// Frames that are TIFF directories of the document: opening it, and the bytes of each.
void Directories(benchmark::State& state)
{
    CompareWithATenth(
        state, "directories", "ns/directory", 1.3,
        [](uint32_t count) { return Document().With(Stack(1).Size(2, 1).T(count).InDocument(1)); },
        [](const CPath& path, uint32_t count)
        {
            const COpenDocument open(path);
            std::vector<BYTE> strip(2);
            for (uint32_t time = 0; time < count; ++time)
                COpenDocument::ReadBody(open.AtTime(time), strip);
        });
}

/// Stacks of one tile in the document: opening it, and a tile of each.
void Stacks(benchmark::State& state)
{
    CompareWithATenth(
        state, "stacks", "ns/stack", 1.3,
        [](uint32_t count)
        {
            Document document;
            for (uint32_t id = 1; id <= count; ++id)
                document.With(Stack(id).Size(2, 1).InDocument(1));
            return document;
        },
        [](const CPath& path, uint32_t count)
        {
            const COpenDocument open(path);
            Require(open.NumOfGroups() == count, "counting groups");
            for (uint32_t number = 0; number < count; ++number)
                COpenDocument::Image(COpenDocument::Area(open.Group(number), 0));
        });
}

/// Fields of metadata that nobody knows: opening the document.
void Fields(benchmark::State& state)
{
    CompareWithATenth(
        state, "fields", "ns/field", 1.3,
        [](uint32_t count)
        {
            Document document;
            document.With(Stack(1).Size(2, 1).InDocument(1));
            CNode& properties = document.StackProperties(1);
            for (uint32_t i = 0; i < count; ++i)
                properties.Add(Int32(900000 + i % 1000, static_cast<int32_t>(i)));
            return document;
        },
        [](const CPath& path, uint32_t) { const COpenDocument open(path); });
}

Regions RegionsOf(uint32_t count)
{
    return Regions(ManyRegions(count, 1000, 1000));
}

AC_HPROPERTY RegionListOf(const COpenDocument& open)
{
    AC_HPROPERTY set = nullptr;
    AC_PARAMS none{};
    Require(_AC_GetAreaProperty(COpenDocument::Area(open.Group(), 0), L"AnalysisROIList", &none, &set) ==
                AC_RESULT_SUCCESS,
            "_AC_GetAreaProperty");
    return set;
}

void OpenAndListRegions(const CPath& path)
{
    const COpenDocument open(path);
    benchmark::DoNotOptimize(RegionListOf(open));
}

CMaker WithBlob(bool isTree)
{
    return [isTree](uint32_t count)
    {
        Regions regions = RegionsOf(count);
        return Document().With(
            Stack(1).Size(1000, 1000).InDocument(1000).LayerBlob(isTree ? regions.AsTree() : regions.AsXml()));
    };
}

void RegionsAsTree(benchmark::State& state)
{
    CompareWithATenth(state, "trees", "ns/region", 1.5, WithBlob(true),
                      [](const CPath& path, uint32_t) { OpenAndListRegions(path); });
}
void RegionsAsXml(benchmark::State& state)
{
    CompareWithATenth(state, "texts", "ns/region", 1.5, WithBlob(false),
                      [](const CPath& path, uint32_t) { OpenAndListRegions(path); });
}

/// Loading regions of the XML form, beside parsing the same text.
void RegionsBesideXmlParser(benchmark::State& state)
{
    constexpr size_t SizeOfHead = 8; ///< version and size, before the byte order mark
    const auto count = static_cast<uint32_t>(state.range(0));
    const CPath& path = DocumentOf("texts", count, WithBlob(false));
    const ByteString payload = RegionsOf(count).AsXml().Payload();
    const auto peer = [&]
    {
        return SecondsOf(
            [&]
            {
                pugi::xml_document xml;
                Require(xml.load_buffer(payload.data() + SizeOfHead, payload.size() - SizeOfHead), "pugixml's parsing");
            });
    };
    const auto job = [&]
    {
        const COpenDocument open(path);
        return SecondsOf([&] { benchmark::DoNotOptimize(RegionListOf(open)); });
    };
    Compare(state, {"pugixml's parse of the text", "ns/region", PerItem(count), false, 3}, job, peer);
}

BENCHMARK(Frames)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(Directories)->Arg(10000)->UseManualTime()->Iterations(7);
BENCHMARK(Stacks)->Arg(1000)->UseManualTime()->Iterations(7);
BENCHMARK(Fields)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(9);
BENCHMARK(RegionsAsTree)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(RegionsAsXml)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(RegionsBesideXmlParser)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(7);

} // namespace
} // namespace Benchmarks
