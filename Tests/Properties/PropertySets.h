#pragma once
#include "Tests/Accessor/Slide.h"

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

/// Property sets as a host reads them.
namespace SlideOfTest
{

/// A parameter of a request; each part may be NULL.
struct Param
{
    const wchar_t* Name;
    const wchar_t* Value;
};

/// The parameters of a request. Values are texts that outlive it, which literals do; for the keys that take numbers
/// the first character is the number.
class Params
{
public:
    Params() = default;
    Params(std::initializer_list<Param> params);
    const AC_PARAMS* Get();

private:
    std::vector<AC_PARAM_ELEMENT> _elements;
    AC_PARAMS _params{};
};

/// A value with its type: "int 8", "double 0.5", "text DAPI", "text NULL", "point 3 4".
std::string TextOf(const AC_VALUE& value);

/// What a set tells, by key.
using Told = std::map<std::string, std::vector<std::string>>;

// Requests that must succeed.
AC_HPROPERTY SetOf(AC_HAREA area, const wchar_t* key, Params params = {});
AC_HPROPERTY SetOfImage(AC_HIMAGE image, const wchar_t* key, Params params = {});
std::vector<std::wstring> KeysOf(AC_HPROPERTY set);
std::vector<AC_VALUE> ValuesOf(AC_HPROPERTY set, const wchar_t* key);
Told ToldBy(AC_HPROPERTY set);
inline Told ToldByArea(AC_HAREA area, const wchar_t* key, Params params = {})
{
    return ToldBy(SetOf(area, key, std::move(params)));
}

// Requests that may fail.
AC_Result ResultOfSet(AC_HAREA area, const wchar_t* key, Params params = {});
AC_Result ResultOfImageSet(AC_HIMAGE image, const wchar_t* key, Params params = {});

} // namespace SlideOfTest
