#pragma once

#include "SampleDocuments/Node.h"

namespace SampleDocuments
{

struct CColour
{
    uint8_t Red = 0;
    uint8_t Green = 0;
    uint8_t Blue = 0;
    bool operator==(const CColour&) const = default;
};

/// The two forms in which documents store a table of colours.
struct TableForm
{
    enum E
    {
        Volume, ///< a volume that holds the bytes under the tag of values
        Simple  ///< the bytes themselves
    };
};

/// A table of colours for grey pixels of a stack or channel.
struct CLookUpTable
{
    CLookUpTable() = default;
    CLookUpTable(const std::vector<CColour>& colours, TableForm::E form = TableForm::Volume);
    /// Any bytes, also such as make no whole colours.
    static CLookUpTable OfBytes(ByteString bytes, TableForm::E form = TableForm::Volume);

    ByteString Bytes; ///< blue, green, red of each colour
    TableForm::E Form = TableForm::Volume;

    CNode ToNode() const;
};

/// From black to `brightest` in so many steps; 256 of them for 8-bit pixels.
std::vector<CColour> Ramp(size_t numOfColours, CColour brightest);

} // namespace SampleDocuments
