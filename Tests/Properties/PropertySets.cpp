#include "Tests/Properties/PropertySets.h"

#include "CommonUtil/Text.h"

#include <stdexcept>

namespace SlideOfTest
{

namespace
{

void Must(AC_Result result, const char* what)
{
    if (result != AC_RESULT_SUCCESS)
        throw std::runtime_error(std::string(what) + " answered " + NameOf(result));
}

} // namespace

Params::Params(std::initializer_list<Param> params)
{
    for (const Param& param : params)
        _elements.push_back({param.Name, const_cast<wchar_t*>(param.Value)});
}

const AC_PARAMS* Params::Get()
{
    _params = {static_cast<INT32>(_elements.size()), _elements.data()};
    return &_params;
}

std::string TextOf(const AC_VALUE& value)
{
    switch (value.nType)
    {
    case AC_VT_INTEGER:
        return "int " + CommonUtil::ToString(value.value.nInteger);
    case AC_VT_DOUBLE:
        return "double " + CommonUtil::ToString(value.value.dDouble);
    case AC_VT_STRING:
        return "text " + (value.value.pszString ? CommonUtil::A(value.value.pszString) : std::string("NULL"));
    case AC_VT_POINT:
        return "point " + CommonUtil::ToString(value.value.point.x) + " " + CommonUtil::ToString(value.value.point.y);
    default:
        return "of no type that is told";
    }
}

AC_Result ResultOfSet(AC_HAREA area, const wchar_t* key, Params params)
{
    AC_HPROPERTY set = nullptr;
    return Call(_AC_GetAreaProperty, area, key, params.Get(), &set);
}

AC_Result ResultOfImageSet(AC_HIMAGE image, const wchar_t* key, Params params)
{
    AC_HPROPERTY set = nullptr;
    return Call(_AC_GetFrameProperty, image, key, params.Get(), &set);
}

AC_HPROPERTY SetOf(AC_HAREA area, const wchar_t* key, Params params)
{
    AC_HPROPERTY set = nullptr;
    Must(Call(_AC_GetAreaProperty, area, key, params.Get(), &set), "GetAreaProperty");
    return set;
}

AC_HPROPERTY SetOfImage(AC_HIMAGE image, const wchar_t* key, Params params)
{
    AC_HPROPERTY set = nullptr;
    Must(Call(_AC_GetFrameProperty, image, key, params.Get(), &set), "GetFrameProperty");
    return set;
}

std::vector<std::wstring> KeysOf(AC_HPROPERTY set)
{
    int count = 0;
    Must(Call(_AC_GetPropertyKeyList, set, nullptr, 0, &count), "GetPropertyKeyList");
    std::vector<const wchar_t*> keys(static_cast<size_t>(count));
    Must(Call(_AC_GetPropertyKeyList, set, keys.data(), count, &count), "GetPropertyKeyList");
    return {keys.begin(), keys.end()};
}

std::vector<AC_VALUE> ValuesOf(AC_HPROPERTY set, const wchar_t* key)
{
    int count = 0;
    Must(Call(_AC_GetPropertyValue, set, key, nullptr, 0, &count), "GetPropertyValue");
    std::vector<AC_VALUE> values(static_cast<size_t>(count));
    Must(Call(_AC_GetPropertyValue, set, key, values.data(), count, &count), "GetPropertyValue");
    return values;
}

Told ToldBy(AC_HPROPERTY set)
{
    Told told;
    for (const std::wstring& key : KeysOf(set))
    {
        auto& values = told[CommonUtil::A(key)];
        for (const AC_VALUE& value : ValuesOf(set, key.c_str()))
            values.push_back(TextOf(value));
    }
    return told;
}

} // namespace SlideOfTest
