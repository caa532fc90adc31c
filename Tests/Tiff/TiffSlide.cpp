#include "Tests/Tiff/TiffSlide.h"

#include "ZelLoader/Store/KorFile.h"

#include <stdexcept>

namespace TiffOfTest
{

void PrintTo(const Record& record, std::ostream* stream)
{
    *stream << "(column " << record.Col << ", row " << record.Row << ", Z " << record.Z << ", T " << record.T << ", C "
            << record.C << ", L " << record.L << ", level " << record.Level << ", directory " << record.Directory
            << ")";
}

std::string Ome(const std::vector<std::string>& images)
{
    std::string xml = "<OME xmlns:OME=\"urn:ome\">";
    for (const std::string& image : images)
        xml += image;
    return xml + "</OME>";
}

std::string OmeImage(const std::string& samplesPerPixel, const std::vector<std::string>& planes)
{
    std::string xml = "<OME:Image><OME:Pixels><OME:Channel SamplesPerPixel=\"" + samplesPerPixel + "\"/>";
    for (const std::string& plane : planes)
        xml += "<OME:Plane " + plane + "/>";
    return xml + "</OME:Pixels></OME:Image>";
}

Document StoreOf(Stack stack, std::vector<CTiffDirectory> directories)
{
    Document document;
    document.With(stack.InTiffStore());
    document.TiffStore(stack.Id()) = std::move(directories);
    return document;
}

Document DocumentOf(Stack stack, const std::function<void(CTiffDirectory&)>& change)
{
    Document document;
    document.With(std::move(stack));
    change(document.File().Directories.at(1)); // behind the overview
    return document;
}

CPlainTiff::CPlainTiff(const std::filesystem::path& path, uint32_t directory) : _tif(TIFFOpen(path.c_str(), "r"))
{
    if (!_tif || TIFFSetDirectory(_tif.get(), static_cast<tdir_t>(directory)) != 1)
        throw std::runtime_error("libtiff does not read " + path.string());
}

ByteString CPlainTiff::RawStrip(uint32_t number)
{
    ByteString bytes(static_cast<size_t>(TIFFRawStripSize64(_tif.get(), number)));
    TIFFReadRawStrip(_tif.get(), number, bytes.data(), static_cast<tmsize_t>(bytes.size()));
    return bytes;
}

ByteString CPlainTiff::RawTile(uint32_t number)
{
    ByteString bytes(static_cast<size_t>(TIFFGetStrileByteCount(_tif.get(), number)));
    TIFFReadRawTile(_tif.get(), number, bytes.data(), static_cast<tmsize_t>(bytes.size()));
    return bytes;
}

ByteString CPlainTiff::Decoded()
{
    ByteString all;
    for (uint32_t strip = 0; strip < TIFFNumberOfStrips(_tif.get()); ++strip)
    {
        ByteString rows(static_cast<size_t>(TIFFStripSize(_tif.get())));
        const tmsize_t size = TIFFReadEncodedStrip(_tif.get(), strip, rows.data(), -1);
        if (size < 0)
            throw std::runtime_error("libtiff does not decode strip " + std::to_string(strip));
        all.insert(all.end(), rows.begin(), rows.begin() + size);
    }
    return all;
}

Zel::CZelMultiDimImage& TiffSlide::Model(uint32_t stackId) const
{
    return dynamic_cast<Zel::CZelMultiDimImage&>(*ModelOfDocument().MultiDimImages().at(stackId));
}

CIA::CDeepZoomTile* TiffSlide::ModelTile(int32_t col, int32_t row, uint32_t level, CIA::CFrameIdx frame) const
{
    return Model().Frames().at(frame)->DeepZoomTiles().Find({col, row, level});
}

std::vector<Record> TiffSlide::Records() const
{
    std::vector<Record> records;
    for (const Zel::CTiffStoreLevel& level : Model().OpenedKorFile().TiffStoreLevels())
        for (uint32_t position = 0; position < level.NumOfPositions(); ++position)
            for (size_t plane = 0; plane < level.Planes.size(); ++plane)
            {
                const CIA::CFrameIdx& idx = level.Planes[plane];
                records.push_back({static_cast<int32_t>(position % level.NumOfCols),
                                   static_cast<int32_t>(position / level.NumOfCols), idx.Z, idx.T, idx.C, idx.L,
                                   level.Level, level.TiffIfd(plane)});
            }
    return records;
}

AC_Result TiffSlide::ResultOfReading(Document document)
{
    const AC_Result result = ResultOfOpening(std::move(document));
    return result == AC_RESULT_SUCCESS ? ResultOfFirstBody() : result;
}

AC_Result TiffSlide::ResultOfFirstBody() const
{
    AC_HGROUP group = nullptr;
    AC_HAREA area = nullptr;
    AC_HIMAGE image = nullptr;
    INT32 count = 0;
    CMN_RECT rect = {};
    AC_Result result = Call(_AC_GetGroup, Doc(), 0, &group);
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetNumOfArea, group, 0, &count);
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetArea, group, 0, UINT64{0}, &area);
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetAreaPosition, area, &rect);
    AC_AXIS_INFO axes[] = {AtZ(0), AtT(0), AtL(0)};
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetImage, area, L"0", axes, 3, &image);
    if (result == AC_RESULT_SUCCESS)
        result = Call(_AC_GetImageSize, image, &rect);
    return result == AC_RESULT_SUCCESS ? ResultOfBody(image) : result;
}

ModelRead ReadInto(CIA::CDeepZoomTile& tile, uint32_t size, unsigned char fill, CIA::CPixelRect part)
{
    ModelRead read;
    read.Bytes.assign(size, fill);
    CIA::CByteArray buffer(read.Bytes.data(), size);
    errno = 0;
    read.IsRead = tile.PixelBuf(buffer, part);
    read.Size = buffer.Size;
    return read;
}

ByteString ReadAll(CIA::CDeepZoomTile& tile, CIA::CPixelRect part)
{
    CIA::CByteArray size;
    errno = 0;
    if (!tile.PixelBuf(size, part))
        throw std::runtime_error("the tile does not tell its size");
    ModelRead read = ReadInto(tile, size.Size, 0xCC, part);
    if (!read.IsRead || read.Size != size.Size)
        throw std::runtime_error("the tile does not have the size that it told");
    return read.Bytes;
}

ByteString Cut(const ByteString& pixels, size_t width, size_t bytesPerPixel, const CMN_RECT& r)
{
    ByteString part;
    for (auto y = static_cast<size_t>(r.y); y < static_cast<size_t>(r.y + r.height); ++y)
    {
        const auto row =
            pixels.begin() + static_cast<std::ptrdiff_t>((y * width + static_cast<size_t>(r.x)) * bytesPerPixel);
        part.insert(part.end(), row, row + static_cast<std::ptrdiff_t>(static_cast<size_t>(r.width) * bytesPerPixel));
    }
    return part;
}

} // namespace TiffOfTest
