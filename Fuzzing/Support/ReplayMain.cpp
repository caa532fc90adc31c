// The plain main of a target: runs each input that is named on the command line, or lies in a folder that is, in a
// child of its own, and tells which of them are findings. 0 when none is.

#include "Fuzzing/Support/FuzzTarget.h"
#include "Fuzzing/Support/GuardedChild.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace Fuzzing;

namespace
{

/// The files that an argument stands for, without the words that lie beside them.
std::vector<std::filesystem::path> InputsOf(const std::filesystem::path& argument)
{
    if (!std::filesystem::is_directory(argument))
        return {argument};
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(argument))
        if (entry.is_regular_file() && entry.path().extension() != ".md")
            inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

std::vector<char> BytesOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// True when it is no finding.
bool Replay(const std::filesystem::path& input, bool isLoud)
{
    const std::vector<char> bytes = BytesOf(input);
    const auto run = [&] { LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()); };
    const CEndOfChild end = RunGuarded(run, {}, isLoud);
    if (!end.IsGood() || isLoud)
        std::printf("%s: %s\n", input.c_str(), end.ToString().c_str());
    return end.IsGood();
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> inputs;
    for (int n = 1; n < argc; ++n)
        if (std::filesystem::exists(argv[n]))
            for (const auto& input : InputsOf(argv[n]))
                inputs.push_back(input);
    const bool isLoud = inputs.size() == 1;
    const auto numOfFindings =
        std::count_if(inputs.begin(), inputs.end(), [&](const auto& input) { return !Replay(input, isLoud); });
    std::printf("%zu inputs, %td findings\n", inputs.size(), numOfFindings);
    if (inputs.empty())
        std::puts("There is nothing to replay: name files or folders of inputs.");
    return numOfFindings == 0 && !inputs.empty() ? 0 : 1;
}
