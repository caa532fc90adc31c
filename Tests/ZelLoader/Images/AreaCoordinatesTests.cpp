// The coordinates by which an area is asked for a tile. A host's are checked before they come here; the rules hold for
// other callers as well.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;
using CIA::CCoordinate;
using CIA::CCoords;

namespace
{

const std::string NoSuchDimension =
    "Error: Coordinate for non-existent dimension specified with non-zero index value! Only 0 index value will be "
    "tolerated for non-existent dimension!";

class CoordinatesOfAnArea : public ZelSlide
{
protected:
    /// The first area of the first image of a document with these two.
    CIA::CMultiDimTile& AreaOf(const Stack& stack, const Stack& other)
    {
        Read(Document().With(stack).With(other)).MultiDimImages();
        return Image(1).DeepZoomPyramidLevels().front()->MultiDimTile(0);
    }
    /// A coordinate on a dimension of the other image.
    CCoordinate OnTheOther(DimType type, uint32_t index) { return {index, Image(2).DimensionOf(type), nullptr}; }

private:
    CIA::CMultiDimImage& Image(uint32_t id) { return *ReadDocument().MultiDimImages().at(id); }
};

TEST_F(CoordinatesOfAnArea, MayBeZeroOnADimensionThatTheImageHasNot)
{
    CIA::CMultiDimTile& area = AreaOf(Stack(1), Stack(2).T(2));
    CCoordinate first = OnTheOther(DimT, 0);
    EXPECT_THAT(MessagesOf([&] { EXPECT_NE(area.DeepZoomTile({{DimT, &first}}), nullptr); }), IsEmpty());
}

TEST_F(CoordinatesOfAnArea, MustBeZeroOnADimensionThatTheImageHasNot)
{
    CIA::CMultiDimTile& area = AreaOf(Stack(1), Stack(2).T(2));
    CCoordinate second = OnTheOther(DimT, 1);
    errno = 0;
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(area.DeepZoomTile({{DimT, &second}}), nullptr);
                    }),
                ElementsAre(NoSuchDimension));
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(CoordinatesOfAnArea, MustBeZeroOnADimensionThatTheImageHasNotForTheNextTileToo)
{
    CIA::CMultiDimTile& area = AreaOf(Stack(1), Stack(2).T(2));
    CCoordinate second = OnTheOther(DimT, 1);
    ASSERT_NE(area.DeepZoomTile({}), nullptr);
    errno = 0;
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(area.NextDeepZoomTile({{DimT, &second}}, {0}), nullptr);
                    }),
                ElementsAre(NoSuchDimension));
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(CoordinatesOfAnArea, MustBeThoseOfAFrame)
{
    CIA::CMultiDimTile& area = AreaOf(Stack(1).Z(2), Stack(2).Z(3));
    CCoordinate second = OnTheOther(DimZ, 1);
    CCoordinate third = OnTheOther(DimZ, 2);
    EXPECT_NE(area.DeepZoomTile({{DimZ, &second}}), nullptr);
    errno = 0;
    EXPECT_THAT(MessagesOf(
                    [&] {
                        EXPECT_EQ(area.DeepZoomTile({{DimZ, &third}}), nullptr);
                    }),
                ElementsAre("Error: Invalid frame index!"));
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(CoordinatesOfAnArea, MustLieOnDimensionsThatTellFramesApart)
{
    CIA::CMultiDimTile& area = AreaOf(Stack(1), Stack(2));
    ASSERT_NE(area.DeepZoomTile({}), nullptr);
    for (const DimType type : {DimX, DimY, DimP})
    {
        CCoordinate first = OnTheOther(type, 0);
        EXPECT_FAILED_ASSERTION(area.DeepZoomTile({{type, &first}}));
        EXPECT_FAILED_ASSERTION(area.NextDeepZoomTile({{type, &first}}, {0}));
    }
}

} // namespace
