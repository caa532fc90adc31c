#pragma once

#include "HostTool/PluginHost.h"

#include <optional>
#include <string>
#include <vector>

namespace HostTool
{

/// A property set of a document. Valid as long as its document is open.
class CPropertySet
{
public:
    CPropertySet(const CPluginHost& host, AC_HPROPSET set) : _Host(host), _Handle(set, {host.ReleaseProperty.Address()})
    {
    }

    /// The values of a key that are texts (as UTF-8), numbers, points; values of another kind are passed over. Empty if
    /// the set doesn't have the key.
    std::vector<std::string> Texts(const wchar_t* key) const;
    std::vector<double> Numbers(const wchar_t* key) const;
    std::vector<AC_POINT> Points(const wchar_t* key) const;

    /// The first of them, if there is one.
    std::optional<std::string> Text(const wchar_t* key) const;
    std::optional<double> Number(const wchar_t* key) const;

private:
    std::vector<AC_VALUE> Values(const wchar_t* key) const;

    const CPluginHost& _Host;
    CHandle _Handle;
};

} // namespace HostTool
