#include "PlatformAbstractionLayer/ThreadLocale.h"

#include "CommonUtil/Mutex.h"

#include <locale.h>

namespace
{

/// The locale that a thread was given. It must outlive its use, so it is freed when the thread ends, not before.
class COwnLocale
{
public:
    COwnLocale() : _locale(newlocale(LC_ALL_MASK, "en_US.UTF-8", nullptr)) {}
    ~COwnLocale()
    {
        if (!_locale)
            return;
        if (uselocale(nullptr) == _locale)
            uselocale(LC_GLOBAL_LOCALE);
        freelocale(_locale);
    }
    COwnLocale(const COwnLocale&) = delete;
    COwnLocale& operator=(const COwnLocale&) = delete;

    void Use() const { uselocale(_locale); } // for null, which changes nothing

private:
    locale_t _locale;
};

} // namespace

int _configthreadlocale(int value)
{
    constexpr int OwnLocale = 1;
    constexpr int CommonLocale = 2;
    static CommonUtil::CMyMutex mutex;
    static int record = CommonLocale;
    const CommonUtil::CLock lock(mutex);
    if (value != CommonLocale)
    {
        thread_local const COwnLocale ownLocale;
        ownLocale.Use();
    }
    record = value == CommonLocale ? CommonLocale : OwnLocale;
    return record;
}
