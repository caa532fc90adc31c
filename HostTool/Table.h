#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace HostTool
{

/// Rows of texts that are printed with their columns aligned.
class CTable
{
public:
    using Row = std::vector<std::string>;
    void Add(Row row) { _Rows.push_back(std::move(row)); }
    /// Prints each row on a line of its own, behind `indent`, with two blanks between columns.
    void Print(std::ostream& out, const std::string& indent) const;

private:
    std::vector<Row> _Rows;
};

} // namespace HostTool
