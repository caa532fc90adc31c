#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace HostTool
{

/// Bytes as text of the 64 usual characters, filled up with '='.
std::string ToBase64(std::span<const uint8_t> bytes);

} // namespace HostTool
