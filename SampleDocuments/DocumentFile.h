#pragma once

#include "SampleDocuments/Node.h"
#include "SampleDocuments/TiffDirectory.h"

namespace SampleDocuments
{

/// A document file as it lies on disk: 8 bytes of TIFF header, the tag tree, the TIFF directories behind it.
struct CDocumentFile
{
    std::string ByteOrder = "II"; ///< two characters
    int16_t FixedNum = 42;
    std::optional<uint32_t> OffsetOfFirstIfd; ///< worked out if not set; 0 without directories
    CNode Root = Volume(0);
    std::vector<CTiffDirectory> Directories;
    ByteString Tail; ///< bytes behind everything

    /// The file's bytes; `placements`, if not null, gets the place of every node.
    ByteString ToBytes(Placements* placements = nullptr) const;

    /// Where a node of this tree lies in the file as it would be written now. Throws CSampleError for a stranger.
    CPlacement PlacementOf(const CNode& node) const;

    /// Offsets of the directories in the file as it would be written now.
    std::vector<uint32_t> OffsetsOfDirectories() const;
};

} // namespace SampleDocuments
