#pragma once

#include "HostTool/ByteBuffer.h"
#include "HostTool/Pixels/PixelFormat.h"

#include <span>
#include <stdexcept>
#include <string>

namespace HostTool
{

/// A tile that can't be decoded; the text says why, for people.
struct CTileError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// How a tile is stored.
enum class TileCoding
{
    Raw,
    Jpeg,
    J2k,
    Png,
    Bmp
};

/// A stored tile with all that its decoding takes.
struct CStoredTile
{
    TileCoding Coding = TileCoding::Raw;
    ByteBuffer Bytes;
    ByteBuffer JpegTables;    ///< of a JPEG stream whose tables stand apart; empty otherwise
    bool IsBlueFirst = false; ///< of raw pixels
};

/// Decodes a tile into the target, which takes all of it: a tile of another size, or of values that the target's
/// format can't hold, is an error. A raw tile may be cut short after any whole row; the rows that it lacks are left as
/// they are. May be called from several threads at once. Throws CTileError.
void DecodeTile(const CStoredTile& tile, const CPixelTarget& target);

// The decoders behind it, one for each library.
void DecodeRaw(const CStoredTile& tile, const CPixelTarget& target);
void DecodeJpeg(std::span<const uint8_t> bytes, std::span<const uint8_t> tables, const CPixelTarget& target);
void DecodeJ2k(std::span<const uint8_t> bytes, const CPixelTarget& target);
void DecodePng(std::span<const uint8_t> bytes, const CPixelTarget& target);
void DecodeBmp(std::span<const uint8_t> bytes, const CPixelTarget& target);

/// Copies a row of decoded components to a target's row. One grey component fills three; three can't become one.
/// Throws CTileError.
void PutRow(std::span<const uint8_t> row, uint32_t numOfComponents, uint32_t bytesPerComponent,
            const CPixelTarget& target, uint32_t y);

/// Throws CTileError unless a picture of this size is the target's.
void RequireSize(uint64_t width, uint64_t height, const CPixelTarget& target);

} // namespace HostTool
