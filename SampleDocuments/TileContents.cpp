#include "SampleDocuments/TileContents.h"

#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Stack.h"

#include <algorithm>

namespace SampleDocuments
{

namespace
{

/// A number that differs between any two places, for all practical purposes.
uint64_t NumberOf(uint32_t stackId, const CTilePlace& place)
{
    uint64_t number = stackId;
    for (const uint32_t part : {place.Level, static_cast<uint32_t>(place.Column), static_cast<uint32_t>(place.Row),
                                place.At.Z, place.At.T, place.At.L, place.At.C})
    {
        number = (number ^ part) * 0x9E3779B97F4A7C15u;
        number ^= number >> 32;
    }
    return number;
}

/// A text at the front and then a sequence of bytes that the seed decides.
ByteString Pattern(std::string_view label, uint64_t seed, size_t size)
{
    ByteString bytes(size);
    for (size_t at = 0; at < size; at += sizeof(seed))
    {
        seed = seed * 6364136223846793005u + 1442695040888963407u;
        const uint64_t mixed = seed ^ (seed >> 29);
        std::memcpy(bytes.data() + at, &mixed, std::min(sizeof(mixed), size - at));
    }
    std::copy_n(label.begin(), std::min(size, label.size()), bytes.begin());
    return bytes;
}

/// Few pixels, so that the picture of a tile is encoded fast: a slope whose colours the seed decides.
CPicture SmallPicture(const CStackPlan& plan, uint64_t seed)
{
    CPicture picture(plan.TileWidth, plan.TileHeight, static_cast<uint16_t>(plan.Pixels.ComponentCount),
                     BytesOfComponent(plan.Pixels.ComponentType) == 2 ? 16 : 8);
    const uint32_t largest = (1u << picture.Bits()) - 1;
    for (uint32_t y = 0; y < picture.Height(); ++y)
        for (uint32_t x = 0; x < picture.Width(); ++x)
            for (uint16_t s = 0; s < picture.Samples(); ++s)
            {
                const uint64_t slope = (x * (1 + (seed >> 8 * s) % 5) + y * (1 + (seed >> (8 * s + 24)) % 5)) * 3;
                picture.At(x, y, s) = static_cast<uint16_t>((seed + slope * (largest / 255)) & largest);
            }
    return picture;
}

} // namespace

std::string LabelOf(uint32_t stackId, const CTilePlace& place)
{
    return "stack " + std::to_string(stackId) + " level " + std::to_string(place.Level) + " column " +
           std::to_string(place.Column) + " row " + std::to_string(place.Row) + " Z " + std::to_string(place.At.Z) +
           " T " + std::to_string(place.At.T) + " L " + std::to_string(place.At.L) + " C " + std::to_string(place.At.C);
}

CTileContents PixelsOf(const CStackPlan& plan)
{
    CTileContents contents;
    contents.Bytes = [stack = Stack(plan)](const CTilePlace& place)
    {
        const CTileRegion region = stack.RegionOf(place);
        return Pattern(LabelOf(stack.Id(), place), NumberOf(stack.Id(), place),
                       size_t{region.Width} * region.Height * stack.BytesPerPixel());
    };
    return contents;
}

CTileContents Labels(uint32_t stackId)
{
    CTileContents contents;
    contents.Bytes = [stackId](const CTilePlace& place) { return BytesOf(LabelOf(stackId, place)); };
    return contents;
}

CTileContents BytesOfSize(uint32_t stackId, uint32_t size)
{
    CTileContents contents;
    contents.Bytes = [stackId, size](const CTilePlace& place)
    { return Pattern(LabelOf(stackId, place), NumberOf(stackId, place), size); };
    return contents;
}

CTileContents TakingTurns(uint32_t stackId, uint32_t size, uint32_t numOfBodies)
{
    if (numOfBodies == 0)
        throw CSampleError("TakingTurns: tiles need at least one body to share");
    const auto turn = [stackId, numOfBodies](const CTilePlace& place)
    { return NumberOf(stackId, place) % numOfBodies; };
    CTileContents contents;
    contents.Key = turn;
    contents.Bytes = [turn, stackId, size](const CTilePlace& place)
    { return Pattern("stack " + std::to_string(stackId) + " body " + std::to_string(turn(place)), turn(place), size); };
    return contents;
}

CTileContents Holes(uint32_t size)
{
    CTileContents contents;
    contents.HoleSize = size;
    contents.Bytes = [size](const CTilePlace&) { return ByteString(size); };
    return contents;
}

CTileContents EncodedPixelsOf(const CStackPlan& plan)
{
    CTileContents contents;
    contents.Bytes = [plan](const CTilePlace& place)
    { return Encode(SmallPicture(plan, NumberOf(plan.Id, place)), EncodingOf(plan.Pixels)); };
    return contents;
}

} // namespace SampleDocuments
