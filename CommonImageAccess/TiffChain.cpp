#include "CommonImageAccess/TiffChain.h"

#include "CommonImageAccess/TiffFile.h"
#include "CommonUtil/Log.h"

#include <algorithm>
#include <array>
#include <limits>

namespace CIA
{

namespace
{

constexpr uint64_t SizeOfByteOrder = 2;
constexpr uint64_t SizeOfVersion = 2;
constexpr uint64_t VersionOfBigTiff = 43;
constexpr uint64_t OffsetOfOffset = 4;
constexpr uint64_t OffsetOfOffsetInBigTiff = 8;

constexpr uint64_t MaxNumOfEntries = 65535;    ///< of a directory, also where its format has room for more
constexpr uint64_t MaxNumOfEntriesRead = 4096; ///< libtiff takes no more either

constexpr const char* NotInTheFile = "does not lie in the file";

// Directories may share their values, so that what is read for all of them can be more than the file has.
constexpr uint64_t SizeOfValuesInAnyCase = 64 << 20;
constexpr uint64_t MaxShareOfValues = 64;

uint64_t MaxSizeOfValues(uint64_t sizeOfFile)
{
    if (sizeOfFile > std::numeric_limits<uint64_t>::max() / MaxShareOfValues)
        return std::numeric_limits<uint64_t>::max();
    return std::max(SizeOfValuesInAnyCase, sizeOfFile * MaxShareOfValues);
}

CTiffLayout LayoutOf(CTiffFile& file)
{
    std::array<unsigned char, SizeOfByteOrder + SizeOfVersion> header{};
    file.ReadAt(0, header.data(), header.size());
    const bool isBigEndian = header[0] == 'M' && header[1] == 'M';
    const auto version = std::span<const unsigned char>(header).last(SizeOfVersion);
    return {CTiffLayout(false, isBigEndian).NumberOf(version) == VersionOfBigTiff, isBigEndian};
}

} // namespace

CTiffChain::CTiffChain(CTiffFile& file)
    : _file(file), _layout(LayoutOf(file)),
      _offsetOfFirst(NumberAt(_layout.IsBigTiff() ? OffsetOfOffsetInBigTiff : OffsetOfOffset, _layout.SizeOfOffset()))
{
}

std::optional<CDirectoryForLibtiff> CTiffChain::Directory(uint32_t number)
{
    if (!Find(number))
        return {};
    const CPlace& place = _places[number];
    if (place.WhyItIsNotRead)
    {
        ZEL_LOG("TIFF directory %u %s!", number, place.WhyItIsNotRead);
        _file.FailIfSizeHasChanged();
        return {};
    }
    const std::optional<CNeededEntries> needed = NeededEntriesAt(place);
    if (!needed)
        return {};
    CDirectoryForLibtiff directory{.Bytes = {}, .SizeOfValues = needed->SizeOfValues};
    _layout.AppendNumber(directory.Bytes, needed->Bytes.size() / _layout.SizeOfEntry(), _layout.SizeOfNumOfEntries());
    directory.Bytes.insert(directory.Bytes.end(), needed->Bytes.begin(), needed->Bytes.end());
    _layout.AppendNumber(directory.Bytes, 0, _layout.SizeOfOffset());
    return directory;
}

uint32_t CTiffChain::NumOfDirectories(uint32_t max)
{
    Find(max);
    auto number = static_cast<uint32_t>(_places.size());
    if (number != 0 && !_places.back().OffsetOfNext)
        --number;
    return std::min(number, max);
}

bool CTiffChain::Find(uint32_t number)
{
    while (number >= _places.size())
        if (!AddNext())
            return false;
    return true;
}

bool CTiffChain::AddNext()
{
    const std::optional<uint64_t> offset = _places.empty() ? _offsetOfFirst : _places.back().OffsetOfNext;
    if (!offset)
        _file.FailIfSizeHasChanged();
    if (offset.value_or(0) == 0 || _offsets.contains(*offset))
        return false;
    CCost cost = _cost;
    const CPlace place = PlaceOf(*offset, cost);
    if (_file.HasFailed())
        return false;
    // When memory runs out, all of this is done or nothing.
    if (_places.size() == _places.capacity())
        _places.reserve(2 * _places.size() + 1);
    _offsets.insert(*offset);
    _places.push_back(place);
    _cost = cost;
    return true;
}

CTiffChain::CPlace CTiffChain::PlaceOf(uint64_t offset, CCost& cost)
{
    CPlace place;
    const std::optional<uint64_t> numOfEntries = NumberAt(offset, _layout.SizeOfNumOfEntries());
    if (!numOfEntries || *numOfEntries > MaxNumOfEntries)
    {
        place.WhyItIsNotRead = NotInTheFile;
        return place;
    }
    place.OffsetOfEntries = offset + _layout.SizeOfNumOfEntries();
    place.SizeOfEntries = *numOfEntries * _layout.SizeOfEntry();
    place.OffsetOfNext = NumberAt(place.OffsetOfEntries + place.SizeOfEntries, _layout.SizeOfOffset());
    place.WhyItIsNotRead = *numOfEntries > MaxNumOfEntriesRead ? "has too many entries" : AddTo(cost, place);
    return place;
}

const char* CTiffChain::AddTo(CCost& cost, const CPlace& place)
{
    if (place.SizeOfEntries > _file.Size() - cost.SizeOfEntries)
        return "and those before it have more entries than the file could hold";
    cost.SizeOfEntries += place.SizeOfEntries;
    const std::optional<CNeededEntries> needed = NeededEntriesAt(place);
    if (!needed)
        return NotInTheFile;
    if (needed->SizeOfValues > MaxSizeOfValues(_file.Size()) - cost.SizeOfValues)
        return "and those before it have many times more values than the file could hold";
    cost.SizeOfValues += needed->SizeOfValues;
    return nullptr;
}

std::optional<CNeededEntries> CTiffChain::NeededEntriesAt(const CPlace& place)
{
    std::vector<unsigned char> entries(place.SizeOfEntries);
    if (_file.ReadAt(place.OffsetOfEntries, entries.data(), entries.size()) != entries.size())
        return {};
    return NeededEntriesOf(entries, _layout, _file.Size());
}

std::optional<uint64_t> CTiffChain::NumberAt(uint64_t offset, uint64_t sizeOfNumber)
{
    std::array<unsigned char, sizeof(uint64_t)> bytes{};
    if (_file.ReadAt(offset, bytes.data(), sizeOfNumber) != sizeOfNumber)
        return {};
    return _layout.NumberOf(std::span<const unsigned char>(bytes).first(sizeOfNumber));
}

} // namespace CIA
