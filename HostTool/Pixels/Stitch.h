#pragma once

#include "HostTool/Pixels/Colour.h"
#include "HostTool/Pixels/GroupPixels.h"

#include <atomic>
#include <mutex>

namespace HostTool
{

/// Tiles that could not be decoded. Several threads may add to it at once.
class CTileFailures
{
public:
    void Add(std::string line);
    uint64_t Count() const { return _Count; }
    /// The first of them, "level 0, column 3, row 4, channel 0, ...: why", and a line that counts the rest.
    std::vector<std::string> Lines() const;
    /// "2 tiles cannot be read and are background; the first is level 0, ...: why"; `what` is "read".
    std::string Text(const std::string& what) const;

private:
    std::mutex _Mutex;
    uint64_t _Count = 0;
    std::vector<std::string> _Lines; ///< of the first ones
};

/// "level 0, column 3, row 4, channel 0, z 0, t 0, lambda 0"
std::string NameOfTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position);

/// The background that was asked for, or the one of a group: white for a picture in red, green and blue, and 0, which
/// is nothing, for what is measured: grey, or several channels.
CColour BackgroundOf(const CGroupPixels& pixels, const std::optional<CColour>& asked);

/// Reads rectangles of a level's planes out of their tiles.
class CStitcher
{
public:
    CStitcher(const CGroupPixels& pixels, const std::optional<CColour>& background, unsigned jobs)
        : _Pixels(pixels), _Background(BackgroundOf(pixels, background)), _Jobs(jobs)
    {
    }

    /// Decodes what `rect` shows into the target, which is of its size and of the channel's format. What has no tile,
    /// or one that can't be decoded, is background.
    void Read(const CLevel& level, const CPosition& position, const CPixelRect& rect, const CPixelTarget& target);

    const CTileFailures& Failures() const { return _Failures; }
    /// How many tiles within the picture are not there and were filled with background. Rectangles that follow each
    /// other from top to bottom, each as wide as the one before, count a tile that both touch once.
    uint64_t NumOfFilled() const { return _NumOfFilled; }

private:
    void NoteBand(const CLevel& level, const CPosition& position, const CPixelRect& rect);
    void NoteMissing(const CLevel& level, const CPixelRect& tile);
    void ReadPart(const CLevel& level, int64_t col, int64_t row, const CPosition& position, const CPixelRect& rect,
                  const CPixelTarget& target);
    enum class Outcome
    {
        Decoded,
        Missing,
        Failed
    };
    /// The target is undefined unless the tile could be decoded.
    Outcome Decode(const CLevel& level, int64_t col, int64_t row, const CPosition& position,
                   const CPixelTarget& target);
    void Fill(const CPixelTarget& target) const;

    const CGroupPixels& _Pixels;
    CColour _Background;
    unsigned _Jobs;
    CTileFailures _Failures;
    std::atomic<uint64_t> _NumOfFilled = 0;
    // Of the rectangle that was read last.
    int _Level = -1;
    CPosition _Position;
    CPixelRect _Band;
    int64_t _TopOfNewTiles = 0; ///< tiles that begin above it were met in the rectangle before
};

} // namespace HostTool
