#pragma once

#include "HostTool/Pixels/Colour.h"
#include "HostTool/Pixels/GroupPixels.h"

#include <mutex>

namespace HostTool
{

/// Tiles that could not be decoded. Several threads may add to it at once.
class CTileFailures
{
public:
    void Add(std::string line);
    uint64_t Count() const { return _Count; }
    /// The first of them, "level 0, column 3, row 4, channel 0, ...: why"; empty without any.
    const std::string& First() const { return _First; }
    /// "2 tiles cannot be read and are background; the first is level 0, ...: why"; `what` is "read".
    std::string Text(const std::string& what) const;

private:
    std::mutex _Mutex;
    uint64_t _Count = 0;
    std::string _First;
};

/// "level 0, column 3, row 4, channel 0, z 0, t 0, lambda 0"
std::string NameOfTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position);

/// Reads rectangles of a level's planes out of their tiles.
class CStitcher
{
public:
    CStitcher(const CGroupPixels& pixels, CColour background, unsigned jobs)
        : _Pixels(pixels), _Background(background), _Jobs(jobs)
    {
    }

    /// Decodes what `rect` shows into the target, which is of its size and of the channel's format. What has no tile,
    /// or one that can't be decoded, is background.
    void Read(const CLevel& level, const CPosition& position, const CPixelRect& rect, const CPixelTarget& target);
    /// The same for one tile, whole.
    void ReadTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position, const CPixelTarget& target);

    const CTileFailures& Failures() const { return _Failures; }

private:
    void ReadPart(const CLevel& level, int64_t col, int64_t row, const CPosition& position, const CPixelRect& rect,
                  const CPixelTarget& target);
    /// False if there is no such tile, or it can't be decoded; the target is then undefined.
    bool Decode(const CLevel& level, int64_t col, int64_t row, const CPosition& position, const CPixelTarget& target);
    void Fill(const CPixelTarget& target) const;

    const CGroupPixels& _Pixels;
    CColour _Background;
    unsigned _Jobs;
    CTileFailures _Failures;
};

} // namespace HostTool
