#pragma once
#include "CommonUtil/BinaryFileReader.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace CIA
{

/// The type of a directory entry's values. Numbers of the TIFF format; a file may hold others.
enum TIFF_FIELD_TYPE : uint16_t
{
    TIFF_FIELD_BYTE = 1,
    TIFF_FIELD_ASCII = 2,
    TIFF_FIELD_SHORT = 3,
    TIFF_FIELD_LONG = 4,
    TIFF_FIELD_RATIONAL = 5,
    TIFF_FIELD_SBYTE = 6,
    TIFF_FIELD_UNDEFINED = 7,
    TIFF_FIELD_SSHORT = 8,
    TIFF_FIELD_SLONG = 9,
    TIFF_FIELD_SRATIONAL = 10,
    TIFF_FIELD_FLOAT = 11,
    TIFF_FIELD_DOUBLE = 12
};

/// One entry of a TIFF directory, as its 12 bytes stand in the file.
struct CIfdEntry
{
    /// Reads the entry at the reader's position; its bytes must lie in the file (assertion).
    explicit CIfdEntry(CommonUtil::CBinaryFileReader& reader);

    std::string ToString() const;

    uint16_t Tag;
    TIFF_FIELD_TYPE FieldType;
    uint32_t NumOfValues;
    uint32_t ValueOrValOffset; ///< the value itself if it takes at most 4 bytes, else its offset in the file
};

/// A TIFF directory, read by hand: the tag tree walks directories without libtiff.
class CTiffIfd
{
public:
    /// Reads the directory at `offset`. One that does not lie in the file as a whole is a failed assertion.
    CTiffIfd(uint32_t offset, CommonUtil::CBinaryFileReader& reader);
    ~CTiffIfd();
    CTiffIfd(const CTiffIfd&) = delete;
    CTiffIfd& operator=(const CTiffIfd&) = delete;

    /// The next directory of the chain, read on first use and owned by this one; null when this is the last. A chain
    /// may lead in a circle: who follows it must count.
    CTiffIfd* NextIfd(CommonUtil::CBinaryFileReader& binaryReader);
    /// The number of entries, the first 10 of them, and the next offset.
    std::string ToString() const;

    std::vector<CIfdEntry> IfdEntries; ///< in file order
    uint32_t OffsetOfNextIfdOr0IfNone = 0;

private:
    std::unique_ptr<CTiffIfd> _NextIfd;
};

} // namespace CIA
