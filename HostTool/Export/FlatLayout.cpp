#include "HostTool/Export/FlatLayout.h"

#include "HostTool/Text.h"

#include <cmath>

namespace HostTool
{

namespace
{

/// Readers tell the dialect by the first word. Between this line and the next one, OpenSlide takes the name of a
/// picture for empty if there is more than a line feed.
const std::string FirstLine = "Aperio dialect, written by zel " ZEL_VERSION "\n";

std::string TextOfSize(int64_t width, int64_t height)
{
    return std::to_string(width) + "x" + std::to_string(height);
}

/// The size of a pixel, if it is a square as far as one number can tell it.
std::optional<double> PixelSizeOf(const CLevel& level)
{
    constexpr double tolerance = 0.01;
    if (!level.PixelWidth || !level.PixelHeight ||
        std::abs(*level.PixelWidth - *level.PixelHeight) > tolerance * *level.PixelWidth)
        return std::nullopt;
    return (*level.PixelWidth + *level.PixelHeight) / 2;
}

} // namespace

std::string FlatDescriptionOf(const CLevelPlan& finest, const CGroupPixels& pixels, const CLensFacts* lens)
{
    const CPixelRect& rect = finest.Rect;
    std::string text = FirstLine + TextOfSize(rect.Width, rect.Height) + " [0,0 " +
                       TextOfSize(rect.Width, rect.Height) + "] (" + TextOfSize(finest.TileWidth, finest.TileHeight) +
                       ")";
    if (lens && lens->Magnification && *lens->Magnification > 0)
    {
        // A coarser level is what a lens of less power would show.
        const double zoomOut =
            static_cast<double>(pixels.Level(0).Picture.Width) / static_cast<double>(finest.Level->Picture.Width);
        text += "|AppMag = " + TextOf(*lens->Magnification / zoomOut);
    }
    if (const auto size = PixelSizeOf(*finest.Level))
        text += "|MPP = " + TextOf(*size);
    return text;
}

std::string FlatDescriptionOf(const CFurtherPicture& picture, const std::string& name)
{
    return FirstLine + name + " " + TextOfSize(picture.Width, picture.Height);
}

} // namespace HostTool
