#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace HostTool
{

/// A kind of file that the bytes of a compressed tile make by themselves.
struct CTileKind
{
    std::string_view Signature; ///< the first bytes
    std::string_view Extension;
    std::string_view OtherExtension; ///< another spelling, or the same
    std::string_view Name;           ///< for people
};

/// Told by the first bytes; null if they are none of the kinds that are known here.
const CTileKind* FindTileKind(std::span<const uint8_t> bytes);

} // namespace HostTool
