#pragma once
#include "Brix/AccessorInterface.h"
#include "CommonImageAccess/DimensionType.h"
#include "CommonImageAccess/PixelFormat.h"

#include <optional>

namespace CIA
{

// The checks that property handlers make of their parameters. Those that return false have logged why and left EINVAL
// in errno; those named Assert end in a failed assertion.

void AssertNoParams(const AC_PARAMS& params);
/// Logs `text` when there is a parameter.
bool ExpectNoParams(const AC_PARAMS& params, const char* text);
/// Exactly one parameter of that name with a value; the value on success, null on failure. `textOfCount` is logged for
/// any other number of parameters.
const wchar_t* ExpectOneTextParam(const AC_PARAMS& params, const char* name, const char* textOfCount);

/// The dimension that "ZSTACK", "TIMELAPSE" or "LAMBDA" names.
std::optional<DimensionType::E> DimensionOfAxisName(const wchar_t* axisName);

/// Logs `text` and leaves EINVAL in errno; false.
bool RefuseParams(const char* text);

/// The number at the start of a text, as the hosts write channel and region IDs: decimal, or with a prefix hexadecimal
/// or octal; NoSuchId for a larger one than any ID. Keeps errno.
constexpr uint32_t NoSuchId = 0xFFFFFFFF;
uint32_t IdOfText(const wchar_t* text);
/// The decimal number at the start of a text, as hosts write numbers in custom data; the nearest one that there is for
/// a text beyond all numbers. Keeps errno.
int32_t IntOfText(const wchar_t* text);

/// The host's word for a compression; a number that is none is a failed assertion.
const wchar_t* CompressionFormatToBrixString(PixelFrameCompressionType::E compressionType);

} // namespace CIA
