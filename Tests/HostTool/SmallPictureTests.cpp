/// `zel thumbnail` and `zel overview`.

#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>

namespace
{

using namespace SampleDocuments;

using ZelSmallPictures = ZelRun;

TEST_F(ZelSmallPictures, AreTheThumbnailAsPng)
{
    const CPicture picture = DrawPicture(61, 40);
    Write(Document().With(Stack(1)).Thumbnail(picture));
    Run("thumbnail", "thumbnail.png");
    EXPECT_EQ(Picture("thumbnail.png"), picture);
}

TEST_F(ZelSmallPictures, AreTheThumbnailAsThePluginHandsItOut)
{
    Write(Document().With(Stack(1)).Thumbnail(DrawPicture(61, 40)));
    Run("thumbnail", "thumbnail");
    EXPECT_EQ(BytesOf("thumbnail.bmp").substr(0, 2), "BM");
}

TEST_F(ZelSmallPictures, AreAThumbnailOfFewColours)
{
    Write(Document().With(Stack(1)).Thumbnail(DrawPicture(61, 40), {.Bits = 4}));
    Run("thumbnail", "thumbnail.png");
    EXPECT_EQ(Picture("thumbnail.png").Width(), 61u);
}

TEST_F(ZelSmallPictures, AreTheOverviewAsItIsStored)
{
    const ByteString jpeg = EncodeJpeg(DrawPicture(120, 40), 85);
    Write(Stack(1).Overview(jpeg));
    Run("overview", "overview");
    EXPECT_EQ(BytesOf("overview.jpg"), std::string(jpeg.begin(), jpeg.end()));
    ExpectRefusal("overview", "overview.png", {}, "is JPEG; give a name that ends in .jpg");
}

TEST_F(ZelSmallPictures, AreAnOverviewBitmapAsPng)
{
    const CPicture picture = DrawPicture(30, 20);
    Write(Stack(1).Overview(EncodeBmp(picture)));
    Run("overview", "overview.png");
    EXPECT_EQ(Picture("overview.png"), picture);
}

TEST_F(ZelSmallPictures, AreRefusedWhereThereAreNone)
{
    Write(Document().With(Stack(1)).WithoutFirstDirectory());
    ExpectRefusal("overview", "overview.png", {}, "the document has no overview picture");
    const auto result = TryToRun("thumbnail", "thumbnail.png");
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_THAT(result.Errors, testing::HasSubstr("cannot read the thumbnail"));
}

} // namespace
