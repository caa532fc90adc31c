#include "HostTool/Pixels/TileCodec.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>
#include <vector>

namespace HostTool
{

namespace
{

struct CErrors
{
    jpeg_error_mgr Manager;
    std::jmp_buf Back;
    char Message[JMSG_LENGTH_MAX];
};

void Leave(j_common_ptr jpeg)
{
    auto* errors = reinterpret_cast<CErrors*>(jpeg->err);
    errors->Manager.format_message(jpeg, errors->Message);
    std::longjmp(errors->Back, 1);
}

void Silence(j_common_ptr, int) {}

/// A decompressor that is given back at the end of its scope. The functions that call into the library stand for
/// themselves: it leaves a failing call by longjmp, so nothing with a destructor may live in them.
class CDecompressor
{
public:
    CDecompressor()
    {
        jpeg_std_error(&_Errors.Manager);
        _Errors.Manager.error_exit = Leave;
        _Errors.Manager.emit_message = Silence;
        _Errors.Message[0] = '\0';
        _Jpeg.err = &_Errors.Manager;
        _IsMade = Make();
    }
    ~CDecompressor()
    {
        if (_IsMade)
            jpeg_destroy_decompress(&_Jpeg);
    }
    CDecompressor(const CDecompressor&) = delete;
    CDecompressor& operator=(const CDecompressor&) = delete;

    const char* Message() const { return _Errors.Message; }
    uint32_t Width() const { return _Jpeg.output_width; }
    uint32_t Height() const { return _Jpeg.output_height; }
    uint32_t NumOfComponents() const { return static_cast<uint32_t>(_Jpeg.output_components); }

    bool Start(std::span<const uint8_t> bytes, std::span<const uint8_t> tables)
    {
        if (!_IsMade || setjmp(_Errors.Back))
            return false;
        if (!tables.empty())
        {
            jpeg_mem_src(&_Jpeg, tables.data(), tables.size());
            jpeg_read_header(&_Jpeg, FALSE);
        }
        jpeg_mem_src(&_Jpeg, bytes.data(), bytes.size());
        jpeg_read_header(&_Jpeg, TRUE);
        _Jpeg.out_color_space = _Jpeg.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
        return jpeg_start_decompress(&_Jpeg) != 0;
    }
    /// Rows straight into the target, or one row into `row` if there is one.
    bool Read(const CPixelTarget& target)
    {
        if (setjmp(_Errors.Back))
            return false;
        // As many rows as the library makes at a time: it then doesn't have to keep any of them.
        constexpr uint32_t mostRows = 16;
        JSAMPROW rows[mostRows];
        while (_Jpeg.output_scanline < _Jpeg.output_height)
        {
            const uint32_t count = std::min(mostRows, _Jpeg.output_height - _Jpeg.output_scanline);
            for (uint32_t i = 0; i < count; ++i)
                rows[i] = target.Row(_Jpeg.output_scanline + i);
            jpeg_read_scanlines(&_Jpeg, rows, count);
        }
        return jpeg_finish_decompress(&_Jpeg) != 0;
    }
    bool ReadRow(uint8_t* row)
    {
        if (setjmp(_Errors.Back))
            return false;
        return jpeg_read_scanlines(&_Jpeg, &row, 1) == 1;
    }
    /// Whether the stream broke off or was otherwise mended on the way, which the library takes for a warning.
    bool IsMended() const { return _Jpeg.err->num_warnings != 0; }

private:
    bool Make()
    {
        if (setjmp(_Errors.Back))
            return false;
        jpeg_create_decompress(&_Jpeg);
        return true;
    }

    jpeg_decompress_struct _Jpeg{};
    CErrors _Errors{};
    bool _IsMade = false;
};

[[noreturn]] void Fail(const CDecompressor& jpeg)
{
    throw CTileError(std::string("the JPEG stream is damaged, or of a kind that is not read: ") + jpeg.Message());
}

} // namespace

void DecodeJpeg(std::span<const uint8_t> bytes, std::span<const uint8_t> tables, const CPixelTarget& target)
{
    CDecompressor jpeg; // of this tile only: another one would take the tables of the tile before where it has none
    if (!jpeg.Start(bytes, tables))
        Fail(jpeg);
    RequireSize(jpeg.Width(), jpeg.Height(), target);
    if (jpeg.NumOfComponents() == target.Format.NumOfComponents && target.Format.BytesPerComponent == 1)
    {
        if (!jpeg.Read(target))
            Fail(jpeg);
    }
    else
    {
        std::vector<uint8_t> row(size_t{jpeg.Width()} * jpeg.NumOfComponents());
        for (uint32_t y = 0; y < target.Height; ++y)
        {
            if (!jpeg.ReadRow(row.data()))
                Fail(jpeg);
            PutRow(row, jpeg.NumOfComponents(), 1, target, y);
        }
    }
    if (jpeg.IsMended())
        throw CTileError("the JPEG stream is damaged");
}

} // namespace HostTool
