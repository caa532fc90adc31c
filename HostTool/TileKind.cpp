#include "HostTool/TileKind.h"

#include <algorithm>
#include <array>

namespace HostTool
{

namespace
{

using namespace std::string_view_literals;

constexpr std::array<CTileKind, 5> TileKinds{{
    {"\xFF\xD8\xFF"sv, ".jpg", ".jpeg", "JPEG"},
    {"\0\0\0\x0CjP  \r\n\x87\n"sv, ".jp2", ".jp2", "JPEG 2000"},
    {"\xFF\x4F\xFF\x51"sv, ".j2k", ".j2c", "JPEG 2000 codestream"},
    {"\x89PNG\r\n\x1A\n"sv, ".png", ".png", "PNG"},
    {"BM"sv, ".bmp", ".bmp", "BMP"},
}};

} // namespace

const CTileKind* FindTileKind(std::span<const uint8_t> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto kind = std::find_if(TileKinds.begin(), TileKinds.end(),
                                   [&](const CTileKind& candidate) { return text.starts_with(candidate.Signature); });
    return kind == TileKinds.end() ? nullptr : &*kind;
}

} // namespace HostTool
