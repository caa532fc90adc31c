#include "HostTool/Pixels/PictureFile.h"

#include "HostTool/Export/TiffFields.h"
#include "HostTool/Export/TiffWriter.h"
#include "HostTool/HostError.h"
#include "HostTool/Pixels/Bitmap.h"

#include <algorithm>
#include <csetjmp>
#include <png.h>

namespace HostTool
{

namespace
{

[[noreturn]] void Refuse(const std::filesystem::path& path, const std::string& why)
{
    throw CHostError(ExitCode::WrongUsage, path.string() + ": " + why);
}

/// libpng leaves a failing call by longjmp: nothing with a destructor may live in the functions that call it.
class CPngPicture : public CPictureWriter
{
public:
    CPngPicture(const std::filesystem::path& path, const CPictureFacts& facts)
        : _Path(path), _File(path), _BytesPerRow(size_t{facts.Width} * facts.Format.BytesPerPixel()),
          _Png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, &IgnoreWarning))
    {
        if (_Png)
            _Info = png_create_info_struct(_Png);
        if (!_Info || !Begin(facts))
            Refuse(_Path, "cannot be written as PNG; give a name that ends in .tif");
    }
    ~CPngPicture() override { png_destroy_write_struct(&_Png, &_Info); }
    CPngPicture(const CPngPicture&) = delete;
    CPngPicture& operator=(const CPngPicture&) = delete;

    void Write(std::span<const uint8_t> rows) override
    {
        if (!WriteRows(rows.data(), rows.size() / _BytesPerRow))
            Fail();
    }
    void Finish() override
    {
        if (!End())
            Fail();
        _File.Finish();
    }

private:
    /// libpng leaves its call at the first byte that the file does not take.
    [[noreturn]] void Fail()
    {
        _File.Complete();
        throw CHostError(ExitCode::Machine,
                         _Path.string() + ": cannot be written: the disk is full, or fails; choose another place");
    }
    static void IgnoreWarning(png_structp, png_const_charp) {}

    bool Begin(const CPictureFacts& facts)
    {
        if (setjmp(png_jmpbuf(_Png)))
            return false;
        png_init_io(_Png, _File.Stream());
        png_set_IHDR(_Png, _Info, facts.Width, facts.Height, static_cast<int>(8 * facts.Format.BytesPerComponent),
                     facts.Format.IsColour() ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        // Pictures of slides are large: a few percent more of disk for a fraction of the time.
        png_set_compression_level(_Png, 2);
        png_set_filter(_Png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
        if (facts.PixelWidth && facts.PixelHeight)
            png_set_pHYs(_Png, _Info, static_cast<png_uint_32>(1e6 / *facts.PixelWidth),
                         static_cast<png_uint_32>(1e6 / *facts.PixelHeight), PNG_RESOLUTION_METER);
        png_write_info(_Png, _Info);
        if (facts.Format.BytesPerComponent == 2)
            png_set_swap(_Png);
        return true;
    }
    bool WriteRows(const uint8_t* rows, size_t numOfRows)
    {
        if (setjmp(png_jmpbuf(_Png)))
            return false;
        for (size_t y = 0; y < numOfRows; ++y)
            png_write_row(_Png, rows + y * _BytesPerRow);
        return true;
    }
    bool End()
    {
        if (setjmp(png_jmpbuf(_Png)))
            return false;
        png_write_end(_Png, _Info);
        return true;
    }

    std::filesystem::path _Path;
    COutputFile _File;
    size_t _BytesPerRow;
    png_structp _Png = nullptr;
    png_infop _Info = nullptr;
};

/// Uncompressed, in strips.
class CTiffPicture : public CPictureWriter
{
public:
    CTiffPicture(const std::filesystem::path& path, const CPictureFacts& facts)
        : _File(path), _Facts(facts), _BytesPerRow(uint64_t{facts.Width} * facts.Format.BytesPerPixel()),
          _BytesPerPicture(_BytesPerRow * facts.Height)
    {
    }
    void Write(std::span<const uint8_t> rows) override
    {
        while (!rows.empty())
        {
            if (_BytesWritten == 0)
                _Start = _File.Append({});
            const auto part = rows.first(std::min<uint64_t>(rows.size(), _BytesPerPicture - _BytesWritten));
            _File.Continue(part);
            _BytesWritten += part.size();
            if (_BytesWritten == _BytesPerPicture)
                EndPicture();
            rows = rows.subspan(part.size());
        }
    }
    void Finish() override
    {
        _File.Complete(_Pictures);
        _File.Finish();
    }

private:
    void EndPicture()
    {
        constexpr uint64_t usualBytesPerStrip = uint64_t{1} << 18;
        const uint64_t rowsPerStrip = std::max<uint64_t>(1, usualBytesPerStrip / _BytesPerRow);
        const uint64_t bytesPerStrip = rowsPerStrip * _BytesPerRow;
        CTiffOffsets offsets;
        CTiffOffsets sizes;
        for (uint64_t at = 0; at < _BytesPerPicture; at += bytesPerStrip)
        {
            offsets.Values.push_back(_Start + at);
            sizes.Values.push_back(std::min(bytesPerStrip, _BytesPerPicture - at));
        }
        CTiffDirectory directory;
        SetPixels(directory, _Facts.Width, _Facts.Height, _Facts.Format);
        SetPixelSize(directory, _Facts.PixelWidth, _Facts.PixelHeight);
        directory.SetShort(TiffTag::Compression, TiffCompression::None);
        directory.SetShort(TiffTag::Photometric,
                           _Facts.Format.IsColour() ? TiffPhotometric::Rgb : TiffPhotometric::Grey);
        directory.SetNumber(TiffTag::RowsPerStrip, static_cast<uint32_t>(rowsPerStrip));
        directory.Set(TiffTag::StripOffsets, std::move(offsets));
        directory.Set(TiffTag::StripByteCounts, std::move(sizes));
        _Pictures.push_back(std::move(directory));
        _BytesWritten = 0;
    }

    CTiffWriter _File;
    CPictureFacts _Facts;
    uint64_t _BytesPerRow;
    uint64_t _BytesPerPicture;
    uint64_t _BytesWritten = 0; // of the present picture
    uint64_t _Start = 0;
    std::vector<CTiffDirectory> _Pictures;
};

std::unique_ptr<CPictureWriter> MakePng(const std::filesystem::path& path, const CPictureFacts& facts,
                                        uint32_t numOfPictures)
{
    if (numOfPictures > 1)
        Refuse(path, "a PNG file holds one picture; give a name that ends in .tif, or ask for one channel");
    if (facts.Format.BytesPerComponent > 2 || facts.Format.Values != ValueKind::Unsigned)
        Refuse(path, "PNG cannot hold values of this kind; give a name that ends in .tif");
    return std::make_unique<CPngPicture>(path, facts);
}

} // namespace

std::unique_ptr<CPictureWriter> MakePictureWriter(const std::filesystem::path& path, const CPictureFacts& facts,
                                                  uint32_t numOfPictures)
{
    const std::filesystem::path extension = path.extension();
    if (extension == ".png" || IsStream(path))
        return MakePng(path, facts, numOfPictures);
    if (extension == ".tif" || extension == ".tiff")
        return std::make_unique<CTiffPicture>(path, facts);
    Refuse(path, "pictures are written as PNG or TIFF; give a name that ends in .png or .tif");
}

void WriteBitmap(const CBitmap& bitmap, const std::filesystem::path& path)
{
    CPictureFacts facts;
    facts.Width = bitmap.Width();
    facts.Height = bitmap.Height();
    facts.Format.NumOfComponents = 3;
    const auto writer = MakePictureWriter(path, facts);
    std::vector<uint8_t> row(size_t{facts.Format.BytesPerPixel()} * bitmap.Width());
    for (uint32_t y = 0; y < bitmap.Height(); ++y)
    {
        bitmap.ReadRow(y, row.data());
        writer->Write(row);
    }
    writer->Finish();
}

} // namespace HostTool
