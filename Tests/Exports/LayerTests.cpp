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
    std::string Without = {};         ///< a folder in it that has a row of its own
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
    const std::string& folder = GetParam().Folder;
    allowed.insert(folder.substr(0, folder.find('/')));
    std::vector<std::string> wrong;
    size_t numOfFiles = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_FOLDER "/" + GetParam().Folder))
    {
        const std::string parent = entry.path().parent_path().filename().string();
        if (!IsSource(entry.path()) || parent == GetParam().Without)
            continue;
        ++numOfFiles;
        const auto found = WrongIncludesOf(entry.path(), allowed);
        wrong.insert(wrong.end(), found.begin(), found.end());
    }
    EXPECT_GT(numOfFiles, 0u);
    EXPECT_EQ(wrong, std::vector<std::string>{});
}

const std::set<std::string> AllLayers = {"Brix", "CommonUtil", "PlatformAbstractionLayer", "CommonImageAccess",
                                         "ZelLoader"};

INSTANTIATE_TEST_SUITE_P(AllFolders, LayerOfTheSources,
                         testing::Values(Layer{"include", {"Brix"}}, Layer{"CommonUtil", {"Brix"}},
                                         Layer{"PlatformAbstractionLayer", {"Brix", "CommonUtil"}},
                                         Layer{"CommonImageAccess", {"Brix", "CommonUtil", "PlatformAbstractionLayer"}},
                                         Layer{"ZelLoader",
                                               {"Brix", "CommonUtil", "PlatformAbstractionLayer", "CommonImageAccess"}},
                                         Layer{"SampleDocuments", {}}, Layer{"HostTool", {"Brix"}, "Reader"},
                                         Layer{"HostTool/Reader", AllLayers}),
                         [](const auto& layer)
                         {
                             std::string name = layer.param.Folder;
                             std::erase(name, '/');
                             return name;
                         });

} // namespace
