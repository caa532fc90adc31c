#include "Tests/Support/HostLocale.h"

#include <clocale>
#include <cstdlib>

namespace TestSupport
{

namespace
{

/// Digits and grouping as a German host has them; for C++ streams alone.
class GermanNumbers : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

HostLocale::HostLocale(const std::string& name)
{
    if (!std::setlocale(LC_ALL, name.c_str()) && !BuildAndSet(name))
        return;
    const std::locale& classic = std::locale::classic();
    std::locale::global(name.starts_with("de") ? std::locale(classic, new GermanNumbers) : classic);
    std::setlocale(LC_ALL, name.c_str()); // std::locale::global has set the classic one
    _isThere = true;
}

HostLocale::~HostLocale()
{
    std::locale::global(_former);
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
}

bool HostLocale::BuildAndSet(const std::string& name)
{
    const std::string language = name.substr(0, name.find('.'));
    const std::string command = "localedef -i " + language + " -f UTF-8 " + _folder.Name(name) + " >/dev/null 2>&1";
    if (std::system(command.c_str()) != 0)
        return false;
    setenv("LOCPATH", _folder.Path().c_str(), 1);
    return std::setlocale(LC_ALL, name.c_str()) != nullptr;
}

} // namespace TestSupport
