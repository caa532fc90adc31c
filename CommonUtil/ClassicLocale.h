#pragma once
#include <locale.h>

namespace CommonUtil
{

/// Lets the calling thread's C library calls read and write numbers in the classic way for a scope, whatever locale
/// the host has chosen.
class CClassicLocale
{
public:
    CClassicLocale() : _former(uselocale(Classic())) {}
    ~CClassicLocale() { uselocale(_former); }
    CClassicLocale(const CClassicLocale&) = delete;
    CClassicLocale& operator=(const CClassicLocale&) = delete;

private:
    static locale_t Classic()
    {
        static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
        return classic;
    }

    locale_t _former;
};

} // namespace CommonUtil
