#include "CommonImageAccess/GroupCustomData.h"

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Mutex.h"
#include "CommonUtil/Text.h"

#include <array>
#include <initializer_list>

namespace CIA
{

using namespace CommonUtil;

namespace
{

struct CStackType
{
    int32_t Value;
    const char* Name;
};
constexpr std::array<CStackType, 14> StackTypes = {
    {{0, "Default image"},
     {1, "Overview image"},
     {2, "Sample mask"},
     {4, "Focus image"},
     {8, "EFI sharpness map"},
     {16, "EFI height map"},
     {32, "EFI texture map"},
     {64, "EFI stack"},
     {256, "Macro image"},
     {512, "Review Mode"},
     {1024, "Vector layer holding shapes showing x / y / z focus positions"},
     {2048, "FFT or DFT transformed grayscale image"},
     {4096, "Kymogram"},
     {8192, "Maximum intensity projection"}}};

struct CNameOfText
{
    const char* Text;
    const char* Name;
};
constexpr std::array<CNameOfText, 6> Units = {{{"10^-3m^1", "MILLIMETER"},
                                               {"10^-6m^1", "MICROMETER"},
                                               {"10^-9m^1", "NANOMETER"},
                                               {"10^-12m^1", "PICOMETER"},
                                               {"10^0pixel^1", "PIXEL"},
                                               {"PIXEL", "PIXEL"}}};
/// A plane may be measured in bare pixels, a frame may not.
constexpr size_t NumOfUnitsOfFrames = Units.size() - 1;

/// Numbers and letters both occur.
constexpr std::array<CNameOfText, 11> AxesByText = {{{"-1", "Invalid"},
                                                     {"1", "Z"},
                                                     {"2", "T"},
                                                     {"3", "L"},
                                                     {"4", "Channel"},
                                                     {"5", "Undefined"},
                                                     {"6", "X"},
                                                     {"7", "Y"},
                                                     {"8", "Phase"},
                                                     {"X", "X"},
                                                     {"Y", "Y"}}};

template <size_t Size>
const char* NameOf(const std::array<CNameOfText, Size>& names, size_t numOfNames, const std::string& text)
{
    for (size_t i = 0; i < numOfNames; ++i)
        if (text == names[i].Text)
            return names[i].Name;
    return nullptr;
}

bool IsOneOf(const wchar_t* name, std::initializer_list<const wchar_t*> names)
{
    for (const wchar_t* candidate : names)
        if (Equals(name, candidate))
            return true;
    return false;
}

} // namespace

AC_Result CGroupCustomData::Get(const wchar_t* name, const AC_PARAM* params)
{
    // The exported function takes no lock; the walks below fill the wrappers' caches.
    const CLock lock(_image.ParentImgDoc().ThreadSafetyMutex());
    if (Equals(name, BRIX_GROUPCUSTOMDATA_KEY_GroupType))
        return GetGroupType();
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupOrder, BRIX_GROUPCUSTOMDATA_KEY_GroupRenderOperation}))
        return GetDisplayNumber(name);
    if (Equals(name, BRIX_GROUPCUSTOMDATA_KEY_GroupTransparency))
        return GetTransparency(name);
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneUnit, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneYUnit}))
        return GetPlaneUnit(name);
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneOrigin, BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneScale,
                       BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneSize}))
        return GetPlaneText(name);
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupFrameOrigin, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameScale}))
        return GetFrameText(name);
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupFrameUnit, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameYUnit}))
        return GetFrameUnit(name);
    if (IsOneOf(name, {BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis0, BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis1}))
        return GetAxis(name);
    if (Equals(name, BRIX_GROUPCUSTOMDATA_KEY_GroupExposureTime))
        return GetExposureTime(params);
    return AC_RESULT_INVALID_PARAM;
}

AC_Result CGroupCustomData::GetNameOf(const char* text)
{
    if (!text)
        return AC_RESULT_FAILURE;
    _text = text;
    return AC_RESULT_SUCCESS;
}

AC_Result CGroupCustomData::GetGroupType()
{
    const int32_t stackType = _image.ImageStackType();
    for (const CStackType& candidate : StackTypes)
        if (candidate.Value == stackType)
            return GetNameOf(candidate.Name);
    return GetNameOf("Unknown");
}

AC_Result CGroupCustomData::GetDisplayNumber(const wchar_t* name)
{
    AC_VALUE_WITH_TYPE value{};
    _text = _image.ImgDispChannelProperty(name, value) ? ToString(value.value.nInteger) : "";
    return AC_RESULT_SUCCESS;
}

AC_Result CGroupCustomData::GetTransparency(const wchar_t* name)
{
    AC_VALUE_WITH_TYPE value{};
    _text = _image.ImgDispChannelProperty(name, value) ? ToString(value.value.dDouble) : "1";
    return AC_RESULT_SUCCESS;
}

AC_Result CGroupCustomData::GetPlaneUnit(const wchar_t* name)
{
    std::string text;
    if (!_image.ImgPlaneProperty(name, text))
        return AC_RESULT_SUCCESS;
    return GetNameOf(NameOf(Units, Units.size(), text));
}

AC_Result CGroupCustomData::GetPlaneText(const wchar_t* name)
{
    std::string text;
    return _image.ImgPlaneProperty(name, text) ? GetNameOf(text.c_str()) : AC_RESULT_PROPERTY_NOT_FOUND;
}

AC_Result CGroupCustomData::GetFrameText(const wchar_t* name)
{
    std::string text;
    return _image.ImageFrameProperties(name, text) ? GetNameOf(text.c_str()) : AC_RESULT_PROPERTY_NOT_FOUND;
}

AC_Result CGroupCustomData::GetFrameUnit(const wchar_t* name)
{
    std::string text;
    if (!_image.ImageFrameProperties(name, text))
        return AC_RESULT_PROPERTY_NOT_FOUND;
    return GetNameOf(NameOf(Units, NumOfUnitsOfFrames, text));
}

AC_Result CGroupCustomData::GetAxis(const wchar_t* name)
{
    std::string text;
    if (!_image.ImageFrameProperties(name, text))
        return AC_RESULT_PROPERTY_NOT_FOUND;
    return GetNameOf(NameOf(AxesByText, AxesByText.size(), text));
}

AC_Result CGroupCustomData::GetExposureTime(const AC_PARAM* params)
{
    if (!params || !params->pElements || !params->pElements->pValue)
        return AC_RESULT_INVALID_PARAM;
    const int32_t channel = IntOfText(static_cast<const wchar_t*>(params->pElements->pValue));
    std::string text;
    const AC_Result result = _image.GroupExposureTime(static_cast<uint32_t>(channel), text);
    return result == AC_RESULT_SUCCESS ? GetNameOf(text.c_str()) : result;
}

} // namespace CIA
