/// `--prove` of `zel export`, on files that were changed behind its back.

#include "HostTool/Export/ExportPlan.h"
#include "HostTool/Export/OmeXml.h"
#include "HostTool/Export/Proof.h"
#include "HostTool/HostError.h"
#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <fstream>

namespace
{

using namespace SampleDocuments;

class ProofOfAnExport : public ZelRun
{
protected:
    void Export(uint32_t compression)
    {
        const auto options = Slide(compression, [](auto& o) { o.TileWidth = o.TileHeight = 64; });
        Write(SlideFromPicture(DrawPicture(128, 64), options));
        Run("export", "slide.ome.tif");
    }
    /// The first byte of the first tile becomes another one.
    void ChangeFirstTile()
    {
        std::fstream file(Name("slide.ome.tif"), std::ios::in | std::ios::out | std::ios::binary);
        constexpr int bytesOfHeader = 16;
        file.seekg(bytesOfHeader + 8);
        const int byte = file.get();
        file.seekp(bytesOfHeader + 8);
        file.put(static_cast<char>(byte ^ 1));
    }
    void Prove()
    {
        const std::filesystem::path program = ZEL;
        const HostTool::CPluginHost host(program.parent_path().parent_path() / "lib" / "libZelPluginForBrix.so");
        const HostTool::CDocument document(host, SlideName());
        const HostTool::CGroupPixels pixels(document, 0);
        HostTool::CProgress progress(0, "tiles");
        HostTool::CProof proof(Name("slide.ome.tif"), Name("slide.ome.tif"), {}, 1, progress);
        proof.ProvePlane(pixels, HostTool::PlanOf(pixels), {}, OffsetOfPlane());
    }

private:
    uint64_t OffsetOfPlane() const
    {
        TIFF* tiff = TIFFOpen(Name("slide.ome.tif").c_str(), "r");
        const uint64_t offset = TIFFCurrentDirOffset(tiff);
        TIFFClose(tiff);
        return offset;
    }
};

TEST_F(ProofOfAnExport, HoldsForWhatWasWritten)
{
    Export(StoreCompression::Raw);
    EXPECT_NO_THROW(Prove());
}

TEST_F(ProofOfAnExport, FailsForAByteOfACopiedTile)
{
    Export(StoreCompression::Raw);
    ChangeFirstTile();
    EXPECT_THROW(Prove(), HostTool::CHostError);
}

TEST_F(ProofOfAnExport, FailsForAByteOfARecompressedTile)
{
    Export(StoreCompression::Png);
    ChangeFirstTile();
    EXPECT_THROW(Prove(), HostTool::CHostError);
}

} // namespace
