#pragma once

#include "HostTool/DocumentFacts.h"
#include "HostTool/Pixels/Pyramid.h"
#include "HostTool/Pixels/TileCodec.h"

#include <set>

namespace HostTool
{

/// A channel of a group, as far as its pixels go.
struct CChannelPixels
{
    uint32_t ID = 0;
    CPixelFormat Format;
    TileCoding Coding = TileCoding::Raw;
    bool IsBlueFirst = false;
    bool AreValuesGuessed = false; ///< the plug-in doesn't tell what numbers of 32 or 64 bits are
};

/// The number of positions on each axis, at least 1.
struct CAxisSizes
{
    int64_t Z = 1;
    int64_t T = 1;
    int64_t Lambda = 1;
};

/// A group with all that reading its pixels takes. Valid as long as its document is open; may be read from several
/// threads at once.
class CGroupPixels
{
public:
    /// `values` tells what the numbers of raw pixels are, if the user said so. Throws CHostError.
    CGroupPixels(const CDocument& document, int group, std::optional<ValueKind> values = std::nullopt);

    const CDocument& Document() const { return _Document; }
    const CGroup& Group() const { return _Group; }
    const std::vector<CChannelPixels>& Channels() const { return _Channels; }
    const CAxisSizes& Axes() const { return _Axes; }
    int NumOfLevels() const { return static_cast<int>(_Levels.size()); }
    bool HasLevel(int level) const
    {
        return level >= 0 && level < NumOfLevels() && _Levels[static_cast<size_t>(level)];
    }
    /// Throws CHostError if there is no such level, or it has no data.
    const CLevel& Level(int level) const;

    /// The channel of that number. Throws CHostError if there is none.
    const CChannelPixels& Channel(uint32_t id) const;

    /// A tile as it is stored; nothing if there is none. Throws CTileError if it can't be read.
    std::optional<CStoredTile> ReadTile(const CLevel& level, int64_t col, int64_t row, const CPosition& position) const;
    /// The image of a tile, for facts about it; nothing if there is none.
    std::optional<CImage> FindImage(const CLevel& level, int64_t col, int64_t row, const CPosition& position) const;

    /// Whether the last strip of a level is lower than the others, and handed out so.
    bool HasLowLastStrip(const CLevel& level) const
    {
        return _HasStripsOfDocument && level.IsInStrips() && level.Picture.Bottom() % level.TileHeight != 0;
    }

    /// What the plug-in's interface can't hand out of this group, one line each, for people. Usually there is nothing.
    const std::vector<std::string>& Limits() const { return _Limits; }

private:
    void FindChannels(std::optional<ValueKind> values);
    CChannelPixels ChannelOf(const CArea& area, uint32_t id, std::optional<ValueKind> values) const;
    /// Sets what the numbers of a pixel are. Throws CHostError for sizes that no number has.
    void SetNumbers(CChannelPixels& channel, uint64_t bytesPerPixel, std::optional<ValueKind> values) const;
    std::optional<CImage> AnyImage(uint32_t channel) const;
    void FindAxes();
    bool HandsOutSecondTile() const;
    void FindLimits();
    void FindRowsOfStrips(CLevel& level) const;

    const CDocument& _Document;
    CGroup _Group;
    std::vector<std::optional<CLevel>> _Levels;
    std::vector<CChannelPixels> _Channels;
    CAxisSizes _Axes;
    std::vector<std::string> _Limits;
    std::set<int> _LevelsWithoutLastRow;
    bool _HasStripsOfDocument = false;
    bool _HandsOutFirstTileOnly = false;
};

/// "group 0"
std::string NameOfGroup(const CGroup& group);

} // namespace HostTool
