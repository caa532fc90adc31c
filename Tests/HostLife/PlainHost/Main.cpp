// A host without libraries of its own: loads the plug-in so many times, walks all documents and unloads it. Prints what
// that has changed, which is nothing.

#include "Tests/HostLife/Session.h"
#include "Tests/HostLife/State/HostState.h"
#include "Tests/LoadedPlugin/LoadedPlugin.h"

#include <cstdio>
#include <cstdlib>

namespace
{

/// What loading, using and unloading it so many times has changed.
std::string ChangesAfter(int numOfLoads, const std::vector<std::wstring>& names)
{
    const std::vector<Fuzzing::CWalkAnswers> answers = WalkAll(names);
    UnloadPlugin();
    const CHostState before = StateOfThisProcess();
    std::string changes;
    for (int n = 0; n < numOfLoads && changes.empty(); ++n)
    {
        if (WalkAll(names) != answers)
            changes += "other answers\n";
        UnloadPlugin();
        if (IsPluginInMemory())
            changes += "the plug-in is still in memory\n";
        changes += Difference(before, StateOfThisProcess());
    }
    return changes;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::wstring> names;
    for (int i = 2; i < argc; ++i)
    {
        const std::string name = argv[i];
        names.emplace_back(name.begin(), name.end());
    }
    try
    {
        std::printf("%s", ChangesAfter(std::atoi(argv[1]), names).c_str());
    }
    catch (const std::exception& exception)
    {
        std::printf("%s\n", exception.what());
    }
    return 0;
}
