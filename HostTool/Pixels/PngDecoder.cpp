#include "HostTool/Pixels/TileCodec.h"

#include <csetjmp>
#include <cstring>
#include <png.h>
#include <vector>

namespace HostTool
{

namespace
{

/// A reader that is given back at the end of its scope. libpng leaves a failing call by longjmp: nothing with a
/// destructor may live in the functions that call it.
class CPngReader
{
public:
    explicit CPngReader(std::span<const uint8_t> bytes)
        : _Rest(bytes), _Png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, &IgnoreWarning))
    {
        if (_Png)
            _Info = png_create_info_struct(_Png);
    }
    ~CPngReader() { png_destroy_read_struct(&_Png, &_Info, nullptr); }
    CPngReader(const CPngReader&) = delete;
    CPngReader& operator=(const CPngReader&) = delete;

    bool ReadHeader()
    {
        if (!_Info || setjmp(png_jmpbuf(_Png)))
            return false;
        png_set_read_fn(_Png, this, &Read);
        png_read_info(_Png, _Info);
        // Palettes, few bits and transparency become plain grey or colours; what is 16 bits has the low byte first.
        png_set_expand(_Png);
        png_set_strip_alpha(_Png);
        if (png_get_bit_depth(_Png, _Info) == 16)
            png_set_swap(_Png);
        _NumOfPasses = png_set_interlace_handling(_Png);
        png_read_update_info(_Png, _Info);
        return true;
    }
    bool ReadRows(uint8_t* const* rows, uint32_t numOfRows)
    {
        if (setjmp(png_jmpbuf(_Png)))
            return false;
        for (int pass = 0; pass < _NumOfPasses; ++pass)
            png_read_rows(_Png, const_cast<png_bytepp>(rows), nullptr, numOfRows);
        png_read_end(_Png, nullptr);
        return true;
    }
    uint32_t Width() const { return png_get_image_width(_Png, _Info); }
    uint32_t Height() const { return png_get_image_height(_Png, _Info); }
    uint32_t NumOfComponents() const { return png_get_channels(_Png, _Info); }
    uint32_t BytesPerComponent() const { return png_get_bit_depth(_Png, _Info) / 8U; }
    size_t BytesPerRow() const { return png_get_rowbytes(_Png, _Info); }

private:
    static void IgnoreWarning(png_structp, png_const_charp) {}
    static void Read(png_structp png, png_bytep out, size_t size)
    {
        auto& rest = static_cast<CPngReader*>(png_get_io_ptr(png))->_Rest;
        if (size > rest.size())
            png_error(png, "it ends early");
        std::memcpy(out, rest.data(), size);
        rest = rest.subspan(size);
    }

    std::span<const uint8_t> _Rest;
    png_structp _Png = nullptr;
    png_infop _Info = nullptr;
    int _NumOfPasses = 1;
};

} // namespace

void DecodePng(std::span<const uint8_t> bytes, const CPixelTarget& target)
{
    CPngReader png(bytes);
    if (!png.ReadHeader())
        throw CTileError("the PNG stream is damaged");
    RequireSize(png.Width(), png.Height(), target);
    const size_t bytesPerRow = png.BytesPerRow();
    std::vector<uint8_t> pixels(bytesPerRow * target.Height);
    std::vector<uint8_t*> rows;
    for (uint32_t y = 0; y < target.Height; ++y)
        rows.push_back(pixels.data() + y * bytesPerRow);
    if (!png.ReadRows(rows.data(), target.Height))
        throw CTileError("the PNG stream is damaged");
    for (uint32_t y = 0; y < target.Height; ++y)
        PutRow({rows[y], bytesPerRow}, png.NumOfComponents(), png.BytesPerComponent(), target, y);
}

} // namespace HostTool
