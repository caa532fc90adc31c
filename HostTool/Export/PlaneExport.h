#pragma once

#include "HostTool/Export/ExportPlan.h"
#include "HostTool/Export/Recompression.h"
#include "HostTool/Export/TiffFields.h"
#include "HostTool/Export/TileEncoders.h"
#include "HostTool/Pixels/Progress.h"
#include "HostTool/Pixels/Stitch.h"

#include <map>

namespace HostTool
{

/// What an export did, in tiles of the file.
struct CExportCounts
{
    uint64_t AsStored = 0;
    uint64_t Recompressed = 0;
    uint64_t Filled = 0;       ///< nothing is stored there, or it can't be read
    uint64_t UnlikeOthers = 0; ///< as stored, but unlike those that the directory speaks of
    uint64_t Jp2Files = 0;     ///< JPEG 2000 as stored, but not as a bare codestream
};

/// Writes planes of a group into a TIFF file.
class CPlaneExport
{
public:
    /// `recompression` is for levels that are not copied.
    CPlaneExport(const CGroupPixels& pixels, CTiffWriter& file, const std::optional<CColour>& background,
                 const CRecompression& recompression, unsigned jobs, CProgress& progress)
        : _Pixels(pixels), _File(file), _Background(BackgroundOf(pixels, background)), _Recompression(recompression),
          _Jobs(jobs), _Progress(progress), _Stitcher(pixels, background, jobs)
    {
    }

    /// Writes the tiles of one level of a plane. Answers the directory that speaks of them. Throws CHostError.
    CTiffDirectory WriteLevel(const CLevelPlan& plan, const CPosition& position);

    const CExportCounts& Counts() const { return _Counts; }
    /// Tiles that were copied as stored, and do not begin or end as a stream of their coding.
    const CTileFailures& BrokenStreams() const { return _BrokenStreams; }
    /// Tiles that could not be read: background is shown in their place.
    const CTileFailures& Failures() const { return _ReadFailures; }
    const CTileFailures& DecodeFailures() const { return _Stitcher.Failures(); }

private:
    /// Where bytes lie in the file.
    struct CPlace
    {
        uint64_t Offset = 0;
        uint32_t Size = 0;
    };
    struct CPlaces
    {
        std::vector<uint64_t> Offsets;
        std::vector<uint32_t> Sizes;
        void Add(const CPlace& place)
        {
            Offsets.push_back(place.Offset);
            Sizes.push_back(place.Size);
        }
    };
    /// What the first stored tile of a level and plane tells of all.
    struct CStoredFacts
    {
        std::optional<CJpegHeader> Jpeg;
        ByteBuffer JpegTables;
        bool IsCodestream = false; ///< of JPEG 2000
        bool AreKnown = false;
    };

    CPlaces CopyTiles(const CLevelPlan& plan, const CPosition& position, CStoredFacts& facts);
    CPlaces RecompressTiles(const CLevelPlan& plan, const CPosition& position);
    std::optional<CStoredTile> ReadTile(const CLevelPlan& plan, uint64_t col, uint64_t row, const CPosition& position);
    void Note(const CStoredTile& tile, const CLevelPlan& plan, CStoredFacts& facts);
    CPlace Append(std::span<const uint8_t> bytes);
    CPlace BackgroundTile(const CLevelPlan& plan, const CChannelPixels& channel, const CStoredFacts& facts);
    std::vector<uint8_t> EncodeBackground(const CLevelPlan& plan, const CChannelPixels& channel,
                                          const CStoredFacts& facts) const;
    void Describe(CTiffDirectory& directory, const CLevelPlan& plan, const CChannelPixels& channel,
                  const CStoredFacts& facts) const;

    const CGroupPixels& _Pixels;
    CTiffWriter& _File;
    CColour _Background;
    CRecompression _Recompression;
    unsigned _Jobs;
    CProgress& _Progress;
    CStitcher _Stitcher;
    CTileFailures _ReadFailures;
    CTileFailures _BrokenStreams;
    CExportCounts _Counts;
    std::map<std::vector<uint8_t>, CPlace> _BackgroundTiles; ///< by their bytes: each is written once
};

/// What the JPEG streams of a channel are like if there is none to look at.
CJpegHeader UsualJpegHeader(const CLevelPlan& plan, const CPixelFormat& format);

} // namespace HostTool
