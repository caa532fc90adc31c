#pragma once

#include "SampleDocuments/Picture.h"

#include <functional>
#include <optional>

namespace SampleDocuments
{

struct CStackPlan;

/// The indexes that tell frames apart; `{.Z = 2, .C = 1}` for example.
struct CIndexes
{
    uint32_t Z = 0;
    uint32_t T = 0;
    uint32_t L = 0;
    uint32_t C = 0;
    bool operator==(const CIndexes&) const = default;
};

/// A position that a tile can have in a stack.
struct CTilePlace
{
    uint32_t Level = 0;
    int32_t Column = 0;
    int32_t Row = 0;
    CIndexes At;
    bool operator==(const CTilePlace&) const = default;
};

/// Where the bytes of a stack's tiles come from. A plain value.
struct CTileContents
{
    /// The bytes of a tile; the same at every call. Empty: the stack's default.
    std::function<ByteString(const CTilePlace&)> Bytes;

    /// The pixels of a tile, for TIFF files: there the library encodes JPEG, as its tables stand apart from the tiles.
    std::function<CPicture(const CTilePlace&)> Pixels;

    /// Tiles of one key have the same bytes: they are made once, and the records share them. No key: bytes of its own.
    std::function<std::optional<uint64_t>(const CTilePlace&)> Key;

    /// With a key, nevertheless each record gets bytes of its own on disk.
    bool AreSharedBytesCopied = false;

    /// Not 0: tiles are so many zeros, which take no room on disk.
    uint32_t HoleSize = 0;
};

/// Pixels that differ from tile to tile: as many bytes as an uncompressed tile, or strip, of the stack has.
CTileContents PixelsOf(const CStackPlan& plan);

/// A line of text that says which tile it is: "stack 1 level 0 column -1 row 3 Z 0 T 0 L 0 C 1".
CTileContents Labels(uint32_t stackId);

/// So many bytes, which begin with the label and differ from tile to tile.
CTileContents BytesOfSize(uint32_t stackId, uint32_t size);

/// So many bytes, out of `numOfBodies` that the tiles take in turn: a big store on a small disk.
CTileContents TakingTurns(uint32_t stackId, uint32_t size, uint32_t numOfBodies);

/// So many zeros, which take no room on disk: a store of millions of tiles in no time.
CTileContents Holes(uint32_t size);

/// A small picture that differs from tile to tile, encoded as the stack's compression says. Throws CSampleError, when
/// a tile is made, if no encoder fits the stack.
CTileContents EncodedPixelsOf(const CStackPlan& plan);

/// The label of a tile, as text.
std::string LabelOf(uint32_t stackId, const CTilePlace& place);

} // namespace SampleDocuments
