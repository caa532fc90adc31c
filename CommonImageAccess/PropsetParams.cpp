#include "CommonImageAccess/PropsetParams.h"

#include "CommonImageAccess/BrixKeys.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <cerrno>
#include <cwchar>
#include <limits>

namespace CIA
{

using namespace CommonUtil;

void AssertNoParams(const AC_PARAMS& params)
{
    ZEL_ASSERT(params.nSize == 0);
}

bool RefuseParams(const char* text)
{
    ZEL_LOG("%s", text);
    errno = EINVAL;
    return false;
}

bool ExpectNoParams(const AC_PARAMS& params, const char* text)
{
    return params.nSize == 0 || RefuseParams(text);
}

const wchar_t* ExpectOneTextParam(const AC_PARAMS& params, const char* name, const char* textOfCount)
{
    const auto refuse = [](const std::string& text) -> const wchar_t*
    {
        RefuseParams(text.c_str());
        return nullptr;
    };
    if (params.nSize != 1)
        return refuse(textOfCount);
    const AC_PARAM_ELEMENT& element = params.pElements[0];
    if (!element.pszKey)
        return refuse("parameter does not have a name!");
    if (!Equals(element.pszKey, ToWide(name).c_str()))
        return refuse("Name of the first parameter must be '" + std::string(name) + "'!");
    if (!element.pValue)
        return refuse("Value of the first parameter cannot be NULL!");
    return static_cast<const wchar_t*>(element.pValue);
}

std::optional<DimensionType::E> DimensionOfAxisName(const wchar_t* axisName)
{
    if (Equals(axisName, BRIX_AXIS_T))
        return DimensionType::DimensionType_T;
    if (Equals(axisName, BRIX_AXIS_Z))
        return DimensionType::DimensionType_Z;
    if (Equals(axisName, BRIX_AXIS_L))
        return DimensionType::DimensionType_L;
    return {};
}

int32_t IntOfText(const wchar_t* text)
{
    using Limits = std::numeric_limits<int32_t>;
    const CErrnoKeeper errnoKeeper;
    return static_cast<int32_t>(std::clamp<long>(std::wcstol(text, nullptr, 10), Limits::min(), Limits::max()));
}

uint32_t IdOfText(const wchar_t* text)
{
    const CErrnoKeeper errnoKeeper;
    const unsigned long id = std::wcstoul(text, nullptr, 0);
    return id < NoSuchId ? static_cast<uint32_t>(id) : NoSuchId; // not cut to another one's
}

const wchar_t* CompressionFormatToBrixString(PixelFrameCompressionType::E compressionType)
{
    switch (compressionType)
    {
    case PixelFrameCompressionType::None:
        return L"RAW";
    case PixelFrameCompressionType::Jpeg:
    case PixelFrameCompressionType::Jpeg7:
        return L"JPEG";
    case PixelFrameCompressionType::J2k:
        return L"J2K";
    case PixelFrameCompressionType::Png:
        return L"PNG";
    case PixelFrameCompressionType::Bmp:
        return L"BMP";
    default:
        FailAssertion(__FILE__, __LINE__);
    }
}

} // namespace CIA
