#include "HostTool/Table.h"

#include <algorithm>

namespace HostTool
{

namespace
{

/// Characters of a UTF-8 text: continuation bytes take no room.
size_t WidthOf(const std::string& text)
{
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

void CTable::Print(std::ostream& out, const std::string& indent) const
{
    std::vector<size_t> widths;
    for (const Row& row : _Rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    for (const Row& row : _Rows)
    {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(widths[i] - WidthOf(row[i]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        out << indent << line << '\n';
    }
}

} // namespace HostTool
