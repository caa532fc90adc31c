#include "SampleDocuments/LookUpTable.h"

#include "SampleDocuments/Tags.h"

namespace SampleDocuments
{

CLookUpTable::CLookUpTable(const std::vector<CColour>& colours, TableForm::E form) : Form(form)
{
    for (const CColour& colour : colours)
        for (const uint8_t byte : {colour.Blue, colour.Green, colour.Red})
            Bytes.push_back(byte);
}

CLookUpTable CLookUpTable::OfBytes(ByteString bytes, TableForm::E form)
{
    CLookUpTable table({}, form);
    table.Bytes = std::move(bytes);
    return table;
}

CNode CLookUpTable::ToNode() const
{
    return Form == TableForm::Volume ? Volume(Tag::LookUpTable, {ByteArray(Tag::Value, Bytes)})
                                     : ByteArray(Tag::LookUpTable, Bytes);
}

std::vector<CColour> Ramp(size_t numOfColours, CColour brightest)
{
    const size_t last = numOfColours > 1 ? numOfColours - 1 : 1;
    const auto part = [last](uint8_t full, size_t i) { return static_cast<uint8_t>((full * i + last / 2) / last); };
    std::vector<CColour> colours;
    colours.reserve(numOfColours);
    for (size_t i = 0; i < numOfColours; ++i)
        colours.push_back({part(brightest.Red, i), part(brightest.Green, i), part(brightest.Blue, i)});
    return colours;
}

} // namespace SampleDocuments
