/// Where a picture begins on its tiles.

#include "HostTool/Pixels/Pyramid.h"

#include <gtest/gtest.h>

namespace
{

using namespace HostTool;

/// 1000 pixels on tiles of 256, from tile `first` on.
CToldAxis Axis(int64_t first, int64_t numOfTiles, int64_t told)
{
    CToldAxis axis;
    axis.Told = told;
    axis.FirstTile = first;
    axis.TileSize = axis.TileWidth = 256;
    axis.NumOfTiles = numOfTiles;
    axis.PictureSize = 1000;
    axis.IsCalibrated = true;
    return axis;
}

TEST(StartOfAPicture, IsTheFirstTileOfAnUncroppedOne)
{
    EXPECT_EQ(PictureStartOf(Axis(0, 4, 0)), 0);
}

TEST(StartOfAPicture, IsTileZeroEvenIfTilesLieBeforeIt)
{
    EXPECT_EQ(PictureStartOf(Axis(-1, 5, 0)), 0);
}

TEST(StartOfAPicture, IsTheFirstTileIfItFitsNowhereElse)
{
    EXPECT_EQ(PictureStartOf(Axis(-1, 4, 0)), -256);
}

TEST(StartOfAPicture, IsToldFromTheFirstTile)
{
    EXPECT_EQ(PictureStartOf(Axis(-1, 5, 156)), -100);
}

TEST(StartOfAPicture, IsToldAsIfTilesWereAsHighAsWide)
{
    CToldAxis axis = Axis(-1, 7, 206); // a cropping of 50
    axis.TileSize = 200;
    EXPECT_EQ(PictureStartOf(axis), -50);
}

TEST(StartOfAPicture, IsToldFromTileZeroWithoutCalibration)
{
    CToldAxis axis = Axis(-1, 5, 100);
    axis.IsCalibrated = false;
    EXPECT_EQ(PictureStartOf(axis), -100);
}

TEST(StartOfAPicture, IsNotTheDistanceFromOtherPictures)
{
    CToldAxis axis = Axis(0, 5, 120);
    axis.DistanceToOthers = 120;
    EXPECT_EQ(PictureStartOf(axis), 0);
}

TEST(StartOfAPicture, IsZeroIfWhatIsToldLiesBeyondTheTiles)
{
    EXPECT_EQ(PictureStartOf(Axis(0, 4, 5000)), 0);
}

} // namespace
