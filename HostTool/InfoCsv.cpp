#include "HostTool/InfoCsv.h"

#include "HostTool/Text.h"

#include <algorithm>

namespace HostTool
{

namespace
{

/// Fields with commas between them, in the order of the head.
class CCsvLine
{
public:
    void Add(const std::string& text)
    {
        _Text += (_IsFirst ? "" : ",") + CsvField(Printable(text));
        _IsFirst = false;
    }
    void Add(const std::optional<std::string>& text) { Add(text.value_or("")); }
    void Add(const std::optional<double>& number) { Add(number ? TextOf(*number) : std::string()); }
    void AddCount(uint64_t count) { Add(std::to_string(count)); }
    std::string Text() const { return _Text + "\n"; }

private:
    std::string _Text;
    bool _IsFirst = true;
};

uint64_t PositionsOn(const CGroupFacts& group, AC_AxisType type)
{
    const auto axis = std::find_if(group.Axes.begin(), group.Axes.end(),
                                   [&](const CAxisFacts& candidate) { return candidate.Type == type; });
    return axis == group.Axes.end() ? 1 : static_cast<uint64_t>(axis->NumOfPositions);
}

void AddFinestLevel(CCsvLine& line, const CGroupFacts& group)
{
    static const CLevelFacts unknown;
    const CLevelFacts& finest = group.Levels.empty() ? unknown : group.Levels.front();
    const CMN_RECT rect = finest.PictureRect.value_or(finest.TilesRect);
    line.AddCount(rect.width);
    line.AddCount(rect.height);
    line.Add(finest.PixelWidth);
    line.Add(finest.PixelHeight);
    line.AddCount(finest.TileWidth);
    line.AddCount(finest.TileHeight);
    line.AddCount(group.Levels.size());
}

std::string LineOf(const CInfo& info, const CGroupFacts& group, const std::string& error)
{
    CCsvLine line;
    line.Add(info.Path.string());
    line.AddCount(static_cast<uint64_t>(group.Number));
    line.Add(group.Name);
    AddFinestLevel(line, group);
    line.AddCount(group.Channels.size());
    for (const AC_AxisType axis : {AC_AT_Z, AC_AT_TIME, AC_AT_LAMBDA})
        line.AddCount(PositionsOn(group, axis));
    line.Add(group.Channels.empty() ? std::nullopt : group.Channels.front().Format);
    line.Add(group.Lens ? group.Lens->Magnification : std::nullopt);
    line.AddCount(group.NumOfRegions);
    line.Add(info.Facts->Created);
    line.Add(error);
    return line.Text();
}

} // namespace

std::string CsvHead()
{
    return "path,group,name,width,height,pixelWidthUm,pixelHeightUm,tileWidth,tileHeight,levels,channels,z,t,lambda,"
           "compression,magnification,regions,created,error\n";
}

std::string CsvOf(const CInfo& info)
{
    const auto isError = [](const CDiagnostic& remark) { return remark.Severity == "error"; };
    const auto failure = std::find_if(info.Remarks.begin(), info.Remarks.end(), isError);
    const std::string error = failure == info.Remarks.end() ? "" : failure->Text;
    std::string lines;
    if (info.Facts)
        for (const CGroupFacts& group : info.Facts->Groups)
            lines += LineOf(info, group, error);
    if (!lines.empty())
        return lines;
    const std::string head = CsvHead();
    const auto numOfFields = static_cast<size_t>(std::count(head.begin(), head.end(), ',')) + 1;
    return CsvField(Printable(info.Path.string())) + std::string(numOfFields - 1, ',') + CsvField(Printable(error)) +
           "\n";
}

} // namespace HostTool
