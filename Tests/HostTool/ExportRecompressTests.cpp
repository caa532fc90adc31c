/// `zel export --recompress`, read back by libtiff, tifffile and OpenSlide.

#include "Tests/HostTool/TiffFile.h"
#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;
using testing::HasSubstr;

class ZelExportRecompressed : public ZelRun
{
protected:
    const CPicture Drawn = DrawPicture(300, 200);

    void WriteSlide(CSlideOptions options)
    {
        options.TileWidth = options.TileHeight = 64;
        Write(SlideFromPicture(Drawn, options));
    }
    TestSupport::CommandResult Export(const Words& options) { return Run("export", "slide.ome.tif", options); }
    CTiffFile File() const { return CTiffFile(Name("slide.ome.tif")); }
    CPicture Exported(uint32_t level = 0) const
    {
        CTiffFile file = File();
        return file.Select(0, level) ? file.Picture() : CPicture();
    }
    CPicture Region(uint32_t level = 0)
    {
        Run("region", "region.tif", {"-c", "0", "-l", std::to_string(level)});
        return Picture("region.tif");
    }
    /// Whether tifffile reads the pixels of region.tif from the file.
    bool IsEqualForTifffile()
    {
        const auto result =
            TestSupport::RunCommand({"/usr/bin/python3", READ_OME_TIFF, Name("slide.ome.tif"), Name("region.tif")});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return json::parse(result.Output, nullptr, false)["is equal"] == true;
    }
    /// The finest level as OpenSlide shows it.
    CPicture ForOpenSlide()
    {
        const auto result = TestSupport::RunCommand(
            {"openslide-write-png", Name("slide.ome.tif"), "0", "0", "0", "300", "200", Name("openslide.png")});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Picture("openslide.png");
    }
};

/// A lossless compression, with its number in TIFF files.
struct Lossless
{
    std::string Name;
    std::string Option;
    uint32_t Number;
};

class ZelExportWithoutLoss : public ZelExportRecompressed, public testing::WithParamInterface<Lossless>
{
};

TEST_P(ZelExportWithoutLoss, HasThePixelsOfJpegTiles)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    const auto result = Export({"--recompress", GetParam().Option, "--prove"});
    EXPECT_EQ(result.Errors, "");
    EXPECT_THAT(result.Output, HasSubstr("; 0 tiles as stored, 29 recompressed, 0 filled"));
    EXPECT_THAT(result.Output, HasSubstr("0 tiles equal byte for byte, 29 pixel for pixel"));
    EXPECT_EQ(File().Short(TIFFTAG_COMPRESSION), GetParam().Number);
}

TEST_P(ZelExportWithoutLoss, HasThePixelsOf16Bits)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.Bits = 16, o.IsGrey = true; }));
    EXPECT_THAT(Export({"--recompress", GetParam().Option, "--prove"}).Output, HasSubstr("29 pixel for pixel"));
}

INSTANTIATE_TEST_SUITE_P(Compressions, ZelExportWithoutLoss,
                         testing::Values(Lossless{"Deflate", "deflate", 8}, Lossless{"Zstd", "zstd", 50000},
                                         Lossless{"Jpeg2000", "jpeg2000", 34712}),
                         [](const auto& row) { return row.param.Name; });

TEST_F(ZelExportRecompressed, IsReadByTifffile)
{
    for (const bool isGreyOf16Bits : {false, true})
    {
        WriteSlide(Slide(StoreCompression::Raw,
                         [&](auto& o) { o.Bits = isGreyOf16Bits ? 16 : 8, o.IsGrey = isGreyOf16Bits; }));
        Region();
        for (const char* compression : {"deflate", "jpeg2000"})
        {
            Export({"--recompress", compression});
            EXPECT_TRUE(IsEqualForTifffile()) << compression;
        }
    }
}

TEST_F(ZelExportRecompressed, IsReadByLibtiffAndOpenSlide)
{
    WriteSlide(Slide(StoreCompression::Jpeg));
    for (const char* compression : {"deflate", "zstd"})
    {
        Export({"--recompress", compression});
        EXPECT_EQ(Exported(), Region());
        EXPECT_EQ(Exported(2), Region(2));
        const CPicture theirs = ForOpenSlide(); // with a fourth sample: how far it covers
        const CPicture ours = Region();
        for (uint32_t y = 0; y < 200; y += 7)
            for (uint32_t x = 0; x < 300; ++x)
                for (uint16_t sample = 0; sample < 3; ++sample)
                    ASSERT_EQ(theirs.At(x, y, sample), ours.At(x, y, sample)) << x << ' ' << y;
    }
}

/// How far the pixels of two pictures are apart on average.
double MeanDifference(const CPicture& a, const CPicture& b)
{
    double sum = 0;
    for (uint32_t y = 0; y < a.Height(); ++y)
        for (uint32_t x = 0; x < a.Width(); ++x)
            for (uint16_t sample = 0; sample < 3; ++sample)
                sum += std::abs(static_cast<double>(a.At(x, y, sample)) - static_cast<double>(b.At(x, y, sample)));
    return sum / (3.0 * a.Width() * a.Height());
}

TEST_F(ZelExportRecompressed, IsSmallerAndCoarserWithLowerQuality)
{
    WriteSlide(Slide(StoreCompression::Raw));
    Export({"--recompress", "jpeg:98"});
    const auto sizeOfGood = std::filesystem::file_size(Name("slide.ome.tif"));
    const double differenceOfGood = MeanDifference(Exported(), Region());
    const double differenceForOthers = MeanDifference(ForOpenSlide(), Region());
    Export({"--recompress", "jpeg:40"});
    EXPECT_LT(std::filesystem::file_size(Name("slide.ome.tif")), sizeOfGood);
    EXPECT_GT(MeanDifference(Exported(), Region()), differenceOfGood);
    EXPECT_LT(differenceOfGood, 3);
    EXPECT_LT(differenceForOthers, 3);
}

TEST_F(ZelExportRecompressed, TellsTheSamplingOfColours)
{
    WriteSlide(Slide(StoreCompression::Raw));
    const auto sampling = [this]
    {
        const auto result = TestSupport::RunCommand({"tiffinfo", Name("slide.ome.tif")});
        EXPECT_EQ(result.Errors, "");
        return result.Output;
    };
    Export({"--recompress", "jpeg"});
    EXPECT_THAT(sampling(), HasSubstr("YCbCr Subsampling: 1, 1"));
    Export({"--recompress", "jpeg:80"});
    EXPECT_THAT(sampling(), HasSubstr("YCbCr Subsampling: 2, 2"));
}

TEST_F(ZelExportRecompressed, RefusesWhatACompressionCannotHold)
{
    WriteSlide(Slide(StoreCompression::Raw, [](auto& o) { o.Bits = 16; }));
    ExpectRefusal("export", "slide.ome.tif", {"--recompress", "jpeg"}, "JPEG has values of 8 bits only");
    ExpectRefusal("export", "slide.ome.tif", {"--recompress", "jpeg2000", "--values", "signed"},
                  "8 and 16 bits without a sign");
    ExpectRefusal("export", "slide.ome.tif", {"--recompress", "jpeg", "--prove"}, "JPEG loses something");
    for (const char* compression : {"lzw", "jpeg:0", "jpeg:101", "zstd:3", "jpeg:"})
        ExpectRefusal("export", "slide.ome.tif", {"--recompress", compression}, "is no compression; give deflate");
}

} // namespace
