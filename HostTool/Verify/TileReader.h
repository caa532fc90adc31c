#pragma once

#include "HostTool/Verify/TileCheck.h"

#include <map>
#include <memory>

namespace HostTool
{

struct CCheckedTile
{
    Verdict Outcome = Verdict::Absent;
    uint64_t Size = 0;
    uint64_t Hash = 0;
    std::string Reason; ///< for people; may be empty
};

/// Checks tiles, with a document of its own. For one thread at a time.
class CTileReader
{
public:
    /// `index` is that of the document, by group; it must outlive this. Throws CHostError.
    CTileReader(const CPluginHost& host, const std::filesystem::path& path, std::span<const CGroupIndex> index,
                const CCheckOptions& options);

    CCheckedTile Check(int group, int level, uint64_t area, const CPosition& position);

private:
    /// A group, with what is asked of it again and again.
    struct CCheckedGroupPixels
    {
        explicit CCheckedGroupPixels(CGroupPixels groupPixels) : Pixels(std::move(groupPixels)) {}
        CGroupPixels Pixels;
        std::map<uint32_t, std::optional<uint64_t>> BytesPerRawPixel; ///< by channel; nothing: it is compressed
    };

    CCheckedTile CheckStored(CCheckedGroupPixels& group, const CLevel& level, const CTileRecord* record,
                             const CImage& image, const CPosition& position);
    bool IsShort(CCheckedGroupPixels& group, const CLevel& level, const CTileRecord* record, const CImage& image,
                 uint32_t channel) const;
    void Decode(CCheckedTile& tile, const CGroupPixels& pixels, const CLevel& level, const CImage& image,
                uint32_t channel);
    const CGroupIndex& IndexOf(const CGroupPixels& pixels) const;

    CDocument _Document;
    std::span<const CGroupIndex> _Index;
    const CCheckOptions& _Options;
    std::map<int, std::unique_ptr<CCheckedGroupPixels>> _Groups; ///< by number; those that can be read
    CStoredTile _Tile;                                           ///< its buffer is kept for many tiles
    size_t _Size = 0;                                            ///< of the bytes in it that belong to the tile
    ByteBuffer _Pixels;
};

} // namespace HostTool
