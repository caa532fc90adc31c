#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

/// Each folder includes headers of the folders below it only, by names that begin at the root.

namespace
{

struct Layer
{
    std::string Folder;
    std::set<std::string> MayInclude; ///< beside its own folder
};

std::ostream& operator<<(std::ostream& stream, const Layer& layer)
{
    return stream << layer.Folder;
}

bool IsSource(const std::filesystem::path& path)
{
    return path.extension() == ".h" || path.extension() == ".cpp" || path.extension() == ".c";
}

/// The `#include "..."` lines of a file that name a header of a folder that is not among `allowed`.
std::vector<std::string> WrongIncludesOf(const std::filesystem::path& file, const std::set<std::string>& allowed)
{
    static const std::regex include("\\s*#\\s*include\\s+\"([^/\"]*)(/?).*");
    std::vector<std::string> wrong;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
    {
        std::smatch match;
        if (std::regex_match(line, match, include) && (match[2] != "/" || !allowed.contains(match[1])))
            wrong.push_back(file.string() + ": " + line);
    }
    return wrong;
}

class LayerOfTheSources : public testing::TestWithParam<Layer>
{
};

TEST_P(LayerOfTheSources, IncludesOnlyWhatLiesBelowIt)
{
    std::set<std::string> allowed = GetParam().MayInclude;
    allowed.insert(GetParam().Folder);
    std::vector<std::string> wrong;
    size_t numOfFiles = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_FOLDER "/" + GetParam().Folder))
    {
        if (!IsSource(entry.path()))
            continue;
        ++numOfFiles;
        const auto found = WrongIncludesOf(entry.path(), allowed);
        wrong.insert(wrong.end(), found.begin(), found.end());
    }
    EXPECT_GT(numOfFiles, 0u);
    EXPECT_EQ(wrong, std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(AllFolders, LayerOfTheSources,
                         testing::Values(Layer{"include", {"Brix"}}, Layer{"CommonUtil", {"Brix"}},
                                         Layer{"PlatformAbstractionLayer", {"Brix", "CommonUtil"}},
                                         Layer{"CommonImageAccess", {"Brix", "CommonUtil", "PlatformAbstractionLayer"}},
                                         Layer{"ZelLoader",
                                               {"Brix", "CommonUtil", "PlatformAbstractionLayer", "CommonImageAccess"}},
                                         Layer{"SampleDocuments", {}}, Layer{"HostTool", {"Brix"}}),
                         [](const auto& layer) { return layer.param.Folder; });

} // namespace
