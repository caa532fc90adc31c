// Measures the plug-in beside what limits it. `--table=FILE` also writes the table in JSON.

#include "Benchmarks/Table.h"

#include <cstring>

int main(int argc, char** argv)
{
    constexpr const char* TableOption = "--table=";
    benchmark::Initialize(&argc, argv);
    std::filesystem::path table;
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], TableOption, std::strlen(TableOption)) == 0)
            table = argv[i] + std::strlen(TableOption);
    Benchmarks::CTable reporter;
    const size_t numOfJobs = benchmark::RunSpecifiedBenchmarks(&reporter);
    if (!table.empty())
        reporter.WriteTo(table);
    return numOfJobs > 0 && !reporter.HasErrors() ? 0 : 1;
}
