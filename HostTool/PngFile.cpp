#include "HostTool/PngFile.h"

#include <csetjmp>
#include <memory>
#include <png.h>

namespace HostTool
{

namespace
{

class CPngWriter
{
public:
    CPngWriter() : _Png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, &IgnoreWarning))
    {
        if (_Png)
            _Info = png_create_info_struct(_Png);
    }
    ~CPngWriter() { png_destroy_write_struct(&_Png, &_Info); }
    CPngWriter(const CPngWriter&) = delete;
    CPngWriter& operator=(const CPngWriter&) = delete;

    bool IsReady() const { return _Info != nullptr; }
    /// libpng leaves a failing call by longjmp: nothing with a destructor may live in here.
    bool Write(std::FILE* stream, const CPixels& pixels)
    {
        if (setjmp(png_jmpbuf(_Png)))
            return false;
        png_init_io(_Png, stream);
        png_set_IHDR(_Png, _Info, pixels.Width, pixels.Height, pixels.BitsPerComponent,
                     pixels.NumOfComponents == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(_Png, _Info);
        if (pixels.BitsPerComponent == 16)
            png_set_swap(_Png);
        if (pixels.IsBlueFirst)
            png_set_bgr(_Png);
        const size_t bytesPerRow = pixels.Bytes.size() / pixels.Height;
        for (uint32_t row = 0; row < pixels.Height; ++row)
            png_write_row(_Png, pixels.Bytes.data() + row * bytesPerRow);
        png_write_end(_Png, _Info);
        return true;
    }

private:
    static void IgnoreWarning(png_structp, png_const_charp) {}

    png_structp _Png = nullptr;
    png_infop _Info = nullptr;
};

} // namespace

bool WritePng(std::FILE* stream, const CPixels& pixels)
{
    CPngWriter writer;
    return writer.IsReady() && writer.Write(stream, pixels);
}

} // namespace HostTool
