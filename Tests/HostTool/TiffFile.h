#pragma once

#include "SampleDocuments/Picture.h"

#include <memory>
#include <string>
#include <tiffio.h>
#include <vector>

/// A TIFF file as libtiff reads it.
class CTiffFile
{
public:
    /// Throws std::runtime_error if the library can't open it.
    explicit CTiffFile(const std::string& path) : _Tiff(TIFFOpen(path.c_str(), "r"))
    {
        if (!_Tiff)
            throw std::runtime_error(path + " is no TIFF file");
    }

    /// The directory of a plane, or, for a level above 0, one of those below it. False if there is none.
    bool Select(uint32_t plane, uint32_t level = 0)
    {
        if (!TIFFSetDirectory(_Tiff.get(), static_cast<tdir_t>(plane)))
            return false;
        if (level == 0)
            return true;
        uint16_t count = 0;
        uint64_t* offsets = nullptr;
        return TIFFGetField(_Tiff.get(), TIFFTAG_SUBIFD, &count, &offsets) && level <= count &&
               TIFFSetSubDirectory(_Tiff.get(), offsets[level - 1]);
    }
    bool IsBig() const { return TIFFIsBigTIFF(_Tiff.get()); }
    uint32_t NumOfDirectories() const { return TIFFNumberOfDirectories(_Tiff.get()); }
    uint32_t Number(uint32_t tag) const
    {
        uint32_t number = 0;
        TIFFGetField(_Tiff.get(), tag, &number);
        return number;
    }
    uint32_t Short(uint32_t tag) const
    {
        uint16_t number = 0;
        TIFFGetFieldDefaulted(_Tiff.get(), tag, &number);
        return number;
    }
    uint32_t NumOfTiles() const { return TIFFNumberOfTiles(_Tiff.get()); }

    /// The bytes of a tile as they are in the file.
    SampleDocuments::ByteString RawTile(uint32_t number)
    {
        SampleDocuments::ByteString bytes(TIFFGetStrileByteCount(_Tiff.get(), number));
        TIFFReadRawTile(_Tiff.get(), number, bytes.data(), static_cast<tmsize_t>(bytes.size()));
        return bytes;
    }
    /// The picture of the selected directory, decoded by the library; empty if it refuses.
    SampleDocuments::CPicture Picture()
    {
        const uint32_t width = Number(TIFFTAG_IMAGEWIDTH);
        const uint32_t height = Number(TIFFTAG_IMAGELENGTH);
        const uint32_t tileWidth = Number(TIFFTAG_TILEWIDTH);
        const uint32_t tileHeight = Number(TIFFTAG_TILELENGTH);
        const auto samples = static_cast<uint16_t>(Short(TIFFTAG_SAMPLESPERPIXEL));
        const auto bits = static_cast<uint16_t>(Short(TIFFTAG_BITSPERSAMPLE));
        if (Short(TIFFTAG_COMPRESSION) == COMPRESSION_JPEG)
            TIFFSetField(_Tiff.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        SampleDocuments::CPicture picture(width, height, samples, bits);
        SampleDocuments::ByteString bytes(size_t{tileWidth} * tileHeight * samples * bits / 8);
        for (uint32_t tile = 0; tile < NumOfTiles(); ++tile)
        {
            if (TIFFReadEncodedTile(_Tiff.get(), tile, bytes.data(), static_cast<tmsize_t>(bytes.size())) !=
                static_cast<tmsize_t>(bytes.size()))
                return {};
            const auto pixels = SampleDocuments::FromPackedRows(tileWidth, tileHeight, samples, bits, bytes);
            const uint32_t cols = (width + tileWidth - 1) / tileWidth;
            const uint32_t left = tile % cols * tileWidth;
            const uint32_t top = tile / cols * tileHeight;
            for (uint32_t y = 0; y < std::min(tileHeight, height - top); ++y)
                for (uint32_t x = 0; x < std::min(tileWidth, width - left); ++x)
                    for (uint16_t sample = 0; sample < samples; ++sample)
                        picture.At(left + x, top + y, sample) = pixels.At(x, y, sample);
        }
        return picture;
    }

private:
    struct CCloser
    {
        void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    };
    std::unique_ptr<TIFF, CCloser> _Tiff;
};
