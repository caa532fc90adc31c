#include "SampleDocuments/Slide.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

/// The mean over 2 x radius + 1 pixels of each row; the edges are repeated.
CPicture BlurredRows(const CPicture& picture, uint32_t radius)
{
    CPicture blurred(picture.Width(), picture.Height(), picture.Samples(), picture.Bits());
    const auto width = static_cast<int64_t>(picture.Width());
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint16_t s = 0; s < picture.Samples(); ++s)
        {
            const auto at = [&](int64_t x)
            { return picture.At(static_cast<uint32_t>(std::clamp<int64_t>(x, 0, width - 1)), y, s); };
            uint64_t sum = 0;
            for (int64_t x = -static_cast<int64_t>(radius); x <= radius; ++x)
                sum += at(x);
            for (int64_t x = 0; x < width; ++x)
            {
                blurred.At(static_cast<uint32_t>(x), y, s) = static_cast<uint16_t>(sum / (2 * radius + 1));
                sum += at(x + radius + 1);
                sum -= at(x - radius);
            }
        }
    return blurred;
}

CPicture Transposed(const CPicture& picture)
{
    CPicture transposed(picture.Height(), picture.Width(), picture.Samples(), picture.Bits());
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint32_t x = 0; x < picture.Width(); ++x)
            for (uint16_t s = 0; s < picture.Samples(); ++s)
                transposed.At(y, x, s) = picture.At(x, y, s);
    return transposed;
}

CPicture Blurred(const CPicture& picture, uint32_t radius)
{
    return radius == 0 ? picture : Transposed(BlurredRows(Transposed(BlurredRows(picture, radius)), radius));
}

/// One colour as light on a dark ground, the way a fluorescence channel looks. From the fourth on they get darker.
CPicture ChannelOf(const CPicture& picture, uint32_t channel)
{
    const CPicture colored = picture.WithSamples(3);
    CPicture grey(picture.Width(), picture.Height(), 1, picture.Bits());
    for (uint32_t y = 0; y < grey.Height(); ++y)
        for (uint32_t x = 0; x < grey.Width(); ++x)
            grey.At(x, y, 0) = static_cast<uint16_t>(
                (colored.Largest() - colored.At(x, y, static_cast<uint16_t>(channel % 3))) / (1 + channel / 3));
    return grey;
}

void MoveRight(CPicture& picture, uint32_t pixels)
{
    for (uint32_t y = 0; y < picture.Height(); ++y)
    {
        const auto row = picture.Row(y);
        const size_t moved = size_t{pixels % picture.Width()} * picture.Samples();
        std::rotate(row.begin(), row.end() - static_cast<std::ptrdiff_t>(moved), row.end());
    }
}

void Darken(CPicture& picture, double factor)
{
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint16_t& sample : picture.Row(y))
            sample = static_cast<uint16_t>(sample * factor);
}

} // namespace

CPicture FrameOf(const CPicture& picture, const CSlideOptions& options, const CIndexes& at)
{
    const CPicture original = picture.WithBits(options.Bits);
    CPicture frame = options.NumOfChannels > 1 ? ChannelOf(original, at.C)
                                               : original.WithSamples(options.IsGrey ? 1 : original.Samples());
    const uint32_t middle = (options.NumOfZ - 1) / 2;
    frame = Blurred(frame, 2 * (at.Z > middle ? at.Z - middle : middle - at.Z));
    if (at.T > 0)
        MoveRight(frame, at.T * std::max(1u, frame.Width() / 16));
    if (at.L > 0)
        Darken(frame, 1 - 0.7 * at.L / options.NumOfLambdas);
    return frame;
}

} // namespace SampleDocuments
