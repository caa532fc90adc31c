#include "CommonImageAccess/JpegStrip.h"

#include "CommonUtil/Assertion.h"

#include <array>

namespace CIA
{

namespace
{

/// The codes behind the 0xFF of a JPEG marker.
enum EMarker : unsigned char
{
    BaselineFrame = 0xC0,
    ExtendedFrame = 0xC1,
    LosslessFrame = 0xC3,
    HuffmanTable = 0xC4,
    ArithmeticFrame = 0xC9,
    ArithmeticProgressiveFrame = 0xCA,
    Restart0 = 0xD0,
    StartOfImage = 0xD8,
    StartOfScan = 0xDA,
    QuantizationTable = 0xDB
};

/// An APP14 segment that says that the colours were not transformed.
constexpr std::array<unsigned char, 16> Adobe = {0xFF, 0xEE, 0x00, 0x0E, 0x41, 0x64, 0x6F, 0x62,
                                                 0x65, 0x00, 0x64, 0x00, 0x00, 0x00, 0x00, 0x00};

constexpr size_t OffsetOfHeight = 5; ///< in a frame segment, from its 0xFF on
constexpr size_t SizeOfClosingMarker = 2;

bool IsFrame(unsigned char code)
{
    return code == BaselineFrame || code == ExtendedFrame || code == LosslessFrame || code == ArithmeticFrame ||
           code == ArithmeticProgressiveFrame;
}

/// Walks the segments of a strip; the position is that of a marker's code.
class CStripWalk
{
public:
    CStripWalk(std::span<const unsigned char> strip, std::vector<unsigned char>& output)
        : _strip(strip), _output(output)
    {
    }

    bool IsAtEnd() const { return _position >= _strip.size(); }
    unsigned char Code() const { return _strip[_position]; }
    void PassStartOfImage() { _position += 2; }
    /// Past the end where the strip ends before the segment's length.
    void PassSegment() { _position += HasLength() ? Length() + 2 : 2; }

    void CopySegment()
    {
        ZEL_ASSERT(HasLength());
        const size_t start = _position - 1;
        const size_t size = Length() + 2;
        ZEL_ASSERT(size <= _strip.size() - start);
        _output.insert(_output.end(), _strip.begin() + static_cast<std::ptrdiff_t>(start),
                       _strip.begin() + static_cast<std::ptrdiff_t>(start + size));
    }

    void CopyFrame(uint32_t height)
    {
        ZEL_ASSERT(HasLength() && _strip[_position + 1] == 0);
        ZEL_ASSERT(Length() + 2 > OffsetOfHeight + 1);
        const size_t start = _output.size();
        CopySegment();
        _output[start + OffsetOfHeight] = static_cast<unsigned char>(height >> 8);
        _output[start + OffsetOfHeight + 1] = static_cast<unsigned char>(height);
    }

    /// The coded pixels: all that is left but the closing marker.
    void CopyRest()
    {
        ZEL_ASSERT(_strip.size() >= SizeOfClosingMarker && _position - 1 <= _strip.size() - SizeOfClosingMarker);
        _output.insert(_output.end(), _strip.begin() + static_cast<std::ptrdiff_t>(_position - 1),
                       _strip.end() - static_cast<std::ptrdiff_t>(SizeOfClosingMarker));
    }

private:
    bool HasLength() const { return _position + 2 < _strip.size(); }
    size_t Length() const { return _strip[_position + 2]; }

    std::span<const unsigned char> _strip;
    std::vector<unsigned char>& _output;
    size_t _position = 1;
};

void CopyScan(CStripWalk& walk, std::vector<unsigned char>& output, uint32_t stripID)
{
    if (stripID == 0)
        walk.CopySegment();
    else
    {
        output.push_back(0xFF);
        output.push_back(static_cast<unsigned char>(Restart0 + ((stripID - 1) & 7)));
    }
    walk.PassSegment();
    walk.CopyRest();
}

} // namespace

bool Apply_Huffman_On_JPEG(std::span<const unsigned char> strip, std::vector<unsigned char>& output, uint32_t stripID,
                           uint32_t height)
{
    ZEL_ASSERT(!strip.empty() && strip.front() == 0xFF);
    CStripWalk walk(strip, output);
    while (!walk.IsAtEnd())
    {
        const unsigned char code = walk.Code();
        if (code == StartOfScan)
        {
            CopyScan(walk, output, stripID);
            return true;
        }
        if (code == StartOfImage)
        {
            if (stripID == 0)
                output.insert(output.end(), Adobe.begin(), Adobe.end());
            walk.PassStartOfImage();
            continue;
        }
        if (code == HuffmanTable || code == QuantizationTable)
            walk.CopySegment();
        else if (IsFrame(code) && stripID == 0)
            walk.CopyFrame(height);
        walk.PassSegment();
    }
    return false;
}

} // namespace CIA
