#pragma once
#include <cerrno>

namespace CommonUtil
{

/// Puts errno back at the end of the scope. errno carries the reason of a failure up to the boundary, so whatever
/// runs on the way out (logging, closing a file) must leave it alone.
class CErrnoKeeper
{
public:
    CErrnoKeeper() : _errno(errno) {}
    ~CErrnoKeeper() { errno = _errno; }
    CErrnoKeeper(const CErrnoKeeper&) = delete;
    CErrnoKeeper& operator=(const CErrnoKeeper&) = delete;

private:
    int _errno;
};

} // namespace CommonUtil
