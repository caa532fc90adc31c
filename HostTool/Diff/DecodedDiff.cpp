#include "HostTool/Diff/PixelsDiff.h"
#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/Stitch.h"
#include "HostTool/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace HostTool
{

namespace
{

/// One document's part in the comparison of a level.
class CDecodedSide
{
public:
    CDecodedSide(const CGroupPixels& pixels, int level)
        : _Pixels(pixels), _Level(pixels.Level(level)), _Stitcher(pixels, {}, 1)
    {
    }

    const CLevel& Level() const { return _Level; }
    const CTileFailures& Failures() const { return _Stitcher.Failures(); }
    const CPixelFormat& FormatOf(const CPosition& position) const { return _Pixels.Channel(position.Channel).Format; }

    /// What of the picture has tiles in the grid, from the picture's corner.
    CPixelRect CoveredPart() const
    {
        const CPixelRect first = _Level.TileRect(_Level.FirstCol, _Level.FirstRow);
        const CPixelRect tiles{first.X, first.Y, static_cast<int64_t>(_Level.Grid.Cols) * _Level.TileWidth,
                               static_cast<int64_t>(_Level.Grid.Rows) * _Level.TileHeight};
        CPixelRect part = Intersection(_Level.Picture, tiles);
        part.X -= _Level.Picture.X;
        part.Y -= _Level.Picture.Y;
        return part;
    }

    /// Decodes a part of the picture, and tells for each pixel whether there is a tile.
    void Read(const CPixelRect& part, const CPosition& position, ByteBuffer& pixels, std::vector<bool>& isStored)
    {
        const CPixelRect rect{part.X + _Level.Picture.X, part.Y + _Level.Picture.Y, part.Width, part.Height};
        CPixelTarget target{nullptr, 0, static_cast<uint32_t>(rect.Width), static_cast<uint32_t>(rect.Height),
                            FormatOf(position)};
        target.Stride = target.Width * size_t{target.Format.BytesPerPixel()};
        pixels.resize(target.Stride * target.Height);
        target.Pixels = pixels.data();
        _Stitcher.Read(_Level, position, rect, target);
        isStored.assign(size_t{target.Width} * target.Height, false);
        const CTileRange range = TilesOf(_Level, rect);
        for (int64_t row = range.FirstRow; row <= range.LastRow; ++row)
            for (int64_t col = range.FirstCol; col <= range.LastCol; ++col)
                if (_Pixels.FindImage(_Level, col, row, position))
                    Mark(Intersection(_Level.TileRect(col, row), rect), rect, isStored);
    }

private:
    static void Mark(const CPixelRect& tile, const CPixelRect& rect, std::vector<bool>& isStored)
    {
        for (int64_t y = tile.Y - rect.Y; y < tile.Bottom() - rect.Y; ++y)
            std::fill_n(isStored.begin() + y * rect.Width + tile.X - rect.X, tile.Width, true);
    }

    const CGroupPixels& _Pixels;
    const CLevel& _Level;
    CStitcher _Stitcher;
};

template <typename Number>
double NumberAt(const uint8_t* place)
{
    Number number;
    std::memcpy(&number, place, sizeof(number));
    return static_cast<double>(number);
}

double ValueAt(const uint8_t* place, const CPixelFormat& format)
{
    const bool isSigned = format.Values == ValueKind::Signed;
    switch (format.BytesPerComponent)
    {
    case 1:
        return isSigned ? NumberAt<int8_t>(place) : NumberAt<uint8_t>(place);
    case 2:
        return isSigned ? NumberAt<int16_t>(place) : NumberAt<uint16_t>(place);
    case 4:
        return format.Values == ValueKind::Float ? NumberAt<float>(place)
               : isSigned                        ? NumberAt<int32_t>(place)
                                                 : NumberAt<uint32_t>(place);
    default:
        return format.Values == ValueKind::Float ? NumberAt<double>(place)
               : isSigned                        ? NumberAt<int64_t>(place)
                                                 : NumberAt<uint64_t>(place);
    }
}

struct CDecodedDifference
{
    uint64_t NumOfPixels = 0;
    uint64_t NumOfUnstored = 0; ///< of them, those that one document has no tile for
    double Most = 0;            ///< of a component, among those that both have
};

/// A part of both pictures, decoded.
struct CPartPair
{
    ByteBuffer PixelsOfA;
    ByteBuffer PixelsOfB;
    std::vector<bool> IsStoredInA;
    std::vector<bool> IsStoredInB;
};

CDecodedDifference DifferenceOf(const CPartPair& part, const CPixelFormat& format)
{
    CDecodedDifference difference;
    const size_t bytesPerPixel = format.BytesPerPixel();
    for (size_t i = 0; i < part.IsStoredInA.size(); ++i)
    {
        const uint8_t* a = part.PixelsOfA.data() + i * bytesPerPixel;
        const uint8_t* b = part.PixelsOfB.data() + i * bytesPerPixel;
        if (part.IsStoredInA[i] != part.IsStoredInB[i])
        {
            ++difference.NumOfPixels;
            ++difference.NumOfUnstored;
            continue;
        }
        if (!part.IsStoredInA[i] || std::memcmp(a, b, bytesPerPixel) == 0)
            continue;
        ++difference.NumOfPixels;
        for (size_t component = 0; component < bytesPerPixel; component += format.BytesPerComponent)
            difference.Most =
                std::max(difference.Most, std::abs(ValueAt(a + component, format) - ValueAt(b + component, format)));
    }
    return difference;
}

std::string TextOf(const CDecodedDifference& difference, const CPixelRect& part)
{
    std::string text =
        std::to_string(difference.NumOfPixels) + " of " + std::to_string(part.Width * part.Height) + " pixels differ";
    if (difference.NumOfUnstored < difference.NumOfPixels)
        text += ", by at most " + HostTool::TextOf(difference.Most);
    if (difference.NumOfUnstored > 0)
        text += ", " + std::to_string(difference.NumOfUnstored) + " of them stored in one document only";
    return text;
}

std::string TextOf(const CPixelFormat& format)
{
    static const std::map<ValueKind, std::string> names = {
        {ValueKind::Unsigned, "unsigned"}, {ValueKind::Signed, "signed"}, {ValueKind::Float, "float"}};
    return std::to_string(format.NumOfComponents) + " x " + std::to_string(8 * format.BytesPerComponent) + " bits, " +
           names.at(format.Values);
}

/// Compares the pixels of one level of both documents, part by part.
class CLevelComparer
{
public:
    CLevelComparer(const CGroupPair& groups, int level, unsigned jobs, CDiffReport& report)
        : _Name(groups.Name() + "level " + std::to_string(level)), _A(groups.A, level), _B(groups.B, level),
          _Jobs(jobs), _Report(report)
    {
        SetParts();
    }

    uint64_t NumOfParts() const { return _NumOfCols * _NumOfRows; }

    void Compare(const CPosition& position, CProgress& progress)
    {
        const CPixelFormat& format = _A.FormatOf(position);
        if (format != _B.FormatOf(position))
            return _Report.Add(DiffKind::Tile, _Name + ", " + HostTool::TextOf(position) + ": pixels of " +
                                                   TextOf(format) + " | " + TextOf(_B.FormatOf(position)));
        for (uint64_t row = 0; row < _NumOfRows; ++row)
        {
            std::vector<CDecodedDifference> differences(_NumOfCols);
            ForEachInParallel(_NumOfCols, _Jobs,
                              [&](size_t col) { differences[col] = ComparePart(PartAt(col, row), position); });
            for (uint64_t col = 0; col < _NumOfCols; ++col)
                if (differences[col].NumOfPixels > 0)
                    Tell(PartAt(col, row), position, differences[col]);
            _Report.Compared(DiffKind::Tile, _NumOfCols);
            progress.Advance(_NumOfCols);
        }
    }

    void TellFailures() const
    {
        for (const CDecodedSide* side : {&_A, &_B})
            if (const CTileFailures& failures = side->Failures(); failures.Count() > 0)
                _Report.AddFailures(_Name + std::string(side == &_A ? " of the first" : " of the second") +
                                        " document: " + TextOfCount(failures.Count(), "tile") +
                                        " cannot be decoded; the first is " + failures.Lines().front(),
                                    failures.Count());
    }

private:
    /// The parts are tiles of the first document, so that each of them is decoded once. Larger ones are cut.
    void SetParts()
    {
        constexpr uint64_t mostPixels = uint64_t{1} << 24;
        constexpr int64_t usualSize = 512;
        const CLevel& level = _A.Level();
        const bool isTilePart = uint64_t{level.TileWidth} * level.TileHeight <= mostPixels;
        _PartWidth = isTilePart ? level.TileWidth : usualSize;
        _PartHeight = isTilePart ? level.TileHeight : usualSize;
        const CPixelRect a = _A.CoveredPart();
        const CPixelRect b = _B.CoveredPart();
        const int64_t x = std::min(a.X, b.X);
        const int64_t y = std::min(a.Y, b.Y);
        const CPixelRect both{x, y, std::max(a.Right(), b.Right()) - x, std::max(a.Bottom(), b.Bottom()) - y};
        const CPixelRect common{0, 0, std::min(level.Picture.Width, _B.Level().Picture.Width),
                                std::min(level.Picture.Height, _B.Level().Picture.Height)};
        _Rect = Intersection(both, common);
        if (_Rect.IsEmpty())
            return;
        const CTileRange range = TilesOf(level, {_Rect.X + level.Picture.X, _Rect.Y + level.Picture.Y, 1, 1});
        const CPixelRect firstTile = level.TileRect(range.FirstCol, range.FirstRow);
        _FirstX = isTilePart ? firstTile.X - level.Picture.X : _Rect.X;
        _FirstY = isTilePart ? firstTile.Y - level.Picture.Y : _Rect.Y;
        _NumOfCols = static_cast<uint64_t>((_Rect.Right() - _FirstX + _PartWidth - 1) / _PartWidth);
        _NumOfRows = static_cast<uint64_t>((_Rect.Bottom() - _FirstY + _PartHeight - 1) / _PartHeight);
    }

    CPixelRect PartAt(uint64_t col, uint64_t row) const
    {
        return Intersection({_FirstX + static_cast<int64_t>(col) * _PartWidth,
                             _FirstY + static_cast<int64_t>(row) * _PartHeight, _PartWidth, _PartHeight},
                            _Rect);
    }

    CDecodedDifference ComparePart(const CPixelRect& part, const CPosition& position)
    {
        CPartPair pair;
        _A.Read(part, position, pair.PixelsOfA, pair.IsStoredInA);
        _B.Read(part, position, pair.PixelsOfB, pair.IsStoredInB);
        return DifferenceOf(pair, _A.FormatOf(position));
    }

    void Tell(const CPixelRect& part, const CPosition& position, const CDecodedDifference& difference)
    {
        _Report.Add(DiffKind::Tile, _Name + ", --rect " + std::to_string(part.X) + "," + std::to_string(part.Y) + "," +
                                        std::to_string(part.Width) + "," + std::to_string(part.Height) + ", " +
                                        HostTool::TextOf(position) + ": " + TextOf(difference, part));
    }

    std::string _Name;
    CDecodedSide _A;
    CDecodedSide _B;
    unsigned _Jobs;
    CDiffReport& _Report;
    CPixelRect _Rect; ///< what is compared, from the picture's corner
    int64_t _PartWidth = 1;
    int64_t _PartHeight = 1;
    int64_t _FirstX = 0; ///< of the first part
    int64_t _FirstY = 0;
    uint64_t _NumOfCols = 0;
    uint64_t _NumOfRows = 0;
};

} // namespace

void CompareDecoded(const CGroupPair& groups, unsigned jobs, CDiffReport& report)
{
    const std::vector<CPosition> planes = CommonPlanes(groups);
    for (int level = 0; level < std::min(groups.A.NumOfLevels(), groups.B.NumOfLevels()); ++level)
    {
        if (!groups.A.HasLevel(level) || !groups.B.HasLevel(level))
            continue;
        CLevelComparer comparer(groups, level, jobs, report);
        CProgress progress(comparer.NumOfParts() * planes.size(), "tiles");
        for (const CPosition& position : planes)
            comparer.Compare(position, progress);
        comparer.TellFailures();
    }
}

} // namespace HostTool
