// The two headers of a binary tile store.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

Stack Small()
{
    return Stack(1).Size(8, 8).Tiles(8, 8);
}

class StoreHeaders : public ZelSlide
{
protected:
    /// A document whose store is changed by `change`.
    template <typename Change>
    static Document Changed(const Stack& stack, Change change)
    {
        Document document;
        document.With(stack);
        change(document.Store(1));
        return document;
    }
    void ExpectItIsServed(const Stack& stack) { EXPECT_EQ(BodyOf(Tile(0, 0)), stack.TileBytes(0, 0, 0)); }
};

TEST_F(StoreHeaders, AreReadFieldByField)
{
    Document document = Changed(Small().Tiles(100, 80).Jpeg(3, 77),
                                [](CTileStore& store)
                                {
                                    store.Additional.MagicID = {1, 2, 3, 4};
                                    store.Additional.HeaderVersion = 9;
                                    store.Additional.TileZ = 5;
                                    store.Additional.PixInfoHints[16] = 16;
                                    store.Additional.BackgroundFillColor[9] = 90;
                                    store.Additional.PyramidUsage = 3;
                                    store.Additional.ProfileID[15] = 150;
                                });
    Open(std::move(document));
    const Zel::CKorAdditionalHeader& header = Store().AdditionalHeader();
    EXPECT_EQ(header.MagicID, 0x04030201u);
    EXPECT_EQ(header.HeaderVersion, 9u);
    EXPECT_EQ(header.ComponentType, ComponentType::Uint8);
    EXPECT_EQ(header.NumOfPixelComponents(), 3u);
    EXPECT_EQ(header.ColorSpace(), Zel::KorColorSpace::STANDARDRGB);
    EXPECT_EQ(header.CompressionFormat(), Zel::KorCompressionFormat::JPEG);
    EXPECT_EQ(header.CompressionQuality, 77u);
    EXPECT_EQ(header.TilePixelWidth(), 100u);
    EXPECT_EQ(header.TilePixelHeight(), 80u);
    EXPECT_EQ(header.m_tileZ, 5u);
    EXPECT_EQ(header.m_pixInfoHints[16], 16u);
    EXPECT_EQ(header.m_backgroundFillColor[9], 90u);
    EXPECT_EQ(header.GetComponentOrder(), ComponentOrder::Rgb);
    EXPECT_EQ(header.m_pyramidUsage, 3u);
    EXPECT_EQ(header.m_profileID[15], 150);
    EXPECT_EQ(header.m_profileID[16], 0);
    EXPECT_FALSE(Store().IsOmeType());
}

struct IgnoredRow : Row
{
    std::function<void(CTileStore&)> Change;
};

class IgnoredField : public StoreHeaders, public testing::WithParamInterface<IgnoredRow>
{
};

TEST_P(IgnoredField, HasNoEffectWhateverItSays)
{
    Open(Changed(Small().Z(2), GetParam().Change));
    EXPECT_EQ(BodyOf(Tile(0, 0, L"0", {AtZ(1)})), Small().Z(2).TileBytes(0, 0, 0, {.Z = 1}));
}

INSTANTIATE_TEST_SUITE_P(
    Fields, IgnoredField,
    testing::Values(
        IgnoredRow{{"Magic"},
                   [](CTileStore& s) {
                       s.Header.Magic = {0, 255, 'x', 7};
                   }},
        IgnoredRow{{"HeaderSize"}, [](CTileStore& s) { s.Header.HeaderSize = 0; }},
        IgnoredRow{{"VolumeVersion"}, [](CTileStore& s) { s.Header.VolumeVersion = 0xFFFFFFFF; }},
        IgnoredRow{{"DimensionCount"}, [](CTileStore& s) { s.Header.DimensionCount = 77; }},
        IgnoredRow{{"AdditionalHeaderSizeZero"}, [](CTileStore& s) { s.Header.AdditionalHeaderSize = 0; }},
        IgnoredRow{{"AdditionalHeaderSizeHuge"}, [](CTileStore& s) { s.Header.AdditionalHeaderSize = 0xFFFFFFFF; }},
        IgnoredRow{{"Unused"},
                   [](CTileStore& s) { s.Header.Unused1 = s.Header.Unused2 = s.Header.Unused3 = 0xFFFFFFFF; }},
        IgnoredRow{{"FreeChunks"},
                   [](CTileStore& s)
                   {
                       s.Header.FilePositionOfFreeChunks = ~uint64_t{0};
                       s.Header.NumberOfFreeChunks = 0xFFFFFFFF;
                   }},
        IgnoredRow{{"AdditionalMagic"},
                   [](CTileStore& s) {
                       s.Additional.MagicID = {0, 0, 0, 0};
                   }},
        IgnoredRow{{"SpareOfARecord"}, [](CTileStore& s) { s.Tiles.front().Spare = 0xFFFFFFFF; }}),
    NameOfRow());

// The additional header.

TEST_F(StoreHeaders, NeedAnAdditionalHeader)
{
    Document document = Changed(Small(), [](CTileStore& store) { store.Header.AdditionalHeaderOffset = 0; });
    EXPECT_THAT(MessagesOfOpening(document), Contains("Unexpected value 0 for additional header offset!"));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_FAILURE);
}

TEST_F(StoreHeaders, MayHaveTheirListBeforeTheTiles)
{
    const Stack stack = Small().ChunkListBeforeBodies();
    Open(stack);
    ExpectItIsServed(stack);
}

struct NumberRow : Row
{
    uint32_t Number;
    bool IsTaken;
};

class CountOfComponents : public StoreHeaders, public testing::WithParamInterface<NumberRow>
{
};

TEST_P(CountOfComponents, IsOneOrThree)
{
    EXPECT_EQ(ResultOfOpening(
                  Changed(Small().Jpeg(), [](CTileStore& s) { s.Additional.ComponentCount = GetParam().Number; })),
              GetParam().IsTaken ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Counts, CountOfComponents,
                         testing::Values(NumberRow{{"None"}, 0, false}, NumberRow{{"One"}, 1, true},
                                         NumberRow{{"Two"}, 2, false}, NumberRow{{"Three"}, 3, true},
                                         NumberRow{{"Four"}, 4, false}, NumberRow{{"Greatest"}, 0xFFFFFFFF, false}),
                         NameOfRow());

class CompressionCode : public StoreHeaders, public testing::WithParamInterface<NumberRow>
{
};

TEST_P(CompressionCode, IsOneOfSix)
{
    EXPECT_EQ(ResultOfOpening(Small().Compression(GetParam().Number)),
              GetParam().IsTaken ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Codes, CompressionCode,
                         testing::Values(NumberRow{{"Raw"}, 0, true}, NumberRow{{"Number1"}, 1, false},
                                         NumberRow{{"Jpeg"}, 2, true}, NumberRow{{"J2k"}, 3, true},
                                         NumberRow{{"Number4"}, 4, false}, NumberRow{{"JpegLossless"}, 5, true},
                                         NumberRow{{"Number6"}, 6, false}, NumberRow{{"Number7"}, 7, false},
                                         NumberRow{{"Png"}, 8, true}, NumberRow{{"Bmp"}, 9, true},
                                         NumberRow{{"Number10"}, 10, false},
                                         NumberRow{{"Greatest"}, 0xFFFFFFFF, false}),
                         NameOfRow());

struct OrderRow : Row
{
    bool IsRaw;
    uint32_t Components;
    int32_t Order;
    bool IsTaken;
};

class OrderOfComponents : public StoreHeaders, public testing::WithParamInterface<OrderRow>
{
};

TEST_P(OrderOfComponents, MustBeToldForRawPixelsOfSeveral)
{
    const Stack stack = GetParam().IsRaw ? Small().Raw(ComponentType::Uint8, GetParam().Components)
                                         : Small().Jpeg(GetParam().Components);
    EXPECT_EQ(ResultOfOpening(Stack(stack).ComponentOrder(GetParam().Order)),
              GetParam().IsTaken ? AC_RESULT_SUCCESS : AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Orders, OrderOfComponents,
    testing::Values(OrderRow{{"RawOfThreeInBgr"}, true, 3, 1, true}, OrderRow{{"RawOfThreeInRgb"}, true, 3, 2, true},
                    OrderRow{{"RawOfThreeInNone"}, true, 3, 0, false},
                    OrderRow{{"RawOfThreeNotTold"}, true, 3, -1, false}, OrderRow{{"RawOfOneInNone"}, true, 1, 0, true},
                    OrderRow{{"RawOfOneNotTold"}, true, 1, -1, true}, OrderRow{{"RawOfOneInRgb"}, true, 1, 2, true},
                    OrderRow{{"JpegOfThreeInNone"}, false, 3, 0, true},
                    OrderRow{{"JpegOfThreeNotTold"}, false, 3, -1, true}, OrderRow{{"TooGreat"}, false, 1, 3, false},
                    OrderRow{{"TooSmall"}, false, 1, -2, false}, OrderRow{{"Least"}, false, 1, -0x7FFFFFFF - 1, false}),
    NameOfRow());

TEST_F(StoreHeaders, MayTellATileWithoutAWidthWhichHasNoAreas)
{
    Open(Changed(Small(), [](CTileStore& store) { store.Additional.TileX = 0; }));
    INT32 count = 0;
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetNumOfArea, Group(), 0, &count), AC_RESULT_FAILURE);
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(StoreHeaders, MayTellATileWithoutAHeightWhichHasNoSize)
{
    Open(Changed(Small(), [](CTileStore& store) { store.Additional.TileY = 0; }));
    CMN_RECT rect = {};
    EXPECT_EQ(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_FAILURE);
}

TEST_F(StoreHeaders, MayTellATileOfAnySizeWithoutHarm)
{
    Open(Changed(Small(), [](CTileStore& store) { store.Additional.TileX = store.Additional.TileY = 0xFFFFFFFE; }));
    CMN_RECT rect = {};
    EXPECT_NE(Call(_AC_GetLevelImageSize, Group(), 0, &rect), AC_RESULT_INVALID_PARAM);
    const AC_HIMAGE image = Tile(0, 0);
    UINT64 size = 0;
    CMN_RECT part = {0, 0, 0xFFFFFFFD, 0xFFFFFFFD};
    EXPECT_EQ(Call(_AC_GetImageBody, image, &part, nullptr, UINT64{0}, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(BodyOf(image).size(), 64u);
}

// Places that cannot be.

struct PlaceRow : Row
{
    std::function<void(CTileStore&)> Change;
};

class PlaceInAStore : public StoreHeaders, public testing::WithParamInterface<PlaceRow>
{
};

TEST_P(PlaceInAStore, MustLieInTheFile)
{
    EXPECT_EQ(ResultOfOpening(Changed(Small().Z(3), GetParam().Change)), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(
    Places, PlaceInAStore,
    testing::Values(
        PlaceRow{{"HeaderBehindTheEnd"}, [](CTileStore& s) { s.Header.AdditionalHeaderOffset = s.ToBytes().size(); }},
        PlaceRow{{"HeaderThatEndsBehindTheEnd"},
                 [](CTileStore& s) { s.Header.AdditionalHeaderOffset = s.ToBytes().size() - 100; }},
        PlaceRow{{"HeaderFarAway"}, [](CTileStore& s) { s.Header.AdditionalHeaderOffset = ~uint64_t{0}; }},
        PlaceRow{{"ChunksBehindTheEnd"},
                 [](CTileStore& s) { s.Header.FilePositionOfUsedChunks = static_cast<int64_t>(s.ToBytes().size()); }},
        PlaceRow{{"ChunksThatEndBehindTheEnd"},
                 [](CTileStore& s)
                 { s.Header.FilePositionOfUsedChunks = static_cast<int64_t>(s.ToBytes().size()) - 40; }},
        PlaceRow{{"ChunksBeforeTheStart"}, [](CTileStore& s) { s.Header.FilePositionOfUsedChunks = -1; }},
        PlaceRow{{"OneChunkTooMany"}, [](CTileStore& s) { s.Header.NumberOfUsedChunks = 4; }},
        PlaceRow{{"FarTooManyChunks"}, [](CTileStore& s) { s.Header.NumberOfUsedChunks = 0xFFFFFFFF; }},
        PlaceRow{{"NoChunks"}, [](CTileStore& s) { s.Header.NumberOfUsedChunks = 0; }}),
    NameOfRow());

class ShortStore : public StoreHeaders, public testing::WithParamInterface<size_t>
{
};

TEST_P(ShortStore, IsAFailure)
{
    Document().With(Small()).WriteTo(Folder().Path() / "slide.zel");
    std::filesystem::resize_file(StoreFile(1), GetParam());
    EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(NumOfBytes, ShortStore, testing::Values(0, 1, 4, 63, 64, 65, 100, 235, 236, 300));

} // namespace
