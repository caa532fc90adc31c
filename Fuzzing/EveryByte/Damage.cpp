#include "Fuzzing/EveryByte/Damage.h"

#include "Fuzzing/Support/FuzzTarget.h"

#include <array>
#include <fstream>
#include <iterator>

namespace Fuzzing
{

namespace
{

uint8_t Changed(uint8_t byte, DamageKind::E kind)
{
    switch (kind)
    {
    case DamageKind::Zero:
        return 0;
    case DamageKind::AllBits:
        return 0xFF;
    case DamageKind::OneMore:
        return static_cast<uint8_t>(byte + 1);
    default:
        return static_cast<uint8_t>(~byte);
    }
}

} // namespace

std::string CDamage::ToString() const
{
    static constexpr std::array<const char*, DamageKind::NumOfKinds> Names = {"set to 0", "set to 255", "plus 1",
                                                                              "inverted", "cut off"};
    return "byte " + std::to_string(Offset) + " " + Names[Kind];
}

CDamagedFile::CDamagedFile(std::filesystem::path file) : _file(std::move(file))
{
    std::ifstream stream(_file, std::ios::binary);
    _bytes.assign(std::istreambuf_iterator<char>(stream), {});
}

bool CDamagedFile::Damage(const CDamage& damage) const
{
    std::vector<uint8_t> bytes = _bytes;
    if (damage.Kind == DamageKind::CutOff)
        bytes.resize(damage.Offset);
    else
    {
        const uint8_t changed = Changed(bytes[damage.Offset], damage.Kind);
        if (changed == bytes[damage.Offset])
            return false;
        bytes[damage.Offset] = changed;
    }
    Write(bytes);
    return true;
}

void CDamagedFile::Write(const std::vector<uint8_t>& bytes) const
{
    WriteFile(_file, bytes);
}

} // namespace Fuzzing
