#pragma once

#include "HostTool/ByteBuffer.h"

#include <filesystem>
#include <string>

namespace HostTool
{

/// Writes a BMP file, as the plug-in hands out thumbnails, as a PNG picture. Answers a line that says what was written.
/// Throws CHostError if it is no BMP file, or the picture can't be written.
std::string WriteBitmapAsPng(const ByteBuffer& bitmap, const std::filesystem::path& path);

} // namespace HostTool
