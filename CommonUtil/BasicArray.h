#pragma once
#include "CommonUtil/Assertion.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace CommonUtil
{

/// The elements of an array field, back to back as they stood in the file (texts widened to 32 bits a character).
/// Owns its bytes; an array of 0 elements has none. The bytes lie on an address that suits every element type.
class CBasicArray
{
public:
    /// Takes the bytes; asserts that they are null when there are no elements.
    CBasicArray(std::unique_ptr<std::byte[]> bytes, uint32_t eleSize, uint32_t numOfEles, int32_t eleType)
        : _Ptr(std::move(bytes)), EleSize(eleSize), NumOfEles(numOfEles), EleType(eleType)
    {
        ZEL_ASSERT(NumOfEles != 0 || !_Ptr);
    }

    std::byte* Ptr() const { return _Ptr.get(); }
    uint64_t TotalSize() const { return uint64_t{EleSize} * NumOfEles; }
    uint32_t ElementSize() const { return EleSize; }
    uint32_t NumOfElements() const { return NumOfEles; }
    /// The type code under which the elements were read; -3 for wide text.
    int32_t ElementType() const { return EleType; }

private:
    std::unique_ptr<std::byte[]> _Ptr;
    uint32_t EleSize;
    uint32_t NumOfEles;
    int32_t EleType;
};

} // namespace CommonUtil
