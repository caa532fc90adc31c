#include "HostTool/PropertySet.h"

#include "HostTool/Text.h"

namespace HostTool
{

namespace
{

template <typename T>
std::optional<T> FirstOf(const std::vector<T>& values)
{
    return values.empty() ? std::nullopt : std::optional<T>(values.front());
}

} // namespace

std::vector<AC_VALUE> CPropertySet::Values(const wchar_t* key) const
{
    int numOfValues = 0;
    if (_Host.GetPropertyValue(_Handle.get(), key, nullptr, 0, &numOfValues) != AC_RESULT_SUCCESS || numOfValues <= 0)
        return {};
    std::vector<AC_VALUE> values(static_cast<size_t>(numOfValues));
    if (_Host.GetPropertyValue(_Handle.get(), key, values.data(), numOfValues, &numOfValues) != AC_RESULT_SUCCESS)
        return {};
    return values;
}

std::vector<std::string> CPropertySet::Texts(const wchar_t* key) const
{
    std::vector<std::string> texts;
    for (const AC_VALUE& value : Values(key))
        if (value.nType == AC_VT_STRING && value.value.pszString)
            texts.push_back(ToUtf8(value.value.pszString));
    return texts;
}

std::vector<double> CPropertySet::Numbers(const wchar_t* key) const
{
    std::vector<double> numbers;
    for (const AC_VALUE& value : Values(key))
    {
        if (value.nType == AC_VT_INTEGER)
            numbers.push_back(value.value.nInteger);
        else if (value.nType == AC_VT_DOUBLE)
            numbers.push_back(value.value.dDouble);
    }
    return numbers;
}

std::vector<AC_POINT> CPropertySet::Points(const wchar_t* key) const
{
    std::vector<AC_POINT> points;
    for (const AC_VALUE& value : Values(key))
        if (value.nType == AC_VT_POINT)
            points.push_back(value.value.point);
    return points;
}

std::optional<std::string> CPropertySet::Text(const wchar_t* key) const
{
    return FirstOf(Texts(key));
}

std::optional<double> CPropertySet::Number(const wchar_t* key) const
{
    return FirstOf(Numbers(key));
}

} // namespace HostTool
