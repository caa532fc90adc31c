#include "SampleDocuments/TiffWriter.h"

#include "SampleDocuments/StackTree.h"

#include <memory>
#include <tiffio.h>
#include <utility>

namespace SampleDocuments
{

namespace
{

/// A TIFF file that is being written. What libtiff has to say about it goes into exceptions and nowhere else.
class CTiffWriter
{
public:
    CTiffWriter(const std::filesystem::path& path, const char* mode) : _Path(path)
    {
        TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
        TIFFOpenOptionsSetErrorHandlerExtR(options, KeepMessage, this);
        TIFFOpenOptionsSetWarningHandlerExtR(options, Silence, nullptr);
        _Tiff.reset(TIFFOpenExt(path.c_str(), mode, options));
        TIFFOpenOptionsFree(options);
        if (!_Tiff)
            Fail("can't be opened for writing");
    }

    /// Writes the directory of one level and frame.
    void Write(const Stack& stack, uint32_t level, const CIndexes& at, const std::string& description)
    {
        Describe(stack, level);
        if (!description.empty())
            Check(TIFFSetField(_Tiff.get(), TIFFTAG_IMAGEDESCRIPTION, description.c_str()) == 1, "XML");
        const CLevelGrid grid = stack.WholeGrid(level);
        uint32_t number = 0;
        for (int32_t row = grid.RowRange.First; row <= grid.RowRange.Last; ++row)
            for (int32_t column = grid.ColumnRange.First; column <= grid.ColumnRange.Last; ++column)
                WriteTile(stack, {level, column, row, at}, number++);
        Check(TIFFWriteDirectory(_Tiff.get()) == 1, "directory");
    }

private:
    struct CCloser
    {
        void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    };

    static int Silence(TIFF*, void*, const char*, const char*, va_list) { return 1; }

    static int KeepMessage(TIFF*, void* user, const char*, const char* format, va_list values)
    {
        char text[500];
        std::vsnprintf(text, sizeof(text), format, values);
        static_cast<CTiffWriter*>(user)->_Message = text;
        return 1;
    }

    [[noreturn]] void Fail(const std::string& what) const
    {
        throw CSampleError(_Path.string() + ": " + what + (_Message.empty() ? "" : " (" + _Message + ")"));
    }

    void Check(bool isGood, const char* what) const
    {
        if (!isGood)
            Fail(std::string("the TIFF library refuses the ") + what);
    }

    void Describe(const Stack& stack, uint32_t level)
    {
        const CStackPlan& plan = stack.Plan();
        const auto set = [this](uint32_t tag, auto value) { Check(TIFFSetField(_Tiff.get(), tag, value) == 1, "tag"); };
        set(TIFFTAG_IMAGEWIDTH, stack.LevelWidth(level));
        set(TIFFTAG_IMAGELENGTH, stack.LevelHeight(level));
        set(TIFFTAG_BITSPERSAMPLE, static_cast<int>(8 * BytesOfComponent(plan.Pixels.ComponentType)));
        set(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(plan.Pixels.ComponentCount));
        set(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
        set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        set(TIFFTAG_PHOTOMETRIC, plan.Pixels.ComponentCount == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
        set(TIFFTAG_COMPRESSION, static_cast<int>(plan.TiffCompression));
        if (plan.TiffCompression == COMPRESSION_JPEG && plan.Contents.Pixels)
            set(TIFFTAG_JPEGQUALITY, static_cast<int>(plan.Pixels.CompressionQuality));
        if (!plan.JpegTables.empty())
            Check(TIFFSetField(_Tiff.get(), TIFFTAG_JPEGTABLES, static_cast<uint32_t>(plan.JpegTables.size()),
                               plan.JpegTables.data()) == 1,
                  "JPEG tables");
        if (stack.IsStriped())
            set(TIFFTAG_ROWSPERSTRIP, std::min(plan.RowsPerStrip, stack.LevelHeight(level)));
        else
        {
            set(TIFFTAG_TILEWIDTH, plan.TileWidth);
            set(TIFFTAG_TILELENGTH, plan.TileHeight);
        }
    }

    void WriteTile(const Stack& stack, const CTilePlace& place, uint32_t number)
    {
        const CStackPlan& plan = stack.Plan();
        const bool isEncodedHere = plan.TiffCompression == COMPRESSION_JPEG && plan.Contents.Pixels;
        ByteString bytes = isEncodedHere ? PackedRows(plan.Contents.Pixels(place)) : stack.TileBytes(place);
        const auto size = static_cast<tmsize_t>(bytes.size());
        const auto write = isEncodedHere ? (stack.IsStriped() ? TIFFWriteEncodedStrip : TIFFWriteEncodedTile)
                                         : (stack.IsStriped() ? TIFFWriteRawStrip : TIFFWriteRawTile);
        Check(write(_Tiff.get(), number, bytes.data(), size) >= 0, "pixels");
    }

    std::filesystem::path _Path;
    std::string _Message;
    std::unique_ptr<TIFF, CCloser> _Tiff;
};

} // namespace

bool IsWrittenByLibTiff(const Stack& stack)
{
    const CStackPlan& plan = stack.Plan();
    return (plan.Storage == StackStorage::TiffStore && (plan.IsBigTiff || plan.Contents.Pixels)) ||
           (plan.Storage == StackStorage::InDocument && plan.Contents.Pixels);
}

void WriteTiffStore(const Stack& stack, const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    try
    {
        CTiffWriter writer(path, stack.Plan().IsBigTiff ? "w8" : "w");
        std::string xml = stack.Plan().HasXml ? XmlOf(stack) : "";
        ForEachDirectory(stack, [&](uint32_t level, const CIndexes& at)
                         { writer.Write(stack, level, at, std::exchange(xml, "")); });
    }
    catch (...)
    {
        std::filesystem::remove(path, error);
        throw;
    }
}

void AppendToDocument(const Stack& stack, const std::filesystem::path& document)
{
    CTiffWriter writer(document, "a");
    ForEachDirectory(stack, [&](uint32_t level, const CIndexes& at) { writer.Write(stack, level, at, ""); });
}

} // namespace SampleDocuments
