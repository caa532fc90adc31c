// Every byte and every length: small documents of each kind, with each byte of each of their files changed in four ways
// and each file cut off at each length, are opened and walked whole, each in a process that may use 2 seconds of a
// processor and 256 MB. Whatever is no answer and no end by design is told, and is a failure.

#include "Fuzzing/EveryByte/Damage.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/FuzzTarget.h"
#include "Fuzzing/Support/GuardedChild.h"
#include "Fuzzing/Walk/FullWalk.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>

using namespace Fuzzing;

namespace
{

struct CTotals
{
    size_t NumOfCases = 0;
    size_t NumOfEndsByDesign = 0;
    size_t NumOfFindings = 0;
    double MostSeconds = 0;
    uint64_t MostBytes = 0;

    void Add(const CEndOfChild& end)
    {
        ++NumOfCases;
        NumOfEndsByDesign += end.How == HowItEnded::ByDesign;
        NumOfFindings += !end.IsGood();
        MostSeconds = std::max(MostSeconds, end.SecondsOfProcessor);
        MostBytes = std::max(MostBytes, end.BytesOfMemory);
    }
    void Add(const CTotals& other)
    {
        NumOfCases += other.NumOfCases;
        NumOfEndsByDesign += other.NumOfEndsByDesign;
        NumOfFindings += other.NumOfFindings;
        MostSeconds = std::max(MostSeconds, other.MostSeconds);
        MostBytes = std::max(MostBytes, other.MostBytes);
    }
    void Print(const char* name) const
    {
        std::printf("%-18s %8zu %10zu %9zu %8.2f %8.0f\n", name, NumOfCases, NumOfEndsByDesign, NumOfFindings,
                    MostSeconds, static_cast<double>(MostBytes) / (1 << 20));
        std::fflush(stdout);
    }
};

/// The files of a slide: the document, and the stores beside it.
std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

CEndOfChild WalkInChild(const std::filesystem::path& document)
{
    const std::wstring name = document.wstring();
    return RunGuarded([&] { WalkEverything(name); });
}

/// Does each damage of a file, or every so many of them, and walks the document.
CTotals RunFile(const std::filesystem::path& document, const CDamagedFile& file, size_t step)
{
    CTotals totals;
    for (size_t number = step / 2; number < NumOfDamages(file.Size()); number += step)
    {
        const CDamage damage = DamageOfNumber(number);
        if (!file.Damage(damage))
            continue;
        const CEndOfChild end = WalkInChild(document);
        totals.Add(end);
        if (!end.IsGood())
            std::printf("  %s, %s: %s\n", file.Name().filename().c_str(), damage.ToString().c_str(),
                        end.ToString().c_str());
    }
    file.Mend();
    return totals;
}

/// `sample`: about so many damages of the slide, spread over its files; all of them if not set.
CTotals RunSlide(CSampleSlide& slide, const std::optional<size_t>& sample)
{
    const CScratchFolder folder;
    const std::filesystem::path document = slide.Made.WriteTo(folder.File("slide.zel"));
    std::vector<CDamagedFile> files;
    size_t numOfDamages = 0;
    for (const std::filesystem::path& file : FilesOf(folder.Path()))
        numOfDamages += NumOfDamages(files.emplace_back(file).Size());
    // Odd and no multiple of 5, so that a sample meets each kind of damage.
    size_t step = sample ? std::max<size_t>(numOfDamages / *sample, 1) : 1;
    while (sample && (step % 2 == 0 || step % 5 == 0))
        ++step;
    CTotals totals;
    for (const CDamagedFile& file : files)
        totals.Add(RunFile(document, file, step));
    return totals;
}

int Run(const std::optional<size_t>& sample, const std::string& onlyName)
{
    std::printf("%-18s %8s %10s %9s %8s %8s\n", "document", "damages", "by design", "findings", "most s", "most MB");
    CTotals totals;
    for (CSampleSlide& slide : SampleSlides())
    {
        if (!onlyName.empty() && slide.Name != onlyName)
            continue;
        const CTotals ofSlide = RunSlide(slide, sample);
        ofSlide.Print(slide.Name.c_str());
        totals.Add(ofSlide);
    }
    totals.Print("all");
    return totals.NumOfFindings == 0 && totals.NumOfCases > 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // a run takes long: each line is told at once
    std::optional<size_t> sample;
    std::string name;
    for (int n = 1; n < argc; ++n)
        if (std::strcmp(argv[n], "--sample") == 0 && n + 1 < argc)
            sample = std::max(1, std::atoi(argv[++n]));
        else if (argv[n][0] != '-')
            name = argv[n];
        else
        {
            std::fputs("usage: every-byte [--sample DAMAGES] [DOCUMENT]\n"
                       "Damages small documents in every way, or about so many ways each, and walks them.\n",
                       stderr);
            return 2;
        }
    try
    {
        return Run(sample, name);
    }
    catch (const std::exception& exception)
    {
        std::fprintf(stderr, "every-byte: %s\n", exception.what());
        return 1;
    }
}
