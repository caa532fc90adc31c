#pragma once

#include "HostTool/Export/ExportPlan.h"
#include "HostTool/Pixels/Progress.h"
#include "HostTool/Pixels/Stitch.h"

namespace HostTool
{

struct CProofCounts
{
    uint64_t BytesEqual = 0;  ///< tiles whose bytes are those of the document
    uint64_t PixelsEqual = 0; ///< recompressed tiles whose pixels are
};

/// Reads planes of a group back from a TIFF file by libtiff, and compares them with the document.
class CProof
{
public:
    /// `name` is what the file is going to be called. Throws CHostError if it can't be opened.
    CProof(const std::filesystem::path& file, std::filesystem::path name, const std::optional<CColour>& background,
           unsigned jobs, CProgress& progress);
    ~CProof();
    CProof(const CProof&) = delete;
    CProof& operator=(const CProof&) = delete;

    /// Compares all levels of the plane that the directory at `offset` tells of. Throws CHostError, naming the tile, if
    /// anything differs.
    void ProvePlane(const CGroupPixels& pixels, const std::vector<CLevelPlan>& plan, const CPosition& position,
                    uint64_t offset);

    /// The same with the directories of all levels.
    void ProveLevels(const CGroupPixels& pixels, const std::vector<CLevelPlan>& plan, const CPosition& position,
                     const std::vector<uint64_t>& offsets);

    const CProofCounts& Counts() const { return _Counts; }

private:
    void SelectDirectory(uint64_t offset);
    void ProveStored(const CGroupPixels& pixels, const CLevelPlan& plan, const CPosition& position);
    void ProveRecompressed(const CGroupPixels& pixels, const CLevelPlan& plan, const CPosition& position);
    /// The bytes of a tile of the present directory; none if they can't be read.
    void ReadBytes(uint32_t number, ByteBuffer& bytes) const;
    /// The pixels of a tile; false if they can't be read.
    bool ReadPixels(uint32_t number, const CPixelTarget& pixels) const;
    [[noreturn]] void Fail(const std::string& what) const;

    struct CHandle;
    std::filesystem::path _Name;
    std::optional<CColour> _Background;
    unsigned _Jobs;
    CProgress& _Progress;
    std::unique_ptr<CHandle> _File;
    CProofCounts _Counts;
};

} // namespace HostTool
