#include "HostTool/Export/Proof.h"

#include "HostTool/Export/TiffFields.h"
#include "HostTool/HostError.h"

#include <tiffio.h>

namespace HostTool
{

struct CProof::CHandle
{
    explicit CHandle(TIFF* tiff) : Tiff(tiff) {}
    ~CHandle() { TIFFClose(Tiff); }
    CHandle(const CHandle&) = delete;
    CHandle& operator=(const CHandle&) = delete;
    TIFF* Tiff;
};

CProof::CProof(const std::filesystem::path& file, std::filesystem::path name, const std::optional<CColour>& background,
               unsigned jobs, CProgress& progress)
    : _Name(std::move(name)), _Background(background), _Jobs(jobs), _Progress(progress)
{
    // A compression that is stored is nothing that the library has to know.
    TIFFSetWarningHandler(nullptr);
    TIFFSetErrorHandler(nullptr);
    TIFF* tiff = TIFFOpen(file.c_str(), "rm");
    if (!tiff)
        Fail("it cannot be opened again");
    _File = std::make_unique<CHandle>(tiff);
}

CProof::~CProof() = default;

void CProof::Fail(const std::string& what) const
{
    throw CHostError(ExitCode::NotEqual, _Name.string() + ": it is not what was exported: " + what +
                                             "; the file is not kept, try again on another disk");
}

void CProof::SelectDirectory(uint64_t offset)
{
    if (!TIFFSetSubDirectory(_File->Tiff, offset))
        Fail("there is no directory at " + std::to_string(offset));
}

void CProof::ReadBytes(uint32_t number, ByteBuffer& bytes) const
{
    bytes.resize(TIFFGetStrileByteCount(_File->Tiff, number));
    const auto size = static_cast<tmsize_t>(bytes.size());
    if (TIFFReadRawTile(_File->Tiff, number, bytes.data(), size) != size)
        bytes.clear();
}

void CProof::ProveStored(const CGroupPixels& pixels, const CLevelPlan& plan, const CPosition& position)
{
    ByteBuffer bytes;
    for (uint64_t row = 0; row < plan.NumOfRows(); ++row)
        for (uint64_t col = 0; col < plan.NumOfCols(); ++col)
        {
            const auto number = static_cast<uint32_t>(row * plan.NumOfCols() + col);
            _Progress.Advance(1);
            try
            {
                const auto tile = ReadStoredTile(pixels, plan, col, row, position);
                if (!tile)
                    continue;
                if (ReadBytes(number, bytes); bytes != tile->Bytes)
                    Fail("the bytes of " + NameOfStoredTile(plan, col, row, position) + " differ");
            }
            catch (const CTileError&)
            {
                continue; // said when it was written
            }
            ++_Counts.BytesEqual;
        }
}

bool CProof::ReadPixels(uint32_t number, const CPixelTarget& pixels) const
{
    uint16_t compression = 0;
    TIFFGetField(_File->Tiff, TIFFTAG_COMPRESSION, &compression);
    const auto size = static_cast<tmsize_t>(pixels.Stride * pixels.Height);
    if (compression != TiffCompression::Jpeg2000 &&
        compression != TiffCompression::Jpeg2000OfRgb) // which the library does not know
        return TIFFReadEncodedTile(_File->Tiff, number, pixels.Pixels, size) == size;
    ByteBuffer bytes;
    ReadBytes(number, bytes);
    try
    {
        DecodeJ2k(bytes, pixels);
        return true;
    }
    catch (const CTileError&)
    {
        return false;
    }
}

void CProof::ProveRecompressed(const CGroupPixels& pixels, const CLevelPlan& plan, const CPosition& position)
{
    const CPixelFormat& format = pixels.Channel(position.Channel).Format;
    CStitcher stitcher(pixels, _Background, _Jobs);
    CPixelTarget tile{nullptr, size_t{plan.TileWidth} * format.BytesPerPixel(), plan.TileWidth, plan.TileHeight,
                      format};
    ByteBuffer expected(tile.Stride * tile.Height);
    ByteBuffer read(expected.size());
    tile.Pixels = expected.data();
    for (uint64_t row = 0; row < plan.NumOfRows(); ++row)
        for (uint64_t col = 0; col < plan.NumOfCols(); ++col)
        {
            const CPixelRect rect{plan.Rect.X + static_cast<int64_t>(col * plan.TileWidth),
                                  plan.Rect.Y + static_cast<int64_t>(row * plan.TileHeight), plan.TileWidth,
                                  plan.TileHeight};
            stitcher.Read(*plan.Level, position, rect, tile);
            const auto number = static_cast<uint32_t>(row * plan.NumOfCols() + col);
            if (!ReadPixels(number, {read.data(), tile.Stride, tile.Width, tile.Height, format}) || read != expected)
                Fail("the pixels of tile " + std::to_string(number) + " of level " + std::to_string(plan.Level->Level) +
                     ", " + TextOf(position) + " differ");
            ++_Counts.PixelsEqual;
            _Progress.Advance(1);
        }
}

void CProof::ProvePlane(const CGroupPixels& pixels, const std::vector<CLevelPlan>& plan, const CPosition& position,
                        uint64_t offset)
{
    SelectDirectory(offset);
    uint16_t numOfChildren = 0;
    const uint64_t* children = nullptr;
    TIFFGetField(_File->Tiff, TIFFTAG_SUBIFD, &numOfChildren, &children);
    if (numOfChildren + size_t{1} != plan.size())
        Fail("levels are missing");
    std::vector<uint64_t> offsets = {offset};
    offsets.insert(offsets.end(), children, children + numOfChildren);
    ProveLevels(pixels, plan, position, offsets);
}

void CProof::ProveLevels(const CGroupPixels& pixels, const std::vector<CLevelPlan>& plan, const CPosition& position,
                         const std::vector<uint64_t>& offsets)
{
    for (size_t level = 0; level < plan.size(); ++level)
    {
        SelectDirectory(offsets.at(level));
        if (plan[level].IsAsStored())
            ProveStored(pixels, plan[level], position);
        else
            ProveRecompressed(pixels, plan[level], position);
    }
}

} // namespace HostTool
