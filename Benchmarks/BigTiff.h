#pragma once
#include <cstdint>
#include <filesystem>

namespace Benchmarks
{

/// What people would use in the place of a document: a BigTIFF of so many JPEG tiles of 256 x 256 pixels in one
/// directory. The first tile is a picture, the others are holes in the file. Written on first use.
const std::filesystem::path& BigTiffOf(int64_t numOfTiles);

} // namespace Benchmarks
