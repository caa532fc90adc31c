#pragma once

#include "HostTool/Reader/ReaderFile.h"

#include <ostream>
#include <string>
#include <vector>

namespace Zel
{
struct CCatalogueClass;
}

namespace HostTool
{

struct CTreeRequest
{
    uint32_t MostDepth = 200;      ///< of what is printed, below the volume where it begins
    std::vector<uint32_t> TagPath; ///< print only what lies under these tags, from the root
};

/// Prints the tag tree of a document field by field: offset, tag with second tag, name out of the catalogue, type and
/// value. It reads the file by itself and as far as it can: what the reader would give a document up for is a line in
/// the output, and its siblings follow.
class CTreePrinter
{
public:
    CTreePrinter(std::ostream& out, const CReaderFile& file, const CTreeRequest& request)
        : _Out(out), _File(file), _Request(request)
    {
    }

    void Print();

    uint64_t NumOfErrors() const { return _NumOfErrors; } ///< places at which the reader gives something up
    uint64_t NumOfFields() const { return _NumOfPrinted; }

private:
    struct CField;
    /// Where a volume stands in the walk.
    struct CLevel
    {
        uint32_t Depth = 0;                          ///< of its children; the root's have 0
        size_t NumOfMatched = 0;                     ///< tags of the path that led here
        const Zel::CCatalogueClass* Class = nullptr; ///< null below a tag that the catalogue doesn't know
    };

    void WalkVolume(uint64_t offset, const CLevel& level);
    /// False if the chain of siblings can't be followed.
    bool ReadField(uint64_t offset, CField& field);
    void VisitField(const CField& field, const CLevel& level);
    void PrintField(const CField& field, const CLevel& level, const std::string& what);
    std::string DescribeVolume(uint64_t offset);
    std::string DescribeValue(const CField& field);
    std::string DescribeBlob(const CField& field);
    bool IsPrinted(size_t numOfMatched, uint32_t depth) const;
    void PrintRemark(const std::string& kind, const CLevel& level, const std::string& text);
    void PrintError(const CLevel& level, const std::string& text);

    std::ostream& _Out;
    const CReaderFile& _File;
    const CTreeRequest& _Request;
    uint64_t _NumOfErrors = 0;
    uint64_t _NumOfFieldsRead = 0;
    uint64_t _NumOfPrinted = 0;
};

} // namespace HostTool
