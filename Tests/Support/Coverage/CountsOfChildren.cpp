// In coverage builds only. The counts of a process are written when it ends by `exit`, while tests end children by
// `_exit` and let the plug-in abort: what those executed counts as well.

#include <csignal>

extern "C"
{
    void __gcov_dump();
    [[noreturn]] void __real__exit(int code);

    [[noreturn]] void __wrap__exit(int code)
    {
        __gcov_dump();
        __real__exit(code);
    }
}

namespace
{

void DumpAndAbort(int)
{
    __gcov_dump();
    std::signal(SIGABRT, SIG_DFL);
    std::raise(SIGABRT);
}

[[maybe_unused]] const auto formerHandler = std::signal(SIGABRT, DumpAndAbort);

} // namespace
