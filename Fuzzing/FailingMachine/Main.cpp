// The failing machine: small documents of each kind are opened and walked whole, each time with another allocation, or
// another call on a file, that fails. See CFailingWalk for what is a finding; so is a process that ends or hangs.

#include "Fuzzing/FailingMachine/FailingWalk.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/FuzzTarget.h"
#include "Fuzzing/Support/SharedWithChild.h"
#include "PlatformAbstractionLayer/LogHook.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

using namespace Fuzzing;

namespace
{

struct CNamedFailure
{
    const char* Name;
    CMachineFailure Failure;
};

const std::vector<CNamedFailure> FailuresOfMemory = {
    {"an allocation", {FileFailure::Nothing, FailureSpan::OneCall}},
    {"all to the end of a call", {FileFailure::Nothing, FailureSpan::RestOfFunction}},
};

const std::vector<CNamedFailure> FailuresOfFiles = {
    {"a call on a file", {FileFailure::Broken, FailureSpan::OneCall}},
    {"all to the end of a call", {FileFailure::Broken, FailureSpan::RestOfFunction}},
    {"a read finds the end", {FileFailure::CutOff, FailureSpan::OneCall}},
    {"a read brings half", {FileFailure::Short, FailureSpan::OneCall}},
    {"an open, no handle left", {FileFailure::NoHandle, FailureSpan::OneCall}},
    {"an open, no access", {FileFailure::NoAccess, FailureSpan::OneCall}},
};

struct COptions
{
    bool OfFiles = false;
    std::optional<uint64_t> Sample; ///< about so many cases of each failure
    std::optional<uint64_t> Number; ///< this one alone
    bool IsLogRead = false;
    std::string Document;
};

/// How far a child has come, which its parent reads.
struct CProgress
{
    uint64_t Number = 0;
    uint64_t NumOfCases = 0;
    uint64_t NumOfFindings = 0;
};

struct CNumbers
{
    uint64_t First;
    uint64_t Last;
    uint64_t Step;
};

CNumbers NumbersOf(uint64_t numOfCalls, const COptions& options)
{
    if (options.Number)
        return {*options.Number, *options.Number, 1};
    // Odd, so that of calls in pairs both are met.
    const uint64_t step = options.Sample ? numOfCalls / *options.Sample | 1 : 1;
    return {1 + step / 2, numOfCalls, step};
}

void TellFinding(const CNamedFailure& failure, uint64_t number, const std::string& finding)
{
    std::printf("  %s fails, number %llu: %s\n", failure.Name, static_cast<unsigned long long>(number),
                finding.c_str());
    std::fflush(stdout);
}

/// Runs cases in this process, to the last one.
void RunCases(const CFailingWalk& walk, const CNamedFailure& failure, const CNumbers& numbers, CProgress& progress)
{
    constexpr unsigned MaxSecondsOfCase = 20;
    for (uint64_t number = numbers.First; number <= numbers.Last; number += numbers.Step)
    {
        progress.Number = number;
        alarm(MaxSecondsOfCase);
        const std::string finding = walk.Run(number, failure.Failure);
        ++progress.NumOfCases;
        if (finding.empty())
            continue;
        ++progress.NumOfFindings;
        TellFinding(failure, number, finding);
    }
}

/// The same in a child. True when it came to the last one; else it ended at the one that `progress` tells.
bool RunCasesInChild(const CFailingWalk& walk, const CNamedFailure& failure, const CNumbers& numbers,
                     CProgress& progress, std::string& howItEnded)
{
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot start a process");
    if (child == 0)
    {
        RunCases(walk, failure, numbers, progress);
        _exit(0);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw std::runtime_error("cannot wait for a process");
    if (WIFSIGNALED(status))
        howItEnded = std::string("ends the process: ") + strsignal(WTERMSIG(status));
    else if (WEXITSTATUS(status) != 0)
        howItEnded = "ends the process";
    return howItEnded.empty();
}

CProgress RunFailure(const std::string& document, const CFailingWalk& walk, const CNamedFailure& failure,
                     const COptions& options)
{
    const uint64_t numOfCalls = walk.NumOfCalls(failure.Failure.File);
    CNumbers numbers = NumbersOf(numOfCalls, options);
    const CSharedWithChild<CProgress> progress;
    std::string howItEnded;
    while (numbers.First <= numbers.Last && !RunCasesInChild(walk, failure, numbers, *progress, howItEnded))
    {
        TellFinding(failure, progress->Number, std::exchange(howItEnded, {}));
        ++progress->NumOfCases;
        ++progress->NumOfFindings;
        numbers.First = progress->Number + numbers.Step;
    }
    std::printf("%-18s %-26s %8llu %8llu %9llu\n", document.c_str(), failure.Name,
                static_cast<unsigned long long>(numOfCalls), static_cast<unsigned long long>(progress->NumOfCases),
                static_cast<unsigned long long>(progress->NumOfFindings));
    std::fflush(stdout);
    return *progress;
}

void ReadLog(const CLogLine&) {}

int Run(const COptions& options)
{
    CProgress totals;
    std::printf("%-18s %-26s %8s %8s %9s\n", "document", "what fails", "calls", "cases", "findings");
    for (CSampleSlide& slide : SampleSlides())
    {
        if (!options.Document.empty() && slide.Name != options.Document)
            continue;
        const CScratchFolder folder;
        const CFailingWalk walk(slide.Made.WriteTo(folder.File("slide.zel")).wstring());
        for (const CNamedFailure& failure : options.OfFiles ? FailuresOfFiles : FailuresOfMemory)
        {
            const CProgress progress = RunFailure(slide.Name, walk, failure, options);
            totals.NumOfCases += progress.NumOfCases;
            totals.NumOfFindings += progress.NumOfFindings;
        }
    }
    std::printf("%llu cases, %llu findings\n", static_cast<unsigned long long>(totals.NumOfCases),
                static_cast<unsigned long long>(totals.NumOfFindings));
    return totals.NumOfFindings == 0 && totals.NumOfCases > 0 ? 0 : 1;
}

std::optional<COptions> OptionsOf(int argc, char** argv)
{
    COptions options;
    if (argc < 2 || (std::strcmp(argv[1], "allocations") != 0 && std::strcmp(argv[1], "files") != 0))
        return std::nullopt;
    options.OfFiles = std::strcmp(argv[1], "files") == 0;
    for (int n = 2; n < argc; ++n)
        if (std::strcmp(argv[n], "--sample") == 0 && n + 1 < argc)
            options.Sample = static_cast<uint64_t>(std::max(1, std::atoi(argv[++n])));
        else if (std::strcmp(argv[n], "--number") == 0 && n + 1 < argc)
            options.Number = static_cast<uint64_t>(std::max(1, std::atoi(argv[++n])));
        else if (std::strcmp(argv[n], "--log") == 0)
            options.IsLogRead = true;
        else if (argv[n][0] != '-')
            options.Document = argv[n];
        else
            return std::nullopt;
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // a run takes long: each line is told at once
    const std::optional<COptions> options = OptionsOf(argc, argv);
    if (!options)
    {
        std::fputs("usage: failing-machine allocations|files [--sample CASES] [--number CALL] [--log] [DOCUMENT]\n"
                   "Opens and walks small documents while one call after the other fails: every one of them, about so\n"
                   "many of each kind, or the one of that number. --log: somebody reads the log.\n",
                   stderr);
        return 2;
    }
    try
    {
        SetLogReader(options->IsLogRead ? ReadLog : nullptr);
        return Run(*options);
    }
    catch (const std::exception& exception)
    {
        std::fprintf(stderr, "failing-machine: %s\n", exception.what());
        return 1;
    }
}
