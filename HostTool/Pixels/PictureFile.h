#pragma once

#include "HostTool/Pixels/PixelFormat.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <span>

namespace HostTool
{

class CBitmap;

/// What a picture file is going to hold.
struct CPictureFacts
{
    uint32_t Width = 0;
    uint32_t Height = 0;
    CPixelFormat Format;
    std::optional<double> PixelWidth; ///< in micrometres
    std::optional<double> PixelHeight;
};

/// A picture that is written from its top to its bottom, so that it need not be in memory.
class CPictureWriter
{
public:
    virtual ~CPictureWriter() = default;
    /// Appends whole rows. Behind the last row of a picture the next one begins. Throws CHostError.
    virtual void Write(std::span<const uint8_t> rows) = 0;
    /// Gives the file its name. Throws CHostError.
    virtual void Finish() = 0;
};

/// A PNG file for a name in .png; a TIFF file for .tif or .tiff, which may hold several pictures of the same kind, one
/// behind the other. Throws CHostError for any other name, and for what a PNG file can't hold.
std::unique_ptr<CPictureWriter> MakePictureWriter(const std::filesystem::path& path, const CPictureFacts& facts,
                                                  uint32_t numOfPictures = 1);

/// Writes a whole bitmap as such a file, in colours.
void WriteBitmap(const CBitmap& bitmap, const std::filesystem::path& path);

} // namespace HostTool
