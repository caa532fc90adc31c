// Directories that lie: each one ends in a result, within a few seconds and a modest amount of memory.

#include "SampleDocuments/Tags.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Tiff/TiffSlide.h"

#include <fstream>
#include <sys/resource.h>

using namespace TiffOfTest;

namespace
{

constexpr unsigned FewSeconds = 20;
[[maybe_unused]] constexpr rlim_t ModestMemory = 256 << 20;
/// Exit codes of children that are no result.
constexpr int SomethingElse = 200;

/// A document as a host sees it all, in a process of its own.
class HostileTiff : public TiffSlide
{
protected:
    /// Opens the document and asks each image of it for everything; the first failing result, or success.
    AC_Result ResultOfAll(const std::wstring& name)
    {
        const AC_Result result = ResultOfOpeningFile(name);
        if (result != AC_RESULT_SUCCESS)
            return result;
        UINT size = 0;
        Call(_AC_GetThumbnailData, Doc(), static_cast<BYTE*>(nullptr), UINT{0}, &size);
        const AC_Result body = ResultOfBodyThatAHostHasRoomFor();
        TestSupport::AssertionOf([this] { Model().Channels().at(0)->PixelFormat()->MaxNumOfUsedBits(); });
        TestSupport::AssertionOf([this] { Model().Frames().begin()->second->JpegTables(); });
        Close();
        return body;
    }
    /// A host that has no room for a body does not ask for it.
    AC_Result ResultOfBodyThatAHostHasRoomFor() const
    {
        try
        {
            return ResultOfFirstBody();
        }
        catch (const std::bad_alloc&)
        {
            return AC_RESULT_ALLOCATION_FAILED;
        }
    }
    /// True when it ends in a result, whichever.
    bool EndsInAResult(Document document)
    {
        document.WriteTo(File());
        return EndsInAResult();
    }
    bool EndsInAResult()
    {
        const auto end = TestSupport::RunInChild(
            [this]
            {
#ifndef __SANITIZE_ADDRESS__ // whose own memory would be counted
                const rlimit limit = {ModestMemory, ModestMemory};
                setrlimit(RLIMIT_DATA, &limit);
#endif
                const AC_Result result = ResultOfAll(FileName());
                return result < NUM_OF_AC_RESULT_CODES ? int{result} : SomethingElse;
            },
            FewSeconds);
        return end.Signal == 0 && end.ExitCode < NUM_OF_AC_RESULT_CODES;
    }
};

struct DamageRow : Row
{
    bool IsTiled;
    std::function<void(CTiffDirectory&)> Change;
};

class DamagedDirectory : public HostileTiff, public testing::WithParamInterface<DamageRow>
{
protected:
    static CTiffDirectory Directory()
    {
        CTiffDirectory directory(16, 16);
        if (GetParam().IsTiled)
            directory.Tiles(16, 16);
        GetParam().Change(directory);
        return directory;
    }
    static Stack StackInIt() { return Stack(1).Size(16, 16).Tiles(16, 16).WithoutDisplayLimits(); }
};

TEST_P(DamagedDirectory, OfTheDocumentEndsInAResult)
{
    EXPECT_TRUE(EndsInAResult(DocumentOf(StackInIt().InDocument(GetParam().IsTiled ? 0 : 16),
                                         [](auto& directory) { directory = Directory(); })));
}

TEST_P(DamagedDirectory, OfAStoreEndsInAResult)
{
    EXPECT_TRUE(EndsInAResult(StoreOf(StackInIt(), {Directory()})));
}

DamageRow Number(const std::string& name, bool isTiled, uint16_t tag, uint32_t value)
{
    return {{name}, isTiled, [=](auto& d) { d.Set(tag, TiffType::Long, {value}); }};
}
DamageRow Jpeg(const std::string& name, const ByteString& strip)
{
    return {{name}, false, [=](auto& d) {
                d.Compression(CompressionJpeg7).JpegTables({0xFF, 0xD8, 1, 2, 0xFF, 0xD9}).Data({strip});
            }};
}
DamageRow Tables(size_t size)
{
    return {{"JpegTablesOf" + std::to_string(size)},
            false,
            [=](auto& d)
            {
                d.Compression(CompressionJpeg7).Data({{0xFF, 0xD8, 0xFF, 0xDA, 0, 2, 1, 0xFF, 0xD9}});
                d.JpegTables(ByteString(size, 0xFF));
            }};
}
constexpr uint32_t Huge = 0xFFFFFFFF;

INSTANTIATE_TEST_SUITE_P(Numbers, DamagedDirectory,
                         testing::Values(Number("WidthZero", false, TIFFTAG_IMAGEWIDTH, 0),
                                         Number("WidthHuge", false, TIFFTAG_IMAGEWIDTH, Huge),
                                         Number("HeightZero", false, TIFFTAG_IMAGELENGTH, 0),
                                         Number("HeightHuge", false, TIFFTAG_IMAGELENGTH, Huge),
                                         Number("WidthZeroInTiles", true, TIFFTAG_IMAGEWIDTH, 0),
                                         Number("WidthHugeInTiles", true, TIFFTAG_IMAGEWIDTH, Huge),
                                         Number("HeightHugeInTiles", true, TIFFTAG_IMAGELENGTH, Huge),
                                         Number("TileWidthZero", true, TIFFTAG_TILEWIDTH, 0),
                                         Number("TileWidthHuge", true, TIFFTAG_TILEWIDTH, Huge),
                                         Number("TileWidthOne", true, TIFFTAG_TILEWIDTH, 1),
                                         Number("TileHeightZero", true, TIFFTAG_TILELENGTH, 0),
                                         Number("TileHeightHuge", true, TIFFTAG_TILELENGTH, Huge),
                                         Number("TileWidthLarge", true, TIFFTAG_TILEWIDTH, 1 << 26),
                                         Number("RowsPerStripZero", false, TIFFTAG_ROWSPERSTRIP, 0),
                                         Number("RowsPerStripOne", false, TIFFTAG_ROWSPERSTRIP, 1),
                                         Number("RowsPerStripHuge", false, TIFFTAG_ROWSPERSTRIP, Huge),
                                         Number("StripSizeZero", false, TIFFTAG_STRIPBYTECOUNTS, 0),
                                         Number("StripSizeHuge", false, TIFFTAG_STRIPBYTECOUNTS, Huge),
                                         Number("StripSizeLarge", false, TIFFTAG_STRIPBYTECOUNTS, 0x7FFFFFFF),
                                         Number("StripOutside", false, TIFFTAG_STRIPOFFSETS, 0x7FFFFF00),
                                         Number("TileSizeHuge", true, TIFFTAG_TILEBYTECOUNTS, Huge),
                                         Number("TileOutside", true, TIFFTAG_TILEOFFSETS, 0x7FFFFF00),
                                         Number("BitsZero", false, TIFFTAG_BITSPERSAMPLE, 0),
                                         Number("BitsHuge", false, TIFFTAG_BITSPERSAMPLE, 65535),
                                         Number("SamplesZero", false, TIFFTAG_SAMPLESPERPIXEL, 0),
                                         Number("SamplesHuge", true, TIFFTAG_SAMPLESPERPIXEL, 65535)),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Sizes, DamagedDirectory,
    testing::Values(DamageRow{{"MoreTilesThanBytes"},
                              true,
                              [](auto& d)
                              {
                                  d.Set(TIFFTAG_IMAGEWIDTH, TiffType::Long, {16 * 900});
                                  d.Set(TIFFTAG_IMAGELENGTH, TiffType::Long, {16 * 1000});
                              }},
                    DamageRow{{"MoreStripsThanBytes"},
                              false,
                              [](auto& d)
                              {
                                  d.Set(TIFFTAG_IMAGELENGTH, TiffType::Long, {900000});
                                  d.Set(TIFFTAG_ROWSPERSTRIP, TiffType::Long, {1});
                              }},
                    DamageRow{{"LargeTilesInASmallFile"},
                              true,
                              [](auto& d)
                              {
                                  for (const uint16_t tag : std::initializer_list<uint16_t>{256, 257, 322, 323})
                                      d.Set(tag, TiffType::Long, {60000});
                              }},
                    DamageRow{{"EntriesBeyondTheFile"}, false, [](auto& d) { d.EntryCount(60000); }},
                    DamageRow{{"NoEntries"}, false, [](auto& d) { d.EntryCount(0); }},
                    DamageRow{{"NextBeyondTheFile"}, false, [](auto& d) { d.Next(0x7FFFFFFF); }},
                    DamageRow{{"NextIsItself"}, false, [](auto& d) { d.Next(8); }}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    JpegStrips, DamagedDirectory,
    testing::Values(Tables(0), Tables(1), Tables(2), Tables(3), Tables(4), Tables(5),
                    Jpeg("SegmentBeyondTheStrip", {0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0xFF, 0x01}),
                    Jpeg("ScanBeyondTheStrip", {0xFF, 0xD8, 0xFF, 0xDA, 0x00, 0xFF, 0x01}),
                    Jpeg("ZeroLengths", {0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x00, 0xFF, 0xC4, 0x00, 0x00}),
                    Jpeg("NoMarker", {0x00, 0x01}), Jpeg("OneByte", {0xFF}),
                    DamageRow{{"ManyStarts"},
                              false,
                              [](auto& d)
                              {
                                  ByteString starts;
                                  for (int i = 0; i < 500000; ++i)
                                      starts.insert(starts.end(), {0xFF, 0xD8});
                                  d.Compression(CompressionJpeg7).JpegTables({0xFF, 0xD8, 1, 2, 0xFF, 0xD9});
                                  d.Data({starts});
                              }}),
    NameOfRow());

// The file as a whole.

TEST_F(HostileTiff, WithoutAnyDirectoryEndsInAResult)
{
    EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {})), AC_RESULT_FAILURE);
    Document document;
    document.With(Stack(1).Size(16, 16).InDocument(16));
    document.File().OffsetOfFirstIfd = 0;
    EXPECT_EQ(ResultOfReading(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(HostileTiff, ThatLibTiffDoesNotOpenEndsInAResult)
{
    Document document;
    document.With(Stack(1).Size(16, 16).InDocument(16));
    document.File().OffsetOfFirstIfd = 0x7FFFFFF0;
    EXPECT_EQ(ResultOfReading(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(HostileTiff, ThatIsNoTiffEndsInAResult)
{
    Document().With(Stack(1).InTiffStore()).WriteTo(File());
    for (const std::string bytes : {"", "I", "II*", "no TIFF at all", "II+\0\0\0\0\0"})
    {
        Folder().Write("_slide_/stack1/frame_t.tif", bytes);
        EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_FAILURE) << bytes;
    }
}

TEST_F(HostileTiff, CutOffAnywhereEndsInAResult)
{
    Document().With(Stack(1).Size(40, 20).Tiles(16, 16).Z(2).InTiffStore()).WriteTo(File());
    const std::string whole = TestSupport::BytesOf(TiffStoreFile());
    for (size_t size = 0; size < whole.size(); size += 97)
    {
        Folder().Write("_slide_/stack1/frame_t.tif", std::string_view(whole).substr(0, size));
        if (ResultOfOpeningFile(FileName()) == AC_RESULT_SUCCESS)
        {
            EXPECT_NE(ResultOfFirstBody(), AC_RESULT_INVALID_PARAM);
        }
    }
}

TEST_F(HostileTiff, ThatShrinksUnderAnOpenDocumentLeavesItUsable)
{
    const Stack stack = Stack(1).Size(16, 16).Tiles(16, 16).Z(2).InTiffStore();
    Open(stack);
    const AC_HIMAGE tile = Tile(0, 0, L"0", {AtZ(0)});
    const std::string whole = TestSupport::BytesOf(TiffStoreFile());
    std::filesystem::resize_file(TiffStoreFile(), 8);
    EXPECT_NE(ResultOfBody(tile), AC_RESULT_INVALID_PARAM);
    std::ofstream(TiffStoreFile(), std::ios::binary) << whole;
    EXPECT_EQ(BodyOf(tile), stack.TileBytes(0, 0, 0));
}

TEST_F(HostileTiff, WithManyImagesWithoutPlanesAndManyTilesEndsInAResult)
{
    // 9,000 images that have nothing, each of them at the directory of 900,000 positions.
    CTiffDirectory directory = CTiffDirectory(16, 16).Tiles(16, 16);
    directory.Set(TIFFTAG_IMAGEWIDTH, TiffType::Long, {16 * 900}).Set(TIFFTAG_IMAGELENGTH, TiffType::Long, {16 * 1000});
    directory.Description(Ome(std::vector<std::string>(9000, OmeImage("1", {}))));
    EXPECT_TRUE(EndsInAResult(StoreOf(Stack(1), {directory})));
}

TEST_F(HostileTiff, WithADescriptionThatNeverEndsEndsInAResult)
{
    for (const char* bomb : {"<!DOCTYPE a [<!ENTITY l SYSTEM 'file:///dev/zero'>]><OME>&l;</OME>",
                             "<!DOCTYPE OME SYSTEM 'file:///dev/zero'><OME/>"})
    {
        CTiffDirectory directory(16, 16);
        directory.Description(bomb);
        EXPECT_EQ(ResultOfOpening(StoreOf(Stack(1), {directory})), AC_RESULT_FAILURE);
    }
}

TEST_F(HostileTiff, WhoseImageClaimsMoreThanItHoldsGivesNoSample)
{
    Document document;
    document.With(Stack(1).Size(16, 16).Tiles(16, 16).Z(2).InDocument());
    for (const uint16_t tag : std::initializer_list<uint16_t>{256, 257, 322, 323}) // almost 500 MB
        for (CTiffDirectory& directory : document.File().Directories)
            directory.Set(tag, TiffType::Long, {22640});
    Open(std::move(document));
    UINT64 size = 0;
    CMN_RECT whole{};
    EXPECT_EQ(Call(_AC_GetImageBody, Tile(0, 0, L"0", {AtZ(1)}), &whole, nullptr, UINT64{0}, &size), AC_RESULT_SUCCESS);
    EXPECT_GT(size, 256u << 20);
    BYTE* bytes = nullptr;
    EXPECT_EQ(Call(GetSampleImageBody, Area(Group(), 0, 0), &bytes, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(bytes, nullptr);
}

TEST_F(HostileTiff, OfTenThousandDirectoriesOpensAndIsWalked)
{
    const Stack stack = Stack(1).Size(2, 1).T(10000).InDocument(1);
    Open(stack);
    uint32_t numOfTiles = 0;
    for (CIA::CDeepZoomTile* tile = ModelTile(0, 0); tile; tile = tile->NextTileOnDisk())
        numOfTiles += ReadInto(*tile, 2).IsRead;
    EXPECT_EQ(numOfTiles, 10000u);
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtT(9999)})), stack.TileBytes(0, 0, 0, {.T = 9999}));
}

/// libtiff complains of two orientations each time it reads a directory, and so tells how often it does.
void MakeLibtiffComplain(CTiffDirectory& directory)
{
    directory.Set(TIFFTAG_ORIENTATION, TiffType::Short, {1, 1});
}

size_t NumOfReadings(const std::string& log)
{
    constexpr const char* Complaint = "Incorrect count for \"Orientation\"";
    size_t number = 0;
    for (size_t at = log.find(Complaint); at != std::string::npos; at = log.find(Complaint, at + 1))
        ++number;
    return number;
}

TEST_F(HostileTiff, WhoseFramesShareTwoDirectoriesReadsThemAFewTimes)
{
    Document document;
    document.With(Stack(1).Size(16, 16).Tiles(16, 16).Z(100).InDocument(16).WithoutDisplayLimits());
    for (CTiffDirectory& directory : document.File().Directories)
        MakeLibtiffComplain(directory);
    CNode& stack = document.Volume({Tag::Collection, Tag::Stack});
    for (uint32_t z = 0; z < 100; ++z)
        stack.Child(Tag::Frame, z).Child(Tag::FrameDirectory).SecondTag(1 + z % 2);
    Open(std::move(document));
    const std::string log = LogOf(
        [&]
        {
            EXPECT_EQ(Model().Channels().at(0)->PixelFormat()->MaxNumOfUsedBits(), 8u);
            EXPECT_NE(ModelTile(0, 0), nullptr);
            EXPECT_EQ(ResultOfFirstBody(), AC_RESULT_SUCCESS);
        });
    EXPECT_GT(NumOfReadings(log), 0u);
    EXPECT_LT(NumOfReadings(log), 20u);
}

TEST_F(HostileTiff, WhoseXmlGoesBackAndForthBetweenTwoDirectoriesReadsThemAFewTimes)
{
    CTiffDirectory directory(16, 16);
    MakeLibtiffComplain(directory);
    std::vector<CTiffDirectory> directories(2, directory);
    std::vector<std::string> images; // the number of samples says how far the next image is
    for (int n = 1; n <= 100; ++n)
        images.push_back(OmeImage(n % 2 == 1 ? std::to_string(n) : "1000000", {AnyPlane}));
    directories.front().Description(Ome(images));
    StoreOf(Stack(1), directories).WriteTo(File());
    const std::string log = LogOf([&] { EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_FAILURE); });
    EXPECT_GT(NumOfReadings(log), 0u);
    EXPECT_LT(NumOfReadings(log), 20u);
}

using HostileTiffDeathTest = HostileTiff;

TEST_F(HostileTiffDeathTest, OfTilesInJpegWithTablesApartEndsTheProcess)
{
    Open(
        Stack(1).Size(16, 16).Tiles(16, 16).InDocument().TiffCompression(CompressionJpeg7).JpegTables({1, 2, 3, 4, 5}));
    const AC_HIMAGE tile = Tile(0, 0);
    EXPECT_ENDS_THE_PROCESS(BodyOf(tile), "TODO!!!(.|\n)*" ABORT_WAS_CALLED);
}

} // namespace
