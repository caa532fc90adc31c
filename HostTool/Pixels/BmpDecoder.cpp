#include "HostTool/Pixels/Bitmap.h"
#include "HostTool/Pixels/TileCodec.h"

#include <algorithm>

namespace HostTool
{

namespace
{

constexpr size_t BytesOfFileHeader = 14;
constexpr size_t BytesOfLeastHeaders = BytesOfFileHeader + 40;

uint32_t Uint32At(std::span<const uint8_t> bytes, size_t at)
{
    return bytes[at] | uint32_t{bytes[at + 1]} << 8 | uint32_t{bytes[at + 2]} << 16 | uint32_t{bytes[at + 3]} << 24;
}

uint32_t Uint16At(std::span<const uint8_t> bytes, size_t at)
{
    return bytes[at] | uint32_t{bytes[at + 1]} << 8;
}

void Require(bool isTrue)
{
    if (!isTrue)
        throw CTileError("the BMP file is damaged, or of a kind that is not read");
}

} // namespace

CBitmap::CBitmap(std::span<const uint8_t> bytes) : _Bytes(bytes)
{
    Require(bytes.size() >= BytesOfLeastHeaders && bytes[0] == 'B' && bytes[1] == 'M');
    const uint64_t sizeOfHeader = Uint32At(bytes, 14);
    const auto width = static_cast<int32_t>(Uint32At(bytes, 18));
    const auto height = static_cast<int32_t>(Uint32At(bytes, 22));
    _BitsPerPixel = Uint16At(bytes, 28);
    const uint32_t compression = Uint32At(bytes, 30);
    uint64_t numOfColours = Uint32At(bytes, 46);
    _OffsetOfPixels = Uint32At(bytes, 10);
    Require(sizeOfHeader >= 40 && width > 0 && height != 0 && height != INT32_MIN && compression == 0);
    _Width = static_cast<uint32_t>(width);
    _Height = static_cast<uint32_t>(std::abs(height));
    _IsTopFirst = height < 0;
    constexpr std::array<uint32_t, 5> bits = {1, 4, 8, 24, 32};
    Require(std::find(bits.begin(), bits.end(), _BitsPerPixel) != bits.end());
    if (_BitsPerPixel <= 8)
    {
        const uint64_t most = uint64_t{1} << _BitsPerPixel;
        numOfColours = numOfColours == 0 ? most : std::min(numOfColours, most);
        const uint64_t start = BytesOfFileHeader + sizeOfHeader;
        Require(start + 4 * numOfColours <= bytes.size());
        for (size_t at = start; _Palette.size() < numOfColours; at += 4)
            _Palette.push_back({bytes[at + 2], bytes[at + 1], bytes[at]});
        _Palette.resize(most); // a pixel beyond the palette is black
    }
    _BytesPerRow = (uint64_t{_Width} * _BitsPerPixel + 31) / 32 * 4;
    Require(_OffsetOfPixels <= bytes.size() && _BytesPerRow <= (bytes.size() - _OffsetOfPixels) / _Height);
}

bool CBitmap::IsGrey() const
{
    return _BitsPerPixel <= 8 &&
           std::all_of(_Palette.begin(), _Palette.end(),
                       [](const auto& colour) { return colour[0] == colour[1] && colour[1] == colour[2]; });
}

void CBitmap::ReadRow(uint32_t y, uint8_t* out) const
{
    const uint64_t row = _IsTopFirst ? y : _Height - 1 - y;
    const uint8_t* in = _Bytes.data() + _OffsetOfPixels + row * _BytesPerRow;
    for (uint32_t x = 0; x < _Width; ++x, out += 3)
    {
        if (_BitsPerPixel >= 24)
        {
            const uint8_t* pixel = in + size_t{x} * _BitsPerPixel / 8;
            std::reverse_copy(pixel, pixel + 3, out);
            continue;
        }
        const uint64_t firstBit = uint64_t{x} * _BitsPerPixel;
        const auto shift = 8 - _BitsPerPixel - firstBit % 8;
        const uint32_t index = (in[firstBit / 8] >> shift) & ((1U << _BitsPerPixel) - 1);
        std::copy(_Palette[index].begin(), _Palette[index].end(), out);
    }
}

void DecodeBmp(std::span<const uint8_t> bytes, const CPixelTarget& target)
{
    const CBitmap bitmap(bytes);
    RequireSize(bitmap.Width(), bitmap.Height(), target);
    std::vector<uint8_t> row(size_t{3} * bitmap.Width());
    for (uint32_t y = 0; y < bitmap.Height(); ++y)
    {
        bitmap.ReadRow(y, row.data());
        if (target.Format.NumOfComponents == 3)
        {
            PutRow(row, 3, 1, target, y);
            continue;
        }
        if (!bitmap.IsGrey())
            throw CTileError("the BMP file has colours, where the document has grey");
        for (uint32_t x = 0; x < bitmap.Width(); ++x)
            row[x] = row[size_t{3} * x];
        PutRow(std::span(row).first(bitmap.Width()), 1, 1, target, y);
    }
}

} // namespace HostTool
