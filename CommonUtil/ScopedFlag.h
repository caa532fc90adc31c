#pragma once

namespace CommonUtil
{

/// Sets a flag for a scope and clears it on every way out, exceptions included.
class CScopedFlag
{
public:
    explicit CScopedFlag(bool& flag) : _flag(flag) { _flag = true; }
    ~CScopedFlag() { _flag = false; }
    CScopedFlag(const CScopedFlag&) = delete;
    CScopedFlag& operator=(const CScopedFlag&) = delete;

private:
    bool& _flag;
};

} // namespace CommonUtil
