#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Fuzzing
{

/// What can happen to a file: each byte is changed in four ways, and it ends at each length.
struct DamageKind
{
    enum E
    {
        Zero,
        AllBits,
        OneMore,
        Inverted,
        CutOff, ///< the file ends before this byte
        NumOfKinds
    };
};

struct CDamage
{
    size_t Offset = 0;
    DamageKind::E Kind = DamageKind::Zero;

    std::string ToString() const;
};

/// The damages of a file of so many bytes, by number.
inline size_t NumOfDamages(size_t sizeOfFile)
{
    return sizeOfFile * DamageKind::NumOfKinds;
}
inline CDamage DamageOfNumber(size_t number)
{
    return {number / DamageKind::NumOfKinds, static_cast<DamageKind::E>(number % DamageKind::NumOfKinds)};
}

/// A file that is damaged, and mended again.
class CDamagedFile
{
public:
    explicit CDamagedFile(std::filesystem::path file);

    const std::filesystem::path& Name() const { return _file; }
    size_t Size() const { return _bytes.size(); }
    /// False when the damage changes nothing.
    bool Damage(const CDamage& damage) const;
    void Mend() const { Write(_bytes); }

private:
    void Write(const std::vector<uint8_t>& bytes) const;

    std::filesystem::path _file;
    std::vector<uint8_t> _bytes;
};

} // namespace Fuzzing
