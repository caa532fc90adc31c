#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace HostTool
{

/// "int32", "double x 4", "text", by the type code of a simple field and the size of its value in bytes; "type 4711"
/// for a code that is unknown.
std::string TypeTextOf(int32_t code, uint64_t size);

/// The value of a simple field for people: numbers, of which the first few stand for all, or a text in quotes. `bytes`
/// may be fewer than `size`, which is that of the whole value.
std::string ValueTextOf(int32_t code, std::span<const uint8_t> bytes, uint64_t size);

} // namespace HostTool
