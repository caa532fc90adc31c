#pragma once
#include "CommonImageAccess/ImgDoc.h"
#include "Tests/Accessor/Slide.h"
#include "Tests/Support/Assertion.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

#include <compare>
#include <memory>
#include <tiffio.h>

/// Stacks that are kept as TIFF: as a host sees them, and as the model has them where a host cannot look.
namespace TiffOfTest
{

using namespace SlideOfTest;

constexpr uint16_t CompressionJpeg7 = 7;
constexpr uint16_t CompressionJ2k = 34712;

/// A record of a TIFF store. Members that are not named are 0.
struct Record
{
    int32_t Col = 0;
    int32_t Row = 0;
    uint32_t Z = 0;
    uint32_t T = 0;
    uint32_t C = 0;
    uint32_t L = 0;
    uint32_t Level = 0;
    uint32_t Directory = 0;
    bool operator==(const Record&) const = default;
};
void PrintTo(const Record& record, std::ostream* stream);

/// XML of so many images.
std::string Ome(const std::vector<std::string>& images);
/// One image, with its planes by their attributes.
std::string OmeImage(const std::string& samplesPerPixel, const std::vector<std::string>& planes);
/// A plane without attributes.
inline const std::string AnyPlane;

/// A stack whose store is the given TIFF directories, without XML unless the first of them has it.
Document StoreOf(Stack stack, std::vector<CTiffDirectory> directories);
/// A stack of one directory of the document, which `change` may spoil.
Document DocumentOf(Stack stack, const std::function<void(CTiffDirectory&)>& change);

struct CTiffCloser
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
/// A TIFF as libtiff reads it by itself, on a directory.
class CPlainTiff
{
public:
    CPlainTiff(const std::filesystem::path& path, uint32_t directory);
    ByteString RawStrip(uint32_t number);
    ByteString RawTile(uint32_t number);
    /// All strips, decoded.
    ByteString Decoded();
    TIFF* Get() { return _tif.get(); }

private:
    std::unique_ptr<TIFF, CTiffCloser> _tif;
};

/// A document with a stack that is kept as TIFF.
class TiffSlide : public Slide
{
protected:
    CIA::CImgDoc& ModelOfDocument() const { return *static_cast<CIA::CImgDoc*>(Doc()); }
    Zel::CZelMultiDimImage& Model(uint32_t stackId = 1) const;
    /// The tile of a frame as the model keys it; null when it has none there.
    CIA::CDeepZoomTile* ModelTile(int32_t col, int32_t row, uint32_t level = 0, CIA::CFrameIdx frame = {}) const;
    /// All of the store's records, in their order.
    std::vector<Record> Records() const;
    /// The result of the first call that fails on the way from the file to the bytes of the first image.
    AC_Result ResultOfReading(Document document);
    /// The same for the first group of the document that is open.
    AC_Result ResultOfFirstBody() const;

    std::filesystem::path TiffStoreFile() const { return StoreFile(1).replace_extension(".tif"); }
    std::filesystem::path File() const { return Folder().Path() / "slide.zel"; }
};

/// A tile read by the model: what was answered, the size that was stored, and the buffer.
struct ModelRead
{
    bool IsRead = false;
    uint32_t Size = 0;
    ByteString Bytes;
};
/// Reads into a buffer of so many bytes, each of which is `fill` before.
ModelRead ReadInto(CIA::CDeepZoomTile& tile, uint32_t size, unsigned char fill = 0xCC, CIA::CPixelRect part = {});
/// Asks for the size, then reads.
ByteString ReadAll(CIA::CDeepZoomTile& tile, CIA::CPixelRect part = {});

/// A rectangle out of pixels that lie in rows.
ByteString Cut(const ByteString& pixels, size_t width, size_t bytesPerPixel, const CMN_RECT& r);

} // namespace TiffOfTest
