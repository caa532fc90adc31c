#include "Benchmarks/BigTiff.h"

#include "Benchmarks/Slide.h"
#include "SampleDocuments/Codecs.h"

#include <cmath>
#include <fstream>
#include <map>
#include <tiffio.h>
#include <vector>

namespace Benchmarks
{

namespace
{

constexpr uint32_t EdgeOfTile = 256;
constexpr uint64_t SizeOfHeader = 16;
constexpr uint64_t SizeOfEntry = 20;

/// A little-endian BigTIFF with one directory, whose entries come in ascending order of tags.
class CBigTiffWriter
{
public:
    explicit CBigTiffWriter(const std::filesystem::path& path) : _file(path, std::ios::binary) {}

    template <typename T>
    void Write(const T& value)
    {
        _file.write(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <typename T>
    void Write(const std::vector<T>& values)
    {
        _file.write(reinterpret_cast<const char*>(values.data()),
                    static_cast<std::streamsize>(values.size() * sizeof(T)));
    }
    void WriteHeader(uint64_t offsetOfDirectory)
    {
        _file.write("II", 2);
        Write<uint16_t>(43);
        Write<uint16_t>(8);
        Write<uint16_t>(0);
        Write(offsetOfDirectory);
    }
    void WriteEntry(uint16_t tag, uint16_t type, uint64_t count, uint64_t valueOrOffset)
    {
        Write(tag);
        Write(type);
        Write(count);
        Write(valueOrOffset);
    }
    void Finish(const std::filesystem::path& path, uint64_t size)
    {
        _file.close();
        Require(!_file.fail(), "writing a BigTIFF");
        std::filesystem::resize_file(path, size);
    }

private:
    std::ofstream _file;
};

void WriteBigTiff(const std::filesystem::path& path, uint32_t columns, uint32_t rows)
{
    using namespace SampleDocuments;
    const ByteString body = EncodeJpeg(DrawPicture(EdgeOfTile, EdgeOfTile), 85);
    const uint64_t count = uint64_t{columns} * rows;
    constexpr uint64_t NumOfEntries = 10;
    const uint64_t offsetOfOffsets = SizeOfHeader + 8 + NumOfEntries * SizeOfEntry + 8;
    const uint64_t offsetOfSizes = offsetOfOffsets + count * sizeof(uint64_t);
    const uint64_t offsetOfTiles = offsetOfSizes + count * sizeof(uint32_t);
    const uint64_t sizeOfTile = std::max<uint64_t>(body.size(), TileSize);
    std::vector<uint64_t> offsets(count);
    for (uint64_t i = 0; i < count; ++i)
        offsets[i] = offsetOfTiles + i * sizeOfTile;
    CBigTiffWriter writer(path);
    writer.WriteHeader(SizeOfHeader);
    writer.Write(NumOfEntries);
    constexpr uint64_t ThreeTimes8 = 8 | 8 << 16 | uint64_t{8} << 32;
    writer.WriteEntry(TIFFTAG_IMAGEWIDTH, TIFF_LONG, 1, uint64_t{columns} * EdgeOfTile);
    writer.WriteEntry(TIFFTAG_IMAGELENGTH, TIFF_LONG, 1, uint64_t{rows} * EdgeOfTile);
    writer.WriteEntry(TIFFTAG_BITSPERSAMPLE, TIFF_SHORT, 3, ThreeTimes8);
    writer.WriteEntry(TIFFTAG_COMPRESSION, TIFF_SHORT, 1, COMPRESSION_JPEG);
    writer.WriteEntry(TIFFTAG_PHOTOMETRIC, TIFF_SHORT, 1, PHOTOMETRIC_YCBCR);
    writer.WriteEntry(TIFFTAG_SAMPLESPERPIXEL, TIFF_SHORT, 1, 3);
    writer.WriteEntry(TIFFTAG_TILEWIDTH, TIFF_SHORT, 1, EdgeOfTile);
    writer.WriteEntry(TIFFTAG_TILELENGTH, TIFF_SHORT, 1, EdgeOfTile);
    writer.WriteEntry(TIFFTAG_TILEOFFSETS, TIFF_LONG8, count, offsetOfOffsets);
    writer.WriteEntry(TIFFTAG_TILEBYTECOUNTS, TIFF_LONG, count, offsetOfSizes);
    writer.Write<uint64_t>(0); // no next directory
    writer.Write(offsets);
    writer.Write(std::vector<uint32_t>(count, static_cast<uint32_t>(body.size())));
    writer.Write(std::vector<uint8_t>(body.begin(), body.end()));
    writer.Finish(path, offsetOfTiles + count * sizeOfTile);
}

} // namespace

const std::filesystem::path& BigTiffOf(int64_t numOfTiles)
{
    static std::map<int64_t, std::filesystem::path> files;
    std::filesystem::path& path = files[numOfTiles];
    if (path.empty())
    {
        path = Folder() / ("big" + std::to_string(numOfTiles) + ".tif");
        const auto columns = static_cast<uint32_t>(std::sqrt(static_cast<double>(numOfTiles)));
        WriteBigTiff(path, columns, static_cast<uint32_t>(numOfTiles) / columns);
    }
    return path;
}

} // namespace Benchmarks
