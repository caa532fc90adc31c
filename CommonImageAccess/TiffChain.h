#pragma once
#include "CommonImageAccess/TiffEntries.h"

#include <cstdint>
#include <optional>
#include <unordered_set>
#include <vector>

namespace CIA
{

class CTiffFile;

/// A directory as libtiff is to see it.
struct CDirectoryForLibtiff
{
    std::vector<unsigned char> Bytes; ///< the number of entries, those that a picture needs, no next directory
    uint64_t SizeOfValues = 0;        ///< bytes of those values that lie elsewhere in the file
};

/// The chain of directories of a TIFF file, by their numbers from 0, followed as far as they are asked for. Which of
/// them can be read depends on the file alone: what they take is added up along the chain.
class CTiffChain
{
public:
    /// Reads the header, which is one of a TIFF.
    explicit CTiffChain(CTiffFile& file);

    /// Nothing where there is no such directory, or it would cost more to read than it could be worth, which the log
    /// tells. Where the file cannot be read, its HasFailed tells, and a later call tries again.
    std::optional<CDirectoryForLibtiff> Directory(uint32_t number);
    /// How many there are that tell of a next one, or that there is none; no more than `max` are counted.
    uint32_t NumOfDirectories(uint32_t max);

private:
    struct CPlace
    {
        uint64_t OffsetOfEntries = 0;
        uint64_t SizeOfEntries = 0;
        std::optional<uint64_t> OffsetOfNext; ///< 0 after the last
        const char* WhyItIsNotRead = nullptr;
    };
    /// What the directories of these places take.
    struct CCost
    {
        uint64_t SizeOfEntries = 0;
        uint64_t SizeOfValues = 0;
    };

    bool Find(uint32_t number);
    /// Goes one step along the chain; false at its end, which is also where it leads back.
    bool AddNext();
    CPlace PlaceOf(uint64_t offset, CCost& cost);
    /// Adds what a directory takes, as far as it is looked at; null for one that is worth it.
    const char* AddTo(CCost& cost, const CPlace& place);
    /// Nothing where the directory does not lie in the file as a whole.
    std::optional<CNeededEntries> NeededEntriesAt(const CPlace& place);
    std::optional<uint64_t> NumberAt(uint64_t offset, uint64_t sizeOfNumber);

    CTiffFile& _file;
    CTiffLayout _layout;
    std::optional<uint64_t> _offsetOfFirst;
    std::vector<CPlace> _places;
    std::unordered_set<uint64_t> _offsets; ///< of the directories there
    CCost _cost;
};

} // namespace CIA
