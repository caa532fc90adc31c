#include "SampleDocuments/zelmake/Report.h"

#include <nlohmann/json.hpp>

namespace ZelMake
{

namespace fs = std::filesystem;
using namespace SampleDocuments;

namespace
{

int32_t NumOfColumns(const CLevelGrid& grid)
{
    return grid.ColumnRange.Last - grid.ColumnRange.First + 1;
}

int32_t NumOfRows(const CLevelGrid& grid)
{
    return grid.RowRange.Last - grid.RowRange.First + 1;
}

/// The file that holds the pixels of a stack; empty if there is none.
fs::path FileOf(const Stack& stack, const fs::path& path, const Document& document)
{
    const CStackPlan& plan = stack.Plan();
    if (plan.Storage == StackStorage::InDocument)
        return path;
    const bool isStored = plan.IsStoreWritten && plan.Storage != StackStorage::VectorGraphics;
    return isStored ? document.StorePath(path, stack.Id()) : fs::path();
}

/// The size of a tile or strip, at the full resolution.
std::string TileSizeOf(const Stack& stack)
{
    const CTileRegion region = stack.RegionOf({});
    return std::to_string(region.Width) + " x " + std::to_string(region.Height);
}

} // namespace

std::string ReportAsText(const fs::path& path, const Document& document)
{
    std::string text = "wrote " + path.string() + "\n";
    for (const Stack& stack : document.Stacks())
    {
        const CStackPlan& plan = stack.Plan();
        const fs::path store = FileOf(stack, path, document);
        text += "  stack " + std::to_string(stack.Id()) + ": " + std::to_string(plan.Width) + " x " +
                std::to_string(plan.Height) + " pixels, " + std::to_string(stack.Grids().size()) + " levels, " +
                std::to_string(stack.Frames().size()) + " frames, " + std::to_string(stack.NumOfTiles()) +
                (stack.IsStriped() ? " strips of " : " tiles of ") + TileSizeOf(stack);
        text += store.empty() ? ", in no file\n"
                              : " in " + store.string() + " (" + std::to_string(fs::file_size(store)) + " bytes)\n";
    }
    return text;
}

std::string ReportAsJson(const fs::path& path, const Document& document)
{
    nlohmann::ordered_json report = {{"document", path.string()}, {"stacks", nlohmann::ordered_json::array()}};
    for (const Stack& stack : document.Stacks())
    {
        const CStackPlan& plan = stack.Plan();
        const fs::path store = FileOf(stack, path, document);
        nlohmann::ordered_json levels = nlohmann::ordered_json::array();
        for (const CLevelGrid& grid : stack.Grids())
            levels.push_back({{"level", grid.Level}, {"columns", NumOfColumns(grid)}, {"rows", NumOfRows(grid)}});
        report["stacks"].push_back({{"id", stack.Id()},
                                    {"width", plan.Width},
                                    {"height", plan.Height},
                                    {"tileWidth", stack.RegionOf({}).Width},
                                    {"tileHeight", stack.RegionOf({}).Height},
                                    {"frames", stack.Frames().size()},
                                    {"tiles", stack.NumOfTiles()},
                                    {"store", store.string()},
                                    {"bytes", store.empty() ? 0 : fs::file_size(store)},
                                    {"levels", levels}});
    }
    return report.dump(2) + "\n";
}

} // namespace ZelMake
