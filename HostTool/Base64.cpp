#include "HostTool/Base64.h"

namespace HostTool
{

std::string ToBase64(std::span<const uint8_t> bytes)
{
    static constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3)
    {
        const size_t count = std::min<size_t>(3, bytes.size() - i);
        uint32_t number = uint32_t{bytes[i]} << 16;
        number |= count > 1 ? uint32_t{bytes[i + 1]} << 8 : 0;
        number |= count > 2 ? bytes[i + 2] : 0;
        for (size_t digit = 0; digit < 4; ++digit)
            text += digit <= count ? digits[(number >> (18 - 6 * digit)) & 63] : '=';
    }
    return text;
}

} // namespace HostTool
