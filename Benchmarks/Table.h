#pragma once
#include <benchmark/benchmark.h>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace Benchmarks
{

/// Prints one line for each job as it is done, as a table in Markdown, and keeps them for a file in JSON.
class CTable : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    /// The machine and all lines so far.
    void WriteTo(const std::filesystem::path& path) const;
    /// True when a job ended in an error.
    bool HasErrors() const { return _hasErrors; }

private:
    void Add(const Run& run);

    nlohmann::ordered_json _machine;
    nlohmann::ordered_json _lines = nlohmann::ordered_json::array();
    bool _hasErrors = false;
};

} // namespace Benchmarks
