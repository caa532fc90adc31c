#pragma once
#include "CommonImageAccess/DeepZoomTile.h"
#include "CommonImageAccess/TiffAccess.h"

namespace CIA
{

/// A tile, or a strip, of a TIFF directory that holds one frame. Its image has one level.
class CTiffDeepZoomTile : public CDeepZoomTile
{
public:
    /// Asserts that the frame's image has exactly one level.
    CTiffDeepZoomTile(CFrame& frame, int32_t col, int32_t row);

protected:
    /// The file, standing on the frame's directory; never null.
    virtual TIFF* TiffFilePtr() = 0;
    /// What no strip or tile of the file can exceed, in bytes.
    virtual uint64_t SizeOfFile() = 0;
    bool PixelBuf_rValidated(CByteArray& buf, const CPixelRect& r) override;

private:
    /// What has to be known of the tile before the file is set to its directory, since finding it out moves it.
    struct CPlace
    {
        bool IsJpeg7 = false;
        uint32_t TileNumber = 0; ///< of a tiled directory
        uint32_t StripNumber = 0;
    };

    CPlace Place();
    void ReadWholeTile(CByteArray& buf);
    void ReadWholeStrip(CByteArray& buf, const CPlace& place, TIFF* tif);
    std::vector<unsigned char> JpegStream(const CPlace& place, TIFF* tif);
    void ReadPart(CByteArray& buf, const CPixelRect& r);
    std::vector<unsigned char> ReadUpTo(uint64_t need);
    uint32_t CheckedRawStripSize(const CPlace& place, TIFF* tif);
};

/// How many tiles cover so many pixels of a row or column; the last one may reach beyond them.
uint32_t NumOfTilesAcross(uint32_t pixels, uint32_t pixelsOfTile);

/// The bytes that the pixels of `r` take, `b` each; asserts that 32 bits hold their number.
uint32_t SizeOfRect(const CPixelRect& r, uint64_t b);
/// Copies `r`, `b` bytes a pixel, out of pixels that lie in rows of `width`.
void CopyRectOfPixels(const unsigned char* pixels, uint64_t width, uint64_t b, const CPixelRect& r,
                      unsigned char* target);
/// Clears what a raw read left of a buffer: all of it behind the bytes that were read, which are none after a failure.
/// A tile that is stored shorter, or cannot be read, shows zeros and never what the buffer held before.
void ClearBehind(tmsize_t numOfBytesRead, unsigned char* buffer, size_t size);

} // namespace CIA
