#pragma once

#include "HostTool/HostError.h"

#include <array>
#include <cstdint>
#include <string>

namespace HostTool
{

/// What two documents differ in.
enum class DiffKind : uint8_t
{
    Property,
    Region,
    Tile,
};

/// The differences of two documents: a line for each, printed when it is found, and how many there are.
class CDiffReport
{
public:
    /// Without `isEachListed` only the first lines of a kind are printed, and one that counts the rest.
    CDiffReport(const std::filesystem::path& a, const std::filesystem::path& b, bool isEachListed)
        : _A(a), _B(b), _IsEachListed(isEachListed)
    {
    }

    /// A difference: "group 0, level 1: ...".
    void Add(DiffKind kind, const std::string& line);
    /// Tiles that could not be read, and so not be compared.
    void AddFailures(const std::string& line, uint64_t count = 1);
    /// Tells that so many of a kind are compared.
    void Compared(DiffKind kind, uint64_t count) { _Kinds[static_cast<size_t>(kind)].NumOfCompared += count; }
    /// No more of this kind follow.
    void Finish(DiffKind kind) const;

    /// Prints the summary. Throws CHostError unless the documents are equal.
    void Conclude() const;

private:
    struct CCounts
    {
        uint64_t NumOfCompared = 0;
        uint64_t NumOfDifferences = 0;
    };

    void Print(const std::string& line, uint64_t number) const;

    const std::filesystem::path& _A;
    const std::filesystem::path& _B;
    bool _IsEachListed;
    std::array<CCounts, 3> _Kinds;
    uint64_t _NumOfFailures = 0; ///< in tiles
    uint64_t _NumOfFailureLines = 0;
};

} // namespace HostTool
