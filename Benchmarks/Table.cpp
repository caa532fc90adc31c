#include "Benchmarks/Table.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <gnu/libc-version.h>
#include <sys/sysinfo.h>
#include <sys/utsname.h>

namespace Benchmarks
{

namespace
{

std::string NameOfProcessor()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    return "unknown";
}

nlohmann::ordered_json Machine()
{
    utsname system{};
    uname(&system);
    struct sysinfo memory
    {
    };
    sysinfo(&memory);
    double load[3] = {};
    getloadavg(load, 3);
    std::array<char, 32> now{};
    const std::time_t time = std::time(nullptr);
    std::strftime(now.data(), now.size(), "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&time));
    return {{"processor", NameOfProcessor()},
            {"processors", get_nprocs()},
            {"memory_in_gib", static_cast<double>(memory.totalram) * memory.mem_unit / (1 << 30)},
            {"kernel", system.release},
            {"c_library", gnu_get_libc_version()},
            {"compiler", __VERSION__},
            {"load_at_start", load[0]},
            {"time", now.data()}};
}

double Counter(const benchmark::BenchmarkReporter::Run& run, const char* name)
{
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

std::string TextOfTarget(double target, bool isShare)
{
    if (target == 0)
        return "shown";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), isShare ? ">= %g" : "<= %g", target);
    return text.data();
}

} // namespace

bool CTable::ReportContext(const Context&)
{
    _machine = Machine();
    std::printf("%s, %d processors, %.1f GiB, Linux %s, glibc %s, g++ %s, load %.2f\n\n",
                _machine["processor"].get<std::string>().c_str(), _machine["processors"].get<int>(),
                _machine["memory_in_gib"].get<double>(), _machine["kernel"].get<std::string>().c_str(),
                _machine["c_library"].get<std::string>().c_str(), __VERSION__, _machine["load_at_start"].get<double>());
    std::printf("| job | size | ours | beside | peer | unit | ratio | spread | target | met |\n"
                "|---|---:|---:|---|---:|---|---:|---:|---|---|\n");
    return true;
}

void CTable::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs)
        Add(run);
}

void CTable::Add(const Run& run)
{
    if (run.error_occurred)
    {
        std::printf("| %s | %s |\n", run.benchmark_name().c_str(), run.error_message.c_str());
        _hasErrors = true;
        return;
    }
    const double target = Counter(run, "target");
    const bool isShare = Counter(run, "is_share") != 0;
    const double ratio = Counter(run, "ratio");
    const bool isMet = isShare ? ratio >= target : ratio <= target;
    const std::string met = target == 0 ? "" : isMet ? "yes" : "no";
    const std::string unit = run.report_label.substr(0, run.report_label.find('|'));
    const std::string beside = run.report_label.substr(run.report_label.find('|') + 1);
    const std::string& job = run.run_name.function_name;
    const std::string& size = run.run_name.args;
    std::printf("| %s | %s | %.5g | %s | %.5g | %s | %.3g | %.0f %% | %s | %s |\n", job.c_str(), size.c_str(),
                Counter(run, "ours"), beside.c_str(), Counter(run, "peer"), unit.c_str(), ratio,
                Counter(run, "spread") * 100, TextOfTarget(target, isShare).c_str(), met.c_str());
    std::fflush(stdout);
    nlohmann::ordered_json line = {{"job", job},
                                   {"size", size},
                                   {"ours", Counter(run, "ours")},
                                   {"beside", beside},
                                   {"peer", Counter(run, "peer")},
                                   {"unit", unit},
                                   {"ratio", ratio},
                                   {"spread", Counter(run, "spread")},
                                   {"repetitions", run.iterations}};
    if (target != 0)
    {
        line[isShare ? "at_least" : "at_most"] = target;
        line["met"] = isMet;
    }
    _lines.push_back(std::move(line));
}

void CTable::WriteTo(const std::filesystem::path& path) const
{
    std::ofstream file(path);
    file << nlohmann::ordered_json{{"machine", _machine}, {"jobs", _lines}}.dump(2) << '\n';
    file.close();
    if (!file)
        std::fprintf(stderr, "Benchmarks: cannot write %s\n", path.c_str());
}

} // namespace Benchmarks
