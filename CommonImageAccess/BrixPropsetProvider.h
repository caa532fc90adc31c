#pragma once
#include "Brix/AccessorInterface.h"
#include "CommonImageAccess/BrixPropset.h"

#include <map>
#include <string>
#include <string_view>

namespace CIA
{

using CBrixPropsets = std::map<std::wstring, CBrixPropset, std::less<>>;

/// Base of every model object that answers property requests. A set is built when it is first asked for, and never
/// changes or moves afterwards, so that any thread may read one.
class CBrixPropsetProvider
{
public:
    CBrixPropsetProvider() = default;
    virtual ~CBrixPropsetProvider() = default;
    CBrixPropsetProvider(const CBrixPropsetProvider&) = delete;
    CBrixPropsetProvider& operator=(const CBrixPropsetProvider&) = delete;

    /// Puts the set of a key into `*phPropset`; it is kept. `params` may be null: no parameters. A request that
    /// was answered before gets the same set again. Failures are not kept; their result is that of errno.
    AC_Result BrixPropset(const wchar_t* propsetKey, const AC_PARAMS* params, AC_HPROPSET* phPropset);

protected:
    /// Fills the empty set of a key. False with errno: EINVAL for a key or parameter that is none, ENODATA for what the
    /// document does not have, EBADFD for what the pixels do not allow.
    virtual bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) = 0;

    /// Where the sets are kept that were built. Not here: a slide has a million providers that are never asked.
    virtual CBrixPropsets& KeptPropsets() = 0;

private:
    AC_Result BuildPropset(const wchar_t* propsetKey, const AC_PARAMS& params, std::wstring_view cacheKey,
                           AC_HPROPSET* phPropset);
};

/// AC_VT_STRING when the parameter of that key is a text, else AC_VT_INTEGER.
AC_ValueType ParamTypeFromPropsetName(const wchar_t* key);

/// The value of a parameter as text, by its type; AC_VT_POINT and any other type is a failed assertion. A null value
/// gives an empty text.
std::wstring AC_PARAM_ELEMENT_ValueToString(const AC_PARAM_ELEMENT& element, AC_ValueType type);

/// The dispatch of a BrixPropset_init: finds the handler of a key in `handlers` (pairs of key and member function) and
/// calls it on `object`. Clears errno first. An unknown key is EINVAL; a handler that gives up must say why in errno.
template <typename Object, typename Handlers>
bool CallPropsetHandler(Object& object, const Handlers& handlers, const wchar_t* propsetKey, const AC_PARAMS& params,
                        CBrixPropset& propset);

} // namespace CIA

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Text.h"

#include <cerrno>

template <typename Object, typename Handlers>
bool CIA::CallPropsetHandler(Object& object, const Handlers& handlers, const wchar_t* propsetKey,
                             const AC_PARAMS& params, CBrixPropset& propset)
{
    ZEL_ASSERT(propset.IsEmpty());
    errno = 0;
    for (const auto& handler : handlers)
    {
        if (!CommonUtil::Equals(propsetKey, handler.Key))
            continue;
        if ((object.*handler.Fill)(params, propset))
            return true;
        ZEL_ASSERT(errno != 0);
        return false;
    }
    errno = EINVAL;
    return false;
}
