#pragma once
#include "Tests/Support/TemporaryFolder.h"

#include <locale>

namespace TestSupport
{

/// The locale that a host has chosen before it calls us, from construction to end: that of C and, for a German one, of
/// C++ streams as well. One that this machine does not have is built if possible.
class HostLocale
{
public:
    explicit HostLocale(const std::string& name);
    ~HostLocale();
    HostLocale(const HostLocale&) = delete;
    HostLocale& operator=(const HostLocale&) = delete;

    /// False when there is no such locale here and none could be built: then the former one holds.
    bool IsThere() const { return _isThere; }

private:
    bool BuildAndSet(const std::string& name);

    TemporaryFolder _folder;
    std::locale _former;
    bool _isThere = false;
};

} // namespace TestSupport
