#pragma once
#include "Brix/AccessorInterface.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace CIA
{

/// A property set: keys, each with a list of values, in ascending order of keys. It owns the texts that were worked out
/// for it; other texts that its values point at live as long as the document.
class CBrixPropset
{
public:
    using CRows = std::map<std::wstring, std::vector<AC_VALUE>, std::less<>>;

    bool IsEmpty() const { return _rows.empty(); }
    const CRows& Rows() const { return _rows; }

    /// Makes sure that the key is there, with no value as yet.
    void AddKey(const wchar_t* key) { _rows[key]; }
    void AddInteger(const wchar_t* key, int32_t value) { Add(key, AC_VT_INTEGER).value.nInteger = value; }
    void AddDouble(const wchar_t* key, double value) { Add(key, AC_VT_DOUBLE).value.dDouble = value; }
    void AddPoint(const wchar_t* key, AC_POINT value) { Add(key, AC_VT_POINT).value.point = value; }
    /// A text that lives as long as the document, or null.
    void AddString(const wchar_t* key, const wchar_t* text) { Add(key, AC_VT_STRING).value.pszString = text; }
    /// A text that this set keeps.
    void AddText(const wchar_t* key, std::wstring text)
    {
        AddString(key, _texts.emplace_back(std::move(text)).c_str());
    }

private:
    AC_VALUE& Add(const wchar_t* key, AC_ValueType type)
    {
        AC_VALUE& value = _rows[key].emplace_back();
        value.nType = type;
        return value;
    }

    CRows _rows;
    std::deque<std::wstring> _texts; ///< a deque, whose elements keep their address
};

} // namespace CIA
