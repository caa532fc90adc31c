// The values that the pixels of a channel take: how many bits of them are used, and which colours they stand for.

#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "ZelLoader/Images/PixelScan.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Images/ZelPixelFormat.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/Store/ZelDeepZoomTile.h"
#include "ZelLoader/Store/ZelTiffStoreTile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <cerrno>
#include <set>
#include <unordered_set>

namespace Zel
{

namespace
{

/// Keeps a scan of all tiles to the bytes that the file holds, whatever its records claim: bytes that several records
/// share are scanned once, and records that overlap otherwise end in a failed assertion.
class CScannedBytes
{
public:
    explicit CScannedBytes(CZelMultiDimImage& image)
        : _image(image),
          _sizeOfFile(image.UsesKorFile() ? image.OpenedKorFile().FileSize() : image.ParentZelImgDoc().FileSize())
    {
    }

    /// False for a frame whose tiles are those of a frame before it. They are not even made: frames that share a large
    /// directory would have far more of them than the file.
    bool IsNew(const CZelFrame& frame)
    {
        return _image.UsesKorFile() || _directories.insert(frame.TiffDirectory()).second;
    }
    /// True for a tile of a TIFF whose bytes were scanned: it need not even be asked for its size, which would move the
    /// file from directory to directory.
    bool AreKnown(CDeepZoomTile& tile) const { return !IsBinaryStore() && _places.contains(PlaceOf(tile, 0)); }
    bool AreNew(CDeepZoomTile& tile, uint32_t size)
    {
        if (!_places.insert(PlaceOf(tile, size)).second)
            return false;
        _numOfBytes += size;
        // A little more than the file: the last strip of a TIFF store is served by the one before it.
        ZEL_ASSERT(size <= _sizeOfFile && _numOfBytes <= 2 * _sizeOfFile);
        return true;
    }

private:
    using CPlace = std::pair<uint64_t, uint64_t>;

    bool IsBinaryStore() const { return _image.UsesKorFile() && !_image.OpenedKorFile().IsOmeType(); }
    /// What is the same for tiles that share their bytes: where these lie in a binary store; else the directory, and
    /// which of its tiles or strips it is.
    CPlace PlaceOf(CDeepZoomTile& tile, uint32_t size) const
    {
        const uint64_t tileOfDirectory =
            uint64_t{static_cast<uint32_t>(tile.RowIdx())} << 32 | static_cast<uint32_t>(tile.ColIdx());
        if (!_image.UsesKorFile())
            return {static_cast<CZelFrame&>(tile.ParentFrame()).TiffDirectory(), tileOfDirectory};
        if (_image.OpenedKorFile().IsOmeType())
            return {static_cast<CZelTiffStoreTile&>(tile).TiffIfd(), tileOfDirectory};
        return {static_cast<CZelDeepZoomTile&>(tile).BlockOffset(), size};
    }

    CZelMultiDimImage& _image;
    const uint64_t _sizeOfFile;
    uint64_t _numOfBytes = 0;
    std::set<CPlace> _places;
    std::unordered_set<uint32_t> _directories; ///< of the document
};

} // namespace

const CArrayStartAndSize<double>* CZelPixelFormat::ImgDisplayLimits()
{
    const bool hasC = _ParentZelImage.DimensionOrder().Has(DimensionType::DimensionType_C);
    if (_Channel.MetaData())
    {
        ZEL_ASSERT(hasC);
        return _Channel.MetaData()->ImgDisplayLimits();
    }
    ZEL_ASSERT(!hasC && _ParentZelImage.Channels().size() == 1);
    return ImageProps().ImgDisplayLimits();
}

bool CZelPixelFormat::MaxPixelValueOfLimits(std::optional<uint64_t>& maxPixelValue)
{
    const CArrayStartAndSize<double>* limits = ImgDisplayLimits();
    if (!limits)
        return true;
    if (limits->Size != 2)
    {
        errno = ENOEXEC;
        return false;
    }
    const auto wholeNumber = [](double limit)
    {
        const auto number = ToIntegerWithCheck<uint64_t>(limit);
        ZEL_ASSERT(static_cast<double>(number) == limit);
        return number;
    };
    wholeNumber(limits->Arr[0]);
    const uint64_t onePastMax = wholeNumber(limits->Arr[1]);
    ZEL_ASSERT(onePastMax != 0);
    maxPixelValue = onePastMax - 1;
    return true;
}

bool CZelPixelFormat::MaxNumOfUsedBits_init(uint32_t& varToInit)
{
    std::optional<uint64_t> maxPixelValue;
    if (!MaxPixelValueOfLimits(maxPixelValue))
        return false;
    if (maxPixelValue.value_or(0) == 0)
    {
        if (_Channel.CompressionType() != PixelFrameCompressionType::None)
        {
            varToInit = 0xFFFFFFFF; // unknown: nothing is decoded here
            return true;
        }
        if (ComponentFormat() != PixelComponentFormat::PixelComponentFormat_UintOfAnySize)
        {
            ZEL_LOG("TODO: Implement minPixelValue and maxPixelValue calculation for component format that is other "
                    "than ''uint of any size'!");
            varToInit = NumOfBitsPerPixelComponent();
            return true;
        }
        uint64_t greatest = maxPixelValue.value_or(0);
        if (!MaxPixelValueOfTiles(greatest))
            return false;
        maxPixelValue = greatest;
    }
    varToInit = NumOfUsedBits(*maxPixelValue);
    return true;
}

uint32_t CZelPixelFormat::NumOfUsedBits(uint64_t maxPixelValue)
{
    uint32_t numOfUsedBits = 0;
    double power = 1.0;
    while (static_cast<double>(maxPixelValue) >= power)
    {
        ++numOfUsedBits;
        power *= 2;
    }
    const uint32_t minNumOfBytes = (numOfUsedBits + 7) / 8;
    ZEL_ASSERT(NumOfPixelComponents() != 0);
    const uint32_t _NumOfBytes_ = NumOfBytes() / NumOfPixelComponents();
    // Limits cannot claim more bits than the storage has.
    return _NumOfBytes_ < minNumOfBytes ? _NumOfBytes_ * 8 : numOfUsedBits;
}

bool CZelPixelFormat::MaxPixelValueOfTiles(uint64_t& maxPixelValue)
{
    const uint32_t numOfBytesPerPixel = NumOfBytes();
    CMaxPixelValueScan scan(numOfBytesPerPixel, maxPixelValue);
    std::vector<unsigned char> buffer; // one for all tiles
    CScannedBytes scannedBytes(_ParentZelImage);
    const auto scanTile = [&](CDeepZoomTile& tile)
    {
        if (scannedBytes.AreKnown(tile))
            return true;
        CByteArray array;
        if (!tile.PixelBuf(array, {}))
            return false;
        if (!scannedBytes.AreNew(tile, array.Size))
            return true;
        buffer.resize(array.Size);
        array.Arr = buffer.data();
        if (array.Size == 0 || !tile.PixelBuf(array, {})) // a tile of no bytes cannot be read, for hosts either
            return false;
        scan.Add(buffer);
        return true;
    };
    for (const auto& [idx, frame] : _ParentZelImage.Frames())
        if (idx.C == _Channel.ID() && scannedBytes.IsNew(static_cast<CZelFrame&>(*frame)) &&
            !frame->DeepZoomTiles().ForEachOfLevel(0, scanTile))
            return false;
    maxPixelValue = scan.MaxPixelValue();
    return true;
}

bool CZelPixelFormat::ColorLookupTable_init(std::vector<CColor>& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    ZEL_ASSERT(ColorSpace() == ColorSpaceType::GrayScale);
    const CLutBytes lut = LutBytes();
    ZEL_ASSERT(lut.Size % 3 == 0);
    if (lut.Size == 0)
        errno = 0;
    for (uint32_t i = 0; i < lut.Size; i += 3) // blue, green, red
        varToInit.push_back({lut.Arr[i + 2], lut.Arr[i + 1], lut.Arr[i], 1});
    return true;
}

/// The bytes of the channel's own table, else of the image's; none where there is neither.
CZelPixelFormat::CLutBytes CZelPixelFormat::LutBytes()
{
    CZelMetaDataForDimensionChannel* channel = _Channel.MetaData();
    const auto bytesOf = [](auto& lutNode) -> CLutBytes
    {
        if (lutNode.DbgNode()->Type() == ZelDataFieldForVolume)
            if (const CArrayStartAndSize<Byte>* bytes = lutNode.LUTAbsolute())
                return *bytes;
        auto* simpleField = dynamic_cast<CZelDataFieldForSimpleTypes*>(lutNode.DbgNode());
        ZEL_ASSERT(simpleField && simpleField->DataWithType().GetType() == DWT_TYPE::DWT_BASEARRAY);
        const CBasicArray& array = *simpleField->DataWithType().Array();
        ZEL_ASSERT(array.ElementSize() == 1);
        return {reinterpret_cast<Byte*>(array.Ptr()), array.NumOfElements()};
    };
    if (channel && channel->ImgDisplayLutForMultiChannel())
        return bytesOf(*channel->ImgDisplayLutForMultiChannel());
    if (ImageProps().ImgDisplayLutForSingleChannel())
        return bytesOf(*ImageProps().ImgDisplayLutForSingleChannel());
    return {};
}

} // namespace Zel
